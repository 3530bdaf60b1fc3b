#!/usr/bin/python3
"""The reader as its user meets it, measured on a virtual desktop; beside espeak-ng and spd-say where the work is the same.

Prints median and 95th percentile of each. Runs after `make build`; takes about two minutes.
"""
import os
import signal
import subprocess
import sys
import time

AQUI = os.path.dirname(os.path.abspath(__file__))
sys.path.insert(0, os.path.join(AQUI, '..', 'tests', 'e2e'))
from arnes.banco import Banco, percentil, texto_tonos  # noqa: E402
from arnes.procesos import espera, hijos  # noqa: E402

FRASE = 'Una frase que se oye para saber cuánto tarda en empezar y cuánto en callar cuando se le pide.'
LARGA = ' '.join([FRASE] * 6)


def renglon(nombre, medidas, unidad='ms', factor=1000.0, meta=''):
    print(f'{nombre:<58} median {percentil(medidas, 50) * factor:8.1f}  p95 {percentil(medidas, 95) * factor:8.1f} {unidad}'
          f'  n={len(medidas)}' + (f'  (goal {meta})' if meta else ''), flush=True)


def una_cifra(nombre, valor, unidad, meta=''):
    print(f'{nombre:<58} {valor:10.2f} {unidad}' + (f'  (goal {meta})' if meta else ''), flush=True)


def arranque():
    medidas = []
    with Banco('real', arranca=False) as b:
        for _ in range(10):
            b.arranca_lector()
            medidas.append(b.listo_en)
            b.termina_lector()
    renglon('ondalis: start to ready', medidas, meta='300')


def copia_a_sonido():
    """The clipboard is looked at every 400 ms: a copy waits up to that long; a repeat shows the road without it."""
    copia, repite = [], []
    with Banco('real') as b:
        for i in range(16):
            t = b.copia(f'{FRASE} Número {i}.')
            copia.append(b.espera_sonido(5, desde=t) - t)
            b.tecla('ctrl+2')
            b.espera_silencio(0.5)
            time.sleep(0.037 * (i % 8))
            t = b.tecla('ctrl+3')
            repite.append(b.espera_sonido(5, desde=t) - t)
            b.tecla('ctrl+2')
            b.espera_silencio(0.5)
    renglon('ondalis: copy to first sample at the sink', copia)
    renglon('ondalis: repeat key to first sample at the sink', repite, meta='30')


def tecla_a_silencio():
    pausa, para = [], []
    with Banco('tono') as b:
        b.copia(texto_tonos(0, 200))
        b.espera_palabra(2)
        for i in range(60):
            t = time.monotonic()
            b.espera_sonido(3, desde=t)
            time.sleep(0.25 + 0.013 * (i % 7))
            tecla, lista = (('ctrl+1', pausa), ('ctrl+2', para))[i % 2]
            t = b.tecla(tecla)
            m = b.silencio_desde(t, t + 0.3)
            if m is not None:
                lista.append(m)
            b.tecla('ctrl+1' if tecla == 'ctrl+1' else 'ctrl+3')
    renglon('ondalis: pause key to silence', pausa, meta='15, p95 30')
    renglon('ondalis: stop key to silence', para, meta='15, p95 30')


def _proporcional(pid):
    with open(f'/proc/{pid}/smaps_rollup', encoding='utf-8') as f:
        for linea in f:
            if linea.startswith('Pss:'):
                return int(linea.split()[1]) / 1024
    return 0.0


def _hilos(pids):
    for pid in pids:
        for hilo in os.listdir(f'/proc/{pid}/task'):
            yield pid, hilo


def _despertares(pids):
    total = 0
    for pid, hilo in _hilos(pids):
        with open(f'/proc/{pid}/task/{hilo}/status', encoding='utf-8') as f:
            for linea in f:
                if linea.startswith('voluntary_ctxt_switches'):
                    total += int(linea.split()[1])
    return total


