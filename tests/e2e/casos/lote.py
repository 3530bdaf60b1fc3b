"""Batch jobs: a text or a file from the command line is heard, or written into an audio file, and nothing stays."""
import os
import signal
import socket
import subprocess
import time
import wave

import numpy as np

from arnes import sonido
from arnes.banco import OBRA, PROGRAMA, Banco, en_orden, texto_tonos
from arnes.procesos import espera, hijos, vivo
from casos.arranque import foto, ventanas

CASOS = {}


def caso(f):
    CASOS[f.__name__] = f
    return f


def _banco(motor='tono', ajustes=None, arranca=False):
    b = Banco(arranca=arranca, motor=motor, ajustes=ajustes)
    carpeta = os.path.join(b.escritorio.carpeta, 'Mi carpeta')  # the caller's own
    os.mkdir(carpeta)
    b.aqui = lambda *partes: os.path.join(carpeta, *partes)
    return b


def _entorno(b, pantalla=True, **mas):
    entorno = dict(b.escritorio.entorno)
    if b.motor == 'tono':
        entorno['ONDALIS_MOTOR'] = os.path.join(OBRA, 'tests', 'ondalis-motor-tono')
    if not pantalla:
        del entorno['DISPLAY']
    entorno.update(mas)
    return entorno


def _lanza(b, *argumentos, pantalla=True, **mas):
    return b.escritorio.procesos.arranca([PROGRAMA, *argumentos], 'lote', _entorno(b, pantalla, **mas), cwd=b.aqui(),
                                         stdout=subprocess.PIPE, stderr=subprocess.PIPE)


def _acaba(p, limite=20, estado=0):
    """The job's end, wanted with that status and silent on standard output; returns standard error."""
    salida, error = p.communicate(timeout=limite)
    assert (p.returncode, salida) == (estado, b''), (p.returncode, salida, error)
    return error.decode()


def _hecho(p, limite=20):
    error = _acaba(p, limite)
    assert error == '', error


def _escribe(ruta, texto):
    with open(ruta, 'w', encoding='utf-8') as f:
        f.write(texto)
    return ruta


def _wav(ruta, ritmo=11025):
    """Its samples at the ear's rate."""
    with wave.open(ruta, 'rb') as w:
        assert (w.getnchannels(), w.getsampwidth(), w.getframerate()) == (1, 2, ritmo), w.getparams()
        x = np.frombuffer(w.readframes(w.getnframes()), dtype='<i2').astype(np.float64)
    n = round(len(x) * sonido.RITMO / ritmo)
    return np.fft.irfft(np.fft.rfft(x), n) * n / len(x) if ritmo != sonido.RITMO else x


def _palabras(ruta, ritmo=11025):
    return [p.k for p in sonido.palabras(_wav(ruta, ritmo), 0.0)]


def _en_carpeta(b):
    return sorted(os.listdir(b.aqui()))


def _nice(pid):
    with open(f'/proc/{pid}/stat', encoding='utf-8', errors='replace') as f:
        return int(f.read().rpartition(')')[2].split()[16])


def _motor(p):
    def hallado():
        for pid in hijos(p.pid):
            with open(f'/proc/{pid}/cmdline', 'rb') as f:
                if b'ondalis-motor' in f.read():
                    return pid
        return None
    return espera(hallado, 10, que='a worker of the job')


@caso
def un_texto_de_la_linea_se_oye_y_no_queda_nada():
    with _banco() as b:
        t = time.monotonic()
        p = _lanza(b, 'n3', 'n4 n5', '-nosapi5', 'n6')
        pid = _motor(p)
        prioridad = _nice(pid)
        _hecho(p)
        en_orden(b.numeros(t, time.monotonic()), [3, 4, 5, 6])
        assert prioridad == os.nice(0), prioridad
        assert not vivo(pid) and not ventanas(b) and not _en_carpeta(b)
        assert b.ajuste('Voz', 'FabricanteActivo') is None, 'a batch job has written settings'


@caso
def el_texto_de_la_linea_se_dice_en_mayusculas():
    # In small letters the words below do nothing; in capitals the engine dies of this one and the speech goes on.
    with _banco() as b:
        marca = _escribe(os.path.join(b.escritorio.carpeta, 'una-vez'), '')
        t = time.monotonic()
        _hecho(_lanza(b, 'n3 mata n4', ONDALIS_TONO_UNAVEZ=marca), 30)
        assert not os.path.exists(marca), 'the word was not in capitals'
        assert b.numeros(t)[-1] == 4


