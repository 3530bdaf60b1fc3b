"""Message boxes, spoken notices and the family of SAPI 5 voices, in the whole program."""
import os
import re
import signal
import time

from arnes.banco import Banco, en_orden, texto_tonos
from arnes.procesos import espera, vivo
from casos.arranque import ventanas
from casos.bandeja import _Vigilante
from casos.programa import _abre_menu, _icono

CASOS = {}

ESPEAK = {'Voz': {'FabricanteActivo': 'eSpeak NG', 'VozActiva': 'Spanish (Spain)'}}
TONO = {'Voz': {'FabricanteActivo': 'Pruebas', 'VozActiva': 'Tono español'}}
ROTO = '<rate speed=>hola, esto no vale</rate>'


def caso(f):
    CASOS[f.__name__] = f
    return f


def _con(*ajustes):
    junto = {}
    for uno in ajustes:
        for seccion, valores in uno.items():
            junto.setdefault(seccion, {}).update(valores)
    return junto


def _cajas(b):
    """Ids of the message boxes on the screen, by their title; the splash has it too, but is hidden by then."""
    cajas = []
    for linea in b.escritorio.arbol():
        m = re.match(r'\s+(0x[0-9a-f]+) "Ondalis": .* (\d+)x(\d+)\+', linea)
        if m and int(m.group(2)) > 100 and b'IsViewable' in b.escritorio.procesos.corre(
                ['xwininfo', '-id', m.group(1)], comprueba=False):
            cajas.append(m.group(1))
    return cajas


def _abre_caja(b, texto=ROTO):
    b.copia(texto)
    caja = espera(lambda: _cajas(b), 5, que='the message box')[0]

    def en_foco():
        # Before any window has had the focus there is no such property.
        activa = re.search(r'# (0x[0-9a-f]+)',
                           b.escritorio.procesos.corre(['xprop', '-root', '_NET_ACTIVE_WINDOW']).decode())
        return activa and int(activa.group(1), 16) == int(caja, 16)
    espera(en_foco, 5, que='the focus in the message box')
    return caja


def _registro(b):
    ruta = os.path.join(b.escritorio.carpeta, 'state', 'ondalis', 'Ondalis.log')
    if not os.path.isfile(ruta):
        return ''
    with open(ruta, encoding='utf-8') as f:
        return f.read()


# Broken markup: the message box.

@caso
def el_marcado_roto_se_dice_en_una_caja_que_enter_cierra_y_se_sigue_leyendo():
    with Banco(ajustes=TONO) as b:
        b.copia(texto_tonos(0, 8))
        b.espera_palabra(7)
        b.espera_silencio()
        t = time.monotonic()
        _abre_caja(b)
        captura = os.environ.get('ONDALIS_CAPTURA')
        if captura:
            time.sleep(0.3)
            b.escritorio.captura(captura)
        assert not b.oye_palabras(t), 'a refused text was heard'
        b.tecla('Return')
        espera(lambda: not _cajas(b), 5, que='the box to close')
        b.calla(1.0)  # it isn't tried again
        assert not _cajas(b)
        t = b.copia(texto_tonos(20, 8))
        b.espera_palabra(27)
        b.espera_silencio()
        en_orden(b.numeros(t), range(20, 28))
        t = b.tecla('ctrl+3')
        b.espera_palabra(27)
        b.espera_silencio()
        en_orden(b.numeros(t), range(20, 28))


@caso
def con_una_caja_abierta_se_lee_lo_que_se_copia_y_las_teclas_obedecen():
    with Banco(ajustes=TONO) as b:
        _abre_caja(b)
        t = b.copia(texto_tonos(0, 40))
        b.espera_palabra(5, desde=t)
        t = b.tecla('ctrl+2')
        m = b.silencio_desde(t, t + 0.5)
        assert m is None or m < 0.1, f'silence only after {m:.3f} s'
        assert _cajas(b)


