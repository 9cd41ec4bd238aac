"""How late an application learns of clicks and gestures: without a filter, through the bare one (bare_filter.cpp), and
through Tarvik, in turns. latency.cpp is the hand and the application."""

import contextlib
import subprocess

from desktop.processes import end, end_with_parent
from desktop.program import Tarvik
from report import Samples, Table
from virtual_desktop import VirtualDesktop

ROUNDS = 10
CLICKS = {"minStroke": 100000}
HOLD = 8  # milliseconds: longer than what happens at the press, shorter than most hands'
REST = 12  # after which whatever a filter still has to do is done
REST_AFTER_GESTURE = 52  # a trail goes away in that time
ALONE_HOLD, ALONE_REST = 80, 150  # a hand's; who looks after presses for a while does so at each of these


class Bench:
    """A desktop with the application, and filters that come and go."""

    def __init__(self, context):
        self.context = context

    def __enter__(self):
        with contextlib.ExitStack() as stack:
            self.desk = stack.enter_context(VirtualDesktop(wm=None, raw_input=True))
            self._latency = subprocess.Popen([self.context.tool("latency")], env=self.desk.env, stdin=subprocess.PIPE,
                                             stdout=subprocess.PIPE, text=True, preexec_fn=lambda: end_with_parent(9))
            stack.callback(end, self._latency)
            self._stack = stack.pop_all()
        return self

    def __exit__(self, *_):
        self._stack.close()

    def ask(self, line):
        """(microseconds, lost)"""
        print(line, file=self._latency.stdin, flush=True)
        lost, *times = self._latency.stdout.readline().split()
        return [float(time) for time in times], int(lost)

    @contextlib.contextmanager
    def bare(self, task):
        filter_ = subprocess.Popen([self.context.tool("bare_filter"), task], env=self.desk.env, stdout=subprocess.PIPE,
                                   text=True, preexec_fn=lambda: end_with_parent(9))
        try:
            if filter_.stdout.readline() != "ready\n":
                raise RuntimeError("the bare filter did not start")
            yield
        finally:
            end(filter_)

    def tarvik(self, settings):
        return Tarvik(self.context.program, self.desk.env, self.desk.path("tarvik"), settings)

    def compare(self, count, **subjects):
        """In turns; each subject is (what to start, what to ask for). The samples of each."""
        samples = {name: Samples() for name in subjects}
        rounds = 3 if self.context.quick else ROUNDS
        for _ in range(rounds):
            for name, (start, question) in subjects.items():
                with start():
                    self.ask(f"{question} 3")  # devices are opened, caches filled
                    samples[name].add_round(*self.ask(f"{question} {count // rounds}"))
        return samples


def _table(title, samples):
    table = Table(title + ", microseconds", "", *Samples.COLUMNS)
    for name, sample in samples.items():
        table.row(name.replace("_", " "), *sample.row())
    return table


def _added(samples, base, figure):
    """What a filter adds: Tarvik's share of the bare one's."""
    return (figure(samples["tarvik"]) - base) / (figure(samples["bare"]) - base)


def click(context):
    """A click that is given back; one after the other, and alone."""
    return [_click(context, "Give-back of a click", HOLD, REST, 300 if context.quick else 2000),
            _click(context, "Give-back of a click alone", ALONE_HOLD, ALONE_REST, 60 if context.quick else 300)]


def _click(context, title, hold, rest, count):
    with Bench(context) as bench:
        samples = bench.compare(count,
                                no_filter=(contextlib.nullcontext, f"press {rest}"),
                                bare=(lambda: bench.bare("click"), f"click {hold} {rest}"),
                                tarvik=(lambda: bench.tarvik(CLICKS), f"click {hold} {rest}"))
    base = samples["no_filter"].median
    table = _table(title, samples)
    table.goal("median added to no filter, Tarvik : bare", _added(samples, base, lambda s: s.median), 1.15)
    table.goal("p99, Tarvik : bare", samples["tarvik"].p99 / samples["bare"].p99, 1.3)
    table.goal("lost", samples["tarvik"].lost, 0)
    return table


def refused(context):
    """A press in an excluded application; one after the other, and alone."""
    return [_refused(context, "Refused press", REST, 300 if context.quick else 2000),
            _refused(context, "Refused press alone", ALONE_REST, 60 if context.quick else 300)]


def _refused(context, title, rest, count):
    with Bench(context) as bench:
        samples = bench.compare(count,
                                no_filter=(contextlib.nullcontext, f"press {rest}"),
                                bare=(lambda: bench.bare("replay"), f"press {rest}"),
                                tarvik=(lambda: bench.tarvik({"excludedApps": ["latency"]}), f"press {rest}"))
    base = samples["no_filter"].median
    table = _table(title, samples)
    table.goal("median, Tarvik : bare", samples["tarvik"].median / samples["bare"].median, 1.1)
    table.goal("median added to no filter, Tarvik : bare", _added(samples, base, lambda s: s.median), 1.1)
    table.goal("lost", samples["tarvik"].lost, 0)
    return table


def action(context):
    """The keys of a gesture. The floor takes the button as Tarvik does, because whoever sees a gesture must, and posts
    the keys when it reads the release."""
    mappings = {"L": "reload", "R": "reload"}
    with Bench(context) as bench:
        samples = bench.compare(150 if context.quick else 1000,
                                bare=(lambda: bench.bare("keys"), f"gesture {REST_AFTER_GESTURE}"),
                                tarvik=(lambda: bench.tarvik({"mappings": mappings}), f"gesture {REST_AFTER_GESTURE}"))
    table = _table("Action, from the release to the first key", samples)
    table.goal("median, Tarvik : bare", samples["tarvik"].median / samples["bare"].median, 1.2)
    table.goal("lost", samples["tarvik"].lost, 0)
    return table
