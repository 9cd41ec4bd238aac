"""Tarvik is killed at any moment of a start, a click or a gesture: whatever it was doing for the user then, nothing of it may
stay, neither a button, nor a key, nor a wheel that turns the wrong way."""

import collections
import threading
import time

from Xlib import X
from Xlib.ext import xtest

from desktop.devices import LEFT, RIGHT
from desktop.polling import poll
from desktop.program import Tarvik
from desktop.scene import SETTINGS

_LEFT_SHIFT = 42  # evdev code
_WHEEL_UP = 4
_LONGEST_START, _LATEST = 0.12, 0.012  # seconds from the beginning of a start, or of a step of the hand, to the kill
_STARTS = 0.05  # of all kills
_SHORT, _LONG = 10, 1000  # kills
_STROKES = {"length": 60, "interval": 0.001}
_STEPS = {  # what the hand does with the button down
    "a click": [],
    "a gesture": ["D", "R"],
    "turns of the wheel": [1, -1],
    "the left button too": [LEFT],
}


class _Run:
    """One life of Tarvik, and what is left when it has been killed."""

    def __init__(self, scene, folder):
        self._scene, self._random = scene, scene.random
        self._mouse = scene.desk.mouse
        self.kind = self._random.choice(list(_STEPS))
        self._shift = self._random.random() < 0.5
        self._reversed = self._random.random() < 0.3
        settings = {"reverseVertical": self._reversed, "scrollBinding": self._random.choice(("tabs", "none"))}
        self._tarvik = Tarvik(scene.program, scene.desk.env, folder, {**SETTINGS, **settings})

    def killed_in_the_start(self):
        starting = threading.Thread(target=self._start)
        starting.start()
        poll(lambda: self._tarvik.process)
        time.sleep(self._random.uniform(0, _LONGEST_START))
        self._tarvik.process.kill()
        starting.join()

    def _start(self):
        try:
            self._tarvik.__enter__()
        except AssertionError:
            pass  # it was not to get that far

    def killed_in_use(self):
        with self._tarvik:
            if not self._reversed:
                self._expect_own_wheel()
            self._scene.probe.forget()
            self._mouse.move_to(*self._scene.point())
            steps = self._hand()
            moment, delay = self._random.randrange(len(steps)), self._random.uniform(0, _LATEST)
            for number, step in enumerate(steps):
                if number == moment:
                    killing = threading.Timer(delay, self._tarvik.process.kill)
                    killing.start()
                step()
            killing.join()
            self._tarvik.process.wait()

    def _expect_own_wheel(self):
        """The server's own pointer is reversed by its button map, which a killed Tarvik leaves as it was."""
        def turned():
            self._scene.probe.forget()
            for event in X.ButtonPress, X.ButtonRelease:
                xtest.fake_input(self._scene.probe.display, event, _WHEEL_UP)
            self._scene.probe.display.sync()
            return ("press", _WHEEL_UP, *self._scene.screen.pointer()) in self._scene.probe.events()
        self._scene.check(poll(turned), "the wheel stays reversed")

    def _hand(self):
        keyboard, steps = self._scene.desk.keyboard, [lambda: self._mouse.press(RIGHT)]
        for what in _STEPS[self.kind]:
            if self.kind == "a gesture":
                steps.append(lambda way=what: self._scene.hands["mouse"].strokes(way, **_STROKES))
            elif self.kind == "turns of the wheel":
                steps.append(lambda notch=what: self._mouse.wheel(0, notch))
            else:
                steps += [lambda: self._mouse.press(LEFT), lambda: self._mouse.release(LEFT)]
        steps.append(lambda: self._mouse.release(RIGHT))
        if self._shift:
            steps = [lambda: keyboard.press(_LEFT_SHIFT), *steps, lambda: keyboard.release(_LEFT_SHIFT)]
        return steps

    def expect_nothing_left(self):
        """Answers what the application has got of what Tarvik was killed in."""
        scene, context = self._scene, f"after {self.kind}"
        scene.check(poll(lambda: not scene.screen.buttons_down(), patience=3), f"{context}: a button is stuck")
        if not poll(lambda: not any(scene.screen.connection.query_keymap()), patience=3):
            scene.check(False, f"{context}: a key is stuck")
            scene.desk.keyboard.release(_LEFT_SHIFT)  # the only one that is put back; a second press would hang the driver
        got = self._got()
        for button in RIGHT, LEFT:
            x, y = scene.point()
            self._mouse.move_to(x, y)
            scene.probe.forget()
            self._mouse.click(button)
            click = [("press", button, x, y), ("release", button, x, y)]
            scene.check(poll(lambda: scene.probe.events() == click, patience=3),
                        f"{context}: of a click the application got {scene.probe.events()}")
        return got

    def _got(self):
        events = self._scene.probe.events()
        keys = [event[1] for event in events if event[0] == "key" and event[1] != "Shift_L"]
        self._scene.check(2 * keys.count("Control_L") == len(keys), f"half a key combination: {keys}")
        if keys:
            return "its keys"
        buttons = [event[0] for event in events if event[:2] in (("press", RIGHT), ("release", RIGHT))]
        known = {"": "nothing", "press release": "the click", "release": "a release alone"}
        return known.get(" ".join(buttons), " ".join(buttons))


def killed_at_any_moment(scene):
    runs = _LONG if scene.long else max(_SHORT, scene.share)
    folder, outcomes = scene.desk.path("tarvik-killed"), collections.Counter()
    scene.check(scene.tarvik.end() == 0, "Tarvik does not end cleanly")
    for _ in range(runs):
        run = _Run(scene, folder)
        if scene.random.random() < _STARTS:
            run.killed_in_the_start()
            run.expect_nothing_left()
            outcomes["nothing, in a start"] += 1
        else:
            run.killed_in_use()
            outcomes[run.expect_nothing_left()] += 1
    scene.start_tarvik()
    scene.step()
    return (f"{runs} kills; of what it died in the application got "
            + ", ".join(f"{got} ({count})" for got, count in outcomes.most_common()))


TRIALS = (("killed at any moment", killed_at_any_moment),)
