"""The echo of the window that has the keyboard: when it comes, the program has taken all keys sent to it before.

It is the question by which window managers find out whether a program hangs; toolkits answer it from the same queue that
keys come by. For a process of its own: errors of windows that go meanwhile are passed over in the whole process.
"""
import ctypes
import select
import time

_x = ctypes.CDLL('libX11.so.6')
_ulong, _long, _int, _puntero = ctypes.c_ulong, ctypes.c_long, ctypes.c_int, ctypes.c_void_p
for _f, _res, _args in (
        (_x.XOpenDisplay, _puntero, [ctypes.c_char_p]), (_x.XConnectionNumber, _int, [_puntero]),
        (_x.XDefaultRootWindow, _ulong, [_puntero]), (_x.XInternAtom, _ulong, [_puntero, ctypes.c_char_p, _int]),
        (_x.XSelectInput, _int, [_puntero, _ulong, _long]), (_x.XPending, _int, [_puntero]),
        (_x.XNextEvent, _int, [_puntero, _puntero]), (_x.XSync, _int, [_puntero, _int]),
        (_x.XGetInputFocus, _int, [_puntero, ctypes.POINTER(_ulong), ctypes.POINTER(_int)]),
        (_x.XSendEvent, _int, [_puntero, _ulong, _int, _long, _puntero])):
    _f.restype, _f.argtypes = _res, _args
_Manejador = ctypes.CFUNCTYPE(_int, _puntero, _puntero)
_MENSAJE = 33  # ClientMessage
_AVISOS = 1 << 17 | 1 << 19  # StructureNotifyMask, SubstructureNotifyMask: toolkits send the echo by either


@_Manejador
def _pasa_por_alto(_pantalla, _error):
    return 0


class _Mensaje(ctypes.Structure):
    _fields_ = [('tipo', _int), ('serie', _ulong), ('enviado', _int), ('pantalla', _puntero), ('ventana', _ulong),
                ('clase', _ulong), ('formato', _int), ('datos', _long * 5), ('resto', _long * 12)]


class Eco:
    def __init__(self):
        _x.XSetErrorHandler(_pasa_por_alto)
        self._d = _x.XOpenDisplay(None)
        assert self._d, 'no X server'
        self._raiz = _x.XDefaultRootWindow(self._d)
        self._protocolos = _x.XInternAtom(self._d, b'WM_PROTOCOLS', 0)
        self._pregunta = _x.XInternAtom(self._d, b'_NET_WM_PING', 0)
        _x.XSelectInput(self._d, self._raiz, _AVISOS)  # the echo goes to the root window
        self._vuelta = 0

    def espera(self, limite=20.0):
        """True when it has come; asks again where the keyboard has gone to a window that doesn't answer."""
        fin = time.monotonic() + limite
        while time.monotonic() < fin:
            ventana, modo = _ulong(), _int()
            _x.XGetInputFocus(self._d, ctypes.byref(ventana), ctypes.byref(modo))
            self._vuelta += 1
            if ventana.value > 1:  # neither none nor wherever the pointer is
                mensaje = _Mensaje(_MENSAJE, 0, 1, self._d, ventana, self._protocolos, 32,
                                   (_long * 5)(self._pregunta, self._vuelta, ventana.value, 0, 0))
                _x.XSendEvent(self._d, ventana, 0, 0, ctypes.byref(mensaje))
            _x.XSync(self._d, 0)
            if self._oye(min(fin, time.monotonic() + 0.25)):
                return True
        return False

    def _oye(self, fin):
        while True:
            while _x.XPending(self._d):
                mensaje = _Mensaje()
                _x.XNextEvent(self._d, ctypes.byref(mensaje))
                if (mensaje.tipo, mensaje.clase, mensaje.ventana) == (_MENSAJE, self._protocolos, self._raiz) and \
                        list(mensaje.datos[:2]) == [self._pregunta, self._vuelta]:
                    return True
            falta = fin - time.monotonic()
            if falta <= 0:
                return False
            select.select([_x.XConnectionNumber(self._d)], [], [], falta)
