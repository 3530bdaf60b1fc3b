"""Every window as a screen reader has it: named, told apart, reached by keyboard, and alive while it is listened to."""
import os
import pty
import re
import signal
import threading
import time
import tty

from arnes.accesibilidad import Oyente, defectos, enfocables, inalcanzables, nodos, recorre
from arnes.banco import OBRA, PROGRAMA, Banco, texto_tonos
from arnes.procesos import espera
from casos.opciones import TITULO, _doble_click
from casos.programa import _abre_menu
from casos.ventanas import _elige, _espera_ventana

CASOS = {}
PIE = {'Aceptar', 'Cancelar', 'Ayuda', 'Visitar web'}
AJENAS = {'Abrir', 'Guardar como'}  # the toolkit's own file dialog
# As many controls as possible can take the focus.
TODO = {'General': {'UtilizaSonidos': 'True'}, 'TipoLectura': {'LeeTeclado': 'True'},
        'Editores': {'PalabrasWord': 'False', 'ParadaWord': 'True'}, 'Voz': {'ValoresAvanzados': 'True'},
        'Grabar': {'GrabarTexto': 'True'}}


def caso(f):
    CASOS[f.__name__] = f
    return f


class Lectora(Banco):
    """A bench with a screen reader's client on it, there before the reader. The rest as for a bench."""

    def __init__(self, ajustes=None, arranca=True, **mas):
        super().__init__(ajustes=ajustes, arranca=False, **mas)
        self._arranca_tras = arranca
        self.oyente = None

    def __enter__(self):
        super().__enter__()
        try:
            self.oyente = Oyente(self.escritorio)
            if self._arranca_tras:
                self.arranca_lector()
        except BaseException as e:
            self.__exit__(type(e), e, None)
            raise
        return self

    def __exit__(self, *error):
        if self.oyente:
            self.oyente.__exit__()
        super().__exit__(*error)

    def titulos(self):
        return set(self.oyente.titulos())


def _comprueba(o, pulsa, titulo):
    """A window's names, and every control of it by keyboard. Returns its tree and the objects met."""
    o.espera_activa(titulo)
    ventana = o.ventana(titulo)
    malos = defectos(ventana)
    assert not malos, f'{titulo}: {malos}'
    vistos = recorre(o, pulsa, ventana)
    sin = inalcanzables(o.ventana(titulo), vistos)
    assert not sin, f'{titulo}: {sin} never had the focus; met: {[v[0] for v in vistos]}'
    print(f'{titulo}: {len(enfocables(ventana))} controls, {len(vistos)} met')
    return ventana, vistos


def _ve_a(b, nombres):
    """Tab until one of those names has the focus."""
    b.oyente.asienta()
    foco, camino = b.oyente.foco(), []
    for _ in range(150):
        if foco and foco[0] in nombres:
            return
        camino.append(foco and foco[0])
        focos = b.oyente.pulsa(b.tecla, 'Tab')
        assert focos, f'Tab leads nowhere, seeking {nombres}; met: {camino}'
        foco = focos[-1]
    raise AssertionError(f'{nombres} never had the focus; met: {camino}')


def _abre_lo_que_abra(b, boton):
    """Presses a button of a page; what window comes is walked and dismissed."""
    antes = b.titulos()
    _abre_para_ver(b, boton)
    b.oyente.asienta()
    fin = time.monotonic() + 1.0  # a window that comes later than the key's own work
    nuevas = set()
    # A window may be listed a moment before its title is; one that never has a title is found below.
    while not any(nuevas) and time.monotonic() < fin:
        nuevas = b.titulos() - antes
    if any(nuevas):
        nuevas -= {''}
    b.sigue_vivo()
    for titulo in nuevas:
        if titulo in AJENAS:
            b.oyente.espera_activa(titulo)
        else:
            _comprueba(b.oyente, b.tecla, titulo)
        b.tecla('Escape')
        espera(lambda t=titulo: t not in b.titulos(), 20, que=f'the end of {titulo}')
    b.oyente.espera_activa(TITULO)
    return nuevas


