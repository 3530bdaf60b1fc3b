"""Tray hosts of both protocols that come late or again, and the question of a machine without sound."""
import os
import shutil
import signal
import subprocess
import time

from arnes.banco import OBRA, Banco, texto_tonos
from arnes.procesos import Saltado, espera
from casos.arranque import foto, pixeles, ventanas
from casos.programa import _hay_menu, _icono

CASOS = {}

# A watcher of status notifiers that writes what it is told.
_VIGILANTE = '''
import signal, sys
from gi.repository import Gio, GLib
XML = """<node><interface name="org.kde.StatusNotifierWatcher">
<method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
<method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
<signal name="StatusNotifierHostRegistered"/>
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
<property name="RegisteredStatusNotifierItems" type="as" access="read"/>
<property name="ProtocolVersion" type="i" access="read"/></interface></node>"""
VALORES = {'IsStatusNotifierHostRegistered': GLib.Variant('b', sys.argv[1] == '1'),
           'RegisteredStatusNotifierItems': GLib.Variant('as', []), 'ProtocolVersion': GLib.Variant('i', 0)}

def llamada(_c, quien, _o, _i, metodo, _p, invocacion):
    print(metodo, quien, *_p.unpack(), flush=True)
    invocacion.return_value(None)

def en_el_bus(conexion, _nombre):
    conexion.register_object('/StatusNotifierWatcher', Gio.DBusNodeInfo.new_for_xml(XML).interfaces[0], llamada,
                             lambda c, s, o, i, nombre: VALORES[nombre], None)
    def llega_panel():
        VALORES['IsStatusNotifierHostRegistered'] = GLib.Variant('b', True)
        conexion.emit_signal(None, '/StatusNotifierWatcher', 'org.kde.StatusNotifierWatcher',
                             'StatusNotifierHostRegistered', None)
        return True
    GLib.unix_signal_add(GLib.PRIORITY_DEFAULT, signal.SIGUSR1, llega_panel)
    print('en el bus', flush=True)

Gio.bus_own_name(Gio.BusType.SESSION, 'org.kde.StatusNotifierWatcher', 0, en_el_bus, None, None)
GLib.MainLoop().run()
'''


def caso(f):
    CASOS[f.__name__] = f
    return f


class _Vigilante:
    def __init__(self, b, anfitrion=True):
        self._ruta = os.path.join(b.escritorio.carpeta, f'vigilante-{time.monotonic_ns()}')
        with open(self._ruta, 'wb') as salida:
            self._proceso = b.escritorio.procesos.arranca(
                ['/usr/bin/python3', '-c', _VIGILANTE, str(int(anfitrion))], 'vigilante', stdout=salida)

    def dicho(self):
        with open(self._ruta, encoding='utf-8') as f:
            return f.read()

    def registrado(self):
        """The bus name of whoever has registered an icon last, None so far."""
        ultimo = None
        with open(self._ruta, encoding='utf-8') as f:
            for linea in f:
                metodo, _, quien = linea.rstrip('\n').partition(' ')
                quien = quien.partition(' ')[0]
                if metodo == 'RegisterStatusNotifierItem' and quien and linea.endswith('\n'):
                    ultimo = quien
        return ultimo

    def registro(self):
        """Under which name the last one has registered."""
        return [l.split()[2] for l in self.dicho().splitlines() if l.startswith('RegisterStatusNotifierItem')][-1]

    def presenta_anfitrion(self):
        """A panel reports to the watcher."""
        self._proceso.send_signal(signal.SIGUSR1)

    def mata(self):
        self._proceso.kill()
        self._proceso.wait()


def _hay_nombre(b, nombre):
    return b.escritorio.procesos.corre(
        ['gdbus', 'call', '--session', '-d', 'org.freedesktop.DBus', '-o', '/', '-m',
         'org.freedesktop.DBus.NameHasOwner', nombre]).startswith(b'(true')


