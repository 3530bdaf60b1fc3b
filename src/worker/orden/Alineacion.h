// Where in a sound is said what another voice says in its own: the cheapest way to go along both at once. Pure.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

namespace ondalis {

struct Habla {
    std::span<const std::int16_t> sonido;
    std::uint32_t hercios = 0;
};

// For each moment of `patron` (ascending, in seconds) the one of `sonido` at which the same is said, ascending and
// inside it. Empty where one of both is empty, or the two are too long or too unlike in length to be the same text.
std::vector<double> Alinea(const Habla &patron, std::span<const double> momentos, const Habla &sonido);

}  // namespace ondalis
