"""How soon a movement shows on the screen while drawing, and what that costs. The floor is bare_trail.cpp, which draws one
line for each movement; trail_pixels.cpp is the hand and the eye."""

import contextlib
import json
import os
import statistics
import subprocess

from desktop.processes import end, end_with_parent
from desktop.program import Tarvik
from report import Table
from virtual_desktop import VirtualDesktop

LARGE = "3840x2160"
SIZES = ("1280x800", LARGE, "1280x800,1280x800")
SHORT, LONG = 10, 50000  # points that are on the screen already
COMMON = 1000  # movements a second
ROUNDS = 2


class Bench:
    """A desktop, and programs on it that draw."""

    def __init__(self, context, size, compositor):
        self._context, self._desktop = context, VirtualDesktop(size=size, compositor=compositor, raw_input=True)
        self._started = 0

    def __enter__(self):
        with contextlib.ExitStack() as stack:
            self._desk = stack.enter_context(self._desktop)
            self._pixels = stack.enter_context(self._start("trail_pixels"))
            self._stack = stack.pop_all()
        return self

    def __exit__(self, *_):
        self._stack.close()

    @contextlib.contextmanager
    def floor(self):
        with self._start("bare_trail") as bare:
            if bare.stdout.readline() != "ready\n":
                raise RuntimeError("bare_trail did not start")
            yield lambda *task: self._ask(bare.pid, *task)

    @contextlib.contextmanager
    def tarvik(self):
        self._started += 1
        folder = self._desk.path(f"tarvik-{self._started}")
        with Tarvik(self._context.program, self._desk.env, folder, {"mappings": {}}) as tarvik:
            yield lambda *task: self._ask(tarvik.process.pid, *task)

    @contextlib.contextmanager
    def _start(self, name):
        process = subprocess.Popen([self._context.tool(name)], env=self._desk.env, stdin=subprocess.PIPE,
                                   stdout=subprocess.PIPE, text=True, preexec_fn=lambda: end_with_parent(9))
        try:
            yield process
        finally:
            end(process)

    def _ask(self, pid, rate, points, seconds):
        named = [f"{name}={number}" for name, number in children().items() if name in ("Xorg", "picom")]
        print(rate, points, seconds, f"drawing={pid}", *named, file=self._pixels.stdin, flush=True)
        return json.loads(self._pixels.stdout.readline())


def children():
    """The processes that this one has started, by name."""
    found = {}
    for pid in filter(str.isdigit, os.listdir("/proc")):
        with contextlib.suppress(OSError), open(f"/proc/{pid}/stat", encoding="utf-8") as file:
            name, _, rest = file.read().partition("(")[2].rpartition(")")
            if int(rest.split()[1]) == os.getpid():
                found[name] = int(pid)
    return found


class Result:
    """Of the same measurement in several rounds."""

    def __init__(self):
        self._rounds = []

    def add(self, measured):
        self._rounds.append(measured)

    def median(self, *names):
        values = []
        for value in self._rounds:
            for name in names:
                value = value[name]
            values.append(value)
        return statistics.median(values)

    @property
    def worst(self):
        return max(measured["max"] for measured in self._rounds)

    @property
    def medians(self):
        return [measured["median"] for measured in self._rounds]

    @property
    def lost(self):
        """Movements that were never drawn."""
        return sum(measured["missing"] + measured["lost"] for measured in self._rounds)

    def share(self, process):
        """Of one core, in percent."""
        return 100 * self.median("costs", process, "cpu")

    def per_second(self, what):
        return self.median("costs", "drawing", what) / self.median("costs", "seconds")

    def kilobytes(self):
        return self.per_second("bytes") / 1000


def trail(context):
    tasks = [(COMMON, SHORT), (COMMON, 2000)] if context.quick else \
        [(125, SHORT), (8000, SHORT), (COMMON, SHORT), (COMMON, 1000), (COMMON, LONG)]
    sizes = (LARGE,) if context.quick else SIZES
    delays = Table("trail: from a movement to its pixels, milliseconds", "screens, compositing manager", "a second", "points",
                   "floor", "median", "rounds", "p99", "max", "lost")
    costs = Table("trail: share of one core while drawing, percent", "screens, compositing manager", "a second", "points",
                  "floor", "Tarvik", "server, floor", "server", "compositor", "writes a second", "kB a second")
    slowest, growth, lost, processor = 0, 0, 0, 0
    for size in sizes:
        for compositor in (False, True):
            title = f"{size}, {'picom' if compositor else 'none'}"
            floor, ours = measure(context, size, compositor, tasks)
            for rate, points in tasks:
                bare, result = floor[rate, points], ours[rate, points]
                median = result.median("median")
                delays.row(title, rate, points, f"{bare.median('median'):.2f}", f"{median:.2f}",
                           " ".join(f"{value:.2f}" for value in result.medians), f"{result.median('p99'):.2f}",
                           f"{result.worst:.2f}", result.lost)
                manager = f"{result.share('picom'):.1f}" if compositor else ""
                costs.row(title, rate, points, f"{bare.share('drawing'):.1f}", f"{result.share('drawing'):.1f}",
                          f"{bare.share('Xorg'):.1f}", f"{result.share('Xorg'):.1f}", manager,
                          f"{result.per_second('writes'):.0f}", f"{result.kilobytes():.0f}")
                lost += result.lost
                if rate == COMMON:
                    slowest = max(slowest, median)
                    growth = max(growth, median / ours[COMMON, SHORT].median("median"))
                    if size == LARGE:
                        processor = max(processor, result.share("drawing"))
    delays.goal(f"slowest median at {COMMON} a second", slowest, 8.3, " ms")
    delays.goal(f"slowest median, relative to that at {SHORT} points", growth, 1.2)
    delays.goal("movements lost", lost, 0)
    costs.goal(f"Tarvik at {COMMON} a second, {LARGE}", processor, 10, " %")
    return [delays, costs]


def measure(context, size, compositor, tasks):
    """By task, of the floor and of Tarvik."""
    seconds = 1 if context.quick else 2
    with Bench(context, size, compositor) as bench:
        subjects = {bench.floor: {}, bench.tarvik: {}}
        for _ in range(1 if context.quick else ROUNDS):
            for subject, results in subjects.items():
                with subject() as ask:
                    for task in tasks:
                        results.setdefault(task, Result()).add(ask(*task, seconds))
        return subjects.values()


def pace(context):
    """What a painter that never rested would fail, however slow the machine: a count only. A painting is one write to the
    server, or two when the label is larger than the library's buffer."""
    table = Table("trail: a mouse reports 8000 times a second", "points", "writes a second", "kB a second")
    most = 0
    with Bench(context, "1280x800", True) as bench, bench.tarvik() as ask:
        for points in (SHORT, 2000):
            result = Result()
            result.add(ask(8000, points, 1))
            table.row(points, f"{result.per_second('writes'):.0f}", f"{result.kilobytes():.0f}")
            most = max(most, result.per_second("writes"))
    table.goal("writes to the server a second", most, 300)
    return table
