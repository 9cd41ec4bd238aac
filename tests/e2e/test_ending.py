"""Ending: the mouse is as it was before, whenever the signal comes."""

import signal
import unittest

from desktop_test import DesktopTest
from desktop.applications import GtkEditor
from virtual_desktop import RIGHT


class Ending(DesktopTest):
    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.editor = cls.enterClassContext(GtkEditor(cls.desk, cls.screen))

    def expect_ended(self, tarvik, number):
        self.assertEqual(tarvik.end(number), 0)
        self.assertEqual(tarvik.log()[-1], "ended")

    def expect_native_click(self):
        """The menu opens at the press, as it does without Tarvik."""
        x, y = self.editor.middle
        self.mouse.move_to(x + 60, y + 60)  # away from the last click, or it would be a double click
        self.mouse.press(RIGHT)
        self.expect("the menu, with the button down", self.editor.menus)
        self.mouse.release(RIGHT)
        self.close_menu(self.editor)
        self.assertEqual(self.screen.buttons_down(), [])

    def test_at_rest(self):
        for number in signal.SIGTERM, signal.SIGINT:
            with self.subTest(number):
                tarvik = self.tarvik()
                self.hand.click(self.editor.middle)
                self.expect_menu(self.editor, self.editor.middle)
                self.expect_ended(tarvik, number)
                self.expect_native_click()

    def test_in_the_middle_of_a_hold(self):
        for number in signal.SIGTERM, signal.SIGINT:
            with self.subTest(number):
                tarvik = self.tarvik()
                self.hand.hold(self.editor.middle, "L")
                self.assertEqual(self.editor.menus(), [], "the press was not taken")
                self.expect_ended(tarvik, number)
                self.mouse.release(RIGHT)
                self.assertEqual(self.screen.buttons_down(), [])
                self.keyboard.tap(1)
                self.expect("no menu stays", lambda: not self.editor.menus())
                self.expect_native_click()

    def test_killed(self):
        """Nothing can be tidied up then, but the server lets go of the button by itself."""
        tarvik = self.tarvik()
        self.hand.hold(self.editor.middle, "L")
        self.assertEqual(tarvik.end(signal.SIGKILL), -signal.SIGKILL)
        self.mouse.release(RIGHT)
        self.expect_native_click()


if __name__ == "__main__":
    unittest.main(verbosity=2)