def _abre_para_ver(b, boton):
    """Presses a button of the page and leaves open what comes."""
    _ve_a(b, {boton})
    b.tecla('space')


def _lista(b):
    return next(n for n in nodos(b.oyente.ventana(TITULO)) if n['rol'] == 'list' and n['nombre'] == 'Opciones')


def _rotulos(b):
    """The captions of the pages that there are."""
    return [n['nombre'] for n in _lista(b)['hijos']]


def _pagina(b, rotulo):
    """Brings a page about by arrow keys."""
    rotulos = _rotulos(b)
    _ve_a(b, {'Opciones', *rotulos})
    for tecla in ('Home', *['Down'] * rotulos.index(rotulo)):
        b.oyente.pulsa(b.tecla, tecla)
    entrada = next(n for n in _lista(b)['hijos'] if n['nombre'] == rotulo)
    assert {'selected', 'focused'} & set(entrada['estados']), f'{rotulo} is not chosen: {entrada}'


# What each scenario walks: pages of the window, with the windows that the buttons of each one open.
REPARTO = ({'General': {'Sonidos de aviso'}, 'Voces': set()},
           {'Tipo lectura': {'Editores de texto', 'Teclas que inician la lectura'}, 'Grabar': {'Abrir'}},
           {'Diccionario': set(), 'Teclas rápidas': set()})


def _recorre_paginas(parte):
    """Every control of those pages and of the windows that their buttons open; and that the window has no page that no
    scenario walks."""
    with Lectora(TODO) as b:
        _doble_click(b)
        b.oyente.espera_activa(TITULO)
        rotulos = _rotulos(b)
        assert sorted(rotulos) == sorted(p for otra in REPARTO for p in otra), f'the window has the pages {rotulos}'
        for pagina, esperadas in parte.items():
            _pagina(b, pagina)
            ventana, vistos = _comprueba(b.oyente, b.tecla, TITULO)
            propios = [n for n in enfocables(ventana) if 'visible' in n['estados'] and n['nombre'] not in PIE]
            assert len(propios) > 2, f'the page {pagina} shows {propios}'
            botones = [nombre for nombre, rol, _ in vistos if rol == 'push button' and nombre not in PIE]
            abiertas = set().union(*(_abre_lo_que_abra(b, nombre) for nombre in botones))
            print(f'{pagina}: buttons {botones}, opened from them {sorted(abiertas)}')
            assert abiertas == esperadas, f'the buttons of the page {pagina} open {abiertas}'
        b.tecla('Escape')
        espera(lambda: TITULO not in b.titulos(), 20, que='the end of the configuration')
        b.sigue_vivo()
        assert b.oyente.sucesos()[0] > 50


@caso
def las_paginas_general_y_voces_y_sus_dialogos_tienen_nombres_y_se_recorren_con_el_teclado():
    _recorre_paginas(REPARTO[0])


@caso
def las_paginas_de_lectura_y_de_grabar_y_sus_dialogos_tienen_nombres_y_se_recorren_con_el_teclado():
    _recorre_paginas(REPARTO[1])


@caso
def las_paginas_de_diccionario_y_de_teclas_tienen_nombres_y_se_recorren_con_el_teclado():
    _recorre_paginas(REPARTO[2])


def _sin_barras(o, titulo):
    """Nothing of the window scrolls. The list of keys is longer than is shown on any screen."""
    o.espera_activa(titulo)
    barras = [n for n in nodos(o.ventana(titulo)) if n['rol'] == 'scroll bar' and 'showing' in n['estados']]
    assert not barras or titulo == 'Teclas que inician la lectura', f'{titulo}: {barras}'


@caso
def a_120_y_a_144_puntos_ninguna_pagina_y_ningun_dialogo_tiene_barras():
    for puntos in (120, 144):
        with Lectora(TODO, arranca=False, tamano=f'{puntos * 40 // 3}x{puntos * 25 // 3}') as b:
            b.escritorio.entorno['QT_SCALE_FACTOR'] = str(puntos / 96)
            b.arranca_lector()
            _doble_click(b)
            for rotulo, boton, titulo in (
                    ('General', 'Elegir los sonidos de aviso', 'Sonidos de aviso'),
                    ('Voces', None, None),
                    ('Tipo lectura', 'Elegir qué se hace con los editores de texto', 'Editores de texto'),
                    ('Grabar', None, None), ('Teclas rápidas', None, None)):
                b.oyente.espera_activa(TITULO)
                _pagina(b, rotulo)
                _sin_barras(b.oyente, TITULO)
                if boton:
                    _abre_para_ver(b, boton)
                    _sin_barras(b.oyente, titulo)
                    b.tecla('Escape')


