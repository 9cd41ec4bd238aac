"""What shows while drawing, with a compositing manager and without: a line where the pointer went, and a label."""

import subprocess
import unittest

from desktop_test import WINDOW_MANAGER, DesktopTest, poll
from desktop.applications import Browser
from desktop.probe import Probe
from desktop.usage import memory
from virtual_desktop import RIGHT

START = (500, 300)


class TrailCases:
    def test_trail_over_a_page(self):
        browser = self.open(Browser, "a")
        self.tarvik()
        before = self.screen.pixels()
        self.hand.hold(browser.middle, "UD")
        self.assertTrue(poll(lambda: self.changed(before) > 2000), "neither a trail nor a label shows")
        self.picture("trail-over-a-page" + ("" if self.compositor else "-without-compositor"))
        state = browser.state
        self.mouse.release(RIGHT)
        browser.expect_reload(state)

    def test_trail_comes_and_goes(self):
        self.enterContext(Probe(self.desk.env))
        self.tarvik(mappings={"RD": "none"})
        blank = self.screen.pixels()
        self.hand.hold(START, "RD", length=100)
        pointer = self.screen.pointer()
        shown = poll(lambda: self.trail_shows(pointer))
        self.picture("trail" + ("" if self.compositor else "-without-compositor"))
        self.assertTrue(shown, "the line or the label is missing")
        self.assertLess(self.changed(blank), 40000, "more than a line and a label changed")
        self.mouse.release(RIGHT)
        self.assertTrue(poll(lambda: self.changed(blank) == 0), "something stays on the screen")

    def test_no_trail(self):
        self.enterContext(Probe(self.desk.env))
        tarvik = self.tarvik(showTrail=False)
        blank = self.screen.pixels()
        self.hand.hold(START, "RDL", length=100)
        self.assertEqual(self.changed(blank), 0)
        self.mouse.release(RIGHT)
        tarvik.wait_for_log("gesture 'RDL' scrolled=false -> unmapped")

    def trail_shows(self, pointer):
        picture = self.screen.pixels()
        white = (255, 255, 255)
        on_line = [(START[0] + 50, START[1]), (START[0] + 100, START[1] + 50)]
        # The line bulges by a few pixels; the label is 18 points right of the pointer and below it.
        line = all(any(picture.at(x + d, y + d) != white for d in range(-5, 6)) for x, y in on_line)
        label = picture.at(pointer[0] + 18 + 20, pointer[1] + 18 + 8) != white
        return line and label

    def changed(self, before):
        """The number of pixels that differ."""
        now, then = self.screen.pixels().rgb, before.rgb
        if now == then:
            return 0
        return sum(now[i:i + 3] != then[i:i + 3] for i in range(0, len(now), 3))


class TrailWithCompositor(TrailCases, DesktopTest):
    compositor = True


class TrailWithoutCompositor(TrailCases, DesktopTest):
    pass


class Memory(DesktopTest):
    """A trail's buffers are as large as the screen, and are gone when it is hidden."""

    compositor, size = True, "3840x2160"
    TOLERANCE = 500  # kilobytes; the buffers have 8 megabytes

    def test_trails_leave_nothing_behind(self):
        self.enterContext(Probe(self.desk.env))
        tarvik = self.tarvik(mappings={})
        self.scribble()  # loads the font of the label, which stays
        idle = self.private(tarvik)
        self.scribble(lambda: self.assertGreater(self.private(tarvik), idle + 2 * self.TOLERANCE))
        self.scribble()
        self.assertTrue(poll(lambda: self.private(tarvik) < idle + self.TOLERANCE, patience=5),
                        f"{idle} kB before, {self.private(tarvik)} kB after")

    def scribble(self, meanwhile=lambda: None):
        end = (3500, 1900, 1, 1)
        blank = b"\xff\xff\xff"
        self.expect("the sheet below", lambda: self.screen.pixels(end).rgb == blank)
        self.hand.hold((100, 100), "RD")
        for y in range(300, 2000, 100):
            self.mouse.drag_path([(x, y) for x in range(100, 3700, 200)], interval=0.001)
        self.expect("the end of the line", lambda: self.screen.pixels(end).rgb != blank)
        meanwhile()
        self.mouse.release(RIGHT)
        self.expect("the trail goes", lambda: self.screen.pixels(end).rgb == blank)

    @staticmethod
    def private(tarvik):
        """Kilobytes that only Tarvik has."""
        return memory(tarvik.process.pid)["Private_Dirty"]


