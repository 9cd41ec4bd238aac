"""Tarvik itself, running on a desktop with settings of its own."""

import json
import os
import re
import signal
import subprocess

from desktop.polling import PATIENCE, poll
from desktop.processes import end_with_parent, obey_file_permissions

_LINE = re.compile(r"^\d{4}-\d\d-\d\d \d\d:\d\d:\d\d\.\d{3} (.*)$", re.MULTILINE)


def _start_of_a_child():
    end_with_parent(signal.SIGKILL)
    obey_file_permissions()


def _text(path):
    try:
        with open(path, encoding="utf-8", errors="replace") as file:
            return file.read()
    except OSError:
        return ""


class ProgramError(AssertionError):
    """Tarvik did not do what was waited for; the message holds its log."""


class Tarvik:
    """with Tarvik("build/release/tarvik", desk.env, folder, {"minStroke": 50}) as tarvik: ...

    Inside the block its tap is armed. The folder keeps its settings, its log and what it printed (`log_file`, `output`);
    `env` is what it is started with. It has no more rights over files than a plain user.
    settings: as in the settings file; "mappings": {"UD": "reload", ...} replaces the gesture table."""

    def __init__(self, program, env, folder, settings=None):
        self._program, self.folder = os.path.abspath(program), folder
        self.env = dict(env, XDG_CONFIG_HOME=folder, XDG_STATE_HOME=folder)
        self.log_file, self.output = os.path.join(folder, "tarvik", "Tarvik.log"), os.path.join(folder, "output")
        self._write_settings(settings or {})
        self.process = None

    def __enter__(self):
        armed = self.log().count("event tap started")
        with open(self.output, "ab") as output:
            self.process = subprocess.Popen([self._program], env=self.env, stdin=subprocess.DEVNULL, stdout=output,
                                            stderr=output, preexec_fn=_start_of_a_child)
        try:
            self.wait_for_log("event tap started", armed + 1)
        except BaseException:
            self.end()
            raise
        return self

    def __exit__(self, *_):
        self.end()

    def end(self, number=signal.SIGTERM):
        """Its exit code, or None when it had to be killed."""
        if self.process.poll() is None:
            self.process.send_signal(number)
        try:
            return self.process.wait(PATIENCE)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
            return None

    def log(self):
        """The messages, without their time stamps; at the end those that could not be written to the file."""
        return _LINE.findall(_text(self.log_file)) + _LINE.findall(_text(self.output))

    def wait_for_log(self, message, times=1):
        found = poll(lambda: self.log().count(message) >= times or self.process.poll() is not None)
        if self.log().count(message) < times:
            state = "ended with " + str(self.process.poll()) if found else "did not log in time"
            raise ProgramError(f"Tarvik {state}; expected {times} x {message!r} in:\n" + "\n".join(self.log()))

    def _write_settings(self, settings):
        os.makedirs(self.folder, exist_ok=True)
        with open(self.output, "wb"):
            pass
        with open(os.path.join(self.folder, "Tarvik.conf"), "w", encoding="utf-8") as file:
            file.write("[General]\n")
            for name, value in settings.items():
                file.write(f"{name}={_ini(name, value)}\n")


def _ini(name, value):
    if name == "mappings":
        table = {gesture: action if isinstance(action, dict) else {"kind": action}
                 for gesture, action in value.items()}
        return _quoted(json.dumps(table))
    if isinstance(value, bool):
        return str(value).lower()
    if isinstance(value, (list, tuple)):
        return ", ".join(map(_quoted, value))
    return _quoted(value) if isinstance(value, str) else str(value)


def _quoted(text):
    return '"' + text.replace("\\", "\\\\").replace('"', '\\"') + '"'
