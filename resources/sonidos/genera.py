#!/usr/bin/env python3
"""Synthesises the eight notice sounds: 22050 Hz, 16 bits, mono, each of its exact size in bytes.

Every sound is a row of notes struck like a small bell: a fundamental with two quiet overtones under a quick attack
and an exponential decay, faded to zero at the end of the file. The peak is -12 dBFS, so that speech isn't drowned.
"""
import math
import os
import struct

HZ = 22050
CABECERA = 44
PICO = 10 ** (-12 / 20)

# Name, file size, notes: (start in s, frequency in Hz, decay constant in s, relative level).
SONIDOS = [
    # Rising triad: the reader is there.
    ("ACTIVAR", 12108, [(0.000, 523.25, 0.09, 0.8), (0.075, 659.26, 0.09, 0.9), (0.150, 783.99, 0.10, 1.0)]),
    # The same triad falling, slower: it goes.
    ("DESACTIVAR", 22120, [(0.000, 783.99, 0.11, 0.9), (0.130, 659.26, 0.11, 0.9), (0.260, 523.25, 0.14, 1.0)]),
    # Two low strokes.
    ("ERROR", 6500, [(0.000, 196.00, 0.05, 1.0), (0.073, 185.00, 0.05, 1.0)]),
    # One short tick of a clear pitch: a step of the speed.
    ("VOLUMEN", 2394, [(0.000, 880.00, 0.020, 1.0)]),
    # A falling fourth: the end of a reading.
    ("DETENER", 5212, [(0.000, 587.33, 0.040, 0.9), (0.050, 440.00, 0.045, 1.0)]),
    # The same pitch twice: hold.
    ("PAUSA", 5824, [(0.000, 698.46, 0.035, 1.0), (0.066, 698.46, 0.040, 0.9)]),
    # Down and up again: once more.
    ("REPETIRLECTURA", 10696, [(0.000, 659.26, 0.06, 0.9), (0.075, 493.88, 0.06, 0.9), (0.150, 659.26, 0.07, 1.0)]),
    # A click of a few milliseconds: it may come many times in a row.
    ("AVANZARRETROCEDER", 424, [(0.000, 1174.66, 0.0035, 1.0)]),
]
ARMONICOS = [(1, 1.0), (2, 0.22), (3, 0.08)]


def sintetiza(muestras, notas):
    senal = [0.0] * muestras
    ataque = min(0.004, muestras / HZ / 8)
    for inicio, frecuencia, caida, nivel in notas:
        primera = round(inicio * HZ)
        for i in range(primera, muestras):
            t = (i - primera) / HZ
            envolvente = min(1.0, t / ataque) * math.exp(-t / caida)
            onda = sum(a * math.sin(2 * math.pi * frecuencia * k * t) for k, a in ARMONICOS)
            senal[i] += nivel * envolvente * onda
    cola = min(muestras // 4, round(0.012 * HZ))
    for i in range(cola):
        senal[muestras - 1 - i] *= i / cola
    pico = max(abs(x) for x in senal)
    return [round(x / pico * PICO * 32767) for x in senal]


def graba(ruta, senal):
    datos = struct.pack("<%dh" % len(senal), *senal)
    cabecera = struct.pack("<4sI4s4sIHHIIHH4sI", b"RIFF", 36 + len(datos), b"WAVE", b"fmt ", 16, 1, 1, HZ, HZ * 2, 2,
                           16, b"data", len(datos))
    with open(ruta, "wb") as fichero:
        fichero.write(cabecera + datos)


def main():
    carpeta = os.path.dirname(os.path.abspath(__file__))
    for nombre, tamano, notas in SONIDOS:
        ruta = os.path.join(carpeta, nombre + ".wav")
        graba(ruta, sintetiza((tamano - CABECERA) // 2, notas))
        assert os.path.getsize(ruta) == tamano, nombre


if __name__ == "__main__":
    main()
