"""A session manager of the X kind, in a process of its own: it takes clients in, asks them to save, and ends them."""
import ctypes
import os
import select
import subprocess
import sys

if __package__:
    from .procesos import espera

_SIM = {'Local': 1, 'Both': 2}


class GestorSesion:
    """Starts this very file as a program and speaks with it over its standard streams, a line a word."""

    def __init__(self, carpeta):
        self._diario = os.path.join(carpeta, 'sesion.txt')
        self._carpeta = carpeta
        self._p = None

    def __enter__(self):
        with open(self._diario, 'wb') as salida:
            self._p = subprocess.Popen([sys.executable, os.path.abspath(__file__)], stdin=subprocess.PIPE,
                                       stdout=salida, stderr=salida, env=dict(os.environ, HOME=self._carpeta))
        espera(lambda: self._valor('red'), 10, que='the session manager')
        return self

    def __exit__(self, *_):
        self._p.stdin.close()
        self._p.kill()
        self._p.wait()

    def _valores(self, clave):
        with open(self._diario, encoding='utf-8', errors='replace') as f:
            return [l.split(' ', 1)[1].strip() for l in f if l.startswith(clave + ' ')]

    def _valor(self, clave):
        valores = self._valores(clave)
        return valores[-1] if valores else None

    def _manda(self, orden):
        self._p.stdin.write(orden.encode() + b'\n')
        self._p.stdin.flush()

    def entorno(self):
        return {'SESSION_MANAGER': self._valor('red')}

    def clientes(self):
        return len(self._valores('registrado'))

    @property
    def guardados(self):
        return len(self._valores('guardado'))

    @property
    def estilo(self):
        return int(self._valor('estilo') or -1)

    def guarda(self):
        """A checkpoint: the session is saved and goes on."""
        antes = self.guardados
        self._manda('guarda')
        espera(lambda: self.guardados > antes, 10, que='the client to have saved')

    def acaba_sesion(self):
        """All are asked to save, and told to end once they have."""
        antes = self.guardados
        self._manda('apaga')
        espera(lambda: self.guardados > antes, 10, que='the client to have saved')
        self._manda('muere')


