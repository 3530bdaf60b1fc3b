"""The page "Voces" and the assistant of the first start, by keyboard alone."""
import os
import time

from arnes.banco import Banco, texto_tonos
from arnes.procesos import espera
from casos.opciones import FRESCA, TITULO, _activa, _doble_click, _espera_abierta
from casos.ventanas import _espera_sin, _espera_ventana, _retrata, _ventana

CASOS = {}
ASISTENTE = 'Asistente de Ondalis'
PRIMER_ARRANQUE = {'General': {'Aviso': 'True'}}


def caso(f):
    CASOS[f.__name__] = f
    return f


def _teclea(b, *teclas):
    for tecla in teclas:
        b.tecla(tecla)
        # A button pressed by its letter is shown pressed for a tenth of a second before it acts.
        time.sleep(0.2 if tecla.startswith('alt+') else 0.05)


def _abre_voces(b):
    _doble_click(b)
    _espera_abierta(b)
    b.tecla('Down')  # from "General" to "Voces"
    time.sleep(0.3)


def _espera_asistente(b):
    _espera_ventana(b, ASISTENTE)
    espera(lambda: _activa(b) == ASISTENTE, 10, que='the assistant to have the keyboard')
    time.sleep(0.3)  # painted


def _activa_asistente(b):
    b.escritorio.procesos.corre(['xdotool', 'search', '--name', f'^{ASISTENTE}$', 'windowactivate'])
    _espera_asistente(b)


