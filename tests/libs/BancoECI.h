// The ECI operations on two scripted channels: what they tell them, and what comes back. Main thread.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "fakes/CanalGuionado.h"
#include "fakes/CarpetaPropia.h"
#include "fakes/LectorWav.h"
#include "libs/ondalis_eci.h"
#include "libs/ondalis_eci_servicio.h"

namespace ondalis::prueba {

struct BancoECI {
    BancoECI() { CreaVozECI(); }

    // What an utterance of the file channel writes, at the file's own rate; then its end.
    void Graba(std::size_t muestras, std::int16_t valor = 7) {
        Escribe(muestras, valor);
        ficheros.Fin();
    }
    void Escribe(std::size_t muestras, std::int16_t valor = 7) {
        salida.Abre(11025);
        const std::vector<std::int16_t> bloque(muestras, valor);
        salida.Escribe(bloque.data(), bloque.size());
        salida.Completa();
    }
    std::string Error() const {
        std::string bufer(ONDALIS_ECI_TAM_ERROR + 1, 'x');
        UltimoErrorECI(bufer.data());
        EXPECT_EQ('x', bufer.back()) << "written behind the buffer";
        EXPECT_EQ(bufer.npos, bufer.substr(0, ONDALIS_ECI_TAM_ERROR).find_first_not_of('\0', bufer.find('\0')));
        return bufer.c_str();
    }
    std::optional<Wav> Leido(const char *nombre) const { return LeeWav(carpeta.Lee(nombre)); }

    CarpetaPropia carpeta;
    CanalGuionado vivo;
    CanalGuionado ficheros;
    cSalidaFichero salida;
    std::function<void()> alEsperar;  // what comes in while a speech is waited for
    int esperas = 0, despertares = 0;
    std::vector<std::u16string> avisos;
    cServicioECI servicio{{.vivo = &vivo,
                           .fichero = &ficheros,
                           .salida = &salida,
                           .espera =
                               [this](const std::function<bool()> &listo) {
                                   ++esperas;
                                   EXPECT_FALSE(listo()) << "nothing to wait for";
                                   if (alEsperar) alEsperar();
                                   EXPECT_TRUE(listo()) << "the caller would never come back";
                               },
                           .despierta = [this] { ++despertares; },
                           .avisa = [this](const std::u16string &texto) { avisos.push_back(texto); }}};
};

}  // namespace ondalis::prueba
