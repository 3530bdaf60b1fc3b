// What the magnifier shows, computed from plain pixels: which rectangle of the screen, and the picture made of it.
// Pure; device pixels throughout, colours 0xRRGGBB unless said otherwise.
#pragma once

#include <QPoint>
#include <QRect>
#include <QSize>
#include <cstdint>
#include <vector>

namespace ondalis {

struct ImagenPixeles {
    int ancho = 0, alto = 0;
    std::vector<std::uint32_t> pixeles;  // row by row

    bool operator==(const ImagenPixeles &) const = default;
};

// The pointer's picture, premultiplied ARGB; `punta` is the pixel that points. Empty: no pointer is shown.
struct ImagenPuntero {
    ImagenPixeles imagen;
    QPoint punta;

    bool operator==(const ImagenPuntero &) const = default;
};

// Half of a square of side `n`, and a quarter, to the nearest integer, a tie to the even one.
int Mitad(int n);
int Cuarto(int n);

// The rectangle of the screen that a window of that size shows: half of it each way, with the pointer at its centre. It
// may reach beyond the screen.
QRect OrigenLupa(const QPoint &puntero, const QSize &ventana);

// One magnified picture of the size of the window. `copia` holds the pixels of `recorte`, the part of `origen` that is
// on the screen; beyond it the picture stays black. The pointer and the cross through the centre are drawn on top;
// `brazo` is half the cross's length, `grosor` its width.
struct PeticionLupa {
    QSize ventana;
    QRect origen, recorte;
    QPoint puntero;
    int brazo = 5, grosor = 1;
};
ImagenPixeles ComponLupa(const PeticionLupa &peticion, const ImagenPixeles &copia, const ImagenPuntero &puntero);

}  // namespace ondalis
