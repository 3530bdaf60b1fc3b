#!/usr/bin/python3
"""Takes the pictures of docs/pictures, each on a private desktop of its own.

    capturas.py --lista       names of all pictures
    capturas.py [NAME ...]    takes those, or all

Pages and dialogs of the configuration are also there in other looks, by names such as opciones_voces_oscuro or
sonidos_aviso_contraste_192 (light, dark, high contrast; 96 and 192 dots): those are for looking at, and go to the build's
folder "capturas". "temas" names them all.

A picture is one function here: it brings its window about as a user does, and takes it. To add one, write a function
with @captura; its name is the file's. They are to be looked at before they are committed.
"""
import os
import signal
import subprocess
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from arnes.banco import OBRA, PROGRAMA, RAIZ, Banco  # noqa: E402
from arnes.procesos import espera  # noqa: E402
from arnes.temas import PUNTOS, TEMAS, viste  # noqa: E402
from casos.accesible import TODO, Lectora, _abre_para_ver, _pagina, _rotulos  # noqa: E402
from casos.opciones import TITULO, _doble_click, _espera_abierta  # noqa: E402
from casos.programa import _abre_menu, _hay_menu  # noqa: E402
from casos.ventanas import CON_LUPA, _elige, _mueve  # noqa: E402
from demo import TEXTO, abre_texto  # noqa: E402

CAPTURAS = {}
DESTINO = os.path.join(RAIZ, 'docs', 'pictures')
APARTE = os.path.join(OBRA, 'capturas')
DE_TEMAS = set()
MARGEN = 24  # pixels of desktop left round a window


class NoHay(AssertionError):
    """What is to be pictured isn't part of this build: left out, unless it was asked for by name."""


def captura(f):
    CAPTURAS[f.__name__] = f
    return f


def ruta_de(nombre):
    return os.path.join(APARTE if nombre in DE_TEMAS else DESTINO, nombre + '.png')


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
    ruta = ruta_de(nombre)
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


def _configuracion(nombre, tema, puntos, rotulo, boton, dialogo):
    """The page of that caption, or the dialog that its button opens."""
    escala = puntos // 96
    grabar = {'Grabar': TODO['Grabar'] | {'NombreFichero': '/home/ana/Música/Lectura.wav'}}
    with Lectora(TODO | CENTRADA | grabar, arranca=False, motor='real', tamano=f'{1280 * escala}x{800 * escala}') as b:
        _fondo(b)
        viste(b.escritorio, tema, puntos)
        b.arranca_lector()
        _doble_click(b)
        _espera_abierta(b)
        if rotulo not in _rotulos(b):
            raise NoHay(f'no page {rotulo} in this build')
        _pagina(b, rotulo)
        if boton:
            _abre_para_ver(b, boton)
        toma(b, nombre, espera_ventana(b, dialogo or TITULO))


def _anade_configuracion():
    """A picture for each page and dialog in each look; the plain one is that of the documents."""
    for nombre, rotulo, boton, dialogo in CONFIGURACION:
        for tema in TEMAS:
            for puntos in PUNTOS:
                entero = nombre + ('' if tema == 'claro' else '_' + tema) + ('' if puntos == 96 else f'_{puntos}')
                if entero != nombre:
                    DE_TEMAS.add(entero)
                CAPTURAS[entero] = lambda e=entero, t=tema, p=puntos, r=rotulo, bo=boton, d=dialogo: _configuracion(
                    e, t, p, r, bo, d)


CENTRADA = {'Ventana': {f'{lado}{ventana}': v * 15 for ventana in (
    'Principal', 'SonidosAviso', 'EditoresTexto', 'TeclasLeeTeclado') for lado, v in (('Left', 300), ('Top', 200))}}
CONFIGURACION = (
    ('opciones_general', 'General', None, None),
    ('opciones_voces', 'Voces', None, None),
    ('opciones_tipo_lectura', 'Tipo lectura', None, None),
    ('opciones_grabar', 'Grabar', None, None),
    ('opciones_diccionario', 'Diccionario', None, None),
    ('opciones_teclas_rapidas', 'Teclas rápidas', None, None),
    ('sonidos_aviso', 'General', 'Elegir los sonidos de aviso', 'Sonidos de aviso'),
    ('editores_texto', 'Tipo lectura', 'Elegir qué se hace con los editores de texto', 'Editores de texto'),
)
_anade_configuracion()


def main():
    pedidas = sys.argv[1:]
    if pedidas == ['--lista']:
        print('\n'.join(CAPTURAS))
        return 0
    if 'temas' in pedidas:
        pedidas = [p for p in pedidas if p != 'temas'] + sorted(DE_TEMAS)
    if any(p not in CAPTURAS for p in pedidas):
        print(__doc__, file=sys.stderr)
        return 2
    for carpeta in (DESTINO, APARTE):
        os.makedirs(carpeta, exist_ok=True)
    for nombre in pedidas or [c for c in CAPTURAS if c not in DE_TEMAS]:
        try:
            CAPTURAS[nombre]()
        except NoHay as error:
            if nombre in sys.argv[1:]:
                raise
            print(f'capturas: {nombre}: {error}', file=sys.stderr)
            continue
        ruta = ruta_de(nombre)
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
