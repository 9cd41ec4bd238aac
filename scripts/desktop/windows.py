"""What is on the screen of a desktop: the questions that tests and demonstrations ask, over python3-xlib."""

import os
import struct
import time
import zlib
from collections import namedtuple

from Xlib import X, display, error
from Xlib.protocol import event

Frame = namedtuple("Frame", "x y width height")

_SMALLEST_MENU = 50  # pixels; toolkits keep tiny helper windows around
_PAGER = 2  # source indication of a message that the user asked for


class Window:
    """A client's window. Questions about one that has gone are answered with None or an empty value."""

    def __init__(self, desktop, number):
        self._desktop = desktop
        self._x = desktop.connection.create_resource_object("window", number)
        self.id = number

    def __eq__(self, other):
        return isinstance(other, Window) and self.id == other.id

    def __hash__(self):
        return hash(self.id)

    def __repr__(self):
        return f"<{self.id:#x} {self.title!r} {tuple(self.frame or ())}>"

    @property
    def title(self):
        for name in ("_NET_WM_NAME", "WM_NAME"):
            value = self._property(name)
            if value:
                return value.decode("utf-8", "replace") if isinstance(value, bytes) else str(value)
        return ""

    @property
    def pid(self):
        return self._number("_NET_WM_PID")

    @property
    def desktop(self):
        return self._number("_NET_WM_DESKTOP")

    @property
    def exists(self):
        return self.frame is not None

    @property
    def frame(self):
        """Position on the screen and size, without the window manager's decoration."""
        try:
            size = self._x.get_geometry()
            corner = self._x.translate_coords(self._desktop.root, 0, 0)
            return Frame(-corner.x, -corner.y, size.width, size.height)
        except (error.BadDrawable, error.BadWindow):
            return None

    @property
    def centre(self):
        frame = self.frame
        return frame.x + frame.width // 2, frame.y + frame.height // 2

    @property
    def minimised(self):
        state = self._property("WM_STATE")
        return bool(state) and state[0] == 3  # IconicState

    @property
    def full_screen(self):
        return self._desktop.atom("_NET_WM_STATE_FULLSCREEN") in (self._property("_NET_WM_STATE") or ())

    @property
    def shown(self):
        try:
            return self._x.get_attributes().map_state == X.IsViewable
        except error.BadWindow:
            return False

    def activate(self):
        self._desktop.send(self.id, "_NET_ACTIVE_WINDOW", _PAGER, X.CurrentTime)

    def close(self):
        self._desktop.send(self.id, "_NET_CLOSE_WINDOW", X.CurrentTime, _PAGER)

    def place(self, x, y, width, height):
        """Where the frame starts, and the size without it."""
        all_four = 0xF << 8
        self._desktop.send(self.id, "_NET_MOVERESIZE_WINDOW", X.NorthWestGravity | all_four | _PAGER << 12,
                           x, y, width, height)

    def set_full_screen(self, on):
        self._desktop.send(self.id, "_NET_WM_STATE", int(on), self._desktop.atom("_NET_WM_STATE_FULLSCREEN"), 0, _PAGER)

    def _property(self, name):
        try:
            found = self._x.get_full_property(self._desktop.atom(name), X.AnyPropertyType)
        except error.BadWindow:
            return None
        return found.value if found else None

    def _number(self, name):
        value = self._property(name)
        return value[0] if value else None


