"""Other programs on the session bus: commands, ondalisctl, player controls."""
import os
import re
import signal
import subprocess
import time

from arnes.banco import OBRA, PROGRAMA, Banco, en_orden, texto_tonos
from arnes.procesos import espera

CASOS = {}
CTL = os.environ.get('ONDALIS_CTL', os.path.join(OBRA, 'bin', 'ondalisctl'))
MPRIS = 'org.mpris.MediaPlayer2.ondalis'


def caso(f):
    CASOS[f.__name__] = f
    return f


def ctl(b, *argumentos, entrada=None, limite=30):
    """Runs ondalisctl to its end: (exit code, what it wrote to standard error)."""
    r = subprocess.run([CTL, *argumentos], env=b.escritorio.entorno, input=entrada, stdout=subprocess.PIPE,
                       stderr=subprocess.PIPE, timeout=limite, check=False,
                       **({} if entrada is not None else {'stdin': subprocess.DEVNULL}))
    return r.returncode, r.stderr.decode()


def gdbus(b, *argumentos, comprueba=True):
    return b.escritorio.procesos.corre(['gdbus', 'call', '--session', *argumentos], comprueba=comprueba).decode()


def ejecuta(b, comando, comprueba=True):
    return gdbus(b, '-d', 'com.ferrano.Ondalis', '-o', '/com/ferrano/Ondalis/Voice',
                 '-m', 'com.ferrano.Ondalis.Voice.Execute', comando, comprueba=comprueba)


def hay_lector(b):
    return 'true' in gdbus(b, '-d', 'org.freedesktop.DBus', '-o', '/org/freedesktop/DBus',
                           '-m', 'org.freedesktop.DBus.NameHasOwner', 'com.ferrano.Ondalis')


def espera_lector(b):
    espera(lambda: hay_lector(b), que='the reader on the bus', paso=0.05)


def vigila(b):
    """A watcher of the reader's signals; gives a function that returns what has been told so far."""
    ruta = os.path.join(b.escritorio.carpeta, 'vigia.txt')
    with open(ruta, 'wb') as f:
        b.escritorio.procesos.arranca(['gdbus', 'monitor', '--session', '-d', 'com.ferrano.Ondalis'], 'vigia',
                                      stdout=f, stderr=f)

    def leido():
        with open(ruta, encoding='utf-8') as f:
            return f.read()
    espera(lambda: 'owned' in leido(), que='the watcher')
    return leido


@caso
def una_orden_se_oye_y_se_anuncia_su_final():
    with Banco() as b:
        espera_lector(b)
        dicho = vigila(b)
        t = time.monotonic()
        assert ejecuta(b, 'SPEAK ' + texto_tonos(0, 6)).strip() == '()'
        b.espera_sonido(3, desde=t)
        b.espera_silencio()
        en_orden(b.numeros(t), range(6))
        espera(lambda: "'DDELink': <'StopSpeaking'>" in dicho(), 3, que='the end to be told')
        assert dicho().index("'DDELink': <''>") < dicho().index("'DDELink': <'StopSpeaking'>")


@caso
def ondalisctl_espera_al_final_de_lo_suyo():
    with Banco() as b:
        espera_lector(b)
        t = time.monotonic()
        assert ctl(b, '--espera', 'habla', *texto_tonos(0, 6).split()) == (0, '')
        fin = time.monotonic()
        time.sleep(0.3)
        oidas = b.oye_palabras(t)
        en_orden([p.k for p in oidas], range(6))
        assert -0.15 < fin - oidas[-1].fin < 1.0, f'came back {fin - oidas[-1].fin:.2f} s after the last sound'
        # A speech that another one cuts is over for the one who waits for it, and the other waits for its own.
        primera = b.escritorio.procesos.arranca([CTL, '--espera', 'habla', texto_tonos(0, 60)], 'primera')
        b.espera_palabra(2)
        t = time.monotonic()
        assert ctl(b, '--espera', 'habla', texto_tonos(70, 6))[0] == 0
        assert primera.wait(1) == 0
        assert 75 in b.numeros(t), b.numeros(t)


