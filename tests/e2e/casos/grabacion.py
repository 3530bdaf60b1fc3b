"""Readings that become audio files: what the file holds is judged by its own sound."""
import contextlib
import glob
import os
import re
import subprocess
import time
import wave

import numpy as np

from arnes import sonido
from arnes.banco import Banco, en_orden, texto_tonos
from arnes.procesos import espera
from casos.arranque import ventanas
from casos.remoto import ctl, espera_lector

CASOS = {}
SAPI5 = {'FabricanteActivo': 'Pruebas', 'VozActiva': 'Tono español'}


def caso(f):
    CASOS[f.__name__] = f
    return f


class Estudio(Banco):
    """A bench whose reader records: `grabar` are keys of that section besides GrabarTexto."""

    def __init__(self, motor='tono', voz=None, fichero='Lectura.wav', arranca=True, **grabar):
        super().__init__(motor, arranca=arranca)
        os.mkdir(self.ruta(''))
        self._ajustes['Grabar'] = {'LeerTexto': 'False', 'GrabarTexto': 'True', 'NombreFichero': self.ruta(fichero),
                                   **grabar}
        if voz:
            self._ajustes['Voz'] = voz

    def ruta(self, nombre):
        return os.path.join(self.escritorio.carpeta, 'musica', nombre)

    def ficheros(self):
        return sorted(os.listdir(self.ruta('')))

    @property
    def temporal(self):
        return os.path.join(self.escritorio.entorno['XDG_DATA_HOME'], 'ondalis', '~temp.wav')

    def diario(self):
        ruta = os.path.join(self.escritorio.entorno['XDG_STATE_HOME'], 'ondalis', 'Ondalis.log')
        if not os.path.exists(ruta):
            return ''
        with open(ruta, encoding='utf-8') as f:
            return f.read()

    def espera_fichero(self, nombre, limite=30):
        espera(lambda: os.path.exists(self.ruta(nombre)), limite, que=nombre)
        return self.ruta(nombre)

    def sello(self, nombre):
        """What tells this file from one that takes its place; None while there is none."""
        try:
            dato = os.stat(self.ruta(nombre))
        except FileNotFoundError:
            return None
        return dato.st_ino, dato.st_mtime_ns

    def espera_otro(self, nombre, sello):
        espera(lambda: self.sello(nombre) not in (None, sello), que='the next recording')

    def espera_caja(self):
        """Waits for a message box and closes it."""
        espera(lambda: ventanas(self), que='a message box')
        self.tecla('Return')
        espera(lambda: not ventanas(self), que='the box to close')


def abre_wav(ruta):
    """(sound at the ear's rate, its own rate) of a WAV file whose header must tell the truth."""
    with wave.open(ruta, 'rb') as w:
        assert (w.getnchannels(), w.getsampwidth()) == (1, 2), ruta
        muestras, ritmo = w.getnframes(), w.getframerate()
        x = np.frombuffer(w.readframes(muestras), dtype='<i2').astype(np.float64)
    assert os.path.getsize(ruta) == 44 + 2 * muestras, f'{ruta}: {os.path.getsize(ruta)} bytes, {muestras} samples'
    assert len(x) == muestras
    return np.interp(np.arange(0, len(x), ritmo / sonido.RITMO), np.arange(len(x)), x), ritmo


def grabados(ruta):
    """Numbers of the words in a file, in order."""
    oidas = sonido.palabras(abre_wav(ruta)[0], 0)
    return [p.k for i, p in enumerate(oidas) if i == 0 or p.k != oidas[i - 1].k]


DISTINTAS = 60  # higher tones lose themselves between the samples of a file at 11025 Hz


def muchos(palabras):
    """A long text in short clauses, of few different words."""
    return ' '.join(texto_tonos(k % DISTINTAS, 5) + '.' for k in range(0, palabras, 5))


@contextlib.contextmanager
def disco_pequeno(carpeta, tamano):
    """A file system of so many bytes at that place; None where there is no right to mount one."""
    r = subprocess.run(['mount', '-t', 'tmpfs', '-o', f'size={tamano}', 'none', carpeta], stderr=subprocess.PIPE,
                       check=False)
    if r.returncode != 0:
        print(f'SKIP: no small file system here ({r.stderr.decode().strip()})')
        yield None
        return
    try:
        yield carpeta
    finally:
        subprocess.run(['umount', '-l', carpeta], check=True)


