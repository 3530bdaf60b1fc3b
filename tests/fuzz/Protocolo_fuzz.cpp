// Any bytes, in any two pieces: the codec gives the same frames, and those encode back to the bytes that they came
// from.
#include <algorithm>
#include <cstdlib>

#include "engine/Protocolo.h"

namespace {

struct Resultado {
    std::vector<std::uint8_t> vuelta;
    bool roto = false;
};

Resultado Pasa(std::span<const std::uint8_t> bytes, std::size_t corte) {
    ondalis::Descodificador d;
    Resultado r;
    for (const auto parte : {bytes.first(corte), bytes.subspan(corte)}) {
        d.Alimenta(parte);
        while (const auto trama = d.Siguiente()) ondalis::Codifica(*trama, r.vuelta);
    }
    r.roto = d.Roto();
    return r;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *datos, std::size_t n) {
    if (n == 0) return 0;
    const std::span<const std::uint8_t> bytes(datos + 1, n - 1);
    const Resultado entero = Pasa(bytes, bytes.size());
    const Resultado partido = Pasa(bytes, bytes.empty() ? 0 : datos[0] % (bytes.size() + 1));
    if (entero.vuelta != partido.vuelta || entero.roto != partido.roto) std::abort();
    if (entero.vuelta.size() > bytes.size()) std::abort();
    if (!std::equal(entero.vuelta.begin(), entero.vuelta.end(), bytes.begin())) std::abort();
    return 0;
}