def foto_icono(b):
    """The icon's square in the tray, as bytes of its pixels. The pointer isn't in it."""
    x, y = espera(lambda: _icono(b), 10, que='the icon in the tray')
    return pixeles(b, x - 12, y - 12, 24, 24)


def cambia_el_icono(b, antes):
    """Waits until the icon looks different and then stays so; returns its pixels."""
    def quieto():
        uno = foto_icono(b)
        time.sleep(0.15)
        return uno if uno != antes and foto_icono(b) == uno else None
    return espera(quieto, 5, que='another icon')


@caso
def el_icono_se_mueve_durante_la_lectura_y_descansa_despues():
    with Banco() as b:
        reposo = foto_icono(b)
        time.sleep(1.0)
        assert foto_icono(b) == reposo, 'the icon moves while nothing is read'
        b.copia(texto_tonos(0, 40))
        b.espera_palabra(3)
        imagenes = set()
        fin = time.monotonic() + 3.0
        while time.monotonic() < fin:
            imagenes.add(foto_icono(b))
        assert len(imagenes - {reposo}) == 3, f'{len(imagenes - {reposo})} frames of the animation seen'
        b.tecla('ctrl+1')  # a pause is no reading that goes on
        b.tecla('ctrl+2')
        espera(lambda: foto_icono(b) == reposo, 5, que='the icon at rest')
        time.sleep(1.0)
        assert foto_icono(b) == reposo


@caso
def el_boton_derecho_abre_el_menu_al_soltarlo():
    with Banco() as b:
        x, y = espera(lambda: _icono(b), 10, que='the icon in the tray')
        b.escritorio.equis.boton(x, y, 3, True)
        time.sleep(0.6)
        assert not _hay_menu(b), 'the press opened the menu'
        b.escritorio.equis.boton(x, y, 3, False)
        espera(lambda: _hay_menu(b), 5, que='the menu')
        time.sleep(0.3)
        foto(b, 'menu')
        b.tecla('Escape')
        espera(lambda: not _hay_menu(b), 5, que='the menu to close')


def _ventana_menu(b):
    return [v for v in ventanas(b) if v[4] > 250]


def _da_teclado(b, ventana):
    """Goes to a window. The window manager calls it the active one before keys go there."""
    b.escritorio.procesos.corre(['xdotool', 'windowactivate', '--sync', ventana])
    espera(lambda: b.escritorio.procesos.corre(['xdotool', 'getwindowfocus'], comprueba=False).strip() ==
           str(int(ventana, 16)).encode(), 20, que='the window to have the keyboard')


@caso
def sin_bandeja_hay_una_ventana_que_se_maneja_con_el_teclado_y_se_dice():
    with Banco(arranca=False, motor='real') as b:
        b.escritorio.mata_bandeja()
        b.arranca_lector()
        t = time.monotonic()
        assert not _ventana_menu(b)
        b.espera_sonido(12, desde=t)  # the spoken notice
        espera(lambda: _ventana_menu(b), 3, que='the window')
        time.sleep(0.5)
        foto(b, 'sin_bandeja')
        with open(os.path.join(b.escritorio.carpeta, 'state/ondalis/Ondalis.log'), encoding='utf-8') as f:
            assert 'cSinBandeja: ' in f.read()
        # A tray that comes takes its place.
        b.escritorio.arranca_bandeja()
        espera(lambda: _icono(b), 10, que='the icon in the late tray')
        espera(lambda: not _ventana_menu(b), 5, que='the window to go')
        # And one that goes for good brings it back; by keyboard alone to its last entry.
        b.escritorio.mata_bandeja()
        ventana = espera(lambda: _ventana_menu(b), 12, que='the window again')[0][0]
        _da_teclado(b, ventana)
        b.tecla('shift+Tab')
        b.tecla('Return')
        assert b.lector.wait(5) == 0


