"""A voice of a command engine: a description in the user's data folder names a program."""
import os
import time

from arnes.banco import Banco
from arnes.procesos import espera, vivo

CASOS = {}

MOTOR = '''[motor]
fabricante = Prueba
programa = {programa}
argumentos = -v es -s {{ritmo}} --stdin --stdout
ritmo = palabras
ritmo-minimo = 0.5
ritmo-maximo = 2.6
plazo-primera-ms = 1500
plazo-ms = 3000

[voz ana]
nombre = Ana
lengua = 40A;C0A
'''
AJUSTES = {'Voz': {'FabricanteActivo': 'Prueba', 'VozActiva': 'Ana'}, 'Teclas': {'UtilizaAvisos': '0'}}
CUENTO = ('Mi hermana, que vive en Barcelona desde hace años, trabaja como enfermera en un hospital grande. Cuando llega la '
          'primavera, los almendros del valle ya están completamente florecidos. El tren con destino a Valencia efectúa su '
          'salida por la vía siete. La ministra anunció ayer que la inversión en carreteras aumentará.')


def caso(f):
    CASOS[f.__name__] = f
    return f


def _banco(guion=None):
    """The reader with the voice "Ana": espeak-ng, or a shell program that stands before it."""
    b = Banco('real', AJUSTES, arranca=False)
    b.__enter__()
    carpeta = os.path.join(b.escritorio.entorno['XDG_DATA_HOME'], 'ondalis', 'motores')
    os.makedirs(carpeta)
    programa = '/usr/bin/espeak-ng'
    if guion:
        programa = os.path.join(b.escritorio.carpeta, 'habla')
        with open(programa, 'w', encoding='utf-8') as f:
            f.write('#!/bin/sh\n' + guion)
        os.chmod(programa, 0o755)
    with open(os.path.join(carpeta, 'prueba.motor'), 'w', encoding='utf-8') as f:
        f.write(MOTOR.format(programa=programa))
    b.arranca_lector()
    return b


class _Lector:
    def __init__(self, guion=None):
        self._guion = guion

    def __enter__(self):
        self._b = _banco(self._guion)
        return self._b

    def __exit__(self, *fallo):
        return self._b.__exit__(*fallo)


@caso
def una_copia_se_oye_con_la_voz_de_un_programa():
    testigo = 'echo "$@" >>"$HOME/llamadas"; exec /usr/bin/espeak-ng "$@"\n'
    with _Lector(testigo) as b:
        t = b.copia(CUENTO)
        primera = b.espera_sonido(5, desde=t)
        ultima = b.espera_silencio(2)
        with open(os.path.join(b.escritorio.entorno['HOME'], 'llamadas'), encoding='utf-8') as f:
            llamadas = f.read().splitlines()
        print(f'first sound after {primera - t:.3f} s, {ultima - primera:.1f} s in all, {len(llamadas)} calls')
        assert len(llamadas) == 4 and all(ll == '-v es -s 170 --stdin --stdout' for ll in llamadas), llamadas
        assert primera - t < 1
        assert 12 < ultima - primera < 30


@caso
def con_un_programa_se_avanza_y_se_retrocede_por_palabras():
    with _Lector() as b:
        def lee(teclas):
            t = b.copia(CUENTO + ' ' + (teclas.replace('ctrl+', '') or 'cero'))
            b.espera_sonido(5, desde=t)
            time.sleep(3)
            for tecla in teclas.split():
                b.tecla(tecla)
                time.sleep(0.4)
            return b.espera_silencio(1.5, 90) - t
        entera = lee('')
        avanzada = lee('ctrl+4 ctrl+4 ctrl+4')
        retrocedida = lee('ctrl+5')
        print(f'{entera:.1f} s; {avanzada:.1f} s with three advances; {retrocedida:.1f} s with a retreat')
        assert 4 < entera - avanzada < 16  # thirty words less, but for what they would have lasted
        assert retrocedida - entera > 1.5


@caso
def un_programa_colgado_no_dana_al_lector_y_lo_siguiente_se_oye():
    cuelga = ('t=$(cat)\ncase "$t" in *cuelga*) trap "" TERM; echo $$ >>"$HOME/colgados"; while :; do sleep 100; done;; '
              'esac\nprintf "%s" "$t" | /usr/bin/espeak-ng "$@"\n')
    with _Lector(cuelga) as b:
        t = b.copia('Este texto cuelga al programa. Pero el resto se oye después.')
        primera = b.espera_sonido(8, desde=t)
        assert primera - t > 1.2, 'the sentence that hangs was said'
        b.espera_silencio(1.5)
        b.sigue_vivo()
        t = b.copia('Un texto nuevo que se lee como siempre.')
        assert b.espera_sonido(3, desde=t) - t < 1.2
        b.espera_silencio(1.5)
        # A stop while a program hangs ends it.
        b.copia('Otra vez cuelga y nadie lo espera.')
        apuntados = os.path.join(b.escritorio.entorno['HOME'], 'colgados')

        def ultimo():
            with open(apuntados, encoding='utf-8') as f:
                pids = f.read().split()
            return int(pids[1]) if len(pids) > 1 else None
        pid = espera(ultimo, 5, que='the program to hang again')
        b.tecla('ctrl+2')
        espera(lambda: not vivo(pid), 1, que='the program to end')
        b.sigue_vivo()


@caso
def la_parada_da_silencio_tambien_a_un_programa():
    medidas = []
    with _Lector() as b:
        t = b.copia(CUENTO)
        for vuelta in range(8):
            b.espera_sonido(4, desde=t)
            time.sleep(1 + 0.13 * vuelta)
            t = b.tecla('ctrl+2')
            m = b.silencio_desde(t, t + 0.5)
            if m is not None:
                medidas.append(m)
            t = b.tecla('ctrl+3')
        b.tecla('ctrl+2')
    print('silence after ' + ' '.join(f'{m * 1000:.0f}' for m in medidas) + ' ms')
    assert len(medidas) >= 4 and max(medidas) < 0.1
