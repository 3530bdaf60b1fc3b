"""Looks of the desktop: colours, as the toolkit takes them from a desktop's settings, and the screen's density.

Of the platform themes only that of KDE is part of the toolkit itself: it reads kdeglobals, which is how any palette can be
given to a program without a package more. Where a GNOME or Xfce desktop is dark, Qt 6.4 follows through the package
adwaita-qt6 or qt6ct; what a window then has to cope with is the same, another palette.
"""
import dataclasses
import os

# Window, its letters, fields, their letters, buttons, selection, its letters, links, what is disabled or secondary.
_COLORES = {
    'oscuro': ((49, 54, 59), (239, 240, 241), (35, 38, 41), (239, 240, 241), (49, 54, 59), (61, 174, 233),
               (239, 240, 241), (41, 128, 185), (127, 140, 141)),
    'contraste': ((0, 0, 0), (255, 255, 255), (0, 0, 0), (255, 255, 255), (0, 0, 0), (255, 255, 0), (0, 0, 0),
                  (0, 255, 255), (0, 255, 0)),
}
TEMAS = ('claro', *_COLORES)


@dataclasses.dataclass(frozen=True)
class Aspecto:
    """`puntos`: of the screen, which is as much larger than one of 96. `letra`: the desktop's letter, in points, where
    it isn't the usual one of 9."""
    tema: str = 'claro'
    puntos: int = 96
    letra: int = 0
    pantalla: tuple = (1280, 800)

    @property
    def sufijo(self):
        return (('' if self.tema == 'claro' else '_' + self.tema) + ('' if self.puntos == 96 else f'_{self.puntos}')
                + (f'_letra{self.letra}' if self.letra else ''))

    @property
    def tamano(self):
        """In the screen's own pixels."""
        return 'x'.join(str(lado * self.puntos // 96) for lado in self.pantalla)


# The first one is that of the documents. The last ones: a large letter, on the smallest screen that is to be expected.
ASPECTOS = (
    Aspecto(), Aspecto('oscuro'), Aspecto('contraste'),
    Aspecto(puntos=144), Aspecto('oscuro', 144), Aspecto('contraste', 144),
    Aspecto(puntos=192), Aspecto('oscuro', 192), Aspecto('contraste', 192),
    Aspecto(letra=18, pantalla=(1024, 768)), Aspecto('contraste', letra=18, pantalla=(1024, 768)),
)


def _grupo(nombre, fondo, letra, enlace, apagado):
    def color(c):
        return ','.join(map(str, c))
    return (f'[Colors:{nombre}]\nBackgroundNormal={color(fondo)}\nBackgroundAlternate={color(fondo)}\n'
            f'ForegroundNormal={color(letra)}\nForegroundLink={color(enlace)}\nForegroundVisited={color(enlace)}\n'
            f'ForegroundInactive={color(apagado)}\n')


def _paleta(ventana, letra, campo, letra_campo, boton, elegido, letra_elegido, enlace, apagado):
    return (_grupo('Window', ventana, letra, enlace, apagado) + _grupo('View', campo, letra_campo, enlace, apagado)
            + _grupo('Button', boton, letra, enlace, apagado)
            + _grupo('Selection', elegido, letra_elegido, enlace, apagado)
            + _grupo('Tooltip', campo, letra_campo, enlace, apagado))


def viste(escritorio, aspecto):
    """Before the program starts, on a desktop of the look's size."""
    if aspecto.puntos != 96:
        escritorio.entorno['QT_SCALE_FACTOR'] = str(aspecto.puntos / 96)
    texto = ''
    if aspecto.letra:
        texto += f'[General]\nfont=DejaVu Sans,{aspecto.letra},-1,5,50,0,0,0,0,0\n'
    if aspecto.tema != 'claro':
        texto += _paleta(*_COLORES[aspecto.tema])
    if not texto:
        return
    with open(os.path.join(escritorio.entorno['XDG_CONFIG_HOME'], 'kdeglobals'), 'w', encoding='ascii') as f:
        f.write(texto)
    escritorio.entorno.update(QT_QPA_PLATFORMTHEME='kde', KDE_SESSION_VERSION='5')
