"""The harness against itself: what it would report of the reader, it must first report of a sound and a key of its own."""
import contextlib
import importlib.machinery
import importlib.util
import io
import os
import sys
import time
import unittest.mock

import numpy as np

from arnes import saneador, sonido
from arnes.banco import OBRA, Banco, en_orden, percentil
from arnes.escritorio import Escritorio
from arnes.procesos import Saltado, espera

CASOS = {}


def caso(f):
    CASOS[f.__name__] = f
    return f


def _toca(b, x, nombre='propio', latencia=200):
    ruta = os.path.join(b.escritorio.carpeta, nombre + '.raw')
    with open(ruta, 'wb') as f:
        f.write(x.astype('<i2').tobytes())
    return b.escritorio.procesos.arranca(
        ['pacat', '--playback', '--raw', '--format=s16le', f'--rate={sonido.RITMO}', '--channels=1',
         f'--latency-msec={latencia}', ruta])


def _palabra(k):
    return np.concatenate((sonido.tono(k, 0.16), np.zeros(int(0.04 * sonido.RITMO))))


@caso
def arnes_oye_cada_tono_en_su_orden_y_a_su_tiempo():
    numeros = [0, 1, 2, 199, 198, 100, 7, 0, 150, 60, 61, 62]
    with Banco(arranca=False) as b:
        t = time.monotonic()
        _toca(b, np.concatenate([_palabra(k) for k in numeros]))
        b.espera_sonido(desde=t)
        b.espera_silencio(0.5)
        oidas = b.oye_palabras(t)
        en_orden([p.k for p in oidas], numeros)
        pasos = np.diff([p.inicio for p in oidas])
        assert np.all(np.abs(pasos - 0.2) < 0.004), f'words {pasos} s apart'
        assert oidas[0].inicio - t < 1, 'heard later than played'


