"""The few questions that starting a desktop asks an X server, through libX11 itself (no Python package needed)."""

import ctypes
import os


class XDisplay:
    def __init__(self, name, authority):
        self._x = ctypes.CDLL("libX11.so.6")
        self._x.XOpenDisplay.restype = ctypes.c_void_p
        self._x.XInternAtom.restype = ctypes.c_ulong
        self._x.XGetSelectionOwner.restype = ctypes.c_ulong
        self._x.XDefaultRootWindow.restype = ctypes.c_ulong
        before = os.environ.get("XAUTHORITY")
        os.environ["XAUTHORITY"] = authority  # libX11 takes the cookie from nowhere else
        try:
            self._display = ctypes.c_void_p(self._x.XOpenDisplay(name.encode()))
        finally:
            if before is None:
                del os.environ["XAUTHORITY"]
            else:
                os.environ["XAUTHORITY"] = before
        if not self._display:
            raise ConnectionError(f"the X server {name} refused the connection")
        self._root = self._x.XDefaultRootWindow(self._display)

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._x.XCloseDisplay(self._display)

    def size(self):
        return self._x.XDisplayWidth(self._display, 0), self._x.XDisplayHeight(self._display, 0)

    def _atom(self, name):
        return self._x.XInternAtom(self._display, name.encode(), 0)

    def selection_owner(self, name):
        return self._x.XGetSelectionOwner(self._display, ctypes.c_ulong(self._atom(name)))

    def forget_root_property(self, name):
        self._x.XDeleteProperty(self._display, ctypes.c_ulong(self._root), ctypes.c_ulong(self._atom(name)))
        self._x.XSync(self._display, 0)

    def root_cardinal(self, name):
        """The first 32-bit number of a property of the root window, or None."""
        kind, count, left = ctypes.c_ulong(), ctypes.c_ulong(), ctypes.c_ulong()
        width, data = ctypes.c_int(), ctypes.POINTER(ctypes.c_ulong)()
        any_type = 0
        self._x.XGetWindowProperty(
            self._display, ctypes.c_ulong(self._root), ctypes.c_ulong(self._atom(name)), ctypes.c_long(0),
            ctypes.c_long(1), 0, ctypes.c_ulong(any_type), ctypes.byref(kind), ctypes.byref(width),
            ctypes.byref(count), ctypes.byref(left), ctypes.byref(data))
        if not data:
            return None
        value = data[0] if count.value and width.value == 32 else None
        self._x.XFree(data)
        return value
