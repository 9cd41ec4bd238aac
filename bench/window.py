"""The preferences window, as far as benches need it."""

import subprocess

from desktop.polling import PATIENCE, poll
from desktop.windows import Desktop

TITLE = "Tarvik Preferences"


class PreferencesWindow:
    def __init__(self, tarvik, program):
        self._tarvik, self._program = tarvik, program
        self._desktop = Desktop(tarvik.env)

    def open(self):
        """By starting the program again. Returns once something is painted."""
        subprocess.run([self._program], env=self._tarvik.env, check=True, timeout=PATIENCE)
        if not poll(self.is_painted, interval=0.002):
            raise AssertionError("the window does not open")
        return self

    def close(self):
        self._window.close()
        if not poll(lambda: not self._window):
            raise AssertionError("the window does not close")
        self._desktop.close()

    @property
    def _window(self):
        return next((window for window in self._desktop.windows() if window.title == TITLE and window.shown), None)

    def is_painted(self):
        """More than one colour shows in the middle of the window."""
        window = self._window
        if not window:
            return False
        x, y, width, height = window.frame
        picture = self._desktop.pixels((x + width // 4, y + height // 4, width // 2, height // 2))
        return len(set(picture.rgb)) > 2
