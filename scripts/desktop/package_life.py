"""The life of the installed package; to be run by trial-package, in a root of its own: package_life.py FOLDER

The folder holds first.deb and second.deb, and keeps what apt has downloaded. One line for each step."""

import contextlib
import os
import signal
import subprocess
import sys
import threading
import time

HERE = os.path.dirname(os.path.realpath(__file__))
sys.path.insert(0, os.path.dirname(HERE))
from gi.repository import Gio, GLib  # noqa: E402
from desktop.devices import RIGHT  # noqa: E402
from desktop.hand import Hand  # noqa: E402
from desktop.polling import PATIENCE, poll  # noqa: E402
from desktop.probe import Probe  # noqa: E402
from desktop.windows import Desktop  # noqa: E402
from virtual_desktop import VirtualDesktop  # noqa: E402

PROGRAM = "/usr/bin/tarvik"
SETTINGS = '# by hand\n[General]\nmappings="{\\"DR\\":{\\"kind\\":\\"closeTab\\"}}"\n'
CADENCE = 0.05  # seconds from one click to the next
STAMP = len("2025-01-31 12:00:00.000 ")
# What installing and removing anything leaves, and what belongs to nobody.
UNCOUNTED = ("/dev", "/home", "/mnt", "/proc", "/root", "/run", "/sys", "/tmp", "/var/cache", "/var/lib/apt",
             "/var/lib/dpkg", "/var/lib/systemd", "/var/log")


class Failed(Exception):
    """A step went wrong; the message says how."""


def expect(what, question):
    answer = poll(question)
    if not answer:
        raise Failed(what)
    return answer


def apt(*arguments):
    done = subprocess.run(["apt-get", "-qq", "-y", "--no-install-recommends", "-o", "Dir::Cache::archives=/mnt/packages/archives",
                           "-o", "Dpkg::Use-Pty=0", *arguments], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, text=True, check=False)
    if done.returncode != 0:
        raise Failed(f"apt-get {' '.join(arguments)}: {done.stdout}")


def output(*command):
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout


def files():
    """Every file and folder that a package may have put there."""
    everything = {"/"}
    for folder, folders, names in os.walk("/"):
        folders[:] = [name for name in folders if os.path.join(folder, name) not in UNCOUNTED]
        everything.update(os.path.join(folder, name) for name in folders + names)
    return everything


def processes(ending=""):
    """The programs of the package that run, companions included; those whose file is gone with the ending "(deleted)"."""
    running = []
    for name in filter(str.isdigit, os.listdir("/proc")):
        with contextlib.suppress(OSError):
            running.append(os.readlink(f"/proc/{name}/exe"))
    return [program for program in running if os.path.basename(program).startswith("tarvik") and program.endswith(ending)]


class Clicks(threading.Thread):
    """Right clicks at a steady cadence, each of which the application gets."""

    def __init__(self, desk, probe):
        super().__init__()
        self._mouse, self._probe = desk.mouse, probe
        self._ending = threading.Event()
        self.made = 0

    def __enter__(self):
        self._mouse.move_to(600, 400)
        self._probe.forget()
        self.start()
        return self

    def run(self):
        due = time.monotonic()
        while not self._ending.is_set():
            self._mouse.press(RIGHT)
            time.sleep(0.01)
            self._mouse.release(RIGHT)
            self.made += 1
            due = max(due + CADENCE, time.monotonic() + 0.01)
            time.sleep(max(0.0, due - time.monotonic()))

    def __exit__(self, *_):
        self._ending.set()
        self.join()

    def check(self):
        seen = []

        def all_there():
            seen[:] = [event[0] for event in self._probe.events() if event[0] != "drag"]
            return len(seen) >= 2 * self.made
        poll(all_there, patience=3)
        if seen != ["press", "release"] * self.made:
            raise Failed(f"{self.made} clicks were made, the application got {seen.count('press')} presses and "
                         f"{seen.count('release')} releases")


