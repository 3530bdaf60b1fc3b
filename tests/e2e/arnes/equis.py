"""The X server from this very process: keys injected through XTest and stamped with our clock, grabs, selections."""
import ctypes
import time

_x = ctypes.CDLL('libX11.so.6')
_t = ctypes.CDLL('libXtst.so.6')
_Display = ctypes.c_void_p
_ulong, _int, _uint = ctypes.c_ulong, ctypes.c_int, ctypes.c_uint
for _f, _res, _args in (
        (_x.XOpenDisplay, _Display, [ctypes.c_char_p]), (_x.XCloseDisplay, _int, [_Display]),
        (_x.XStringToKeysym, _ulong, [ctypes.c_char_p]), (_x.XKeysymToKeycode, ctypes.c_ubyte, [_Display, _ulong]),
        (_x.XFlush, _int, [_Display]), (_x.XSync, _int, [_Display, _int]), (_x.XPending, _int, [_Display]),
        (_x.XDefaultRootWindow, _ulong, [_Display]), (_x.XInternAtom, _ulong, [_Display, ctypes.c_char_p, _int]),
        (_x.XGetSelectionOwner, _ulong, [_Display, _ulong]),
        (_x.XGrabKey, _int, [_Display, _int, _uint, _ulong, _int, _int, _int]),
        (_x.XUngrabKey, _int, [_Display, _int, _uint, _ulong]),
        (_x.XSendEvent, _int, [_Display, _ulong, _int, ctypes.c_long, ctypes.c_void_p]),
        (_x.XNextEvent, _int, [_Display, ctypes.c_void_p]),
        (_x.XDefaultVisual, ctypes.c_void_p, [_Display, _int]), (_x.XDefaultGC, ctypes.c_void_p, [_Display, _int]),
        (_x.XCreateImage, ctypes.c_void_p, [_Display, ctypes.c_void_p, _uint, _int, _int, ctypes.c_char_p, _uint, _uint,
                                            _int, _int]),
        (_x.XCreatePixmap, _ulong, [_Display, _ulong, _uint, _uint, _uint]),
        (_x.XPutImage, _int, [_Display, _ulong, ctypes.c_void_p, ctypes.c_void_p, _int, _int, _int, _int, _uint, _uint]),
        (_x.XSetWindowBackgroundPixmap, _int, [_Display, _ulong, _ulong]), (_x.XFreePixmap, _int, [_Display, _ulong]),
        (_x.XClearWindow, _int, [_Display, _ulong]), (_x.XFree, _int, [ctypes.c_void_p]),
        (_x.XSendEvent, _int, [_Display, _ulong, _int, ctypes.c_long, ctypes.c_void_p]),
        (_t.XTestFakeKeyEvent, _int, [_Display, _uint, _int, _ulong]),
        (_t.XTestFakeButtonEvent, _int, [_Display, _uint, _int, _ulong]),
        (_t.XTestFakeMotionEvent, _int, [_Display, _int, _int, _int, _ulong])):
    _f.restype, _f.argtypes = _res, _args

_MODIFICADORES = {'ctrl': ('Control_L', 4), 'alt': ('Alt_L', 8), 'shift': ('Shift_L', 1), 'super': ('Super_L', 64)}
_ENCAJES = (0, 2, 16, 18)  # CapsLock, NumLock, both


