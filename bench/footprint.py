"""What the agent needs: memory, at rest, after many gestures and after its window was open, and the time until it is ready.
Memory that is shared with other programs counts in parts (proportional set size), so a desktop that runs nothing else with
the same libraries shows the most."""

import collections
import contextlib
import datetime
import os
import statistics
import time

from desktop.devices import RIGHT
from desktop.polling import poll
from desktop.program import Tarvik
from desktop.tray import Tray
from desktop.usage import memory as memory_of
from report import Table
from virtual_desktop import VirtualDesktop

from window import PreferencesWindow

FIRST, LATER, QUICK_LATER = 1000, 10000, 500  # gestures
LARGEST_FILES = 12
STARTS, QUICK_STARTS = 20, 3
_STAMP = "%Y-%m-%d %H:%M:%S.%f"


def memory(context):
    later = QUICK_LATER if context.quick else LATER
    table = Table("memory, kB", "", "proportional", "resident", "private dirty")
    files = Table("memory of the idle agent by file, kB proportional", "file", "kB")
    sizes = {}

    def take(name):
        size = sizes[name] = settled(tarvik.process.pid)
        table.row(name, size["Pss"], size["Rss"], size["Private_Dirty"])
    with VirtualDesktop() as desk, Tray(desk.env) as tray:
        with Tarvik(context.program, desk.env, desk.path("tarvik"), {"mappings": {"R": "back"}}) as tarvik:
            tray.item()
            take("idle")
            for name, kilobytes in by_file(tarvik.process.pid)[:LARGEST_FILES]:
                files.row(name, kilobytes)
            draw(desk.mouse, tarvik, FIRST)
            take(f"after {FIRST} gestures")
            draw(desk.mouse, tarvik, FIRST + later)
            take(f"after {later} more")
            PreferencesWindow(tarvik, context.program).open().close()
            take("after the window was open")
    growth = sizes[f"after {later} more"]["Private_Dirty"] - sizes[f"after {FIRST} gestures"]["Private_Dirty"]
    table.goal("idle, proportional", sizes["idle"]["Pss"], 22_000, " kB")
    table.goal("idle, private dirty", sizes["idle"]["Private_Dirty"], 5_000, " kB")
    table.goal(f"growth over {later} gestures", growth, 200, " kB")
    return [table, files]


def start(context):
    table = Table("start, milliseconds", "from the start of the process to", "n", "median", "best", "worst")
    armed, shown, opened = [], [], []
    with VirtualDesktop() as desk, Tray(desk.env) as tray:
        for number in range(QUICK_STARTS if context.quick else STARTS):
            tarvik = Tarvik(context.program, desk.env, desk.path("tarvik"))
            before = time.time()
            with tarvik:
                if not poll(lambda: tray.count > number, interval=0.001):
                    raise AssertionError("there is no status item")
                shown.append(1000 * (time.time() - before))
                armed.append(armed_at(tarvik) - 1000 * before)
                window = PreferencesWindow(tarvik, context.program)
                asked = time.time()
                window.open()
                opened.append(1000 * (time.time() - asked))
                window.close()
    for name, times in (("armed tap", armed), ("status item", shown), ("first frame of the window", opened)):
        table.row(name, len(times), *(f"{figure(times):.0f}" for figure in (statistics.median, min, max)))
    table.note("The window's time begins with the second start of the program, which asks the running one to show it.")
    table.goal("armed tap, median", statistics.median(armed), 100, " ms")
    return table


def draw(mouse, tarvik, recognised):
    """Short gestures, one after the other, until so many have been recognised in all."""
    while (missing := recognised - logged(tarvik, "gesture 'R' scrolled=false -> Back")) > 0:
        for _ in range(missing):
            mouse.move_to(500, 400)
            mouse.press(RIGHT)
            for _ in range(5):
                mouse.move_by(20, 0)
                time.sleep(0.002)
            mouse.release(RIGHT)
            time.sleep(0.008)
        time.sleep(0.1)  # for the last ones


def logged(tarvik, message):
    """How often, in the log and in its older generation."""
    count = 0
    for name in (tarvik.log_file, tarvik.log_file.replace(".log", ".old.log")):
        with contextlib.suppress(FileNotFoundError), open(name, encoding="utf-8") as file:
            count += file.read().count(message)
    return count


def by_file(pid):
    """Proportional, in kB, the largest first."""
    sizes, name = collections.Counter(), ""
    with open(f"/proc/{pid}/smaps", encoding="utf-8") as file:
        for line in file:
            fields = line.split()
            if fields[0] == "Pss:":
                sizes[name] += int(fields[1])
            elif not fields[0].endswith(":"):
                name = os.path.basename(fields[5]) if len(fields) > 5 else "[anonymous]"
    return sizes.most_common()


def armed_at(tarvik):
    """Milliseconds, by the log's own clock."""
    with open(tarvik.log_file, encoding="utf-8") as file:
        lines = [line for line in file.read().splitlines() if line.endswith("event tap started")]
    return datetime.datetime.strptime(lines[-1][:23], _STAMP).timestamp() * 1000


def settled(pid):
    """The memory once it has been the same for a second."""
    size, since = None, time.monotonic()
    while time.monotonic() - since < 1:
        now = memory_of(pid)
        if now != size:
            size, since = now, time.monotonic()
        time.sleep(0.1)
    return size
