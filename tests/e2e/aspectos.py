"""Every window of the program in every look of the desktop, for capturas.py to picture.

A tour starts the program once in one look and comes by several windows; a window is one step of a tour: it brings its
window about and says where it stands. The step of an unattended look goes the same way as that of the documents.
"""
import contextlib
import os
import time

from arnes.banco import OBRA, PROGRAMA, Banco
from arnes.procesos import espera
from arnes.temas import viste
from casos.accesible import TODO, Lectora, _abre_para_ver, _pagina, _rotulos
from casos.opciones import TITULO, _doble_click, _espera_abierta
from casos.programa import _abre_menu, _hay_menu
from casos.ventanas import _elige, _mueve, _ventana
from casos.voces_pagina import ASISTENTE, PRIMER_ARRANQUE, _espera_asistente

VIAJES = {}  # name: the tour


class NoHay(AssertionError):
    """What is to be pictured isn't part of this build: left out, unless it was asked for by name."""


class Viaje:
    """`abre(aspecto)`: a context that gives the bench. `pasos`: {picture: function of the bench that gives the place of
    its window}, in the order of the way; each leaves the way to the next one open."""

    def __init__(self, nombre, abre, pasos):
        self.abre, self.pasos = abre, pasos
        VIAJES[nombre] = self


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


def fondo(b):
    b.escritorio.procesos.corre(['xsetroot', '-solid', '#46607a'])


def _cierra(b, titulo):
    b.tecla('Escape')
    espera(lambda: not hay_ventana(b, titulo), 10, que=f'the end of "{titulo}"')


# The configuration, its pages and dialogs.

CENTRADA = {'Ventana': {f'{lado}{ventana}': v * 15 for ventana in (
    'Principal', 'SonidosAviso', 'EditoresTexto', 'TeclasLeeTeclado') for lado, v in (('Left', 300), ('Top', 200))}}


@contextlib.contextmanager
def _configuracion(aspecto):
    grabar = {'Grabar': TODO['Grabar'] | {'NombreFichero': '/home/ana/Música/Lectura.wav'}}
    # On the smallest screen the window stands where the program puts it.
    sitio = CENTRADA if aspecto.pantalla == (1280, 800) else {}
    with Lectora(TODO | sitio | grabar, arranca=False, motor='real', tamano=aspecto.tamano) as b:
        fondo(b)
        viste(b.escritorio, aspecto)
        b.arranca_lector()
        _doble_click(b)
        _espera_abierta(b)
        yield b


def _muestra_pagina(b, rotulo):
    if rotulo not in _rotulos(b):
        raise NoHay(f'no page {rotulo} in this build')
    _pagina(b, rotulo)
    return espera_ventana(b, TITULO)


def _muestra_dialogo(rotulo, boton, titulo):
    def paso(b):
        _muestra_pagina(b, rotulo)
        _abre_para_ver(b, boton)
        sitio = espera_ventana(b, titulo)
        yield sitio
        _cierra(b, titulo)
    return paso


def _dialogos():
    for nombre, rotulo, boton, titulo in (
            ('sonidos_aviso', 'General', 'Elegir los sonidos de aviso', 'Sonidos de aviso'),
            ('editores_texto', 'Tipo lectura', 'Elegir qué se hace con los editores de texto', 'Editores de texto'),
            ('teclas_lee_teclado', 'Tipo lectura', 'Teclas que inician la lectura', 'Teclas que inician la lectura'),
            ('abrir', 'Grabar', 'Examinar...', 'Abrir')):
        yield nombre, _muestra_dialogo(rotulo, boton, titulo)


PAGINAS = ('General', 'Voces', 'Tipo lectura', 'Grabar', 'Diccionario', 'Teclas rápidas')
_SIN_TILDES = str.maketrans('áé ', 'ae_')
Viaje('configuracion', _configuracion, {
    **{'opciones_' + r.lower().translate(_SIN_TILDES): lambda b, r=r: _muestra_pagina(b, r) for r in PAGINAS},
    **dict(_dialogos()),
})


