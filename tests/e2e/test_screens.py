"""Several screens: of different scale side by side, and coming and going while a gesture is drawn."""

import unittest

from desktop_test import DesktopTest
from desktop.probe import Probe
from virtual_desktop import RIGHT

BORDER, FAR = 1280, 2880  # where the second screen begins and ends
ROW = 400
SHADOW = 30  # pixels from the middle of the line beyond which nothing shows, at scale 2


def is_line(colour):
    """The accent colour, opaque or nearly so over white: no shadow, no label."""
    red, _, blue = colour
    return red < 130 and blue > 150


class TwoScales:
    size = f"{BORDER}x800,{FAR - BORDER}x1000"

    @classmethod
    def setUpClass(cls):
        super().setUpClass()
        cls.desk.env["QT_SCREEN_SCALE_FACTORS"] = "DUMMY0=1;DUMMY1=2"

    def setUp(self):
        super().setUp()
        self.probe = self.enterContext(Probe(self.desk.env))

    def test_trail_across_the_border(self):
        self.tarvik(mappings={"R": "none"})
        self.mouse.move_to(1080, ROW)
        self.mouse.press(RIGHT)
        self.go(1080, 1480)
        self.expect("a line as thick as its screen's scale says",
                    lambda: [self.thickness(x) for x in (1100, BORDER - 1)] == [5, 5] and
                    all(self.thickness(x) in (9, 10) for x in (BORDER, 1470)))  # a soft edge counts for nothing
        self.expect("a label on the right screen alone", lambda: self.label_on() == [False, True])
        self.picture("two-scales" + ("" if self.compositor else "-without-compositor"))
        self.go(1480, 1200)
        self.expect("a label on the left screen alone", lambda: self.label_on() == [True, False])
        self.mouse.release(RIGHT)
        self.expect("nothing stays", lambda: set(self.screen.pixels().rgb) == {255})

    def test_a_stroke_is_measured_on_the_screen_of_the_press(self):
        """55 pixels: more than 30 points on the left screen, less on the right one."""
        tarvik = self.tarvik(mappings={})
        for gestures, start in ((1, 600), (2, BORDER - 20)):
            self.drag(start, start + 55)
            tarvik.wait_for_log("gesture 'R' scrolled=false -> unmapped", gestures)
        self.assertEqual(self.probe.events(), [])
        for start in 2000, BORDER + 20:
            self.drag(start, start - 55)
            self.probe.wait_for(("release", 3, start - 55, ROW))

    def drag(self, start, end):
        self.mouse.move_to(start, ROW)
        self.mouse.press(RIGHT)
        self.mouse.move_to(end, ROW)
        self.mouse.release(RIGHT)

    def go(self, start, end):
        step = 10 if end > start else -10
        self.mouse.drag_path([(x, ROW) for x in range(start + step, end + step, step)], interval=0.002)

    def thickness(self, x):
        column = self.screen.pixels((x, ROW - 20, 1, 40))
        return sum(is_line(column.at(0, y)) for y in range(40))

    def label_on(self):
        below = ROW + SHADOW
        return [set(self.screen.pixels((x, below, width, 200)).rgb) != {255}
                for x, width in ((0, BORDER), (BORDER, FAR - BORDER))]


class TwoScalesWithCompositor(TwoScales, DesktopTest):
    compositor = True


class TwoScalesWithoutCompositor(TwoScales, DesktopTest):
    pass


class HotPlug(DesktopTest):
    size = "1280x800,1600x1000"

    def test_screens_come_and_go_while_drawing(self):
        tarvik = self.tarvik(mappings={"R": "none"})
        outputs = self.desk.outputs
        self.addCleanup(outputs.place, "DUMMY0", 1280, 800, primary=True)
        self.hand.hold((300, ROW), "R", length=100)
        self.expect_line(350, "two screens")

        outputs.off("DUMMY1")
        self.expect_line(350, "one of two is unplugged")
        outputs.place("DUMMY2", 900, 1400, x=1280)
        self.mouse.move_to(300, ROW)
        self.mouse.move_to(1800, ROW)
        self.expect_line(1700, "a portrait one is plugged in, and drawn upon")
        outputs.place("DUMMY2", 800, 600, x=1280)
        self.expect_line(1700, "it takes another size")
        outputs.place("DUMMY0", 1024, 768)
        self.expect_line(350, "the first one takes another size, which leaves a hole between them")

        outputs.off("DUMMY0", "DUMMY2")
        self.mouse.move_by(5, 0)
        self.mouse.move_by(-5, 0)
        outputs.place("DUMMY0", 1280, 800, primary=True)
        self.expect_line(350, "none was left, and one comes back")
        self.mouse.release(RIGHT)
        self.expect("the trail goes", lambda: not self.line_at(350))
        self.assertIsNone(tarvik.process.poll())
        self.hand.draw((300, ROW), "R")
        tarvik.wait_for_log("gesture 'R' scrolled=false -> Do Nothing")

    def expect_line(self, x, when):
        """After one more movement at the latest."""
        self.mouse.move_by(3, 0)
        self.mouse.move_by(-3, 0)
        self.expect(f"the line, when {when}", lambda: self.line_at(x))

    def line_at(self, x):
        return is_line(self.screen.pixels((x, ROW, 1, 1)).at(0, 0)) or \
            is_line(self.screen.pixels((x, ROW - 4, 1, 1)).at(0, 0))


if __name__ == "__main__":
    unittest.main(verbosity=2)
