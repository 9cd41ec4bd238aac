"""Input devices of a private desktop: what a hand does to a mouse and a keyboard.

The X server's inputtest driver turns messages on a socket into events of a device of its own; applications
cannot tell it from hardware. The driver serves one connection in the life of the server, so exactly one process
holds it (`DriverSocket`); others send lines to that process (`RemoteDevice`). `Pointer` and `Keyboard` work on either.
"""

import os
import socket
import struct
import threading
import time

LEFT, MIDDLE, RIGHT, BACK, FORWARD = 1, 2, 3, 8, 9
NOTCH = 120  # scroll valuator units of one wheel notch
_MOST_AT_ONCE = 64  # movements, when the machine was busy meanwhile

# Message numbers and layout: xf86-input-inputtest-protocol.h (xserver-xorg-dev).
_HELLO, _SYNC, _MOTION, _BUTTON, _KEY = 0, 1, 2, 4, 5
_HEADER = struct.Struct("@II")
_AXES = struct.Struct("@I8s4x64d64d")  # has_unaccelerated, mask, values, unaccelerated values
_MOTION_SIZE = _HEADER.size + 8 + _AXES.size
_EVDEV_TO_X = 8


def _axes(values):
    mask = bytearray(8)
    numbers = [0.0] * 64
    for axis, value in values.items():
        mask[axis // 8] |= 1 << (axis % 8)
        numbers[axis] = float(value)
    return _AXES.pack(0, bytes(mask), *numbers, *([0.0] * 64))


class DriverSocket:
    """The one connection to a device of the inputtest driver. Any thread may use it.

    Every operation returns once the server has processed the event and queued it for its clients."""

    def __init__(self, path, timeout=10.0):
        self._lock = threading.Lock()
        self._path, self._timeout = path, timeout
        self._connect()

    def _connect(self):
        self._socket = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self._socket.settimeout(self._timeout)
        self._socket.connect(self._path)
        self._send(_HELLO, struct.pack("@HH", 1, 1))
        self._receive()

    def reconnect(self):
        """Once the device has been switched off and on again: the driver has dropped the connection."""
        with self._lock:
            self._socket.close()
            self._connect()

    def motion(self, axes, absolute=False):
        """axes: {axis: value}; 0 and 1 are x and y in pixels, 2 and 3 horizontal and vertical scrolling."""
        self._event(_MOTION, struct.pack("@I4x", absolute) + _axes(axes))

    def motions(self, all_axes):
        """Relative movements that the server gets in one go."""
        body = b"".join(_HEADER.pack(_MOTION_SIZE, _MOTION) + struct.pack("@I4x", False) + _axes(axes) for axes in all_axes)
        with self._lock:
            self._socket.sendall(body)
            self._send(_SYNC, b"")
            self._receive()

    def button(self, number, pressed):
        if not 1 <= number <= 32:  # anything else makes the driver deaf
            raise ValueError(f"no button {number}")
        self._event(_BUTTON, struct.pack("@iiI4x", 0, number, pressed) + _axes({}))

    def key(self, code, pressed):
        if not 1 <= code <= 247:
            raise ValueError(f"no key code {code}")
        self._event(_KEY, struct.pack("@iI", code + _EVDEV_TO_X, pressed))

    def close(self):
        self._socket.close()

    def _event(self, kind, body):
        with self._lock:
            self._send(kind, body)
            self._send(_SYNC, b"")
            self._receive()

    def _send(self, kind, body):
        self._socket.sendall(_HEADER.pack(_HEADER.size + len(body), kind) + body)

    def _receive(self):
        length, _ = _HEADER.unpack(self._exactly(_HEADER.size))
        self._exactly(length - _HEADER.size)

    def _exactly(self, count):
        data = b""
        while len(data) < count:
            part = self._socket.recv(count - len(data))
            if not part:
                raise ConnectionError("the X server closed the input device")
            data += part
        return data


class RemoteDevice:
    """A device held by another process, reached through its line socket (see `LineServer`)."""

    def __init__(self, path, name):
        self._lock = threading.Lock()
        self._name = name
        self._socket = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self._socket.connect(path)
        self._lines = self._socket.makefile("r", encoding="ascii", newline="\n")

    def motion(self, axes, absolute=False):
        for axis, value in axes.items():
            if axis not in range(4):
                raise ValueError(f"no axis {axis}")
        x, y, h, v = (axes.get(axis, "-") for axis in range(4))
        self._line("axes", int(absolute), x, y, h, v)

    def button(self, number, pressed):
        self._line("button", number, int(pressed))

    def key(self, code, pressed):
        self._line("key", code, int(pressed))

    def close(self):
        self._lines.close()
        self._socket.close()

    def _line(self, *words):
        with self._lock:
            self._socket.sendall((" ".join(map(str, (self._name, *words))) + "\n").encode("ascii"))
            answer = self._lines.readline().strip()
        if answer != "ok":
            raise RuntimeError(answer or "the desktop has ended")


class Pointer:
    """A mouse with a high-resolution wheel and no acceleration: positions are exact pixels of the screen."""

    def __init__(self, device):
        self.device = device

    def move_by(self, dx, dy):
        self.device.motion({0: dx, 1: dy})

    def move_to(self, x, y):
        self.device.motion({0: x, 1: y}, absolute=True)

    def move_at(self, rate, steps):
        """Moves by all the steps, so many a second or as many as the server takes, which is the answer: as a mouse that
        reports faster than it is read."""
        start, done = time.monotonic(), 0
        while done < len(steps):
            due = min(len(steps), int((time.monotonic() - start) * rate), done + _MOST_AT_ONCE)
            if due > done:
                self.device.motions([{0: dx, 1: dy} for dx, dy in steps[done:due]])
                done = due
            else:
                time.sleep(0.0005)
        return done / (time.monotonic() - start)

    def drag_path(self, points, interval=0.0):
        """Moves through the points in turn, `interval` seconds apart."""
        for x, y in points:
            self.move_to(x, y)
            if interval:
                time.sleep(interval)

    def press(self, button=LEFT):
        self.device.button(button, True)

    def release(self, button=LEFT):
        self.device.button(button, False)

    def click(self, button=LEFT):
        self.press(button)
        self.release(button)

    def wheel(self, dx, dy):
        """Notches to the right and down; fractions are steps of a high-resolution wheel."""
        axes = {2: dx * NOTCH} if dx else {}
        if dy:
            axes[3] = dy * NOTCH
        if axes:
            self.device.motion(axes)


class Keyboard:
    """Keys are evdev codes (KEY_A is 30): positions, whatever the layout."""

    def __init__(self, device):
        self.device = device

    def press(self, code):
        self.device.key(code, True)

    def release(self, code):
        self.device.key(code, False)

    def tap(self, *codes):
        """Presses the keys in order and releases them in the reverse order: tap(29, 17) is Ctrl+W."""
        for code in codes:
            self.press(code)
        for code in reversed(codes):
            self.release(code)


class Injector:
    """The devices of the desktop that this process was started in: Injector().mouse.press(RIGHT)."""

    def __init__(self, path=None):
        path = path or os.environ["TARVIK_INPUT"]
        self.mouse = Pointer(RemoteDevice(path, "mouse"))
        self.mouse2 = Pointer(RemoteDevice(path, "mouse2"))
        self.keyboard = Keyboard(RemoteDevice(path, "keyboard"))


class LineServer:
    """Offers devices to other processes on a Unix socket, one line per operation, answered with "ok" or a reason.

        mouse move DX DY    mouse moveto X Y    mouse press|release|click BUTTON    mouse wheel DX DY
        mouse reconnect     (after it was switched off and on again)
        keyboard press|release CODE             keyboard tap CODE...
    (mouse2 likewise), and what RemoteDevice sends: axes, button, key."""

    def __init__(self, path, devices):
        """devices: {name: Pointer or Keyboard}"""
        self._devices = devices
        self._socket = socket.socket(socket.AF_UNIX, socket.SOCK_STREAM)
        self._socket.bind(path)
        self._socket.listen()
        threading.Thread(target=self._accept, daemon=True).start()

    def close(self):
        self._socket.close()

    def _accept(self):
        while True:
            try:
                connection, _ = self._socket.accept()
            except OSError:
                return
            threading.Thread(target=self._serve, args=(connection,), daemon=True).start()

    def _serve(self, connection):
        try:
            with connection, connection.makefile("r", encoding="ascii", newline="\n") as lines:
                for line in lines:
                    connection.sendall(f"{self._answer(line.split())}\n".encode())
        except OSError:
            pass  # the client left in the middle of a line

    def _answer(self, words):
        try:
            name, verb, *arguments = words
            device = self._devices[name]
            verbs = _POINTER_LINES if isinstance(device, Pointer) else _KEYBOARD_LINES
            verbs[verb](device, *arguments)
            return "ok"
        except (KeyError, TypeError, ValueError) as error:
            return f"error: not understood: {' '.join(words)} ({error})"
        except OSError as error:
            return f"error: {error}"


def _axes_line(pointer, absolute, *values):
    axes = {axis: float(value) for axis, value in enumerate(values) if value != "-"}
    pointer.device.motion(axes, absolute=absolute == "1")


_POINTER_LINES = {
    "move": lambda p, dx, dy: p.move_by(float(dx), float(dy)),
    "moveto": lambda p, x, y: p.move_to(float(x), float(y)),
    "press": lambda p, button: p.press(int(button)),
    "release": lambda p, button: p.release(int(button)),
    "click": lambda p, button: p.click(int(button)),
    "wheel": lambda p, dx, dy: p.wheel(float(dx), float(dy)),
    "reconnect": lambda p: p.device.reconnect(),
    "axes": _axes_line,
    "button": lambda p, number, down: p.device.button(int(number), down == "1"),
}
_KEYBOARD_LINES = {
    "press": lambda k, code: k.press(int(code)),
    "release": lambda k, code: k.release(int(code)),
    "tap": lambda k, *codes: k.tap(*map(int, codes)),
    "key": lambda k, code, down: k.device.key(int(code), down == "1"),
}
