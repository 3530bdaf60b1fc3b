// The shape of a window that is as its picture is: which pixels belong to it. Pure.
#pragma once

#include <QRect>
#include <QSize>
#include <cstdint>
#include <span>
#include <vector>

namespace ondalis {

inline constexpr std::uint32_t kVerdeTransparente = 0x00FF00;

// The rectangles whose union is the shape. `pixeles`: 0xRRGGBB row by row, as many as `ventana` has. Each run of a row
// that isn't `transparente` is one rectangle; a run as wide as the window takes all below it too, whatever is there.
std::vector<QRect> GetRegionImg(std::span<const std::uint32_t> pixeles, const QSize &ventana,
                                std::uint32_t transparente = kVerdeTransparente);

}  // namespace ondalis