@caso
def un_texto_se_oye_con_el_motor_de_verdad():
    with _banco('real') as b:
        t = time.monotonic()
        _hecho(_lanza(b, 'buenos días a todos'))
        x, _ = b.escritorio.grabadora.muestras(t, time.monotonic())
        sonora = sum(f - i for i, f in sonido.tramos_sonoros(x)) / sonido.RITMO
        assert 0.7 < sonora < 4, f'{sonora:.2f} s of sound'


@caso
def un_fichero_se_oye_con_la_opcion_y_solo_en_la_linea():
    with _banco() as b:
        _escribe(b.aqui('Mi libro.txt'), 'n3 n4\nn5')
        for linea in (['-FileTxt', 'Mi libro.txt'], ['Mi libro.txt'], ['-filetxt', './Mi libro.txt', '-nosapi5']):
            t = time.monotonic()
            _hecho(_lanza(b, *linea))
            en_orden(b.numeros(t, time.monotonic()), [3, 4, 5])
        assert _en_carpeta(b) == ['Mi libro.txt']


@caso
def un_texto_a_wav_sin_pantalla_ni_servidor_de_sonido():
    for motor in ('tono', 'real'):
        with _banco(motor) as b, socket.socket(socket.AF_UNIX) as oreja:
            direccion = os.path.join(b.escritorio.carpeta, 'oreja')
            oreja.bind(direccion)
            oreja.listen()
            oreja.setblocking(False)
            _hecho(_lanza(b, 'n3 n4', '-outputfile', 'Saludo.WAV', pantalla=False, PULSE_SERVER='unix:' + direccion))
            if motor == 'tono':
                en_orden(_palabras(b.aqui('Saludo.WAV')), [3, 4])
            else:
                assert sonido.tramos_sonoros(_wav(b.aqui('Saludo.WAV')))
            assert _en_carpeta(b) == ['Saludo.WAV']
            try:
                oreja.accept()
            except BlockingIOError:
                continue
            raise AssertionError(f'the sound server was spoken to ({motor})')


@caso
def un_fichero_a_wav_con_baja_prioridad():
    with _banco() as b:
        _escribe(b.aqui('libro.txt'), (texto_tonos(0, 50) + '.\n') * 60)
        p = _lanza(b, '-filetxt', 'libro.txt', '-outputfile', 'libro.wav')
        pid = _motor(p)
        espera(lambda: _nice(pid) == 10, 5, que='the low priority')
        _hecho(p, 60)
        assert _en_carpeta(b) == ['libro.txt', 'libro.wav']
        en_orden(_palabras(b.aqui('libro.wav')), [k for _ in range(60) for k in range(50)])


@caso
def una_ruta_con_guion_se_corta_y_el_error_sale_en_una_caja():
    with _banco() as b:
        _escribe(b.aqui('mi-libro.txt'), 'n3')
        for linea in (['mi-libro.txt'], ['-filetxt', 'mi-libro.txt']):
            p = _lanza(b, *linea)
            espera(lambda: ventanas(b), 10, que='the message')
            time.sleep(0.3)
            foto(b, 'lote_no_encontrado')
            b.tecla('Return')
            _hecho(p)
            error = _acaba(_lanza(b, *linea, pantalla=False))
            assert error.startswith('ondalis: cVozECI: ') and '53' in error, error
        assert not b.oye_palabras()


@caso
def un_destino_que_existe_se_pregunta_si_y_no():
    with _banco() as b:
        for tecla, queda in (('Return', b'viejo'), ('n', b'viejo'), ('Escape', b'viejo'), ('s', None)):
            with open(b.aqui('a.wav'), 'wb') as f:
                f.write(b'viejo')
            p = _lanza(b, 'n3 n4', '-outputfile', 'a.wav')
            espera(lambda: ventanas(b), 10, que='the question')
            time.sleep(0.3)
            foto(b, 'lote_existe')
            b.tecla(tecla)
            _hecho(p)
            if queda:
                with open(b.aqui('a.wav'), 'rb') as f:
                    assert f.read() == queda, tecla
            else:
                en_orden(_palabras(b.aqui('a.wav')), [3, 4])
            assert _en_carpeta(b) == ['a.wav']


@caso
def sin_pantalla_la_respuesta_es_no_y_se_dice():
    with _banco() as b:
        _escribe(b.aqui('a.wav'), 'viejo')
        for mas in ({'pantalla': False}, {'DISPLAY': ':987'}):
            error = _acaba(_lanza(b, 'n3', '-outputfile', 'a.wav', **mas))
            assert error.startswith('ondalis: El fichero a.wav ya existe.\n¿Desea sobrescribirlo?'), error
            assert error.rstrip().endswith('No)'), error
        assert os.path.getsize(b.aqui('a.wav')) == 5


