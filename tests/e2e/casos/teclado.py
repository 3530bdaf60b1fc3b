"""What is typed in other programs is heard: by Enter, by a sign, by a change of window. Passwords never are."""
import os
import shutil
import time

from arnes.banco import OBRA, Banco, en_orden
from arnes.procesos import espera
from casos.opciones import TITULO, _doble_click, _espera_abierta
from casos.ventanas import _retrata

CASOS = {}
AJUSTES = {'TipoLectura': {'LeeTeclado': 'True'}}
CON_CAMBIO = {'TipoLectura': {'LeeTeclado': 'True', 'LeeCambioApp': 'True'}}


def caso(f):
    CASOS[f.__name__] = f
    return f


def _activa(b):
    return b.escritorio.procesos.corre(['xdotool', 'getactivewindow', 'getwindowname'], comprueba=False).decode().strip()


def _enfoca(b, titulo, limite=20):
    """Brings the window of that title to the front and waits until it has the keyboard."""
    def en_frente():
        if titulo in _activa(b):
            return True
        b.escritorio.procesos.corre(['xdotool', 'search', '--onlyvisible', '--name', titulo, 'windowactivate'], comprueba=False)
        return False
    espera(en_frente, limite, paso=0.2, que=f'the window {titulo} in front')
    time.sleep(0.5)  # painted, and its focus told


def _terminal(b, titulo='Uno'):
    b.escritorio.procesos.arranca(['xterm', '-T', titulo, '-e', 'cat'])
    _enfoca(b, titulo)


def _teclea(b, texto):
    b.escritorio.procesos.corre(['xdotool', 'type', '--delay', '25', texto])


def _oye(b, desde, *numeros):
    b.espera_palabra(numeros[-1], 10, desde=desde)
    b.espera_silencio(0.8, 15)
    en_orden(b.numeros(desde), numeros)


@caso
def lo_tecleado_se_oye_al_pulsar_intro():
    with Banco(ajustes=AJUSTES) as b:
        _terminal(b)
        _teclea(b, 'n5 n6 n7')
        b.calla(1.0)
        t = b.tecla('Return')
        primera = b.espera_sonido(3, desde=t)
        print(f'{1000 * (primera - t):.0f} ms from Enter to the first sound')
        _oye(b, t, 5, 6, 7)
        _teclea(b, 'n8')
        t = b.tecla('KP_Enter')
        _oye(b, t, 8)
        b.tecla('Return')
        b.calla(1.0)


@caso
def un_signo_de_cierre_lee_la_frase():
    with Banco(ajustes=AJUSTES) as b:
        _terminal(b)
        _teclea(b, 'n5 n6.')
        b.calla(1.0)
        t = b.tecla('space')
        _oye(b, t, 5, 6)
        _teclea(b, 'n7')
        b.calla(1.0)
        t = time.monotonic()
        _teclea(b, '?')
        _oye(b, t, 7)


@caso
def el_retroceso_borra_lo_ultimo_tecleado():
    with Banco(ajustes=AJUSTES) as b:
        _terminal(b)
        _teclea(b, 'n5 n6')
        b.tecla('BackSpace')
        _teclea(b, '9')
        t = b.tecla('Return')
        _oye(b, t, 5, 9)


@caso
def al_cambiar_de_ventana_se_lee_lo_tecleado():
    with Banco(ajustes=CON_CAMBIO) as b:
        _terminal(b, 'Uno')
        _terminal(b, 'Dos')
        _enfoca(b, 'Uno')
        _teclea(b, 'n5 n6')
        b.calla(1.2)
        t = time.monotonic()
        _enfoca(b, 'Dos')
        _oye(b, t, 5, 6)


@caso
def desactivado_no_se_oye_lo_tecleado():
    with Banco(ajustes=AJUSTES) as b:
        _terminal(b)
        b.tecla('alt+1')
        b.espera_silencio(0.8, 10)
        _teclea(b, 'n5')
        b.tecla('Return')
        b.calla(1.2)
        b.tecla('alt+1')
        b.espera_silencio(0.8, 10)
        _teclea(b, 'n6')
        t = b.tecla('Return')
        _oye(b, t, 6)


@caso
def un_texto_nuevo_sustituye_al_que_se_lee():
    with Banco(ajustes=AJUSTES) as b:
        _terminal(b)
        _teclea(b, ' '.join(f'n{k}' for k in range(10, 30)))
        t = b.tecla('Return')
        b.espera_palabra(12, 10, desde=t)
        _teclea(b, 'n5')
        t = b.tecla('Return')
        nuevo = b.espera_palabra(5, 10, desde=t)
        assert nuevo - t < 0.5, f'{nuevo - t:.3f} s from Enter to the new text'
        b.espera_silencio()
        en_orden(b.numeros(nuevo), [5])


@caso
def sin_la_opcion_no_se_oye_lo_tecleado():
    with Banco() as b:
        _terminal(b)
        _teclea(b, 'n5 n6?')
        b.tecla('Return')
        b.calla(1.5)


