"""The configuration window: opened, walked by keyboard, accepted, cancelled, closed, kept in its place."""
import os
import signal
import time

from arnes.banco import Banco, texto_tonos
from arnes.procesos import espera
from casos.programa import _abre_menu, _icono
from casos.ventanas import _espera_sin, _espera_ventana, _retrata, _ventana

CASOS = {}
TITULO = 'Configuración Ondalis'
FRESCA = {'Ventana': {'LeftPrincipal': 200 * 15, 'TopPrincipal': 120 * 15}}


def caso(f):
    CASOS[f.__name__] = f
    return f


def _activa(b):
    return b.escritorio.procesos.corre(['xdotool', 'getactivewindow', 'getwindowname'], comprueba=False).decode().strip()


def _espera_abierta(b):
    ventana = _espera_ventana(b, TITULO)
    espera(lambda: _activa(b) == TITULO, 10, que='the configuration to have the keyboard')
    time.sleep(0.3)  # painted
    return ventana


def _doble_click(b):
    x, y = espera(lambda: _icono(b), 10, que='the icon in the tray')
    b.escritorio.equis.raton(x, y, 1)
    b.escritorio.equis.raton(x, y, 1)


@caso
def la_configuracion_se_abre_por_el_menu_y_se_cancela_con_escape():
    with Banco(ajustes=FRESCA) as b:
        _abre_menu(b)
        for tecla in ('Up', 'Up', 'Up', 'Return'):  # over "Salir" and "Ayuda": the windows that are there
            b.tecla(tecla)
            time.sleep(0.1)
        _espera_abierta(b)
        _retrata(b, 'opciones-general')
        b.tecla('Tab')
        b.tecla('space')  # "Arrancar al inicio"
        b.tecla('Escape')
        _espera_sin(b, TITULO)
        assert not os.path.exists(os.path.join(b.escritorio.entorno['XDG_CONFIG_HOME'], 'autostart', 'ondalis.desktop'))
        b.sigue_vivo()


@caso
def el_doble_click_abre_la_configuracion_tambien_inactivo():
    with Banco(ajustes={'General': {'ActivaAlArrancar': 'False'}}) as b:
        _doble_click(b)
        _espera_abierta(b)


@caso
def lo_aceptado_con_el_teclado_queda_guardado_y_vale_en_el_acto():
    with Banco(ajustes=FRESCA) as b:
        b.copia(texto_tonos(0, 60))
        b.espera_palabra(3)
        _doble_click(b)
        _espera_abierta(b)
        b.tecla('Tab')
        b.tecla('space')  # CheckInicio
        b.tecla('Tab')
        b.tecla('Tab')
        b.tecla('space')  # CheckPrioridad
        b.tecla('ctrl+Tab')
        b.tecla('ctrl+Tab')  # over "Voces"
        time.sleep(0.2)
        _retrata(b, 'opciones-tipo-lectura')
        for tecla in ('Tab', 'Tab', 'Tab', '2', 'Return'):  # the limit of a short text
            b.tecla(tecla)
        b.tecla('Return')
        _espera_sin(b, TITULO)
        b.calla(0.5)  # the reading in course has been stopped
        assert b.ajuste('General', 'PrioridadAlta') == 'True'
        assert b.ajuste('TipoLectura', 'CharsMiniTexto') == '2'
        with open(os.path.join(b.escritorio.entorno['XDG_CONFIG_HOME'], 'autostart', 'ondalis.desktop'),
                  encoding='utf-8') as f:
            assert 'bin/ondalis\n' in f.read()
        t = b.copia(texto_tonos(70, 10))
        b.espera_sonido(5, desde=t)


@caso
def cerrada_por_el_gestor_de_ventanas_el_programa_sigue_y_se_abre_donde_estaba():
    with Banco(ajustes=FRESCA) as b:
        _doble_click(b)
        ventana = _espera_abierta(b)
        marco = (ventana[1] - 200, ventana[2] - 120)
        assert 0 <= marco[0] < 12 and 0 <= marco[1] < 60, ventana
        b.escritorio.procesos.corre(['xdotool', 'windowmove', ventana[0], '60', '90'])
        espera(lambda: _ventana(b, TITULO)[1:3] != ventana[1:3], 5, que='the window to be moved')
        movida = _ventana(b, TITULO)
        espera(lambda: b.ajuste('Ventana', 'LeftPrincipal') != str(200 * 15), 5, que='the place to be kept')
        b.escritorio.equis.cierra_ventana(int(movida[0]))
        _espera_sin(b, TITULO)
        b.sigue_vivo()
        _doble_click(b)
        assert _espera_abierta(b)[1:3] == movida[1:3]
        assert b.termina_lector() == 0
        b.arranca_lector()
        _doble_click(b)
        assert _espera_abierta(b)[1:3] == movida[1:3]


@caso
def sigterm_con_la_configuracion_abierta_termina_bien():
    with Banco() as b:
        _doble_click(b)
        _espera_abierta(b)
        b.lector.send_signal(signal.SIGTERM)
        assert b.lector.wait(5) == 0


@caso
def con_la_configuracion_abierta_se_lee_y_las_teclas_obedecen():
    with Banco() as b:
        _doble_click(b)
        _espera_abierta(b)
        b.copia(texto_tonos(0, 60))
        b.espera_palabra(3)
        b.tecla('ctrl+2')
        b.espera_silencio(0.8, 10)
        _doble_click(b)  # already there: it stays, and no second one comes
        time.sleep(0.5)
        assert _ventana(b, TITULO)


@caso
def f1_muestra_la_ayuda_de_la_pagina_elegida():
    with Banco() as b:
        _doble_click(b)
        _espera_abierta(b)
        b.tecla('F1')
        espera(lambda: 'Ayuda de Ondalis' in _activa(b), 10, que='the help')
        _retrata(b, 'opciones-ayuda')
        b.tecla('Escape')
        espera(lambda: _activa(b) == TITULO, 10, que='the configuration in front again')


def _se_ve_entera(factor, puntos):
    with Banco(arranca=False) as b:
        b.escritorio.entorno.update(QT_SCALE_FACTOR=factor, QT_FONT_DPI=puntos)
        b.arranca_lector()
        _doble_click(b)
        ventana = _espera_abierta(b)
        _retrata(b, f'opciones-{factor}-{puntos}-general')
        b.tecla('Down')
        b.tecla('Down')
        time.sleep(0.3)
        _retrata(b, f'opciones-{factor}-{puntos}-tipo-lectura')
        x, y, ancho, alto = ventana[1:]
        assert x >= 0 and y >= 0 and x + ancho <= 1280 and y + alto <= 800, ventana


@caso
def la_configuracion_cabe_en_la_pantalla_a_96_y_a_192_puntos():
    _se_ve_entera('1', '96')
    _se_ve_entera('2', '96')
    _se_ve_entera('1', '192')
