"""Start and end: help, -clear, commands left for the start, the second copy, the splash, the end of the session."""
import ctypes
import os
import subprocess
import threading
import time

from arnes.banco import OBRA, PROGRAMA, Banco, texto_tonos
from arnes.procesos import espera, vivo

CASOS = {}

_AYUDA = '''Uso: Ondalis  [-clear] [-debug] [-nosapi5] [-filetxt nomfich] [-outputfile nomfich] [texto]
-clear: Restaura la configuración predeterminada
-nosapi5: Ignora las voces SAPI5
-filetxt nomfich: Lee el fichero de texto nomfich sin dejar Ondalis residente
-outputfile nomfich: Graba la voz en nomfich (con extensión WAV o MP3)
texto: Lee el texto sin dejar Ondalis residente
'''


def caso(f):
    CASOS[f.__name__] = f
    return f


def ventanas(b, titulo='Ondalis'):
    """Sizes and places of the viewable top-level windows of that title, as (id, x, y, width, height)."""
    dadas = []
    # A window that goes while the tree is walked makes the program fail: nothing is seen then, and asked again.
    arbol = b.escritorio.procesos.corre(['xwininfo', '-root', '-tree'], comprueba=False).decode(errors='replace')
    for linea in arbol.splitlines():
        partes = linea.strip().split()
        if len(partes) < 4 or not partes[0].startswith('0x') or f'"{titulo}":' not in linea:
            continue
        detalle = b.escritorio.procesos.corre(['xwininfo', '-id', partes[0]], comprueba=False).decode(errors='replace')
        if 'IsViewable' not in detalle:
            continue
        ancho, alto = (int(v) for v in partes[-2].split('+')[0].split('x'))
        _, x, y = partes[-1].split('+') if partes[-1].count('+') == 2 else (0, 0, 0)
        if ancho > 60 and alto > 60:
            dadas.append((partes[0], int(x), int(y), ancho, alto))
    return dadas


def foto(b, nombre):
    """A screenshot, kept where ONDALIS_FOTOS names a folder."""
    ruta = os.path.join(os.environ.get('ONDALIS_FOTOS', b.escritorio.carpeta), nombre + '.png')
    b.escritorio.captura(ruta)
    return ruta


def pixeles(b, x, y, ancho, alto, ventana='root'):
    return b.escritorio.procesos.corre(
        ['import', '-window', ventana, '-crop', f'{ancho}x{alto}+{x}+{y}', '+repage', '-depth', '8', 'rgb:-'])


def _lanza(b, *argumentos, entorno=None):
    return b.escritorio.procesos.arranca([PROGRAMA, *argumentos], 'otro', entorno or b.escritorio.entorno,
                                         stdout=subprocess.PIPE, stderr=subprocess.PIPE)


def _sin_pantalla(b):
    return {c: v for c, v in b.escritorio.entorno.items() if c != 'DISPLAY'}


@caso
def la_ayuda_sin_pantalla_se_escribe_y_termina():
    with Banco(arranca=False) as b:
        for entorno in (_sin_pantalla(b), dict(b.escritorio.entorno, DISPLAY=':987')):
            for argumentos in (['-help'], ['hola', '-HELP'], ['-clear', 'x-Help']):
                p = _lanza(b, *argumentos, entorno=entorno)
                salida, error = p.communicate(timeout=10)
                assert (p.returncode, salida.decode(), error) == (0, _AYUDA, b''), (argumentos, p.returncode, salida, error)
        # Nothing of the line but the help acts: the settings stand.
        assert b.ajuste('General', 'UtilizaSonidos') == 'False'


@caso
def la_ayuda_con_pantalla_es_una_ventana_que_se_cierra_con_intro():
    with Banco() as b:  # beside a running reader
        p = _lanza(b, '-help')
        espera(lambda: ventanas(b), 10, que='the help window')
        time.sleep(0.4)
        foto(b, 'ayuda')
        b.tecla('Return')
        salida, _ = p.communicate(timeout=5)
        assert (p.returncode, salida) == (0, b'')
        b.sigue_vivo()


@caso
def sin_pantalla_el_lector_lo_dice_y_termina():
    with Banco(arranca=False) as b:
        p = _lanza(b, entorno=_sin_pantalla(b))
        _, error = p.communicate(timeout=10)
        assert p.returncode == 3 and b'DISPLAY' in error, (p.returncode, error)


