"""A test's bench: a private desktop with the reader on it, and the verbs that scenarios are told in.

Clocks are time.monotonic() everywhere: of keys, of samples heard, of everything returned.
"""
import glob
import os
import signal
import threading
import time

from . import sonido
from .escritorio import Escritorio
from .procesos import espera, hijos, vivo

RAIZ = os.path.dirname(os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__)))))
OBRA = os.environ.get('ONDALIS_OBRA', os.path.join(RAIZ, 'build'))

PROGRAMA = os.environ.get('ONDALIS_PROGRAMA', os.path.join(OBRA, 'bin', 'ondalis'))  # e.g. an installed one

AJUSTES = {  # what a test starts from: no sounds but speech, no assistant, everything else as a new user has it
    'General': {'UtilizaSonidos': 'False', 'Aviso': 'False'},
}


class Banco:
    """`motor`: "tono" for the engine whose words are tones, "real" for eSpeak NG. `ajustes`: {section: {key: text}}.
    `tamano`: the screen's."""

    def __init__(self, motor='tono', ajustes=None, arranca=True, tamano='1280x800'):
        self.escritorio = Escritorio(tamano)
        self.motor = motor
        self._ajustes = {s: dict(v) for s, v in AJUSTES.items()}
        for seccion, valores in (ajustes or {}).items():
            self._ajustes.setdefault(seccion, {}).update(valores)
        self._arranca = arranca
        self.lector = None
        self.dueno = None  # the program that owns the clipboard
        self.inicio = None

    def __enter__(self):
        self.escritorio.__enter__()
        try:
            self.escribe_ajustes()
            if self._arranca:
                self.arranca_lector()
        except BaseException:
            self._cuenta_fallo()
            self.escritorio.cierra()
            raise
        return self

    def __exit__(self, tipo, valor, traza):
        if tipo is not None:
            self._cuenta_fallo()
        self.escritorio.__exit__(tipo, valor, traza)

    def _cuenta_fallo(self):
        """What helps to understand a failure: the end of the reader's own words and of its log, and what was heard."""
        for nombre in ('ondalis.txt', 'state/ondalis/Ondalis.log'):
            ruta = os.path.join(self.escritorio.carpeta, nombre)
            if os.path.isfile(ruta):
                with open(ruta, encoding='utf-8', errors='replace') as f:
                    print(f'--- {nombre}\n' + ''.join(f.readlines()[-25:]), end='')
        if self.escritorio.grabadora and self.escritorio.grabadora.empezada():
            oidas = sonido.palabras(*self.escritorio.grabadora.muestras())
            print('--- heard: ' + ' '.join(str(p.k) for p in oidas[-80:]))

    # The reader.

    def escribe_ajustes(self):
        carpeta = os.path.join(self.escritorio.entorno['XDG_CONFIG_HOME'], 'Ferrano')
        os.makedirs(carpeta, exist_ok=True)
        with open(os.path.join(carpeta, 'Ondalis.ini'), 'w', encoding='utf-8') as f:
            for seccion, valores in self._ajustes.items():
                # QSettings keeps [General] for keys without a group, and escapes a real group of that name.
                f.write('[%General]\n' if seccion == 'General' else f'[{seccion}]\n')
                f.writelines(f'{c}={v}\n' for c, v in valores.items())

    def ajuste(self, seccion, clave):
        ruta = os.path.join(self.escritorio.entorno['XDG_CONFIG_HOME'], 'Ferrano', 'Ondalis.ini')
        actual = None
        with open(ruta, encoding='utf-8') as f:
            for linea in f:
                linea = linea.strip()
                if linea.startswith('['):
                    actual = linea.strip('[]').lstrip('%').lower()
                elif actual == seccion.lower() and linea.lower().startswith(clave.lower() + '='):
                    return linea.partition('=')[2]
        return None

    def arranca_lector(self, argumentos=(), espera_listo=True):
        entorno = dict(self.escritorio.entorno, ONDALIS_AVISA_LISTO='1')
        if self.motor == 'tono':
            entorno['ONDALIS_MOTOR'] = os.path.join(OBRA, 'tests', 'ondalis-motor-tono')
            if not os.access(entorno['ONDALIS_MOTOR'], os.X_OK):
                raise AssertionError(f'{entorno["ONDALIS_MOTOR"]} is not built')
        programa = PROGRAMA
        if not os.access(programa, os.X_OK):
            raise AssertionError(f'{programa} is not built')
        diario = open(os.path.join(self.escritorio.carpeta, 'ondalis.txt'), 'ab')
        lee, escribe = os.pipe()
        antes = time.monotonic()
        self.lector = self.escritorio.procesos.arranca([programa, *argumentos], 'ondalis', entorno,
                                                       stdout=diario, stderr=escribe)
        os.close(escribe)
        self._listo = listo = threading.Event()
        self.listo_en = None

        def copia_errores():
            with os.fdopen(lee, 'rb') as f, diario:
                for linea in f:
                    if b'ONDALIS LISTO' in linea:
                        self.listo_en = time.monotonic() - antes
                        listo.set()
                    diario.write(linea)
                    diario.flush()
        threading.Thread(target=copia_errores, daemon=True).start()
        if espera_listo:
            self.espera_listo()

    def espera_listo(self):
        espera(lambda: self._listo.is_set() or self.lector.poll() is not None, 20, que='the reader to be ready')
        if not self._listo.is_set():
            raise AssertionError(f'the reader ended at once with {self.lector.returncode}')
        self.inicio = time.monotonic()

    def motores(self):
        """Process ids of the reader's engine workers."""
        dados = []
        for pid in hijos(self.lector.pid):
            try:
                with open(f'/proc/{pid}/cmdline', 'rb') as f:
                    if b'ondalis-motor' in f.read():
                        dados.append(pid)
            except OSError:
                pass
        return dados

    def mata_motor(self, senal=signal.SIGKILL):
        """Signals every worker of the reader; returns their ids."""
        pids = espera(self.motores, que='a worker')
        for pid in pids:
            os.kill(pid, senal)
        return pids

    def sigue_vivo(self):
        assert self.lector.poll() is None, f'the reader has ended with {self.lector.returncode}'

    # What the user does.

    def copia(self, texto, espera_dueno=True):
        """Another program puts a text on the clipboard and keeps it there. Returns the clock of that moment."""
        anterior = self.dueno
        antes = self.escritorio.equis.hay_dueno('CLIPBOARD')
        entrada = os.path.join(self.escritorio.carpeta, 'copiado.txt')
        with open(entrada, 'w', encoding='utf-8') as f:
            f.write(texto)
        self.dueno = self.escritorio.procesos.arranca(
            ['xclip', '-quiet', '-selection', 'clipboard', '-in', entrada], 'xclip')
        t = time.monotonic()
        if espera_dueno:
            # The server may give the new owner the number that the one before had, if that one has gone meanwhile.
            def hay_nuevo():
                dueno = self.escritorio.equis.hay_dueno('CLIPBOARD')
                return dueno != 0 and (dueno != antes or (anterior is not None and anterior.poll() is not None))
            espera(hay_nuevo, paso=0.001, que='the new owner of the clipboard')
            t = time.monotonic()
        if anterior:
            self.escritorio.procesos.termina(anterior)
        return t

    def tecla(self, combinacion):
        return self.escritorio.equis.tecla(combinacion)

    def mantiene(self, combinacion, segundos):
        t = self.escritorio.equis.baja(combinacion)
        time.sleep(segundos)
        self.escritorio.equis.sube(combinacion)
        return t

    # What is heard.

    def oye_palabras(self, desde=None, hasta=None):
        """Sounds heard between two clocks, in order. A stretch that is cut by a limit counts."""
        return sonido.palabras(*self.escritorio.grabadora.muestras(desde, hasta))

    def numeros(self, desde=None, hasta=None):
        """Words heard, a word that a gap has cut counting once: on a busy machine sound runs dry for moments, and what it
        leaves of a tone may be too short to have a number."""
        cortadas = [p for p in self.oye_palabras(desde, hasta) if p.k is not None or p.fin - p.inicio > 0.025]
        return [p.k for i, p in enumerate(cortadas) if i == 0 or p.k is None or p.k != cortadas[i - 1].k]

    def espera_palabra(self, k, limite=20.0, desde=None):
        """Waits until the tone k has been sounding for a moment; returns when it began."""
        desde = time.monotonic() - 0.05 if desde is None else desde

        def oida():
            ahora = time.monotonic()
            for p in self.oye_palabras(max(desde, ahora - 1.5)):
                if p.k == k and p.fin - p.inicio > 0.03:
                    return p
            return None
        return espera(oida, limite, que=f'the word {k}').inicio

    def espera_sonido(self, limite=10.0, desde=None):
        """Waits for any sound after `desde` (default: now); returns the clock of its first sample."""
        desde = time.monotonic() if desde is None else desde
        p = espera(lambda: self.oye_palabras(desde), limite, que='a sound')
        return p[0].inicio

    def espera_silencio(self, segundos=0.8, limite=60.0):
        """Waits until nothing has been heard for so long; returns the clock of the last sound's end."""
        def callado():
            ahora = self.escritorio.grabadora.hasta()
            oidas = self.oye_palabras(ahora - segundos)
            return None if oidas else ahora - segundos
        espera(callado, limite, paso=0.05, que='silence')
        oidas = self.oye_palabras()
        return oidas[-1].fin if oidas else None

    def silencio_desde(self, t, hasta, cerca=0.0):
        """Seconds from `t` to the last sample heard before `hasta`; None when it was silent already at t, or 0 when the
        sound had ended less than `cerca` before."""
        oidas = self.oye_palabras(t - 0.3, hasta)
        if not oidas or oidas[-1].fin <= t - cerca:
            return None
        return max(0.0, oidas[-1].fin - t)

    def calla(self, segundos):
        """Fails if anything is heard for so long from now."""
        t = time.monotonic()
        oidas = self.oye_palabras(t, t + segundos)
        assert not oidas, f'heard {[p.k for p in oidas]} where silence was wanted'

    def sonidos(self, nombre, desde=None, hasta=None):
        """Clocks at which the notice sound of that name was heard."""
        rutas = glob.glob(os.path.join(RAIZ, 'resources', '**', nombre + '.wav'), recursive=True) + \
            glob.glob(os.path.join(OBRA, '**', nombre + '.wav'), recursive=True)
        if not rutas:
            raise AssertionError(f'no file of the sound {nombre}')
        x, t0 = self.escritorio.grabadora.muestras(desde, hasta)
        return [t0 + i / sonido.RITMO for i in sonido.apariciones(x, sonido.lee_wav(rutas[0]))]

    # The end.

    def termina_lector(self, limite=5.0):
        """SIGTERM; returns the exit status. Fails if a worker outlives the reader."""
        pids = self.motores()
        self.lector.send_signal(signal.SIGTERM)
        estado = self.lector.wait(limite)
        espera(lambda: not any(vivo(p) for p in pids), 2, que='the workers to end')
        return estado


def texto_tonos(primero, cuantos):
    """A text whose words the tone engine plays as tones: "n5 n6 n7"."""
    return ' '.join(f'n{k}' for k in range(primero, primero + cuantos))


def percentil(valores, p):
    orden = sorted(valores)
    return orden[min(len(orden) - 1, int(round(p / 100 * (len(orden) - 1))))]


def en_orden(oidas, esperadas):
    """All and only the words wanted, in order, each once (a word split by a pause counts once)."""
    juntas = [k for i, k in enumerate(oidas) if i == 0 or oidas[i - 1] != k]
    assert juntas == list(esperadas), f'heard {juntas}, wanted {list(esperadas)}'