class Life:
    def __init__(self, folder, desk, screen, probe):
        self._folder, self._desk, self._screen, self._probe = folder, desk, screen, probe
        self._hand = Hand(desk.mouse)
        self._log_file = desk.path("state/tarvik/Tarvik.log")
        self._settings = desk.path("config/Tarvik.conf")
        self._autostart = desk.path("config/autostart/tarvik.desktop")
        self._pid = None

    def live(self):
        self._before = files()
        for name in ("install", "start", "use", "upgrade_under_clicks", "show_preferences", "upgrade_with_preferences",
                     "upgrade_in_a_gesture", "copy_autostart", "remove", "look_for_leftovers"):
            step = getattr(self, name)
            note = step()
            print(f"ok    {step.__doc__}{': ' if note else ''}{note or ''}", flush=True)

    def install(self):
        """installed, its dependencies with it"""
        with open(self._settings, "w", encoding="utf-8") as file:
            file.write(SETTINGS)
        if any(name in output("dpkg-query", "-W", "-f", "${Package} ") for name in ("libqt6", "qml6")):
            raise Failed("the root is not clean: it has the libraries already")
        apt("install", os.path.join(self._folder, "first.deb"))
        if output("dpkg", "--audit"):
            raise Failed(output("dpkg", "--audit"))
        self._installed = [os.path.normpath(path) for path in output("dpkg", "-L", "tarvik").split()]
        return f"{self._version()}, {sum(map(os.path.isfile, self._installed))} files"

    def start(self):
        """started from the desktop entry"""
        self._pid = self._launch("tarvik.desktop")
        self._wait_for_log("event tap started")
        self._expect_current()

    def use(self):
        """a click is given back, a gesture acts"""
        with Clicks(self._desk, self._probe) as clicks:
            expect("no clicks", lambda: clicks.made >= 5)
        clicks.check()
        self._draw()

    def upgrade_under_clicks(self):
        """upgraded under steady clicks: the new version runs"""
        before = self._version()
        with Clicks(self._desk, self._probe) as clicks:
            self._upgrade("second.deb")
            self._expect_successor()
            after = clicks.made
            expect("no clicks", lambda: clicks.made >= after + 40)
        clicks.check()
        if self._version() == before:
            raise Failed(f"{before} is installed still")
        self._draw()
        return f"{self._version()}; of {clicks.made} clicks none was lost"

    def show_preferences(self):
        """started again: its preferences show"""
        self._launch("tarvik.desktop")
        expect("no window of the preferences", self._preferences)

    def upgrade_with_preferences(self):
        """upgraded with its preferences open: the new version waits until they are closed"""
        self._upgrade("second.deb", "--reinstall")
        expect("the new program is not noticed", lambda: self._log()[-1] == "the program was replaced")
        time.sleep(1)
        if self._current() or not self._preferences():
            raise Failed("it did not wait")
        self._preferences().close()
        self._expect_successor()

    def upgrade_in_a_gesture(self):
        """upgraded in the middle of a gesture: the gesture acts, then the new version runs"""
        self._probe.forget()
        self._hand.hold((600, 400), "D")
        self._upgrade("second.deb", "--reinstall")
        expect("the new program is not noticed", lambda: self._log()[-1] == "making way for the new program")
        time.sleep(1)
        if self._current():
            raise Failed("it did not wait")
        self._hand.strokes("R")
        self._desk.mouse.release(RIGHT)
        self._probe.wait_for(("key", "w"))
        self._expect_successor()

    def copy_autostart(self):
        """the template of the autostart entry starts the program"""
        os.makedirs(os.path.dirname(self._autostart))
        with open("/usr/share/tarvik/autostart/tarvik.desktop", encoding="utf-8") as source:
            with open(self._autostart, "w", encoding="utf-8") as file:
                file.write(source.read())
        entry = self._entry(self._autostart)
        if not entry or GLib.shell_parse_argv(entry.get_commandline())[1] != [PROGRAM]:
            raise Failed("it would not")

    def remove(self):
        """removed: the running one goes on and ends cleanly"""
        self._kept = self._stored()
        apt("purge", "--autoremove", "tarvik")
        expect("it does not notice", lambda: self._log()[-1] == "the program was removed; going on without it")
        self._draw()
        os.kill(self._pid, signal.SIGTERM)
        code = expect("it does not end", self._ended)
        if code != [0] or self._log()[-1] != "ended":
            raise Failed(f"exit code {code}, {self._log()[-1]}")
        expect("one of its programs still runs", lambda: not processes())

    def look_for_leftovers(self):
        """no file is left, the autostart entry does nothing, the settings are kept"""
        left = sorted(files() - self._before)
        # Folders are shared with other packages.
        left += [path for path in self._installed if os.path.lexists(path) and path not in self._before]
        if left:
            raise Failed("left: " + " ".join(left))
        if self._entry(self._autostart) or self._entry("tarvik.desktop"):
            raise Failed("an entry would start something")
        if self._stored() != self._kept or not self._kept.startswith(SETTINGS.split("\n", maxsplit=1)[0]):
            raise Failed(f"the settings were\n{self._kept}and are\n{self._stored()}")

    def _stored(self):
        with open(self._settings, encoding="utf-8") as file:
            return file.read()

    @staticmethod
    def _entry(name):
        """As desktops do: nothing when the program that the entry wants to have tried is missing."""
        try:
            return (Gio.DesktopAppInfo.new_from_filename if "/" in name else Gio.DesktopAppInfo.new)(name)
        except TypeError:  # the bindings' way of saying null
            return None

    def _launch(self, name):
        entry = self._entry(name)
        if not entry:
            raise Failed(f"{name} cannot be started")
        context = Gio.AppLaunchContext()
        for variable, value in self._desk.env.items():
            context.setenv(variable, value)
        started = []
        flags = GLib.SpawnFlags.SEARCH_PATH | GLib.SpawnFlags.DO_NOT_REAP_CHILD
        entry.launch_uris_as_manager([], context, flags, None, None, lambda _, pid, __: started.append(pid), None)
        return started[0]

    def _ended(self):
        pid, status = os.waitpid(self._pid, os.WNOHANG)
        return [os.waitstatus_to_exitcode(status)] if pid else None

    def _upgrade(self, package, *options):
        self._launches = self._log().count("event tap started")
        apt("install", *options, os.path.join(self._folder, package))

    def _current(self):
        """Whether the process is of the file that is installed now."""
        return os.path.samestat(os.stat(f"/proc/{self._pid}/exe"), os.stat(PROGRAM))

    def _expect_current(self):
        if not self._current():
            raise Failed(f"it runs {os.readlink(f'/proc/{self._pid}/exe')}")

    def _expect_successor(self):
        self._wait_for_log("event tap started", self._launches + 1)
        self._expect_current()
        expect("a program of the old version still runs", lambda: not processes("(deleted)"))

    def _draw(self):
        self._probe.forget()
        self._hand.draw((600, 400), "DR")
        self._probe.wait_for(("key", "w"))
        expect("a button is stuck", lambda: not self._screen.buttons_down())

    def _preferences(self):
        return next((window for window in self._screen.windows() if window.title == "Tarvik Preferences" and window.shown), None)

    def _log(self):
        try:
            with open(self._log_file, encoding="utf-8") as file:
                return [line[STAMP:] for line in file.read().splitlines()] or [""]
        except FileNotFoundError:
            return [""]

    def _wait_for_log(self, line, times=1):
        if not poll(lambda: self._log().count(line) >= times):
            raise Failed(f"not {times} x {line!r} after {PATIENCE} s in the log, whose end is:\n" + "\n".join(self._log()[-20:]))

    @staticmethod
    def _version():
        return output("dpkg-query", "-W", "-f", "${Version}", "tarvik")


def main():
    os.makedirs("/mnt/packages/archives/partial", exist_ok=True)
    try:
        with VirtualDesktop() as desk, contextlib.closing(Desktop(desk.env)) as screen, \
                Probe(desk.env, managed=True) as probe:
            Life(sys.argv[1], desk, screen, probe).live()
    except (AssertionError, Failed, OSError) as error:
        print(f"FAIL  {error}", flush=True)
        return 1
    return 0


if __name__ == "__main__":
    sys.exit(main())
