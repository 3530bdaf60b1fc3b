"""The pronunciation dictionary's page, by keyboard only, and a reader that starts over damaged settings."""
import os
import time

from arnes.banco import Banco, texto_tonos
from arnes.procesos import espera
from casos.opciones import FRESCA, TITULO, _doble_click, _espera_abierta
from casos.ventanas import _espera_sin, _pixeles, _retrata, _ventana

CASOS = {}


def caso(f):
    CASOS[f.__name__] = f
    return f


def _fichero(b):
    return os.path.join(b.escritorio.entorno['XDG_DATA_HOME'], 'ondalis', 'diccionario.dat')


def _contenido(b):
    try:
        with open(_fichero(b), encoding='utf-8') as f:
            return f.read()
    except FileNotFoundError:
        return None


def _escribe(b, entradas):
    os.makedirs(os.path.dirname(_fichero(b)), exist_ok=True)
    with open(_fichero(b), 'w', encoding='utf-8') as f:
        f.write('ondalis-diccionario 1\n' + ''.join(f'{c}\t{v}\n' for c, v in entradas))


def _teclea(b, texto):
    for letra in texto:
        b.tecla({' ': 'space'}.get(letra, letra))


def _abre_pagina(b):
    """The configuration on its page "Diccionario"; the focus is in the list of pages."""
    _doble_click(b)
    _espera_abierta(b)
    b.tecla('End')
    b.tecla('Up')  # the last but one
    time.sleep(0.3)


def _anade(b, clave, conversion):
    """From the list of pages on: past the rows into the boxes, and Enter updates the list."""
    b.tecla('Tab')
    b.tecla('Tab')
    _teclea(b, clave)
    b.tecla('Tab')
    _teclea(b, conversion)
    b.tecla('Return')


@caso
def una_entrada_tecleada_y_aceptada_se_oye_en_la_lectura_siguiente():
    with Banco(ajustes=FRESCA) as b:
        _abre_pagina(b)
        _anade(b, 'gato', 'n7 n7')
        time.sleep(0.3)
        _retrata(b, 'diccionario-una-entrada')
        b.tecla('Return')  # nothing is pending any more: the window is accepted
        _espera_sin(b, TITULO)
        assert _contenido(b) == 'ondalis-diccionario 1\ngato\tn7 n7\n', _contenido(b)
        t = b.copia('n3 gato n9 y n9 con muchas letras')
        b.espera_palabra(9, desde=t)
        oidas = [k for k in b.numeros(desde=t) if k in (3, 7, 9)]
        assert oidas[:3] == [3, 7, 9], oidas
        sietes = [p for p in b.oye_palabras(desde=t) if p.k == 7]
        assert sum(p.fin - p.inicio for p in sietes) > 0.3, sietes  # two words, not one
        # It is there after the next start as well.
        b.espera_silencio()
        assert b.termina_lector() == 0
        b.arranca_lector()
        t = b.copia('otro gato que pasa por aquí mismo')
        b.espera_palabra(7, desde=t)


@caso
def una_entrada_cancelada_no_se_oye_y_ya_no_esta_al_abrir():
    with Banco(ajustes=FRESCA, arranca=False) as b:
        _escribe(b, [('perro', 'n5')])
        b.arranca_lector()
        _abre_pagina(b)
        _anade(b, 'gato', 'n7')
        time.sleep(0.3)
        b.tecla('Escape')
        _espera_sin(b, TITULO)
        assert _contenido(b) == 'ondalis-diccionario 1\nperro\tn5\n'
        t = b.copia('n3 gato perro n9 con muchas letras')
        b.espera_palabra(9, desde=t)
        oidas = b.numeros(desde=t)
        assert 7 not in oidas and 5 in oidas, oidas
        b.espera_silencio()
        _doble_click(b)
        _espera_abierta(b)
        _retrata(b, 'diccionario-tras-cancelar')
        b.tecla('Return')
        b.tecla('Tab')
        b.tecla('Return')
        _espera_sin(b, TITULO)
        espera(lambda: _contenido(b) == 'ondalis-diccionario 1\nperro\tn5\n', 5, que='the dictionary as it was')


@caso
def una_fila_se_elige_se_prueba_se_cambia_y_se_suprime_con_el_teclado():
    with Banco(ajustes=FRESCA, arranca=False) as b:
        _escribe(b, [('gato', 'n7'), ('perro', 'n5')])
        b.arranca_lector()
        _abre_pagina(b)
        b.tecla('Tab')
        b.tecla('Down')  # "gato"
        b.tecla('Tab')
        b.tecla('Tab')  # its conversion, selected whole
        _teclea(b, 'n8')
        b.tecla('Return')
        for _ in range(2):  # "Actualizar" is disabled: "Suprimir", "Probar"
            b.tecla('Tab')
        # Updating has put nothing elsewhere: the box had the focus.
        t = time.monotonic()
        b.tecla('space')
        b.espera_palabra(8, desde=t)
        b.espera_silencio()
        _retrata(b, 'diccionario-probada')
        b.tecla('shift+Tab')
        b.tecla('shift+Tab')
        b.tecla('shift+Tab')
        b.tecla('shift+Tab')  # the list
        b.tecla('Down')  # "perro"
        for _ in range(3):
            b.tecla('Tab')
        b.tecla('space')  # "Suprimir"
        time.sleep(0.3)
        _retrata(b, 'diccionario-suprimida')
        b.tecla('Return')
        _espera_sin(b, TITULO)
        assert _contenido(b) == 'ondalis-diccionario 1\ngato\tn8\n', _contenido(b)


