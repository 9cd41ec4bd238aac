"""A desktop with Tarvik and one application, on which clicks and gestures are made one by one and each is accounted for."""

import contextlib
import os
import random
import subprocess
import sys
import time

from desktop.device_control import DeviceControl
from desktop.devices import BACK, RIGHT
from desktop.hand import Hand
from desktop.polling import poll
from desktop.probe import Probe
from desktop.program import Tarvik
from desktop.windows import Desktop

HERE = os.path.dirname(os.path.realpath(__file__))
DROPPED, KEYS = "RDL", "DR"  # a gesture that means nothing, and one that sends Ctrl+W
SETTINGS = {"mappings": {KEYS: "closeTab", "LU": "minimizeWindow", "LD": "closeWindow", "LR": "enterFullScreen"}}
AREA = (300, 250, 900, 600)  # left, top, right, bottom: gestures that start there stay in the window
ANSWER = 0.03  # seconds that a hand rests on the button before it draws; what it does sooner, the server may merge
PACE = {"length": 70, "interval": 0.003}


class Scene(contextlib.ExitStack):
    """with Scene(desk, program, seed) as scene: scene.step(). `faults` collects what went wrong."""

    def __init__(self, desk, program, seed):
        super().__init__()
        self.desk, self.random = desk, random.Random(seed)
        self.program = program
        self.clicks = self.gestures = 0
        self.faults = []
        self.share, self.long = 1, False  # how much a trial is to do

    def __enter__(self):
        super().__enter__()
        self.screen = self.enter_context(contextlib.closing(Desktop(self.desk.env)))
        self.devices = self.enter_context(contextlib.closing(DeviceControl(self.desk.env, self.screen.connection)))
        self.probe = self.enter_context(Probe(self.desk.env, managed=True))
        self.hands = {"mouse": Hand(self.desk.mouse), "mouse2": Hand(self.desk.mouse2)}
        self.front()
        self.start_tarvik()
        return self

    def start_tarvik(self):
        self.tarvik = self.enter_context(Tarvik(self.program, self.desk.env, self.desk.path("tarvik"), SETTINGS))

    @contextlib.contextmanager
    def tarvik_in(self, folder, prepare=lambda tarvik: None):
        """For the length of the block Tarvik runs in a folder of its own, as `prepare` has left it before the start."""
        self.check(self.tarvik.end() == 0, "Tarvik does not end cleanly")
        self.tarvik = Tarvik(self.program, self.desk.env, self.desk.path(folder), SETTINGS)
        prepare(self.tarvik)
        try:
            with self.tarvik:
                yield self.tarvik
                self.check(self.tarvik.end() == 0, "Tarvik does not end cleanly")
        finally:
            self.start_tarvik()

    def front(self):
        """The application is shown and has the focus, whatever was done to it or to the window manager."""
        def is_front():
            window = next((w for w in self.screen.windows() if w.id == self.probe.window.id), None)
            if window and window.shown and not window.minimised and self.screen.active() == window:
                return self.screen.connection.get_input_focus().focus.id == window.id
            if window:
                window.activate()
            return False
        self.check(poll(is_front, interval=0.05), "the application does not come to the front")

    def check(self, good, fault):
        if not good:
            self.faults.append(fault)

    def point(self):
        left, top, right, bottom = AREA
        return self.random.randrange(left, right), self.random.randrange(top, bottom)

    def step(self, mouse=None, kind=None, meanwhile=lambda: None, lost=False, fence=True):
        """One click or gesture at a random place. `meanwhile` happens while the button is down; when `lost`, it takes the
        mouse away, and the hold must come to nothing. Without a `fence` only the log is looked at."""
        mouse = mouse or self.random.choice(list(self.hands))
        kind = kind or self.random.choice(("click", DROPPED, KEYS))
        hand, start = self.hands[mouse], self.point()
        self.probe.forget()
        logged = self.log_counter()
        hand.mouse.move_to(*start)
        hand.mouse.press(RIGHT)
        time.sleep(ANSWER)
        strokes = "" if kind == "click" else kind
        turn = self.random.randrange(len(strokes) + 1)
        hand.strokes(strokes[:turn], **PACE)
        meanwhile()
        if lost:
            self.expect_logged(logged, "hold lost: its mouse has gone")
            self.expect_seen([], [name for name in self.hands if name != mouse][0])
            return
        hand.strokes(strokes[turn:], **PACE)
        hand.mouse.release(RIGHT)
        self.clicks += kind == "click"
        self.gestures += kind != "click"
        line = f"gesture '{strokes}' scrolled=false -> " + ("Close Tab" if kind == KEYS else "unmapped")
        self.check(poll(lambda: logged(line)), f"not logged: {line}")
        if not fence:
            return
        expected = {"click": [("press", RIGHT, *start), ("release", RIGHT, *start)],
                    KEYS: [("key", "Control_L"), ("key", "w")]}.get(kind, [])
        self.expect_seen(expected, mouse)

    def step_of_another(self, seen):
        """A click that another program is to get: Tarvik sees nothing of it. seen: the application does."""
        self.probe.forget()
        logged, start = self.log_counter(), self.point()
        self.desk.mouse.move_to(*start)
        self.desk.mouse.click(RIGHT)
        if seen:
            self.expect_seen([("press", RIGHT, *start), ("release", RIGHT, *start)], "mouse")
        self.check(not logged("gesture '' scrolled=false -> unmapped"), "Tarvik took another program's click")

    def expect_seen(self, expected, mouse):
        """These events reach the application, and no more until a click that always passes."""
        fence = ("release", BACK, *self.screen.pointer())
        seen = []

        def all_there():
            seen[:] = [event for event in self.probe.events() if event[0] != "drag"]
            return len(seen) >= len(expected)
        there = poll(all_there)
        self.hands[mouse].mouse.click(BACK)
        self.check(poll(lambda: any(event[:2] == fence[:2] for event in self.probe.events())), "no click passes")
        seen[:] = [event for event in self.probe.events() if event[0] != "drag" and event[1] != BACK]
        self.check(there and seen == expected, f"expected {expected}, the application got {seen}")
        self.check(poll(lambda: not self.screen.buttons_down(), patience=5), "a button is stuck")

    def log_counter(self):
        """A question: has this line been logged since now?"""
        before = self.tarvik.log()
        return lambda line: self.tarvik.log().count(line) > before.count(line)

    def expect_logged(self, logged, line):
        self.check(poll(lambda: logged(line)), f"not logged: {line}")

    @contextlib.contextmanager
    def other_application(self, place=(400, 300, 400, 300)):
        """(its process, its window)"""
        process = subprocess.Popen([sys.executable, "-B", os.path.join(HERE, "plain_window.py"), *map(str, place)],
                                   env=self.desk.env)
        try:
            window = poll(lambda: next((w for w in self.screen.windows() if w.pid == process.pid and w.shown), None))
            self.check(window and poll(lambda: self.screen.active() == window), "no second application")
            yield process, window
        finally:
            process.kill()
            process.wait()
        self.front()
