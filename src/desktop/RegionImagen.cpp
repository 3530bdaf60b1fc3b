#include "desktop/RegionImagen.h"

namespace ondalis {

std::vector<QRect> GetRegionImg(std::span<const std::uint32_t> pixeles, const QSize &ventana,
                                std::uint32_t transparente) {
    std::vector<QRect> region;
    const int ancho = ventana.width(), alto = ventana.height();
    for (int y = 0; y < alto; ++y) {
        const auto fila = pixeles.subspan(static_cast<std::size_t>(y) * static_cast<std::size_t>(ancho),
                                          static_cast<std::size_t>(ancho));
        const auto es = [&](int x) { return fila[static_cast<std::size_t>(x)] == transparente; };
        for (int x = 0; x < ancho;) {
            while (x < ancho && es(x)) ++x;
            const int inicio = x;
            while (x < ancho && !es(x)) ++x;
            if (x - inicio == ancho) {
                region.emplace_back(0, y, ancho, alto - y);
                return region;
            }
            if (x > inicio) region.emplace_back(inicio, y, x - inicio, 1);
        }
    }
    return region;
}

}  // namespace ondalis
