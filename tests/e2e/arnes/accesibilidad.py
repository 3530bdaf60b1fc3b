"""What a screen reader gets of the program: its tree of accessible objects, its focus, its events.

The client is this very file in a process of its own, because a process has one accessibility bus in its life: it takes
orders on standard input and answers in JSON. It listens to all events and asks each one's source what a screen reader
asks, so that a program that dies of being listened to dies in the scenarios.
"""
import json
import os
import subprocess
import sys
import time

if __package__:
    from .procesos import espera

# Roles whose focus belongs to what holds them, and which have no name of their own.
PARTES = {'list item', 'table cell', 'tree item', 'menu item', 'scroll bar', 'page tab'}
TEXTOS = {'text', 'label', 'document text', 'document frame', 'document web', 'link'}
VENTANAS = {'frame', 'dialog', 'alert', 'window', 'file chooser'}


def nodos(arbol):
    """The tree's nodes, from the top; an object is {nombre, rol, estados, descripcion, ruta, hijos}."""
    yield arbol
    for hijo in arbol['hijos']:
        yield from nodos(hijo)


def enfocables(arbol):
    """The controls of a window that take the focus, whether they can at present or not."""
    return [n for n in nodos(arbol) if 'focusable' in n['estados'] and n['rol'] not in PARTES | VENTANAS
            and n is not arbol and 'interno' not in n]


def defectos(ventana):
    """What is wrong with a window's names, in words; empty when nothing is. Two pages may use one name: they are never
    seen together."""
    malos = []
    if not ventana['nombre']:
        malos.append(f'a {ventana["rol"]} without a title')
    vistos = {}
    for n in enfocables(ventana):
        nombre = n['nombre'].strip()
        if not nombre:
            malos.append(f'a {n["rol"]} without a name')
        elif nombre in vistos and 'visible' in n['estados']:
            malos.append(f'two controls named "{nombre}": {vistos[nombre]}, {n["rol"]}')
        if 'visible' in n['estados']:
            vistos[nombre] = n['rol']
    return malos