class CompositingManagers(DesktopTest):
    """They come, go and are killed, and the window manager is replaced, in the middle of a drawing and between drawings."""

    AROUND = (450, 250, 500, 500)    # the line and the label, without the frame of the window below
    FAR_AWAY = (900, 600, 200, 150)  # neither

    def setUp(self):
        super().setUp()
        # Managed: xfwm4 leaves out other windows that were there before it began to composite.
        self.enterContext(Probe(self.desk.env, managed=True))
        self.tarvik(mappings={})

    def test_while_drawing(self):
        self.draw_on()
        self.start_picom()
        self.expect_trail("picom has come")
        for end in "terminate", "kill":
            self.next_drawing()
            self.expect_trail("picom runs")
            self.assertFalse(self.sees_black(getattr(self.picom, end)), f"the screen was black after picom's {end}")
            self.expect("picom goes", lambda: not self.screen.compositor())
            self.expect_trail(f"picom has gone by {end}")
            self.next_drawing()
            self.expect_trail("there is none")
            self.start_picom()
            self.expect_trail("picom is back")
        self.picom.terminate()
        self.mouse.release(RIGHT)

    def test_while_idle(self):
        for _ in range(3):
            self.start_picom()
            self.draw_on()
            self.expect_trail("picom runs")
            self.mouse.release(RIGHT)
            self.expect("the trail goes", self.is_blank)
            self.picom.kill()
            self.draw_on()  # perhaps before anybody knows
            self.expect("picom goes", lambda: not self.screen.compositor())
            self.expect_trail("picom was killed")
            self.mouse.release(RIGHT)
            self.expect("the trail goes", self.is_blank)

    def test_window_manager_is_replaced_while_drawing(self):
        self.draw_on()
        before = self.screen.root_number("_NET_SUPPORTING_WM_CHECK")
        self.start([WINDOW_MANAGER, "--replace"])
        self.expect("another window manager", lambda: self.screen.root_number("_NET_SUPPORTING_WM_CHECK")
                    not in (None, 0, before))
        self.expect_trail("the window manager was replaced")
        if WINDOW_MANAGER == "xfwm4":
            for on in "true", "false":
                subprocess.run(["xfconf-query", "-c", "xfwm4", "-p", "/general/use_compositing", "-s", on],
                               env=self.desk.env, check=True)
                self.expect("its compositing", lambda: self.screen.compositor() == (on == "true"))
                self.expect_trail(f"xfwm4's compositing is {on}")
                self.next_drawing()
                self.expect_trail(f"xfwm4's compositing is {on}")
        self.mouse.release(RIGHT)
        self.expect("the trail goes", self.is_blank)

    def start(self, command):
        process = self.enterContext(subprocess.Popen(command, env=self.desk.env, stdin=subprocess.DEVNULL,
                                                     stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL))
        self.addCleanup(process.kill)
        return process

    def start_picom(self):
        self.picom = self.start(["picom", "--backend", "xrender", "--config", "/dev/null"])
        self.expect("picom", self.screen.compositor)

    def draw_on(self):
        self.hand.hold(START, "RDR", length=100)

    def next_drawing(self):
        self.mouse.release(RIGHT)
        self.draw_on()

    def expect_trail(self, when):
        """After one more movement at the latest: the line, the label, and nothing else."""
        self.mouse.move_by(3, 0)
        self.mouse.move_by(-3, 0)
        x, y = START[0] + 50, START[1]
        label = [self.screen.pointer()[0] + 18 + 20, self.screen.pointer()[1] + 18 + 8]
        white = (255, 255, 255)

        def shows():
            picture = self.screen.pixels()
            return any(picture.at(x, y + d)[0] < 130 < picture.at(x, y + d)[2] for d in range(-5, 6)) and \
                white > picture.at(*label) > (200, 200, 200) and picture.at(x, y - 40) == white and \
                set(self.screen.pixels(self.FAR_AWAY).rgb) == {255}
        self.expect(f"the trail, when {when}", shows)

    def is_blank(self):
        return set(self.screen.pixels(self.AROUND).rgb) == {255}

    def sees_black(self, happens):
        """Whether the screen, far from the trail, is anything but white from now on for a while."""
        happens()
        return poll(lambda: set(self.screen.pixels(self.FAR_AWAY).rgb) != {255}, patience=0.5, interval=0)


if __name__ == "__main__":
    unittest.main(verbosity=2)
