#!/usr/bin/python3
"""Takes the pictures of docs/pictures, each on a private desktop of its own.

    capturas.py --lista       names of all pictures
    capturas.py [NAME ...]    takes those, or all

A picture is one function here: it brings its window about as a user does, and takes it. To add one, write a function
with @captura; its name is the file's. They are to be looked at before they are committed.
"""
import os
import signal
import subprocess
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from arnes.banco import PROGRAMA, RAIZ, Banco  # noqa: E402
from arnes.procesos import espera  # noqa: E402
from casos.programa import _abre_menu, _hay_menu  # noqa: E402
from casos.ventanas import CON_LUPA, _elige, _mueve  # noqa: E402
from demo import TEXTO, abre_texto  # noqa: E402

CAPTURAS = {}
DESTINO = os.path.join(RAIZ, 'docs', 'pictures')
MARGEN = 24  # pixels of desktop left round a window


def captura(f):
    CAPTURAS[f.__name__] = f
    return f


def hay_ventana(b, titulo):
    """Position and size (x, y, width, height) of the mapped window of that exact title with its frame, or None."""
    arbol = b.escritorio.procesos.corre(['xdotool', 'search', '--onlyvisible', '--name', f'^{titulo}$'],
                                        comprueba=False).decode().split()
    for ventana in arbol:
        marco = b.escritorio.procesos.corre(['xwininfo', '-frame', '-id', ventana], comprueba=False).decode()
        valores = {}
        for linea in marco.splitlines():
            clave, _, valor = linea.strip().partition(':')
            valores[clave] = valor.strip()
        if valores.get('Map State') == 'IsViewable' and int(valores['Width']) > 1:
            return tuple(int(valores[c]) for c in ('Absolute upper-left X', 'Absolute upper-left Y', 'Width', 'Height'))
    return None


def espera_ventana(b, titulo, limite=15):
    """Waits for the window, and until it has stood still and painted for a moment."""
    espera(lambda: hay_ventana(b, titulo), limite, que=f'the window "{titulo}"')
    time.sleep(0.7)
    return hay_ventana(b, titulo)


def toma(b, nombre, recorte=None):
    """The whole screen, or the part `recorte` (x, y, width, height) with a margin, to docs/pictures/NAME.png."""
    ruta = os.path.join(DESTINO, nombre + '.png')
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


def _fondo(b):
    b.escritorio.procesos.corre(['xsetroot', '-solid', '#46607a'])


def _lee(b):
    """A text stands in a window of another program, has been copied, and is being read."""
    _fondo(b)
    abre_texto(b)
    t = b.copia(TEXTO)
    b.espera_sonido(10, desde=t)
    time.sleep(1.0)


@captura
def escritorio():
    with Banco('real') as b:
        _lee(b)
        toma(b, 'escritorio')


@captura
def menu():
    """The icon in the notification area with its menu open, during a reading."""
    with Banco('real') as b:
        _lee(b)
        _abre_menu(b)
        toma(b, 'menu', _hay_menu(b))


@captura
def pregunta_sonido():
    """The question on a machine without a sound card."""
    with Banco('real', arranca=False) as b:
        entorno = dict(b.escritorio.entorno, PULSE_SERVER='unix:/nonexistent')
        _fondo(b)
        lector = b.escritorio.procesos.arranca([PROGRAMA], 'ondalis', entorno)
        toma(b, 'pregunta_sonido', espera_ventana(b, 'Ondalis'))
        lector.send_signal(signal.SIGTERM)
        lector.wait(5)


@captura
def segunda_copia():
    """What a second reader says."""
    with Banco('real') as b:
        _fondo(b)
        otro = b.escritorio.procesos.arranca([PROGRAMA], 'otro', b.escritorio.entorno)
        toma(b, 'segunda_copia', espera_ventana(b, 'Ondalis'))
        b.tecla('Return')
        otro.wait(5)


@captura
def linea_comandos():
    """The options of the command line."""
    with Banco('real') as b:
        _fondo(b)
        otro = b.escritorio.procesos.arranca([PROGRAMA, '-help'], 'otro', b.escritorio.entorno)
        toma(b, 'linea_comandos', espera_ventana(b, 'Ondalis'))
        b.tecla('Return')
        otro.wait(5)


@captura
def ayuda():
    with Banco('real') as b:
        _fondo(b)
        _elige(b)
        toma(b, 'ayuda', espera_ventana(b, 'Índice - Ayuda de Ondalis'))


@captura
def acerca_de():
    with Banco('real') as b:
        _fondo(b)
        _mueve(b, 100, 100)
        _elige(b, 'Down', 'Down')
        toma(b, 'acerca_de', espera_ventana(b, 'Acerca de Ondalis'))


@captura
def lupa():
    """The magnifier over a text of another program."""
    with Banco('real', ajustes=CON_LUPA) as b:
        _fondo(b)
        abre_texto(b)
        _mueve(b, 300, 260)
        espera_ventana(b, 'Ondalis')
        toma(b, 'lupa')


def main():
    pedidas = sys.argv[1:]
    if pedidas == ['--lista']:
        print('\n'.join(CAPTURAS))
        return 0
    if any(p not in CAPTURAS for p in pedidas):
        print(__doc__, file=sys.stderr)
        return 2
    os.makedirs(DESTINO, exist_ok=True)
    for nombre in pedidas or CAPTURAS:
        CAPTURAS[nombre]()
        ruta = os.path.join(DESTINO, nombre + '.png')
        cuantos = colores(ruta)
        # A black or a plain screen is no picture of anything.
        if cuantos < 20:
            print(f'capturas: {ruta} tiene {cuantos} colores', file=sys.stderr)
            return 1
        print(ruta, flush=True)
    return 0


if __name__ == '__main__':
    try:
        sys.exit(main())
    except AssertionError as error:
        print(f'capturas: {error}', file=sys.stderr)
        sys.exit(1)