class Oyente:
    """The client. Started before the reader, so that the toolkit finds accessibility switched on."""

    def __init__(self, escritorio, aplicacion='ondalis'):
        self._e = escritorio
        self._p = subprocess.Popen(['/usr/bin/python3', os.path.abspath(__file__), aplicacion], env=escritorio.entorno,
                                   stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
        assert self._pide('hola') == 'hola'

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._p.stdin.close()
        try:
            self._p.wait(5)
        except subprocess.TimeoutExpired:
            self._p.kill()
            self._p.wait()

    def _pide(self, orden):
        self._p.stdin.write(orden + '\n')
        self._p.stdin.flush()
        linea = self._p.stdout.readline()
        if not linea:
            raise AssertionError('the screen reader\'s client has ended')
        return json.loads(linea)

    def ventanas(self):
        """Trees of the windows that are shown."""
        return self._pide('ventanas')

    def ventana(self, titulo):
        """The tree of the window of that title, once it is there."""
        def busca():
            return next((v for v in self.ventanas() if v['nombre'] == titulo), None)
        return espera(busca, 10, 0.1, f'the accessible window "{titulo}"')

    def foco(self):
        """[name, role, path] of the object that has the focus, by its events; None before the first."""
        return self._pide('foco')

    def sucesos(self):
        """How many events have come, and how many focus events among them."""
        return self._pide('sucesos')

    def espera_foco(self, antes, limite=1.5):
        """The focus after the number of focus events has passed `antes`, or None when none comes."""
        fin = time.monotonic() + limite
        while time.monotonic() < fin:
            if self.sucesos()[1] > antes:
                time.sleep(0.03)  # what else belongs to the same key
                return self.foco()
            time.sleep(0.01)
        return None


def recorre(oyente, pulsa, ventana, tope=150):
    """Presses Tab until the focus comes round in that window, given as a tree; the objects met, [name, role, path] each,
    the one that has the focus at the beginning first."""
    vistos = [[n['nombre'], n['rol'], ''] for n in enfocables(ventana) if 'focused' in n['estados']]
    rutas, sordas = set(), 0
    for _ in range(tope):
        antes = oyente.sucesos()[1]
        pulsa('Tab')
        en_texto = vistos and vistos[-1][1] in TEXTOS
        foco = oyente.espera_foco(antes, 0.4 if en_texto else 1.5)
        if foco is None and en_texto and sordas < 60:
            sordas += 1  # it goes through the links of a text
            continue
        if foco is None or foco[2] in rutas:
            return vistos
        vistos.append(foco)
        rutas.add(foco[2])
        if foco[1] == 'radio button':
            vistos += _recorre_opciones(oyente, pulsa, rutas)
    raise AssertionError(f'the focus never comes round: {vistos}')


def _recorre_opciones(oyente, pulsa, rutas):
    """Of a group of radio buttons Tab meets one: the arrows meet the others, below it and above."""
    vistos = []
    for tecla in ('Down', 'Up'):
        for _ in range(12):
            antes = oyente.sucesos()[1]
            pulsa(tecla)
            foco = oyente.espera_foco(antes, 0.6)
            if foco is None or foco[1] != 'radio button':
                break
            if foco[2] not in rutas:
                vistos.append(foco)
                rutas.add(foco[2])
            elif tecla == 'Down':
                break
    return vistos


def inalcanzables(ventana, vistos):
    """Names of the controls of `ventana` that could have the focus and were never met by the keyboard."""
    nombres = {nombre for nombre, _, _ in vistos}

    def hallado(n):
        return n['nombre'] in nombres or any(h['nombre'] in nombres for h in n['hijos'] if h['rol'] in PARTES)
    # A label that a mouse may select from is read with its window.
    return [n['nombre'] or n['rol'] for n in enfocables(ventana) if n['rol'] != 'label'
            and {'enabled', 'showing', 'visible'} <= set(n['estados']) and not hallado(n)]


# The client's side.

_PREGUNTAS = ('object:', 'window:', 'document:')


def _cliente(aplicacion):
    import gi
    gi.require_version('Atspi', '2.0')
    from gi.repository import Atspi, Gio, GLib

    sesion = Gio.bus_get_sync(Gio.BusType.SESSION)
    for propiedad in ('IsEnabled', 'ScreenReaderEnabled'):
        sesion.call_sync('org.a11y.Bus', '/org/a11y/bus', 'org.freedesktop.DBus.Properties', 'Set',
                         GLib.Variant('(ssv)', ('org.a11y.Status', propiedad, GLib.Variant('b', True))), None, 0, 10000)
    Atspi.init()
    estado = {'todos': 0, 'focos': 0, 'foco': None}

    def nombre_de(objeto):
        """A list that drops down has its chosen entry as name; a screen reader says the labels it belongs to before."""
        if objeto.get_role_name() == 'combo box':
            for relacion in objeto.get_relation_set():
                if relacion.get_relation_type() == Atspi.RelationType.LABELLED_BY:
                    return ' '.join(relacion.get_target(i).get_name() for i in range(relacion.get_n_targets()))
        return objeto.get_name() or ''

    def suceso(e, *_):
        estado['todos'] += 1
        try:
            objeto = e.source
            nombre, rol = nombre_de(objeto), objeto.get_role_name()
            objeto.get_state_set().get_states()
            objeto.get_description()
            objeto.get_index_in_parent()
            if e.type.startswith('object:text-') or rol in ('text', 'spin button'):
                if 'Text' in objeto.get_interfaces():
                    Atspi.Text.get_text(objeto, 0, -1)
            if e.type.startswith(('object:state-changed:focused', 'focus:')) and (e.detail1 or e.type == 'focus:'):
                estado['foco'] = [nombre, rol, _clave(objeto)]
                estado['focos'] += 1
        except GLib.Error:
            pass  # it is gone already

    def _clave(objeto):
        """Tells objects apart: where it stands below its window."""
        partes, uno = [], objeto
        while uno is not None and uno.get_role_name() != 'application' and len(partes) < 40:
            partes.append(str(uno.get_index_in_parent()))
            uno = uno.get_parent()
        return '/'.join(reversed(partes))

    oyente = Atspi.EventListener.new(suceso)
    for clase in _PREGUNTAS:
        oyente.register(clase)

    def arbol(objeto, hondo=0):
        nodo = {'nombre': nombre_de(objeto), 'rol': objeto.get_role_name(),
                'estados': [s.value_nick for s in objeto.get_state_set().get_states()],
                'descripcion': objeto.get_description() or '', 'hijos': []}
        if hondo < 30:
            for i in range(objeto.get_child_count()):
                hijo = objeto.get_child_at_index(i)
                if hijo is None:
                    continue
                rama = arbol(hijo, hondo + 1)
                # The box inside a number box or an editable list: its holder bears the name.
                if nodo['rol'] in ('spin button', 'combo box'):
                    rama['interno'] = True
                    for n in nodos(rama):
                        n['interno'] = True
                nodo['hijos'].append(rama)
        return nodo

    def ventanas():
        escritorio = Atspi.get_desktop(0)
        dadas = []
        for i in range(escritorio.get_child_count()):
            programa = escritorio.get_child_at_index(i)
            if programa is None or programa.get_name().lower() != aplicacion.lower():
                continue
            for j in range(programa.get_child_count()):
                ventana = programa.get_child_at_index(j)
                if ventana is None:
                    continue
                nodo = arbol(ventana)
                if {'showing', 'visible'} <= set(nodo['estados']):
                    dadas.append(nodo)
                # A dialog is a child of its owner.
                for n in [x for h in nodo['hijos'] for x in nodos(h)]:
                    if n['rol'] in VENTANAS and {'showing', 'visible'} <= set(n['estados']):
                        dadas.append(n)
                _saca_ventanas(nodo)
        return dadas

    def _saca_ventanas(nodo):
        nodo['hijos'] = [h for h in nodo['hijos'] if h['rol'] not in VENTANAS]
        for h in nodo['hijos']:
            _saca_ventanas(h)

    bucle = GLib.MainLoop()

    def orden(canal, _condicion):
        linea = sys.stdin.readline()
        if not linea:
            bucle.quit()
            return False
        try:
            dada = {'hola': lambda: 'hola', 'ventanas': ventanas, 'foco': lambda: estado['foco'],
                    'sucesos': lambda: [estado['todos'], estado['focos']]}[linea.strip()]()
        except GLib.Error:  # what was being asked went meanwhile
            dada = []
        print(json.dumps(dada), flush=True)
        return True
    GLib.io_add_watch(GLib.IOChannel.unix_new(0), GLib.PRIORITY_LOW, GLib.IOCondition.IN | GLib.IOCondition.HUP, orden)
    bucle.run()


if __name__ == '__main__':
    _cliente(sys.argv[1])
