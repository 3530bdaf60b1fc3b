// What the ECI operations speak with, handed in from outside: they know no device, no process and no event loop. All of
// it is needed.
#pragma once

#include <functional>
#include <string>

#include "engine/CanalVoz.h"
#include "engine/cSalidaFichero.h"

namespace ondalis {

struct ServicioECI {
    CanalVoz *vivo = nullptr;          // speaks on the sound device; used by nobody else
    CanalVoz *fichero = nullptr;       // speaks into `salida`; used by nobody else
    cSalidaFichero *salida = nullptr;  // its destination is set by the operations alone
    // Blocks the caller until `listo` is true.
    std::function<void(const std::function<bool()> &listo)> espera;
    // Makes `espera` ask again. Any thread.
    std::function<void()> despierta;
    // A line for the log. Any thread.
    std::function<void(const std::u16string &texto)> avisa;
};

// While one lives CreaVozECI has these services, which all must outlive it; its end is that of the instance too. One at
// a time; the thread of the operations.
class cServicioECI {
public:
    explicit cServicioECI(ServicioECI servicio);
    ~cServicioECI();
    cServicioECI(const cServicioECI &) = delete;
    cServicioECI &operator=(const cServicioECI &) = delete;
};

}  // namespace ondalis
