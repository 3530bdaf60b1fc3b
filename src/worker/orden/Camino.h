// The cheapest way to go along two sounds at once, frame by frame. Pure.
#pragma once

#include <array>
#include <cstddef>
#include <limits>
#include <vector>

#include "worker/orden/Espectro.h"

namespace ondalis {

// The frames of a sound that are gone along: its silent ends left out, each feature stretched by its weight.
struct Trecho {
    static constexpr std::size_t kAncho = 28;  // kRasgos, filled up for the processor's four at a time
    std::vector<std::array<float, kAncho>> tramas;
    std::vector<bool> callada, muda;
    std::size_t desde = 0;  // frame of the spectrum that the first one is
    bool vacio() const { return tramas.empty(); }
};

// `juntas` frames are made one: at three the way is rough, and nine times as fast.
Trecho HazTrecho(const Espectro &espectro, std::size_t juntas = 1);

// What of the sound belongs to each frame of the pattern.
struct Camino {
    float coste = std::numeric_limits<float>::infinity();
    std::vector<std::size_t> primero, ultimo;
};

// Inside a band around the straight line, of `margen` frames for short sounds and up to four times as many for long
// ones; neither is empty. The way is left out where only
// its cost is asked for.
Camino Recorre(const Trecho &patron, const Trecho &sonido, std::size_t margen, bool soloCoste);

}  // namespace ondalis
