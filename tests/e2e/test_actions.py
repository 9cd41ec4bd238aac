"""Every action of the table, each bound to a gesture and drawn: what it is logged as, and what it does."""

import itertools
import unittest

from desktop_test import DesktopTest, KEY_N
from desktop.applications import Browser, GtkEditor, QtEditor, Terminal
from desktop.probe import Probe

KEY_CONTROL, KEY_SHIFT, KEY_END = 29, 42, 107
END_KEY_OF_TABLE, CONTROL_OF_TABLE = 119, 0x40000  # position and modifier bit as the table stores them

TITLES = {
    "none": "Do Nothing", "spaceLeft": "Previous Desktop", "spaceRight": "Next Desktop", "missionControl": "Overview",
    "appExpose": "App Windows", "showDesktop": "Show Desktop", "launchpad": "Applications", "nextTab": "Next Tab",
    "previousTab": "Previous Tab", "newTab": "New Tab", "closeTab": "Close Tab", "reopenTab": "Reopen Closed Tab",
    "nextWindow": "Next Window of App", "previousWindow": "Previous Window of App", "previousApp": "Switch to Last App",
    "closeWindow": "Close Window", "minimizeWindow": "Minimize Window", "fullScreen": "Toggle Full Screen",
    "enterFullScreen": "Enter Full Screen", "exitFullScreen": "Exit Full Screen", "hideApp": "Hide App",
    "quitApp": "Quit App", "back": "Back", "forward": "Forward", "reload": "Reload", "scrollTop": "Scroll to Top",
    "scrollBottom": "Scroll to Bottom", "custom": "Shortcut Ctrl+End",
}
# Three strokes, so that none is a gesture of the default table.
GESTURES = dict(zip(TITLES, (a + b + c for a, b, c in itertools.product("LRUD", repeat=3) if a != b != c)))
TABLE = dict(((gesture, kind) for kind, gesture in GESTURES.items()), **{
    GESTURES["custom"]: {"kind": "custom", "custom": {"keyCode": END_KEY_OF_TABLE, "modifiers": CONTROL_OF_TABLE}}})

LEFT_HALF, RIGHT_HALF = (20, 40, 500, 500), (620, 40, 500, 500)


class ActionTest(DesktopTest):
    def setUp(self):
        super().setUp()
        self._tarvik = self.tarvik(mappings=TABLE)

    def perform(self, kind, point):
        gesture, title = GESTURES[kind], TITLES[kind]
        times = 1 + self._tarvik.log().count(f"perform {title}")
        self.hand.draw(point, gesture, length=60)
        self._tarvik.wait_for_log(f"gesture '{gesture}' scrolled=false -> {title}", times)
        self._tarvik.wait_for_log(f"perform {title}", times)


class BrowserActions(ActionTest):
    def test_pages_and_tabs(self):
        browser = self.open(Browser, "a", "p")

        def does(kind, what, condition):
            self.perform(kind, browser.middle)
            return browser.expect(f"{kind}: {what}", condition)

        does("scrollBottom", "at the end", lambda s: s["scroll"] > 4000)
        does("scrollTop", "at the top", lambda s: s["scroll"] == 0)
        does("custom", "at the end", lambda s: s["scroll"] > 4000)
        before = browser.state
        does("reload", "loaded again", lambda s: s["how"] == "reload" and s["born"] > before["born"])
        browser.expect_page("a")
        self.keyboard.tap(KEY_N)
        browser.expect_page("b")
        does("back", "page before", lambda s: s["page"] == "a")
        does("forward", "page after", lambda s: s["page"] == "b")
        does("nextTab", "second tab", lambda s: s["page"] == "p")
        does("previousTab", "first tab", lambda s: s["page"] == "b")
        self.perform("newTab", browser.middle)
        self.expect("newTab: a tab without a page", lambda: browser.state is None)
        does("closeTab", "a page again", lambda s: s["page"] in "bp")
        before = browser.state
        does("closeTab", "the other page", lambda s: s["page"] != before["page"])
        does("reopenTab", "the page is back", lambda s: s["page"] == before["page"])

    def test_terminal(self):
        """Ctrl and a letter belong to the program inside: there tabs are opened and closed with Shift."""
        terminal = self.open(Terminal, place=(40, 40, 900, 600))
        self.expect("a shell", lambda: terminal.tabs() == 1)
        point = terminal.window.centre
        self.perform("newTab", point)
        self.expect("newTab: a second shell", lambda: terminal.tabs() == 2)
        self.perform("reopenTab", point)
        self.perform("closeTab", point)
        self.expect("closeTab: one shell, so none was opened before", lambda: terminal.tabs() == 1)