@caso
def un_destino_imposible_es_un_error_y_no_queda_nada():
    with _banco() as b:
        os.mkdir(b.aqui('carpeta'))
        for destino in ('no/existe/a.wav', 'carpeta', 'carpeta/x/a.wav', ''):
            error = _acaba(_lanza(b, 'n3', '-outputfile', destino, pantalla=False))
            assert error.startswith('ondalis: EjecutaLineaComandos: '), (destino, error)
            assert _en_carpeta(b) == ['carpeta'] and not os.listdir(b.aqui('carpeta'))


@caso
def mp3_no_esta_y_no_toca_nada():
    with _banco() as b:
        _escribe(b.aqui('a.mp3'), 'viejo')
        error = _acaba(_lanza(b, 'n3', '-outputfile', 'a.mp3', pantalla=False))
        assert error == 'ondalis: La grabación en MP3 no está disponible en esta versión.\n', error
        assert _en_carpeta(b) == ['a.mp3'] and os.path.getsize(b.aqui('a.mp3')) == 5


@caso
def un_documento_que_no_es_texto_da_su_error():
    with _banco() as b:
        _escribe(b.aqui('a.pdf'), '%PDF')
        error = _acaba(_lanza(b, 'a.pdf', '-outputfile', 'a.wav', pantalla=False))
        assert error == '', error  # no file of that whole name: it is a text, and spoken into the file
        en_orden(_en_carpeta(b), ['a.pdf', 'a.wav'])
        error = _acaba(_lanza(b, '-filetxt', 'a.pdf', '-outputfile', 'b.wav', pantalla=False))
        assert 'sólo se leen ficheros de texto' in error, error
        assert _en_carpeta(b) == ['a.pdf', 'a.wav']


@caso
def la_voz_sapi5_de_los_ajustes_habla_y_graba_a_su_calidad():
    voz = {'FabricanteActivo': 'Pruebas', 'VozActiva': 'Tono inglés', 'Velocidad': '10'}
    with _banco(ajustes={'Voz': voz, 'Grabar': {'CalidadkHz': '22050'}}) as b:
        t = time.monotonic()
        _hecho(_lanza(b, 'n3 <silence msec="300"/> n4'))
        oidas = [p for p in b.oye_palabras(t, time.monotonic()) if p.k is not None]
        en_orden([p.k for p in oidas], [3, 4])
        hueco = oidas[1].inicio - oidas[0].fin
        # Rate 10 is three times as fast: a word lasts 67 ms (four fifths of it sound) and its share of the gap 13.
        assert 0.28 < hueco < 0.40 and oidas[0].fin - oidas[0].inicio < 0.09, oidas
        _hecho(_lanza(b, 'n3 n4', '-outputfile', 'a.wav', pantalla=False))
        en_orden(_palabras(b.aqui('a.wav'), 22050), [3, 4])
        _escribe(b.aqui('libro.txt'), texto_tonos(10, 20))
        _hecho(_lanza(b, '-filetxt', 'libro.txt', '-outputfile', 'b.wav', pantalla=False))
        en_orden(_palabras(b.aqui('b.wav'), 22050), range(10, 30))
        assert _en_carpeta(b) == ['a.wav', 'b.wav', 'libro.txt']


@caso
def una_voz_sapi5_que_no_esta_es_un_error():
    with _banco(ajustes={'Voz': {'FabricanteActivo': 'Otra casa'}}) as b:
        error = _acaba(_lanza(b, 'n3', '-outputfile', 'a.wav', pantalla=False))
        assert 'No hay ninguna voz con el nombre Microsoft Mary' in error, error
        assert not _en_carpeta(b)
        error = _acaba(_lanza(b, 'n3', pantalla=False, ONDALIS_MOTOR='/bin/false'))
        assert error == 'ondalis: SAPI5.1 no está correctamente instalado.\n', error