def _retratos_de_la_pagina(nombre, **entorno):
    with Banco(arranca=False) as b:
        _escribe(b, [(f'palabra {i:02}', f'se dice así, la número {i}') for i in range(30)] +
                 [('Sr.', 'señor'), ('árbol', 'planta'), ('una clave muy larga que no cabe en su columna', 'corta')])
        b.escritorio.entorno.update(entorno)
        b.arranca_lector()
        _doble_click(b)
        ventana = _espera_abierta(b)
        b.tecla('End')
        b.tecla('Up')
        time.sleep(0.3)
        _retrata(b, f'diccionario-{nombre}-abierta')
        b.tecla('Tab')
        b.tecla('Down')
        b.tecla('Down')
        b.tecla('Down')
        time.sleep(0.3)
        _retrata(b, f'diccionario-{nombre}-elegida')
        x, y, ancho, alto = ventana[1:]
        assert x >= 0 and y >= 0 and x + ancho <= 1280 and y + alto <= 800, ventana


@caso
def la_pagina_del_diccionario_cabe_a_96_y_a_192_puntos():
    _retratos_de_la_pagina('96')
    _retratos_de_la_pagina('192', QT_FONT_DPI='192')
    _retratos_de_la_pagina('doble', QT_SCALE_FACTOR='2', QT_FONT_DPI='96')


OSCURO = """[Colors:Button]
BackgroundNormal=49,54,59
ForegroundNormal=239,240,241
[Colors:Selection]
BackgroundNormal=61,174,233
ForegroundNormal=239,240,241
[Colors:View]
BackgroundNormal=35,38,41
BackgroundAlternate=49,54,59
ForegroundNormal=239,240,241
ForegroundInactive=130,135,140
ForegroundLink=80,160,255
[Colors:Window]
BackgroundNormal=49,54,59
ForegroundNormal=239,240,241
"""


@caso
def la_pagina_del_diccionario_sigue_un_tema_oscuro():
    with Banco(ajustes=FRESCA, arranca=False) as b:
        _escribe(b, [('gato', 'miau'), ('perro', 'guau')])
        with open(os.path.join(b.escritorio.entorno['XDG_CONFIG_HOME'], 'kdeglobals'), 'w', encoding='ascii') as f:
            f.write(OSCURO)
        b.escritorio.entorno.update(XDG_CURRENT_DESKTOP='KDE', KDE_SESSION_VERSION='5')
        b.arranca_lector()
        _abre_pagina(b)
        b.tecla('Tab')
        b.tecla('Down')
        time.sleep(0.3)
        _retrata(b, 'diccionario-oscuro')
        _, x, y, ancho, alto = _ventana(b, TITULO)
        visto = _pixeles(b)[y:y + alto, x:x + ancho].astype(int)
        claros = (visto.min(axis=-1) > 200).mean()  # letters and nothing else
        assert claros < 0.1, claros


@caso
def con_ajustes_disparatados_el_lector_arranca_y_lee():
    with Banco(arranca=False) as b:
        carpeta = os.path.join(b.escritorio.entorno['XDG_CONFIG_HOME'], 'Ferrano')
        os.makedirs(carpeta, exist_ok=True)
        ruta = os.path.join(carpeta, 'Ondalis.ini')
        disparates = [b'letras', b'', b'99999999999999999999', b'-7', b'1,2,3', b'"abierta', b'@Invalid()',
                      b'a\0b', b'\xff\xfe', b'@Variant(\\0\\0)', b'True\\', b'=;=', b'\\x']
        claves = {b'%General': b'ActivaAlArrancar PrioridadAlta VerLupa PronunciaSignosPunt Aviso '
                               b'SonidosPortapapeles'.split(),
                  b'Voz': b'Velocidad Volumen ValoresAvanzados Tono TamCabeza'.split(),
                  b'TipoLectura': b'LeePortapapeles IgnoraMiniTexto CharsMiniTexto TrataEditores LeeTeclado'.split(),
                  b'Grabar': b'LeerTexto GrabarTexto NombreFichero CalidadkHz Calidadkbps'.split(),
                  b'Teclas': b'ModActivar AsciiActivar ModPausa AsciiPausa NroPalAvance UtilizaAvisos'.split(),
                  b'Ventana': b'LeftPrincipal TopPrincipal LeftLupa WidthLupa'.split()}
        for vuelta, disparate in enumerate(disparates):
            with open(ruta, 'wb') as f:
                for seccion, suyas in claves.items():
                    f.write(b'[' + seccion + b']\n')
                    for clave in suyas:
                        f.write(clave + b'=' + disparate + b'\n')
                # Without sounds the recording holds the words only; it stands behind all the nonsense.
                f.write(b'[%General]\nUtilizaSonidos=False\n')
            b.arranca_lector()
            t = b.copia(texto_tonos(20 + vuelta, 6))
            b.espera_palabra(20 + vuelta, desde=t)
            assert b.termina_lector() == 0, disparate
