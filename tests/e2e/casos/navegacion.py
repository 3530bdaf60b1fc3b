"""The keys that act on a reading: pause, stop, repeat, advance, retreat; held down, or held by another program."""
import time

from arnes.banco import Banco, en_orden, texto_tonos
from arnes.equis import Equis
from arnes.procesos import espera

CASOS = {}
CON_SONIDOS = {'General': {'UtilizaSonidos': 'True'}}


def caso(f):
    CASOS[f.__name__] = f
    return f


@caso
def una_pausa_de_10_s_sigue_en_la_misma_palabra():
    with Banco() as b:
        t = b.copia(texto_tonos(0, 20))
        b.espera_palabra(7)
        pausa = b.tecla('ctrl+1')
        time.sleep(0.1)
        antes = b.numeros(t, pausa + 0.1)
        b.calla(10)
        sigue = b.tecla('ctrl+1')
        b.espera_sonido(2, desde=sigue)
        b.espera_silencio()
        despues = b.numeros(sigue)
        assert antes[-1] == 7 and despues[0] in (7, 8), (antes, despues)
        # Nothing is lost: the word that was cut goes on at the very sample.
        dura = sum(p.fin - p.inicio for p in b.oye_palabras(t) if p.k == 7)
        assert 0.14 < dura < 0.19, f'word 7 sounded {dura:.3f} s in all'
        en_orden(antes + despues, range(20))


@caso
def una_parada_del_usuario_suena_una_sola_vez_como_fin():
    with Banco(ajustes=CON_SONIDOS) as b:
        t = b.copia(texto_tonos(0, 40))
        b.espera_palabra(6)
        b.tecla('ctrl+2')
        b.espera_silencio(1.0)
        assert len(b.sonidos('DETENER', t)) == 1, b.sonidos('DETENER', t)
        t = b.tecla('ctrl+3')
        b.espera_palabra(5)
        b.tecla('ctrl+1')
        time.sleep(0.8)
        b.tecla('ctrl+2')  # a stop in the pause
        b.espera_silencio(1.0)
        assert len(b.sonidos('DETENER', t)) == 1, b.sonidos('DETENER', t)


@caso
def el_fin_de_un_texto_suena_una_sola_vez_como_fin():
    with Banco(ajustes=CON_SONIDOS) as b:
        t = b.copia(texto_tonos(0, 10))
        b.espera_palabra(9)
        b.espera_silencio(1.2)
        assert len(b.sonidos('DETENER', t)) == 1, b.sonidos('DETENER', t)


@caso
def repetir_lee_el_ultimo_texto_desde_su_comienzo():
    with Banco() as b:
        t = b.copia(texto_tonos(30, 12))
        b.espera_sonido(3, desde=t)
        b.espera_silencio()
        t = b.tecla('ctrl+3')
        b.espera_sonido(3, desde=t)
        b.espera_silencio()
        en_orden(b.numeros(t), range(30, 42))


@caso
def avanzar_salta_diez_palabras_y_retroceder_vuelve_diez():
    with Banco() as b:
        b.copia(texto_tonos(0, 80))
        b.espera_palabra(5)
        t = b.tecla('ctrl+4')
        b.espera_palabra(17)
        oidas = [k for k in b.numeros(t + 0.05) if k is not None]
        assert oidas[:3] == [15, 16, 17], oidas
        b.espera_palabra(25)
        t = b.tecla('ctrl+5')
        b.espera_palabra(17)
        oidas = [k for k in b.numeros(t + 0.05) if k is not None]
        assert oidas[:3] == [15, 16, 17], oidas


@caso
def retroceder_al_comienzo_empieza_de_nuevo_y_avanzar_tras_el_fin_termina():
    with Banco() as b:
        b.copia(texto_tonos(0, 25))
        b.espera_palabra(4)
        t = b.tecla('ctrl+5')
        b.espera_palabra(2)
        assert b.numeros(t + 0.05)[:3] == [0, 1, 2], b.numeros(t + 0.05)
        b.espera_palabra(17)
        t = b.tecla('ctrl+4')
        time.sleep(0.15)
        b.calla(1.2)
        t = b.tecla('ctrl+3')  # it has ended: repeat is possible again
        b.espera_palabra(1)
        assert b.numeros(t)[:2] == [0, 1]


@caso
def avanzar_en_pausa_reanuda_en_la_palabra_nueva():
    with Banco() as b:
        b.copia(texto_tonos(0, 60))
        b.espera_palabra(6)
        b.tecla('ctrl+1')
        time.sleep(0.5)
        t = b.tecla('ctrl+4')
        b.espera_palabra(18)
        oidas = b.numeros(t)
        assert 16 in oidas[:2] and oidas[-1] >= 18, oidas


