"""The watchdog: a tap that stands still keeps nobody's clicks, and Tarvik comes back."""

import contextlib
import os
import signal
import subprocess
import sys
import threading
import time
import unittest

from desktop_test import DesktopTest
from Xlib import X, display
from desktop.family import processes_of, thread_of
from desktop.notifications import Notifications
from desktop.polling import poll
from desktop.probe import Probe
from desktop.processes import end_with_parent
from desktop.stopped_thread import StoppedThread
from desktop.usage import memory, wake_ups
from virtual_desktop import BACK, LEFT, RIGHT

LONGEST = 1.5  # seconds from the press until the application has the click
BUSY = 3  # seconds; far more than the watchdog waits on an idle machine
SHORT = 0.06  # seconds that a finger rests on a button
STARTED, GUARDED, ENDED = "event tap started", "event tap has a watchdog", "the tap did not answer"
AGAIN, STAYS_OFF = "Tarvik was started again", "Tarvik stays off"


class Watchdog(DesktopTest):
    def setUp(self):
        super().setUp()
        self.probe = self.enterContext(Probe(self.desk.env, managed=True))
        self.notifications = self.enterContext(Notifications(self.desk.env))

    def guarded(self):
        """Tarvik with its watchdog. What that starts again ends with the test."""
        tarvik = self.tarvik()
        self.addCleanup(self.end_all, tarvik)
        tarvik.wait_for_log(GUARDED)
        return tarvik

    def number(self, tarvik, name):
        """Of the process with this name."""
        return next((number for number, found in processes_of(tarvik.folder).items() if found == name), None)

    def expect_nothing_left(self, tarvik):
        self.expect("no process is left", lambda: not processes_of(tarvik.folder))

    @staticmethod
    def resting(process):
        """Its wake-ups so far, if there are none for a while."""
        before = wake_ups(process)
        time.sleep(0.3)
        return before if wake_ups(process) == before else None

    def end_all(self, tarvik):
        for number, name in processes_of(tarvik.folder).items():
            if name == "tarvik":
                os.kill(number, signal.SIGTERM)
        self.expect_nothing_left(tarvik)

    def click(self, point, button=RIGHT):
        """How long the application waits for it."""
        self.probe.forget()
        self.mouse.move_to(*point)
        since = time.monotonic()
        self.mouse.press(button)
        time.sleep(SHORT)
        self.mouse.release(button)
        press, release = ("press", button, *point), ("release", button, *point)

        def complete():
            events = self.probe.events()
            return press in events and release in events[events.index(press):]
        self.expect(f"the click; there came {self.probe.events()}", complete)
        duration = time.monotonic() - since
        self.assertEqual(self.probe.events().count(press), 1)
        self.expect("no button stays down", lambda: not self.screen.buttons_down())
        return duration

    def expect_restart(self, tarvik, times=1):
        self.expect("it runs again", lambda: tarvik.log().count(STARTED) == times + 1)
        self.expect("a watchdog", lambda: tarvik.log().count(GUARDED) == times + 1)
        accounts = [line for line in tarvik.log() if line.startswith("started again: " + ENDED)]
        self.assertEqual(len(accounts), times, tarvik.log())
        self.assertEqual(self.notifications.next()[0], AGAIN)

    def expect_gestures(self, tarvik):
        before = len(tarvik.log())
        self.hand.draw((600, 400), "UD")
        self.expect("a gesture", lambda: any(line.startswith("gesture 'UD'") for line in tarvik.log()[before:]))

    def test_stopped_at_rest_and_how_often_it_comes_back(self):
        tarvik = self.guarded()
        durations = []
        for times in range(1, 5):
            os.kill(self.number(tarvik, "tarvik"), signal.SIGSTOP)
            durations.append(self.click((300 + 40 * times, 300)))
            if times < 4:
                self.expect_restart(tarvik, times)
                self.expect_gestures(tarvik)
        print("a click with the tap stopped takes", *(f"{duration:.2f}" for duration in durations), "s")
        self.assertLess(min(durations), LONGEST)
        self.expect("it stays off", lambda: tarvik.log()[-1].startswith("staying off: " + ENDED))
        self.assertEqual(self.notifications.next()[0], STAYS_OFF)
        self.expect_nothing_left(tarvik)
        self.click((700, 500))

    def test_stopped_in_a_hold(self):
        tarvik = self.guarded()
        self.hand.hold((600, 400), "U")
        tarvik.process.send_signal(signal.SIGSTOP)
        self.mouse.press(LEFT)  # another button, while the first is held
        self.expect("the tap is ended", lambda: tarvik.process.poll() is not None)
        self.mouse.release(LEFT)
        self.mouse.release(RIGHT)
        self.expect("no button stays down", lambda: not self.screen.buttons_down())
        self.expect_restart(tarvik)

        self.hand.hold((600, 400), "U")
        os.kill(self.number(tarvik, "tarvik"), signal.SIGSTOP)
        self.mouse.release(RIGHT)
        self.click((500, 500))
        self.expect_restart(tarvik, 2)
        self.expect_gestures(tarvik)

    def test_only_the_tap_stands_still(self):
        tarvik = self.guarded()
        with StoppedThread(thread_of(tarvik.process.pid, "tap")):
            self.click((300, 300))
        self.expect_restart(tarvik)

    def test_what_was_no_click_is_not_made_one(self):
        """A stroke that the stopped tap has swallowed, and a button that goes straight to the application."""
        tarvik = self.guarded()
        tarvik.process.send_signal(signal.SIGSTOP)
        self.hand.draw((600, 400), "L")
        self.expect_restart(tarvik)
        self.assertEqual([event for event in self.probe.events() if event[0] == "press"], [])
        os.kill(self.number(tarvik, "tarvik"), signal.SIGSTOP)
        self.click((500, 500), LEFT)
        self.expect_restart(tarvik, 2)
        self.assertEqual([event[0] for event in self.probe.events() if event[0] == "press"], ["press"])

    def test_a_press_while_the_pointer_is_frozen(self):
        """By another program, so that no grab of the tap has to do with it."""
        tarvik = self.guarded()
        with contextlib.closing(display.Display(self.desk.env["DISPLAY"])) as other:
            tarvik.process.send_signal(signal.SIGSTOP)
            self.assertEqual(other.screen().root.grab_pointer(False, X.ButtonPressMask, X.GrabModeSync, X.GrabModeAsync,
                                                              X.NONE, X.NONE, X.CurrentTime), X.GrabSuccess)
            other.sync()
            self.mouse.press(BACK)  # kept back: nobody gets it
            self.expect("the press is noticed", lambda: tarvik.process.poll() is not None)
            self.assertEqual(other.pending_events(), 0)
        self.mouse.release(BACK)
        self.expect_restart(tarvik)

    def test_a_busy_machine_is_no_reason(self):
        """Tarvik gets no time of its only processor, which others keep busy."""
        tarvik, only = self.guarded(), {min(os.sched_getaffinity(0))}
        for thread in map(int, os.listdir(f"/proc/{tarvik.process.pid}/task")):
            os.sched_setaffinity(thread, only)
            os.sched_setscheduler(thread, os.SCHED_IDLE, os.sched_param(0))
        busy = [sys.executable, "-c", f"import os; os.sched_setaffinity(0, {only})\nwhile True: pass"]
        others = [subprocess.Popen(busy, preexec_fn=lambda: end_with_parent(signal.SIGKILL)) for _ in range(8)]
        self.expect("they are busy", lambda: all(processor_time(process.pid) > 0.1 for process in others))
        rest = threading.Timer(BUSY, lambda: [process.kill() for process in others])
        rest.start()
        duration = self.click((300, 300))
        rest.join()
        for process in others:
            process.wait()
        print(f"a click on a machine that had no time for Tarvik for {BUSY} s takes {duration:.2f} s")
        self.assertGreater(duration, BUSY / 2, "it did have time")
        self.assertIsNone(tarvik.process.poll(), "it was ended")
        for thread in map(int, os.listdir(f"/proc/{tarvik.process.pid}/task")):
            os.sched_setscheduler(thread, os.SCHED_OTHER, os.sched_param(0))
        self.expect_gestures(tarvik)

    def test_the_watchdog_is_replaced_but_not_for_ever(self):
        tarvik = self.guarded()
        for times in range(1, 5):
            watchdog = self.expect("a watchdog", lambda: self.number(tarvik, "tarvik-watchdog"))
            os.kill(watchdog, signal.SIGKILL)
            self.expect("it is gone", lambda: self.number(tarvik, "tarvik-watchdog") != watchdog)
            if times < 4:
                tarvik.wait_for_log("the watchdog has ended; starting another", times)
        tarvik.wait_for_log("no watchdog: it has ended too often")
        self.expect_gestures(tarvik)

    def test_movement_does_not_wake_it(self):
        tarvik = self.guarded()
        watchdog = self.number(tarvik, "tarvik-watchdog")
        before = self.expect("it rests", lambda: self.resting(watchdog))
        for _ in range(500):
            self.mouse.move_by(3, 0)
            self.mouse.move_by(-3, 0)
        self.assertEqual(wake_ups(watchdog), before)
        self.click((300, 300))
        self.assertNotEqual(wake_ups(watchdog), before)
        print(f"the watchdog has {memory(watchdog)['Pss']} kB, {memory(watchdog)['Private_Dirty']} kB of them its own")

    def test_it_ends_with_tarvik(self):
        for number in signal.SIGTERM, signal.SIGKILL:
            with self.subTest(number):
                tarvik = self.guarded()
                tarvik.end(number)
                self.expect_nothing_left(tarvik)
                self.assertEqual(tarvik.log().count(STARTED), 1)

    def test_a_debugger_may_stop_it(self):
        tarvik = self.tarvik(env=dict(self.desk.env, TARVIK_NO_WATCHDOG="1"))
        tarvik.wait_for_log("no watchdog: TARVIK_NO_WATCHDOG is set")
        self.assertEqual(list(processes_of(tarvik.folder).values()), ["tarvik"])


def processor_time(process):
    """In seconds."""
    with open(f"/proc/{process}/stat", encoding="ascii") as file:
        user, system = file.read().rpartition(")")[2].split()[11:13]
    return (int(user) + int(system)) / os.sysconf("SC_CLK_TCK")


if __name__ == "__main__":
    unittest.main(verbosity=2)