class WindowActions(ActionTest):
    def test_desktops(self):
        self.perform("spaceRight", (600, 400))
        self.expect("spaceRight", lambda: self.screen.current() == 1)
        self.perform("spaceLeft", (600, 400))
        self.expect("spaceLeft", lambda: self.screen.current() == 0)
        self.open(GtkEditor, *self.files("one.txt"))
        self.perform("showDesktop", (600, 400))
        self.expect("showDesktop", self.screen.showing_desktop)
        self.perform("showDesktop", (600, 400))
        self.expect("showDesktop again", lambda: not self.screen.showing_desktop())

    def test_window(self):
        editor = self.open(GtkEditor, *self.files("one.txt"), place=LEFT_HALF)
        window, point = editor.window, editor.middle
        for kind, full in (("fullScreen", True), ("fullScreen", False), ("enterFullScreen", True), ("exitFullScreen", False)):
            self.perform(kind, point)
            self.expect(f"{kind}: {full}", lambda wanted=full: window.full_screen == wanted)
        self.perform("minimizeWindow", point)
        self.expect("minimizeWindow", lambda: window.minimised)
        editor.focus()
        self.perform("closeWindow", point)
        self.expect("closeWindow", lambda: not window.exists)

    def test_applications(self):
        editor = self.open(GtkEditor, *self.files("one.txt"), place=LEFT_HALF)
        first, second = editor.window, self.second_window(editor)
        other = self.open(QtEditor, *self.files("two.txt"), place=RIGHT_HALF)
        point = (560, 600)
        editor.focus(first)
        for kind, wanted in ("nextWindow", second), ("previousWindow", first), ("previousApp", other.window):
            self.perform(kind, point)
            self.expect(f"{kind}: {wanted}", lambda w=wanted: self.screen.active() == w)
        editor.focus(first)
        self.perform("hideApp", point)
        self.expect("hideApp", lambda: first.minimised and second.minimised)
        self.assertFalse(other.window.minimised)
        other.focus()
        self.perform("quitApp", point)
        self.expect("quitApp", lambda: other.process.poll() is not None)
        self.assertIsNone(editor.process.poll())

    def second_window(self, editor):
        before = set(self.screen.windows())
        self.keyboard.tap(KEY_CONTROL, KEY_SHIFT, KEY_N)
        window = editor.new_window(before)
        editor.arrange(window, RIGHT_HALF)
        return window

    def test_what_the_desktop_does_not_offer(self):
        """The fallback keys are sent, and logged; where there are none, that is logged."""
        probe = self.enterContext(Probe(self.desk.env, managed=True))
        self.expect("the probe has the focus", lambda: getattr(self.screen.active(), "id", None) == probe.window.id)
        for kind, keys, line in (("none", [], None),
                                 ("appExpose", [], "not offered by this desktop"),
                                 ("launchpad", [], "not offered by this desktop"),
                                 ("missionControl", ["Super_L"], "not offered by this desktop; sending Super")):
            with self.subTest(kind):
                probe.forget()
                lines = self._tarvik.log().count(line)
                self.perform(kind, (600, 400))
                if line:
                    self._tarvik.wait_for_log(line, lines + 1)
                for key in keys:
                    probe.wait_for(("key", key))
                self.keyboard.tap(KEY_END)
                probe.wait_for(("key", "End"))
                self.assertEqual(probe.keys(), keys + ["End"])


if __name__ == "__main__":
    unittest.main(verbosity=2)
