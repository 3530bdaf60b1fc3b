// Samples of what a program has given: a WAV file whose header may lie about its lengths, or raw samples. Pure.
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
// nought or goes beyond the bytes lasts to their end.
Onda LeeWav(std::span<const std::uint8_t> bytes);

Onda LeeCruda(std::span<const std::uint8_t> bytes, std::uint32_t hercios, std::uint32_t canales);

// To another rate, by straight lines between samples: only where voices of two rates share an utterance.
void CambiaHercios(std::vector<std::int16_t> &x, std::uint32_t de, std::uint32_t a);

}  // namespace ondalis
