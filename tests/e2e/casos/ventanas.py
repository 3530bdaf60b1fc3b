"""The windows round the reader: magnifier, help, about box, read-me file. Judged by the screen's pixels."""
import contextlib
import os
import time

import numpy

from arnes.banco import OBRA, RAIZ, Banco
from arnes.procesos import espera
from casos.programa import _abre_menu

CASOS = {}
CRUZ = (192, 0, 0)
CON_LUPA = {'General': {'VerLupa': 'True'},
            'Ventana': {'LeftLupa': 600 * 15, 'TopLupa': 300 * 15, 'WidthLupa': 400 * 15, 'HeightLupa': 300 * 15}}


def caso(f):
    CASOS[f.__name__] = f
    return f


def _pixeles(b, ventana='root'):
    """The screen, or one window, as an array [y, x, colour]."""
    ppm = b.escritorio.procesos.corre(['import', '-silent', '-window', ventana, '-depth', '8', 'ppm:-'])
    partes = ppm.split(maxsplit=4)
    ancho, alto = int(partes[1]), int(partes[2])
    return numpy.frombuffer(ppm[-ancho * alto * 3:], numpy.uint8).reshape(alto, ancho, 3)


def _mueve(b, x, y):
    b.escritorio.procesos.corre(['xdotool', 'mousemove', str(x), str(y)])


