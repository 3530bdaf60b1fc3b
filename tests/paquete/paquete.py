#!/usr/bin/env python3
"""What is installed, looked at as the desktop will: `paquete.py RULE BUILD_FOLDER SOURCE_FOLDER`, one rule a test.

Each rule works on an installation of its own below a temporary folder, made by `cmake --install`.
"""
import contextlib
import gzip
import os
import re
import struct
import subprocess
import sys
import tempfile

REGLAS = {}
ID = 'com.ferrano.Ondalis'
LADOS = (16, 22, 24, 32, 48, 64, 128, 256)


def regla(f):
    REGLAS[f.__name__] = f
    return f


def corre(*orden, entorno=None):
    """Runs a program that must end well; gives what it wrote, errors included."""
    r = subprocess.run(orden, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                       encoding='utf-8', timeout=60, env=dict(os.environ, LC_ALL='C.UTF-8', **(entorno or {})))
    assert r.returncode == 0, f'{orden[0]} ended with {r.returncode}:\n{r.stdout}'
    return r.stdout


@contextlib.contextmanager
def instalacion(obra, prefijo='/usr'):
    with tempfile.TemporaryDirectory(prefix='ondalis-instala-') as destino:
        corre('cmake', '--install', obra, '--prefix', prefijo, entorno={'DESTDIR': destino})
        yield destino + prefijo


def ficheros(carpeta):
    return sorted(os.path.relpath(os.path.join(raiz, nombre), carpeta)
                  for raiz, _, nombres in os.walk(carpeta) for nombre in nombres)


def lee(ruta):
    with open(ruta, encoding='utf-8') as f:
        return f.read()


def programas(raiz):
    return [p for p in ('ondalis', 'ondalisctl') if os.path.exists(os.path.join(raiz, 'bin', p))]


@regla
def todo_esta_en_su_sitio_y_nada_mas(obra, _fuente):
    with instalacion(obra) as raiz:
        puestos = set(ficheros(raiz))
        debidos = {'libexec/ondalis/ondalis-motor', f'share/applications/{ID}.desktop',
                   f'share/metainfo/{ID}.metainfo.xml', f'share/icons/hicolor/scalable/apps/{ID}.svg',
                   'share/doc/ondalis/LICENSE'} | {
                       f'share/icons/hicolor/{n}x{n}/apps/{ID}.png' for n in LADOS}
        for programa in programas(raiz):
            debidos |= {f'bin/{programa}', f'share/man/man1/{programa}.1.gz',
                        f'share/bash-completion/completions/{programa}', f'share/zsh/site-functions/_{programa}',
                        f'share/fish/vendor_completions.d/{programa}.fish'}
        assert 'bin/ondalis' in debidos
        assert debidos <= puestos, f'missing: {sorted(debidos - puestos)}'
        sobran = [f for f in puestos - debidos if not f.startswith('share/ondalis/')
                  and f != f'share/dbus-1/services/{ID}.service']
        assert not sobran, f'nobody wants {sobran}'
        assert not [f for f in puestos if 'tono' in f or 'prueba' in f], 'a helper of the tests is installed'
        for f in puestos:
            modo = os.stat(os.path.join(raiz, f)).st_mode & 0o777
            assert modo == (0o755 if f.startswith(('bin/', 'libexec/')) else 0o644), f'{f} has mode {modo:o}'


@regla
def el_lector_instalado_halla_su_motor(obra, _fuente):
    """The worker is where the reader looks for it, seen from its own folder."""
    with instalacion(obra, '/opt/otro sitio') as raiz:
        assert os.access(os.path.join(raiz, 'bin', '..', 'libexec', 'ondalis', 'ondalis-motor'), os.X_OK)
        assert not os.path.exists(os.path.join(raiz, 'bin', 'ondalis-motor'))


@regla
def la_entrada_de_escritorio_es_valida(obra, _fuente):
    with instalacion(obra) as raiz:
        ruta = f'{raiz}/share/applications/{ID}.desktop'
        dicho = corre('desktop-file-validate', ruta)
        assert dicho == '', dicho
        claves = dict(l.split('=', 1) for l in lee(ruta).splitlines() if '=' in l)
        assert claves['Categories'] == 'Utility;Accessibility;'
        assert os.access(f'{raiz}/bin/{claves["Exec"]}', os.X_OK) and claves['TryExec'] == claves['Exec']
        assert os.path.exists(f'{raiz}/share/icons/hicolor/scalable/apps/{claves["Icon"]}.svg')
        for clave in ('GenericName', 'Comment', 'Keywords'):
            assert claves[clave] and claves[clave + '[en]'] and claves[clave] != claves[clave + '[en]'], clave


@regla
def los_datos_de_appstream_son_validos(obra, _fuente):
    with instalacion(obra) as raiz:
        ruta = f'{raiz}/share/metainfo/{ID}.metainfo.xml'
        corre('xmllint', '--noout', ruta)
        dicho = corre('appstreamcli', 'validate', '--no-net', '--no-color', ruta)
        graves = [l for l in dicho.splitlines() if re.match(r'[EWI]: ', l)]
        assert not graves, '\n'.join(graves)
        texto = lee(ruta)
        for trozo in ('xml:lang="es"', 'GPL-3.0-or-later', 'oars-1.1', f'{ID}.desktop</launchable>'):
            assert trozo in texto, trozo
        assert 'http' not in texto, 'an address that nobody serves'


@regla
def cada_icono_mide_lo_que_dice_su_carpeta(obra, _fuente):
    with instalacion(obra) as raiz:
        for n in LADOS:
            with open(f'{raiz}/share/icons/hicolor/{n}x{n}/apps/{ID}.png', 'rb') as f:
                cabecera = f.read(24)
            assert cabecera[:8] == b'\x89PNG\r\n\x1a\n'
            assert struct.unpack('>II', cabecera[16:]) == (n, n), n
        corre('xmllint', '--noout', f'{raiz}/share/icons/hicolor/scalable/apps/{ID}.svg')


