// What the next engine events mean; one object shared by the session and the speech controls, owned by main. Main
// thread.
#pragma once

#include <cstdint>

namespace ondalis {

struct cEstadoVoz {
    static constexpr std::int32_t Lectura = 0;    // events belong to a reading
    static constexpr std::int32_t Aviso = 1;      // a notice or a voice test sounds
    static constexpr std::int32_t Reinicio = 2;   // advance or retreat is restarting the engine
    static constexpr std::int32_t Reservado = 3;  // tested, never assigned
    static constexpr std::int32_t Remota = 4;     // a remote command speaks
    std::int32_t valor = Lectura;
};

}  // namespace ondalis
