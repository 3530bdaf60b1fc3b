#!/usr/bin/python3
"""Checks the include rules of the layers.

    capas.py SOURCE_DIR CAPAS_TXT COMPILE_COMMANDS     the rules hold, and `core` refuses what is forbidden
    capas.py --autotest                                the check finds planted violations

CAPAS_TXT names each layer's sources, as the build knows them: "layer:source|source". Every file of src/ that a source
includes, directly or through others, must keep the rules of that source's layer.
"""
import json
import os
import re
import shlex
import subprocess
import sys
import tempfile

INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.M)

QT = re.compile(r'^(Q[A-Z]|Qt[A-Z0-9]\w*/|q[a-z]+\.h)')
SISTEMA_VEDADO = re.compile(r'^(sys/(socket|un|wait|epoll|prctl)|netinet/|arpa/|netdb|spawn|poll|X11/|xcb/|xkbcommon/|'
                            r'pulse/|espeak-ng/|sonic|dbus/|glib)')
ESTANDAR_C = {'assert', 'ctype', 'errno', 'limits', 'math', 'stddef', 'stdint', 'stdio', 'stdlib', 'string', 'time'}


def qt_core():
    """Names of the headers that Qt Core itself offers."""
    for raiz in ('/usr/include/x86_64-linux-gnu/qt6', '/usr/include/aarch64-linux-gnu/qt6', '/usr/include/qt6'):
        if os.path.isdir(raiz + '/QtCore'):
            return set(os.listdir(raiz + '/QtCore'))
    sys.exit('capas: no Qt Core headers found')


class Reglas:
    """What a layer may include: folders of src/ for quoted names, and a predicate for names in angle brackets."""

    def __init__(self):
        self.qtcore = qt_core()
        logica = {'text', 'speech', 'keys', 'settings', 'audio', 'reader', 'desktop', 'engine', 'libs'}
        self.carpetas = {
            'libs': {'libs'},
            'engine': {'engine', 'libs'},
            'eci': {'engine', 'libs'},
            'core': logica,
            'platform': logica | {'platform'},
            'ui': logica,
        }

    def angulo(self, capa, nombre):
        if capa == 'libs':  # the C++ library, and POSIX files
            if nombre in ('fcntl.h', 'unistd.h', 'sys/file.h', 'sys/stat.h', 'sys/types.h'):
                return True
            base = nombre[:-2] if nombre.endswith('.h') else nombre
            return '/' not in nombre and (base in ESTANDAR_C or not nombre.endswith('.h')) and not QT.match(nombre)
        if capa in ('engine', 'eci'):  # whatever the system offers but Qt, the window system, an engine or a sound server
            return not (QT.match(nombre) or re.match(r'^(X11/|xcb/|xkbcommon/|pulse/|espeak-ng/|dbus/|glib)', nombre))
        if capa == 'core':
            if QT.match(nombre):
                modulo, _, resto = nombre.rpartition('/')
                return modulo in ('', 'QtCore') and resto in self.qtcore and not resto.lower().startswith('qprocess')
            return not SISTEMA_VEDADO.match(nombre)
        if capa == 'ui':
            return not re.match(r'^(X11/|xcb/|pulse/|espeak-ng/)', nombre)
        return True  # platform: that is what it is for


def sin_comentarios(texto):
    return re.sub(r'/\*.*?\*/', '', re.sub(r'//[^\n]*', '', texto), flags=re.S)


def revisa(src, capas, reglas):
    """List of "layer: file includes name" for each breach; files of src/ reached from a layer's sources count."""
    faltas = set()
    vistos = 0
    for capa, fuentes in capas.items():
        pendientes = [f for f in fuentes if f.startswith(src + '/')]
        hechos = set()
        while pendientes:
            fichero = pendientes.pop()
            if fichero in hechos or not os.path.isfile(fichero):
                continue
            hechos.add(fichero)
            with open(fichero, encoding='utf-8') as f:
                texto = sin_comentarios(f.read())
            for signo, nombre in INCLUDE.findall(texto):
                propio = os.path.join(src, nombre)
                if signo == '<':
                    if not reglas.angulo(capa, nombre):
                        faltas.add(f'{capa}: {os.path.relpath(fichero, src)} includes <{nombre}>')
                elif os.path.isfile(propio):
                    if nombre.split('/')[0] not in reglas.carpetas[capa]:
                        faltas.add(f'{capa}: {os.path.relpath(fichero, src)} includes "{nombre}"')
                    pendientes.append(propio)
                elif not reglas.angulo(capa, nombre):
                    faltas.add(f'{capa}: {os.path.relpath(fichero, src)} includes "{nombre}"')
        vistos += len(hechos)
    return sorted(faltas), vistos


def lee_capas(ruta, src):
    capas = {}
    with open(ruta, encoding='utf-8') as f:
        for linea in f:
            if not linea.strip():
                continue
            capa, _, fuentes = linea.strip().partition(':')
            # A relative name belongs to the target's own folder, which is src/ for all layers.
            capas[capa] = [f if os.path.isabs(f) else os.path.join(src, f) for f in fuentes.split('|') if f]
    return capas