class Equis:
    def __init__(self, pantalla):
        self._d = _x.XOpenDisplay(pantalla.encode())
        if not self._d:
            raise AssertionError(f'no X server at {pantalla}')
        self._raiz = _x.XDefaultRootWindow(self._d)

    def cierra(self):
        if self._d:
            _x.XCloseDisplay(self._d)
            self._d = None

    def _codigo(self, nombre):
        codigo = _x.XKeysymToKeycode(self._d, _x.XStringToKeysym(nombre.encode()))
        if not codigo:
            raise AssertionError(f'no key for {nombre}')
        return codigo

    def _combinacion(self, texto):
        *mods, tecla = texto.split('+')
        mascara = 0
        for m in mods:
            mascara |= _MODIFICADORES[m][1]
        return [self._codigo(_MODIFICADORES[m][0]) for m in mods], self._codigo(tecla), mascara

    def baja(self, combinacion):
        """Presses and holds; returns the clock (time.monotonic) just before the last key's press was sent."""
        mods, tecla, _ = self._combinacion(combinacion)
        for m in mods:
            _t.XTestFakeKeyEvent(self._d, m, 1, 0)
        _x.XSync(self._d, 0)
        t = time.monotonic()
        _t.XTestFakeKeyEvent(self._d, tecla, 1, 0)
        _x.XFlush(self._d)
        return t

    def sube(self, combinacion):
        mods, tecla, _ = self._combinacion(combinacion)
        _t.XTestFakeKeyEvent(self._d, tecla, 0, 0)
        for m in reversed(mods):
            _t.XTestFakeKeyEvent(self._d, m, 0, 0)
        _x.XSync(self._d, 0)

    def tecla(self, combinacion):
        """One press and release, e.g. "ctrl+1"; returns the clock of the press."""
        t = self.baja(combinacion)
        self.sube(combinacion)
        return t

    def raton(self, x, y, boton):
        _t.XTestFakeMotionEvent(self._d, -1, x, y, 0)
        _t.XTestFakeButtonEvent(self._d, boton, 1, 0)
        _t.XTestFakeButtonEvent(self._d, boton, 0, 0)
        _x.XSync(self._d, 0)

    def pinta_fondo(self, ancho, alto, pixeles):
        """Gives the root window a picture: 32 bits a pixel, blue first."""
        imagen = _x.XCreateImage(self._d, _x.XDefaultVisual(self._d, 0), 24, 2, 0, pixeles, ancho, alto, 32, 0)
        mapa = _x.XCreatePixmap(self._d, self._raiz, ancho, alto, 24)
        _x.XPutImage(self._d, mapa, _x.XDefaultGC(self._d, 0), imagen, 0, 0, 0, 0, ancho, alto)
        _x.XSetWindowBackgroundPixmap(self._d, self._raiz, mapa)
        _x.XClearWindow(self._d, self._raiz)
        _x.XFreePixmap(self._d, mapa)
        _x.XSync(self._d, 0)
        _x.XFree(imagen)  # the record only: the pixels are the caller's

    def cierra_ventana(self, numero):
        """Asks the window manager to close a window, as its frame's close box does."""
        mensaje = _x.XInternAtom(self._d, b'_NET_CLOSE_WINDOW', 0)
        evento = (ctypes.c_long * 24)(33, 0, 1, self._d, numero, mensaje, 32, 0, 2)  # ClientMessage, from a pager
        _x.XSendEvent(self._d, self._raiz, 0, 0x180000, evento)
        _x.XSync(self._d, 0)

    def boton(self, x, y, boton, baja):
        """Half a click at a place of the screen."""
        _t.XTestFakeMotionEvent(self._d, -1, x, y, 0)
        _t.XTestFakeButtonEvent(self._d, boton, 1 if baja else 0, 0)
        _x.XSync(self._d, 0)

    def mueve(self, x, y):
        _t.XTestFakeMotionEvent(self._d, -1, x, y, 0)
        _x.XSync(self._d, 0)

    def hay_dueno(self, seleccion):
        """The window that owns a selection, 0 for none."""
        return _x.XGetSelectionOwner(self._d, _x.XInternAtom(self._d, seleccion.encode(), 0))

    def acapara(self, combinacion):
        """Holds a combination as another program would."""
        _, tecla, mascara = self._combinacion(combinacion)
        for e in _ENCAJES:
            _x.XGrabKey(self._d, tecla, mascara | e, self._raiz, 0, 1, 1)
        _x.XSync(self._d, 0)

    def suelta(self, combinacion):
        _, tecla, mascara = self._combinacion(combinacion)
        for e in _ENCAJES:
            _x.XUngrabKey(self._d, tecla, mascara | e, self._raiz)
        _x.XSync(self._d, 0)

    def pulsaciones_acaparadas(self):
        """How many presses of combinations held here have come; takes them."""
        evento = ctypes.create_string_buffer(192)
        n = 0
        _x.XSync(self._d, 0)
        while _x.XPending(self._d):
            _x.XNextEvent(self._d, evento)
            n += ctypes.cast(evento, ctypes.POINTER(_int))[0] == 2  # KeyPress
        return n
