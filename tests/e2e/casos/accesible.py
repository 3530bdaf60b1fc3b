"""Every window as a screen reader has it: named, told apart, reached by keyboard, and alive while it is listened to."""
import os
import re
import signal
import time

from arnes.accesibilidad import Oyente, defectos, enfocables, inalcanzables, nodos, recorre
from arnes.banco import OBRA, PROGRAMA, Banco, texto_tonos
from arnes.procesos import espera
from casos.opciones import TITULO, _doble_click, _espera_abierta
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
        return {v['nombre'] for v in self.oyente.ventanas()}


def _comprueba(o, pulsa, titulo):
    """A window's names, and every control of it by keyboard. Returns its tree and the objects met."""
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
    camino = []
    for _ in range(150):
        foco = b.oyente.foco()
        if foco and foco[0] in nombres:
            return
        camino.append(foco and foco[0])
        antes = b.oyente.sucesos()[1]
        b.tecla('Tab')
        assert b.oyente.espera_foco(antes), f'Tab leads nowhere, seeking {nombres}'
    raise AssertionError(f'{nombres} never had the focus; met: {camino}')


def _abre_lo_que_abra(b, boton):
    """Presses a button of a page; what window comes is walked and dismissed."""
    antes = b.titulos()
    _ve_a(b, {boton})
    b.tecla('space')
    fin = time.monotonic() + 1.0
    nuevas = set()
    # A window may be listed a moment before its title is; one that never has a title is found below.
    while not any(nuevas) and time.monotonic() < fin:
        nuevas = b.titulos() - antes
    if any(nuevas):
        nuevas -= {''}
    b.sigue_vivo()
    for titulo in nuevas:
        time.sleep(0.3)  # painted, with its focus
        if titulo not in AJENAS:
            _comprueba(b.oyente, b.tecla, titulo)
        b.tecla('Escape')
        espera(lambda t=titulo: t not in b.titulos(), 5, que=f'the end of {titulo}')
    return nuevas


def _abre_para_ver(b, boton):
    """Presses a button of the page and leaves open what comes."""
    _ve_a(b, {boton})
    b.tecla('space')


def _rotulos(b):
    """The captions of the pages that there are."""
    lista = next(n for n in nodos(b.oyente.ventana(TITULO)) if n['rol'] == 'list' and n['nombre'] == 'Opciones')
    return [n['nombre'] for n in lista['hijos']]


def _pagina(b, rotulo):
    """Brings a page about by arrow keys."""
    rotulos = _rotulos(b)
    _ve_a(b, {'Opciones', *rotulos})
    for tecla in ('Home', *['Down'] * rotulos.index(rotulo)):
        b.tecla(tecla)

    def elegida():
        entrada = [n for n in nodos(b.oyente.ventana(TITULO)) if n['rol'] == 'list item' and n['nombre'] == rotulo]
        return entrada and {'selected', 'focused'} & set(entrada[0]['estados'])
    espera(elegida, 5, 0.1, f'the page {rotulo}')


@caso
def cada_pagina_y_cada_dialogo_de_la_configuracion_tiene_nombres_y_se_recorre_con_el_teclado():
    with Lectora(TODO) as b:
        _doble_click(b)
        _espera_abierta(b)
        abiertas, rotulos = set(), _rotulos(b)
        for pagina in rotulos:
            _pagina(b, pagina)
            ventana, vistos = _comprueba(b.oyente, b.tecla, TITULO)
            propios = [n for n in enfocables(ventana) if 'visible' in n['estados'] and n['nombre'] not in PIE]
            assert len(propios) > 2, f'the page {pagina} shows {propios}'
            for nombre, rol, _ in vistos:
                if rol == 'push button' and nombre not in PIE:
                    abiertas |= _abre_lo_que_abra(b, nombre)
        print(f'pages: {rotulos}; opened from them: {sorted(abiertas)}')
        assert len(rotulos) >= 2 and {'Sonidos de aviso', 'Editores de texto'} <= abiertas, (rotulos, abiertas)
        b.tecla('Escape')
        espera(lambda: TITULO not in b.titulos(), 5, que='the end of the configuration')
        b.sigue_vivo()
        assert b.oyente.sucesos()[0] > 50


