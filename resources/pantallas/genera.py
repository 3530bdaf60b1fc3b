#!/usr/bin/env python3
"""Draws the picture of the splash and of the about box as SVG and renders it to PNG with rsvg-convert.

Pure green (#00ff00) means transparent: the window takes its shape from it, so the outline is drawn without smoothing
and no other part may hold that colour. No row of the picture is wholly opaque: at such a row the shape would become a
rectangle down to the bottom. The labels and the button stand on the free field below the name. The PNG files are
committed, the second one for screens at 192 dpi.
"""
import os
import subprocess
import sys

ANCHO, ALTO = 480, 320
VERDE, BORDE, BLANCO = "#00ff00", "#0b1730", "#ffffff"

# A speech bubble with its tail at the bottom left, four units inside the picture.
GLOBO = "M36 4 H444 A32 32 0 0 1 476 36 V232 A32 32 0 0 1 444 264 H132 L62 316 V264 H36 A32 32 0 0 1 4 232 V36 A32 32 0 0 1 36 4 Z"


def onda(radio):
    x, y = radio * 0.8, radio * 0.6
    return ('<path d="M%.1f %.1f A%d %d 0 0 1 %.1f %.1f" fill="none" stroke="#ffffff" stroke-width="9" '
            'stroke-linecap="round"/>' % (48 + x, 78 - y, radio, radio, 48 + x, 78 + y))


def dibujo():
    return "\n".join([
        '<svg xmlns="http://www.w3.org/2000/svg" width="%d" height="%d" viewBox="0 0 %d %d">' % (ANCHO, ALTO, ANCHO, ALTO),
        '<defs><linearGradient id="f" x1="0" y1="0" x2="0" y2="1"><stop offset="0" stop-color="#1d4f9e"/>'
        '<stop offset="0.45" stop-color="#16366f"/><stop offset="1" stop-color="#12264b"/></linearGradient></defs>',
        '<rect width="%d" height="%d" fill="%s" shape-rendering="crispEdges"/>' % (ANCHO, ALTO, VERDE),
        '<path d="%s" fill="url(#f)" stroke="%s" stroke-width="4" stroke-linejoin="round" shape-rendering="crispEdges"/>'
        % (GLOBO, BORDE),
        '<circle cx="48" cy="78" r="12" fill="#ffffff"/>', onda(28), onda(48), onda(68),
        '<text x="150" y="90" font-family="DejaVu Sans" font-weight="bold" font-size="60" fill="%s">Ondalis</text>' % BLANCO,
        '<text x="153" y="120" font-family="DejaVu Sans" font-size="18" fill="#cfe0ff">Copie un texto y escúchelo</text>',
        '<path d="M32 144 H448" stroke="#5b86cc" stroke-width="2"/>',
        '</svg>', ''])


def main():
    carpeta = os.path.dirname(os.path.abspath(__file__))
    svg = os.path.join(carpeta, "pantalla.svg")
    with open(svg, "w", encoding="utf-8") as fichero:
        fichero.write(dibujo())
    for escala, nombre in ((1, "pantalla.png"), (2, "pantalla@2x.png")):
        subprocess.run(["rsvg-convert", "-w", str(ANCHO * escala), "-h", str(ALTO * escala), "-o",
                        os.path.join(carpeta, nombre), svg], check=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
