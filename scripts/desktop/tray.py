"""A panel without a picture: the service that status items register with, and what a user does with one of them."""

import threading

import dbus
import dbus.service
from dbus.mainloop.glib import DBusGMainLoop, threads_init
from gi.repository import GLib

from desktop.polling import poll

_WATCHER, _WATCHER_PATH = "org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher"
_ITEM, _MENU = "org.kde.StatusNotifierItem", "com.canonical.dbusmenu"
_PROPERTIES = "org.freedesktop.DBus.Properties"


class BusServices:
    """Answers calls on the desktop's bus, on a thread of its own. Its objects are made with `connection`."""

    def __init__(self, env, *names):
        threads_init()
        self._context = GLib.MainContext.default()
        self._loop = GLib.MainLoop(self._context)
        self.connection = dbus.bus.BusConnection(env["DBUS_SESSION_BUS_ADDRESS"], mainloop=DBusGMainLoop())
        self.connection.set_exit_on_disconnect(False)
        self._names = names
        self._thread = threading.Thread(target=self._loop.run, daemon=True)

    def start(self):
        self._thread.start()
        for name in self._names:
            self.connection.request_name(name)

    def close(self):
        self._loop.quit()
        self._thread.join()
        self.connection.close()


class _Watcher(dbus.service.Object):
    def __init__(self, connection, items):
        super().__init__(connection, _WATCHER_PATH)
        self._items = items

    @dbus.service.method(_WATCHER, in_signature="s", sender_keyword="sender")
    def RegisterStatusNotifierItem(self, service, sender=None):
        self._items.append((sender, service) if service.startswith("/") else (service, "/StatusNotifierItem"))
        self.StatusNotifierItemRegistered(service)

    @dbus.service.method(_PROPERTIES, in_signature="ss", out_signature="v")
    def Get(self, interface, name):
        return self.GetAll(interface)[name]

    @dbus.service.method(_PROPERTIES, in_signature="s", out_signature="a{sv}")
    def GetAll(self, interface):
        return {"IsStatusNotifierHostRegistered": True, "ProtocolVersion": dbus.Int32(0),
                "RegisteredStatusNotifierItems": dbus.Array([name for name, _ in self._items], signature="s")}

    @dbus.service.method(dbus.INTROSPECTABLE_IFACE, out_signature="s", path_keyword="path", connection_keyword="connection")
    def Introspect(self, path, connection):
        """With the property that clients look for; the library tells of methods and signals only."""
        start = f'<interface name="{_WATCHER}">'
        text = super().Introspect(path, connection)
        return text.replace(start, start + '<property name="IsStatusNotifierHostRegistered" type="b" access="read"/>')

    @dbus.service.signal(_WATCHER, signature="s")
    def StatusNotifierItemRegistered(self, service):
        pass


class Tray:
    """with Tray(desk.env) as tray: tray.item().choose("Preferences…")"""

    def __init__(self, env):
        self._env, self._items = env, []

    def __enter__(self):
        self._services = BusServices(self._env, _WATCHER)
        self._watcher = _Watcher(self._services.connection, self._items)
        self._services.start()
        return self

    def __exit__(self, *_):
        self._services.close()

    @property
    def count(self):
        """How many items have registered so far."""
        return len(self._items)

    def item(self, count=1):
        """The item that registered last, once `count` have."""
        if not poll(lambda: len(self._items) >= count):
            raise AssertionError(f"{len(self._items)} status items are there, not {count}")
        return StatusItem(self._env, *self._items[-1])


class StatusItem:
    def __init__(self, env, service, path):
        self._bus = dbus.bus.BusConnection(env["DBUS_SESSION_BUS_ADDRESS"])
        self._bus.set_exit_on_disconnect(False)
        self._service = service
        self._item = self._bus.get_object(service, path, introspect=False)
        self._menu = self._bus.get_object(service, self.property("Menu"), introspect=False)

    def property(self, name):
        return self._item.Get(_ITEM, name, dbus_interface=_PROPERTIES)

    def pixels(self):
        """The icon: by size, which pixels are drawn and how strongly."""
        return {(int(width), int(height)): bytes(bytearray(data)[::4])
                for width, height, data in self.property("IconPixmap")}

    def menu(self):
        """The rows of the menu, opened anew: ("title", "disabled", "on" or "off", "Ctrl+E"), and "-"."""
        return [_row(properties) for _, properties in self._rows()]

    def choose(self, title):
        for number, properties in self._rows():
            if properties.get("label") == title:
                self._menu.Event(number, "clicked", dbus.Int32(0, variant_level=1), dbus.UInt32(0), dbus_interface=_MENU)
                return
        raise AssertionError(f"no item {title!r} in {self.menu()}")

    def click(self):
        """As panels tell of a click that they do not open the menu for themselves."""
        self._item.Activate(0, 0, dbus_interface=_ITEM)

    def _rows(self):
        self._menu.AboutToShow(0, dbus_interface=_MENU)
        _, (_, _, rows) = self._menu.GetLayout(0, -1, dbus.Array([], signature="s"), dbus_interface=_MENU)
        return [(row[0], row[1]) for row in rows]


def _row(properties):
    if properties.get("type") == "separator":
        return "-"
    row = [str(properties["label"])]
    if not properties.get("enabled", True):
        row.append("disabled")
    if properties.get("toggle-type"):
        row.append("on" if properties.get("toggle-state") == 1 else "off")
    for keys in properties.get("shortcut", []):
        row.append("+".join("Ctrl" if key == "Control" else str(key) for key in keys))
    return tuple(row)
