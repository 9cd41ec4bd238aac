"""Actions reach applications whatever the layout, and whatever keys are held."""

import unittest

from desktop_test import DesktopTest, KEY_LEFTALT
from desktop.applications import Browser

KEY_X = 45


class Azerty(DesktopTest):
    layout = "fr"

    def test_letters_follow_the_layout(self):
        """Ctrl+W is the key that carries W, which is where Z is elsewhere; Ctrl+T and Ctrl+R are where they always are."""
        browser = self.open(Browser, "a", "p")
        self.tarvik(mappings={"DR": "closeTab", "DU": "reopenTab", "UD": "reload"})
        self.hand.draw(browser.middle, "DR")
        browser.expect_page("p")
        self.hand.draw(browser.middle, "DU")
        browser.expect_page("a")
        before = browser.state
        self.hand.draw(browser.middle, "UD")
        browser.expect_reload(before)


class HeldKeys(DesktopTest):
    def test_alt_held(self):
        """The held key is lifted for the action's keys and put back, so that it still counts afterwards."""
        browser = self.open(Browser, "a", "p")
        self.tarvik()
        self.keyboard.press(KEY_LEFTALT)
        self.addCleanup(self.keyboard.release, KEY_LEFTALT)
        before = browser.state
        self.hand.draw(browser.middle, "UD")
        browser.expect_reload(before)
        self.hand.draw(browser.middle, "DR")
        browser.expect_page("p")
        self.keyboard.tap(KEY_X)
        browser.expect("Alt still counts", lambda s: s["alt"] is True)
        self.keyboard.release(KEY_LEFTALT)
        self.keyboard.tap(KEY_X)
        browser.expect("Alt no longer counts", lambda s: s["alt"] is False)


if __name__ == "__main__":
    unittest.main(verbosity=2)