class Desktop:
    """A connection of its own to the X server of a VirtualDesktop (or of any desktop with this environment)."""

    def __init__(self, env):
        os.environ["XAUTHORITY"] = env["XAUTHORITY"]  # python3-xlib takes the cookie from nowhere else
        self.connection = display.Display(env["DISPLAY"])
        self.root = self.connection.screen().root

    def close(self):
        self.connection.close()

    def atom(self, name):
        return self.connection.intern_atom(name)

    def windows(self):
        """The windows that the window manager manages, the oldest first."""
        return [Window(self, number) for number in self._root_property("_NET_CLIENT_LIST") if number]

    def stack(self):
        return [Window(self, number) for number in self._root_property("_NET_CLIENT_LIST_STACKING") if number]

    def active(self):
        number = self.root_number("_NET_ACTIVE_WINDOW")
        return Window(self, number) if number else None

    def menus(self, pid):
        """The open menus of a process."""
        try:
            children = self.root.query_tree().children
        except error.BadWindow:
            return []
        return [menu for menu in map(self._menu, children) if menu and menu.pid == pid]

    def current(self):
        return self.root_number("_NET_CURRENT_DESKTOP")

    def switch_to(self, number):
        self.send(self.root.id, "_NET_CURRENT_DESKTOP", number, X.CurrentTime)

    def showing_desktop(self):
        return self.root_number("_NET_SHOWING_DESKTOP") == 1

    def show_desktop(self, on):
        self.send(self.root.id, "_NET_SHOWING_DESKTOP", int(on))

    def compositor(self):
        return self.connection.get_selection_owner(self.atom("_NET_WM_CM_S0")) != X.NONE

    def buttons_down(self):
        """The numbers of the buttons that the server takes for pressed."""
        mask = self.root.query_pointer().mask
        return [number for number in range(1, 6) if mask & (X.Button1Mask << (number - 1))]

    def pointer(self):
        where = self.root.query_pointer()
        return where.root_x, where.root_y

    def pixels(self, frame=None):
        """What shows there, or on the whole screen."""
        if frame is None:
            size = self.root.get_geometry()
            frame = (0, 0, size.width, size.height)
        frame = Frame(*frame)
        raw = bytes(self.root.get_image(*frame, X.ZPixmap, 0xFFFFFFFF).data)
        rgb = bytearray(frame.width * frame.height * 3)
        rgb[0::3], rgb[1::3], rgb[2::3] = raw[2::4], raw[1::4], raw[0::4]
        return Picture(frame.width, frame.height, bytes(rgb))

    def still(self, frame=None, duration=0.2, patience=5.0):
        """What shows there once nothing has changed for a while, in seconds: programs draw late and let things fade in."""
        picture, since = self.pixels(frame), time.monotonic()
        deadline = since + patience
        while time.monotonic() < min(since + duration, deadline):
            time.sleep(0.02)
            later = self.pixels(frame)
            if later.rgb != picture.rgb:
                picture, since = later, time.monotonic()
        return picture

    def send(self, window, message, *numbers):
        data = (32, (list(numbers) + [0] * 5)[:5])
        note = event.ClientMessage(window=window, client_type=self.atom(message), data=data)
        self.root.send_event(note, event_mask=X.SubstructureRedirectMask | X.SubstructureNotifyMask)
        self.connection.sync()

    def _menu(self, child):
        try:
            attributes = child.get_attributes()
        except error.BadWindow:
            return None
        if not attributes.override_redirect or attributes.map_state != X.IsViewable:
            return None
        menu = Window(self, child.id)
        frame = menu.frame
        return menu if frame and min(frame.width, frame.height) >= _SMALLEST_MENU else None

    def _root_property(self, name):
        found = self.root.get_full_property(self.atom(name), X.AnyPropertyType)
        return found.value if found else ()

    def root_number(self, name):
        return next(iter(self._root_property(name)), None)


class Picture:
    """Three bytes for each pixel: red, green, blue."""

    def __init__(self, width, height, rgb):
        self.width, self.height, self.rgb = width, height, rgb

    def at(self, x, y):
        start = 3 * (y * self.width + x)
        return tuple(self.rgb[start:start + 3])

    def save(self, path):
        """As PNG."""
        line = 3 * self.width
        lines = b"".join(b"\0" + self.rgb[start:start + line] for start in range(0, len(self.rgb), line))
        with open(path, "wb") as file:
            file.write(b"\x89PNG\r\n\x1a\n")
            for kind, data in ((b"IHDR", struct.pack(">IIBBBBB", self.width, self.height, 8, 2, 0, 0, 0)),
                               (b"IDAT", zlib.compress(lines, 6)), (b"IEND", b"")):
                file.write(struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data)))