@caso
def cerrar_la_ventana_sin_bandeja_solo_la_minimiza():
    with Banco(arranca=False) as b:
        b.escritorio.mata_bandeja()
        b.arranca_lector()
        ventana = espera(lambda: _ventana_menu(b), 12, que='the window')[0][0]
        b.escritorio.equis.cierra_ventana(int(ventana, 16))
        espera(lambda: not _ventana_menu(b), 5, que='the window to be minimized')
        b.sigue_vivo()
        b.escritorio.procesos.corre(['xdotool', 'windowactivate', '--sync', ventana])
        espera(lambda: _ventana_menu(b), 5, que='the window to come back')


@caso
def el_icono_de_una_bandeja_de_ventanas_pasa_al_vigilante_cuando_ella_se_va_y_vuelve_con_ella():
    with Banco() as b:
        espera(lambda: _icono(b), 10, que='the icon')
        vigilante = _Vigilante(b)
        espera(lambda: 'en el bus' in vigilante.dicho(), 10, que='the watcher')
        time.sleep(0.5)
        assert _icono(b), 'the icon has left the tray that still stands'
        assert not vigilante.registrado()
        b.escritorio.mata_bandeja()
        espera(vigilante.registrado, 10, que='the registration')
        nombre = vigilante.registro()

        def propiedad(cual):
            return b.escritorio.procesos.corre(
                ['gdbus', 'call', '--session', '-d', nombre, '-o', '/StatusNotifierItem', '-m',
                 'org.freedesktop.DBus.Properties.Get', 'org.kde.StatusNotifierItem', cual]).decode()

        def manda(metodo):
            b.escritorio.procesos.corre(['gdbus', 'call', '--session', '-d', nombre, '-o', '/StatusNotifierItem', '-m',
                                         'org.kde.StatusNotifierItem.' + metodo, '600', '300'])
        reposo = propiedad('IconPixmap')
        b.copia(texto_tonos(0, 20))
        b.espera_palabra(2)
        assert propiedad('IconPixmap') != reposo
        b.tecla('ctrl+2')
        espera(lambda: propiedad('IconPixmap') == reposo, 5, que='the icon at rest')
        manda('ContextMenu')
        espera(lambda: _hay_menu(b), 5, que='the menu')
        time.sleep(0.3)
        foto(b, 'menu_del_bus')
        b.tecla('Escape')
        espera(lambda: not _hay_menu(b), 5, que='the menu to close')
        time.sleep(6)
        assert not _ventana_menu(b), 'the window stands in for an icon that is there'
        # The old tray is back: the icon is in it and the watcher's one is gone.
        b.escritorio.arranca_bandeja()
        espera(lambda: _icono(b), 10, que='the icon in the old tray')
        espera(lambda: not _hay_nombre(b, nombre), 5, que='the end of the other icon')
        b.escritorio.mata_bandeja()
        espera(lambda: vigilante.dicho().count('RegisterStatusNotifierItem') > 1, 10, que='the icon on the bus again')
        manda('ContextMenu')
        espera(lambda: _hay_menu(b), 5, que='the menu')
        time.sleep(0.3)
        b.tecla('Up')
        b.tecla('Return')
        assert b.lector.wait(5) == 0


@caso
def con_el_bus_parado_el_lector_arranca_lee_y_lo_toma_cuando_sigue():
    with Banco(arranca=False) as b:
        b.escritorio.para_bus()
        b.arranca_lector()
        print(f'ready after {b.listo_en * 1000:.0f} ms with a bus that hangs')
        assert b.listo_en < 4.0
        espera(lambda: _icono(b), 10, que='the icon in the tray of windows')
        t = b.copia(texto_tonos(0, 30))
        b.espera_palabra(2, desde=t)
        t = b.tecla('ctrl+2')
        b.espera_silencio(0.3, 3)
        b.escritorio.sigue_bus()
        espera(lambda: _hay_nombre(b, 'com.ferrano.Ondalis'), 20, que='the reader on the bus')
        assert b.termina_lector() == 0