@caso
def una_descripcion_rota_se_dice_una_vez_y_la_voz_de_nombre_raro_habla():
    voz = {'FabricanteActivo': 'Casa', 'VozActiva': '"Ana; la de casa"'}  # quoted for the settings' file
    with _banco('real', ajustes={'Voz': voz}) as b:
        motores = os.path.join(b.escritorio.carpeta, 'motores')
        os.mkdir(motores)
        _escribe(os.path.join(motores, 'rota.motor'), '[motor]\nbasura\n')
        _escribe(os.path.join(motores, 'casa.motor'), """[motor]
fabricante = Casa
programa = espeak-ng
argumentos = -v es --stdin --stdout
[voz ana]
nombre = Ana; la de casa
lengua = 40A;C0A
""")
        error = _acaba(_lanza(b, 'buenos días', '-outputfile', 'a.wav', pantalla=False, ONDALIS_MOTORES=motores))
        queja = f'{motores}/rota.motor: línea 2: no es «clave = valor»\n'
        assert error == 'ondalis-motor: ' + queja, error
        assert 0.3 < len(_wav(b.aqui('a.wav'), 16000)) / sonido.RITMO < 3
        with open(os.path.join(b.escritorio.carpeta, 'state/ondalis/Ondalis.log'), encoding='utf-8') as f:
            assert f.read().count(queja.strip()) == 1


@caso
def un_motor_que_no_dice_nada_es_un_error_y_no_deja_fichero():
    sapi5 = {'FabricanteActivo': 'Casa', 'VozActiva': 'Muda'}
    with _banco('real') as b:
        mudo = 'ondalis: cVozECI: Error al realizar la lectura\n'
        for linea in (['hola', '-outputfile', 'a.wav'], ['hola']):
            error = _acaba(_lanza(b, *linea, pantalla=False, ONDALIS_MOTOR='/bin/false'))
            assert error.startswith(mudo + 'El motor de voz '), error
            assert not _en_carpeta(b)
    with _banco('real', ajustes={'Voz': sapi5}) as b:
        motores = os.path.join(b.escritorio.carpeta, 'motores')
        os.mkdir(motores)
        _escribe(os.path.join(motores, 'casa.motor'), """[motor]
fabricante = Casa
programa = /bin/sh
argumentos = -c "kill -SEGV $$"
[voz muda]
nombre = Muda
lengua = 40A
""")
        for linea in (['uno. dos', '-outputfile', 'a.wav'], ['uno. dos']):
            error = _acaba(_lanza(b, *linea, pantalla=False, ONDALIS_MOTORES=motores))
            assert 'EjecutaLineaComandos: El motor de voz rechaza' in error and 'por la señal 11' in error, error
            assert not _en_carpeta(b)


@caso
def clear_en_un_trabajo_habla_con_los_ajustes_de_fabrica():
    with _banco(ajustes={'Voz': {'FabricanteActivo': 'Otra casa'}}) as b:
        _hecho(_lanza(b, 'n3', '-clear', '-outputfile', 'a.wav', pantalla=False))
        assert b.ajuste('Voz', 'FabricanteActivo') is None
        en_orden(_palabras(b.aqui('a.wav')), [3])


@caso
def sin_sonido_se_dice_y_grabar_sigue_siendo_posible():
    with _banco() as b:
        b.escritorio.mata_sonido()
        antes = time.monotonic()
        error = _acaba(_lanza(b, 'n3', pantalla=False))
        assert 'NO se ha detectado tarjeta de sonido.' in error, error
        assert time.monotonic() - antes < 8
        p = _lanza(b, 'n3')
        espera(lambda: ventanas(b), 15, que='the message')
        time.sleep(0.3)
        b.tecla('Return')
        _hecho(p)
        _hecho(_lanza(b, 'n3', '-outputfile', 'a.wav'))
        assert _en_carpeta(b) == ['a.wav']


@caso
def dos_grabaciones_a_la_vez_en_una_carpeta_no_se_estorban():
    with _banco() as b:
        for _ in range(3):
            for nombre, primero in (('uno', 0), ('dos', 100)):
                _escribe(b.aqui(nombre + '.txt'), (texto_tonos(primero, 60) + '\n') * 20)
            trabajos = [_lanza(b, '-filetxt', n + '.txt', '-outputfile', n + '.wav') for n in ('uno', 'dos')]
            for p in trabajos:
                _hecho(p, 60)
            assert _en_carpeta(b) == ['dos.txt', 'dos.wav', 'uno.txt', 'uno.wav'], _en_carpeta(b)
            en_orden(_palabras(b.aqui('uno.wav')), [k for _ in range(20) for k in range(60)])
            en_orden(_palabras(b.aqui('dos.wav')), [k for _ in range(20) for k in range(100, 160)])
            os.remove(b.aqui('uno.wav'))
            os.remove(b.aqui('dos.wav'))


