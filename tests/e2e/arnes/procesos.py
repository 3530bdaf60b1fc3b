"""Processes of a test run: each is started by us, dies with us, and is ended by us alone."""
import ctypes
import os
import signal
import subprocess
import time

_libc = ctypes.CDLL(None)
_PR_SET_PDEATHSIG = 1


def _muere_con_el_padre():
    _libc.prctl(_PR_SET_PDEATHSIG, signal.SIGKILL)


class Saltado(Exception):
    """A scenario that this machine can't run; the text says why."""


def espera(condicion, limite=15.0, paso=0.01, que='a condition'):
    """Asks `condicion` until it gives something true, and returns that; fails after `limite` seconds."""
    fin = time.monotonic() + limite
    while True:
        valor = condicion()
        if valor:
            return valor
        if time.monotonic() > fin:
            raise AssertionError(f'waited {limite} s in vain for {que}')
        time.sleep(paso)


def vivo(pid):
    """A process that exists and isn't a zombie."""
    try:
        with open(f'/proc/{pid}/stat', encoding='utf-8', errors='replace') as f:
            return f.read().rpartition(')')[2].split()[0] not in 'ZX'
    except OSError:
        return False


def hijos(pid):
    """Process ids of the living children of `pid`."""
    dados = []
    for nombre in os.listdir('/proc'):
        if not nombre.isdigit():
            continue
        try:
            with open(f'/proc/{nombre}/stat', encoding='utf-8', errors='replace') as f:
                campos = f.read().rpartition(')')[2].split()
        except OSError:
            continue
        if campos[0] not in 'ZX' and int(campos[1]) == pid:
            dados.append(int(nombre))
    return sorted(dados)


class Procesos:
    """The processes that one test has started, ended in reverse order."""

    def __init__(self, entorno, carpeta):
        self.entorno = entorno
        self._carpeta = carpeta
        self._todos = []

    def arranca(self, orden, nombre=None, entorno=None, **mas):
        nombre = nombre or os.path.basename(orden[0])
        mas.setdefault('stdin', subprocess.DEVNULL)
        if 'stdout' not in mas or 'stderr' not in mas:
            with open(os.path.join(self._carpeta, nombre + '.txt'), 'ab') as diario:
                mas.setdefault('stdout', diario)
                mas.setdefault('stderr', diario)
                p = subprocess.Popen(orden, env=entorno or self.entorno, preexec_fn=_muere_con_el_padre, **mas)
        else:
            p = subprocess.Popen(orden, env=entorno or self.entorno, preexec_fn=_muere_con_el_padre, **mas)
        self._todos.append(p)
        return p

    def corre(self, orden, entrada=None, limite=20, comprueba=True):
        """Runs a program to its end and returns its standard output."""
        r = subprocess.run(orden, env=self.entorno, input=entrada, stdout=subprocess.PIPE, stderr=subprocess.PIPE,
                           timeout=limite, preexec_fn=_muere_con_el_padre,
                           **({} if entrada is not None else {'stdin': subprocess.DEVNULL}))
        if comprueba and r.returncode != 0:
            raise AssertionError(f'{orden[0]} ended with {r.returncode}: {r.stderr.decode(errors="replace")}')
        return r.stdout

    @staticmethod
    def termina(p, limite=3.0):
        """Ends one of our processes, by force if it doesn't listen; harmless when it has ended."""
        if p.poll() is None:
            p.send_signal(signal.SIGCONT)
            p.terminate()
            try:
                p.wait(limite)
            except subprocess.TimeoutExpired:
                p.kill()
                p.wait(limite)

    def termina_todos(self, limite=3.0):
        for p in reversed(self._todos):
            self.termina(p, limite)
            for tubo in (p.stdout, p.stderr, p.stdin):
                if tubo:
                    tubo.close()
        self._todos.clear()
