#!/usr/bin/python3
"""The demonstration of `make run` where there is no display: one reading on a virtual desktop, recorded and pictured."""
import os
import sys
import time

sys.path.insert(0, os.path.dirname(os.path.abspath(__file__)))
from arnes import sonido  # noqa: E402
from arnes.banco import RAIZ, Banco  # noqa: E402

TEXTO = '''Ondalis lee en voz alta lo que usted copia.

Copie un texto en cualquier programa y lo oirá al momento.
Con Control y 1 se hace una pausa y se sigue; con Control y 2
se calla; con Control y 3 se repite; con Control y 4, y con
Control y 5, se avanza y se retrocede diez palabras.
'''


def abre_texto(b):
    """Shows the text in a window of another program."""
    escrito = os.path.join(b.escritorio.carpeta, 'texto.txt')
    with open(escrito, 'w', encoding='utf-8') as f:
        f.write('\n' + TEXTO)
    b.escritorio.procesos.arranca(
        ['xterm', '-u8', '-fa', 'DejaVu Sans Mono', '-fs', '16', '-geometry', '66x11+120+160', '-bg', '#fdfdf5',
         '-fg', '#202020', '-title', 'Un texto cualquiera', '-e', 'sh', '-c', f'cat {escrito}; sleep 600'])
    time.sleep(1.0)


def main():
    salida = os.path.join(RAIZ, 'build', 'demo')
    os.makedirs(salida, exist_ok=True)
    wav, png = os.path.join(salida, 'lectura.wav'), os.path.join(salida, 'escritorio.png')
    for viejo in (wav, png):
        if os.path.exists(viejo):
            os.remove(viejo)
    with Banco('real', {'General': {'UtilizaSonidos': 'True'}}) as b:
        abre_texto(b)
        print('Se copia un texto en el escritorio virtual...', flush=True)
        t = b.copia(TEXTO)
        primera = b.espera_sonido(10, desde=t)
        time.sleep(2.0)
        b.escritorio.captura(png)
        ultima = b.espera_silencio(2.0, 120)
        b.escritorio.grabadora.guarda(wav, primera - 0.3)
        x, _ = b.escritorio.grabadora.muestras(primera, ultima)
        sonora = sum(fin - inicio for inicio, fin in sonido.tramos_sonoros(x, 0.05)) / sonido.RITMO
        nivel = sonido.nivel_db(x)
        estado = b.termina_lector()
    print(f'Del texto copiado a la voz: {(primera - t) * 1000:.0f} ms. La lectura duró {ultima - primera:.1f} s, '
          f'{sonora:.1f} s de ellos sonoros, a {nivel:.0f} dB.')
    if sonora < 5 or nivel < -45:
        print('demo: no se ha oído la lectura', file=sys.stderr)
        return 1
    if estado != 0:
        print(f'demo: el lector terminó con {estado}', file=sys.stderr)
        return 1
    print(f'Lo oído:     {wav}\nLa pantalla: {png}')
    return 0


if __name__ == '__main__':
    try:
        sys.exit(main())
    except AssertionError as error:
        print(f'demo: {error}', file=sys.stderr)
        sys.exit(1)