@caso
def lo_copiado_queda_grabado_entero_y_no_se_oye():
    with Estudio() as b:
        t = b.copia(texto_tonos(0, 12))
        ruta = b.espera_fichero('Lectura.wav')
        en_orden(grabados(ruta), range(12))
        assert abre_wav(ruta)[1] == 11025
        b.calla(1.0)
        assert not b.oye_palabras(t)
        assert not os.path.exists(b.temporal)
        assert not b.diario(), b.diario()


@caso
def se_graba_y_ademas_se_oye():
    with Estudio(LeerTexto='True') as b:
        t = b.copia(texto_tonos(0, 12))
        ruta = b.espera_fichero('Lectura.wav')
        en_orden(grabados(ruta), range(12))
        b.espera_palabra(11, desde=t)
        b.espera_silencio()
        en_orden(b.numeros(t), range(12))


@caso
def cada_lectura_en_un_fichero_numerado():
    with Estudio(fichero='Mi Lectura.WAV', SobrescribirFich='False', NumerarFich='True') as b:
        with open(b.ruta('mi lectura de ayer.wav'), 'wb'):
            pass
        b.copia(texto_tonos(0, 8))
        b.espera_fichero('mi lectura2.wav')
        b.copia(texto_tonos(10, 8))
        b.espera_fichero('mi lectura3.wav')
        assert b.ficheros() == ['mi lectura de ayer.wav', 'mi lectura2.wav', 'mi lectura3.wav']
        en_orden(grabados(b.ruta('mi lectura2.wav')), range(8))
        en_orden(grabados(b.ruta('mi lectura3.wav')), range(10, 18))


@caso
def la_segunda_lectura_sobrescribe_la_primera():
    with Estudio() as b:
        b.copia(texto_tonos(0, 8))
        ruta = b.espera_fichero('Lectura.wav')
        en_orden(grabados(ruta), range(8))
        antes = os.stat(ruta).st_ino, os.stat(ruta).st_mtime_ns
        b.copia(texto_tonos(10, 6))
        espera(lambda: os.path.exists(ruta) and (os.stat(ruta).st_ino, os.stat(ruta).st_mtime_ns) != antes,
               que='the second recording')
        en_orden(grabados(ruta), range(10, 16))


@caso
def anadir_conserva_el_destino_y_acumula_en_el_temporal():
    with Estudio(SobrescribirFich='False', AnadirFich='True') as b:
        b.copia(texto_tonos(0, 8))
        ruta = b.espera_fichero('Lectura.wav')
        for vez in (1, 2):
            b.copia(texto_tonos(10 * vez, 8))
            espera(lambda: b.diario().count('(58)') == vez, que='the log line')
        en_orden(grabados(ruta), range(8))
        en_orden(grabados(b.temporal), [*range(10, 18), *range(20, 28)])
        # The next run goes on with it.
        b.termina_lector()
        os.remove(ruta)
        b.arranca_lector()
        b.copia(texto_tonos(30, 8))
        b.espera_fichero('Lectura.wav')
        en_orden(grabados(ruta), [*range(10, 18), *range(20, 28), *range(30, 38)])


@caso
def sin_esperar_se_oye_enseguida_mientras_se_graba():
    palabras = 3000
    with Estudio(LeerTexto='True', GrabaSincrono='False') as b:
        t = b.copia(muchos(palabras))
        oido = b.espera_sonido(10, desde=t)
        print(f'first sound {oido - t:.2f} s after the copy')
        b.espera_palabra(3, desde=t)
        t = b.tecla('ctrl+2')
        m = b.silencio_desde(t, t + 0.5)
        assert m is None or m < 0.3, f'sound for {m} s after the stop'
        # A stop of the reading doesn't touch the recording.
        ruta = b.espera_fichero('Lectura.wav', 60)
        oidas = grabados(ruta)
        malas = [i for i, k in enumerate(oidas) if k != i % DISTINTAS]
        assert len(oidas) == palabras and not malas, f'{len(oidas)} words, the first wrong one at {malas[:1]}'
        assert not b.diario(), b.diario()


@caso
def una_grabacion_nueva_acaba_antes_la_que_sigue():
    """The first one is cut short, gets its name, and plays."""
    with Estudio(GrabaSincrono='False', SobrescribirFich='False', NumerarFich='True') as b:
        b.copia(muchos(20000))
        espera(lambda: os.path.exists(b.temporal) and os.path.getsize(b.temporal) > 100_000, que='some sound')
        b.copia(texto_tonos(50, 8))
        b.espera_fichero('lectura2.wav')
        en_orden(grabados(b.ruta('lectura2.wav')), range(50, 58))
        x, _ = abre_wav(b.ruta('lectura1.wav'))
        assert len(x) > sonido.RITMO
        primeras = [p.k for p in sonido.palabras(x[:sonido.RITMO * 20], 0)][:20]
        assert primeras == list(range(20)), primeras


