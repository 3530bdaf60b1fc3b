#include "desktop/RegionImagen.h"

namespace ondalis {

QRegion GetRegionImg(const QImage &imagen, QRgb transparente) {
    const int ancho = imagen.width();
    const int alto = imagen.height();
    QRegion region;
    for (int y = 0; y < alto; ++y) {
        for (int x = 0; x < ancho;) {
            while (x < ancho && imagen.pixel(x, y) == transparente) ++x;
            const int inicio = x;
            while (x < ancho && imagen.pixel(x, y) != transparente) ++x;
            if (x == inicio) continue;
            if (x - inicio == ancho) return region | QRect(0, y, ancho, alto - y);
            region |= QRect(inicio, y, x - inicio, 1);
        }
    }
    return region;
}

}  // namespace ondalis
