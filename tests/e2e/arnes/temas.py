"""Looks of the desktop: colours, as the toolkit takes them from a desktop's settings, and the screen's density.

Of the platform themes only that of KDE is part of the toolkit itself: it reads kdeglobals, which is how any palette can be
given to a program without a package more. Where a GNOME or Xfce desktop is dark, Qt 6.4 follows through the package
adwaita-qt6 or qt6ct; what a window then has to cope with is the same, another palette.
"""
import os

# Window, its letters, fields, their letters, buttons, selection, its letters, links, what is disabled or secondary.
_COLORES = {
    'oscuro': ((49, 54, 59), (239, 240, 241), (35, 38, 41), (239, 240, 241), (49, 54, 59), (61, 174, 233),
               (239, 240, 241), (41, 128, 185), (127, 140, 141)),
    'contraste': ((0, 0, 0), (255, 255, 255), (0, 0, 0), (255, 255, 255), (0, 0, 0), (255, 255, 0), (0, 0, 0),
                  (0, 255, 255), (0, 255, 0)),
}
TEMAS = ('claro', *_COLORES)
PUNTOS = (96, 192)


def _grupo(nombre, fondo, letra, enlace, apagado):
    def color(c):
        return ','.join(map(str, c))
    return (f'[Colors:{nombre}]\nBackgroundNormal={color(fondo)}\nBackgroundAlternate={color(fondo)}\n'
            f'ForegroundNormal={color(letra)}\nForegroundLink={color(enlace)}\nForegroundVisited={color(enlace)}\n'
            f'ForegroundInactive={color(apagado)}\n')


def viste(escritorio, tema, puntos=96):
    """Before the program starts. `puntos`: 96 or 192, whose screen should be twice as large each way."""
    if puntos != 96:
        escritorio.entorno['QT_SCALE_FACTOR'] = str(puntos / 96)
    if tema == 'claro':
        return
    ventana, letra, campo, letra_campo, boton, elegido, letra_elegido, enlace, apagado = _COLORES[tema]
    with open(os.path.join(escritorio.entorno['XDG_CONFIG_HOME'], 'kdeglobals'), 'w', encoding='ascii') as f:
        f.write(_grupo('Window', ventana, letra, enlace, apagado) + _grupo('View', campo, letra_campo, enlace, apagado)
                + _grupo('Button', boton, letra, enlace, apagado)
                + _grupo('Selection', elegido, letra_elegido, enlace, apagado)
                + _grupo('Tooltip', campo, letra_campo, enlace, apagado))
    escritorio.entorno.update(QT_QPA_PLATFORMTHEME='kde', KDE_SESSION_VERSION='5')
