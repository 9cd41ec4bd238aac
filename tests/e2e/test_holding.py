"""What comes of holding: a drag of the application's, and the three buttons that switch the gestures off."""

import unittest

from desktop_test import DesktopTest
from desktop.probe import Probe
from desktop.stopped_thread import StoppedThread
from virtual_desktop import LEFT, MIDDLE, RIGHT

PLACE, WHITE = (400, 300), (255, 255, 255)
BESIDE = PLACE[0] + 24, PLACE[1] + 24  # within a word that stands beside the place
OFF = "all three buttons held: gestures switched off"


class Holding(DesktopTest):
    def test_drag_and_cue(self):
        probe = self.enterContext(Probe(self.desk.env))
        tarvik = self.tarvik(dragDelay=250)
        self.press()
        self.expect("a word beside the pointer", lambda: self.screen.pixels().at(*BESIDE) != WHITE)
        self.picture("drag-cue")
        probe.wait_for(("press", RIGHT, *PLACE))
        self.mouse.drag_path([(450, 320), (520, 400)], 0.01)
        self.expect("the word goes", lambda: self.screen.pixels().at(*BESIDE) == WHITE)
        self.mouse.release(RIGHT)
        probe.wait_for(("release", RIGHT, 520, 400))
        noted = probe.events()
        self.assertEqual((noted[0], noted[-1]), (("press", RIGHT, *PLACE), ("release", RIGHT, 520, 400)))
        self.assertTrue(len(noted) > 2 and all(event[0] == "drag" for event in noted[1:-1]), noted)

        probe.forget()
        self.hand.draw(PLACE, "R")
        tarvik.wait_for_log("perform Next Desktop")
        self.assertEqual(probe.events(), [])

    def test_all_three_buttons(self):
        for trigger, others in ((RIGHT, (LEFT, MIDDLE)), (MIDDLE, (RIGHT, LEFT))):
            with self.subTest(trigger=trigger):
                self.switch_off(trigger, others)

    def switch_off(self, trigger, others):
        probe = self.enterContext(Probe(self.desk.env))
        tarvik = self.tarvik(triggerButton="right" if trigger == RIGHT else "middle", showTrail=False)
        with StoppedThread(tarvik.process.pid):
            self.press(trigger)
            for button in others:
                self.mouse.press(button)
            tarvik.wait_for_log(OFF)
            self.expect("no button is down", lambda: self.screen.buttons_down() == [])
            for button in (trigger, *others):
                self.mouse.release(button)
            self.hand.click((500, 350), trigger)
            probe.wait_for(("release", trigger, 500, 350))
            self.assertEqual(probe.events(), [("press", trigger, 500, 350), ("release", trigger, 500, 350)])
        self.expect("the setting", lambda: "enabled=false" in self.settings_of(tarvik))
        tarvik.end()

    def test_it_is_said_on_screen(self):
        self.enterContext(Probe(self.desk.env))
        tarvik = self.tarvik(showTrail=False)
        self.press()
        self.mouse.press(LEFT)
        self.mouse.press(MIDDLE)
        self.expect("a word beside the place", lambda: self.screen.pixels().at(*BESIDE) != WHITE)
        self.picture("gestures-off")
        for button in (RIGHT, LEFT, MIDDLE):
            self.mouse.release(button)
        self.expect("it goes", lambda: self.screen.pixels().at(*BESIDE) == WHITE)
        self.expect("the setting", lambda: "enabled=false" in self.settings_of(tarvik))

    def press(self, button=RIGHT):
        self.mouse.move_to(*PLACE)
        self.mouse.press(button)

    @staticmethod
    def settings_of(tarvik):
        with open(f"{tarvik.folder}/Tarvik.conf", encoding="utf-8") as file:
            return file.read()


if __name__ == "__main__":
    unittest.main(verbosity=2)
