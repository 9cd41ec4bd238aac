"""A tray of the older kind: a window that owns the screen's tray selection, into which programs put windows of theirs."""

from desktop.polling import poll
from Xlib import X, display

_DOCK = 0  # the request in the message's second word
_SIZE = 24


class OlderTray:
    """with OlderTray(desk.env) as tray: x, y = tray.icon()"""

    def __init__(self, env):
        self._display = display.Display(env["DISPLAY"])
        screen = self._display.screen()
        self._window = screen.root.create_window(40, 40, _SIZE, _SIZE, 0, screen.root_depth, override_redirect=True,
                                                 background_pixel=screen.white_pixel,
                                                 event_mask=X.StructureNotifyMask | X.SubstructureNotifyMask)
        self._request = self._display.intern_atom("_NET_SYSTEM_TRAY_OPCODE")
        self._docked = None

    def __enter__(self):
        self._window.map()
        selection = self._display.intern_atom("_NET_SYSTEM_TRAY_S0")
        self._window.set_selection_owner(selection, X.CurrentTime)
        self._display.sync()
        return self

    def __exit__(self, *_):
        self._display.close()

    def icon(self):
        """Where the icon of the first program is."""
        if not poll(self._dock):
            raise AssertionError("nobody came into the tray")
        return 40 + _SIZE // 2, 40 + _SIZE // 2

    def _dock(self):
        while self._display.pending_events():
            event = self._display.next_event()
            if event.type == X.ClientMessage and event.client_type == self._request and event.data[1][1] == _DOCK:
                self._docked = self._display.create_resource_object("window", event.data[1][2])
                self._docked.reparent(self._window, 0, 0)
                self._docked.configure(width=_SIZE, height=_SIZE)
                self._docked.map()
                self._display.sync()
        return self._docked