@caso
def una_tecla_que_esperaba_a_un_aviso_actua_aunque_la_anterior_abra_una_caja():
    """Both keys wait for the notice's end; the first one then opens a box, with the tick switched off."""
    with Banco(ajustes=_con(TONO, {'General': {'UtilizaSonidos': 'True', 'SonidosPortapapeles': 'False'},
                                   'Teclas': {'UtilizaAvisos': '1'}})) as b:
        b.copia(texto_tonos(0, 8))
        b.espera_palabra(7)
        b.espera_silencio()
        _abre_caja(b)
        b.tecla('Return')
        espera(lambda: not _cajas(b), 5, que='the box to close')
        t = b.tecla('super+ctrl+F10')
        b.espera_sonido(3, desde=t)
        b.tecla('ctrl+3')
        b.tecla('alt+1')
        espera(lambda: _cajas(b), 5, que='the box of the repeat')
        b.espera_silencio(1.0)
        assert len(b.sonidos('DESACTIVAR', t)) == 1, 'the second key waits for the box'
        assert _cajas(b)
        b.tecla('Return')
        espera(lambda: not _cajas(b), 5, que='the box to close')
        b.copia(texto_tonos(20, 8))
        b.calla(1.2)  # switched off stays switched off


def _acaba_con_caja(b, acaba):
    espera(b.motores, que='a worker')
    pids = b.motores()
    acaba()
    assert b.lector.wait(5) == 0
    espera(lambda: not any(vivo(p) for p in pids), 2, que='the workers to end')


@caso
def sigterm_con_la_caja_del_marcado_termina_bien():
    with Banco('real', ESPEAK) as b:
        _abre_caja(b)
        _acaba_con_caja(b, lambda: b.lector.send_signal(signal.SIGTERM))


@caso
def sigterm_con_dos_cajas_una_sobre_otra_termina_bien():
    with Banco(ajustes=TONO) as b:
        _abre_caja(b)
        b.copia(ROTO + ' otra vez')
        espera(lambda: len(_cajas(b)) == 2, 5, que='the second box')
        _acaba_con_caja(b, lambda: b.lector.send_signal(signal.SIGTERM))


@caso
def sigterm_con_la_caja_de_una_repeticion_termina_bien():
    """The repeat opens its box inside a key's handler, with the tick switched off."""
    with Banco(ajustes=TONO) as b:
        b.copia(texto_tonos(0, 8))
        b.espera_palabra(7)
        b.espera_silencio()
        _abre_caja(b)
        b.tecla('Return')
        espera(lambda: not _cajas(b), 5, que='the box to close')
        b.tecla('ctrl+3')  # the refused text is the last one
        espera(lambda: _cajas(b), 5, que='the box of the repeat')
        _acaba_con_caja(b, lambda: b.lector.send_signal(signal.SIGTERM))


def _gdbus(b, quien, camino, metodo, *argumentos):
    return b.escritorio.procesos.corre(
        ['gdbus', 'call', '--session', '-d', quien, '-o', camino, '-m', metodo, *argumentos]).decode()


@caso
def salir_del_menu_de_un_panel_moderno_con_la_caja_del_marcado_termina_bien():
    """Such a host draws the menu itself and asks for it on the bus, so a modal box doesn't stand in its way."""
    with Banco(arranca=False, ajustes=TONO) as b:
        b.escritorio.mata_bandeja()
        vigilante = _Vigilante(b)
        # One that comes while the reader starts would see a first icon go and its successor come.
        espera(lambda: 'true' in _gdbus(b, 'org.freedesktop.DBus', '/', 'org.freedesktop.DBus.NameHasOwner',
                                        'org.kde.StatusNotifierWatcher'), 10, que='the watcher')
        b.arranca_lector()

        def menu_del_icono():
            quien = vigilante.registrado()
            try:
                dado = quien and _gdbus(b, quien, '/StatusNotifierItem', 'org.freedesktop.DBus.Properties.Get',
                                        'org.kde.StatusNotifierItem', 'Menu')
            except AssertionError:
                return None
            return dado and (quien, re.search(r"objectpath '([^']+)'", dado).group(1))
        quien, menu = espera(menu_del_icono, 10, que='the icon and its menu')
        _gdbus(b, quien, menu, 'com.canonical.dbusmenu.AboutToShow', '0')
        entradas = _gdbus(b, quien, menu, 'com.canonical.dbusmenu.GetLayout', '0', '--', '-1', '[]')
        assert "<'Desactivar (Alt + 1)'>" in entradas, entradas
        salir = re.findall(r"<\((\d+), \{[^{}]*'label': <'Salir'>", entradas)
        assert len(salir) == 1, entradas
        _abre_caja(b)
        _acaba_con_caja(
            b, lambda: _gdbus(b, quien, menu, 'com.canonical.dbusmenu.Event', salir[0], 'clicked', "<''>", '0'))


