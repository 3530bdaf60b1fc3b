// How a sound's timbre goes along, in a form that two voices saying the same text have in common. Pure.
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace ondalis {

inline constexpr double kMsTramaEspectro = 10;  // from one frame to the next
inline constexpr std::size_t kRasgos = 26;      // cepstrum, loudness and how both change

struct Espectro {
    std::vector<std::array<float, kRasgos>> tramas;  // each feature of mean 0 and deviation 1 over the sound
    std::vector<bool> callada;                       // the frame is a silence
};

// Frame i has the sound around i·10 ms. Only what lies below 3800 hertz counts, which all rates have. `talla` stretches
// the frequencies, as if the speaker's throat were shorter by that factor.
Espectro HazEspectro(std::span<const std::int16_t> sonido, std::uint32_t hercios, double talla = 1);

}  // namespace ondalis