@caso
def los_codigos_de_salida_de_ondalisctl():
    with Banco(arranca=False) as b:
        assert ctl(b, 'habla', 'hola')[0] == 3
        assert ctl(b, 'espera')[0] == 3
        assert ctl(b)[0] == 2
        assert ctl(b, '--ayuda')[0] == 0
        b.arranca_lector()
        espera_lector(b)
        codigo, error = ctl(b, '--plazo', '1', '--espera', 'habla', texto_tonos(0, 60))
        assert codigo == 4 and 'plazo' in error, (codigo, error)
        # Who watches the item hears of the end of what another commands.
        espera_fin = b.escritorio.procesos.arranca([CTL, 'espera'], 'espera')
        time.sleep(0.5)
        ctl(b, 'habla', texto_tonos(0, 3))
        assert espera_fin.wait(8) == 0
        # The reader ends while somebody waits.
        espera_fin = b.escritorio.procesos.arranca([CTL, '--espera', 'habla', texto_tonos(0, 60)], 'espera')
        b.espera_palabra(1)
        b.termina_lector()
        assert espera_fin.wait(5) in (0, 3)


@caso
def las_rafagas_de_cuatro_clientes_se_cumplen_en_orden():
    with Banco() as b:
        espera_lector(b)
        guion = 'i=0; while [ $i -lt 25 ]; do "$0" habla "n$1" || exit 1; i=$((i+1)); done'
        clientes = [b.escritorio.procesos.arranca(['sh', '-c', guion, CTL, str(k)], f'cliente{k}')
                    for k in (10, 20, 30, 40)]
        for p in clientes:
            assert p.wait(60) == 0
        t = time.monotonic()
        assert ctl(b, '--espera', 'habla', texto_tonos(50, 5))[0] == 0
        time.sleep(0.3)
        oidas = [k for k in b.numeros(t) if k is not None and k >= 50]
        en_orden(oidas, range(50, 55))
        b.sigue_vivo()