@caso
def cada_letra_subrayada_lleva_con_alt_a_su_control():
    """On the desktop as it is: also from a box that is typed in, and on the page that is shown, not on another one."""
    with Lectora(TODO) as b:
        _doble_click(b)
        b.oyente.espera_activa(TITULO)
        for rotulo, letras in (('Voces', (('v', 'Velocidad'), ('t', 'Tono'), ('l', 'Volumen'))),
                               ('Tipo lectura', (('t', 'No leer texto inferior a, caracteres'),)),
                               ('Grabar', (('f', 'Fichero de audio'),)),
                               ('Diccionario', (('t', 'Texto'), ('n', 'Conversión'))),
                               ('Teclas rápidas', (('n', 'Nº de palabras al avanzar'),
                                                   ('l', 'Nº de palabras al retroceder')))):
            _pagina(b, rotulo)
            for letra, nombre in letras:
                focos = b.oyente.pulsa(b.tecla, 'alt+' + letra)
                assert focos and focos[-1][0] == nombre, (rotulo, letra, focos)
            assert not [n for n in nodos(b.oyente.ventana(TITULO)) if '&' in n['nombre'] + n['descripcion']]
        b.tecla('alt+c')
        espera(lambda: TITULO not in b.titulos(), 10, que='the window to be cancelled')


@caso
def el_menu_la_ayuda_y_acerca_de_tienen_nombres_y_se_recorren_con_el_teclado():
    with Lectora() as b:
        _abre_menu(b)
        for _ in range(14):
            b.tecla('Down')
        espera(lambda: len([f for f in b.oyente.focos() if f[1] == 'menu item']) >= 14, 20, 0.02, 'the entries')
        b.tecla('Escape')
        _elige(b)
        _comprueba(b.oyente, b.tecla, 'Índice - Ayuda de Ondalis')
        b.tecla('Escape')
        _elige(b, 'Down', 'Down')
        _comprueba(b.oyente, b.tecla, 'Acerca de Ondalis')
        b.tecla('Escape')
        b.sigue_vivo()


@caso
def sin_bandeja_la_ventana_del_menu_tiene_nombres_y_se_recorre_con_el_teclado():
    with Lectora(arranca=False) as b:
        b.escritorio.mata_bandeja()
        b.arranca_lector()
        titulo = espera(lambda: next(iter(b.titulos()), None), 20, 0.1, 'the menu\'s window')
        # It comes without taking the keyboard: the user goes to it.
        b.escritorio.procesos.corre(['xdotool', 'windowactivate', '--sync', _espera_ventana(b, titulo)[0]])
        _comprueba(b.oyente, b.tecla, titulo)
        b.sigue_vivo()


@caso
def los_mensajes_y_la_linea_de_comandos_tienen_nombres_y_se_recorren_con_el_teclado():
    with Lectora() as b:
        for argumentos in ([], ['-help']):
            otro = b.escritorio.procesos.arranca([PROGRAMA, *argumentos], 'otro', b.escritorio.entorno)
            _comprueba(b.oyente, b.tecla, 'Ondalis')
            b.tecla('Escape')
            assert otro.wait(5) == 0
        b.sigue_vivo()


