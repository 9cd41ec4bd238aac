"""The preferences window of a running Tarvik, used as a person does, and found as a screen reader finds it."""

import configparser
import json
import os
import socket
import subprocess
import time

from desktop_test import PROGRAM, DesktopTest
from desktop.polling import PATIENCE, poll
from virtual_desktop import LEFT

TITLE = "Tarvik Preferences"
TABS = ("Gestures", "General", "Excluded Apps", "Help", "About")
OUTSIDE = (160, 400)  # beside the window, with room for strokes
PLUGINS = os.environ.get("TARVIK_TEST_PLUGINS", os.path.join(os.path.dirname(PROGRAM), "test-plugins"))
KEY_LEFTCTRL, KEY_W = 29, 17
_PICTURES = 0.05  # seconds, in which a window that has changed paints several


class Item:
    """What the window said of one of its controls or texts."""

    def __init__(self, said, parent):
        self.parent = parent
        self.role, self.name, self.text = said["role"], said["name"], said["text"]
        self.description, self.states = said["description"], set(said["states"])
        self.value = said.get("value")
        self.frame = self.x, self.y, self.width, self.height = said["frame"]

    def __repr__(self):
        return f"<{self.role} {self.name!r} {self.text!r} {(self.x, self.y, self.width, self.height)} {self.states}>"

    @property
    def enabled(self):
        return "disabled" not in self.states

    @property
    def checked(self):
        return "checked" in self.states

    @property
    def selected(self):
        return "selected" in self.states

    @property
    def view(self):
        """The list that it scrolls in, or the window."""
        item = self.parent or self
        while item.parent and item.role != "List":
            item = item.parent
        return item

    @property
    def middle(self):
        return self.x + self.width // 2, self.y + self.height // 2


class PreferencesWindow:
    """`environment` is for the program that shows the window: it carries the probe that tells what is in it."""

    def __init__(self, test):
        self._test = test
        self._socket = test.desk.path(f"probe-{test._testMethodName}")
        self.environment = dict(test.desk.env, QT_PLUGIN_PATH=PLUGINS,
                                QT_QPA_GENERIC_PLUGINS=f"tarvikprobe:{self._socket}")
        self._tarvik = None

    def open(self, tarvik, program):
        """By starting the program again."""
        self._tarvik = tarvik
        env = {name: value for name, value in tarvik.env.items() if not name.startswith("QT_QPA_GENERIC")}
        code = subprocess.run([program], env=env, timeout=PATIENCE, check=False).returncode
        self._test.assertEqual(code, 0)
        self._test.expect("the window is active", lambda: (self._said() or {}).get("active"))
        return self

    @property
    def window(self):
        return next((w for w in self._test.screen.windows() if w.title == TITLE), None)

    def items(self):
        """All that is visible now."""
        items = []
        for said in (self._said() or {"items": []})["items"]:
            items.append(Item(said, items[said["parent"]] if said["parent"] >= 0 else None))
        return [item for item in items if "invisible" not in item.states and item.width > 0]

    def find(self, name, role=None):
        """The first visible item of that name, or None."""
        return next((i for i in self.items() if i.name == name and role in (None, i.role)), None)

    def see(self, name, role=None):
        item = poll(lambda: self.find(name, role))
        self._test.assertIsNotNone(item, f"{name!r} is not in the window: {self.items()}")
        return item

    def see_no(self, name, role=None):
        self._test.expect(f"no {name!r}", lambda: not self.find(name, role))

    def reach(self, name, role=None):
        """The item, scrolled to where the pointer can reach it."""
        for _ in range(80):
            item = self._settled(name, role)
            view = item.view
            below, above = item.y + item.height - (view.y + view.height), view.y - item.y
            if below <= 0 and above <= 0:
                break
            self._test.mouse.move_to(*view.middle)
            self._test.mouse.wheel(0, 1 if below > 0 else -1)
            if not poll(lambda: self.see(name, role).y != item.y, patience=2):
                raise AssertionError(f"{item} cannot be scrolled into view")
        return item

    def click(self, name, role=None):
        item = self.reach(name, role)
        self._test.assertTrue(item.enabled, f"{item} is disabled")
        self.click_at(*item.middle)
        return item

    def click_at(self, x, y):
        self._test.mouse.move_to(x, y)
        self._test.mouse.click(LEFT)

    def tab(self, title):
        self.click(title, "PageTab")
        self._test.expect(f"tab {title}", lambda: self.find(title, "PageTab").selected)

    def choose(self, button, entry):
        """An entry of a pop-up button, by pointer."""
        self.click(button, "ComboBox")
        self.click(entry, "ListItem")
        self.see_no(entry, "ListItem")

    def close(self):
        self._test.keyboard.tap(KEY_LEFTCTRL, KEY_W)
        self._test.expect("the window closes", lambda: not self.window)

    def stored(self, key):
        """From the settings file; None when it is not there."""
        parser = configparser.RawConfigParser()
        parser.optionxform = str
        parser.read(os.path.join(self._tarvik.folder, "Tarvik.conf"), encoding="utf-8")
        return parser.get("General", key, fallback=None)

    def table(self):
        text = self.stored("mappings")
        return json.loads(text[1:-1].replace('\\"', '"').replace("\\\\", "\\")) if text else None

    def _settled(self, name, role):
        """The item once it no longer moves: what has changed is laid out when the next picture is made."""
        before = self.see(name, role)
        while True:
            time.sleep(_PICTURES)
            item = self.see(name, role)
            if item.frame == before.frame:
                return item
            before = item

    def _said(self):
        try:
            with socket.socket(socket.AF_UNIX) as connection:
                connection.settimeout(PATIENCE)
                connection.connect(self._socket)
                connection.sendall(b"tree\n")
                windows = json.loads(connection.makefile(encoding="utf-8").readline())["windows"]
        except (OSError, ValueError):
            return None
        return next((window for window in windows if window["title"] == TITLE), None)


class PreferencesTest(DesktopTest):
    """The base of the tests that use the window."""

    def preferences(self, **settings):
        """Tarvik with these settings, and its window."""
        window = PreferencesWindow(self)
        self.tarvik_process = self.tarvik(env=window.environment, **settings)
        return window.open(self.tarvik_process, PROGRAM)

    def expect_stored(self, window, key, value):
        self.expect(f"{key}={value}, not {window.stored(key)}", lambda: window.stored(key) == value)

    def expect_table(self, window, what, condition):
        self.expect(f"{what}: {window.table()}", lambda: condition(window.table() or {}))

    def gestures(self):
        return [line for line in self.tarvik_process.log() if line.startswith("gesture")]

    def expect_gesture(self, directions, meaning):
        self.tarvik_process.wait_for_log(f"gesture '{directions}' scrolled=false -> {meaning}")
