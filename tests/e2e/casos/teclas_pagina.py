"""The pages "Grabar" and "Teclas rápidas" in the real window, by keyboard alone."""
import os
import signal
import time

from arnes.banco import Banco, texto_tonos
from arnes.procesos import espera
from casos.opciones import FRESCA, TITULO, _activa, _doble_click, _espera_abierta
from casos.ventanas import _espera_sin, _retrata, _ventana

CASOS = {}
ESPERA_BUSQUEDA = 0.6  # a list joins the keys typed within 400 ms

# What the desktop's settings of KDE are for a toolkit that follows them.
OSCURO = """[General]
ColorScheme=Oscuro
[Colors:Window]
BackgroundNormal=42,46,50
ForegroundNormal=252,252,252
[Colors:View]
BackgroundNormal=27,30,32
ForegroundNormal=252,252,252
ForegroundLink=29,153,243
[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=252,252,252
[Colors:Selection]
BackgroundNormal=61,174,233
ForegroundNormal=252,252,252
"""


def caso(f):
    CASOS[f.__name__] = f
    return f


def _teclas(b, *teclas):
    for tecla in teclas:
        b.tecla(tecla)
        time.sleep(0.05)


def _escribe(b, texto):
    b.escritorio.procesos.corre(['xdotool', 'type', '--delay', '15', texto])


def _abre_pagina(b, bajadas):
    """Opens the window on the page so many labels below "General", the focus on the list of labels."""
    _doble_click(b)
    ventana = _espera_abierta(b)
    _teclas(b, *['Down'] * bajadas)
    return ventana


def _abre_teclas(b):
    """On the list of the key of "Pausa / Reanudar"."""
    _doble_click(b)
    _espera_abierta(b)
    _teclas(b, 'End', 'Tab', 'Tab', 'Tab', 'Tab')


def _acepta(b):
    b.tecla('Return')
    _espera_sin(b, TITULO)


def _log(b):
    ruta = os.path.join(b.escritorio.entorno['XDG_STATE_HOME'], 'ondalis', 'Ondalis.log')
    if not os.path.isfile(ruta):
        return ''
    with open(ruta, encoding='utf-8') as f:
        return f.read()


@caso
def la_tecla_nueva_de_detener_detiene_y_la_vieja_ya_no():
    with Banco(ajustes=FRESCA) as b:
        _abre_teclas(b)
        _teclas(b, 'Tab', 'Tab', '8')
        _acepta(b)
        assert (b.ajuste('Teclas', 'ModDetener'), b.ajuste('Teclas', 'AsciiDetener')) == ('0', '56')
        b.copia(texto_tonos(0, 90))
        b.espera_palabra(3)
        b.tecla('ctrl+2')
        b.espera_palabra(12)
        t = b.tecla('ctrl+8')
        time.sleep(1)
        assert (b.silencio_desde(t, t + 1) or 0) < 0.4
        b.calla(0.5)
        assert 'AddTecla' not in _log(b), _log(b)


@caso
def dos_teclas_se_intercambian():
    with Banco(ajustes=FRESCA) as b:
        _abre_teclas(b)
        b.tecla('9')  # "Pausa" makes room
        _teclas(b, 'Tab', 'Tab', 'Home', '1')  # "Detener"; from the first row on, or the keypad's digit comes first
        time.sleep(ESPERA_BUSQUEDA)
        _teclas(b, 'shift+Tab', 'shift+Tab', 'Home', '2')
        _acepta(b)
        assert (b.ajuste('Teclas', 'AsciiPausa'), b.ajuste('Teclas', 'AsciiDetener')) == ('50', '49')
        b.copia(texto_tonos(0, 60))
        b.espera_palabra(5)
        b.tecla('ctrl+2')
        b.espera_silencio(1.0, 10)
        t = b.tecla('ctrl+2')
        b.espera_sonido(3, desde=t)
        assert b.espera_palabra(12) > t  # it went on where it was
        b.tecla('ctrl+1')
        b.espera_silencio(0.8, 5)
        t = b.tecla('ctrl+3')  # what was stopped starts again at its first word
        b.espera_palabra(0, desde=t)
        assert 'AddTecla' not in _log(b), _log(b)


@caso
def una_combinacion_ya_asignada_se_dice_y_vuelve_la_guardada():
    with Banco(ajustes=FRESCA) as b:
        _abre_teclas(b)
        b.tecla('2')
        espera(lambda: _activa(b) == 'Ondalis', 10, que='the message')
        time.sleep(0.3)
        _retrata(b, 'teclas-conflicto')
        numero = _ventana(b, 'Ondalis')[0]
        suya = b.escritorio.procesos.corre(['xprop', '-id', numero, 'WM_TRANSIENT_FOR']).decode()
        assert int(suya.split('#')[1], 16) == int(_ventana(b, TITULO)[0]), suya
        b.tecla('Return')
        espera(lambda: _activa(b) == TITULO, 10, que='the window in front again')
        time.sleep(ESPERA_BUSQUEDA)
        _acepta(b)
        assert (b.ajuste('Teclas', 'ModPausa'), b.ajuste('Teclas', 'AsciiPausa')) == ('0', '49')
        b.copia(texto_tonos(0, 60))
        b.espera_palabra(4)
        b.tecla('ctrl+1')
        b.espera_silencio(1.0, 10)