@caso
def un_bus_que_se_para_en_plena_lectura_no_detiene_las_teclas_ni_el_final():
    with Banco() as b:
        espera(lambda: _hay_nombre(b, 'com.ferrano.Ondalis'), 10, que='the reader on the bus')
        b.copia(texto_tonos(0, 60))
        b.espera_palabra(2)
        b.escritorio.para_bus()
        time.sleep(1.0)
        b.escritorio.mata_bandeja()  # a panel that goes makes the reader look for another
        b.espera_palabra(9)
        t = b.tecla('ctrl+2')
        m = b.silencio_desde(t, t + 1.0)
        assert m is None or m < 0.4, f'sound for {m:.3f} s after the stop'
        t = b.copia(texto_tonos(20, 10))
        b.espera_palabra(22, desde=t)
        assert b.termina_lector() == 0


@caso
def un_panel_que_se_presenta_despues_de_su_vigilante_recibe_el_icono():
    with Banco(arranca=False) as b:
        b.escritorio.mata_bandeja()
        vigilante = _Vigilante(b, anfitrion=False)
        espera(lambda: 'en el bus' in vigilante.dicho(), 10, que='the watcher')
        b.arranca_lector()
        time.sleep(0.5)
        assert not vigilante.registrado()
        vigilante.presenta_anfitrion()
        espera(vigilante.registrado, 10, que='the registration')


# The panel of Xfce hosts status notifiers by itself. Its settings come from a file, for its settings daemon is told so.
_PANEL = '''<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array"><value type="int" value="1"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=10;x=640;y=780"/>
      <property name="length" type="uint" value="100"/>
      <property name="position-locked" type="bool" value="true"/>
      <property name="size" type="uint" value="32"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty">
    <property name="plugin-1" type="string" value="systray"/>
  </property>
</channel>
'''


_PIE = (0, 740, 1280, 60)  # where the panel is


def _panel(b):
    return pixeles(b, *_PIE)


def _hay_panel(b):
    return _panel(b) != b'\0' * len(_panel(b))


def _registrados(b):
    """What the watcher on the bus shows."""
    return b.escritorio.procesos.corre(
        ['gdbus', 'call', '--session', '-d', 'org.kde.StatusNotifierWatcher', '-o', '/StatusNotifierWatcher', '-m',
         'org.freedesktop.DBus.Properties.Get', 'org.kde.StatusNotifierWatcher', 'RegisteredStatusNotifierItems'],
        comprueba=False).decode()


