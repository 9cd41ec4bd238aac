"""What Tarvik does while the mouse only moves, which is nothing: wake-ups and time on a processor, of every thread of it and of
the processes that it has started."""

import contextlib
import itertools
import os
import time

from desktop.polling import poll
from desktop.program import Tarvik
from desktop.usage import wake_ups
from report import Table
from virtual_desktop import VirtualDesktop

from window import PreferencesWindow

RATE = 8000  # movements a second, or as many as the server takes
SECONDS, QUICK_SECONDS = 60, 2
QUIET = 1.5  # seconds without a wake-up after which the start is over
PATIENCE = 30
BOTH_AXES = {"reverseVertical": True, "reverseHorizontal": True}
CASES = [  # name, settings, whether the window was open before
    ("reversal off", {}, False), ("reversed", {"reverseVertical": True}, False), ("both axes reversed", BOTH_AXES, False),
    ("after the window was open", {}, True)]


def idle(context):
    seconds = QUICK_SECONDS if context.quick else SECONDS
    table = Table(f"idle: the mouse moves for {seconds} s, no button is held", "", "movements a second", "wake-ups",
                  "processor, ms", "threads")
    most = 0
    with VirtualDesktop() as desk:
        for number, (name, settings, window) in enumerate(CASES):
            with Tarvik(context.program, desk.env, desk.path(f"tarvik-{number}"), settings) as tarvik:
                if window:
                    PreferencesWindow(tarvik, context.program).open().close()
                rate, woken, used = measure(desk.mouse, tarvik.process.pid, seconds)
            table.row(name, f"{rate:.0f}", sum(woken.values()), f"{used / 1e6:.2f}", len(woken))
            for thread in (thread for thread, count in woken.items() if count):
                table.note(f"{name}: {woken[thread]} of {thread[1]}")
            most = max(most, sum(woken.values()))
    table.goal("wake-ups", most, 0)
    return table


def measure(mouse, pid, seconds):
    mouse.move_to(640, 400)
    rest(pid)
    before, used, start = family_wake_ups(pid), processor_time(pid), time.monotonic()
    rates = []
    to_and_fro = list(itertools.islice(itertools.cycle([(3, 0)] * 100 + [(-3, 0)] * 100), RATE // 10))
    while time.monotonic() - start < seconds:
        rates.append(mouse.move_at(RATE, to_and_fro))
    after = family_wake_ups(pid)
    woken = {thread: count - before.get(thread, 0) for thread, count in after.items()}
    return sum(rates) / len(rates), woken, processor_time(pid) - used


def rest(pid):
    """Until the start is over."""
    before, since = family_wake_ups(pid), time.monotonic()

    def quiet():
        nonlocal before, since
        now = family_wake_ups(pid)
        if now != before:
            before, since = now, time.monotonic()
        return time.monotonic() - since > QUIET
    poll(quiet, patience=PATIENCE)  # one that never rests is about to be measured


def family(pid):
    """The process and its children."""
    members = [pid]
    for name in filter(str.isdigit, os.listdir("/proc")):
        with contextlib.suppress(OSError), open(f"/proc/{name}/stat", encoding="utf-8") as file:
            if int(file.read().rpartition(")")[2].split()[1]) == pid:
                members.append(int(name))
    return members


def family_wake_ups(pid):
    return {thread: count for member in family(pid) for thread, count in wake_ups(member).items()}


def processor_time(pid):
    """Nanoseconds, of the threads that live."""
    total = 0
    for member in family(pid):
        for task in os.listdir(f"/proc/{member}/task"):
            with contextlib.suppress(OSError), open(f"/proc/{member}/task/{task}/schedstat", encoding="ascii") as file:
                total += int(file.read().split()[0])
    return total