# A SAPI 5 voice in the whole program.

@caso
def una_voz_sapi5_de_verdad_lee_para_sigue_y_calla():
    with Banco('real', ESPEAK) as b:
        t = b.copia('Esta es una lectura con una voz de la otra familia, bastante larga, para que dé tiempo a pararla y '
                    'a seguir con ella antes de que termine de contar lo poco que tiene que contar en esta mañana.')
        primera = b.espera_sonido(3, desde=t)
        assert primera - t < 0.6, f'first sound {primera - t:.3f} s after the copy'
        time.sleep(1.5)
        pausa = b.tecla('ctrl+1')
        m = b.silencio_desde(pausa, pausa + 0.6)
        assert m is None or m < 0.1, f'silence only after {m:.3f} s'
        sigue = b.tecla('ctrl+1')
        b.espera_sonido(1.5, desde=sigue)
        time.sleep(1)
        para = b.tecla('ctrl+2')
        m = b.silencio_desde(para, para + 0.6)
        assert m is None or m < 0.1, f'silence only after {m:.3f} s'
        b.calla(0.8)


@caso
def una_voz_sapi5_se_para_en_pausa_y_lee_despues():
    with Banco(ajustes=TONO) as b:
        b.copia(texto_tonos(0, 40))
        b.espera_palabra(5)
        b.tecla('ctrl+1')
        time.sleep(0.3)
        b.tecla('ctrl+2')
        b.calla(0.8)  # the resume before the stop isn't heard
        t = b.copia(texto_tonos(50, 10))
        b.espera_palabra(59)
        b.espera_silencio()
        en_orden(b.numeros(t), range(50, 60))
        t = b.tecla('ctrl+3')
        b.espera_palabra(53)
        b.tecla('ctrl+1')
        time.sleep(0.2)
        b.calla(0.5)
        b.tecla('ctrl+1')
        b.espera_palabra(59)
        b.espera_silencio()
        en_orden(b.numeros(t), range(50, 60))


@caso
def un_aviso_sapi5_detiene_las_teclas_hasta_que_acaba():
    """The notice of the speed holds the second key back: two notices, none cut, each with its value."""
    with Banco(ajustes=_con(TONO, {'Teclas': {'UtilizaAvisos': '1'}})) as b:
        t = b.tecla('super+ctrl+F10')
        b.espera_sonido(3, desde=t)
        b.tecla('super+ctrl+F10')
        b.espera_silencio(1.0)
        numeros = [k for k in b.numeros(t) if k in (11, 12)]
        assert numeros == [11, 12], f'notices {b.numeros(t)}'
        assert b.ajuste('Voz', 'Velocidad') == '2'
        t = b.copia(texto_tonos(20, 8))  # what follows a notice is read as ever
        b.espera_palabra(27)
        b.espera_silencio()
        en_orden(b.numeros(t), range(20, 28))
        t = b.tecla('super+ctrl+F9')
        b.espera_sonido(3, desde=t)
        b.espera_silencio(1.0)
        assert 11 in b.numeros(t)
        assert b.ajuste('Voz', 'Velocidad') == '1'