def _procesador(pids):
    total = 0
    for pid in pids:
        with open(f'/proc/{pid}/stat', encoding='utf-8') as f:
            campos = f.read().rpartition(')')[2].split()
        total += int(campos[11]) + int(campos[12])
    return total / os.sysconf('SC_CLK_TCK')


def reposo_y_lectura():
    with Banco('real') as b:
        t = b.copia(FRASE)
        b.espera_sonido(5, desde=t)
        b.espera_silencio(2.0)
        time.sleep(3)
        pids = [b.lector.pid, *hijos(b.lector.pid)]
        antes, cpu, t = _despertares(pids), _procesador(pids), time.monotonic()
        time.sleep(15)
        dura = time.monotonic() - t
        una_cifra('ondalis and worker: idle wake-ups', (_despertares(pids) - antes) / dura, 'a second', 'under 4')
        una_cifra('ondalis and worker: idle processor', 100 * (_procesador(pids) - cpu) / dura, '% of a core')
        una_cifra('ondalis and worker: idle proportional memory', sum(map(_proporcional, pids)), 'MB', 'under 40')
        t = b.copia(LARGA)
        b.espera_sonido(5, desde=t)
        pids = [b.lector.pid, *hijos(b.lector.pid)]
        cpu, t = _procesador(pids), time.monotonic()
        time.sleep(12)
        una_cifra('ondalis and worker: processor while reading',
                  100 * (_procesador(pids) - cpu) / (time.monotonic() - t), '% of a core')


def los_otros():
    """The same desktop, the same text: program called to first sample, and stop to silence."""
    with Banco(arranca=False) as b:
        primera, calla = [], []
        for _ in range(12):
            t = time.monotonic()
            p = b.escritorio.procesos.arranca(['espeak-ng', '-v', 'es', LARGA])
            primera.append(b.espera_sonido(5, desde=t) - t)
            time.sleep(0.4)
            t = time.monotonic()
            p.kill()
            p.wait()
            m = b.silencio_desde(t, t + 0.6, 0.02)
            if m is not None:
                calla.append(m)
            b.espera_silencio(0.3)
        renglon('espeak-ng: start to first sample at the sink', primera)
        renglon('espeak-ng: kill to silence', calla)

        socket = os.path.join(b.escritorio.entorno['XDG_RUNTIME_DIR'], 'habla.sock')
        b.escritorio.entorno['SPEECHD_ADDRESS'] = 'unix_socket:' + socket
        b.escritorio.procesos.arranca(['speech-dispatcher', '-s', '-c', 'unix_socket', '-S', socket, '-t', '0'])
        espera(lambda: os.path.exists(socket), 10, que='speech-dispatcher')
        primera, calla = [], []
        for i in range(12):
            t = time.monotonic()
            b.escritorio.procesos.arranca(['spd-say', '-o', 'espeak-ng', '-l', 'es', LARGA])
            oida = b.espera_sonido(10, desde=t) - t
            if i:  # the first one starts its module
                primera.append(oida)
            time.sleep(0.5)
            t = time.monotonic()
            b.escritorio.procesos.corre(['spd-say', '-S'])
            m = b.silencio_desde(t, t + 0.8)
            if m is not None and i:
                calla.append(m)
            b.espera_silencio(0.5)
        renglon('spd-say: start to first sample at the sink', primera)
        renglon('spd-say -S: start to silence', calla)


def main():
    partes = [arranque, copia_a_sonido, tecla_a_silencio, reposo_y_lectura, los_otros]
    elegidas = sys.argv[1:]
    fallos = 0
    for parte in partes:
        if elegidas and parte.__name__ not in elegidas:
            continue
        try:
            parte()
        except (AssertionError, OSError, subprocess.SubprocessError) as error:
            fallos += 1
            print(f'{parte.__name__}: FAILED: {error}', flush=True)
    return 1 if fallos else 0


if __name__ == '__main__':
    signal.signal(signal.SIGINT, signal.SIG_DFL)
    sys.exit(main())