@caso
def la_voz_y_la_velocidad_elegidas_con_el_teclado_se_prueban_y_se_leen():
    with Banco(ajustes=FRESCA) as b:
        _abre_voces(b)
        _retrata(b, 'voces')
        _teclea(b, 'Tab', 'Tab', 'Down')  # past the makers, to the next voice
        _teclea(b, 'Tab', 'Tab', 'ctrl+a', '4', '0', '0', 'Return')  # the box of speed
        _teclea(b, 'Tab', 'Tab', 'Tab')  # the box of volume, "Utilizar valores avanzados", "Probar Voz"
        t = b.tecla('space')
        b.espera_sonido(10, desde=t)
        b.espera_silencio(0.8, 20)
        _retrata(b, 'voces-cambiada')
        assert b.ajuste('Voz', 'Velocidad') is None  # not accepted yet
        _teclea(b, 'Tab', 'Return')  # "Aceptar"
        _espera_sin(b, TITULO)
        assert b.ajuste('Voz', 'VozActiva') not in (None, 'Carlos'), b.ajuste('Voz', 'VozActiva')
        assert b.ajuste('Voz', 'Velocidad') == '400'
        t = b.copia(texto_tonos(0, 12))
        b.espera_palabra(11, desde=t)
        b.espera_silencio(0.8, 20)
        oidas = [p for p in b.oye_palabras(t) if p.k is not None]
        largas = [p.fin - p.inicio for p in oidas[1:-1]]
        media = sorted(largas)[len(largas) // 2]
        print(f'a word lasts {media * 1000:.0f} ms at 400 words a minute')
        assert media < 0.12, media  # 200 ms at 170


@caso
def el_asistente_del_primer_arranque_se_recorre_con_el_teclado_y_guarda_lo_elegido():
    with Banco(ajustes=PRIMER_ARRANQUE) as b:
        _espera_asistente(b)
        _retrata(b, 'asistente-1')
        _teclea(b, 'Return')  # "Siguiente >"
        time.sleep(0.3)
        _retrata(b, 'asistente-2')
        # The focus is on the first box: what is copied is read already; unticked, and its neighbour ticked by its letter.
        _teclea(b, 'space', 'alt+t', 'Return')
        time.sleep(0.3)
        _retrata(b, 'asistente-3')
        _teclea(b, 'Tab', 'Down')  # the next voice
        t = b.tecla('alt+p')  # "Probar Voz"
        b.espera_sonido(10, desde=t)
        _teclea(b, 'alt+s')
        time.sleep(0.3)
        _retrata(b, 'asistente-4')
        _teclea(b, 'Down', 'Tab', 'Down')  # "Detener": from Control and 2 to Alt and 3
        _teclea(b, 'alt+s')
        time.sleep(0.3)
        _retrata(b, 'asistente-5')
        _teclea(b, 'alt+a', 'alt+s')  # one page back and forth
        _teclea(b, 'alt+n', 'alt+f')  # not again, and the end
        _espera_sin(b, ASISTENTE)
        espera(lambda: b.ajuste('General', 'Aviso') == 'False', 5, que='the settings')
        assert b.ajuste('TipoLectura', 'LeePortapapeles') == 'False'
        assert b.ajuste('TipoLectura', 'LeeTeclado') == 'True'
        assert (b.ajuste('Voz', 'FabricanteActivo'), b.ajuste('Voz', 'VozActiva')) == ('IBM', 'Pilar')
        assert (b.ajuste('Teclas', 'ModDetener'), b.ajuste('Teclas', 'AsciiDetener')) == ('1', '51')
        assert (b.ajuste('Teclas', 'ModPausa'), b.ajuste('Teclas', 'AsciiPausa')) == ('0', '49')
        b.espera_silencio(0.8, 20)
        b.copia(texto_tonos(0, 10))
        b.calla(1.5)
        assert b.termina_lector() == 0
        b.arranca_lector()
        time.sleep(0.5)
        assert _ventana(b, ASISTENTE) is None


@caso
def la_configuracion_abierta_tras_el_asistente_ensena_lo_que_este_acepta():
    """Accepted behind it, with an edit of its own, it puts nothing back."""
    with Banco(ajustes=PRIMER_ARRANQUE) as b:
        _espera_asistente(b)
        _doble_click(b)
        _espera_abierta(b)
        _teclea(b, 'alt+m')  # "Mostrar ventana de aumento de pantalla", not accepted yet
        _activa_asistente(b)
        _teclea(b, 'alt+s', 'alt+t', 'alt+s', 'alt+o', 'Down', 'alt+s', 'alt+d', 'Down', 'alt+s', 'alt+f')
        _espera_sin(b, ASISTENTE)
        espera(lambda: b.ajuste('TipoLectura', 'LeeTeclado') == 'True', 5, que='the assistant to be accepted')
        assert b.ajuste('General', 'VerLupa') in (None, 'False')
        b.escritorio.procesos.corre(['xdotool', 'search', '--name', f'^{TITULO}$', 'windowactivate'])
        espera(lambda: _activa(b) == TITULO, 10, que='the configuration to have the keyboard')
        _teclea(b, 'alt+a')
        _espera_sin(b, TITULO)
        espera(lambda: b.ajuste('General', 'VerLupa') == 'True', 5, que='the configuration to be accepted')
        assert b.ajuste('TipoLectura', 'LeeTeclado') == 'True'
        assert b.ajuste('Voz', 'VozActiva') == 'Pilar', b.ajuste('Voz', 'VozActiva')
        assert b.ajuste('Teclas', 'ModDetener') == '1', b.ajuste('Teclas', 'ModDetener')


@caso
def el_asistente_cerrado_con_escape_guarda_y_vale_en_el_acto():
    with Banco(ajustes=PRIMER_ARRANQUE) as b:
        _espera_asistente(b)
        t = b.copia(texto_tonos(0, 60))  # the reader works behind it
        b.espera_palabra(3, desde=t)
        _teclea(b, 'Return', 'Return', 'Return', 'Tab', 'Down')  # page 4: "Detener" becomes Control and 3
        _teclea(b, 'Tab', 'Tab', 'Tab', 'Tab', 'Up')  # and "Repetir" Control and 2
        b.tecla('Escape')
        _espera_sin(b, ASISTENTE)
        espera(lambda: b.ajuste('Teclas', 'AsciiDetener') == '51', 5, que='the settings')
        assert b.ajuste('Teclas', 'AsciiRepetir') == '50'
        assert b.ajuste('General', 'Aviso') == 'True'  # it comes again
        b.espera_palabra(20)  # an unchanged voice goes on reading
        b.tecla('ctrl+3')
        b.espera_silencio(0.8, 10)
        assert b.termina_lector() == 0
        b.arranca_lector()
        _espera_asistente(b)


@caso
def el_asistente_no_sale_en_un_arranque_inactivo():
    with Banco(ajustes={'General': {'Aviso': 'True', 'ActivaAlArrancar': 'False'}}) as b:
        time.sleep(0.5)
        assert _ventana(b, ASISTENTE) is None
        b.sigue_vivo()


@caso
def al_finalizar_el_asistente_se_abre_la_configuracion_si_se_pide():
    with Banco(ajustes=PRIMER_ARRANQUE) as b:
        _espera_asistente(b)
        _teclea(b, 'Return', 'Return', 'Return', 'Return', 'space', 'Return')
        _espera_sin(b, ASISTENTE)
        _espera_abierta(b)


def _se_ven_enteros(factor, puntos, nombre, entorno=None):
    with Banco(ajustes=PRIMER_ARRANQUE, arranca=False) as b:
        b.escritorio.entorno.update(QT_SCALE_FACTOR=factor, QT_FONT_DPI=puntos, **(entorno or {}))
        b.arranca_lector()
        _espera_asistente(b)
        for pagina in range(1, 6):
            x, y, ancho, alto = _ventana(b, ASISTENTE)[1:]
            assert x >= 0 and y >= 0 and x + ancho <= 1280 and y + alto <= 800, (x, y, ancho, alto)
            _retrata(b, f'asistente-{nombre}-{pagina}')
            _teclea(b, 'Return')
            time.sleep(0.3)
        _abre_voces(b)
        x, y, ancho, alto = _ventana(b, TITULO)[1:]
        assert x >= 0 and y >= 0 and x + ancho <= 1280 and y + alto <= 800, (x, y, ancho, alto)
        _retrata(b, f'voces-{nombre}')


@caso
def asistente_y_pagina_de_voces_caben_a_96_y_a_192_puntos():
    _se_ven_enteros('1', '96', '96')
    _se_ven_enteros('2', '96', '192')
    _se_ven_enteros('1', '192', '192-letra')
