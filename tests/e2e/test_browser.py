"""Gestures in a browser: pages, tabs and the wheel."""

import time
import unittest

from desktop_test import DesktopTest, KEY_N, poll
from desktop.applications import Browser
from virtual_desktop import RIGHT

WHEEL_INTERVAL = 0.12  # seconds from one step of the wheel binding to the next


class BrowserGestures(DesktopTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.browser = cls.enterClassContext(Browser(cls.desk, cls.screen, "z"))

    def draw(self, directions):
        self.hand.draw(self.browser.middle, directions)

    def expect_no_click(self):
        self.assertEqual(self.browser.state["down"], [0, 0, 0])
        self.assertEqual(self.browser.menus(), [])

    def test_reload(self):
        self.browser.open("a")
        tarvik = self.tarvik()
        before = self.browser.state
        self.draw("UD")
        self.browser.expect_reload(before)
        self.assertEqual(tarvik.log()[-2:], ["gesture 'UD' scrolled=false -> Reload", "perform Reload"])
        self.expect_no_click()

    def test_back_and_forward(self):
        self.browser.open("a")
        self.keyboard.tap(KEY_N)
        self.browser.expect_page("b")
        self.tarvik()
        self.draw("LU")
        self.browser.expect_page("a")
        self.draw("RU")
        self.browser.expect_page("b")
        self.expect_no_click()

    def test_close_and_reopen_a_tab(self):
        self.browser.open("a", "p", "q")
        self.tarvik()
        self.draw("DR")
        self.browser.expect_page("p")
        self.draw("DU")
        self.browser.expect_page("a")
        self.draw("UR")
        self.browser.expect_page("p")

    def test_change_tab(self):
        self.browser.open("a", "p", "q")
        self.tarvik()
        for gesture, page in ("UR", "p"), ("UR", "q"), ("UL", "p"), ("UL", "a"):
            self.draw(gesture)
            self.browser.expect_page(page)
        self.expect_no_click()

    def test_two_gestures_in_quick_succession(self):
        self.browser.open("a", "p", "q")
        tarvik = self.tarvik()
        self.draw("UR")
        self.draw("UR")
        self.browser.expect_page("q")
        self.assertEqual(tarvik.log().count("perform Next Tab"), 2)

    def test_wheel_steps_tabs(self):
        """One step for every 0.12 s, and the release does nothing, though a gesture was drawn."""
        self.browser.open("a", "p", "q", "r")
        tarvik = self.tarvik()
        self.hand.hold(self.browser.middle, "UD")
        at_most = 1 + self.turn_wheel(3) // WHEEL_INTERVAL  # one, unless the machine is too busy to turn the wheel in time
        time.sleep(WHEEL_INTERVAL)
        self.turn_wheel(1)
        time.sleep(WHEEL_INTERVAL)
        self.turn_wheel(-1)
        self.mouse.release(RIGHT)
        tarvik.wait_for_log("gesture 'UD' scrolled=true -> Reload")

        steps = [line for line in tarvik.log() if line.startswith("perform")]
        burst = len(steps) - 2
        self.assertTrue(1 <= burst <= at_most, f"{burst} steps for three notches, not {at_most}")
        self.assertEqual(steps, ["perform Next Tab"] * burst + ["perform Next Tab", "perform Previous Tab"])
        self.browser.expect_page("apqr"[burst])
        state = self.browser.state
        self.assertEqual((state["how"], state["scroll"], state["down"]), ("navigate", 0, [0, 0, 0]))

    def test_wheel_bound_to_nothing(self):
        """The wheel scrolls the page during the hold, and the gesture is performed all the same."""
        self.browser.open("a")
        tarvik = self.tarvik(scrollBinding="none")
        before = self.browser.state
        self.hand.hold(self.browser.middle, "U")
        self.turn_wheel(4)
        scrolled = self.browser.expect("the page scrolls", lambda s: s["scroll"] > 100)
        self.assertEqual(scrolled["down"], [0, 0, 0])
        self.hand.strokes("D")
        self.mouse.release(RIGHT)
        self.browser.expect_reload(before)
        self.assertIn("gesture 'UD' scrolled=false -> Reload", tarvik.log())

    def test_wheel_after_a_hold(self):
        """What was swallowed during the hold does not come out at the next turn, and the next turn is not lost."""
        self.browser.open("a")
        self.mouse.move_to(*self.browser.middle)
        self.turn_wheel(1)  # the first notch tells the browser where the wheel stands
        notch = self.scroll(2) / 2
        tarvik = self.tarvik()
        self.hand.hold(self.browser.middle)
        self.turn_wheel(6)
        time.sleep(WHEEL_INTERVAL)
        self.mouse.release(RIGHT)
        tarvik.wait_for_log("gesture '' scrolled=true -> unmapped")
        turned = self.scroll(3) / notch
        self.assertTrue(2.5 < turned < 3.5, f"three notches scrolled {turned}")

    def test_unbound_gesture(self):
        """Dropped: no click, no drag, no action."""
        self.browser.open("a")
        tarvik = self.tarvik()
        self.draw("RDL")
        tarvik.wait_for_log("gesture 'RDL' scrolled=false -> unmapped")
        state = self.browser.state
        self.browser.expect_page("a")
        self.expect_no_click()
        self.assertEqual((state["drag"], state["menu"]), (0, None))

    def turn_wheel(self, notches):
        """Notch by notch, as fast as a finger can; returns the seconds that it took."""
        start = time.monotonic()
        for _ in range(abs(notches)):
            self.mouse.wheel(0, 1 if notches > 0 else -1)
            time.sleep(0.02)
        return time.monotonic() - start

    def scroll(self, notches):
        """How far the page scrolls until it is at rest."""
        start = self.browser.state["scroll"]
        self.turn_wheel(notches)
        places = []

        def at_rest():
            places.append(self.browser.state["scroll"])
            return places[-1] > start and len(places) > 20 and len(set(places[-20:])) == 1
        self.assertTrue(poll(at_rest, interval=0.02), f"the page does not come to rest: {start}, {places[-1]}")
        return places[-1] - start


if __name__ == "__main__":
    unittest.main(verbosity=2)
