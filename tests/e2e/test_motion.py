"""Nothing is lost when much comes at once."""

import time
import unittest

from desktop_test import DesktopTest
from desktop.probe import Probe
from virtual_desktop import RIGHT

PAUSE = 0.08  # seconds between a release and the next press


class Motion(DesktopTest):
    def test_a_thousand_reports_a_second(self):
        probe = self.enterContext(Probe(self.desk.env))
        tarvik = self.tarvik(mappings={})
        for gesture in "RDLURD", "DRULDR", "RULDRU":
            self.hand.draw((600, 400), gesture, length=150, step=1, interval=0.001)
            tarvik.wait_for_log(f"gesture '{gesture}' scrolled=false -> unmapped")
        self.assertEqual(probe.events(), [])

    def test_as_fast_as_the_server_takes_it(self):
        """All but the first stroke: while the server waits for Tarvik's answer to the press, it makes one movement of many."""
        tarvik = self.tarvik()
        for _ in range(5):
            self.hand.hold((600, 400), "R", length=150)
            self.hand.strokes("DLURD", length=150, step=1, interval=0)
            self.mouse.release(RIGHT)
        tarvik.wait_for_log("gesture 'RDLURD' scrolled=false -> unmapped", 5)

    def test_clicks_between_gestures(self):
        """Clicks and gestures in turn, as quick as a hand can be: each is what it is, and a click is where it was."""
        probe = self.enterContext(Probe(self.desk.env))
        tarvik = self.tarvik()
        for _ in range(10):
            self.hand.draw((600, 400), "RDL", interval=0.001)
            time.sleep(PAUSE)
            self.hand.click((300, 300))
            time.sleep(PAUSE)
        probe.wait_for(("release", 3, 300, 300))
        tarvik.end()
        self.assertEqual(probe.events(), [("press", 3, 300, 300), ("release", 3, 300, 300)] * 10)
        self.assertEqual(tarvik.log().count("gesture 'RDL' scrolled=false -> unmapped"), 10)


if __name__ == "__main__":
    unittest.main(verbosity=2)
