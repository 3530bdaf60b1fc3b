"""The whole of a first afternoon with the reader, by keyboard alone: another voice, another key, typed text, a word of
one's own; each change judged by what is heard after it."""
import os

import numpy

from arnes import sonido
from arnes.banco import en_orden
from arnes.procesos import espera
from casos.accesible import Lectora, _pagina, _ve_a
from casos.opciones import FRESCA, TITULO
from casos.teclado import _teclea, _terminal

CASOS = {}

# A maker of two voices that say each word that holds a number as a tone, one voice three octaves above the other. What
# has no number is tone 50. A word lasts 160 ms and a gap of 40 ms at 170 words a minute.
_PROGRAMA = '''#!/usr/bin/python3
import math, re, struct, sys
sube, ritmo = int(sys.argv[1]), float(sys.argv[2])
datos = b''
for palabra in sys.stdin.buffer.read().decode().split():
    k = re.search('[0-9]+', palabra)
    f = 300 + 30 * ((int(k[0]) if k else 50) + sube)
    suena, calla = int(22050 * 0.16 * 170 / ritmo), int(22050 * 0.04 * 170 / ritmo)
    datos += struct.pack(f'<{suena}h', *(int(9000 * math.sin(6.2831853 * f * i / 22050)) for i in range(suena)))
    datos += bytes(2 * calla)
sys.stdout.buffer.write(b'RIFF' + struct.pack('<I', 36 + len(datos)) + b'WAVEfmt '
                        + struct.pack('<IHHIIHH', 16, 1, 1, 22050, 44100, 2, 16) + b'data'
                        + struct.pack('<I', len(datos)) + datos)
'''
_MOTOR = '''[motor]
fabricante = Prueba
programa = {programa}
argumentos = {{voz}} {{ritmo}}
ritmo = palabras
ritmo-minimo = 0.3
ritmo-maximo = 3
plazo-primera-ms = 10000
plazo-ms = 10000

[voz 0]
nombre = Ana
lengua = 40A;C0A

[voz 100]
nombre = Berta
lengua = 40A;C0A
'''
_SUBE = 100
_SIN_NUMERO = 50 + _SUBE


def caso(f):
    CASOS[f.__name__] = f
    return f


def _instala_voces(b):
    carpeta = os.path.join(b.escritorio.entorno['XDG_DATA_HOME'], 'ondalis', 'motores')
    os.makedirs(carpeta)
    programa = os.path.join(b.escritorio.carpeta, 'tonos')
    with open(programa, 'w', encoding='utf-8') as f:
        f.write(_PROGRAMA)
    os.chmod(programa, 0o755)
    with open(os.path.join(carpeta, 'prueba.motor'), 'w', encoding='utf-8') as f:
        f.write(_MOTOR.format(programa=programa))


def _pulsa(b, *teclas):
    """Each key once the one before has been obeyed."""
    for tecla in teclas:
        b.oyente.pulsa(b.tecla, tecla)


def _abre(b):
    b.tecla('super+ctrl+F1')  # the keymap keeps Ctrl+Alt+F1 for a terminal
    b.oyente.espera_activa(TITULO)


def _acepta(b):
    _ve_a(b, {'Aceptar'})
    b.tecla('Return')
    espera(lambda: TITULO not in b.titulos(), 20, que='the end of the configuration')


def _altura(x):
    """Median pitch of a speech in Hz, by autocorrelation of its voiced parts between 60 and 400 Hz."""
    ancho, alturas = int(0.05 * sonido.RITMO), []
    corto, largo = int(sonido.RITMO / 400), int(sonido.RITMO / 60)
    for i in range(0, len(x) - ancho, ancho // 2):
        y = x[i:i + ancho] - x[i:i + ancho].mean()
        if numpy.sqrt((y * y).mean()) < 500:
            continue
        c = numpy.correlate(y, y, 'full')[ancho - 1:]
        donde = corto + int(numpy.argmax(c[corto:largo]))
        if c[donde] > 0.5 * c[0]:
            alturas.append(sonido.RITMO / donde)
    return float(numpy.median(alturas)) if alturas else None


def _oye_tonos(b, desde, *numeros):
    """Berta says just that."""
    b.espera_palabra(numeros[-1] + _SUBE, 20, desde=desde)
    b.espera_silencio(1.0, 20)
    en_orden(b.numeros(desde), [n + _SUBE for n in numeros])


def _ajusta_voz_tecla_y_teclado(b):
    _abre(b)
    _pagina(b, 'Voces')
    _ve_a(b, {'Fabricante'})
    _pulsa(b, 'p')  # "Prueba"
    _ve_a(b, {'Nombre'})
    _pulsa(b, 'b')  # "Berta"
    _ve_a(b, {'Velocidad, valor'})
    _pulsa(b, 'ctrl+a', '1', '5')  # of 20; 10 is the voice's own, and 5 more are 1.7 times as fast
    _pagina(b, 'Tipo lectura')
    _ve_a(b, {'Leer el texto tecleado en cualquier aplicación'})
    _pulsa(b, 'space')
    _pagina(b, 'Teclas rápidas')
    _ve_a(b, {'Tecla de Repetir última lectura'})
    _pulsa(b, '8')
    _acepta(b)
    assert (b.ajuste('Voz', 'FabricanteActivo'), b.ajuste('Voz', 'VozActiva')) == ('Prueba', 'Berta')
    assert (b.ajuste('Teclas', 'ModRepetir'), b.ajuste('Teclas', 'AsciiRepetir')) == ('0', '56')


@caso
def voz_tecla_teclado_y_diccionario_se_ponen_a_punto_con_el_teclado_y_se_oyen():
    with Lectora(FRESCA, motor='real', arranca=False) as b:
        _instala_voces(b)
        b.arranca_lector()
        # The voice that a new user has: speech, no tones.
        t = b.copia('n3 gato n9 n10 n11 n12')
        b.espera_sonido(20, desde=t)
        fin = b.espera_silencio(1.0, 30)
        x, _ = b.escritorio.grabadora.muestras(t, fin)
        antes = _altura(x)
        assert antes and 60 < antes < 300, antes
        assert not [p for p in b.oye_palabras(t, fin) if p.k is not None and p.k >= _SUBE]

        _ajusta_voz_tecla_y_teclado(b)
        b.tecla('ctrl+3')  # nobody's any more
        b.calla(1.5)
        t = b.tecla('ctrl+8')
        _oye_tonos(b, t, 3, 50, 9, 10, 11, 12)
        oidas = [p.fin - p.inicio for p in b.oye_palabras(t) if p.k is not None]
        largo = float(numpy.median(oidas))
        print(f'speech of {antes:.0f} Hz before; then tones of {largo * 1000:.0f} ms from '
              f'{sonido.TONO_BASE + sonido.TONO_PASO * 103:.0f} Hz on')
        assert 0.07 < largo < 0.12, largo  # 160 ms at the voice's own speed

        _terminal(b)
        _teclea(b, 'n21 n22 n23')
        b.calla(0.5)
        t = b.tecla('Return')
        _oye_tonos(b, t, 21, 22, 23)

        _abre(b)
        _pagina(b, 'Diccionario')
        _ve_a(b, {'Texto'})
        _pulsa(b, *'gato')
        _pulsa(b, 'Tab', 'n', '7', 'space', 'n', '8', 'Return')
        _acepta(b)
        t = b.copia('n4 gato n9 n13 n14')
        _oye_tonos(b, t, 4, 7, 8, 9, 13, 14)
        b.sigue_vivo()
