// Samples of what a program has given: a WAV file, also one whose header was written before its sound, or raw samples.
// Pure.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace ondalis {

struct Onda {
    std::uint32_t hercios = 0;
    std::vector<std::int16_t> muestras;  // mono
    std::string fallo;                   // empty: it is sound
};

// 16 bits, 1 to 8 channels mixed down, 8000 to 48000 hertz. Unknown chunks are skipped; a data chunk whose length is
// nought or that of a header written beforehand (0x7FF00000 and more) lasts to the bytes' end. One that promises more
// than there is was cut short, which is a failure.
Onda LeeWav(std::span<const std::uint8_t> bytes);

Onda LeeCruda(std::span<const std::uint8_t> bytes, std::uint32_t hercios, std::uint32_t canales);

// To another rate, by straight lines between samples: only where voices of two rates share an utterance.
void CambiaHercios(std::vector<std::int16_t> &x, std::uint32_t de, std::uint32_t a);

}  // namespace ondalis
