"""Settings that leave a button, or an application, alone."""

import unittest

from desktop_test import DesktopTest
from desktop.applications import Browser, GtkEditor
from virtual_desktop import MIDDLE, RIGHT


class LeftAlone(DesktopTest):
    def expect_drag(self, browser, button):
        """The page gets the press at once, the movement and the release, as from a bare mouse."""
        number = {MIDDLE: 1, RIGHT: 2}[button]
        before = browser.state
        self.hand.hold(browser.middle, button=button)
        browser.expect("the press, while the button is down", lambda s: s["down"][number] == before["down"][number] + 1)
        self.hand.strokes("UD")
        browser.expect("the drag", lambda s: s["drag"] >= before["drag"] + 5)
        self.mouse.release(button)
        browser.expect("the release", lambda s: s["up"][number] == before["up"][number] + 1)

    def test_excluded_application(self):
        browser = self.open(Browser, "a-quiet")
        tarvik = self.tarvik(excludedApps=["org.example.Other", "chromium"])
        before = browser.state
        self.expect_drag(browser, RIGHT)
        self.assertFalse([line for line in tarvik.log() if line.startswith("gesture")])
        self.assertEqual(browser.state["born"], before["born"], "the page was reloaded")

        editor = self.open(GtkEditor, *self.files("one.txt"))
        self.hand.draw(editor.middle, "RDL")
        tarvik.wait_for_log("gesture 'RDL' scrolled=false -> unmapped")

    def test_switched_off(self):
        browser = self.open(Browser, "a-quiet")
        tarvik = self.tarvik(enabled=False)
        self.expect_drag(browser, RIGHT)
        self.hand.click(browser.middle)
        browser.expect("the click", lambda s: s["down"][2] == s["up"][2] == 2)
        self.assertFalse([line for line in tarvik.log() if line.startswith("gesture")])

    def test_middle_button(self):
        browser = self.open(Browser, "a-quiet")
        tarvik = self.tarvik(triggerButton="middle")
        self.expect_drag(browser, RIGHT)
        before = browser.state
        self.hand.click(browser.middle, MIDDLE)
        browser.expect("the middle click", lambda s: s["down"][1] == s["up"][1] == 1)
        self.assertEqual(browser.state["drag"], before["drag"])
        self.hand.draw(browser.middle, "UD", MIDDLE)
        browser.expect_reload(before)
        self.assertEqual([line for line in tarvik.log() if line.startswith("gesture")],
                         ["gesture '' scrolled=false -> unmapped", "gesture 'UD' scrolled=false -> Reload"])

    def test_minimum_stroke(self):
        browser = self.open(Browser, "a-quiet")
        tarvik = self.tarvik(minStroke=100)
        before = browser.state
        self.hand.draw(browser.middle, "UD", length=80)
        browser.expect("a click", lambda s: s["down"][2] == s["up"][2] == 1)
        self.hand.draw(browser.middle, "UD", length=130)
        browser.expect_reload(before)
        tarvik.wait_for_log("gesture 'UD' scrolled=false -> Reload")


if __name__ == "__main__":
    unittest.main(verbosity=2)
