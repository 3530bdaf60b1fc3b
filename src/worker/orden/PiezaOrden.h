// Cuts a span's text into what a command engine gets in one call: a sentence, or less where the engine's limit or a
// quick first sound asks for it. Pure.
#pragma once

#include <cstdint>
#include <string_view>

#include "worker/PiezaTexto.h"

namespace ondalis {

// Where the sentence that begins at `inicio` ends, at most `maximo` units on: at a sentence's end, else behind a sign
// of a clause, else at a blank. With `pronto` the first clause of some length is enough.
std::size_t FinDeFrase(std::u16string_view texto, std::size_t inicio, std::size_t maximo, bool pronto);

// The letters from `inicio` on, so that they are read one by one; as many as `maximo` units of the program's text hold.
Pieza PiezaDeletreada(std::u16string_view texto, std::size_t inicio, std::size_t maximo, LenguaSignos lengua);

// The table of sign names for a list of hexadecimal language identifiers ("40A;C0A"), by its first.
LenguaSignos LenguaDeLcid(std::string_view lengua);

}  // namespace ondalis
