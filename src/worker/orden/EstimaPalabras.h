// When each word of a piece is said, for engines that don't tell: from the lengths of the words and the silences of the
// sound. Pure.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "worker/PiezaTexto.h"

namespace ondalis {

// The sample at which each word of `pieza` begins in its sound, ascending and inside it.
std::vector<std::uint64_t> EstimaPalabras(const Pieza &pieza, std::span<const std::int16_t> sonido,
                                          std::uint32_t hercios, LenguaSignos lengua);

// How long a word takes to say, in no unit: letters of `texto` until the next word.
double PesoDePalabra(std::u32string_view texto, LenguaSignos lengua);

}  // namespace ondalis
