// What the ECI operations speak with, handed in from outside: they know no device, no process and no event loop.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "engine/CanalVoz.h"
#include "engine/SalidaAudio.h"

namespace ondalis {

struct ServicioECI {
    // Speaks on the sound device; used by nobody else.
    CanalVoz *vivo = nullptr;
    // Makes a channel that speaks into `salida`, which outlives it. It is kept from one file to the next; one that was
    // cut short is dropped, so that nothing of it can reach the next file.
    std::function<std::unique_ptr<CanalVoz>(SalidaAudio &salida)> creaCanalFichero;
    // Blocks the caller until `listo` is true.
    std::function<void(const std::function<bool()> &listo)> espera;
    // Makes `espera` ask again. Any thread.
    std::function<void()> despierta;
    // A line for the log. Any thread.
    std::function<void(const std::u16string &texto)> avisa;
};

// While one lives CreaVozECI has these services; its end is that of the instance too. One at a time; the thread of the
// operations.
class cServicioECI {
public:
    explicit cServicioECI(ServicioECI servicio);
    ~cServicioECI();
    cServicioECI(const cServicioECI &) = delete;
    cServicioECI &operator=(const cServicioECI &) = delete;
};

}  // namespace ondalis
