// The formant voices of ours, the "IBM" family: six languages by five presets. A constant table; any thread. No Qt.
#pragma once

#include <cstdint>
#include <vector>

namespace ondalis {

struct HablanteIBM {
    const char *nombre;                                       // UTF-8
    const char *idModo;                                       // upper case GUID of our own, without braces
    std::int32_t lengua;                                      // LCID: 1034, 1033, 2057, 1036, 1031, 1040
    const char *dialecto;                                     // language and dialect of the annotation `l: "2.0"
    int preset;                                               // number of the annotation `v: 1, 2, 3, 7 or 8
    const char *motor;                                        // engine of the worker
    const char *idioma;                                       // the engine's language file ("roa/es")
    std::int16_t tono;                                        // hertz, 40 to 422
    std::int16_t fluctuacion, aspereza, diafonia, tamCabeza;  // 0 to 100
};
const std::vector<HablanteIBM> &HablantesIBM();

}  // namespace ondalis