@caso
def avanzar_y_retroceder_con_una_voz_sapi5():
    with Banco(ajustes=TONO) as b:
        b.copia(texto_tonos(0, 60))
        b.espera_palabra(3)
        b.tecla('ctrl+4')
        b.espera_palabra(15)
        t = b.tecla('ctrl+5')
        time.sleep(0.6)
        oidas = [k for k in b.numeros(t + 0.1) if k is not None]
        assert 4 <= oidas[0] <= 8, oidas
        b.tecla('ctrl+2')


# Notices.

@caso
def cada_tecla_rehusada_en_reposo_suena_a_error_y_se_avisa_sin_ser_una_lectura():
    """First the sound, then the notice; a second refused key afterwards finds the menu as it was."""
    with Banco('real', {'General': {'UtilizaSonidos': 'True'}, 'Teclas': {'UtilizaAvisos': '1'}}) as b:
        for tecla in ('ctrl+1', 'ctrl+2', 'ctrl+3', 'ctrl+4', 'ctrl+5', 'Print'):
            t = b.tecla(tecla)
            b.espera_sonido(3, desde=t)
            ultima = b.espera_silencio(0.8)
            errores = b.sonidos('ERROR', t, ultima + 0.05)
            assert len(errores) == 1, f'{tecla}: {len(errores)} times ERROR'
            assert errores[0] - t < 0.3, f'{tecla}: ERROR {errores[0] - t:.3f} s after the key'
            assert ultima - errores[0] > 0.9, f'{tecla}: no notice behind the sound'
            assert not b.sonidos('DETENER', t), f'{tecla}: its notice ended like a reading'


@caso
def apagado_cada_tecla_dice_que_esta_inactivo():
    with Banco('real', {'General': {'UtilizaSonidos': 'True', 'ActivaAlArrancar': 'False'},
                        'Teclas': {'UtilizaAvisos': '1'}}) as b:
        b.espera_silencio(0.8)
        for tecla in ('ctrl+2', 'ctrl+3', 'Print', 'super+ctrl+F10'):
            t = b.tecla(tecla)
            b.espera_sonido(3, desde=t)
            ultima = b.espera_silencio(0.8)
            assert len(b.sonidos('ERROR', t, ultima + 0.05)) == 1, tecla
            assert 0.9 < ultima - t < 4, f'{tecla}: {ultima - t:.2f} s'
        assert b.ajuste('Voz', 'Velocidad') is None


@caso
def cada_orden_tiene_su_sonido_una_vez_y_en_su_sitio():
    with Banco(ajustes={'General': {'UtilizaSonidos': 'True'}, 'Teclas': {'UtilizaAvisos': '0'}}) as b:
        b.copia(texto_tonos(0, 60))
        b.espera_palabra(5)

        def suena(tecla, *nombres):
            t = b.tecla(tecla)
            for nombre in nombres:
                espera(lambda: b.sonidos(nombre, t), 5, paso=0.1, que=f'{nombre} after {tecla}')
            time.sleep(0.7)  # a second time would be heard by now
            for nombre in ('ACTIVAR', 'DESACTIVAR', 'ERROR', 'VOLUMEN', 'DETENER', 'PAUSA', 'REPETIRLECTURA'):
                veces = len(b.sonidos(nombre, t))
                assert veces == (nombre in nombres), f'{nombre} heard {veces} times after {tecla}'
        suena('ctrl+1', 'PAUSA')
        suena('Print', 'ERROR')  # refused while a reading stands, which is left as it was
        suena('ctrl+3', 'ERROR')
        suena('ctrl+1', 'PAUSA')
        suena('ctrl+2', 'DETENER')
        suena('ctrl+3', 'REPETIRLECTURA')
        b.espera_palabra(25)  # a word that can't have gone by while the sound was listened for
        suena('alt+1', 'DESACTIVAR')  # it stops the reading without the sound of an end
        suena('ctrl+2', 'ERROR')
        suena('alt+1', 'ACTIVAR')
        suena('super+ctrl+F10', 'VOLUMEN')
        suena('ctrl+3', 'ERROR')  # being switched off has disabled the repeat