# The assistant.

@contextlib.contextmanager
def _asistente(aspecto):
    with Banco('real', PRIMER_ARRANQUE, arranca=False, tamano=aspecto.tamano) as b:
        fondo(b)
        viste(b.escritorio, aspecto)
        b.arranca_lector()
        _espera_asistente(b)
        yield b


def _paso_asistente(b):
    yield espera_ventana(b, ASISTENTE)
    b.tecla('alt+s')


Viaje('asistente', _asistente, {f'asistente_{n}': _paso_asistente for n in range(1, 6)})


# What the icon's menu leads to, and the messages.

@contextlib.contextmanager
def _icono(aspecto):
    with Banco('real', arranca=False, tamano=aspecto.tamano) as b:
        fondo(b)
        viste(b.escritorio, aspecto)
        b.arranca_lector()
        yield b


def _muestra_menu(b):
    _abre_menu(b)
    yield _hay_menu(b)
    b.tecla('Escape')


def _muestra_ayuda(b):
    _elige(b)
    yield espera_ventana(b, 'Índice - Ayuda de Ondalis')
    _cierra(b, 'Índice - Ayuda de Ondalis')


def _muestra_tema(b):
    _elige(b)
    espera_ventana(b, 'Índice - Ayuda de Ondalis')
    b.tecla('Tab')
    b.tecla('Return')
    titulo = 'Leer lo que se copia - Ayuda de Ondalis'
    yield espera_ventana(b, titulo)
    _cierra(b, titulo)


def _muestra_acerca_de(b):
    _mueve(b, 100, 100)
    _elige(b, 'Down', 'Down')
    yield espera_ventana(b, 'Acerca de Ondalis')
    _cierra(b, 'Acerca de Ondalis')


def _muestra_otro(*argumentos, **entorno):
    def paso(b):
        otro = b.escritorio.procesos.arranca([PROGRAMA, *argumentos], 'otro', dict(b.escritorio.entorno, **entorno))
        yield espera_ventana(b, 'Ondalis')
        b.tecla('Return')
        otro.wait(5)
    return paso


Viaje('icono', _icono, {
    'menu_aspecto': _muestra_menu, 'ayuda': _muestra_ayuda, 'ayuda_tema': _muestra_tema,
    'acerca_de': _muestra_acerca_de, 'segunda_copia': _muestra_otro(), 'linea_comandos': _muestra_otro('-help'),
})


# A start without a sound card, a start without a tray, a slow start.

def _otro_arranque(prepara):
    @contextlib.contextmanager
    def abre(aspecto):
        with Banco('real', arranca=False, tamano=aspecto.tamano) as b:
            fondo(b)
            viste(b.escritorio, aspecto)
            prepara(b)
            b.arranca_lector(espera_listo=False)
            yield b
    return abre


def _sin_sonido(b):
    b.escritorio.entorno['PULSE_SERVER'] = 'unix:/nonexistent'


def _sin_bandeja(b):
    b.escritorio.mata_bandeja()


def _despacio(b):
    """A worker that takes its time: the splash stands there meanwhile."""
    lento = os.path.join(b.escritorio.carpeta, 'motor-lento')
    with open(lento, 'w', encoding='ascii') as f:
        f.write(f'#!/bin/sh\nsleep 4\nexec {OBRA}/bin/ondalis-motor "$@"\n')
    os.chmod(lento, 0o755)
    b.escritorio.entorno['ONDALIS_MOTOR'] = lento


def _solo_ventana(b):
    def hay():
        return _ventana(b, 'Ondalis')
    x, y, ancho, alto = espera(hay, 15, que='the window')[1:]
    time.sleep(0.7)
    return x, y, ancho, alto


Viaje('sin_sonido', _otro_arranque(_sin_sonido), {'pregunta_sonido': _solo_ventana})
Viaje('sin_bandeja', _otro_arranque(_sin_bandeja), {'ventana_menu': _solo_ventana})
Viaje('despacio', _otro_arranque(_despacio), {'pantalla_inicio': _solo_ventana})
