// The voice text that the engine is given: eSpeak NG's language file with lines of ours behind it. Pure.
#pragma once

#include <string>
#include <string_view>

namespace ondalis {

struct ValoresFormantes {
    int tono = 100;                                                    // hertz
    int fluctuacion = 50, aspereza = 0, diafonia = 0, tamCabeza = 50;  // 0 to 100; others are clamped
    bool operator==(const ValoresFormantes &) const = default;
};

// `idioma` is the whole text of the language file.
std::string TextoDeVoz(std::string_view idioma, const ValoresFormantes &valores);

// The pitch that the voice's text must name in a language so that `tono` hertz are heard.
double TonoDelMotor(double tono, std::string_view idiomaMotor);

// What the engine's sound of such a voice is multiplied by, so that all are about equally loud.
double GananciaDeVoz(const ValoresFormantes &valores, std::string_view idiomaMotor);

// A plain voice whose pitch is `factor` times its own. At 1 the language file as it is.
std::string TextoDeVozLlana(std::string_view idioma, double factor);

}  // namespace ondalis
