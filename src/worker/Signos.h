// Spoken names of punctuation signs in the languages of the formant voices. Pure tables.
#pragma once

#include <string_view>

namespace ondalis {

// How a language names its signs; engine language files share a table ("roa/es", "roa/es-419").
enum class LenguaSignos { Ninguna, Espanol, InglesBritanico, InglesAmericano, Frances, Aleman, Italiano };

LenguaSignos LenguaDeSignos(std::string_view idiomaMotor);

// Name of `signo`, empty for a sign without one or without a language.
std::u32string_view NombreDeSigno(char32_t signo, LenguaSignos lengua);

// One of the signs that the text filter spaces out so that each is heard.
bool EsSignoDelFiltro(char32_t signo);

}  // namespace ondalis
