"""The base of every test class: a desktop for the class, Tarvik for each test, and what is kept of a failure.

The environment says what to test: TARVIK (the program), TARVIK_E2E_WM (openbox or xfwm4) and TARVIK_E2E_FOLDER, where the
desktop's and Tarvik's logs and a picture of the screen are kept when a test fails, and pictures that tests make. By hand:
cd tests/e2e; python3 -m unittest -v test_clicks.Clicks.test_gtk"""

import os
import shutil
import sys
import unittest

PROJECT = os.path.join(os.path.dirname(os.path.realpath(__file__)), "..", "..")
sys.path.insert(0, os.path.join(PROJECT, "scripts"))
from desktop.hand import Hand  # noqa: E402
from desktop.polling import poll  # noqa: E402
from desktop.program import Tarvik  # noqa: E402
from desktop.windows import Desktop  # noqa: E402
from virtual_desktop import RIGHT, VirtualDesktop  # noqa: E402

WINDOW_MANAGER = os.environ.get("TARVIK_E2E_WM", "openbox")
FOLDER = os.environ.get("TARVIK_E2E_FOLDER", os.path.join(PROJECT, "build", "e2e"))
PROGRAM = os.environ.get("TARVIK", os.path.join(PROJECT, "build", "release", "tarvik"))

KEY_ESCAPE, KEY_N, KEY_LEFTALT = 1, 49, 56  # evdev codes


class DesktopTest(unittest.TestCase):
    layout, compositor, size = "us", False, "1280x800"

    @classmethod
    def setUpClass(cls):
        cls.desk = cls.enterClassContext(VirtualDesktop(wm=WINDOW_MANAGER, layout=cls.layout, compositor=cls.compositor,
                                                        size=cls.size))
        cls.screen = Desktop(cls.desk.env)
        cls.addClassCleanup(cls.screen.close)
        cls.mouse, cls.keyboard = cls.desk.mouse, cls.desk.keyboard
        cls.hand = Hand(cls.mouse)

    def run(self, result=None):
        self._result, self._faults_before = result, self._faults(result)
        return super().run(result)

    def setUp(self):
        self.addCleanup(self._let_go)
        self.addCleanup(self._keep_what_failed)

    def tarvik(self, program=PROGRAM, env=None, **settings):
        """Starts Tarvik for the rest of the test, which must leave it able to end cleanly, with no button held."""
        folder = self.desk.path(f"tarvik-{self._testMethodName}")
        shutil.rmtree(folder, ignore_errors=True)
        tarvik = Tarvik(program, env or self.desk.env, folder, settings)
        self.enterContext(tarvik)
        self.addCleanup(self._end, tarvik)
        return tarvik

    def open(self, kind, *arguments, **options):
        """Starts an application for the rest of the test."""
        return self.enterContext(kind(self.desk, self.screen, *arguments, **options))

    def files(self, *names):
        """Text files with these names."""
        for name in names:
            with open(self.desk.path(name), "w", encoding="utf-8") as file:
                file.write(f"The text of {name}.\n" * 40)
        return [self.desk.path(name) for name in names]

    def expect(self, what, question):
        answer = poll(question)
        if not answer:
            self.fail(f"{what}: not in time; windows {self.screen.stack()}, active {self.screen.active()}")
        return answer

    def expect_menu(self, application, point):
        """A menu of the application opens with a corner at the point; it is closed again."""
        menu = self.expect("a context menu", application.menus)[0]
        frame = menu.frame
        distance = (min(abs(frame.x - point[0]), abs(frame.x + frame.width - point[0])),
                    min(abs(frame.y - point[1]), abs(frame.y + frame.height - point[1])))
        self.assertLessEqual(max(distance), 3, f"the menu {frame} is not at {point}")
        self.close_menu(application)

    def close_menu(self, application):
        self.keyboard.tap(KEY_ESCAPE)
        self.expect("the menu closes", lambda: not application.menus())

    def picture(self, name):
        folder = os.path.join(FOLDER, "pictures")
        os.makedirs(folder, exist_ok=True)
        self.screen.still().save(os.path.join(folder, f"{name}-{WINDOW_MANAGER}.png"))

    def _end(self, tarvik):
        if tarvik.process.poll() is None:
            self.assertEqual(tarvik.end(), 0, "Tarvik did not end cleanly")
        if self._faults(self._result) == self._faults_before:
            self.assertEqual(self.screen.buttons_down(), [], "a button is stuck")

    def _let_go(self):
        """A test that failed in the middle of a hold must not spoil the next one."""
        for button in self.screen.buttons_down():
            self.mouse.release(button)

    @staticmethod
    def _faults(result):
        return len(result.failures) + len(result.errors) if result else 0

    def _keep_what_failed(self):
        if self._faults(self._result) == self._faults_before:
            return
        folder = os.path.join(FOLDER, "failed", f"{self.id()}.{WINDOW_MANAGER}")
        shutil.rmtree(folder, ignore_errors=True)
        os.makedirs(os.path.dirname(folder), exist_ok=True)
        shutil.copytree(self.desk.folder, folder, ignore=_only_logs)
        self.screen.pixels().save(os.path.join(folder, "screen.png"))
        print(f"what was left of {self.id()} is in {folder}", file=sys.stderr)


def _only_logs(folder, names):
    wanted = (".out", ".log", ".conf", ".xml")
    keep = {name for name in names if name.endswith(wanted) or name == "output" or name.startswith("tarvik")}
    return set(names) - keep