@caso
def una_tecla_que_tiene_otro_programa_queda_en_el_diario_y_se_toma_cuando_la_suelta():
    with Banco(ajustes=FRESCA) as b:
        b.escritorio.equis.acapara('ctrl+8')
        _abre_teclas(b)
        _teclas(b, 'Tab', 'Tab', '8')
        _acepta(b)
        assert _log(b).count('AddTecla') == 1 and 'Detener' in _log(b), _log(b)
        b.copia(texto_tonos(0, 90))
        b.espera_palabra(3)
        b.escritorio.equis.suelta('ctrl+8')

        def calla():
            t = b.tecla('ctrl+8')
            time.sleep(0.6)
            return not b.oye_palabras(t + 0.4, t + 0.6)
        espera(calla, 10, que='the key to be taken')


@caso
def la_pagina_de_grabar_se_rellena_y_se_guarda_con_el_teclado():
    with Banco(ajustes=FRESCA) as b:
        _abre_pagina(b, 3)
        _teclas(b, 'Tab', 'Tab', 'space')  # CheckGrabar
        _teclas(b, 'Tab', 'Tab', 'Down')  # the format, then "Asíncrono"
        b.tecla('Tab')
        _escribe(b, '/no:hay*|?/x.wav')  # over the whole text, which entering has selected
        time.sleep(0.2)
        _retrata(b, 'grabar-escrito')
        _acepta(b)
        assert b.ajuste('Grabar', 'GrabarTexto') == 'True'
        assert b.ajuste('Grabar', 'LeerTexto') == 'True'
        assert b.ajuste('Grabar', 'GrabaSincrono') == 'False'
        assert b.ajuste('Grabar', 'NombreFichero') == '/nohay/x.wav'
        assert b.ajuste('Grabar', 'SobrescribirFich') == 'True'


@caso
def el_fichero_de_audio_se_elige_en_el_dialogo_con_el_teclado():
    with Banco(ajustes=FRESCA) as b:
        _abre_pagina(b, 3)
        _teclas(b, 'Tab', 'Tab', 'space', 'Tab', 'm')  # "MP3"
        _teclas(b, 'Tab', 'Tab', 'space')  # NomFichero, Examinar
        espera(lambda: _activa(b).startswith('Abrir'), 10, que='the file dialog')
        time.sleep(0.3)
        _retrata(b, 'grabar-examinar')
        elegido = os.path.join(b.escritorio.carpeta, 'mio')
        _escribe(b, elegido)
        b.tecla('Return')
        espera(lambda: _activa(b) == TITULO, 10, que='the window in front again')
        _teclas(b, 'Tab', 'Down')  # "Sobrescribir" has the turn; to "Numerar"
        _retrata(b, 'grabar-elegido')
        _acepta(b)
        assert b.ajuste('Grabar', 'NombreFichero') == elegido + '.mp3'
        assert b.ajuste('Grabar', 'GrabaEnWAV') == 'False'
        assert b.ajuste('Grabar', 'NumerarFich') == 'True'
        assert b.ajuste('Grabar', 'SobrescribirFich') == 'False'


@caso
def sigterm_con_un_mensaje_o_el_dialogo_de_ficheros_abierto_termina_bien():
    with Banco(ajustes=FRESCA) as b:
        _abre_teclas(b)
        b.tecla('2')
        espera(lambda: _activa(b) == 'Ondalis', 10, que='the message')
        b.lector.send_signal(signal.SIGTERM)
        assert b.lector.wait(5) == 0
        b.arranca_lector()
        _abre_pagina(b, 3)
        _teclas(b, 'Tab', 'Tab', 'space', 'Tab', 'Tab', 'Tab', 'Tab', 'space')
        espera(lambda: _activa(b).startswith('Abrir'), 10, que='the file dialog')
        b.lector.send_signal(signal.SIGTERM)
        assert b.lector.wait(5) == 0


def _retrata_paginas(nombre, entorno, oscuro=False):
    with Banco(arranca=False) as b:
        b.escritorio.entorno.update(entorno)
        if oscuro:
            with open(os.path.join(b.escritorio.entorno['XDG_CONFIG_HOME'], 'kdeglobals'), 'w', encoding='utf-8') as f:
                f.write(OSCURO)
        b.arranca_lector()
        x, y, ancho, alto = _abre_pagina(b, 3)[1:]
        assert x >= 0 and y >= 0 and x + ancho <= 1280 and y + alto <= 800, (x, y, ancho, alto)
        time.sleep(0.3)
        _retrata(b, f'grabar-{nombre}')
        _teclas(b, 'Tab', 'Tab', 'space', 'Tab', 'm')
        time.sleep(0.3)
        _retrata(b, f'grabar-mp3-{nombre}')
        _teclas(b, 'shift+Tab', 'shift+Tab', 'shift+Tab', 'End')
        time.sleep(0.3)
        _retrata(b, f'teclas-{nombre}')
        _teclas(b, *['Tab'] * 17)  # the last control, beyond the lower edge where the page is scrolled
        time.sleep(0.3)
        _retrata(b, f'teclas-fin-{nombre}')


@caso
def las_paginas_de_grabar_y_teclas_caben_a_96_y_a_192_puntos_y_en_oscuro():
    _retrata_paginas('96', {'QT_SCALE_FACTOR': '1', 'QT_FONT_DPI': '96'})
    _retrata_paginas('192', {'QT_SCALE_FACTOR': '2', 'QT_FONT_DPI': '96'})
    _retrata_paginas('letra-192', {'QT_SCALE_FACTOR': '1', 'QT_FONT_DPI': '192'})
    _retrata_paginas('oscuro', {'XDG_CURRENT_DESKTOP': 'KDE', 'KDE_SESSION_VERSION': '5', 'KDE_FULL_SESSION': 'true'},
                     oscuro=True)
