// The shape of a window from a picture of it: what isn't the transparent colour. Pure.
#pragma once

#include <QImage>
#include <QRegion>

namespace ondalis {

constexpr QRgb kTransparente = 0xff00ff00;  // green

// One rectangle a run of opaque pixels. A run as wide as the picture ends the walk: everything from its row on is
// solid.
QRegion GetRegionImg(const QImage &imagen, QRgb transparente = kTransparente);

}  // namespace ondalis
