// The test engine: TonosPrueba.h says what it sounds like. Never part of an installed build.
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstdlib>

#include "worker/Caracteres.h"
#include "worker/Motor.h"
#include "worker/Recorrido.h"
#include "worker/Signos.h"
#include "worker/TonosPrueba.h"
#include "worker/orden/Patron.h"

namespace ondalis {

namespace {

class cMotorTono final : public Motor {
public:
    explicit cMotorTono(int zocalo) : m_zocalo(zocalo) {}

    void Prepara() override {}

    std::vector<TramaVoz> Voces() override {
        return {{"espeak", "roa/es", "Tono español", "40A;C0A", "Pruebas", 1000},
                {"espeak", "gmw/en-US", "Tono inglés", "409", "Pruebas", 1000}};
    }

    void Habla(const Locucion &locucion, Emisor &emisor) override {
        if (locucion.voz.voz == "mudo") return emisor.Error("voz desconocida: mudo");
        if (!emisor.Formato(tonos::kHercios)) return;
        Recorrido recorrido(locucion);
        m_muestra = 0;
        while (const auto paso = recorrido.Siguiente()) {
            bool sigue = true;
            switch (paso->tipo) {
                case Paso::Tipo::Texto: sigue = DiceTexto(locucion, *paso, recorrido.Estado(), emisor); break;
                case Paso::Tipo::Pausa: {
                    const auto n = static_cast<std::size_t>(std::llround(paso->ms * tonos::kHercios / 1000));
                    sigue = DicePcm(std::vector<std::int16_t>(n), emisor);
                    break;
                }
                case Paso::Tipo::Marca: sigue = emisor.Marca(m_muestra, paso->tramo->texto); break;
            }
            if (!sigue) return;
        }
    }

private:
    bool DiceTexto(const Locucion &locucion, const Paso &paso, const EstadoHabla &estado, Emisor &emisor) {
        const std::u16string_view texto = paso.tramo->texto;
        std::size_t i = paso.inicio;
        while (i < texto.size()) {
            while (i < texto.size() && EsBlanco(texto[i])) i++;
            std::size_t primera = i, fin = i;
            while (i < texto.size() && !EsBlanco(texto[i])) {
                const PuntoCodigo p = LeePunto(texto, i);
                if (EsDePalabra(p.c)) {
                    if (fin == primera) primera = i;
                    fin = i + p.unidades;
                } else if (fin == primera) {
                    primera = fin = i + p.unidades;
                }
                i += p.unidades;
            }
            const std::size_t comienzo = PrincipioDeTirada(texto, i);
            const bool signo =
                fin == primera && comienzo + 1 == i && locucion.voz.formantes && EsSignoDelFiltro(texto[comienzo]);
            if (signo) primera = comienzo, fin = i;
            if (fin == primera) continue;
            if (!DicePalabra(*paso.tramo, primera, fin, estado, emisor)) return false;
        }
        return true;
    }

    static std::size_t PrincipioDeTirada(std::u16string_view texto, std::size_t fin) {
        while (fin > 0 && !EsBlanco(texto[fin - 1])) fin--;
        return fin;
    }

    bool DicePalabra(const Tramo &tramo, std::size_t inicio, std::size_t fin, const EstadoHabla &estado,
                     Emisor &emisor) {
        const std::u16string_view palabra = std::u16string_view(tramo.texto).substr(inicio, fin - inicio);
        Travesura(palabra);
        const std::uint32_t posicion = Origen(tramo, inicio);
        const std::uint32_t longitud = Origen(tramo, fin - 1) - posicion + 1;
        if (!emisor.Palabra(m_muestra, posicion, longitud)) return false;
        return DicePcm(tonos::Sonido(tonos::NumeroDe(palabra), estado.velocidad, estado.ganancia), emisor);
    }

    // Small frames, as a real engine gives them.
    bool DicePcm(const std::vector<std::int16_t> &muestras, Emisor &emisor) {
        constexpr std::size_t kBloque = 1024;
        for (std::size_t i = 0; i < muestras.size(); i += kBloque) {
            const std::size_t n = std::min(kBloque, muestras.size() - i);
            if (!emisor.Pcm(muestras.data() + i, n)) return false;
            m_muestra += n;
        }
        return true;
    }

    static bool Toca() {
        const char *unaVez = std::getenv("ONDALIS_TONO_UNAVEZ");
        return !unaVez || unlink(unaVez) == 0;
    }

    void Travesura(std::u16string_view palabra) const {
        if (palabra == u"MATA" && Toca()) std::abort();
        if (palabra == u"CUELGA" && Toca())
            while (true) pause();
        if (palabra == u"BASURA" && Toca()) {
            std::array<std::uint8_t, 64> basura;
            basura.fill(0xFF);
            if (write(m_zocalo, basura.data(), basura.size()) < 0) std::abort();
        }
    }

    int m_zocalo;
    std::uint64_t m_muestra = 0;
};

}  // namespace

int DicePatron(std::string_view, int) { return 1; }  // tones are like no voice

std::unique_ptr<Motor> CreaMotor(int zocalo) { return std::make_unique<cMotorTono>(zocalo); }

}  // namespace ondalis
