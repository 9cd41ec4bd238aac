"""A private desktop: an X server with devices that behave like hardware, a window manager and a session bus.

    with VirtualDesktop(wm="xfwm4") as desk:
        subprocess.run(["xterm"], env=desk.env)
        desk.mouse.move_to(100, 100)
        desk.mouse.click(RIGHT)

Everything lives in one temporary directory, and leaving the block ends every process started on the desktop.
The threads that use it must not outlive the thread that made it: the server ends with that thread.
"""

import os
import select
import shutil
import signal
import subprocess
import tempfile
import time

from desktop.devices import (BACK, FORWARD, LEFT, MIDDLE, RIGHT, DriverSocket, Injector, Keyboard,  # noqa: F401
                             LineServer, Pointer)
from desktop.files import DESKTOPS, OPENBOX_RC, XFWM4_CHANNEL, XORG_CONF, mode_timings, write_authority
from desktop.outputs import Outputs
from desktop.processes import end, end_processes_with, end_with_parent
from desktop.x_display import XDisplay

PACKAGES = {  # program -> Debian package, for the error message
    "Xorg": "xserver-xorg-core",
    "dummy_drv.so": "xserver-xorg-video-dummy",
    "inputtest_drv.so": "xserver-xorg-core",
    "xkbcomp": "x11-xkb-utils",
    "openbox": "openbox",
    "xfwm4": "xfwm4",
    "xfconfd": "xfconf",
    "picom": "picom",
    "xrandr": "x11-xserver-utils",
    "dbus-daemon": "dbus-daemon",
}
MODULE_FOLDERS = ("/usr/lib/xorg/modules", "/usr/lib64/xorg/modules")
WINDOW_MANAGERS = ("openbox", "xfwm4")
START_TIMEOUT = 20.0  # seconds; a cold start on a busy machine takes under 3

class DesktopError(RuntimeError):
    """The desktop could not be started; the message says what is missing or which log to read."""


