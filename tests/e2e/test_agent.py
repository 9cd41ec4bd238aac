"""The agent: its status item and menu, starting it again, and what a main thread that stands still does not hold up."""

import os
import signal
import subprocess
import unittest

from desktop_test import KEY_ESCAPE, PROGRAM, DesktopTest
from desktop.polling import PATIENCE, poll
from desktop.older_tray import OlderTray
from desktop.probe import Probe
from desktop.stopped_thread import StoppedThread
from desktop.tray import Tray
from virtual_desktop import LEFT, RIGHT

PREFERENCES = "Tarvik Preferences"
KEY_F5 = {"kind": "custom", "custom": {"keyCode": 96, "modifiers": 0}}


def menu(on="on"):
    return [("Tarvik — Mouse Gestures", "disabled"), "-", ("Gestures Enabled", on, "Ctrl+E"), "-",
            ("Preferences…", "Ctrl+,"), "-", ("Quit Tarvik", "Ctrl+Q")]


class Agent(DesktopTest):
    def setUp(self):
        super().setUp()
        self.tray = self.enterContext(Tray(self.desk.env))

    def preferences(self):
        return [window for window in self.screen.windows() if window.title == PREFERENCES]

    def start_again(self, tarvik):
        """Its exit code."""
        return subprocess.run([PROGRAM], env=tarvik.env, timeout=PATIENCE, check=False).returncode

    def expect_setting(self, tarvik, line):
        def stored():
            with open(os.path.join(tarvik.folder, "Tarvik.conf"), encoding="utf-8") as file:
                return line in file.read().splitlines()
        self.expect(line, stored)

    def test_menu_and_switch(self):
        probe = self.enterContext(Probe(self.desk.env, managed=True))
        tarvik = self.tarvik(mappings={"UD": KEY_F5})
        item = self.tray.item()
        self.assertEqual(item.property("Title"), "Tarvik")
        self.assertEqual(item.menu(), menu())
        active = item.pixels()
        self.assertIn((22, 22), active)

        item.choose("Gestures Enabled")
        self.expect("another icon", lambda: item.pixels() != active)
        self.assertEqual(item.menu(), menu("off"))
        self.expect_setting(tarvik, "enabled=false")
        self.hand.hold((600, 400))
        probe.wait_for(("press", RIGHT, 600, 400))  # at once, with the button down
        self.mouse.release(RIGHT)
        probe.wait_for(("release", RIGHT, 600, 400))

        item.choose("Gestures Enabled")
        self.expect("the first icon", lambda: item.pixels() == active)
        self.assertEqual(item.menu(), menu())
        self.expect_setting(tarvik, "enabled=true")
        self.hand.draw((600, 400), "UD")
        probe.wait_for(("key", "F5"))

    def test_click(self):
        tarvik = self.tarvik()
        self.tray.item().click()
        self.expect("the menu", lambda: self.screen.menus(tarvik.process.pid))

    def test_quit(self):
        tarvik = self.tarvik()
        self.tray.item().choose("Quit Tarvik")
        self.assertEqual(tarvik.process.wait(PATIENCE), 0)
        self.assertEqual(tarvik.log()[-1], "ended")

    def test_preferences(self):
        tarvik = self.tarvik()
        self.tray.item().choose("Preferences…")
        window = self.expect("the window", self.preferences)[0]
        self.expect("it has the focus", lambda: self.screen.active() == window)
        self.assertEqual(self.start_again(tarvik), 0)
        self.assertEqual(len(self.preferences()), 1)

    def test_a_crash_frees_the_place(self):
        tarvik = self.tarvik()
        self.tray.item()
        self.assertEqual(tarvik.end(signal.SIGKILL), -signal.SIGKILL)
        with tarvik:
            self.tray.item(2)

    def test_main_thread_stands_still(self):
        """Clicks, strokes and their actions: nothing waits for the main thread."""
        probe = self.enterContext(Probe(self.desk.env, managed=True))
        tarvik = self.tarvik(mappings={"UD": KEY_F5})
        self.tray.item()
        with StoppedThread(tarvik.process.pid):
            for _ in range(3):
                probe.forget()
                self.hand.click((300, 300))
                probe.wait_for(("release", RIGHT, 300, 300))
                self.hand.draw((600, 400), "UD")
                probe.wait_for(("key", "F5"))
            tarvik.wait_for_log("gesture 'UD' scrolled=false -> Shortcut F5", 3)


class AgentWithoutTray(DesktopTest):
    def test_starting_again_shows_the_preferences(self):
        tarvik = self.tarvik()
        self.assertEqual(subprocess.run([PROGRAM], env=tarvik.env, timeout=PATIENCE, check=False).returncode, 0)
        self.expect("the window", lambda: [w for w in self.screen.windows() if w.title == PREFERENCES])

    def test_a_tray_that_comes_later(self):
        self.tarvik()
        for _ in range(2):  # also one that comes back
            with Tray(self.desk.env) as tray:
                self.assertEqual(tray.item().menu(), menu())

    def test_a_tray_of_the_older_kind(self):
        tarvik = self.tarvik()
        with OlderTray(self.desk.env) as tray:
            for button in LEFT, RIGHT:
                self.hand.click(tray.icon(), button)
                self.expect("the menu", lambda: self.screen.menus(tarvik.process.pid))
                self.picture(f"older-tray-menu-{button}")
                self.keyboard.tap(KEY_ESCAPE)
                self.expect("no menu", lambda: not self.screen.menus(tarvik.process.pid))

    def test_no_session_bus(self):
        env = {name: value for name, value in self.desk.env.items() if name != "DBUS_SESSION_BUS_ADDRESS"}
        env["XDG_RUNTIME_DIR"] = self.desk.path("home")
        tarvik = self.tarvik(env=env)
        self.assertIn("no session bus; starting Tarvik again will not show its preferences", tarvik.log())
        self.hand.draw((600, 400), "RDL")
        tarvik.wait_for_log("gesture 'RDL' scrolled=false -> unmapped")


if __name__ == "__main__":
    unittest.main(verbosity=2)