def _principal():
    sm, ice = ctypes.CDLL('libSM.so.6'), ctypes.CDLL('libICE.so.6')
    puntero, entero = ctypes.c_void_p, ctypes.c_int

    class Valor(ctypes.Structure):
        _fields_ = [('largo', entero), ('valor', puntero)]

    class Propiedad(ctypes.Structure):
        _fields_ = [('nombre', ctypes.c_char_p), ('tipo', ctypes.c_char_p), ('cuantos', entero),
                    ('valores', ctypes.POINTER(Valor))]

    class Llamada(ctypes.Structure):
        _fields_ = [('funcion', puntero), ('dato', puntero)]

    def di(texto):
        print(texto, flush=True)

    for f, args, res in ((sm.SmsGenerateClientID, [puntero], puntero), (sm.SmsRegisterClientReply, [puntero, puntero], entero),
                         (sm.SmsSaveYourself, [puntero, entero, entero, entero, entero], None),
                         (sm.SmsSaveComplete, [puntero], None), (sm.SmsDie, [puntero], None),
                         (sm.SmsCleanUp, [puntero], None), (sm.SmFreeProperty, [puntero], None),
                         (ice.IceComposeNetworkIdList, [entero, puntero], ctypes.c_char_p),
                         (ice.IceGetListenConnectionNumber, [puntero], entero),
                         (ice.IceAcceptConnection, [puntero, puntero], puntero), (ice.IceConnectionNumber, [puntero], entero),
                         (ice.IceConnectionStatus, [puntero], entero),
                         (ice.IceSetHostBasedAuthProc, [puntero, puntero], None),
                         (ice.IceProcessMessages, [puntero, puntero, puntero], entero)):
        f.argtypes, f.restype = args, res

    clientes = []
    vivas = []  # what the library calls must not be collected

    def devuelve(tipo):
        def envuelve(f):
            c = tipo(f)
            vivas.append(c)
            return ctypes.cast(c, puntero).value
        return envuelve
    Uno = ctypes.CFUNCTYPE(entero, puntero, puntero, puntero)
    Nada = ctypes.CFUNCTYPE(None, puntero, puntero, puntero, puntero, puntero, puntero)

    @devuelve(ctypes.CFUNCTYPE(entero, ctypes.c_char_p))
    def cualquiera(_maquina):
        return 1

    @devuelve(Uno)
    def registra(cliente, _dato, anterior):
        sm.SmsRegisterClientReply(cliente, anterior or sm.SmsGenerateClientID(cliente))
        clientes.append(cliente)
        di('registrado sí')
        return 1

    @devuelve(ctypes.CFUNCTYPE(None, puntero, puntero, entero))
    def guardado(cliente, _dato, _bien):
        di('guardado sí')
        sm.SmsSaveComplete(cliente)

    @devuelve(ctypes.CFUNCTYPE(None, puntero, puntero, entero, puntero))
    def cierra(cliente, _dato, _n, _motivos):
        clientes.remove(cliente)
        sm.SmsCleanUp(cliente)
        di('cerrado sí')

    @devuelve(ctypes.CFUNCTYPE(None, puntero, puntero, entero, ctypes.POINTER(ctypes.POINTER(Propiedad))))
    def propiedades(_cliente, _dato, n, lista):
        for i in range(n):
            p = lista[i].contents
            if p.nombre == b'RestartStyleHint':
                di(f'estilo {ctypes.cast(p.valores[0].valor, ctypes.POINTER(ctypes.c_ubyte))[0]}')

    @devuelve(Nada)
    def nada(*_):
        pass

    @devuelve(ctypes.CFUNCTYPE(entero, puntero, puntero, ctypes.POINTER(ctypes.c_ulong), ctypes.POINTER(Llamada * 10), puntero))
    def nuevo(_cliente, _dato, mascara, llamadas, _motivo):
        mascara[0] = 0x3ff
        for i, f in enumerate((registra, nada, nada, nada, nada, guardado, cierra, propiedades, nada, nada)):
            llamadas.contents[i].funcion = f
        return 1

    error = ctypes.create_string_buffer(256)
    assert sm.SmsInitialize(b'prueba', b'1', ctypes.c_void_p(nuevo), None, ctypes.c_void_p(cualquiera), 256, error), error.value
    cuantos, escuchas = entero(), puntero()
    assert ice.IceListenForConnections(ctypes.byref(cuantos), ctypes.byref(escuchas), 256, error), error.value
    objetos = [ctypes.cast(escuchas, ctypes.POINTER(puntero))[i] for i in range(cuantos.value)]
    for objeto in objetos:
        ice.IceSetHostBasedAuthProc(objeto, cualquiera)
    di('red ' + ice.IceComposeNetworkIdList(cuantos, escuchas).decode())

    fuentes = {ice.IceGetListenConnectionNumber(o): ('escucha', o) for o in objetos}
    while True:
        listos, _, _ = select.select([0, *fuentes], [], [])
        for fd in listos:
            if fd == 0:
                for orden in os.read(0, 4096).decode().split() or sys.exit(0):
                    for cliente in list(clientes):
                        if orden == 'muere':
                            sm.SmsDie(cliente)
                        else:
                            sm.SmsSaveYourself(cliente, _SIM['Both'], orden == 'apaga', 0, 0)
                continue
            clase, objeto = fuentes[fd]
            if clase == 'escucha':
                estado = entero()
                conexion = ice.IceAcceptConnection(objeto, ctypes.byref(estado))
                if conexion:
                    while ice.IceConnectionStatus(conexion) == 0:
                        ice.IceProcessMessages(conexion, None, None)
                    fuentes[ice.IceConnectionNumber(conexion)] = ('cliente', conexion)
            elif ice.IceProcessMessages(objeto, None, None) != 0:
                del fuentes[fd]


if __name__ == '__main__':
    _principal()