@caso
def el_menu_la_ayuda_y_acerca_de_tienen_nombres_y_se_recorren_con_el_teclado():
    with Lectora() as b:
        _abre_menu(b)
        for _ in range(14):
            b.tecla('Down')
        time.sleep(0.3)
        b.tecla('Escape')
        _elige(b)
        _espera_ventana(b, 'Índice - Ayuda de Ondalis')
        time.sleep(0.3)
        _comprueba(b.oyente, b.tecla, 'Índice - Ayuda de Ondalis')
        b.tecla('Escape')
        _elige(b, 'Down', 'Down')
        _espera_ventana(b, 'Acerca de Ondalis')
        time.sleep(0.3)
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
        time.sleep(0.3)
        _comprueba(b.oyente, b.tecla, titulo)
        b.sigue_vivo()


@caso
def los_mensajes_y_la_linea_de_comandos_tienen_nombres_y_se_recorren_con_el_teclado():
    with Lectora() as b:
        for argumentos in ([], ['-help']):
            otro = b.escritorio.procesos.arranca([PROGRAMA, *argumentos], 'otro', b.escritorio.entorno)
            _espera_ventana(b, 'Ondalis')
            time.sleep(0.3)
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


@caso
def orca_dice_la_ventana_su_pagina_y_cada_control_al_que_llega_el_teclado():
    with Lectora(TODO, arranca=False) as b:
        diario = os.path.join(b.escritorio.carpeta, 'orca-dice.txt')
        orca = b.escritorio.procesos.arranca(['orca', '--replace', '--debug-file=' + diario, '--disable', 'braille'])
        espera(lambda: os.path.isfile(diario) and os.path.getsize(diario) > 0, 30, que='Orca')
        time.sleep(3)  # it listens; its record is written in large pieces
        b.arranca_lector()
        _doble_click(b)
        _espera_abierta(b)
        time.sleep(3)  # the window and its page are said
        llegados = []
        for n in range(12):
            antes = b.oyente.sucesos()[1]
            b.tecla('Tab')
            foco = b.oyente.espera_foco(antes)
            assert foco, f'the focus stays after {n} controls'
            llegados.append(foco[0])
            time.sleep(0.7)  # said, not overtaken by the next one
        assert orca.poll() is None
        b.sigue_vivo()
        b.escritorio.procesos.termina(orca, 10)
        with open(diario, encoding='utf-8', errors='replace') as f:
            dicho = re.findall(r"SPEECH OUTPUT: '(.*)'\{", f.read())
    resto = list(dicho)
    for esperado in (TITULO, 'General', *llegados):
        donde = next((i for i, d in enumerate(resto) if esperado in d), None)
        assert donde is not None, f'Orca does not say "{esperado}" in its turn; it said {dicho}'
        del resto[:donde + 1]
    assert not any('layered pane' in d for d in dicho), dicho
    print(f'Orca said {len(dicho)} things, among them {len(llegados)} controls in order')


def _muda(argumentos):
    with Banco(arranca=False) as b:
        with Oyente(b.escritorio, 'ventana-muda') as o:
            b.escritorio.procesos.arranca([os.path.join(OBRA, 'tests', 'ventana-muda'), *argumentos], 'muda')
            _espera_ventana(b, 'Ventana de prueba')
            time.sleep(0.3)
            ventana = o.ventana('Ventana de prueba')
            return defectos(ventana), inalcanzables(ventana, recorre(o, b.tecla, ventana))


@caso
def el_arnes_encuentra_el_control_sin_nombre_el_repetido_y_el_inalcanzable():
    malos, sin = _muda([])
    assert sorted(malos) == ['a text without a name', 'two controls named "Abrir": push button, push button'], malos
    assert sin == ['Sólo con el ratón'], sin
    assert _muda(['sana']) == ([], [])
