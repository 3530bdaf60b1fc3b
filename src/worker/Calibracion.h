// From words a minute as a listener counts them to the engine's own scale. Pure.
#pragma once

#include <string_view>

namespace ondalis {

struct Ritmo {
    int nominal = 175;    // espeakRATE, 85 to 449
    double estirado = 1;  // what the engine makes is brought to 1/estirado of its length; 0.25 to 1.5
};

// `idiomaMotor` is the language file ("roa/es").
Ritmo RitmoDe(double palabrasPorMinuto, std::string_view idiomaMotor);

}  // namespace ondalis
