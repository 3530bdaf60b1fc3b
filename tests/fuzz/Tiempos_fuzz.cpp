// Whatever a program tells of its times: word starts come out in order and inside the sound, or none do.
#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "worker/orden/Tiempos.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *datos, std::size_t n) {
    using namespace ondalis;
    const std::string_view todo(reinterpret_cast<const char *>(datos), std::min<std::size_t>(n, 4096));
    const std::size_t corte = std::min(todo.find('\0'), todo.size());
    const std::string_view tiempos = todo.substr(0, corte), sonidos = todo.substr(std::min(corte + 1, todo.size()));
    const double duracion = static_cast<double>(n % 100) / 10;
    for (std::size_t palabras = 1; palabras < 4; palabras++) {
        const auto suyos = LeeSonidos(sonidos, palabras);
        if (suyos && suyos->size() != palabras) std::abort();
        for (const auto &dichos : {LeeSegmentos(tiempos, duracion), LeePalabras(tiempos, duracion)}) {
            if (!dichos || !suyos) continue;
            const auto inicios = IniciosDePalabras(*dichos, *suyos);
            if (!inicios) continue;
            double antes = 0;
            for (const double inicio : *inicios) {
                if (!(inicio >= antes)) std::abort();
                antes = inicio;
            }
            if (inicios->size() != palabras) std::abort();
        }
    }
    return 0;
}
