"""A hand on a mouse: gestures at the pace and with the sway of a real one."""

import math
import time

from desktop.devices import RIGHT

STEP = 10  # pixels from one report to the next
INTERVAL = 0.008  # seconds between reports: a common mouse reports 125 times a second
SWAY = 4  # pixels by which a drawn line bulges

_TOWARDS = {"L": (-1, 0), "R": (1, 0), "U": (0, -1), "D": (0, 1)}


class Hand:
    """Draws with a Pointer. Strokes are written as the gestures are: "UD" is up, then down."""

    def __init__(self, mouse):
        self.mouse = mouse

    def strokes(self, directions, length=120, step=STEP, interval=INTERVAL):
        """Moves without touching a button."""
        for direction in directions:
            self._stroke(*_TOWARDS[direction], length, step, interval)

    def hold(self, start, directions="", button=RIGHT, **pace):
        """Presses the button at the point and draws; the button stays down."""
        self.mouse.move_to(*start)
        self.mouse.press(button)
        self.strokes(directions, **pace)

    def draw(self, start, directions, button=RIGHT, **pace):
        self.hold(start, directions, button, **pace)
        self.mouse.release(button)

    def click(self, point, button=RIGHT):
        self.mouse.move_to(*point)
        self.mouse.click(button)

    def _stroke(self, dx, dy, length, step, interval):
        steps = max(1, round(length / step))
        x = y = 0
        for number in range(1, steps + 1):
            along = length * number / steps
            aside = SWAY * math.sin(math.pi * number / steps)
            new_x, new_y = round(dx * along + dy * aside), round(dy * along - dx * aside)
            self.mouse.move_by(new_x - x, new_y - y)
            x, y = new_x, new_y
            if interval:
                time.sleep(interval)