@caso
def el_final_del_programa_acaba_la_grabacion_que_sigue():
    """Whether the reader waits for it or not, and with either family."""
    for ajustes in ({'GrabaSincrono': 'False'}, {}, {'voz': SAPI5}):
        with Estudio(**ajustes) as b:
            b.copia(muchos(40000))
            espera(lambda: os.path.exists(b.temporal) and os.path.getsize(b.temporal) > 100_000, paso=0.002,
                   que='some sound')
            en_marcha = b.ficheros() == []
            assert b.termina_lector() == 0
            assert en_marcha, 'the recording was over before the program was told to end'
            x, _ = abre_wav(b.ruta('Lectura.wav'))
            assert len(x) / sonido.RITMO < 40000 * 0.2, 'it was not cut'
            primeras = [p.k for p in sonido.palabras(x[:sonido.RITMO * 20], 0)][:20]
            assert primeras == list(range(20)), primeras
            assert not os.path.exists(b.temporal)


@caso
def una_voz_sapi5_graba_a_la_frecuencia_elegida():
    for hercios in (8000, 44100):
        with Estudio(voz=SAPI5, CalidadkHz=str(hercios)) as b:
            t = b.copia(texto_tonos(0, 12))
            ruta = b.espera_fichero('Lectura.wav')
            en_orden(grabados(ruta), range(12))
            assert abre_wav(ruta)[1] == hercios
            assert not b.oye_palabras(t)
            assert not b.diario(), b.diario()


@caso
def una_voz_sapi5_graba_y_lee():
    with Estudio(voz=SAPI5, LeerTexto='True') as b:
        t = b.copia(texto_tonos(0, 12))
        en_orden(grabados(b.espera_fichero('Lectura.wav')), range(12))
        b.espera_palabra(11, desde=t)
        b.espera_silencio()
        en_orden(b.numeros(t), range(12))


@caso
def una_etiqueta_rota_en_voz_sapi5_se_anota_y_no_deja_ningun_fichero():
    with Estudio(voz=SAPI5) as b:
        b.copia('n1 n2 <silence/> n3 n4')
        espera(lambda: 'Sintaxis de etiquetas no válida' in b.diario(), que='the log line')
        espera(lambda: not os.path.exists(b.temporal), que='the empty temporary to go')
        assert not b.ficheros() and not ventanas(b)
        b.copia(texto_tonos(5, 6))
        en_orden(grabados(b.espera_fichero('Lectura.wav')), range(5, 11))


@caso
def un_fichero_que_manda_otro_programa_se_graba():
    for voz in (None, SAPI5):
        with Estudio(voz=voz) as b:
            espera_lector(b)
            libro = os.path.join(b.escritorio.carpeta, 'libro.txt')
            with open(libro, 'w', encoding='utf-8') as f:
                f.write(texto_tonos(0, 12))
            assert ctl(b, 'fichero', libro)[0] == 0
            en_orden(grabados(b.espera_fichero('Lectura.wav')), range(12))
            assert not b.diario(), b.diario()


@caso
def un_fichero_vacio_que_manda_otro_programa_se_dice_y_no_deja_nada():
    with Estudio() as b:
        espera_lector(b)
        libro = os.path.join(b.escritorio.carpeta, 'libro.txt')
        with open(libro, 'w', encoding='utf-8'):
            pass
        ctl(b, 'fichero', libro)
        b.espera_caja()
        assert '(5)' in b.diario(), b.diario()
        assert b.ficheros() == [] and not os.path.exists(b.temporal), b.ficheros()
        b.copia(texto_tonos(0, 6))
        en_orden(grabados(b.espera_fichero('Lectura.wav')), range(6))


@caso
def la_voz_de_verdad_graba_lo_mismo_que_lee():
    texto = 'El viento del norte y el sol discutían sobre cuál de ellos era el más fuerte. Pasó un viajero.'
    with Estudio(motor='real', LeerTexto='True') as b:
        t = b.copia(texto)
        x, _ = abre_wav(b.espera_fichero('Lectura.wav'))
        b.espera_sonido(10, desde=t)
        b.espera_silencio(1.5)
        oidas = b.oye_palabras(t)
        duracion = oidas[-1].fin - oidas[0].inicio
        tramos = sonido.tramos_sonoros(x)
        grabada = (tramos[-1][1] - tramos[0][0]) / sonido.RITMO
        print(f'heard {duracion:.2f} s, recorded {grabada:.2f} s')
        assert abs(grabada - duracion) < 0.1 + 0.02 * duracion
        nivel = sonido.nivel_db(x)
        assert -40 < nivel < -3, f'{nivel:.1f} dB'


