#include "libs/ondalis_eci.h"

#include <algorithm>
#include <memory>
#include <new>
#include <utility>

#include "libs/cInstanciaECI.h"
#include "libs/ondalis_eci_texto.h"

namespace ondalis {

namespace {

// One of each, as the operations name neither.
struct {
    std::unique_ptr<ServicioECI> servicio;
    std::shared_ptr<cInstanciaECI> voz;
} g_eci;

// Nothing thrown crosses the operations' border. Without an instance: 0. One that is given back inside `accion`, while
// it waits, lives to its end.
template <class F>
std::int16_t Cumple(F &&accion) {
    const std::shared_ptr<cInstanciaECI> voz = g_eci.voz;
    if (!voz) return 0;
    try {
        return accion(*voz) ? 1 : 0;
    } catch (const std::bad_alloc &) {
        voz->Falla("Sin memoria");
    } catch (const std::exception &error) {
        voz->Falla(error.what());
    }
    return 0;
}

}  // namespace

cServicioECI::cServicioECI(ServicioECI servicio) {
    BorraVozECI();
    g_eci.servicio = std::make_unique<ServicioECI>(std::move(servicio));
}

cServicioECI::~cServicioECI() {
    BorraVozECI();
    g_eci.servicio.reset();
}

}  // namespace ondalis

using namespace ondalis;

void CreaVozECI() {
    if (g_eci.servicio && !g_eci.voz) g_eci.voz = std::make_shared<cInstanciaECI>(*g_eci.servicio);
}

void BorraVozECI() {
    CallaECI();
    g_eci.voz.reset();
}

void RestauraECI() {
    Cumple([](cInstanciaECI &voz) { return voz.Restaura(), true; });
}

std::int16_t SetDestinoECI(const char *ruta) {
    return Cumple([ruta](cInstanciaECI &voz) { return voz.SetDestino(ruta); });
}

std::int16_t AddTextoECI(const char *texto) {
    return Cumple([texto](cInstanciaECI &voz) { return voz.AddTexto(texto ? texto : ""); });
}

std::int16_t HablaECI(std::int16_t espera) {
    return Cumple([espera](cInstanciaECI &voz) { return voz.Habla(espera == 1); });
}

std::int16_t EstaHablandoECI() {
    return Cumple([](cInstanciaECI &voz) { return voz.EstaHablando(); });
}

void CallaECI() {
    Cumple([](cInstanciaECI &voz) { return voz.Calla(), true; });
}

void UltimoErrorECI(char *bufer) {
    std::fill_n(bufer, ONDALIS_ECI_TAM_ERROR, '\0');
    Cumple([bufer](cInstanciaECI &voz) {
        const std::string error = voz.UltimoError();
        const std::string_view cabe = CortaUtf8(error, ONDALIS_ECI_TAM_ERROR - 1);
        std::copy(cabe.begin(), cabe.end(), bufer);
        return true;
    });
}