@caso
def clear_restaura_los_ajustes_y_el_lector_arranca():
    with Banco(arranca=False, ajustes={'TeclasRapidas': {'X': '1'}, 'Voz': {'Velocidad': '300'}}) as b:
        arranques = os.path.join(b.escritorio.entorno['XDG_CONFIG_HOME'], 'autostart')
        os.mkdir(arranques)
        entrada = os.path.join(arranques, 'ondalis.desktop')
        with open(entrada, 'w', encoding='utf-8') as f:
            f.write('[Desktop Entry]\nType=Application\nExec=ondalis\n')
        assert b.ajuste('Voz', 'Velocidad') == '300'
        b.arranca_lector(['-CLEAR', '-NoSapi5', '-debug'])
        assert b.ajuste('Voz', 'Velocidad') is None
        assert b.ajuste('General', 'UtilizaSonidos') is None
        assert not os.path.exists(entrada)
        t = b.copia(texto_tonos(20, 10))
        b.espera_palabra(25, desde=t)


@caso
def cada_comando_del_sistema_corre_una_sola_vez():
    with Banco(arranca=False) as b:
        sistema = os.path.join(b.escritorio.carpeta, 'etc')
        os.makedirs(os.path.join(sistema, 'Ferrano'))
        hechos = os.path.join(b.escritorio.carpeta, 'hechos')
        guion = os.path.join(b.escritorio.carpeta, 'un guion')
        with open(guion, 'w', encoding='utf-8') as f:
            f.write(f'#!/bin/sh\necho "$@" >> {hechos}\n')
        os.chmod(guion, 0o700)
        tienda = os.path.join(sistema, 'Ferrano', 'Ondalis.ini')

        def deja(*ordenes):
            with open(tienda, 'w', encoding='utf-8') as f:
                f.write('[General]\n')
                for i, orden in enumerate(ordenes):
                    f.write(f'CMD{i + 1}="\\"{guion}\\" {orden}"\n')

        def lineas():
            if not os.path.exists(hechos):
                return []
            with open(hechos, encoding='utf-8') as f:
                return sorted(f.read().split('\n')[:-1])

        b.escritorio.entorno['XDG_CONFIG_DIRS'] = sistema
        deja('uno $HOME', 'dos')
        b.arranca_lector()
        espera(lambda: lineas() == ['dos', 'uno $HOME'], 5, que='both commands')
        assert b.termina_lector() == 0
        b.arranca_lector()  # nothing is left to run
        assert b.termina_lector() == 0
        assert lineas() == ['dos', 'uno $HOME']
        deja('uno $HOME', 'dos', 'tres')  # left anew by another installer
        b.arranca_lector()
        espera(lambda: lineas() == ['dos', 'dos', 'tres', 'uno $HOME', 'uno $HOME'], 5, que='the commands left anew')
        assert b.termina_lector() == 0
        with open(tienda, encoding='utf-8') as f:
            assert 'CMD' not in f.read()


@caso
def la_segunda_copia_lo_dice_se_cierra_con_intro_y_la_primera_sigue():
    with Banco() as b:
        b.copia(texto_tonos(0, 60))
        b.espera_palabra(3)
        p = _lanza(b)
        espera(lambda: ventanas(b), 10, que='the message')
        time.sleep(0.4)
        foto(b, 'ya_arrancado')
        b.tecla('Return')
        assert p.wait(5) == 0
        t = time.monotonic()
        oidas = [k for k in b.numeros(t - 1.5) if k is not None]
        b.espera_palabra(oidas[-1] + 8, desde=t)  # the reading goes on
        b.sigue_vivo()


@caso
def sigterm_con_el_aviso_de_la_segunda_copia_lo_cierra():
    with Banco() as b:
        p = _lanza(b)
        espera(lambda: ventanas(b), 10, que='the message')
        p.terminate()
        assert p.wait(5) == 0
        b.sigue_vivo()


@caso
def de_dos_arrancados_a_la_vez_queda_exactamente_uno():
    with Banco(arranca=False) as b:
        entorno = dict(b.escritorio.entorno, ONDALIS_AVISA_LISTO='1')
        for vuelta in range(6):
            copias = [b.escritorio.procesos.arranca([PROGRAMA], 'par', entorno, stdout=subprocess.DEVNULL,
                                                    stderr=subprocess.PIPE) for _ in range(2)]
            listos = []

            def lee(p):
                if b'LISTO' in p.stderr.readline():
                    listos.append(p)
            for p in copias:
                threading.Thread(target=lee, args=(p,), daemon=True).start()
            espera(lambda: len(listos) == 1 and ventanas(b), 15, que='one reader and one message')
            otro = next(p for p in copias if p not in listos)
            time.sleep(0.3)
            b.tecla('Return')
            assert otro.wait(5) == 0
            assert listos[0].poll() is None and len(listos) == 1, f'round {vuelta}'
            listos[0].terminate()
            assert listos[0].wait(5) == 0