def _centro(antes, despues):
    """The middle of what differs between two pictures of the panel, on the screen."""
    x0, y0, ancho, _ = _PIE
    puntos = [i // 3 for i in range(0, len(antes), 3) if antes[i:i + 3] != despues[i:i + 3]]
    xs, ys = [p % ancho for p in puntos], [p // ancho for p in puntos]
    assert max(xs) - min(xs) < 64, 'more than an icon has changed'
    return x0 + (min(xs) + max(xs)) // 2, y0 + (min(ys) + max(ys)) // 2


@caso
def un_panel_de_verdad_muestra_el_icono_su_menu_y_su_doble_pulsacion():
    if not shutil.which('xfce4-panel'):
        raise Saltado('xfce4-panel is not installed')
    with Banco(arranca=False) as b:
        b.escritorio.mata_bandeja()
        canal = os.path.join(b.escritorio.entorno['XDG_CONFIG_HOME'], 'xfce4/xfconf/xfce-perchannel-xml')
        os.makedirs(canal)
        with open(os.path.join(canal, 'xfce4-panel.xml'), 'w', encoding='utf-8') as f:
            f.write(_PANEL)
        b.escritorio.procesos.arranca(['/usr/lib/x86_64-linux-gnu/xfce4/xfconf/xfconfd'], 'xfconfd')
        b.escritorio.procesos.arranca(['xfce4-panel'])
        espera(lambda: 'as' in _registrados(b) and _hay_panel(b), 20, que='the panel')
        time.sleep(1.5)  # it builds itself
        vacio = _panel(b)
        b.arranca_lector()
        espera(lambda: 'StatusNotifierItem' in _registrados(b), 20, que='the registration')
        espera(lambda: _panel(b) != vacio, 10, que='the icon in the panel')
        time.sleep(1.0)
        foto(b, 'panel')
        reposo = _panel(b)
        sitio = _centro(vacio, reposo)
        b.copia(texto_tonos(0, 20))
        b.espera_palabra(2)
        espera(lambda: _panel(b) != reposo, 5, que='the icon to change')
        b.tecla('ctrl+2')
        espera(lambda: _panel(b) == reposo, 5, que='the icon at rest')
        # Two single clicks are the double click that this protocol doesn't know.
        b.escritorio.equis.raton(*sitio, 1)
        b.escritorio.equis.raton(*sitio, 1)
        espera(lambda: ventanas(b, 'Configuración Ondalis'), 10, que='the configuration')
        b.escritorio.equis.raton(*sitio, 3)
        time.sleep(1.0)
        foto(b, 'panel_menu')
        b.tecla('Up')
        b.tecla('Return')
        assert b.lector.wait(5) == 0


@caso
def la_bandeja_que_llega_tarde_o_se_reinicia_recibe_el_icono():
    with Banco(arranca=False) as b:
        b.escritorio.mata_bandeja()
        b.arranca_lector()
        b.escritorio.arranca_bandeja()
        espera(lambda: _icono(b), 10, que='the icon in the late tray')
        b.escritorio.mata_bandeja()
        b.escritorio.arranca_bandeja()
        espera(lambda: _icono(b), 10, que='the icon in the new tray')


@caso
def el_vigilante_de_iconos_temprano_tardio_o_reiniciado_recibe_el_registro():
    with Banco(arranca=False) as b:
        b.escritorio.mata_bandeja()
        b.arranca_lector()
        primero = _Vigilante(b)
        espera(primero.registrado, 10, que='the late watcher\'s registration')
        primero.mata()
        segundo = _Vigilante(b)
        espera(segundo.registrado, 10, que='the new watcher\'s registration')
        b.lector.terminate()
        assert b.lector.wait(5) == 0
        segundo.mata()
        tercero = _Vigilante(b)
        b.arranca_lector()
        espera(tercero.registrado, 10, que='the early watcher\'s registration')


def _pregunta(b):
    """Starts the reader where there is no sound server, and returns it when its question stands there."""
    entorno = dict(b.escritorio.entorno, PULSE_SERVER='unix:/nonexistent', ONDALIS_AVISA_LISTO='1')
    lector = b.escritorio.procesos.arranca([os.path.join(OBRA, 'bin', 'ondalis')], 'ondalis', entorno,
                                           stderr=subprocess.PIPE)
    espera(lambda: any(l.strip().split()[1:2] == ['"Ondalis":'] for l in b.escritorio.arbol()), 15, que='the question')
    time.sleep(0.3)  # until the window manager has given it the focus
    return lector


@caso
def sin_tarjeta_de_sonido_pregunta_y_con_si_sigue():
    with Banco(arranca=False) as b:
        lector = _pregunta(b)
        b.tecla('s')
        assert b'ONDALIS LISTO' in lector.stderr.readline()
        lector.send_signal(signal.SIGTERM)
        assert lector.wait(5) == 0


@caso
def sin_tarjeta_de_sonido_con_no_termina():
    with Banco(arranca=False) as b:
        lector = _pregunta(b)
        b.tecla('n')
        assert lector.wait(5) == 0
        assert lector.stderr.read() == b''


@caso
def sigterm_con_un_mensaje_abierto_termina_bien():
    with Banco(arranca=False) as b:
        lector = _pregunta(b)
        lector.send_signal(signal.SIGTERM)
        assert lector.wait(5) == 0
        assert lector.stderr.read() == b''
