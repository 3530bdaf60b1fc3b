#!/usr/bin/env python3
"""Draws the eleven pictures of the tray icon as SVG and renders them to PNG with rsvg-convert.

A speech bubble with a dark outline and a light or coloured fill: the outline carries it on a light panel, the fill on
a dark one. Shapes, not only colours, tell the states apart. The drawing stands on a grid of 64 units, so that 4 units
are one pixel at the smallest size. The PNG files are committed: the program needs no SVG plug-in.
"""
import os
import subprocess
import sys

TAMANOS = [16, 22, 24, 32, 48, 64, 128]
APLICACION = 3  # the picture that stands for the program in menus and software centres, up to 256 pixels
BORDE, BLANCO, ROJO, GRIS, AZUL = "#14213d", "#ffffff", "#d62828", "#a7adb5", "#1d5fbf"

GLOBO = "M14 2 H50 A12 12 0 0 1 62 14 V34 A12 12 0 0 1 50 46 H32 L14 61 V46 A12 12 0 0 1 2 34 V14 A12 12 0 0 1 14 2 Z"


def linea(d, color, ancho=5):
    return '<path d="%s" fill="none" stroke="%s" stroke-width="%s" stroke-linecap="round"/>' % (d, color, ancho)


def texto(color):
    return linea("M16 18 H48", color, 4) + linea("M16 30 H38", color, 4)


def ondas(color, cuantas):
    partes = ['<circle cx="16" cy="24" r="5.5" fill="%s"/>' % color]
    for i in range(cuantas):
        r = 11 + 9 * i
        dx, dy = r * 0.8, r * 0.6
        partes.append(linea("M%.1f %.1f A%d %d 0 0 1 %.1f %.1f" % (16 + dx, 24 - dy, r, r, 16 + dx, 24 + dy), color))
    return "".join(partes)


def reloj(color):
    return ('<circle cx="32" cy="24" r="15" fill="none" stroke="%s" stroke-width="4"/>' % color
            + linea("M32 15 V24 L39 28", color, 4))


def pausa(color):
    return "".join('<rect x="%d" y="12" width="8" height="24" rx="1.5" fill="%s"/>' % (x, color) for x in (20, 36))


def barra(color):
    return linea("M18 38 L46 10", color, 6)


def punto():
    """The recording lamp."""
    return '<circle cx="51" cy="51" r="11" fill="%s" stroke="%s" stroke-width="4"/>' % (BLANCO, BORDE) + \
        '<circle cx="51" cy="51" r="5.5" fill="%s"/>' % ROJO


IMAGENES = [
    (BLANCO, texto(BORDE)),
    (BLANCO, ondas(AZUL, 1)),
    (BLANCO, ondas(AZUL, 2)),
    (BLANCO, ondas(AZUL, 3)),
    (ROJO, texto(BLANCO) + punto()),
    (ROJO, ondas(BLANCO, 1) + punto()),
    (ROJO, ondas(BLANCO, 2) + punto()),
    (ROJO, ondas(BLANCO, 3) + punto()),
    (GRIS, barra(BORDE)),
    (BLANCO, reloj(AZUL)),
    (BLANCO, pausa(BORDE)),
]


def main():
    carpeta = os.path.dirname(os.path.abspath(__file__))
    for numero, (fondo, dibujo) in enumerate(IMAGENES, 1):
        svg = os.path.join(carpeta, "%d.svg" % numero)
        with open(svg, "w", encoding="utf-8") as fichero:
            fichero.write('<svg xmlns="http://www.w3.org/2000/svg" width="64" height="64" viewBox="0 0 64 64">'
                          '<path d="%s" fill="%s" stroke="%s" stroke-width="4" stroke-linejoin="round"/>%s</svg>\n'
                          % (GLOBO, fondo, BORDE, dibujo))
        for tamano in TAMANOS + [256] * (numero == APLICACION):
            subprocess.run(["rsvg-convert", "-w", str(tamano), "-h", str(tamano), "-o",
                            os.path.join(carpeta, "%d-%d.png" % (numero, tamano)), svg], check=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
