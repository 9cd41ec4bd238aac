"""What becomes of a session around Tarvik: its display, its bus, its panel, its clock."""

import contextlib
import os
import shlex
import shutil
import subprocess

from desktop.hand import Hand
from desktop.polling import PATIENCE, poll
from desktop.processes import end, end_with_parent
from desktop.program import Tarvik
from desktop.scene import PACE, Scene
from desktop.tray import Tray
from desktop.windows import Desktop
from virtual_desktop import VirtualDesktop

_KEY_TAB, _KEY_LEFTCTRL, _KEY_SPACE = 15, 29, 57
_DAY = 86400


def display_goes(scene):
    """At rest and in a hold. The session's next start brings Tarvik back by the entry that its own window made."""
    for held in False, True:
        with VirtualDesktop(wm=scene.desk.wm) as desk:
            with Tarvik(scene.program, desk.env, scene.desk.path("tarvik-session")) as tarvik:
                if held:
                    Hand(desk.mouse).hold((400, 300), "L", **PACE)
                else:
                    _launch_at_login(scene, tarvik, desk)
                desk.end_server()
                code = tarvik.process.wait(PATIENCE)
            scene.check(code == 1 and tarvik.log()[-1] == "the display server has gone; ending",
                        f"exit code {code}, log {tarvik.log()}")
    with VirtualDesktop(wm=scene.desk.wm) as desk:
        env = dict(desk.env, XDG_CONFIG_HOME=tarvik.folder, XDG_STATE_HOME=tarvik.folder)
        with _session(env) as started:
            scene.check(len(started) == 1, f"the session starts {len(started)} programs")
            scene.check(poll(lambda: tarvik.log().count("event tap started") == 3), "Tarvik is not there again")
            Hand(desk.mouse).draw((400, 300), "RDL", **PACE)
            scene.check(poll(lambda: "gesture 'RDL' scrolled=false -> unmapped" in tarvik.log()), "a gesture is lost")
    return "logged, exit code 1, and there again in the next session"


def _launch_at_login(scene, tarvik, desk):
    """By the keyboard, in the window: General, the second switch."""
    subprocess.run([scene.program], env=tarvik.env, check=True, timeout=PATIENCE)
    with contextlib.closing(Desktop(desk.env)) as screen:
        poll(lambda: screen.active() and screen.active().title == "Tarvik Preferences")
    entry = os.path.join(tarvik.folder, "autostart", "tarvik.desktop")
    for keys in (_KEY_LEFTCTRL, _KEY_TAB), (_KEY_TAB,), (_KEY_TAB,), (_KEY_SPACE,):
        desk.keyboard.tap(*keys)
    scene.check(poll(lambda: os.path.exists(entry)), "no entry in the autostart folder")


@contextlib.contextmanager
def _session(env):
    """What a session does at its start: the programs of the user's autostart folder, as their entries say."""
    folder, programs = os.path.join(env["XDG_CONFIG_HOME"], "autostart"), []
    try:
        for name in sorted(os.listdir(folder)):
            entry = _entry(os.path.join(folder, name))
            if entry.get("Hidden") == "true" or not shutil.which(_unescaped(entry.get("TryExec", "sh"))):
                continue
            command = [word.replace("%%", "%") for word in shlex.split(_unescaped(entry["Exec"]))]
            programs.append(subprocess.Popen(command, env=env, preexec_fn=lambda: end_with_parent(15)))
        yield programs
    finally:
        for program in programs:
            end(program)


def _entry(path):
    with open(path, encoding="utf-8") as file:
        lines = file.read().splitlines()
    return dict(line.split("=", 1) for line in lines[lines.index("[Desktop Entry]") + 1:] if "=" in line)


def _unescaped(value):
    return value.replace("\\\\", "\\")


def bus_goes(scene):
    """On a desktop of its own: other programs do not survive it."""
    with VirtualDesktop(wm="openbox") as desk, Scene(desk, scene.program, scene.random.random()) as other:
        with Tray(desk.env) as tray:
            tray.item()
        desk.end_bus()
        for _ in range(3):
            other.step()
        other.check(other.tarvik.end() == 0, "Tarvik does not end cleanly")
        del desk.env["DBUS_SESSION_BUS_ADDRESS"]
        with other.tarvik_in("tarvik-without"):
            other.step()
        scene.faults += other.faults
        scene.clicks += other.clicks
        scene.gestures += other.gestures
    return "gestures go on; nothing else of Tarvik's needs a bus, the system's or a notification service"


def panel_goes(scene):
    for _ in range(2):
        with Tray(scene.desk.env) as tray:
            scene.check(tray.item().menu(), "the status item has no menu")
            scene.step()
        scene.step()
    return "the status item is there as soon as a panel is"


def clock_jumps(scene):
    """Of the process: the log's stamps show it, nothing else does."""
    library = next((path for path in _libraries() if os.path.exists(path)), None)
    if not library:
        return "SKIPPED: libfaketime is not installed"
    clock = scene.desk.path("clock")

    def set_clock(days):
        with open(clock + ".new", "w", encoding="ascii") as file:
            file.write(f"{days * _DAY:+d}\n")
        os.replace(clock + ".new", clock)

    set_clock(0)
    with scene.tarvik_in("tarvik-clock", lambda tarvik: tarvik.env.update(
            LD_PRELOAD=library, FAKETIME_TIMESTAMP_FILE=clock, FAKETIME_NO_CACHE="1",
            FAKETIME_DONT_FAKE_MONOTONIC="1")) as tarvik:
        for days in -400, 4000, 0:
            scene.step(meanwhile=lambda: set_clock(days))
            scene.step()
        with open(tarvik.log_file, encoding="utf-8") as file:
            years = {int(line[:4]) for line in file}
    scene.check(len(years) >= 3, f"the clock has not jumped: {years}")
    return "the log's stamps follow it, nothing else does"


def _libraries():
    for folder in "/usr/lib", "/usr/lib64", *map("/usr/lib/{}".format, os.listdir("/usr/lib")):
        yield os.path.join(folder, "faketime", "libfaketimeMT.so.1")


TRIALS = (("the display server goes", display_goes),
          ("the session bus goes", bus_goes),
          ("panels come and go", panel_goes),
          ("the clock jumps", clock_jumps))
