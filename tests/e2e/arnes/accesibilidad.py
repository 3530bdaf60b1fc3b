"""What a screen reader gets of the program: its tree of accessible objects, its focus, its events.

The client is this very file in a process of its own, because a process has one accessibility bus in its life: it takes
orders on standard input and answers in JSON. It listens to all events and asks each one's source what a screen reader
asks, so that a program that dies of being listened to dies in the scenarios.
"""
import json
import os
import subprocess
import sys

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


def _excusa_teclas_de_qt(escritorio):
    """With a screen reader there, Qt holds a copy of each key until the registry has answered, and drops it undeleted when
    the key's window, or the program, is gone by then. Excused here only: elsewhere what the library leaks may be ours."""
    opciones = escritorio.entorno.get('LSAN_OPTIONS', '')
    propia = next((o for o in opciones.split(':') if o.startswith('suppressions=')), None)
    if not propia:
        return
    ruta = os.path.join(escritorio.carpeta, 'lsan.supp')
    with open(propia.partition('=')[2], encoding='utf-8') as f, open(ruta, 'w', encoding='utf-8') as g:
        g.write(f.read() + '\nleak:libQt6Gui.so\n')
    escritorio.entorno['LSAN_OPTIONS'] = opciones.replace(propia, f'suppressions={ruta}')


class Oyente:
    """The client. Started before the reader, so that the toolkit finds accessibility switched on."""

    def __init__(self, escritorio, aplicacion='ondalis'):
        _excusa_teclas_de_qt(escritorio)
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

    def _pide(self, *orden):
        self._p.stdin.write(json.dumps(orden) + '\n')
        self._p.stdin.flush()
        linea = self._p.stdout.readline()
        if not linea:
            raise AssertionError('the screen reader\'s client has ended')
        return json.loads(linea)

    def ventanas(self):
        """Trees of the windows that are shown."""
        return self._pide('ventanas')

    def titulos(self):
        """Titles of the windows that are shown, with whether the keyboard is theirs."""
        return dict(self._pide('titulos'))

    def ventana(self, titulo):
        """The tree of the window of that title, once it is there."""
        return espera(lambda: self._pide('ventana', titulo), 20, 0.02, f'the accessible window "{titulo}"')

    def espera_activa(self, titulo):
        """Until the window of that title has the keyboard, and all that came of it has been heard."""
        espera(lambda: self.titulos().get(titulo), 20, 0.02, f'the window "{titulo}" to have the keyboard')
        self.asienta()

    def asienta(self):
        """Waits until the program has done what the keys sent so far make it do, and its events have come. What opens,
        closes or gives the keyboard to another window comes later still."""
        assert self._pide('asienta'), 'the window that has the keyboard never answers'

    def foco(self):
        """[name, role, path] of the object that has the focus, by its events; None before the first."""
        return self._pide('foco')

    def focos(self, desde=0):
        """All that have had the focus, in order, from the `desde`th on."""
        return self._pide('focos', desde)

    def sucesos(self):
        """How many events have come, and how many focus events among them."""
        return self._pide('sucesos')

    def pulsa(self, pulsa, tecla):
        """Presses a key; what it gave the focus to, in order."""
        antes = self.sucesos()[1]
        pulsa(tecla)
        self.asienta()
        return self.focos(antes)


def recorre(oyente, pulsa, ventana, tope=150):
    """Presses Tab until the focus comes round in that window, given as a tree; the objects met, [name, role, path] each,
    the one that has the focus at the beginning first."""
    oyente.asienta()
    vistos = [[n['nombre'], n['rol'], n['ruta']] for n in enfocables(ventana) if 'focused' in n['estados']]
    rutas, sordas = {ruta for _, _, ruta in vistos}, 0
    for _ in range(tope):
        en_texto = vistos and vistos[-1][1] in TEXTOS
        focos = oyente.pulsa(pulsa, 'Tab')
        if not focos and en_texto and sordas < 60:
            sordas += 1  # it goes through the links of a text
            continue
        nuevos = [f for f in focos if f[2] not in rutas]
        if not nuevos:
            return vistos
        vistos += nuevos
        rutas |= {f[2] for f in nuevos}
        if vistos[-1][1] == 'radio button':
            vistos += _recorre_opciones(oyente, pulsa, rutas)
    raise AssertionError(f'the focus never comes round: {vistos}')