@caso
def matado_en_plena_grabacion_deja_un_temporal_que_se_puede_oir():
    with Estudio() as b:
        b.copia(muchos(60000))
        espera(lambda: os.path.exists(b.temporal) and os.path.getsize(b.temporal) > 1_000_000, paso=0.002,
               que='some sound')
        b.lector.kill()
        b.lector.wait(5)
        assert b.ficheros() == [], 'nothing partial stands under the final name'
        with wave.open(b.temporal, 'rb') as w:
            muestras = w.getnframes()
            assert len(w.readframes(muestras)) == 2 * muestras and muestras > 400_000, muestras
        with open(b.temporal, 'rb') as f:
            queda = f.read()
        # What is left over is kept, and nobody is hindered by it.
        b.arranca_lector()
        b.copia(texto_tonos(0, 8))
        en_orden(grabados(b.espera_fichero('Lectura.wav')), range(8))
        with open(b.temporal, 'rb') as f:
            assert f.read() == queda
        assert b.diario().count('cTemporalAudio.Prepara: ') == 1, b.diario()
        b.termina_lector()
        assert not glob.glob(os.path.join(b.escritorio.entorno['XDG_STATE_HOME'], 'ondalis', 'temporal-*'))


@caso
def un_disco_lleno_en_el_destino_deja_el_sonido_en_el_temporal():
    with Estudio() as b, disco_pequeno(b.ruta(''), 65536) as disco:
        if disco is None:
            return
        b.copia(texto_tonos(0, 60))
        espera(lambda: 'Disco lleno (61)' in b.diario(), que='the log line')
        assert b.ficheros() == []
        en_orden(grabados(b.temporal), range(60))
        b.copia(texto_tonos(0, 6))
        en_orden(grabados(b.espera_fichero('Lectura.wav')), range(6))
        b.sigue_vivo()


@contextlib.contextmanager
def temporal_sin_sitio(b):
    """The reader once more, with a temporary that the text copied here has overfilled; its message is up. Gives what
    disco_pequeno gives."""
    b.termina_lector()
    with disco_pequeno(os.path.dirname(b.temporal), 262144) as disco:
        if disco is not None:
            b.arranca_lector()
            b.copia(texto_tonos(0, 100))
            b.espera_caja()
        yield disco


@caso
def un_disco_lleno_en_el_temporal_se_dice_y_lo_que_cupo_se_oye():
    with Estudio() as b:
        with temporal_sin_sitio(b) as disco:
            if disco is None:
                return
            x, _ = abre_wav(b.espera_fichero('Lectura.wav'))
            assert len(x) > 2 * sonido.RITMO
            oidas = [p.k for p in sonido.palabras(x, 0)]
            assert oidas[:9] == list(range(9)), oidas
            assert re.search(r'cFormPrincipal.GrabaEnFichero: .*Disco lleno', b.diario()), b.diario()
            b.sigue_vivo()
            b.copia(texto_tonos(20, 6))

            def es_la_siguiente():
                try:
                    return b.ficheros() == ['Lectura.wav'] and len(abre_wav(b.ruta('Lectura.wav'))[0]) < len(x)
                except FileNotFoundError:  # between the deletion of the one and the arrival of the other
                    return False
            espera(es_la_siguiente, que='the next recording')
            en_orden(grabados(b.ruta('Lectura.wav')), range(20, 26))
            b.termina_lector()


