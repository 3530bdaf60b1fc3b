"""A private desktop: X server, session bus, window manager, tray host, sound server and the recorder of its monitor.

Nothing of the real session is touched: home, configuration, run-time folder and sockets are all below one temporary
folder, which goes at the end (it stays when a test fails and CONSERVA=1 is set).
"""
import glob
import os
import shutil
import signal
import subprocess
import tempfile

from . import saneador
from .equis import Equis
from .procesos import Procesos, espera
from .sonido import RITMO, Grabadora

_RC_OPENBOX = '''<?xml version="1.0" encoding="UTF-8"?>
<openbox_config xmlns="http://openbox.org/3.4/rc"><keyboard/><mouse/><applications/></openbox_config>
'''
_RC_TINT2 = '''panel_items = TS
panel_position = bottom center horizontal
panel_size = 100% 32
panel_monitor = 1
background_color = #303030 100
systray_background_id = 0
systray_icon_size = 24
task_font = DejaVu Sans 9
'''


class Escritorio:
    def __init__(self, tamano='1280x800'):
        self.carpeta = tempfile.mkdtemp(prefix='ondalis-e2e-')
        self._tamano = tamano
        self.equis = None
        self.grabadora = None
        entorno = {c: os.environ[c] for c in ('PATH', 'LD_LIBRARY_PATH') if c in os.environ}
        for variable, nombre in (('HOME', 'casa'), ('XDG_CONFIG_HOME', 'config'), ('XDG_DATA_HOME', 'data'),
                                 ('XDG_STATE_HOME', 'state'), ('XDG_CACHE_HOME', 'cache'), ('XDG_RUNTIME_DIR', 'run')):
            entorno[variable] = os.path.join(self.carpeta, nombre)
            os.mkdir(entorno[variable], 0o700)
        entorno.update(LANG='C.UTF-8', LC_ALL='C.UTF-8', NO_AT_BRIDGE='1',
                       PULSE_SERVER='unix:' + os.path.join(self.carpeta, 'run', 'pulso'),
                       PULSE_COOKIE=os.path.join(self.carpeta, 'run', 'galleta'))
        # Programs built with a sanitizer report into the folder, whichever process it was and however it ended; a death
        # on purpose (SIGKILL, abort) leaves no report.
        for variable in saneador.VARIABLES:
            if variable in os.environ:
                entorno[variable] = f'{os.environ[variable]}:log_path={os.path.join(self.carpeta, "saneador")}'
        self.entorno = entorno
        self.procesos = Procesos(entorno, self.carpeta)
        self._pulso = None
        self._bandeja = None
        self._bus = None
        self._equis = None

    def __enter__(self):
        try:
            self._arranca()
        except BaseException:
            self.cierra()
            raise
        return self

    def __exit__(self, tipo, _valor, _traza):
        informes = self.cierra(tipo is not None)
        if informes and tipo is None:
            raise AssertionError('a sanitizer has reported')

    def _informes(self):
        """What sanitizers have reported of any process of this desktop."""
        textos = []
        for ruta in sorted(glob.glob(os.path.join(self.carpeta, 'saneador.*'))):
            with open(ruta, encoding='utf-8', errors='replace') as f:
                textos.append(f'--- {os.path.basename(ruta)}\n{f.read()}')
        # Beside the undefined-behaviour sanitizer, linked in statically, the address sanitizer's own library never learns of
        # the folder: the summary comes here, but the report itself goes to the process's error output.
        for ruta in sorted(glob.glob(os.path.join(self.carpeta, '*.txt'))) if textos else ():
            with open(ruta, encoding='utf-8', errors='replace') as f:
                _, error, informe = f.read().partition('ERROR: ')
            if 'Sanitizer' in informe:
                textos.append(f'--- {os.path.basename(ruta)}\n{error}{informe}')
        return '\n'.join(textos)

    def _fichero(self, nombre, texto):
        ruta = os.path.join(self.carpeta, nombre)
        with open(ruta, 'w', encoding='utf-8') as f:
            f.write(texto)
        return ruta

    def _dado(self, orden, nombre, guarda=None):
        """Starts a server that writes its address to a descriptor of ours, and returns the address."""
        lee, escribe = os.pipe()
        p = self.procesos.arranca([a.replace('{fd}', str(escribe)) for a in orden], nombre, pass_fds=[escribe])
        if guarda:
            setattr(self, guarda, p)
        os.close(escribe)
        with os.fdopen(lee) as f:
            linea = f.readline().strip()
        if not linea:
            raise AssertionError(f'{nombre} does not start')
        return linea

    def _arranca(self):
        numero = self._dado(['Xvfb', '-displayfd', '{fd}', '-screen', '0', self._tamano + 'x24', '-nolisten', 'tcp',
                             '-noreset'], 'Xvfb', guarda='_equis')
        self.entorno['DISPLAY'] = ':' + numero
        self.arranca_bus()
        self.arranca_sonido()
        self.equis = Equis(self.entorno['DISPLAY'])
        self.procesos.corre(['setxkbmap', 'es'])
        self.procesos.arranca(['openbox', '--sm-disable', '--config-file', self._fichero('rc.xml', _RC_OPENBOX)])
        espera(lambda: b'window id' in self.procesos.corre(['xprop', '-root', '_NET_SUPPORTING_WM_CHECK']),
               que='the window manager', paso=0.03)
        self.arranca_bandeja()

    def arranca_bus(self):
        """The session bus, always at the same address; also after mata_bus."""
        direccion = 'unix:path=' + os.path.join(self.carpeta, 'run', 'bus')
        self._dado(['dbus-daemon', '--session', '--nofork', '--print-address={fd}', '--address=' + direccion], 'dbus',
                   guarda='_bus')
        self.entorno['DBUS_SESSION_BUS_ADDRESS'] = direccion

    def mata_bus(self):
        self._bus.kill()
        self._bus.wait()

    def para_bus(self):
        """The bus hangs: it is there and answers nobody."""
        self._bus.send_signal(signal.SIGSTOP)

    def sigue_bus(self):
        self._bus.send_signal(signal.SIGCONT)

    def arranca_bandeja(self):
        """The tray's host; also after mata_bandeja."""
        self._bandeja = self.procesos.arranca(['tint2', '-c', self._fichero('tint2rc', _RC_TINT2)])
        espera(lambda: self.equis.hay_dueno('_NET_SYSTEM_TRAY_S0'), que='the tray')

    def mata_bandeja(self):
        self._bandeja.kill()
        self._bandeja.wait()
        espera(lambda: not self.equis.hay_dueno('_NET_SYSTEM_TRAY_S0'), que='the end of the tray')

    def arranca_sonido(self):
        """The sound server and the recorder; also after mata_sonido."""
        socket = os.path.join(self.carpeta, 'run', 'pulso')
        # norewinds: without it the null sink renders up to two seconds ahead and its monitor lies.
        self._pulso = self.procesos.arranca(
            ['pulseaudio', '-n', '--daemonize=no', '--exit-idle-time=-1', '--use-pid-file=no', '--realtime=no',
             '--high-priority=no', '-L', f'module-native-protocol-unix socket={socket} auth-anonymous=1',
             '-L', f'module-null-sink sink_name=nul rate={RITMO} channels=1 norewinds=1'])
        espera(lambda: subprocess.run(['pactl', 'info'], env=self.entorno, stdin=subprocess.DEVNULL,
                                      stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False
                                      ).returncode == 0, que='the sound server', paso=0.03)
        self.grabadora = Grabadora(self.procesos)
        espera(self.grabadora.empezada, que='the recorder')

    def mata_sonido(self):
        self._pulso.kill()
        self._pulso.wait()

    def mata_equis(self):
        self._equis.kill()
        self._equis.wait()

    def arbol(self):
        """Lines of the tree of all windows."""
        for _ in range(20):
            try:
                return self.procesos.corre(['xwininfo', '-root', '-tree']).decode(errors='replace').splitlines()
            except AssertionError:
                pass  # the tool fails when a window goes while it asks
        raise AssertionError('the tree of windows never stands still')

    def captura(self, ruta):
        self.procesos.corre(['import', '-window', 'root', ruta])

    def cierra(self, mal=True):
        """Ends everything; prints and returns what sanitizers have reported. `mal`: the scenario has failed already."""
        if self.equis:
            self.equis.cierra()
            self.equis = None
        # The leak check at a program's end takes its time.
        self.procesos.termina_todos(30.0 if any(v in self.entorno for v in saneador.VARIABLES) else 3.0)
        informes = self._informes()
        if informes:
            print(informes)
        if (mal or informes) and os.environ.get('CONSERVA') == '1':
            print(f'the desktop\'s folder stays: {self.carpeta}')
        else:
            shutil.rmtree(self.carpeta, ignore_errors=True)
        return informes
