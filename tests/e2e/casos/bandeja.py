"""Tray hosts of both protocols that come late or again, and the question of a machine without sound."""
import os
import signal
import subprocess
import time

from arnes.banco import OBRA, Banco
from arnes.procesos import espera
from casos.programa import _icono

CASOS = {}

# A watcher of status notifiers that writes what it is told.
_VIGILANTE = '''
from gi.repository import Gio, GLib
XML = """<node><interface name="org.kde.StatusNotifierWatcher">
<method name="RegisterStatusNotifierItem"><arg type="s" direction="in"/></method>
<method name="RegisterStatusNotifierHost"><arg type="s" direction="in"/></method>
<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>
<property name="RegisteredStatusNotifierItems" type="as" access="read"/>
<property name="ProtocolVersion" type="i" access="read"/></interface></node>"""
VALORES = {'IsStatusNotifierHostRegistered': GLib.Variant('b', True),
           'RegisteredStatusNotifierItems': GLib.Variant('as', []), 'ProtocolVersion': GLib.Variant('i', 0)}

def llamada(_c, quien, _o, _i, metodo, _p, invocacion):
    print(metodo, quien, flush=True)
    invocacion.return_value(None)

def en_el_bus(conexion, _nombre):
    conexion.register_object('/StatusNotifierWatcher', Gio.DBusNodeInfo.new_for_xml(XML).interfaces[0], llamada,
                             lambda c, s, o, i, nombre: VALORES[nombre], None)

Gio.bus_own_name(Gio.BusType.SESSION, 'org.kde.StatusNotifierWatcher', 0, en_el_bus, None, None)
GLib.MainLoop().run()
'''


def caso(f):
    CASOS[f.__name__] = f
    return f


class _Vigilante:
    def __init__(self, b):
        self._ruta = os.path.join(b.escritorio.carpeta, f'vigilante-{time.monotonic_ns()}')
        with open(self._ruta, 'wb') as salida:
            self._proceso = b.escritorio.procesos.arranca(['/usr/bin/python3', '-c', _VIGILANTE], 'vigilante',
                                                          stdout=salida)

    def registrado(self):
        """The bus name of whoever has registered an icon last, None so far."""
        ultimo = None
        with open(self._ruta, encoding='utf-8') as f:
            for linea in f:
                metodo, _, quien = linea.rstrip('\n').partition(' ')
                if metodo == 'RegisterStatusNotifierItem' and quien and linea.endswith('\n'):
                    ultimo = quien
        return ultimo

    def mata(self):
        self._proceso.kill()
        self._proceso.wait()


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