@caso
def la_pausa_mantenida_actua_una_vez_y_el_avance_mantenido_se_repite():
    with Banco() as b:
        b.copia(texto_tonos(0, 190))
        b.espera_palabra(4)
        t = b.mantiene('ctrl+1', 1.5)
        assert not b.oye_palabras(t + 0.2, t + 1.5), 'the pause was undone while its key was held'
        b.calla(0.5)
        t = b.tecla('ctrl+1')
        b.espera_sonido(2, desde=t)
        b.espera_palabra(8)
        b.mantiene('ctrl+4', 1.2)
        suelta = time.monotonic()
        time.sleep(0.5)
        llega = [k for k in b.numeros(suelta + 0.3) if k is not None]
        assert not llega or llega[0] >= 28, f'only {llega} after a second of advance'


@caso
def la_combinacion_de_otro_programa_es_suya_hasta_que_la_suelta():
    with Banco(arranca=False) as b:
        otro = Equis(b.escritorio.entorno['DISPLAY'])
        otro.acapara('ctrl+2')
        b.arranca_lector()
        b.copia(texto_tonos(0, 150))
        b.espera_palabra(4)
        b.tecla('ctrl+2')
        b.espera_palabra(8)  # the reading goes on
        assert otro.pulsaciones_acaparadas() == 1
        t = b.tecla('ctrl+1')  # the other keys work
        assert b.silencio_desde(t, t + 0.4) is None or b.silencio_desde(t, t + 0.4) < 0.3
        b.calla(0.4)
        b.tecla('ctrl+1')
        b.espera_sonido(2)
        otro.suelta('ctrl+2')

        def callado():
            t = b.tecla('ctrl+2')
            return not b.oye_palabras(t + 0.3, t + 0.9)
        espera(callado, 15, paso=0.5, que='the key to work once it is free')
        otro.cierra()


@caso
def una_tecla_sin_efecto_se_avisa_de_viva_voz():
    with Banco('real', {'Teclas': {'UtilizaAvisos': '1'}}) as b:
        for tecla in ('ctrl+1', 'ctrl+2', 'ctrl+4', 'ctrl+5'):
            t = b.tecla(tecla)
            primera = b.espera_sonido(3, desde=t)
            ultima = b.espera_silencio(0.6)
            assert 0.7 < ultima - primera < 5, f'{tecla}: a notice of {ultima - primera:.2f} s'


@caso
def una_tecla_sin_efecto_suena_a_error():
    with Banco(ajustes={'General': {'UtilizaSonidos': 'True'}, 'Teclas': {'UtilizaAvisos': '0'}}) as b:
        t = b.tecla('ctrl+2')
        b.espera_sonido(3, desde=t)
        b.espera_silencio()
        assert len(b.sonidos('ERROR', t)) == 1


@caso
def las_teclas_de_velocidad_cambian_la_siguiente_lectura_y_no_la_presente():
    """Ctrl+Alt+Fn switches terminals in this keymap: the reader listens to Super+Ctrl+Fn instead."""
    with Banco(ajustes={'Teclas': {'UtilizaAvisos': '1'}}) as b:
        t = b.tecla('super+ctrl+F10')
        b.espera_sonido(3, desde=t)
        b.espera_silencio()
        assert 195 in b.numeros(t), f'notice {b.numeros(t)}'
        assert b.ajuste('Voz', 'Velocidad') == '195'
        t = b.copia(texto_tonos(0, 30))
        b.espera_palabra(5)
        b.tecla('super+ctrl+F9')  # during a reading: silence, no change
        b.espera_silencio()
        oidas = b.oye_palabras(t)
        en_orden([p.k for p in oidas], range(30))
        paso = (oidas[29].inicio - oidas[0].inicio) / 29
        assert abs(paso - 0.2 * 170 / 195) < 0.004, f'{paso:.4f} s a word'
        assert b.ajuste('Voz', 'Velocidad') == '195'
        t = b.tecla('super+ctrl+F9')
        b.espera_sonido(3, desde=t)
        b.espera_silencio()
        assert 170 in b.numeros(t), f'notice {b.numeros(t)}'


@caso
def alt_1_apaga_y_enciende():
    with Banco() as b:
        b.copia(texto_tonos(0, 40))
        b.espera_palabra(5)
        t = b.tecla('alt+1')
        m = b.silencio_desde(t, t + 0.5)
        assert m is None or m < 0.3
        b.copia(texto_tonos(60, 10))
        b.calla(1.2)
        b.tecla('alt+1')
        b.calla(1.2)  # what was copied while inactive isn't read now
        t = b.copia(texto_tonos(80, 10))
        b.espera_palabra(89)
        b.espera_silencio()
        en_orden(b.numeros(t), range(80, 90))
