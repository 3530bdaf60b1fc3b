"""The sanitizers' settings as the test presets give them, for scenarios run by hand on such a build folder."""
import json
import os

RAIZ = os.path.dirname(os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__)))))
VARIABLES = ('ASAN_OPTIONS', 'LSAN_OPTIONS', 'UBSAN_OPTIONS', 'TSAN_OPTIONS')


def opciones(obra):
    """{variable: settings} of the test preset that belongs to the build folder; empty for one without sanitizers."""
    with open(os.path.join(RAIZ, 'CMakePresets.json'), encoding='utf-8') as f:
        preajustes = json.load(f)
    carpetas = {c['name']: os.path.basename(c.get('binaryDir', '')) for c in preajustes['configurePresets']}
    carpeta = os.path.basename(os.path.normpath(obra))
    for prueba in preajustes['testPresets']:
        if carpetas.get(prueba.get('configurePreset')) == carpeta:
            return {v: t.replace('${sourceDir}', RAIZ) for v, t in prueba.get('environment', {}).items()}
    return {}
