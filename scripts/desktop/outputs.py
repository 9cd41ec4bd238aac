"""The screens of a private desktop, which come, go and change as when somebody plugs them in: over RandR, by xrandr."""

import subprocess

from desktop.files import mode_timings


class Outputs:
    """The server has outputs DUMMY0, DUMMY1, ... of which the first is connected at the start.

    outputs = Outputs(desk.env)
    outputs.place("DUMMY1", 1600, 1000, x=1280)     # comes, moves, or takes another size; portrait counts as turned
    outputs.off("DUMMY0")"""

    def __init__(self, env):
        self._env = env
        self._modes = set()

    def place(self, name, width, height, x=0, y=0, primary=False):
        mode = f"{name}-{width}x{height}"  # of its own: modes with common names exist for the first output only
        if mode not in self._modes:
            self._modes.add(mode)
            self._xrandr("--newmode", mode, *mode_timings(width, height))
            self._xrandr("--addmode", name, mode)
        self._xrandr("--output", name, "--mode", mode, "--pos", f"{x}x{y}", *["--primary"] * primary)

    def off(self, *names):
        """Together, so that all of them may go."""
        self._xrandr(*[word for name in names for word in ("--output", name, "--off")])

    def _xrandr(self, *arguments):
        subprocess.run(["xrandr", *arguments], env=self._env, check=True)