@caso
def arnes_no_toma_ruido_ni_acorde_por_una_palabra():
    azar = np.random.default_rng(1)
    acorde = sonido.tono(20, 0.16, 6000) + sonido.tono(70, 0.16, 6000)
    ruido = azar.normal(0, 4000, len(acorde))
    hueco = np.zeros(sonido.RITMO // 10)
    with Banco(arranca=False) as b:
        t = time.monotonic()
        _toca(b, np.concatenate((acorde, hueco, ruido, hueco, sonido.tono(5, 0.16))))
        b.espera_sonido(desde=t)
        b.espera_silencio(0.5)
        assert b.numeros(t) == [None, None, 5], b.numeros(t)


@caso
def arnes_separa_dos_tonos_sin_hueco():
    with Banco(arranca=False) as b:
        t = time.monotonic()
        _toca(b, np.concatenate((sonido.tono(78, 0.07), sonido.tono(79, 0.16), np.zeros(900), sonido.tono(3, 0.16))))
        b.espera_sonido(desde=t)
        b.espera_silencio(0.5)
        assert b.numeros(t) == [78, 79, 3], b.numeros(t)


@caso
def arnes_cuenta_un_sonido_de_aviso_tambien_sobre_la_voz():
    azar = np.random.default_rng(2)
    aviso = azar.normal(0, 6000, 2500)
    pista = np.concatenate([_palabra(k) for k in range(10)]) * 0.2
    for inicio in (3000, 20000):
        pista[inicio:inicio + len(aviso)] += aviso
    with Banco(arranca=False) as b:
        t = time.monotonic()
        _toca(b, pista)
        b.espera_sonido(desde=t)
        b.espera_silencio(0.5)
        x, _ = b.escritorio.grabadora.muestras(t)
        donde = sonido.apariciones(x, aviso)
        assert len(donde) == 2, donde
        assert abs(donde[1] - donde[0] - 17000) < 3, donde
        assert not sonido.apariciones(x, azar.normal(0, 6000, 2500)), 'found what was never played'


@caso
def arnes_mide_el_silencio_tras_el_fin_de_un_programa():
    """A player killed in mid-tone falls silent at once: what the harness measures then is its own error."""
    medidas = []
    with Banco(arranca=False) as b:
        for i in range(20):
            p = _toca(b, sonido.tono(30 + i, 3.0), latencia=20)
            b.espera_palabra(30 + i)
            t = time.monotonic()
            p.kill()
            p.wait()
            m = b.silencio_desde(t, t + 0.4)
            if m is not None:  # with 20 ms ahead a busy machine may let the player run dry in that very moment
                medidas.append(m)
            if len(medidas) >= 10:
                break
    assert len(medidas) >= 10, medidas
    print(f'silence after a kill: median {percentil(medidas, 50) * 1000:.1f} ms, '
          f'95th percentile {percentil(medidas, 95) * 1000:.1f} ms')
    assert percentil(medidas, 95) < 0.03, medidas


@caso
def arnes_inyecta_teclas_que_otro_programa_recibe_y_copia_textos():
    from arnes.equis import Equis
    with Banco(arranca=False) as b:
        otro = Equis(b.escritorio.entorno['DISPLAY'])
        otro.acapara('ctrl+1')
        b.tecla('ctrl+1')
        b.tecla('ctrl+2')
        espera(lambda: otro.pulsaciones_acaparadas() == 1, 2, que='one press of the combination held')
        otro.suelta('ctrl+1')
        b.tecla('ctrl+1')
        time.sleep(0.05)
        assert otro.pulsaciones_acaparadas() == 0
        otro.acapara('ctrl+4')
        b.mantiene('ctrl+4', 1.5)
        assert otro.pulsaciones_acaparadas() > 5, 'the server does not repeat a key held'
        otro.cierra()
        b.copia('Una frase con eñe')
        leido = b.escritorio.procesos.corre(['xclip', '-o', '-selection', 'clipboard', '-t', 'UTF8_STRING'])
        assert leido.decode() == 'Una frase con eñe', leido
        b.copia('Otra')
        assert b.escritorio.procesos.corre(['xclip', '-o', '-selection', 'clipboard']) == b'Otra'


@caso
def arnes_sobrevive_a_la_muerte_del_servidor_de_sonido():
    with Banco(arranca=False) as b:
        b.escritorio.mata_sonido()
        espera(lambda: not b.escritorio.grabadora.viva(), 3, que='the recorder to end')
        b.escritorio.arranca_sonido()
        t = time.monotonic()
        _toca(b, _palabra(42))
        b.espera_sonido(desde=t)
        b.espera_silencio(0.3)
        assert b.numeros(t) == [42]


def _informes_de(*faltas):
    """What the harness makes of programs with those faults, run with the settings that belong to the build folder."""
    salida = io.StringIO()
    error = None
    with unittest.mock.patch.dict(os.environ, saneador.opciones('build-asan')), contextlib.redirect_stdout(salida):
        try:
            with Escritorio() as e:
                for falta in faltas:
                    e.procesos.arranca([os.path.join(OBRA, 'tests', 'falta-plantada'), falta], falta).wait(30)
        except AssertionError as fallo:
            error = str(fallo)
    return error, salida.getvalue()


@caso
def lo_que_un_saneador_dice_de_cualquier_proceso_es_un_fallo():
    error, informes = _informes_de('memoria', 'cuenta', 'fuga')
    assert error == 'a sanitizer has reported', error
    # The last two are only in the reports themselves, not in their summaries.
    for dicho in ('heap-buffer-overflow', 'signed integer overflow', '4 byte(s) leaked', 'allocated by thread',
                  'detected memory leaks'):
        assert dicho in informes, informes
    assert _informes_de('ninguna') == (None, '')


@caso
def cada_carpeta_con_saneador_tiene_sus_ajustes_y_la_corriente_ninguno():
    assert set(saneador.opciones('/algo/build-asan/')) == {'ASAN_OPTIONS', 'LSAN_OPTIONS', 'UBSAN_OPTIONS'}
    assert set(saneador.opciones('build-tsan')) == {'TSAN_OPTIONS'}
    assert saneador.opciones('build') == {}


@caso
def un_escenario_que_esta_maquina_no_puede_correr_dice_skip_y_no_bien():
    ruta = os.path.join(os.path.dirname(os.path.dirname(os.path.abspath(__file__))), 'ejecuta')
    cargador = importlib.machinery.SourceFileLoader('ejecuta', ruta)
    ejecuta = importlib.util.module_from_spec(importlib.util.spec_from_loader('ejecuta', cargador))
    cargador.exec_module(ejecuta)

    def salta():
        raise Saltado('no panel here')
    ejecuta.casos = lambda: {'uno': ('g', salta), 'otro': ('g', lambda: None), 'roto': ('g', lambda: 1 // 0)}
    for argumentos, estado, dicho in ((['uno'], 77, ['SKIP  uno: no panel here']), (['otro'], 0, ['bien  otro']),
                                      (['uno', 'otro'], 0, ['SKIP  uno', 'bien  otro']),
                                      (['uno', 'roto'], 1, ['SKIP  uno', 'MAL   roto'])):
        salida = io.StringIO()
        with contextlib.redirect_stdout(salida), unittest.mock.patch.object(sys, 'argv', ['ejecuta', *argumentos]):
            assert ejecuta.main() == estado, argumentos
        for linea in dicho:
            assert linea in salida.getvalue(), salida.getvalue()
        assert 'bien  uno' not in salida.getvalue()
