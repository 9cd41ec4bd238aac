"""A press and release without a stroke stays a click, at the place of the release, in every toolkit."""

import time
import unittest

from desktop_test import DesktopTest, KEY_ESCAPE
from desktop.applications import Browser, GtkEditor, QtEditor
from desktop.probe import Probe
from desktop.usage import wake_ups
from virtual_desktop import LEFT, MIDDLE, RIGHT

NO_GESTURE = "gesture '' scrolled=false -> unmapped"


class Clicks(DesktopTest):
    def test_gtk(self):
        self.expect_clicks(self.open(GtkEditor, *self.files("one.txt")))

    def test_qt(self):
        self.expect_clicks(self.open(QtEditor, *self.files("one.txt")))

    def test_chromium(self):
        browser = self.open(Browser, "a")
        self.expect_clicks(browser)
        state = browser.expect("two right clicks, pressed and released", lambda s: s["down"][2] == 2)
        self.assertEqual(state["menu"], [browser.middle[0] + 12, browser.middle[1] + 7])
        self.assertEqual((state["how"], state["drag"]), ("navigate", 0), "the page was dragged over")

    def test_click_after_click(self):
        """Clicks quicker than a hand's are all given back, each once."""
        browser = self.open(Browser, "a-quiet")
        tarvik = self.tarvik()
        for _ in range(20):
            self.hand.click(browser.middle)
            time.sleep(0.06)  # on a busy machine the server makes one press of two that are closer
        browser.expect("20 clicks", lambda s: s["up"][2] >= 20)
        tarvik.end()
        browser.expect_page("a-quiet")
        self.assertEqual((browser.state["down"], browser.state["up"]), ([0, 0, 20], [0, 0, 20]))
        # Not each of them: what comes while one is given back is the application's already.
        self.assertGreater(tarvik.log().count(NO_GESTURE), 10)

    def test_other_buttons(self):
        browser = self.open(Browser, "a-quiet")
        self.tarvik()
        self.hand.click(browser.middle, LEFT)
        self.hand.click(browser.middle, MIDDLE)
        browser.expect("both clicks", lambda s: s["down"] == s["up"] == [1, 1, 0])

    def test_click_while_a_menu_is_open(self):
        """An open menu has the pointer for itself: a second right click closes it or moves it, and no button sticks."""
        editor = self.open(GtkEditor, *self.files("one.txt"))
        self.tarvik()
        self.hand.click(editor.middle)
        self.expect("a menu", editor.menus)
        self.hand.click((editor.middle[0] - 50, editor.middle[1] - 40))
        self.keyboard.tap(KEY_ESCAPE)
        self.expect("the menu closes", lambda: not editor.menus())
        elsewhere = editor.middle[0] + 60, editor.middle[1] + 60  # or it would be a double click
        self.hand.click(elsewhere)
        self.expect_menu(editor, elsewhere)

    def expect_clicks(self, application):
        tarvik = self.tarvik()
        point = application.middle
        self.hand.click(point)
        self.expect("the menu", application.menus)
        self.picture(f"click-{application.command[0]}")
        self.expect_menu(application, point)
        tarvik.wait_for_log(NO_GESTURE)

        self.mouse.move_to(*point)
        self.mouse.press(RIGHT)
        for _ in range(4):
            self.mouse.move_by(3, 2)
        self.mouse.move_by(0, -1)
        self.mouse.release(RIGHT)
        self.expect_menu(application, (point[0] + 12, point[1] + 7))
        tarvik.wait_for_log(NO_GESTURE, 2)

    def test_what_is_not_ours_wakes_the_tap_alone(self):
        """A press in an excluded application goes on at once; whatever wakes with the tap delays it."""
        probe = self.enterContext(Probe(self.desk.env, managed=True))
        tarvik = self.tarvik(excludedApps=["probe", "Probe"])
        self.hand.click((400, 300))
        probe.wait_for(("release", RIGHT, 400, 300))
        time.sleep(1)  # the start is over
        before, clicks = self.woken(tarvik), 20
        for _ in range(clicks):
            self.hand.click((400, 300))
            time.sleep(0.06)
        woken = {name: count - before[name] for name, count in self.woken(tarvik).items()}
        self.assertNotIn(NO_GESTURE, tarvik.log())
        self.assertGreaterEqual(woken.pop("tap"), clicks)
        self.assertTrue(all(count < clicks // 2 for count in woken.values()), woken)

    @staticmethod
    def woken(tarvik):
        """How often each thread that has a name of its own has waited, and the main thread; the rest are a sanitizer's."""
        return {name: count for (thread, name), count in wake_ups(tarvik.process.pid).items()
                if name != "tarvik" or thread == tarvik.process.pid}


if __name__ == "__main__":
    unittest.main(verbosity=2)
