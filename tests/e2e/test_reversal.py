"""The wheel turned round, as applications feel it."""

import signal
import time
import unittest

from desktop_test import DesktopTest
from desktop.applications import Browser
from desktop.polling import poll
from desktop.probe import Probe
from Xlib import X
from Xlib.ext import xtest

NOTCHES = 20
PAUSE = 0.03  # seconds between two notches


class WheelReversal(DesktopTest):
    def turn(self, down):
        for _ in range(NOTCHES):
            self.mouse.wheel(0, down)
            time.sleep(PAUSE)

    def rests_at(self, browser):
        """Where the page stands once it has stopped to scroll."""
        seen = None

        def rests():
            nonlocal seen
            before, seen = seen, browser.state["scroll"]
            return before == seen
        self.expect("the page stops to scroll", lambda: poll(rests, interval=0.3))
        return seen

    def test_browser(self):
        """Away from the ends of the page the reversed wheel scrolls as far back as the plain one scrolls forth."""
        browser = self.open(Browser, "a-quiet")
        self.mouse.move_to(*browser.middle)
        self.mouse.wheel(0, 1)  # a browser takes the first notch of a wheel for its position
        self.mouse.wheel(0, 5)
        self.turn(1)
        start = self.rests_at(browser)
        self.turn(-1)
        moved = start - self.rests_at(browser)
        self.assertGreater(start, moved)
        self.turn(1)
        self.assertEqual(self.rests_at(browser), start)
        for settings in ({"reverseVertical": True}, {"reverseVertical": True, "reverseHorizontal": True}):
            tarvik = self.tarvik(**settings)
            self.turn(1)
            back = start - self.rests_at(browser)
            self.turn(-1)
            self.assertEqual(self.rests_at(browser), start, settings)
            self.assertEqual(back, moved, settings)
            tarvik.end()
        self.turn(-1)
        self.assertEqual(start - self.rests_at(browser), moved, "still reversed after the end")

    def test_killed(self):
        """What Tarvik could not put back itself the next start puts back."""
        probe = self.enterContext(Probe(self.desk.env))
        self.mouse.move_to(300, 300)

        def seen(button):
            probe.forget()
            for kind in (X.ButtonPress, X.ButtonRelease):
                xtest.fake_input(probe.display, kind, button)
            probe.display.sync()
            return self.expect("a click", lambda: [event for event in probe.events() if event[0] == "release"])[0][1]
        tarvik = self.tarvik(reverseVertical=True)
        self.assertEqual((seen(4), seen(5), seen(6)), (5, 4, 6))
        tarvik.end(signal.SIGKILL)
        self.assertEqual(seen(4), 5)
        again = self.tarvik(reverseVertical=True)
        self.assertEqual((seen(4), seen(5)), (5, 4))
        again.end(signal.SIGKILL)
        self.tarvik()
        self.assertEqual((seen(4), seen(5), seen(6)), (4, 5, 6))


if __name__ == "__main__":
    unittest.main(verbosity=2)