def _dibujo(alto, ancho):
    """A picture in which every pixel has a colour of its own."""
    y, x = numpy.mgrid[0:alto, 0:ancho]
    return numpy.stack([x % 256, y % 256, (x // 256) * 16 + y // 256], axis=-1).astype(numpy.uint8)


def _cubre_fondo(b, ancho=1280):
    dibujo = _dibujo(800, ancho)
    ceros = numpy.zeros((800, ancho, 1), numpy.uint8)
    b.escritorio.equis.pinta_fondo(ancho, 800, numpy.concatenate([dibujo[..., ::-1], ceros], axis=-1).tobytes())
    espera(lambda: (_pixeles(b)[100, 50] == dibujo[100, 50]).all(), 10, que='the background')
    return dibujo


def _ventana(b, nombre):
    """(id, x, y, width, height) of the inside of a visible window of the reader with that title, or None."""
    salida = b.escritorio.procesos.corre(['xdotool', 'search', '--onlyvisible', '--name', f'^{nombre}$'],
                                         comprueba=False).decode()
    for numero in salida.split():
        datos = dict(linea.strip().split(': ', 1) for linea in b.escritorio.procesos.corre(
            ['xwininfo', '-id', numero], comprueba=False).decode().splitlines() if ': ' in linea)
        if 'Width' not in datos:  # it has gone meanwhile
            continue
        ancho, alto = int(datos['Width']), int(datos['Height'])
        if ancho > 60 and alto > 60:
            return numero, int(datos['Absolute upper-left X']), int(datos['Absolute upper-left Y']), ancho, alto
    return None


def _espera_ventana(b, nombre):
    return espera(lambda: _ventana(b, nombre), 10, que=f'the window {nombre}')


def _espera_sin(b, nombre):
    espera(lambda: _ventana(b, nombre) is None, 5, que=f'the end of the window {nombre}')


def _retrata(b, nombre):
    """Keeps a picture where ONDALIS_RETRATOS names a folder."""
    if os.environ.get('ONDALIS_RETRATOS'):
        b.escritorio.captura(os.path.join(os.environ['ONDALIS_RETRATOS'], nombre + '.png'))


def _comprueba_lupa(b, fondo, x, y, lupa):
    """Every pixel of the magnifier but those near the pointer's picture shows what is on the screen, twice as large."""
    _, lx, ly, ancho, alto = lupa
    pantalla = fondo.shape[1]
    j, i = numpy.mgrid[0:alto, 0:ancho]
    sx, sy = x - ancho // 4 + i // 2, y - alto // 4 + j // 2
    dentro = (sx >= 0) & (sx < pantalla) & (sy >= 0) & (sy < 760)  # the tray's panel is below
    tapado = (abs(i - ancho // 2) < 70) & (abs(j - alto // 2) < 70)
    comparable = dentro & ~tapado
    esperado = numpy.zeros((alto, ancho, 3), numpy.uint8)
    esperado[comparable] = fondo[sy[comparable], sx[comparable]]
    fuera = (sx < 0) | (sx >= pantalla) | (sy < 0) | (sy >= 800)

    def igual():
        visto = _pixeles(b)[ly:ly + alto, lx:lx + ancho]
        return (visto[comparable] == esperado[comparable]).all() and (visto[fuera & ~tapado] == 0).all() \
            and tuple(visto[alto // 2, ancho // 2 - 3]) == CRUZ and tuple(visto[alto // 2 - 3, ancho // 2]) == CRUZ
    espera(igual, 5, paso=0.1, que=f'the magnified picture at {x}, {y}')


@caso
def la_lupa_muestra_al_doble_lo_que_rodea_al_puntero():
    with Banco(ajustes=CON_LUPA, arranca=False) as b:
        fondo = _cubre_fondo(b)
        _mueve(b, 300, 200)
        b.arranca_lector()
        lupa = _espera_ventana(b, 'Ondalis')
        assert lupa[3:] == (400, 300), lupa
        _comprueba_lupa(b, fondo, 300, 200, lupa)
        _retrata(b, 'lupa')
        for x, y in ((150, 420), (0, 0), (1279, 0), (0, 700)):
            _mueve(b, x, y)
            _comprueba_lupa(b, fondo, x, y, lupa)
        _retrata(b, 'lupa-esquina')
        # A window twice as wide shows twice as much: the magnification stays.
        b.escritorio.procesos.corre(['xdotool', 'windowsize', lupa[0], '600', '300'])
        espera(lambda: _ventana(b, 'Ondalis')[3] == 600, 5, que='the wider window')
        _mueve(b, 250, 200)
        _comprueba_lupa(b, fondo, 250, 200, _ventana(b, 'Ondalis'))


@contextlib.contextmanager
def _dos_monitores(**ajustes):
    """A bench without the reader yet, whose screen of 2080x800 is seen as two monitors: one of 800x600 on the left, and
    a higher one of 1280x800. Over the first one there is nothing."""
    with Banco(ajustes={'General': {'VerLupa': 'False'}} | ajustes, arranca=False, tamano='2080x800') as b:
        for monitor in (('uno', '800/211x600/158+0+200', 'screen'), ('dos', '1280/338x800/211+800+0', 'none')):
            b.escritorio.procesos.corre(['xrandr', '--setmonitor', *monitor])
        monitores = b.escritorio.procesos.corre(['xrandr', '--listmonitors']).decode()
        assert 'Monitors: 2' in monitores, monitores
        # The tray's host follows the monitors.
        espera(lambda: b.escritorio.equis.hay_dueno('_NET_SYSTEM_TRAY_S0'), 10, que='the tray')
        yield b


@caso
def la_lupa_muestra_lo_que_hay_a_los_dos_lados_de_la_frontera_entre_monitores():
    lupa = {f'{lado}Lupa': v * 15 for lado, v in (('Left', 1500), ('Top', 300), ('Width', 400), ('Height', 300))}
    with _dos_monitores(General={'VerLupa': 'True'}, Ventana=lupa) as b:
        fondo = _cubre_fondo(b, 2080)
        _mueve(b, 700, 500)
        b.arranca_lector()
        lupa = _espera_ventana(b, 'Ondalis')
        assert lupa[3:] == (400, 300), lupa
        for x, y in ((799, 500), (800, 500), (840, 230), (760, 400), (2079, 100)):
            _mueve(b, x, y)
            _comprueba_lupa(b, fondo, x, y, lupa)
        _retrata(b, 'lupa-frontera')


def _sitio(left, top):
    return {'LeftPrincipal': left * 15, 'TopPrincipal': top * 15}


def _monitor_de(ventana):
    """The one that shows the whole inside of the window, or None."""
    _, x, y, ancho, alto = ventana
    for nombre, mx, my, mancho, malto in (('uno', 0, 200, 800, 600), ('dos', 800, 0, 1280, 800)):
        if mx <= x and my <= y and x + ancho <= mx + mancho and y + alto <= my + malto:
            return nombre
    return None


@caso
def en_dos_monitores_la_configuracion_se_abre_entera_en_uno_y_vuelve_a_donde_se_dejo():
    for guardado, monitor, lugar in (({}, 'dos', None), (_sitio(60, 210), 'uno', (60, 210)),
                                     (_sitio(900, 40), 'dos', (900, 40)),
                                     (_sitio(300, 60), 'uno', None)):  # over the first monitor, where nothing is seen
        with _dos_monitores(Ventana=guardado) as b:
            b.arranca_lector()
            _abre_menu(b)
            for tecla in ('Up', 'Up', 'Up', 'Return'):  # over "Salir" and "Ayuda": the windows that are there
                b.tecla(tecla)
            ventana = _espera_ventana(b, 'Configuración Ondalis')
            assert _monitor_de(ventana) == monitor, (guardado, ventana)
            # The place is that of the frame.
            assert lugar is None or max(abs(ventana[1] - lugar[0]), abs(ventana[2] - lugar[1])) < 30, (guardado, ventana)
            print(f'kept {guardado or "nothing"}: {ventana[1:]}, monitor {monitor}')


@caso
def la_lupa_no_quita_el_teclado_y_cuesta_menos_de_dos_centesimas():
    with Banco(ajustes=CON_LUPA, arranca=False) as b:
        b.escritorio.procesos.arranca(['xterm', '-geometry', '40x10+0+0'], 'xterm')
        xterm = espera(lambda: b.escritorio.procesos.corre(['xdotool', 'getactivewindow'], comprueba=False), 10,
                       que='the terminal in front')
        b.arranca_lector()
        _espera_ventana(b, 'Ondalis')
        assert b.escritorio.procesos.corre(['xdotool', 'getactivewindow']) == xterm

        def gastado():
            with open(f'/proc/{b.lector.pid}/stat', encoding='ascii') as f:
                campos = f.read().rpartition(')')[2].split()
            return (int(campos[11]) + int(campos[12])) / os.sysconf('SC_CLK_TCK')
        time.sleep(1)
        antes, t = gastado(), time.monotonic()
        while time.monotonic() - t < 8:  # the pointer moves, so that every picture is a new one
            b.escritorio.procesos.corre(['xdotool', 'mousemove', str(100 + int((time.monotonic() - t) * 60)), '150'])
            time.sleep(0.08)
        parte = (gastado() - antes) / (time.monotonic() - t)
        print(f'the reader with its magnifier takes {parte * 100:.2f} % of a core')
        assert parte < 0.02


@caso
def la_lupa_cerrada_a_mano_queda_quitada_para_siempre():
    with Banco(ajustes=CON_LUPA) as b:
        lupa = _espera_ventana(b, 'Ondalis')
        b.escritorio.equis.cierra_ventana(int(lupa[0]))
        _espera_sin(b, 'Ondalis')
        espera(lambda: b.ajuste('General', 'VerLupa') == '0', 5, que='the option to be off')
        assert b.termina_lector() == 0
        b.arranca_lector()
        time.sleep(0.5)
        assert _ventana(b, 'Ondalis') is None


@caso
def la_lupa_guarda_su_sitio_al_salir_y_sigue_puesta():
    with Banco(ajustes=CON_LUPA) as b:
        lupa = _espera_ventana(b, 'Ondalis')
        b.escritorio.procesos.corre(['xdotool', 'windowsize', lupa[0], '320', '200'])
        espera(lambda: _ventana(b, 'Ondalis')[3:] == (320, 200), 5, que='the smaller window')
        antes = _ventana(b, 'Ondalis')
        assert b.termina_lector() == 0
        assert b.ajuste('General', 'VerLupa') == 'True'
        assert (b.ajuste('Ventana', 'WidthLupa'), b.ajuste('Ventana', 'HeightLupa')) == ('4800', '3000')
        b.arranca_lector()
        assert _espera_ventana(b, 'Ondalis')[1:] == antes[1:]


def _elige(b, *teclas):
    """Opens the icon's menu and goes through it by keyboard: from the top up to "Ayuda", and into it."""
    _abre_menu(b)
    for tecla in ('Up', 'Up', 'Right', *teclas):
        b.tecla(tecla)
        time.sleep(0.1)
    _retrata(b, 'menu-ayuda')
    b.tecla('Return')


@caso
def la_ayuda_se_abre_por_el_menu_y_se_maneja_con_el_teclado():
    with Banco() as b:
        _elige(b)
        _espera_ventana(b, 'Índice - Ayuda de Ondalis')
        time.sleep(0.3)
        _retrata(b, 'ayuda')
        b.tecla('Tab')
        b.tecla('Return')
        _espera_ventana(b, 'Leer lo que se copia - Ayuda de Ondalis')
        _retrata(b, 'ayuda-tema')
        b.tecla('alt+Left')
        _espera_ventana(b, 'Índice - Ayuda de Ondalis')
        b.tecla('Escape')
        _espera_sin(b, 'Índice - Ayuda de Ondalis')


@caso
def un_tema_de_la_ayuda_copiado_se_oye():
    with Banco(motor='real') as b:
        _elige(b)
        _espera_ventana(b, 'Índice - Ayuda de Ondalis')
        time.sleep(0.3)
        t = time.monotonic()
        b.tecla('ctrl+a')
        b.tecla('ctrl+c')
        b.espera_sonido(10, desde=t)


@caso
def acerca_de_tiene_su_forma_se_arrastra_y_se_cierra_con_escape():
    with Banco() as b:
        _mueve(b, 640, 400)
        fondo = _pixeles(b)
        _elige(b, 'Down', 'Down')
        numero, x, y, ancho, alto = _espera_ventana(b, 'Acerca de Ondalis')
        assert (ancho, alto) == (480, 320)
        time.sleep(0.3)
        _retrata(b, 'acerca')
        visto = _pixeles(b)
        # Beside the bubble's tail the desktop shows; no green is left anywhere.
        assert (visto[y + 300, x + 300] == fondo[y + 300, x + 300]).all()
        assert (visto[y, x] == fondo[y, x]).all()
        assert tuple(visto[y + 100, x + 440]) != tuple(fondo[y + 100, x + 440])
        recorte = visto[y:y + alto, x:x + ancho].astype(int)
        assert not ((recorte[..., 1] > 200) & (recorte[..., 0] < 60) & (recorte[..., 2] < 60)).any()
        for orden in (['mousemove', str(x + 440), str(y + 40)], ['mousedown', '1'],
                      ['mousemove', str(x + 420), str(y + 90)], ['mousemove', str(x + 400), str(y + 100)],
                      ['mouseup', '1']):
            b.escritorio.procesos.corre(['xdotool', *orden])
            time.sleep(0.1)
        espera(lambda: _ventana(b, 'Acerca de Ondalis')[1:3] == (x - 40, y + 60), 5, que='the window to be moved')
        b.tecla('Escape')
        _espera_sin(b, 'Acerca de Ondalis')
        _elige(b, 'Down', 'Down')
        _espera_ventana(b, 'Acerca de Ondalis')
        time.sleep(0.3)
        b.tecla('Return')  # its button has the focus
        _espera_sin(b, 'Acerca de Ondalis')


@caso
def el_leeme_que_nadie_puede_abrir_se_dice():
    with Banco() as b:
        # A desktop without any application for it.
        carpeta = os.path.join(b.escritorio.carpeta, 'programas')
        os.mkdir(carpeta)
        with open(os.path.join(carpeta, 'xdg-open'), 'w', encoding='ascii') as f:
            f.write('#!/bin/sh\necho "$1" >> "$HOME/abierto"\nexit 3\n')
        os.chmod(os.path.join(carpeta, 'xdg-open'), 0o755)
        assert b.termina_lector() == 0
        b.escritorio.entorno['PATH'] = carpeta + ':' + b.escritorio.entorno['PATH']
        b.arranca_lector()
        _elige(b, 'Down')
        _espera_ventana(b, 'Ondalis')
        _retrata(b, 'leeme-imposible')
        with open(os.path.join(b.escritorio.entorno['HOME'], 'abierto'), encoding='utf-8') as f:
            assert f.read().strip() == os.path.join(os.path.realpath(OBRA), 'share', 'ondalis', 'LEAME.txt')
        assert os.path.isfile(os.path.join(RAIZ, 'resources', 'datos', 'LEAME.txt'))