@caso
def el_primero_matado_no_estorba_al_siguiente():
    with Banco() as b:
        for _ in range(3):
            b.lector.kill()
            b.lector.wait()
            b.arranca_lector()
        assert not ventanas(b)


def _renglon(b, ventana):
    """Light pixels in the lower left of the bubble's body, where the splash has its text."""
    _, x, y, _, _ = ventana
    puntos = pixeles(b, x + 28, y + 212, 180, 36)
    return sum(min(puntos[i:i + 3]) > 150 for i in range(0, len(puntos), 3))


@caso
def la_bienvenida_se_ve_con_su_texto_mientras_cargan_las_voces():
    with Banco(arranca=False, motor='real') as b:
        lento = os.path.join(b.escritorio.carpeta, 'motor-lento')
        with open(lento, 'w', encoding='utf-8') as f:
            f.write(f'#!/bin/sh\nsleep 1.5\nexec {os.path.join(OBRA, "bin", "ondalis-motor")} "$@"\n')
        os.chmod(lento, 0o700)
        b.escritorio.entorno['ONDALIS_MOTOR'] = lento
        vistas = []

        def mira():
            ventana = espera(lambda: ventanas(b), 10, que='the splash')[0]
            espera(lambda: any(pixeles(b, ventana[1] + 60, ventana[2] + 60, 40, 40)), 5, que='the splash to be painted')
            foto(b, 'bienvenida')
            _, x, y, ancho, alto = ventana
            vistas.append((ancho * alto, pixeles(b, x, y, ancho, alto), _renglon(b, ventana)))
        # The reader dies with the thread that starts it: the other one looks.
        hilo = threading.Thread(target=mira, daemon=True)
        hilo.start()
        b.arranca_lector()
        hilo.join(15)
        puntos, todos, renglon = vistas[0]
        # A bubble whose corners, and the sides of whose tail, aren't part of the window: the desktop behind is black.
        globo = sum(todos[i:i + 3] != b'\0\0\0' for i in range(0, len(todos), 3)) / puntos
        assert 0.5 < globo < 0.95, globo
        assert 80 < renglon < 3000, f'{renglon} light pixels where the text should be'
        espera(lambda: not ventanas(b), 5, que='the splash to go')
        # The about box is the same window with the text hidden: by the same look it has none there.
        from casos.ventanas import _elige
        _elige(b, 'Down', 'Down')
        sin_texto = _renglon(b, espera(lambda: ventanas(b, 'Acerca de Ondalis'), 10, que='the about box')[0])
        assert sin_texto == 0, f'{sin_texto} light pixels where no text should be'
        b.sigue_vivo()


@caso
def un_lector_sin_actividad_al_arrancar_muestra_el_icono_9_y_no_lee():
    from casos.bandeja import cambia_el_icono, foto_icono
    with Banco(ajustes={'General': {'UtilizaSonidos': 'False', 'ActivaAlArrancar': 'False'}}) as b:
        inactivo = foto_icono(b)
        b.copia(texto_tonos(0, 10))
        b.calla(1.2)
        b.tecla('alt+1')
        activo = cambia_el_icono(b, inactivo)
        b.tecla('alt+1')
        assert cambia_el_icono(b, activo) == inactivo
        foto(b, 'inactivo')


@caso
def el_fin_del_servidor_x_no_deja_procesos():
    with Banco() as b:
        b.copia(texto_tonos(0, 60))
        b.espera_palabra(3)
        pids = espera(b.motores, que='a worker')
        b.escritorio.equis.cierra()
        b.escritorio.equis = None
        b.escritorio.mata_equis()
        b.lector.wait(10)
        espera(lambda: not any(vivo(p) for p in pids), 5, que='the workers to end')


@caso
def el_fin_de_la_sesion_del_escritorio_termina_bien_y_no_la_estorba():
    from arnes.sesion import GestorSesion
    with Banco(arranca=False) as b:
        with GestorSesion(b.escritorio.carpeta) as gestor:
            b.escritorio.entorno.update(gestor.entorno())
            b.arranca_lector()
            espera(gestor.clientes, 10, que='the reader to join the session')
            gestor.guarda()
            b.copia(texto_tonos(0, 60))
            b.espera_palabra(3)
            pids = espera(b.motores, que='a worker')
            t = time.monotonic()
            gestor.acaba_sesion()
            assert b.lector.wait(8) == 0
            assert gestor.guardados == 2, 'the reader did not say each time that it had saved'
            assert gestor.estilo == 3, f'restart style {gestor.estilo}: the session would start it a second time'
            m = b.silencio_desde(t, t + 2.0)
            assert m is None or m < 1.0, f'sound for {m:.3f} s after the end of the session'
            espera(lambda: not any(vivo(p) for p in pids), 3, que='the workers to end')
