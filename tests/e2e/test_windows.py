"""Gestures for desktops and windows. Windows are those under the pointer where the gesture began, not those in front."""

import unittest

from desktop_test import DesktopTest
from desktop.applications import GtkEditor, QtEditor

LEFT_HALF, RIGHT_HALF = (20, 40, 500, 500), (620, 40, 500, 500)


class WindowGestures(DesktopTest):
    def two_editors(self):
        """The first one is under the pointer, the second one has the focus."""
        under = self.open(GtkEditor, *self.files("under.txt"), place=LEFT_HALF)
        focused = self.open(QtEditor, *self.files("focused.txt"), place=RIGHT_HALF)
        self.assertEqual(self.screen.active(), focused.window)
        return under, focused

    def test_change_desktop(self):
        self.tarvik()
        for gesture, desktop in ("R", 1), ("R", 2), ("L", 1), ("L", 0):
            self.hand.draw((600, 400), gesture)
            self.expect(f"desktop {desktop} after {gesture}", lambda wanted=desktop: self.screen.current() == wanted)

    def test_minimise(self):
        under, focused = self.two_editors()
        self.tarvik()
        self.hand.draw(under.middle, "DL")
        self.expect("minimised", lambda: under.window.minimised)
        self.assertFalse(focused.window.minimised)

    def test_full_screen(self):
        under, focused = self.two_editors()
        before = under.window.frame
        tarvik = self.tarvik()
        self.hand.draw(under.middle, "RD")
        self.expect("full screen", lambda: under.window.full_screen and under.window.frame == (0, 0, 1280, 800))
        self.assertFalse(focused.window.full_screen)
        under.focus()
        self.hand.draw((700, 300), "RD")
        tarvik.wait_for_log("enter full screen: window is already full screen")
        self.assertTrue(under.window.full_screen)

        focused.focus()
        self.hand.draw((200, 300), "LD")  # where only the first window is
        self.expect("no longer full screen", lambda: under.window.frame == before and not under.window.full_screen)

    def test_full_screen_over_the_desktop(self):
        """Where no window is, the window in front is meant."""
        under, focused = self.two_editors()
        self.tarvik()
        self.hand.draw((600, 620), "RD")
        self.expect("full screen", lambda: focused.window.full_screen)
        self.assertFalse(under.window.full_screen)


if __name__ == "__main__":
    unittest.main(verbosity=2)