@caso
def la_pantalla_de_inicio_tiene_nombre():
    with Lectora(arranca=False) as b:
        # A worker that takes its time: the splash stands there meanwhile.
        lento = os.path.join(b.escritorio.carpeta, 'motor-lento')
        with open(lento, 'w', encoding='ascii') as f:
            f.write(f'#!/bin/sh\nsleep 2\nexec {OBRA}/bin/ondalis-motor "$@"\n')
        os.chmod(lento, 0o755)
        b.motor = 'lento'
        b.escritorio.entorno['ONDALIS_MOTOR'] = lento
        b.arranca_lector(espera_listo=False)
        vistas = {}

        def listo():
            for v in b.oyente.ventanas():
                vistas[v['nombre']] = v
            return b.listo_en
        espera(listo, 30, que='the reader to be ready')
        assert vistas, 'no splash was seen'
        for v in vistas.values():
            assert not defectos(v), defectos(v)


@caso
def con_un_lector_de_pantalla_escuchando_se_lee_y_se_obedece():
    with Lectora() as b:
        b.copia(texto_tonos(0, 60))
        b.espera_palabra(3)
        b.tecla('ctrl+2')
        b.espera_silencio(0.8, 10)
        b.lector.send_signal(signal.SIGTERM)
        assert b.lector.wait(5) == 0


class _Orca:
    """Orca, and what it says. Its record goes to a terminal, because only there it is written line by line."""

    def __init__(self, b):
        self._lee, escribe = pty.openpty()
        tty.setraw(escribe)
        self.proceso = b.escritorio.procesos.arranca(
            ['orca', '--replace', '--debug-file=' + os.ttyname(escribe), '--disable', 'braille'])
        self._escribe = escribe  # open here as well until Orca has opened it
        self.dicho, self._hasta = [], 0
        threading.Thread(target=self._escucha, daemon=True).start()

    def _escucha(self):
        with os.fdopen(self._lee, 'rb') as f:
            try:
                for linea in f:
                    m = re.search(r"SPEECH OUTPUT: '(.*)'\{", linea.decode(errors='replace'))
                    if m:
                        self.dicho.append(m[1])
            except OSError:
                pass  # that is how a terminal ends

    def espera_lista(self):
        """Until it has said its greeting: then it listens."""
        espera(lambda: self.dicho, 30, que='Orca')
        os.close(self._escribe)

    def espera(self, texto):
        """Until it has said that, behind what it was waited for to say before."""
        def oido():
            donde = next((i for i, d in enumerate(self.dicho[self._hasta:], self._hasta) if texto in d), None)
            if donde is not None:
                self._hasta = donde + 1
            return donde is not None
        try:
            espera(oido, 30, que=f'Orca to say "{texto}"')
        except AssertionError as e:
            raise AssertionError(f'{e} in its turn; it has said {self.dicho}') from e


@caso
def orca_dice_la_ventana_su_pagina_y_cada_control_al_que_llega_el_teclado():
    with Lectora(TODO, arranca=False) as b:
        orca = _Orca(b)
        orca.espera_lista()
        b.arranca_lector()
        _doble_click(b)
        for texto in (TITULO, 'General'):
            orca.espera(texto)
        for n in range(12):
            antes = b.oyente.sucesos()[1]
            b.tecla('Tab')
            # Orca is asked for each key before the program gets it, so there is no echo to wait for.
            orca.espera(espera(lambda d=antes: b.oyente.focos(d), 20, que=f'the focus to leave control {n}')[-1][0])
        assert orca.proceso.poll() is None
        b.sigue_vivo()
        assert not any('layered pane' in d for d in orca.dicho), orca.dicho
        print(f'Orca said {len(orca.dicho)} things, among them 12 controls in order')


def _muda(argumentos):
    with Banco(arranca=False) as b:
        with Oyente(b.escritorio, 'ventana-muda') as o:
            b.escritorio.procesos.arranca([os.path.join(OBRA, 'tests', 'ventana-muda'), *argumentos], 'muda')
            o.espera_activa('Ventana de prueba')
            ventana = o.ventana('Ventana de prueba')
            return defectos(ventana), inalcanzables(ventana, recorre(o, b.tecla, ventana))


@caso
def el_arnes_encuentra_el_control_sin_nombre_el_repetido_y_el_inalcanzable():
    malos, sin = _muda([])
    assert sorted(malos) == ['a text without a name', 'two controls named "Abrir": push button, push button'], malos
    assert sin == ['Sólo con el ratón'], sin
    assert _muda(['sana']) == ([], [])
