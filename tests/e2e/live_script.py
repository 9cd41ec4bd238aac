"""Runs one gesture script with the tag "live" against the program on a desktop: live_script.py SCRIPT

The input is that of a device. What an application gets is what a probe window over the whole screen notes; what Tarvik does
is what it logs and draws. Nothing may reach the probe, and nothing may be performed, but what the script expects."""

import os
import shlex
import sys
import time
import unittest

from desktop_test import DesktopTest, poll
from desktop.hand import INTERVAL
from desktop.probe import Probe
from test_actions import TITLES
from virtual_desktop import BACK, LEFT, MIDDLE, RIGHT

SCRIPT = sys.argv.pop() if len(sys.argv) > 1 and sys.argv[-1].endswith(".gesture") else None
BUTTONS = {"right": RIGHT, "middle": MIDDLE, "back": BACK}
WHEEL_UP, WHEEL_DOWN = 4, 5  # what a notch of the wheel looks like to a window
FENCE = (LEFT, 5, 5)  # a click that always passes, after everything else
WHITE = (255, 255, 255)
PILL = 24  # pixels right of and below the pointer: within the label


def read_script(path):
    """[(line number, words)]"""
    with open(path, encoding="utf-8") as file:
        lines = [(number, shlex.split(line, comments=True)) for number, line in enumerate(file, 1)]
    return [(number, words) for number, words in lines if words]


def is_live(script):
    return any(words[0] == "tags" and "live" in words for _, words in script)


def point(text):
    x, y = text.split(",")
    return int(x), int(y)


class LiveScript(DesktopTest):
    def test_script(self):
        script = read_script(SCRIPT)
        self.assertTrue(is_live(script), "the script is not tagged")
        steps = [step for step in script if step[1][0] not in ("tags", "setting")]
        self.assertTrue(any(words[0] == "expect" for _, words in steps), "the script expects nothing")
        self.probe = self.enterContext(Probe(self.desk.env))
        self.running = self.tarvik(**{words[1]: self.setting(words) for _, words in script if words[0] == "setting"})
        self.reaches, self.performed, self.path, self.logged = [], [], [], {}
        self.button = self.last = None
        for number, words in steps:
            with self.subTest(line=number, words=" ".join(words)):
                (self.expectation if words[0] == "expect" else self.input)(words)
        self.compare()

    @staticmethod
    def setting(words):
        return {"true": True, "false": False}.get(words[2], words[2]) if words[1] != "excludedApps" else words[2:]

    def input(self, words):
        verb, arguments = words[0], words[1:]
        if verb == "wait":
            return time.sleep(float(arguments[0]))
        if verb == "wheel":
            return self.turn(int(arguments[0]))
        if arguments and arguments[0] in BUTTONS:
            self.button = BUTTONS[arguments.pop(0)]
        if arguments:
            self.path = ([] if verb == "press" else self.path) + [point(arguments[0])]
            self.mouse.move_to(*self.path[-1])
            # As a mouse reports. What comes while the server waits for Tarvik's answer to a press, it makes one movement of.
            time.sleep(INTERVAL)
        at = self.path[-1]
        if verb == "press":
            self.mouse.press(self.button)
            time.sleep(INTERVAL)
        elif verb == "release":
            self.mouse.release(self.button)
        elif verb != "move":
            self.fail(f"a live script cannot {verb}")
        self.last = ("drag", *at) if verb == "move" else (verb, self.button, *at)
        return None

    def turn(self, notches):
        button = WHEEL_UP if notches > 0 else WHEEL_DOWN
        self.assertEqual(abs(notches), 1, "one notch at a time")
        self.mouse.wheel(0, -notches)
        self.last = ("press", button, *self.path[-1]), ("release", button, *self.path[-1])

    def expectation(self, words):
        what, arguments = words[1], words[2:]
        if what == "swallow":
            pass  # whatever reaches the probe and is not expected is found in the end
        elif what == "pass":
            self.reaches += self.last if isinstance(self.last[0], tuple) else [self.last]
            self.probe.wait_for(self.reaches[-1])
        elif what == "click":
            button, at = BUTTONS[arguments[0]], point(arguments[1])
            self.reaches += [("press", button, *at), ("release", button, *at)]
            self.probe.wait_for(self.reaches[-1])
        elif what == "press":
            self.reaches.append(("press", BUTTONS[arguments[0]], *point(arguments[1])))
            self.probe.wait_for(self.reaches[-1])
        elif what == "perform":
            line = f"perform {TITLES[arguments[0]]}"
            self.performed.append(line)
            self.running.wait_for_log(line, self.performed.count(line))
        elif what == "log":
            self.logged[arguments[0]] = self.logged.get(arguments[0], 0) + 1
            self.running.wait_for_log(arguments[0], self.logged[arguments[0]])
        elif what == "trail":
            shown = arguments[0] != "none"
            self.assertTrue(poll(lambda: self.trail_shows(shown)), "a trail is missing" if shown else "a trail shows")
        else:
            self.fail(f"a live script cannot expect {what}")

    def trail_shows(self, wanted):
        """A line between the last two points and a label beside the pointer, or none of both."""
        picture = self.screen.pixels()
        (x, y), *before = reversed(self.path)
        middle = ((x + before[0][0]) // 2, (y + before[0][1]) // 2) if before else (x, y)
        line = picture.at(*middle) != WHITE
        label = picture.at(x + PILL, y + PILL) != WHITE
        return line and label if wanted else not line and not label

    def compare(self):
        """Once Tarvik has ended nothing more can come, and the fence tells that everything before it has come."""
        self.assertEqual(self.running.end(), 0)
        button, *at = FENCE
        self.mouse.move_to(*at)
        self.mouse.click(button)
        fence = [("press", *FENCE), ("release", *FENCE)]
        self.probe.wait_for(fence[-1])
        noted = [event for event in self.probe.events() if event[0] != "key"]
        self.assertEqual(noted, self.reaches + fence)
        self.assertEqual([line for line in self.running.log() if line.startswith("perform ")], self.performed)


if __name__ == "__main__":
    unittest.main(verbosity=2)
