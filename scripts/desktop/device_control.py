"""Devices that come and go: what unplugging, switching off and detaching do to the X server's list."""

import ctypes
import os

from Xlib.ext import xinput

_XI_ATTACH_SLAVE, _XI_DETACH_SLAVE = 3, 4
_XA_INTEGER, _REPLACE = 19, 0


class _Change(ctypes.Structure):
    """XIAttachSlaveInfo and XIDetachSlaveInfo, as large as the union that they are part of."""
    _fields_ = [("type", ctypes.c_int), ("device", ctypes.c_int), ("master", ctypes.c_int), ("room", ctypes.c_int * 5)]


class DeviceControl:
    """Through libXi itself: python3-xlib can ask for devices, but not change them."""

    def __init__(self, env, connection):
        os.environ["XAUTHORITY"] = env["XAUTHORITY"]
        self._connection = connection
        self._x, self._xi = ctypes.CDLL("libX11.so.6"), ctypes.CDLL("libXi.so.6")
        self._x.XOpenDisplay.restype = ctypes.c_void_p
        self._x.XInternAtom.restype = ctypes.c_ulong
        self._display = ctypes.c_void_p(self._x.XOpenDisplay(env["DISPLAY"].encode()))

    def close(self):
        self._x.XCloseDisplay(self._display)

    def id(self, name):
        devices = self._connection.xinput_query_device(xinput.AllDevices).devices
        return next(device.deviceid for device in devices if device.name == name)

    def switch(self, name, on):
        """A device of the desktop that was off must be connected anew: DriverSocket.reconnect."""
        enabled = self._x.XInternAtom(self._display, b"Device Enabled", 0)
        self._xi.XIChangeProperty(self._display, self.id(name), ctypes.c_ulong(enabled), ctypes.c_ulong(_XA_INTEGER), 8,
                                  _REPLACE, (ctypes.c_ubyte * 1)(on), 1)
        self._x.XSync(self._display, 0)

    def detach(self, name):
        self._change(_Change(_XI_DETACH_SLAVE, self.id(name)))

    def attach(self, name):
        self._change(_Change(_XI_ATTACH_SLAVE, self.id(name), self.id("Virtual core pointer")))

    def _change(self, change):
        self._xi.XIChangeHierarchy(self._display, ctypes.byref(change), 1)
        self._x.XSync(self._display, 0)
