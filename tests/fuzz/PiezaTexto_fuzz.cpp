// Any text: its pieces take each character once, stay under the engine's limit, and their words lie inside them.
#include <cstdlib>
#include <cstring>

#include "worker/PiezaTexto.h"
#include "worker/Seguidor.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *datos, std::size_t n) {
    if (n < 2) return 0;
    const ondalis::OpcionesPieza opciones{static_cast<ondalis::LenguaSignos>(datos[0] % 7), (datos[1] & 1) != 0,
                                          (datos[1] & 2) != 0};
    std::u16string texto((n - 2) / 2, u' ');
    std::memcpy(texto.data(), datos + 2, texto.size() * 2);
    for (std::size_t i = 0; i < texto.size();) {
        const ondalis::Pieza pieza = ondalis::HazPieza(texto, i, opciones);
        if (pieza.siguiente <= i || pieza.siguiente > texto.size() || pieza.caracteres >= 2000) std::abort();
        std::uint32_t antes = 0;
        for (const ondalis::Ficha &f : pieza.fichas) {
            if (f.inicio < i || f.inicio < antes || f.fin <= f.inicio || f.fin > texto.size()) std::abort();
            if (f.inicioMotor > f.nucleoMotor || f.nucleoMotor >= pieza.caracteres) std::abort();
            antes = f.fin;
        }
        ondalis::Seguidor seguidor(pieza.fichas);
        const ondalis::Ficha *ultima = nullptr;
        for (std::size_t p = 0; p <= pieza.caracteres; p++)
            if (const ondalis::Ficha *f = seguidor.Palabra(static_cast<int>(p))) {
                if (ultima && f <= ultima) std::abort();
                ultima = f;
            }
        i = pieza.siguiente;
    }
    return 0;
}