def _recorre_opciones(oyente, pulsa, rutas):
    """Of a group of radio buttons Tab meets one: the arrows meet the others, below it and above."""
    vistos = []
    for tecla in ('Down', 'Up'):
        for _ in range(12):
            focos = [f for f in oyente.pulsa(pulsa, tecla) if f[1] == 'radio button']
            nuevos = [f for f in focos if f[2] not in rutas]
            vistos += nuevos
            rutas |= {f[2] for f in nuevos}
            if not focos or (tecla == 'Down' and not nuevos):
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
_LIMITE_MS = 15000  # of a question to a program on a busy machine; the library's own is under a second


class _Cliente:
    def __init__(self, atspi, glib, aplicacion, eco, pregunta_registro):
        self._atspi, self._glib, self._aplicacion, self._eco = atspi, glib, aplicacion.lower(), eco
        self._pregunta_registro = pregunta_registro
        self._todos, self._focos = 0, []
        self._oyente = atspi.EventListener.new(self._suceso)
        for clase in _PREGUNTAS:
            self._oyente.register(clase)
        self.ordenes = {'hola': lambda: 'hola', 'ventanas': self._ventanas, 'ventana': self._ventana,
                        'titulos': self._titulos, 'asienta': self._asienta,
                        'foco': lambda: self._focos[-1] if self._focos else None,
                        'focos': lambda desde: self._focos[desde:],
                        'sucesos': lambda: [self._todos, len(self._focos)]}

    # What comes by itself.

    def _suceso(self, e, *_):
        self._todos += 1
        try:
            objeto = e.source
            nombre, rol = self._nombre(objeto), objeto.get_role_name()
            objeto.get_state_set().get_states()
            objeto.get_description()
            objeto.get_index_in_parent()
            if e.type.startswith('object:text-') or rol in ('text', 'spin button'):
                if 'Text' in objeto.get_interfaces():
                    self._atspi.Text.get_text(objeto, 0, -1)
            if e.type.startswith(('object:state-changed:focused', 'focus:')) and (e.detail1 or e.type == 'focus:'):
                self._focos.append([nombre, rol, self._ruta(objeto)])
        except self._glib.Error:
            pass  # it is gone already

    def _nombre(self, objeto):
        """A list that drops down has its chosen entry as name; a screen reader says the labels it belongs to before."""
        if objeto.get_role_name() == 'combo box':
            for relacion in objeto.get_relation_set():
                if relacion.get_relation_type() == self._atspi.RelationType.LABELLED_BY:
                    return ' '.join(relacion.get_target(i).get_name() for i in range(relacion.get_n_targets()))
        return objeto.get_name() or ''

    @staticmethod
    def _ruta(objeto):
        """Tells objects apart: where it stands, its window's place in the program first."""
        partes, uno = [], objeto
        while uno is not None and uno.get_role_name() != 'application' and len(partes) < 40:
            partes.append(str(uno.get_index_in_parent()))
            uno = uno.get_parent()
        return '/'.join(reversed(partes))

    # What is asked for.

    def _programas(self):
        escritorio = self._atspi.get_desktop(0)
        dados = (escritorio.get_child_at_index(i) for i in range(escritorio.get_child_count()))
        return [p for p in dados if p is not None and p.get_name().lower() == self._aplicacion]

    def _asienta(self):
        """The echo says that the toolkit has taken the keys. For each it then asks the registry whether somebody else wants
        it, and the answer puts it at the end of its queue. So each side is asked in turn, by something that it answers
        in the order of what came before: the program, the registry, and the program twice."""
        if not self._eco.espera():
            return False
        programas = self._programas()
        for programa in programas:
            programa.get_relation_set()  # the library never keeps this answer
        self._pregunta_registro()
        for programa in (*programas, *programas):
            programa.get_relation_set()
        return True

    def _mostradas(self):
        """(object, its path, its states) of the windows that are shown: whatever stands directly below a program, and
        dialogs, which may be children of their owner."""
        def busca(objeto, ruta, todos):
            for i in range(objeto.get_child_count()):
                hijo = objeto.get_child_at_index(i)
                if hijo is None or not (todos or hijo.get_role_name() in VENTANAS):
                    continue
                estados = self._estados(hijo)
                if {'showing', 'visible'} <= set(estados):
                    yield hijo, f'{ruta}{i}', estados
                yield from busca(hijo, f'{ruta}{i}/', False)
        for programa in self._programas():
            yield from busca(programa, '', True)

    @staticmethod
    def _estados(objeto):
        return [s.value_nick for s in objeto.get_state_set().get_states()]

    def _titulos(self):
        return [[v.get_name() or '', 'active' in estados] for v, _, estados in self._mostradas()]

    def _ventanas(self):
        return [self._arbol(v, ruta) for v, ruta, _ in self._mostradas()]

    def _ventana(self, titulo):
        return next((self._arbol(v, ruta) for v, ruta, _ in self._mostradas() if v.get_name() == titulo), None)

    def _arbol(self, objeto, ruta, dentro_de=()):
        rol = objeto.get_role_name()
        nodo = {'nombre': self._nombre(objeto), 'rol': rol, 'estados': self._estados(objeto), 'ruta': ruta,
                'descripcion': objeto.get_description() or '', 'hijos': []}
        # The entries of a list that drops down are no controls; they are many.
        if len(dentro_de) >= 30 or dentro_de[-1:] == ('combo box',):
            return nodo
        for i in range(objeto.get_child_count()):
            hijo = objeto.get_child_at_index(i)
            if hijo is None or hijo.get_role_name() in VENTANAS:
                continue
            rama = self._arbol(hijo, f'{ruta}/{i}', (*dentro_de, rol))
            # The box inside a number box or an editable list: its holder bears the name.
            if rol in ('spin button', 'combo box'):
                for n in nodos(rama):
                    n['interno'] = True
            nodo['hijos'].append(rama)
        return nodo


