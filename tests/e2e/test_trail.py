"""What shows while drawing, with a compositing manager and without: a line where the pointer went, and a label."""

import unittest

from desktop_test import DesktopTest, poll
from desktop.applications import Browser
from desktop.probe import Probe
from virtual_desktop import RIGHT

START = (500, 300)


class TrailCases:
    def test_trail_over_a_page(self):
        browser = self.open(Browser, "a")
        self.tarvik()
        before = self.screen.pixels()
        self.hand.hold(browser.middle, "UD")
        self.assertTrue(poll(lambda: self.changed(before) > 2000), "neither a trail nor a label shows")
        self.picture("trail-over-a-page" + ("" if self.compositor else "-without-compositor"))
        state = browser.state
        self.mouse.release(RIGHT)
        browser.expect_reload(state)

    def test_trail_comes_and_goes(self):
        self.enterContext(Probe(self.desk.env))
        self.tarvik(mappings={"RD": "none"})
        blank = self.screen.pixels()
        self.hand.hold(START, "RD", length=100)
        pointer = self.screen.pointer()
        shown = poll(lambda: self.trail_shows(pointer))
        self.picture("trail" + ("" if self.compositor else "-without-compositor"))
        self.assertTrue(shown, "the line or the label is missing")
        self.assertLess(self.changed(blank), 40000, "more than a line and a label changed")
        self.mouse.release(RIGHT)
        self.assertTrue(poll(lambda: self.changed(blank) == 0), "something stays on the screen")

    def test_no_trail(self):
        self.enterContext(Probe(self.desk.env))
        tarvik = self.tarvik(showTrail=False)
        blank = self.screen.pixels()
        self.hand.hold(START, "RDL", length=100)
        self.assertEqual(self.changed(blank), 0)
        self.mouse.release(RIGHT)
        tarvik.wait_for_log("gesture 'RDL' scrolled=false -> unmapped")

    def trail_shows(self, pointer):
        picture = self.screen.pixels()
        white = (255, 255, 255)
        on_line = [(START[0] + 50, START[1]), (START[0] + 100, START[1] + 50)]
        # The line bulges by a few pixels; the label is 18 points right of the pointer and below it.
        line = all(any(picture.at(x + d, y + d) != white for d in range(-5, 6)) for x, y in on_line)
        label = picture.at(pointer[0] + 18 + 20, pointer[1] + 18 + 8) != white
        return line and label

    def changed(self, before):
        """The number of pixels that differ."""
        now, then = self.screen.pixels().rgb, before.rgb
        if now == then:
            return 0
        return sum(now[i:i + 3] != then[i:i + 3] for i in range(0, len(now), 3))


class TrailWithCompositor(TrailCases, DesktopTest):
    compositor = True


class TrailWithoutCompositor(TrailCases, DesktopTest):
    pass


if __name__ == "__main__":
    unittest.main(verbosity=2)
