#include "desktop/AmpliacionLupa.h"

#include <algorithm>

namespace ondalis {

namespace {

constexpr std::uint32_t kColorCruz = 0xC00000;  // dark red: 192 where blue stands in the high byte

// Row or column of the source that each pixel of the picture shows.
std::vector<int> Reparto(int destino, int origen) {
    std::vector<int> indices(static_cast<std::size_t>(std::max(0, destino)));
    for (int i = 0; i < destino; ++i)
        indices[static_cast<std::size_t>(i)] = static_cast<int>(static_cast<std::int64_t>(i) * origen / destino);
    return indices;
}

// `encima` premultiplied ARGB over an opaque colour.
std::uint32_t Mezcla(std::uint32_t debajo, std::uint32_t encima) {
    const std::uint32_t falta = 255 - (encima >> 24);
    std::uint32_t mezcla = 0;
    for (int bits = 0; bits <= 16; bits += 8) {
        const std::uint32_t canal = ((encima >> bits) & 255) + ((debajo >> bits) & 255) * falta / 255;
        mezcla |= std::min<std::uint32_t>(canal, 255) << bits;
    }
    return mezcla;
}

std::uint32_t Pixel(const ImagenPixeles &imagen, int x, int y) {
    return imagen
        .pixeles[static_cast<std::size_t>(y) * static_cast<std::size_t>(imagen.ancho) + static_cast<std::size_t>(x)];
}

void Rellena(ImagenPixeles &imagen, const QRect &donde, std::uint32_t color) {
    const QRect dentro = donde.intersected(QRect(0, 0, imagen.ancho, imagen.alto));
    for (int y = dentro.top(); y <= dentro.bottom(); ++y) {
        const auto fila = imagen.pixeles.begin() + static_cast<std::ptrdiff_t>(y) * imagen.ancho;
        std::fill(fila + dentro.left(), fila + dentro.right() + 1, color);
    }
}

void DibujaCruz(ImagenPixeles &imagen, int brazo, int grosor) {
    const int x = Mitad(imagen.ancho), y = Mitad(imagen.alto);
    Rellena(imagen, QRect(x - brazo, y - grosor / 2, 2 * brazo, grosor), kColorCruz);
    Rellena(imagen, QRect(x - grosor / 2, y - brazo, grosor, 2 * brazo), kColorCruz);
}

}  // namespace

int Mitad(int n) { return n % 2 == 0 ? n / 2 : (n - 1) / 2 + ((n - 1) / 2) % 2; }

int Cuarto(int n) {
    const int entero = n / 4, resto = n % 4;
    if (resto == 2) return entero + entero % 2;
    return resto == 3 ? entero + 1 : entero;
}

QRect OrigenLupa(const QPoint &puntero, const QSize &ventana) {
    return {puntero.x() - Cuarto(ventana.width()), puntero.y() - Cuarto(ventana.height()), Mitad(ventana.width()),
            Mitad(ventana.height())};
}

ImagenPixeles ComponLupa(const PeticionLupa &p, const ImagenPixeles &copia, const ImagenPuntero &puntero) {
    ImagenPixeles cuadro{p.ventana.width(), p.ventana.height(), {}};
    cuadro.pixeles.assign(static_cast<std::size_t>(cuadro.ancho) * static_cast<std::size_t>(cuadro.alto), 0);
    const std::vector<int> columnas = Reparto(cuadro.ancho, p.origen.width());
    const std::vector<int> filas = Reparto(cuadro.alto, p.origen.height());
    const QPoint esquina = p.puntero - puntero.punta;  // of the pointer's picture on the screen
    const QRect delPuntero(esquina, QSize(puntero.imagen.ancho, puntero.imagen.alto));
    auto destino = cuadro.pixeles.begin();
    for (const int fila : filas) {
        const int y = p.origen.y() + fila;
        for (const int columna : columnas) {
            const int x = p.origen.x() + columna;
            if (p.recorte.contains(x, y)) *destino = Pixel(copia, x - p.recorte.x(), y - p.recorte.y()) & 0xFFFFFF;
            if (delPuntero.contains(x, y))
                *destino = Mezcla(*destino, Pixel(puntero.imagen, x - esquina.x(), y - esquina.y()));
            ++destino;
        }
    }
    DibujaCruz(cuadro, p.brazo, p.grosor);
    return cuadro;
}

}  // namespace ondalis