def _atiende(aplicacion):
    import gi
    gi.require_version('Atspi', '2.0')
    from eco import Eco
    from gi.repository import Atspi, Gio, GLib

    sesion = Gio.bus_get_sync(Gio.BusType.SESSION)
    for propiedad in ('IsEnabled', 'ScreenReaderEnabled'):
        sesion.call_sync('org.a11y.Bus', '/org/a11y/bus', 'org.freedesktop.DBus.Properties', 'Set',
                         GLib.Variant('(ssv)', ('org.a11y.Status', propiedad, GLib.Variant('b', True))), None, 0, 10000)
    Atspi.init()
    Atspi.set_timeout(_LIMITE_MS, _LIMITE_MS)
    direccion = sesion.call_sync('org.a11y.Bus', '/org/a11y/bus', 'org.a11y.Bus', 'GetAddress', None, None, 0, 10000)
    accesible = Gio.DBusConnection.new_for_address_sync(
        direccion[0], Gio.DBusConnectionFlags.AUTHENTICATION_CLIENT | Gio.DBusConnectionFlags.MESSAGE_BUS_CONNECTION)

    def pregunta_registro():
        """Something of the interface that serves keys: those questions wait in a line of their own."""
        accesible.call_sync('org.a11y.atspi.Registry', '/org/a11y/atspi/registry/deviceeventcontroller',
                            'org.a11y.atspi.DeviceEventController', 'GetKeystrokeListeners', None, None, 0, _LIMITE_MS)
    cliente = _Cliente(Atspi, GLib, aplicacion, Eco(), pregunta_registro)
    bucle = GLib.MainLoop()

    def orden(_canal, _condicion):
        linea = sys.stdin.readline()
        if not linea:
            bucle.quit()
            return False
        nombre, *datos = json.loads(linea)
        try:
            dada = cliente.ordenes[nombre](*datos)
        except GLib.Error:  # what was being asked went meanwhile
            dada = []
        print(json.dumps(dada), flush=True)
        return True
    # Behind whatever has come of events: what is told is told of all of them.
    GLib.io_add_watch(GLib.IOChannel.unix_new(0), GLib.PRIORITY_LOW, GLib.IOCondition.IN | GLib.IOCondition.HUP, orden)
    bucle.run()


if __name__ == '__main__':
    _atiende(sys.argv[1])
