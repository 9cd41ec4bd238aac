"""What disks, folders and files do to Tarvik: clicks and gestures go on, settings are never lost or half written, and the
log goes on as soon as it can."""

import os
import resource
import shutil

from desktop.polling import poll
from desktop.tray import Tray

_ROOM = 64 * 1024  # bytes that a file may have while the disk is "full"
_SWITCH = "Gestures Enabled"


def _settings(tarvik):
    return os.path.join(tarvik.folder, "Tarvik.conf")


def _read(path):
    with open(path, encoding="utf-8") as file:
        return file.read()


def _has(path, text):
    return os.path.isfile(path) and text in _read(path)


def _toggle_in_vain(scene, item):
    """A change that cannot be stored holds all the same."""
    logged = scene.log_counter()
    item.choose(_SWITCH)
    scene.check(poll(lambda: any(map(logged, _failures(scene)))), "that the change is not stored is not logged")
    scene.step_of_another(seen=True)


def _failures(scene):
    return {line for line in scene.tarvik.log() if line.startswith("preferences cannot be written: ")}


def _toggle(scene, item, stored):
    item.choose(_SWITCH)
    scene.check(poll(lambda: _has(_settings(scene.tarvik), stored)), f"not stored: {stored}")


def disk_full(scene):
    """Files cannot grow beyond a size that the settings and the log have passed already."""
    def fill(tarvik):
        os.makedirs(os.path.dirname(tarvik.log_file))
        for path in _settings(tarvik), tarvik.log_file:
            with open(path, "a", encoding="ascii") as file:
                file.write("# full\n" * (_ROOM // 7 + 1))

    with scene.tarvik_in("tarvik-full", fill) as tarvik, Tray(scene.desk.env) as tray:
        item = tray.item()
        settings, size = _read(_settings(tarvik)), os.path.getsize(tarvik.log_file)
        files = set(os.listdir(tarvik.folder))
        soft, hard = resource.prlimit(tarvik.process.pid, resource.RLIMIT_FSIZE)
        resource.prlimit(tarvik.process.pid, resource.RLIMIT_FSIZE, (_ROOM, hard))
        scene.step()
        scene.check(os.path.getsize(tarvik.log_file) == size, "the log has grown")
        _toggle_in_vain(scene, item)
        scene.check(_read(_settings(tarvik)) == settings, "the settings have changed")
        scene.check(set(os.listdir(tarvik.folder)) == files, "there are new files")
        resource.prlimit(tarvik.process.pid, resource.RLIMIT_FSIZE, (soft, hard))
        _toggle(scene, item, "enabled=true")
        scene.check(_read(_settings(tarvik)).startswith(settings.rstrip("\n")), "other settings have changed")
        scene.step()
        scene.check(_has(tarvik.log_file, "lines are missing here"), "the log does not go on")
    return "settings whole, the change holds; both are written again when there is room"


def read_only_home(scene):
    with scene.tarvik_in("tarvik-read-only", lambda t: os.chmod(t.folder, 0o555)) as tarvik, Tray(scene.desk.env) as tray:
        item = tray.item()
        scene.check(not os.path.exists(tarvik.log_file), "the folder is not read-only")
        scene.step()
        _toggle_in_vain(scene, item)
        os.chmod(tarvik.folder, 0o755)
        _toggle(scene, item, "enabled=true")
        scene.step()
        scene.check(_has(tarvik.log_file, "lines are missing here"), "the log does not go on")
    return "the log is on standard error, changes hold; both are written when they can be"


def log_folder(scene):
    """Gone, or a file in its place: while running and at the start."""
    folder = os.path.dirname(scene.tarvik.log_file)

    def steps(readable):
        logged = _read(scene.tarvik.log_file).count("\n") if os.path.isfile(scene.tarvik.log_file) else 0
        scene.step()
        grown = os.path.isfile(scene.tarvik.log_file) and _read(scene.tarvik.log_file).count("\n") > logged
        scene.check(grown == readable, f"the log {'is not' if readable else 'is'} written")

    shutil.rmtree(folder)
    steps(True)
    shutil.rmtree(folder)
    with open(folder, "w", encoding="ascii"):
        pass
    steps(False)
    os.remove(folder)
    steps(True)

    def relative(tarvik):
        tarvik.env.update(XDG_STATE_HOME="state", HOME=tarvik.folder)
        tarvik.log_file = os.path.join(tarvik.folder, ".local/state/tarvik/Tarvik.log")

    with scene.tarvik_in("tarvik-relative", relative):
        steps(True)
    with scene.tarvik_in("tarvik-nowhere", lambda tarvik: tarvik.env.update(XDG_STATE_HOME="/dev/null")):
        steps(False)
    return "made anew; while it cannot be, the log is on standard error"


def settings_file(scene):
    """Not to be read, a folder, or a link that leads nowhere: the defaults count, and nothing is written over."""
    def forbid(tarvik):
        os.chmod(_settings(tarvik), 0)

    def folder(tarvik):
        os.remove(_settings(tarvik))
        os.mkdir(_settings(tarvik))

    def dangling(tarvik):
        os.remove(_settings(tarvik))
        os.symlink("elsewhere", _settings(tarvik))

    for number, prepare in enumerate((forbid, folder)):
        with scene.tarvik_in(f"tarvik-unreadable-{number}", prepare) as tarvik, Tray(scene.desk.env) as tray:
            before = os.stat(_settings(tarvik))
            item = tray.item()
            scene.check(any(line.startswith("preferences cannot be read: ") for line in tarvik.log()), "not logged")
            scene.step(kind="click")
            _toggle_in_vain(scene, item)
            scene.check(os.stat(_settings(tarvik)).st_ino == before.st_ino, "it is written over")
    with scene.tarvik_in("tarvik-dangling", dangling) as tarvik, Tray(scene.desk.env) as tray:
        item = tray.item()
        scene.step(kind="click")
        _toggle(scene, item, "enabled=false")
        scene.check(os.path.islink(_settings(tarvik)), "the link is gone")
        _toggle(scene, item, "enabled=true")
    return "the defaults count, it stays as it is; a link's target is made"


TRIALS = (("the disk is full", disk_full),
          ("the home is read-only", read_only_home),
          ("the log's folder is gone or no folder", log_folder),
          ("the settings cannot be read", settings_file))