@caso
def junto_a_un_lector_que_lee_graba_y_la_lectura_sigue():
    with _banco(arranca=True) as b:
        t = b.copia(texto_tonos(0, 40))
        b.espera_palabra(3, desde=t)
        with open(os.path.join(b.escritorio.entorno['XDG_CONFIG_HOME'], 'Ferrano', 'Ondalis.ini'), 'rb') as f:
            antes = f.read()
        _escribe(b.aqui('libro.txt'), texto_tonos(100, 60))
        for i in range(3):
            _hecho(_lanza(b, '-filetxt', 'libro.txt', '-outputfile', f'{i}.wav'))
            en_orden(_palabras(b.aqui(f'{i}.wav')), range(100, 160))
        b.espera_palabra(39, desde=t)
        en_orden(b.numeros(t), range(40))
        b.sigue_vivo()
        with open(os.path.join(b.escritorio.entorno['XDG_CONFIG_HOME'], 'Ferrano', 'Ondalis.ini'), 'rb') as f:
            assert f.read() == antes, 'the settings have changed'


@caso
def un_lector_que_arranca_durante_un_trabajo_lo_encuentra():
    with _banco() as b:
        p = _lanza(b, texto_tonos(0, 60))
        b.espera_palabra(2)
        lector = _lanza(b, pantalla=False)
        _, error = lector.communicate(timeout=10)
        assert 'El programa ya está arrancado.' in error.decode(), error
        p.terminate()
        assert p.wait(5) == 143


@caso
def sigterm_y_sigint_callan_al_momento():
    with _banco() as b:
        for senal in (signal.SIGTERM, signal.SIGINT):
            t = time.monotonic()
            p = _lanza(b, texto_tonos(0, 60))
            b.espera_palabra(3, desde=t)
            pid = _motor(p)
            t = time.monotonic()
            p.send_signal(senal)
            assert _acaba(p, 5, 143) == ''
            tardo = time.monotonic() - t
            m = b.silencio_desde(t, t + 1.0)
            assert m is not None and m < 0.3 and tardo < 1.0, (m, tardo)
            assert not vivo(pid) and not ventanas(b)


@caso
def sigterm_mientras_graba_no_deja_nada():
    for ajustes in ({}, {'Voz': {'FabricanteActivo': 'Pruebas', 'VozActiva': 'Tono inglés'}}):
        with _banco(ajustes=ajustes) as b:
            _escribe(b.aqui('libro.txt'), texto_tonos(0, 40) + ' CUELGA ' + texto_tonos(40, 10))
            _escribe(b.aqui('viejo.wav'), 'viejo')
            p = _lanza(b, '-filetxt', 'libro.txt', '-outputfile', 'libro.wav')
            espera(lambda: '~temp.wav' in _en_carpeta(b), 10, que='the temporary')
            pid = _motor(p)
            t = time.monotonic()
            p.terminate()
            assert _acaba(p, 5, 143) == ''
            assert time.monotonic() - t < 1.0
            assert _en_carpeta(b) == ['libro.txt', 'viejo.wav'] and not vivo(pid)


@caso
def sigterm_con_la_pregunta_abierta_la_cierra_y_no_borra():
    with _banco() as b:
        _escribe(b.aqui('a.wav'), 'viejo')
        for senal in (signal.SIGTERM, signal.SIGKILL):
            p = _lanza(b, 'n3', '-outputfile', 'a.wav')
            espera(lambda: ventanas(b), 10, que='the question')
            p.send_signal(senal)
            assert p.wait(5) == (143 if senal == signal.SIGTERM else -9)
            espera(lambda: not ventanas(b), 5, que='the box to go')
            assert _en_carpeta(b) == ['a.wav'] and os.path.getsize(b.aqui('a.wav')) == 5


@caso
def cien_kilobytes_de_texto_a_wav_mucho_antes_de_lo_que_se_tarda_en_oirlos():
    frase = 'Había una vez un lector que leía en voz alta todo lo que le daban, sin cansarse nunca. '
    with _banco('real') as b:
        _escribe(b.aqui('libro.txt'), (frase * 10 + '\n') * (100_000 // (len(frase.encode()) * 10 + 1)))
        antes = time.monotonic()
        _hecho(_lanza(b, '-filetxt', 'libro.txt', '-outputfile', 'libro.wav', pantalla=False), 120)
        tardo = time.monotonic() - antes
        with wave.open(b.aqui('libro.wav'), 'rb') as w:
            duracion = w.getnframes() / w.getframerate()
        print(f'{os.path.getsize(b.aqui("libro.txt"))} bytes: {duracion / 3600:.2f} h of speech in {tardo:.1f} s')
        # 17 words in 88 bytes, 170 words a minute; sentences and accents cost something.
        assert 5000 < duracion < 10_000, duracion
        assert duracion > 50 * tardo, tardo
        assert _en_carpeta(b) == ['libro.txt', 'libro.wav']
