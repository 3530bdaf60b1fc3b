// Any file: it is a description or it has a reason for not being one, and a WAV reader survives the same bytes.
#include <cstdlib>

#include "worker/orden/Descripcion.h"
#include "worker/orden/Onda.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *datos, std::size_t n) {
    const auto lectura = ondalis::LeeDescripcion({reinterpret_cast<const char *>(datos), n});
    if (lectura.descripcion.has_value() != lectura.fallo.empty()) std::abort();
    if (const auto &d = lectura.descripcion) {
        if (d->fabricante.empty() || d->programa.empty() || (d->voces.empty() && !d->modelos)) std::abort();
        if (d->voces.size() > ondalis::kMaxVocesDescripcion || d->plazoMs > 60000 || d->maxCaracteres < 20)
            std::abort();
    }
    const ondalis::Onda onda = ondalis::LeeWav({datos, n});
    if (!onda.muestras.empty() && (onda.hercios < 8000 || onda.hercios > 48000)) std::abort();
    return 0;
}