@caso
def sigterm_durante_un_aviso_sapi5_termina_bien():
    with Banco('real', _con(ESPEAK, {'Teclas': {'UtilizaAvisos': '1'}})) as b:
        t = b.tecla('Print')
        b.espera_sonido(3, desde=t)
        pids = b.motores()
        b.lector.send_signal(signal.SIGTERM)
        assert b.lector.wait(15) == 0  # the notice is spoken to its end
        espera(lambda: not any(vivo(p) for p in pids), 2, que='the workers to end')


# The program off, and the tray.

@caso
def con_activa_al_arrancar_apagado_empieza_sordo_y_alt_1_lo_enciende():
    with Banco(ajustes={'General': {'ActivaAlArrancar': 'False'}}) as b:
        b.copia(texto_tonos(0, 10))
        b.calla(1.2)
        captura = os.environ.get('ONDALIS_CAPTURA')
        if captura:
            _abre_menu(b)
            b.escritorio.captura(captura)
            b.tecla('Escape')
        b.tecla('alt+1')
        b.calla(1.2)
        t = b.copia(texto_tonos(20, 10))
        b.espera_palabra(29)
        b.espera_silencio()
        en_orden(b.numeros(t), range(20, 30))


@caso
def el_doble_clic_en_la_bandeja_pide_la_configuracion_tambien_apagado():
    with Banco(ajustes={'General': {'ActivaAlArrancar': 'False'}}) as b:
        x, y = espera(lambda: _icono(b), 10, que='the icon in the tray')
        time.sleep(0.3)
        b.escritorio.equis.raton(x, y, 1)
        b.escritorio.equis.raton(x, y, 1)
        espera(lambda: ventanas(b, 'Configuración Ondalis'), 10, que='the window')
        time.sleep(0.6)
        assert len(ventanas(b, 'Configuración Ondalis')) == 1
        b.tecla('Escape')
        espera(lambda: not ventanas(b, 'Configuración Ondalis'), 5, que='the window to go')
        b.tecla('super+ctrl+F1')
        espera(lambda: ventanas(b, 'Configuración Ondalis'), 10, que='the window by its key')


# Starting.

@caso
def arrancado_sin_servidor_de_sonido_se_oye_cuando_llega():
    with Banco(arranca=False, ajustes={'General': {'UtilizaSonidos': 'True'}}) as b:
        b.escritorio.mata_sonido()
        b.arranca_lector(espera_listo=False)
        espera(lambda: _cajas(b), 15, que='the question')
        time.sleep(0.3)
        b.tecla('s')
        b.espera_listo()
        b.copia(texto_tonos(0, 10))
        time.sleep(3)  # it is read to nobody
        b.sigue_vivo()
        b.escritorio.arranca_sonido()
        time.sleep(2.5)
        t = b.copia(texto_tonos(40, 15))
        b.espera_palabra(54, 15)
        b.espera_silencio()
        oidas = [k for k in b.numeros(t) if k is not None]
        en_orden(oidas, range(40, 55))
        t = b.tecla('ctrl+2')
        b.espera_sonido(3, desde=t)
        assert len(b.sonidos('ERROR', t, b.espera_silencio() + 0.05)) == 1
        assert b.termina_lector() == 0


@caso
def clear_y_nosapi5_en_cualquier_caja_de_letra_arrancan_de_nuevas():
    with Banco(arranca=False, ajustes=_con(TONO, {'Voz': {'Velocidad': '3'}, 'Teclas': {'UtilizaAvisos': '1'}})) as b:
        b.arranca_lector(argumentos=['-CLEAR', '-NoSapi5'])
        assert b.ajuste('Voz', 'FabricanteActivo') is None
        t = b.tecla('super+ctrl+F10')
        b.espera_sonido(3, desde=t)
        b.espera_silencio()
        assert 195 in b.numeros(t), f'notice {b.numeros(t)}'  # the "IBM" voice, 25 above its 170
        assert b.ajuste('Voz', 'Velocidad') == '195'
