// From words a minute as a listener counts them to the engine's own scale. Pure.
#pragma once

#include <string_view>

#include "worker/RasgosTexto.h"

namespace ondalis {

struct Ritmo {
    int nominal = 175;    // espeakRATE, 85 to 449
    double estirado = 1;  // what the engine makes is brought to 1/estirado of its length; 0.25 to 1.5
};

// `idiomaMotor` is the language file ("roa/es"); `texto` counts what is said, `tono` is the voice's pitch in hertz. A
// text of long words is said faster so that as many are heard, and one of short words slower: by two fifths
// at most, as beyond it the voice would be another. The fewer words, the nearer to the pace of the language's common
// text.
Ritmo RitmoDe(double palabrasPorMinuto, std::string_view idiomaMotor, const RasgosTexto &texto, double tono);
// Of common text, whatever is said.
Ritmo RitmoDe(double palabrasPorMinuto, std::string_view idiomaMotor);

}  // namespace ondalis