@caso
def un_megabyte_empieza_enseguida_y_se_calla_enseguida():
    with Banco() as b:
        espera_lector(b)
        texto = texto_tonos(0, 60) + ' '
        grande = (texto * (1_000_000 // len(texto))).encode()
        t = time.monotonic()
        assert ctl(b, 'habla', '-', entrada=grande)[0] == 0
        primera = b.espera_sonido(8, desde=t)
        print(f'{len(grande)} bytes: first sound {primera - t:.2f} s after the command was typed')
        b.espera_palabra(3)
        t = b.tecla('ctrl+2')
        m = b.silencio_desde(t, t + 0.4)
        assert m is None or m < 0.3, f'sound for {m} s after the stop'
        t = time.monotonic()
        ctl(b, 'habla', texto_tonos(70, 3))
        b.espera_palabra(72, desde=t)


@caso
def un_verbo_en_minusculas_calla_y_no_dice_nada():
    with Banco() as b:
        espera_lector(b)
        b.copia(texto_tonos(0, 60))
        b.espera_palabra(3)
        ejecuta(b, 'speak ' + texto_tonos(70, 5))
        t = time.monotonic() + 0.4
        time.sleep(0.4)
        assert not b.oye_palabras(t, t + 1.5)
        b.sigue_vivo()


@caso
def una_orden_desconocida_se_rechaza_y_no_detiene_nada():
    with Banco() as b:
        espera_lector(b)
        antes = time.monotonic()
        r = subprocess.run(['gdbus', 'call', '--session', '-d', 'com.ferrano.Ondalis', '-o',
                            '/com/ferrano/Ondalis/Voice', '-m', 'com.ferrano.Ondalis.Voice.Execute', 'CANTA algo'],
                           env=b.escritorio.entorno, stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
        assert r.returncode != 0 and b'com.ferrano.Ondalis.Error.Refused' in r.stderr, r.stderr
        assert time.monotonic() - antes < 3, 'the refusal waited for the box'
        # The box is on the screen; commands go on behind it.
        t = time.monotonic()
        assert ctl(b, 'habla', texto_tonos(0, 3))[0] == 0
        b.espera_palabra(2, desde=t)
        b.escritorio.equis.tecla('Return')
        assert b.termina_lector() == 0


@caso
def un_fichero_se_lee_entero_y_sigterm_lo_corta():
    with Banco() as b:
        espera_lector(b)
        ruta = os.path.join(b.escritorio.carpeta, 'un libro-1.txt')
        with open(ruta, 'wb') as f:
            f.write((texto_tonos(0, 6) + ' a\xf1o').encode('latin-1'))
        t = time.monotonic()
        assert ctl(b, '--espera', 'fichero', ruta)[0] == 0
        time.sleep(0.3)
        assert [k for k in b.numeros(t) if k is not None][:6] == list(range(6)), b.numeros(t)
        assert ctl(b, '--espera', '--plazo', '10', 'fichero', '/no/existe.txt')[0] == 0
        b.tecla('Return')  # the box that tells of it
        with open(ruta, 'w', encoding='utf-8') as f:
            f.write(texto_tonos(0, 60))
        t = time.monotonic()
        ctl(b, 'fichero', ruta)
        b.espera_palabra(3, desde=t)
        # Commands are accepted while a file is spoken; the end of the program waits for none of them.
        for _ in range(3):
            assert ctl(b, 'fichero', ruta, '--plazo', '5')[0] == 0
        t = time.monotonic()
        assert b.termina_lector() == 0
        assert time.monotonic() - t < 3


SAPI5 = {'Voz': {'FabricanteActivo': 'Pruebas', 'VozActiva': 'Tono español'}}


@caso
def con_una_voz_sapi5_un_fichero_se_lee_entero_se_anuncia_y_sigterm_lo_corta():
    with Banco(ajustes=SAPI5) as b:
        espera_lector(b)
        dicho = vigila(b)
        ruta = os.path.join(b.escritorio.carpeta, 'libro.txt')
        with open(ruta, 'w', encoding='utf-8') as f:
            f.write(texto_tonos(0, 6))
        t = time.monotonic()
        assert ctl(b, '--espera', 'fichero', ruta)[0] == 0
        time.sleep(0.3)
        assert [k for k in b.numeros(t) if k is not None] == list(range(6)), b.numeros(t)
        assert "'DDELink': <'StopSpeaking'>" in dicho()
        with open(ruta, 'w', encoding='utf-8') as f:
            f.write(texto_tonos(0, 60))
        t = time.monotonic()
        ctl(b, 'fichero', ruta)
        b.espera_palabra(3, desde=t)
        b.tecla('ctrl+2')  # keys wait while a file is spoken
        b.espera_palabra(8, desde=t)
        assert len(b.motores()) == 1, 'the other family, whose files have a worker of their own, has read it'
        assert ctl(b, '--plazo', '5', 'habla', 'n70')[0] == 0  # accepted, and never carried out
        t = time.monotonic()
        assert b.termina_lector() == 0
        assert time.monotonic() - t < 3
        assert 70 not in b.numeros(t)


def _salir_por_el_bus(b, servicio):
    """Chooses "Salir" in the icon's menu as a panel does that draws the menu itself."""
    ruta = gdbus(b, '-d', servicio, '-o', '/StatusNotifierItem', '-m', 'org.freedesktop.DBus.Properties.Get',
                 'org.kde.StatusNotifierItem', 'Menu').split("'")[1]
    arbol = gdbus(b, '-d', servicio, '-o', ruta, '-m', 'com.canonical.dbusmenu.GetLayout', '0', '1', '[]')
    numero = re.search(r"\((\d+), \{(?:(?!\(\d+, \{).)*'label': <'Salir'>", arbol).group(1)
    gdbus(b, '-d', servicio, '-o', ruta, '-m', 'com.canonical.dbusmenu.Event', numero, 'clicked', '<0>', '0')


@caso
def salir_del_menu_del_panel_corta_el_fichero_que_se_lee():
    from casos.bandeja import _Vigilante
    for ajustes in ({}, SAPI5):
        with Banco(arranca=False, ajustes=ajustes) as b:
            b.escritorio.mata_bandeja()
            vigilante = _Vigilante(b)
            espera(lambda: 'en el bus' in vigilante.dicho(), 10, que='the watcher')
            b.arranca_lector()
            espera_lector(b)
            servicio = espera(vigilante.registrado, 10, que='the registration')
            ruta = os.path.join(b.escritorio.carpeta, 'libro.txt')
            with open(ruta, 'w', encoding='utf-8') as f:
                f.write(texto_tonos(0, 60))
            t = time.monotonic()
            ctl(b, 'fichero', ruta)
            b.espera_palabra(3, desde=t)
            assert len(b.motores()) == (1 if ajustes else 2), b.motores()
            t = time.monotonic()
            _salir_por_el_bus(b, servicio)
            assert b.lector.wait(5) == 0
            m = b.silencio_desde(t, t + 2.0)
            assert m is None or m < 1.5, f'sound for {m:.3f} s after the choice'


@caso
def con_el_bus_parado_ondalisctl_se_atiene_a_su_plazo():
    with Banco() as b:
        espera_lector(b)
        b.escritorio.para_bus()
        antes = time.monotonic()
        codigo, error = ctl(b, '--plazo', '1', 'habla', 'n1')
        assert codigo == 4 and 'no contesta' in error, (codigo, error)
        assert time.monotonic() - antes < 4
        b.escritorio.sigue_bus()
        t = time.monotonic()
        assert ctl(b, '--espera', 'habla', 'n1', 'n2')[0] == 0
        time.sleep(0.3)
        en_orden([k for k in b.numeros(t) if k is not None], [1, 2])


@caso
def el_bus_se_cae_y_vuelve_y_el_lector_sigue():
    with Banco() as b:
        espera_lector(b)
        t = b.copia(texto_tonos(0, 30))
        b.espera_palabra(2)
        b.escritorio.mata_bus()
        b.espera_palabra(8)  # what is being read goes on
        b.escritorio.arranca_bus()
        espera_lector(b)
        b.sigue_vivo()
        t = time.monotonic()
        assert ctl(b, '--espera', 'habla', texto_tonos(50, 4))[0] == 0
        time.sleep(0.3)
        assert [k for k in b.numeros(t) if k is not None and k >= 50] == [50, 51, 52, 53], b.numeros(t)


@caso
def los_mandos_del_escritorio_gobiernan_la_lectura():
    with Banco() as b:
        espera_lector(b)

        def manda(metodo):
            gdbus(b, '-d', MPRIS, '-o', '/org/mpris/MediaPlayer2', '-m', 'org.mpris.MediaPlayer2.Player.' + metodo)

        def lee(propiedad):
            return gdbus(b, '-d', MPRIS, '-o', '/org/mpris/MediaPlayer2', '-m', 'org.freedesktop.DBus.Properties.Get',
                         'org.mpris.MediaPlayer2.Player', propiedad)
        assert 'Stopped' in lee('PlaybackStatus')
        b.copia(texto_tonos(0, 60))
        b.espera_palabra(3)
        assert 'Playing' in lee('PlaybackStatus')
        assert 'n0 n1 n2 n3' in lee('Metadata')
        manda('Pause')
        espera(lambda: 'Paused' in lee('PlaybackStatus'), 3, que='the pause')
        b.espera_silencio(0.2, 2)  # the last samples reach the ear behind the state's change
        b.calla(0.8)
        t = time.monotonic()
        manda('PlayPause')
        b.espera_sonido(3, desde=t)
        manda('Next')
        b.espera_palabra(16, 10)  # ten words ahead of where it was
        manda('Stop')
        espera(lambda: 'Stopped' in lee('PlaybackStatus'), 3, que='the stop')
        t = time.monotonic()
        manda('Play')
        b.espera_palabra(0, desde=t)


@caso
def una_orden_arranca_el_lector():
    with Banco(arranca=False) as b:
        servicios = os.path.join(b.escritorio.entorno['XDG_DATA_HOME'], 'dbus-1', 'services')
        os.makedirs(servicios)
        # The bus starts what it is told with the environment of its own start.
        tono = os.path.join(OBRA, 'tests', 'ondalis-motor-tono')
        with open(os.path.join(servicios, 'com.ferrano.Ondalis.service'), 'w', encoding='utf-8') as f:
            f.write('[D-BUS Service]\nName=com.ferrano.Ondalis\n'
                    f'Exec=/usr/bin/env ONDALIS_MOTOR={tono} DISPLAY={b.escritorio.entorno["DISPLAY"]} {PROGRAMA}\n')
        b.escritorio.mata_bus()
        b.escritorio.arranca_bus()
        t = time.monotonic()
        assert ctl(b, '--espera', 'habla', texto_tonos(0, 5)) == (0, '')
        time.sleep(0.3)
        en_orden(b.numeros(t), range(5))
        pid = int(gdbus(b, '-d', 'org.freedesktop.DBus', '-o', '/org/freedesktop/DBus',
                        '-m', 'org.freedesktop.DBus.GetConnectionUnixProcessID',
                        'com.ferrano.Ondalis').split()[1].strip(',)'))
        os.kill(pid, signal.SIGTERM)
        espera(lambda: not hay_lector(b), 5, que='the reader to end')
