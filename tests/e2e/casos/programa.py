"""The program's life: ready, tray, end by signal, by menu, with the menu open."""
import re
import signal
import time

from arnes.banco import Banco, texto_tonos
from arnes.procesos import espera, vivo

CASOS = {}


def caso(f):
    CASOS[f.__name__] = f
    return f


@caso
def sigterm_en_plena_lectura_calla_y_termina_bien():
    with Banco() as b:
        b.copia(texto_tonos(0, 60))
        b.espera_palabra(5)
        t = time.monotonic()
        assert b.termina_lector() == 0
        m = b.silencio_desde(t, t + 1.0)
        assert m is None or m < 0.3, f'sound for {m:.3f} s after SIGTERM'


@caso
def sigterm_en_pausa_termina_sin_un_sonido():
    with Banco() as b:
        b.copia(texto_tonos(0, 60))
        b.espera_palabra(5)
        b.tecla('ctrl+1')
        time.sleep(0.4)
        t = time.monotonic()
        assert b.termina_lector() == 0
        assert not b.oye_palabras(t, t + 0.8)


@caso
def el_lector_matado_no_deja_huerfanos():
    with Banco() as b:
        b.copia(texto_tonos(0, 60))
        b.espera_palabra(3)
        pids = espera(b.motores, que='a worker')
        b.lector.kill()
        b.lector.wait()
        espera(lambda: not any(vivo(p) for p in pids), 3, que='the workers to end')
        b.arranca_lector()  # a crashed one leaves no lock
        t = b.copia(texto_tonos(70, 10))
        b.espera_sonido(5, desde=t)


def _icono(b):
    """Centre of the reader's icon in the tray, in pixels of the screen."""
    for linea in b.escritorio.arbol():
        # tint2 reparents the icon's window: its class is the reader's, its size the panel's.
        if 'ondalis' in linea.lower() and '"' in linea:
            medida = linea.split()[-2].split('+')[0], linea.split()[-1]
            ancho, alto = (int(v) for v in medida[0].split('x'))
            if 8 <= ancho <= 64 and 8 <= alto <= 64 and medida[1].count('+') == 2:
                _, x, y = medida[1].split('+')
                if int(y) > 700:
                    return int(x) + ancho // 2, int(y) + alto // 2
    return None


def _abre_menu(b):
    x, y = espera(lambda: _icono(b), 10, que='the icon in the tray')
    b.escritorio.equis.raton(x, y, 3)
    espera(lambda: _hay_menu(b), 5, que='the menu')
    time.sleep(0.3)


def _hay_menu(b):
    """Position and size (x, y, width, height) of a window of the program that isn't small and stands on the screen."""
    for linea in b.escritorio.arbol():
        if 'ondalis' in linea.lower() and '"' in linea:
            tamano, sitio = linea.split()[-2].split('+')[0], linea.split()[-1]
            ancho, alto = (int(v) for v in tamano.split('x'))
            if ancho > 100 and alto > 100 and b'IsViewable' in b.escritorio.procesos.corre(
                    ['xwininfo', '-id', linea.split()[0]], comprueba=False):
                x, y = (int(v) for v in re.findall(r'[+](-?\d+)', sitio))
                return x, y, ancho, alto
    return None


@caso
def salir_del_menu_termina_bien():
    with Banco() as b:
        b.copia(texto_tonos(0, 30))
        b.espera_palabra(3)
        _abre_menu(b)
        b.tecla('Up')  # from above the first entry to the last, "Salir"
        b.tecla('Return')
        assert b.lector.wait(5) == 0


@caso
def sigterm_con_el_menu_abierto_termina_bien():
    with Banco() as b:
        _abre_menu(b)
        b.lector.send_signal(signal.SIGTERM)
        assert b.lector.wait(5) == 0


@caso
def el_lector_esta_listo_antes_de_un_segundo():
    with Banco() as b:
        print(f'ready after {b.listo_en * 1000:.0f} ms')
        assert b.listo_en < 1.0
