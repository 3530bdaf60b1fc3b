"""What is heard: a recorder of the sink's monitor whose samples carry our clock, and the ear that judges them.

The test sink renders the block [t, t+b) when the clock reaches t, and its monitor gives it at once: the first sample of a
block is heard when the block arrives, the last one a block later. So (arrival of a block) - (its first sample)/rate is the
clock of sample 0, but for what delivery and our reading add, and for blocks that a sink which has been late renders ahead.
The lower quartile over all blocks sees neither; what error is left makes sounds later than they were, never earlier. The
sink's clock is the system's, which doesn't drift against ours.
"""
import os
import subprocess
import threading
import time
import wave
from dataclasses import dataclass

import numpy as np

RITMO = 22050      # samples a second of the test sink
UMBRAL = 100       # samples above it are sound; the null sink gives exact zeros otherwise
TONO_BASE, TONO_PASO, TONOS = 300.0, 30.0, 200


class Grabadora:
    def __init__(self, procesos):
        # 10 ms: the sink then renders in blocks of that length.
        self._p = procesos.arranca(
            ['parec', '-d', 'nul.monitor', '--raw', '--format=s16le', f'--rate={RITMO}', '--channels=1',
             '--latency-msec=10', '--client-name=oido'], stdout=subprocess.PIPE)
        self._datos = bytearray()
        self._cerrojo = threading.Lock()
        self._ceros = []   # what each block says of the clock of sample 0
        self._llegada = 0.0
        self._cero = None  # what they say together
        self._hilo = threading.Thread(target=self._lee, daemon=True)
        self._hilo.start()

    def _lee(self):
        fd = self._p.stdout.fileno()
        while True:
            trozo = os.read(fd, 65536)
            llegada = time.monotonic()
            if not trozo:
                return
            with self._cerrojo:
                # A pipe may cut a block in two: what comes together belongs together.
                if llegada - self._llegada > 0.002:
                    self._ceros.append(llegada - (len(self._datos) // 2) / RITMO)
                    if len(self._ceros) < 100 or len(self._ceros) % 50 == 0:
                        self._cero = float(np.percentile(self._ceros, 25))
                self._llegada = llegada
                self._datos += trozo

    def viva(self):
        return self._p.poll() is None

    def empezada(self):
        with self._cerrojo:
            return self._cero is not None

    def hasta(self):
        """Clock of the end of what has been recorded."""
        with self._cerrojo:
            return None if self._cero is None else self._cero + (len(self._datos) // 2) / RITMO

    def muestras(self, desde=None, hasta=None):
        """(samples as float, clock of the first) between two clocks; waits until `hasta` has been recorded."""
        if hasta is not None:
            limite = time.monotonic() + max(0.0, hasta - time.monotonic()) + 5
            while self.hasta() is None or self.hasta() < hasta:
                if time.monotonic() > limite or not self.viva():
                    raise AssertionError('the recorder has stopped')
                time.sleep(0.005)
        with self._cerrojo:
            n = len(self._datos) // 2
            a = 0 if desde is None else min(n, max(0, int((desde - self._cero) * RITMO)))
            b = n if hasta is None else min(n, max(a, int((hasta - self._cero) * RITMO)))
            x = np.frombuffer(bytes(self._datos[2 * a:2 * b]), dtype='<i2').astype(np.float64)
            return x, self._cero + a / RITMO

    def guarda(self, ruta, desde=None):
        x, _ = self.muestras(desde)
        with wave.open(ruta, 'wb') as w:
            w.setnchannels(1)
            w.setsampwidth(2)
            w.setframerate(RITMO)
            w.writeframes(x.astype('<i2').tobytes())


@dataclass
class Palabra:
    k: int         # number heard; None for a sound that isn't one of the tones
    inicio: float  # clock
    fin: float


def tramos_sonoros(x, hueco=0.012):
    """Index pairs of the stretches of sound; shorter gaps than `hueco` seconds belong to the sound."""
    fuertes = np.flatnonzero(np.abs(x) > UMBRAL)
    if fuertes.size == 0:
        return []
    cortes = np.flatnonzero(np.diff(fuertes) > hueco * RITMO)
    inicios = np.concatenate(([fuertes[0]], fuertes[cortes + 1]))
    fines = np.concatenate((fuertes[cortes], [fuertes[-1]])) + 1
    return list(zip(inicios.tolist(), fines.tolist()))


def numero_de_tono(x):
    """Which tone fills the stretch, or None: most of its energy must lie at that frequency."""
    if len(x) < 0.012 * RITMO:
        return None
    n = 1 << 15
    espectro = np.abs(np.fft.rfft(x * np.hanning(len(x)), n)) ** 2
    i = int(np.argmax(espectro[1:])) + 1
    ancho = int(np.ceil(2.5 * n / len(x)))  # the main lobe of the window
    if espectro[max(0, i - ancho):i + ancho + 1].sum() < 0.97 * espectro.sum():
        return None
    k = round((i * RITMO / n - TONO_BASE) / TONO_PASO)
    return k if 0 <= k < TONOS else None


def _partes(x, ventana=0.025, paso=0.005):
    """Splits a stretch in which one tone follows another without a gap: (number, start, end) of each tone that lasts.
    Nothing when it is no row of tones at all."""
    ancho, salto = int(ventana * RITMO), int(paso * RITMO)
    numeros = [numero_de_tono(x[i:i + ancho]) for i in range(0, max(1, len(x) - ancho), salto)]
    partes = []
    for i, k in enumerate(numeros):
        if k is None:
            continue
        a, b = i * salto, min(len(x), i * salto + ancho)
        if partes and partes[-1][0] == k and a <= partes[-1][2]:
            partes[-1] = (k, partes[-1][1], b)
        else:
            partes.append((k, a, b))
    return [p for p in partes if p[2] - p[1] > 1.4 * ancho]


def palabras(x, t0):
    oidas = []
    for a, b in tramos_sonoros(x):
        k = numero_de_tono(x[a:b])
        partes = [(k, 0, b - a)] if k is not None else _partes(x[a:b]) or [(None, 0, b - a)]
        oidas += [Palabra(k, t0 + (a + i) / RITMO, t0 + (a + j) / RITMO) for k, i, j in partes]
    return oidas


def lee_wav(ruta):
    with wave.open(ruta, 'rb') as w:
        if (w.getnchannels(), w.getsampwidth(), w.getframerate()) != (1, 2, RITMO):
            raise AssertionError(f'{ruta}: not mono, 16 bits, {RITMO} Hz')
        return np.frombuffer(w.readframes(w.getnframes()), dtype='<i2').astype(np.float64)


def apariciones(x, muestra, parecido=0.8):
    """Indices where the sample `muestra` sounds in x, by normalised cross-correlation."""
    if len(x) < len(muestra):
        return []
    n = 1 << int(np.ceil(np.log2(len(x) + len(muestra))))
    corr = np.fft.irfft(np.fft.rfft(x, n) * np.conj(np.fft.rfft(muestra, n)), n)[:len(x) - len(muestra) + 1]
    energia = np.concatenate(([0.0], np.cumsum(x * x)))
    energia = energia[len(muestra):] - energia[:-len(muestra)]
    norma = corr / np.sqrt(np.maximum(energia, 1.0) * np.sum(muestra * muestra))
    halladas = []
    for i in np.argsort(norma)[::-1]:
        if norma[i] < parecido:
            break
        # A shifted copy of a steady sound resembles itself: two that are heard are a whole length apart.
        if all(abs(int(i) - j) > 0.9 * len(muestra) for j in halladas):
            halladas.append(int(i))
    return sorted(halladas)


def nivel_db(x):
    """Level of the sounding part, in decibels below full scale."""
    fuerte = x[np.abs(x) > UMBRAL]
    return -np.inf if fuerte.size == 0 else 20 * np.log10(np.sqrt(np.mean(fuerte ** 2)) / 32768)


def tono(k, segundos, amplitud=10000):
    t = np.arange(int(segundos * RITMO)) / RITMO
    return amplitud * np.sin(2 * np.pi * (TONO_BASE + TONO_PASO * k) * t)