class VirtualDesktop:
    """The desktop exists between __enter__ and __exit__.

    The size is that of the screen, or of several from left to right: "1280x800,1600x1000".
    After entering: `display` (":7"), `wm`, `env` (environment for programs), `mouse`, `mouse2` (Pointer), `keyboard`,
    `outputs` (Outputs), `folder` (logs of every program). With raw_input the driver's sockets are left alone for a program that
    speaks their protocol itself: TARVIK_INPUT_MOUSE, _MOUSE2 and _KEYBOARD name them, and mouse is None."""

    def __init__(self, wm="openbox", compositor=False, size="1280x800", layout="us", display=None, raw_input=False):
        if wm not in WINDOW_MANAGERS + (None,):
            raise ValueError(f"unknown window manager {wm!r}; known: {', '.join(WINDOW_MANAGERS)}")
        self.wm, self._compositor, self._layout, self._raw_input = wm, compositor, layout, raw_input
        self._sizes = [tuple(map(int, screen.split("x"))) for screen in size.split(",")]
        self._wanted_display = display
        self._processes, self._named = [], {}
        self._lines = None
        self.mouse = self.mouse2 = self.keyboard = None
        self.display = None

    def __enter__(self):
        self._check_programs()
        self.folder = tempfile.mkdtemp(prefix="virtual-desktop-")
        self._make_environment()
        try:
            self._start_server()
            self._place_screens()
            self._start_bus()
            self._start_window_manager()
            if self._compositor:
                self.start_compositor()
            self._connect_input()
        except BaseException as error:
            self.close(keep_folder=isinstance(error, DesktopError))
            raise
        return self

    def __exit__(self, *_):
        self.close()

    def path(self, name):
        return os.path.join(self.folder, name)

    def start_compositor(self):
        self._start("picom", ["picom", "--backend", "xrender", "--config", "/dev/null"])
        self._wait(lambda x: x.selection_owner("_NET_WM_CM_S0") != 0, "picom")

    def stop_compositor(self):
        self._end("picom")

    def restart_window_manager(self):
        """Ends it and starts a new one."""
        self._end(self.wm)
        with XDisplay(self.display, self.env["XAUTHORITY"]) as display:
            display.forget_root_property("_NET_SUPPORTING_WM_CHECK")  # what an end may leave behind
        self._start_window_manager()

    def end_bus(self):
        """Takes the session bus away from everything that runs on it."""
        self._end("dbus")

    def end_server(self):
        """Takes the display away from everything that runs on it."""
        self._end("xorg")

    def close(self, keep_folder=False):
        """Ends every process of the desktop, those that they started included."""
        if self._lines:
            self._lines.close()
        end_processes_with(f"XDG_RUNTIME_DIR={self.env['XDG_RUNTIME_DIR']}", own=self._processes)
        for device in (self.mouse, self.mouse2, self.keyboard):
            if device:
                device.device.close()
        for process in reversed(self._processes):
            end(process)
        self._processes.clear()
        if not keep_folder:
            shutil.rmtree(self.folder, ignore_errors=True)

    def _check_programs(self):
        programs = ["Xorg", "xkbcomp", "dbus-daemon"] + [self.wm] * bool(self.wm) + ["picom"] * self._compositor
        programs += ["xrandr"] * (len(self._sizes) > 1)
        missing = [program for program in programs if not shutil.which(program)]
        for module in ("drivers/dummy_drv.so", "input/inputtest_drv.so"):
            if not any(os.path.exists(os.path.join(folder, module)) for folder in MODULE_FOLDERS):
                missing.append(os.path.basename(module))
        if missing:
            packages = sorted({PACKAGES[program] for program in missing})
            raise DesktopError(f"missing: {', '.join(missing)}; install: {' '.join(packages)}")

    def _make_environment(self):
        for name in ("home", "config", "state", "cache", "data", "runtime"):
            os.mkdir(self.path(name), 0o700)
        strange = ("DISPLAY", "XAUTHORITY", "WAYLAND_DISPLAY", "SESSION_MANAGER", "DESKTOP_STARTUP_ID", "GDK_BACKEND",
                   "QT_QPA_PLATFORM")
        self.env = {name: value for name, value in os.environ.items()
                    if name not in strange and not name.startswith(("XDG_", "DBUS_"))}
        self.env.update(HOME=self.path("home"), XDG_CONFIG_HOME=self.path("config"), XDG_STATE_HOME=self.path("state"),
                        XDG_CACHE_HOME=self.path("cache"), XDG_DATA_HOME=self.path("data"),
                        XDG_RUNTIME_DIR=self.path("runtime"), XDG_SESSION_TYPE="x11",
                        XAUTHORITY=self.path("authority"))

    def _start_server(self):
        width, height = self._sizes[0]
        with open(self.path("xorg.conf"), "w", encoding="utf-8") as file:
            file.write(XORG_CONF.format(folder=self.folder, layout=self._layout, mode=f"{width}x{height}",
                                        timings=" ".join(mode_timings(width, height))))
        write_authority(self.env["XAUTHORITY"])
        reader, writer = os.pipe()
        # The program itself, past a distribution's setuid wrapper, which would refuse the folder of the configuration.
        program = next((path for path in ("/usr/lib/xorg/Xorg", "/usr/libexec/Xorg") if os.path.exists(path)), "Xorg")
        command = [program, "-config", self.path("xorg.conf"), "-logfile", self.path("xorg.log"),
                   "-auth", self.env["XAUTHORITY"], "-displayfd", str(writer), "-nolisten", "tcp", "-noreset",
                   "-novtswitch", "-sharevts", "-dpms", "-s", "0"]
        if self._wanted_display:
            command.insert(1, self._wanted_display)
        # Without the mark of the desktop's programs, so that the server ends after them.
        env = {name: value for name, value in self.env.items() if name != "XDG_RUNTIME_DIR"}
        self._start("xorg", command, pass_fds=(writer,), env=env)
        os.close(writer)
        number = self._read_line(reader, "Xorg")
        self.display = self.env["DISPLAY"] = f":{number}"
        write_authority(self.env["XAUTHORITY"], number)
        with XDisplay(self.display, self.env["XAUTHORITY"]) as display:
            if display.size() != (width, height):
                raise DesktopError(f"the X server refused the size {width}x{height}; its log is in {self.folder}")

    def _place_screens(self):
        self.outputs = Outputs(self.env)
        x = self._sizes[0][0]
        for number, (width, height) in enumerate(self._sizes[1:], 1):
            self.outputs.place(f"DUMMY{number}", width, height, x)
            x += width

    def _start_bus(self):
        reader, writer = os.pipe()
        self._start("dbus", ["dbus-daemon", "--session", "--nofork", "--nopidfile", "--nosyslog",
                             f"--address=unix:path={self.path('runtime')}/bus", f"--print-address={writer}"],
                    pass_fds=(writer,))
        os.close(writer)
        self.env["DBUS_SESSION_BUS_ADDRESS"] = self._read_line(reader, "dbus-daemon")

    def _start_window_manager(self):
        if self.wm is None:
            return
        if self.wm == "openbox":
            with open(self.path("openbox.xml"), "w", encoding="utf-8") as file:
                file.write(OPENBOX_RC)
            self._start("openbox", ["openbox", "--sm-disable", "--config-file", self.path("openbox.xml")])
        else:
            channels = self.path("config/xfce4/xfconf/xfce-perchannel-xml")
            os.makedirs(channels, exist_ok=True)
            with open(os.path.join(channels, "xfwm4.xml"), "w", encoding="utf-8") as file:
                file.write(XFWM4_CHANNEL)
            self._start("xfwm4", ["xfwm4", "--compositor=off"])
        self._wait(lambda x: x.root_cardinal("_NET_SUPPORTING_WM_CHECK")
                   and x.root_cardinal("_NET_NUMBER_OF_DESKTOPS") == DESKTOPS, self.wm)

    def _connect_input(self):
        if self._raw_input:
            self.env.update({f"TARVIK_INPUT_{name.upper()}": self.path(name) for name in ("mouse", "mouse2", "keyboard")})
            return
        self.mouse = Pointer(DriverSocket(self.path("mouse")))
        self.mouse2 = Pointer(DriverSocket(self.path("mouse2")))
        self.keyboard = Keyboard(DriverSocket(self.path("keyboard")))
        self._lines = LineServer(self.path("input"),
                                 {"mouse": self.mouse, "mouse2": self.mouse2, "keyboard": self.keyboard})
        self.env["TARVIK_INPUT"] = self.path("input")

    def _start(self, name, command, pass_fds=(), env=None):
        with open(self.path(f"{name}.out"), "ab") as output:
            process = subprocess.Popen(
                command, env=env or self.env, cwd=self.folder, stdin=subprocess.DEVNULL, stdout=output, stderr=output,
                start_new_session=True, pass_fds=pass_fds, preexec_fn=lambda: end_with_parent(signal.SIGTERM))
        self._processes.append(process)
        self._named[name] = process

    def _end(self, name):
        process = self._named.pop(name)
        end(process)
        self._processes.remove(process)

    def _read_line(self, reader, program):
        """The first line that the program writes to the pipe; raises when it ends or takes too long."""
        with os.fdopen(reader, "rb", buffering=0) as pipe:
            text = b""
            deadline = time.monotonic() + START_TIMEOUT
            while not text.endswith(b"\n"):
                ready, _, _ = select.select([pipe], [], [], max(0.0, deadline - time.monotonic()))
                part = pipe.read(1024) if ready else b""
                if not part:
                    raise DesktopError(f"{program} did not start; its output is in {self.folder}")
                text += part
            return text.decode().strip()

    def _wait(self, condition, program):
        deadline = time.monotonic() + START_TIMEOUT
        with XDisplay(self.display, self.env["XAUTHORITY"]) as display:
            while not condition(display):
                if self._processes[-1].poll() is not None or time.monotonic() > deadline:
                    raise DesktopError(f"{program} did not start; its output is in {self.folder}")
                time.sleep(0.01)