def orden_de_core(base, src):
    """The compiler's arguments for a source of `core`, without its source and output."""
    with open(base, encoding='utf-8') as f:
        for entrada in json.load(f):
            if os.path.normpath(entrada['file']).startswith(os.path.join(src, 'settings') + os.sep):
                args = shlex.split(entrada['command'])
                break
        else:
            sys.exit('capas: no source of core in the compile database')
    compilador = next(i for i, a in enumerate(args) if os.path.basename(a).startswith(('c++', 'g++', 'clang++')))
    quedan, salta = [], 0
    for a in args[compilador:]:
        if salta:
            salta -= 1
        elif a in ('-o', '-include', '-c', '-MF', '-MT', '-MQ'):
            salta = 1
        elif a not in ('-MD', '-MMD', '-fpch-preprocess', '-Winvalid-pch'):
            quedan.append(a)
    return quedan + ['-fsyntax-only', '-x', 'c++']


def compila(orden, texto):
    with tempfile.NamedTemporaryFile('w', suffix='.cpp') as f:
        f.write(texto)
        f.flush()
        r = subprocess.run(orden + [f.name], stdin=subprocess.DEVNULL, capture_output=True, text=True)
    return r.returncode == 0, r.stderr


def revisa_compilador(base, src):
    """`core` compiles what it may include and refuses each kind of thing that it may not."""
    orden = orden_de_core(base, src)
    faltas = []
    bien, error = compila(orden, '#include <QString>\n#include <QtCore/QObject>\n#include <vector>\nint main() {}\n')
    if not bien:
        faltas.append('core refuses what it may include:\n' + error)
    for nombre in ('QWidget', 'QtWidgets/QWidget', 'QtWidgets/qwidget.h', 'QtGui/QGuiApplication', 'QClipboard',
                   'QProcess', 'QtCore/QProcess', 'QtCore/qprocess.h', 'QtNetwork/QTcpSocket', 'QLocalSocket',
                   'QtDBus/QDBusConnection', 'xcb/xcb.h', 'X11/Xlib.h', 'sys/socket.h', 'sys/un.h', 'spawn.h'):
        bien, error = compila(orden, f'#include <{nombre}>\nint main() {{}}\n')
        if bien:
            faltas.append(f'core compiles <{nombre}>')
    return faltas


def autotest():
    """Plants one breach a rule in a tree of its own and wants each of them found, and nothing else."""
    planta = {
        'libs/a.cpp': '#include <vector>\n#include <QString>\n',
        'libs/b.cpp': '#include "engine/e.h"\n',
        'engine/e.h': '#include <sys/socket.h>\n',  # allowed there
        'engine/e.cpp': '#include "engine/e.h"\n#include <QtCore/QObject>\n',
        'libs/v.cpp': '#include "engine/e.h"\n#include "settings/ok.h"\n#include <QString>\n',
        'settings/s.h': '#include <QtWidgets/QWidget>\n',
        'settings/s.cpp': '#include "settings/s.h"\n#include <QString>\n// #include <QWidget>\n',
        'text/t.cpp': '#include <QProcess>\n',
        'keys/k.cpp': '#include <xcb/xcb.h>\n#include "platform/p.h"\n',
        'platform/p.h': '#include <X11/Xlib.h>\n',
        'desktop/u.cpp': '#include <QWidget>\n#include "settings/ok.h"\n',
        'settings/ok.h': '#include <QtCore/QString>\n',
    }
    capas = {
        'libs': ['libs/a.cpp', 'libs/b.cpp'], 'engine': ['engine/e.cpp'], 'eci': ['libs/v.cpp'],
        'core': ['settings/s.cpp', 'text/t.cpp', 'keys/k.cpp'], 'platform': [], 'ui': ['desktop/u.cpp'],
    }
    esperadas = {
        'libs: libs/a.cpp includes <QString>', 'libs: libs/b.cpp includes "engine/e.h"',
        'libs: engine/e.h includes <sys/socket.h>', 'engine: engine/e.cpp includes <QtCore/QObject>',
        'eci: libs/v.cpp includes <QString>', 'eci: libs/v.cpp includes "settings/ok.h"',
        'eci: settings/ok.h includes <QtCore/QString>',
        'core: settings/s.h includes <QtWidgets/QWidget>', 'core: text/t.cpp includes <QProcess>',
        'core: keys/k.cpp includes <xcb/xcb.h>', 'core: keys/k.cpp includes "platform/p.h"',
        'core: platform/p.h includes <X11/Xlib.h>',
    }
    with tempfile.TemporaryDirectory() as src:
        for nombre, texto in planta.items():
            os.makedirs(os.path.dirname(os.path.join(src, nombre)), exist_ok=True)
            with open(os.path.join(src, nombre), 'w', encoding='utf-8') as f:
                f.write(texto)
        rutas = {c: [os.path.join(src, f) for f in fs] for c, fs in capas.items()}
        faltas, _ = revisa(src, rutas, Reglas())
    if set(faltas) != esperadas:
        print('not found:', *sorted(esperadas - set(faltas)), sep='\n  ')
        print('found without reason:', *sorted(set(faltas) - esperadas), sep='\n  ')
        return 1
    print(f'{len(esperadas)} planted violations found, nothing else')
    return 0


def main():
    if sys.argv[1:] == ['--autotest']:
        return autotest()
    src, capas_txt, base = (os.path.abspath(a) for a in sys.argv[1:4])
    faltas, vistos = revisa(src, lee_capas(capas_txt, src), Reglas())
    if vistos < 10:
        faltas.append(f'only {vistos} files seen: the list of sources is wrong')
    faltas += revisa_compilador(base, src)
    print(*faltas, sep='\n')
    print(f'{vistos} files, {len(faltas)} violations')
    return 1 if faltas else 0


if __name__ == '__main__':
    sys.exit(main())