@caso
def un_disco_lleno_sin_esperar_se_dice_una_vez_y_la_lectura_sigue():
    """Nobody waits for the recording: the message comes by itself, beside what is being read aloud."""
    with Estudio(LeerTexto='True', GrabaSincrono='False') as b:
        with temporal_sin_sitio(b) as disco:
            if disco is None:
                return
            ruta = b.espera_fichero('Lectura.wav')
            lineas = re.findall(r'^.*cFormPrincipal.GrabaEnFichero: .*Disco lleno', b.diario(), re.M)
            assert len(lineas) == 1, b.diario()
            oidas = [p.k for p in sonido.palabras(abre_wav(ruta)[0], 0)]
            assert oidas[:9] == list(range(9)), oidas
            llena = b.sello('Lectura.wav')
            # The reading hasn't suffered; without a stop the next text would wait for its end.
            b.espera_palabra(20)
            b.tecla('ctrl+2')
            b.espera_silencio()
            t = b.copia(texto_tonos(20, 6))
            b.espera_palabra(25, desde=t)
            b.espera_silencio()
            en_orden(b.numeros(t), range(20, 26))
            b.espera_otro('Lectura.wav', llena)
            en_orden(grabados(ruta), range(20, 26))
            assert not ventanas(b), 'told again'
            assert b.diario().count('cFormPrincipal.GrabaEnFichero: ') == 1, b.diario()
            b.sigue_vivo()
            b.termina_lector()


@caso
def una_frase_que_el_motor_no_dice_se_cuenta_y_lo_demas_se_graba():
    """With either family."""
    for voz in (None, SAPI5):
        with Estudio(voz=voz) as b:
            b.copia(f'{texto_tonos(0, 12)}. MATA. {texto_tonos(12, 12)}.')
            b.espera_caja()
            en_orden(grabados(b.espera_fichero('Lectura.wav')), range(24))
            falta = 'El motor de voz no ha podido decir una parte del texto'
            lineas = [x for x in b.diario().splitlines() if 'cFormPrincipal.GrabaEnFichero: ' in x]
            assert len(lineas) == 1 and falta in lineas[0], b.diario()
            antes = b.sello('Lectura.wav')
            b.copia(texto_tonos(30, 6))
            b.espera_otro('Lectura.wav', antes)
            en_orden(grabados(b.ruta('Lectura.wav')), range(30, 36))
            assert not ventanas(b), 'told again'


@caso
def un_programa_que_da_un_wav_cortado_pierde_su_frase_y_lo_demas_se_graba():
    with Estudio(motor='real', voz={'FabricanteActivo': 'Casa', 'VozActiva': 'Ana'}, arranca=False) as b:
        motores = os.path.join(b.escritorio.entorno['XDG_DATA_HOME'], 'ondalis', 'motores')
        os.makedirs(motores)
        programa = os.path.join(b.escritorio.carpeta, 'habla')
        # Its header tells the true length; of one sentence it gives the first fifth of a second and a status of 0.
        with open(programa, 'w', encoding='utf-8') as f:
            f.write('#!/bin/sh\nread t\necho "$t" | espeak-ng -v es --stdin -w "$0.$$"\n'
                    'case "$t" in *corta*) head -c 9000 "$0.$$";; *) cat "$0.$$";; esac\n')
        os.chmod(programa, 0o755)
        with open(os.path.join(motores, 'casa.motor'), 'w', encoding='utf-8') as f:
            f.write(f'[motor]\nfabricante = Casa\nprograma = {programa}\n[voz ana]\nnombre = Ana\nlengua = 40A;C0A\n')
        b.arranca_lector()
        b.copia('Una frase entera va primero. Esta frase corta llega a medias. Otra frase entera va detrás.')
        b.espera_caja()
        sonido_grabado, _ = abre_wav(b.espera_fichero('Lectura.wav'))
        assert 2 < len(sonido_grabado) / sonido.RITMO < 5  # two sentences of three
        assert 'el programa ha dado un WAV cortado' in b.diario(), b.diario()
        assert 'El motor de voz no ha podido decir una parte del texto' in b.diario(), b.diario()


@caso
def un_limite_al_tamano_de_los_ficheros_no_mata_al_lector():
    with Estudio() as b:
        subprocess.run(['prlimit', '--pid', str(b.lector.pid), '--fsize=200000:200000'], check=True)
        b.copia(texto_tonos(0, 100))
        b.espera_caja()
        oidas = grabados(b.espera_fichero('Lectura.wav'))
        assert oidas[:9] == list(range(9)), oidas
        b.sigue_vivo()


@caso
def mp3_se_rechaza_con_un_mensaje_y_sin_tocar_nada():
    with Estudio(fichero='Lectura.mp3', GrabaEnWAV='False') as b:
        with open(b.ruta('Lectura.mp3'), 'wb') as f:
            f.write(b'viejo')
        b.copia(texto_tonos(0, 8))
        b.espera_caja()
        with open(b.ruta('Lectura.mp3'), 'rb') as f:
            assert f.read() == b'viejo'
        assert 'La grabación en MP3 no está disponible en esta versión.' in b.diario()
        assert not os.path.exists(b.temporal)
        b.sigue_vivo()