@regla
def las_paginas_de_manual_no_dan_avisos(obra, _fuente):
    with instalacion(obra) as raiz, tempfile.TemporaryDirectory() as carpeta:
        for programa in programas(raiz):
            with gzip.open(f'{raiz}/share/man/man1/{programa}.1.gz', 'rb') as f:
                texto = f.read()
            pagina = os.path.join(carpeta, programa + '.1')
            with open(pagina, 'wb') as f:
                f.write(texto)
            r = subprocess.run(['man', '--warnings', '-E', 'UTF-8', '-l', '-Tutf8', '-Z', pagina],
                               stdin=subprocess.DEVNULL, capture_output=True, text=True, timeout=60,
                               env=dict(os.environ, LC_ALL='C.UTF-8', MANWIDTH='80'))
            assert r.returncode == 0 and r.stderr == '', r.stderr
            # A style of mandoc's wants lines of 80 bytes, and this text is UTF-8.
            corre('mandoc', '-T', 'lint', '-W', 'warning', pagina)
            vista = corre('man', '-E', 'UTF-8', '-l', pagina, entorno={'MANWIDTH': '80', 'PAGER': 'cat'})
            assert 'NOMBRE' in vista and 'OPCIONES' in vista or programa != 'ondalis', vista


def opciones_del_manual(fuente):
    return set(re.findall(r'^\.BI? \\-(\w+)(?: ".*")?$', lee(f'{fuente}/man/ondalis.1').split('.SH OPCIONES')[1].split('.SH')[0],
                          re.M))


@regla
def los_completados_cargan_en_sus_interpretes(obra, _fuente):
    with instalacion(obra) as raiz:
        for programa in programas(raiz):
            corre('bash', '-n', f'{raiz}/share/bash-completion/completions/{programa}')
            corre('zsh', '-n', f'{raiz}/share/zsh/site-functions/_{programa}')
            corre('fish', '-n', f'{raiz}/share/fish/vendor_completions.d/{programa}.fish')


def completa_bash(raiz, *palabras):
    guion = (f'source "{raiz}/share/bash-completion/completions/{palabras[0]}"; COMP_WORDS=("$@"); '
             f'COMP_CWORD=$(($# - 1)); _{palabras[0]}; printf "%s\\n" "${{COMPREPLY[@]}}"')
    return set(corre('bash', '-c', guion, 'bash', *palabras).split())


@regla
def los_completados_ofrecen_las_opciones_del_manual_y_una_vez(obra, fuente):
    opciones = opciones_del_manual(fuente)
    assert {'help', 'clear', 'nosapi5', 'filetxt', 'outputfile'} <= opciones, opciones
    with instalacion(obra) as raiz:
        # Without a hyphen files are offered too.
        assert {o for o in completa_bash(raiz, 'ondalis', '') if o.startswith('-')} == {'-' + o for o in opciones}
        assert '-filetxt' not in completa_bash(raiz, 'ondalis', '-filetxt', '')
        assert completa_bash(raiz, 'ondalis', '-n') == {'-nosapi5'}
        assert completa_bash(raiz, 'ondalis', '-CLEAR', '-') == {'-' + o for o in opciones - {'clear'}}
        fish = corre('fish', '--no-config', '-c',
                     f'source {raiz}/share/fish/vendor_completions.d/ondalis.fish; complete -C "ondalis -"')
        assert {l.split()[0] for l in fish.splitlines()} == {'-' + o for o in opciones}, fish
        assert set(re.findall(r"\)-(\w+)\[", lee(f'{raiz}/share/zsh/site-functions/_ondalis'))) == opciones


@regla
def el_completado_de_ondalisctl_ofrece_sus_ordenes_y_opciones(obra, _fuente):
    with instalacion(obra) as raiz:
        assert completa_bash(raiz, 'ondalisctl', '') == {'habla', 'fichero', 'espera', '--espera', '--plazo', '--ayuda'}
        assert completa_bash(raiz, 'ondalisctl', '--espera', 'h') == {'habla'}
        assert completa_bash(raiz, 'ondalisctl', 'habla', '') == set()
        fish = corre('fish', '--no-config', '-c',
                     f'source {raiz}/share/fish/vendor_completions.d/ondalisctl.fish; complete -C "ondalisctl "')
        assert {l.split()[0] for l in fish.splitlines()} == {'habla', 'fichero', 'espera'}, fish


@regla
def el_servicio_del_bus_nombra_el_programa_instalado(obra, fuente):
    if not os.path.exists(f'{fuente}/packaging/{ID}.service.in'):
        print('SKIP: no service file in packaging/')
        return 77
    for prefijo in ('/usr', '/opt/ondalis'):
        with instalacion(obra, prefijo) as raiz:
            texto = lee(f'{raiz}/share/dbus-1/services/{ID}.service')
            orden = re.search(r'^Exec=(\S+)', texto, re.M).group(1)
            assert orden == prefijo + '/bin/ondalis', orden
            assert f'Name={ID}\n' in texto and '@' not in texto, texto
    return 0


def main():
    if sys.argv[1:] == ['--lista']:
        print('\n'.join(REGLAS))
        return 0
    nombre, obra, fuente = sys.argv[1:]
    try:
        return REGLAS[nombre](obra, fuente) or 0
    except AssertionError as error:
        print(f'{nombre}: {error}', file=sys.stderr)
        return 1


if __name__ == '__main__':
    sys.exit(main())
