#!/usr/bin/python3
"""Takes the pictures of docs/pictures, each on a private desktop of its own.

    capturas.py --lista       names of all pictures
    capturas.py [NAME ...]    takes those, or all of the documents

Every window is also there in other looks, by names such as opciones_voces_oscuro or sonidos_aviso_contraste_192 (light,
dark, high contrast; 96, 144 and 192 dots; a letter of 18 points): those are for looking at, and go to the build's folder
"capturas". "temas" names them all, "temas_oscuro" or "temas_192" those of one look.

A picture is a function here, or a step of a tour in aspectos.py: it brings its window about as a user does. They are to
be looked at before they are committed.
"""
import contextlib
import inspect
import os
import subprocess
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from arnes.banco import OBRA, RAIZ, Banco  # noqa: E402
from arnes.temas import ASPECTOS  # noqa: E402
from aspectos import VIAJES, NoHay, espera_ventana, fondo  # noqa: E402
from casos.programa import _abre_menu, _hay_menu  # noqa: E402
from casos.ventanas import CON_LUPA, _mueve  # noqa: E402
from demo import TEXTO, abre_texto  # noqa: E402

CAPTURAS = {}
DESTINO = os.path.join(RAIZ, 'docs', 'pictures')
APARTE = os.path.join(OBRA, 'capturas')
MARGEN = 24  # pixels of desktop left round a window
# Not for the documents: they have a picture of the same with more to see, or need none.
SOLO_ASPECTOS = {'menu_aspecto', 'ayuda_tema', 'abrir', 'pantalla_inicio', 'ventana_menu',
                 *(f'asistente_{n}' for n in range(1, 6))}


def captura(f):
    CAPTURAS[f.__name__] = f
    return f


def toma(b, ruta, recorte=None):
    """The whole screen, or the part `recorte` (x, y, width, height) with a margin, into that file."""
    b.escritorio.captura(ruta)
    if recorte:
        x, y, ancho, alto = recorte
        x, y = max(0, x - MARGEN), max(0, y - MARGEN)
        b.escritorio.procesos.corre(['convert', ruta, '-crop', f'{ancho + 2 * MARGEN}x{alto + 2 * MARGEN}+{x}+{y}',
                                     '+repage', ruta])
    # Without dates and with few bytes: a picture of the same thing is to be the same file.
    b.escritorio.procesos.corre(['convert', ruta, '-strip', '-define', 'png:exclude-chunks=date,time', ruta])


def colores(ruta):
    """How many colours a picture has, by ImageMagick."""
    return int(subprocess.run(['identify', '-format', '%k', ruta], stdout=subprocess.PIPE, check=True).stdout)


def _lee(b):
    """A text stands in a window of another program, has been copied, and is being read."""
    fondo(b)
    abre_texto(b)
    t = b.copia(TEXTO)
    b.espera_sonido(10, desde=t)
    time.sleep(1.0)


@captura
def escritorio(ruta):
    with Banco('real') as b:
        _lee(b)
        toma(b, ruta)


@captura
def menu(ruta):
    """The icon in the notification area with its menu open, during a reading."""
    with Banco('real') as b:
        _lee(b)
        _abre_menu(b)
        toma(b, ruta, _hay_menu(b))


@captura
def lupa(ruta):
    """The magnifier over a text of another program."""
    with Banco('real', ajustes=CON_LUPA) as b:
        fondo(b)
        abre_texto(b)
        _mueve(b, 300, 260)
        espera_ventana(b, 'Ondalis')
        toma(b, ruta)


def _de_viajes():
    """{picture: (look, tour, step)}."""
    dadas = {}
    for aspecto in ASPECTOS:
        for nombre, viaje in VIAJES.items():
            for paso in viaje.pasos:
                dadas[paso + aspecto.sufijo] = aspecto, nombre, paso
    return dadas


DE_VIAJES = _de_viajes()
DE_DOCUMENTOS = [*CAPTURAS, *(n for n, (aspecto, _, paso) in DE_VIAJES.items()
                              if not aspecto.sufijo and paso not in SOLO_ASPECTOS)]


def ruta_de(nombre):
    return os.path.join(DESTINO if nombre in DE_DOCUMENTOS else APARTE, nombre + '.png')


def _pasa(b, hace, ruta):
    """One step of a tour: a generator gives the window's place and then takes the window away."""
    dado = hace(b)
    if not inspect.isgenerator(dado):
        toma(b, ruta, dado)
        return
    toma(b, ruta, next(dado))
    with contextlib.suppress(StopIteration):
        next(dado)


def _viaja(aspecto, nombre, pedidos):
    """The steps of one tour that are asked for; those of the assistant only from the first one on. Gives the files."""
    viaje = VIAJES[nombre]
    with viaje.abre(aspecto) as b:
        for paso, hace in viaje.pasos.items():
            ruta = ruta_de(paso + aspecto.sufijo)
            if paso not in pedidos and nombre != 'asistente':
                continue
            _pasa(b, hace, ruta)
            yield ruta


def _por_viajes(pedidas):
    """The names asked for as {(look, tour): steps}, so that each desktop is put up once."""
    grupos = {}
    for nombre in pedidas:
        if nombre in DE_VIAJES:
            aspecto, viaje, paso = DE_VIAJES[nombre]
            grupos.setdefault((aspecto, viaje), set()).add(paso)
    return grupos


def _toma_todas(pedidas):
    for nombre in pedidas:
        if nombre in CAPTURAS:
            CAPTURAS[nombre](ruta_de(nombre))
            yield ruta_de(nombre)
    for (aspecto, viaje), pasos in _por_viajes(pedidas).items():
        try:
            yield from _viaja(aspecto, viaje, pasos)
        except NoHay as error:
            print(f'capturas: {error}', file=sys.stderr)


def _pedidas(argumentos):
    """Names of pictures; None when there is one that nobody knows."""
    dadas = []
    for uno in argumentos or DE_DOCUMENTOS:
        if uno in CAPTURAS or uno in DE_VIAJES:
            dadas.append(uno)
        elif uno == 'temas':
            dadas += [n for n in DE_VIAJES if ruta_de(n).startswith(APARTE)]
        else:
            suyas = [n for n, (aspecto, _, _) in DE_VIAJES.items() if uno == 'temas' + aspecto.sufijo]
            if not suyas:
                return None
            dadas += suyas
    return dadas


def main():
    if sys.argv[1:] == ['--lista']:
        print('\n'.join([*CAPTURAS, *DE_VIAJES]))
        return 0
    pedidas = _pedidas(sys.argv[1:])
    if pedidas is None:
        print(__doc__, file=sys.stderr)
        return 2
    for carpeta in (DESTINO, APARTE):
        os.makedirs(carpeta, exist_ok=True)
    for ruta in _toma_todas(pedidas):
        cuantos = colores(ruta)
        # A black or a plain screen is no picture of anything.
        if cuantos < 20:
            print(f'capturas: {ruta} has {cuantos} colours', file=sys.stderr)
            return 1
        print(ruta, flush=True)
    return 0


if __name__ == '__main__':
    try:
        sys.exit(main())
    except AssertionError as error:
        print(f'capturas: {error}', file=sys.stderr)
        sys.exit(1)
