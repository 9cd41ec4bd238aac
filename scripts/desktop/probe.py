"""A window of our own that notes what reaches an application: keys, buttons, movement while a button is held."""

import os

from desktop.polling import poll
from Xlib import X, XK, Xatom, display

WHITE = 0xFFFFFF


class Probe:
    """Covers the screen, above every other window when it is unmanaged, else as an application called "Probe"."""

    def __init__(self, env, managed=False):
        self._managed = managed
        self.display = display.Display(env["DISPLAY"])
        screen = self.display.screen()
        self.window = screen.root.create_window(
            0, 0, screen.width_in_pixels, screen.height_in_pixels, 0, screen.root_depth, background_pixel=WHITE,
            override_redirect=not managed, event_mask=X.ButtonPressMask | X.ButtonReleaseMask | X.ButtonMotionMask |
            X.KeyPressMask | X.KeyReleaseMask | X.StructureNotifyMask)
        self.window.set_wm_class("probe", "Probe")
        # Asked to close, it stays: without this a window manager ends the whole program.
        self.window.set_wm_protocols([self.display.intern_atom("WM_DELETE_WINDOW")])
        self.window.change_property(self.display.intern_atom("_NET_WM_PID"), Xatom.CARDINAL, 32, [os.getpid()])
        self._events = []

    def __enter__(self):
        self.window.map()
        if not poll(lambda: self.window.get_attributes().map_state == X.IsViewable):
            raise AssertionError("the probe is not shown")
        return self

    def __exit__(self, *_):
        self.display.close()

    def take_pointer(self):
        """As an open menu does."""
        mask = X.ButtonPressMask | X.ButtonReleaseMask
        return self.window.grab_pointer(True, mask, X.GrabModeAsync, X.GrabModeAsync, X.NONE, X.NONE,
                                        X.CurrentTime) == X.GrabSuccess

    def give_pointer_back(self):
        self.display.ungrab_pointer(X.CurrentTime)
        self.display.sync()

    def forget(self):
        self.events()
        self._events.clear()

    def events(self):
        """All since `forget`, such as ("press", 3, 100, 100), ("drag", 110, 100), ("key", "Super_L")."""
        while self.display.pending_events():
            note = self._note(self.display.next_event())
            if note:
                self._events.append(note)
        return list(self._events)

    def wait_for(self, event):
        if not poll(lambda: event in self.events()):
            raise AssertionError(f"{event} does not come; there came {self.events()}")

    def keys(self):
        """The keys that went down."""
        return [event[1] for event in self.events() if event[0] == "key"]

    def _note(self, event):
        if event.type == X.ButtonPress:
            return "press", event.detail, event.root_x, event.root_y
        if event.type == X.ButtonRelease:
            return "release", event.detail, event.root_x, event.root_y
        if event.type == X.MotionNotify:
            return "drag", event.root_x, event.root_y
        if event.type == X.MappingNotify:
            self.display.refresh_keyboard_mapping(event)
        if event.type == X.KeyPress:
            return "key", self._key_name(event.detail)
        return None

    def _key_name(self, code):
        symbol = self.display.keycode_to_keysym(code, 0)
        return next((name[3:] for name in dir(XK) if name.startswith("XK_") and getattr(XK, name) == symbol), hex(symbol))