@caso
def las_teclas_de_inicio_se_eligen_en_su_ventana():
    with Banco(ajustes=AJUSTES) as b:
        _doble_click(b)
        _espera_abierta(b)
        b.tecla('ctrl+Tab')
        b.tecla('ctrl+Tab')
        time.sleep(0.3)
        for _ in range(8):  # the eighth control that can be used is the link
            b.tecla('Tab')
        b.tecla('space')
        espera(lambda: _activa(b).startswith('Teclas que inician la lectura'), 10, que='the window of the keys')
        time.sleep(0.3)
        _retrata(b, 'teclas-de-inicio')
        b.tecla('space')  # Enter doesn't read any more
        b.tecla('Return')
        espera(lambda: _activa(b) == TITULO, 10, que='the configuration in front again')
        b.tecla('Escape')  # the keys have been accepted in their own window
        assert '4k013' not in b.ajuste('TipoLectura', 'TeclasLeeTeclado')
        _terminal(b)
        _teclea(b, 'n5')
        b.tecla('Return')
        b.calla(1.2)
        t = time.monotonic()
        _teclea(b, 'n6?')
        _oye(b, t, 5, 6)


def _prueba_campos(b, titulo, limite=20):
    """A window with a password field that has the focus and an ordinary field behind it."""
    _enfoca(b, titulo, limite)
    t = time.monotonic()
    _teclea(b, 'n5 n6?')
    b.tecla('Return')
    b.calla(1.5)
    b.tecla('Tab')
    time.sleep(0.2)
    _teclea(b, 'n7')
    b.tecla('Return')
    _oye(b, t, 7)
    b.tecla('shift+Tab')
    time.sleep(0.2)
    _teclea(b, 'n8?')
    b.tecla('Return')
    b.calla(1.5)
    # Another window, which says nothing of its fields, is heard; back in the first one the password isn't.
    _terminal(b)
    t = time.monotonic()
    _teclea(b, 'n9')
    b.tecla('Return')
    _oye(b, t, 9)
    _enfoca(b, titulo)
    _teclea(b, 'n10?')
    b.tecla('Return')
    b.calla(1.5)
    # Neither the password nor anything else that was typed.
    diario = os.path.join(b.escritorio.entorno['XDG_STATE_HOME'], 'ondalis', 'Ondalis.log')
    if os.path.exists(diario):
        with open(diario, encoding='utf-8') as f:
            escrito = f.read()
        assert not any(n in escrito for n in ('n5', 'n7', 'n10')), escrito


def _entorno(b):
    """Of a program on an ordinary desktop, where toolkits serve the accessibility service."""
    return {c: v for c, v in b.escritorio.entorno.items() if c != 'NO_AT_BRIDGE'}


@caso
def una_contrasena_en_qt_no_se_oye():
    with Banco(ajustes=AJUSTES) as b:
        b.escritorio.procesos.arranca([os.path.join(OBRA, 'tests', 'campos_qt')], 'campos_qt', _entorno(b))
        _prueba_campos(b, 'Campos')


_GTK = '''
import gi
gi.require_version('Gtk', '3.0')
from gi.repository import Gtk
w = Gtk.Window(title='Campos')
caja = Gtk.VBox()
secreto, corriente = Gtk.Entry(visibility=False), Gtk.Entry()
caja.add(secreto)
caja.add(corriente)
w.add(caja)
w.show_all()
secreto.grab_focus()
w.connect('destroy', Gtk.main_quit)
Gtk.main()
'''


@caso
def una_contrasena_en_gtk_no_se_oye():
    with Banco(ajustes=AJUSTES) as b:
        b.escritorio.procesos.arranca(['/usr/bin/python3', '-c', _GTK], 'gtk', _entorno(b))
        _prueba_campos(b, 'Campos')


_PAGINA = '''<!DOCTYPE html><html><head><meta charset="utf-8"><title>Campos</title></head><body>
<form onsubmit="return false"><input type="password" autofocus><input type="text"></form></body></html>
'''
_PREFERENCIAS = '''user_pref("browser.shell.checkDefaultBrowser", false);
user_pref("browser.aboutwelcome.enabled", false);
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("toolkit.telemetry.reportingpolicy.firstRun", false);
user_pref("browser.tabs.warnOnClose", false);
user_pref("signon.rememberSignons", false);
user_pref("app.update.enabled", false);
user_pref("network.captive-portal-service.enabled", false);
user_pref("network.connectivity-service.enabled", false);
'''


@caso
def una_contrasena_en_el_navegador_no_se_oye():
    navegador = shutil.which('firefox-esr') or shutil.which('firefox')
    if not navegador:
        print('SKIP: there is no Firefox on this machine')
        return
    with Banco(ajustes=AJUSTES) as b:
        perfil = os.path.join(b.escritorio.carpeta, 'perfil')
        os.mkdir(perfil)
        with open(os.path.join(perfil, 'user.js'), 'w', encoding='utf-8') as f:
            f.write(_PREFERENCIAS)
        pagina = os.path.join(b.escritorio.carpeta, 'campos.html')
        with open(pagina, 'w', encoding='utf-8') as f:
            f.write(_PAGINA)
        b.escritorio.procesos.arranca([navegador, '--no-remote', '--profile', perfil, pagina], 'firefox', _entorno(b))
        espera(lambda: 'Campos' in '\n'.join(b.escritorio.arbol()), 90, paso=0.5, que='the browser')
        time.sleep(3)  # the page has been given its focus
        _prueba_campos(b, 'Campos', 60)
