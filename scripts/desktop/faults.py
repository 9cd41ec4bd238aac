"""What happens to a real desktop while somebody clicks and draws: each fault is a class, FAULTS is the table of them."""

import contextlib
import signal
import subprocess
import threading
import time

from Xlib import X, display
from Xlib.ext import xinput

from desktop.devices import RIGHT
from desktop.polling import poll
from desktop.program import Tarvik
from desktop.scene import ANSWER, DROPPED, PACE
from desktop.windows import Desktop

_ALL_MASTERS, _BUTTON_GRAB = 1, 0  # of the X Input Extension


class Fault:
    """Happens at rest, between two steps, or in a hold. A subclass says what happens, and what it is called."""

    name = ""

    def occur(self, scene):
        if scene.random.random() < 0.5:
            self.in_a_hold(scene)
        else:
            self.at_rest(scene)
        scene.step()

    def at_rest(self, scene):
        self.make(scene)
        scene.step()
        self.take_back(scene)

    def in_a_hold(self, scene):
        scene.step(meanwhile=lambda: self.make(scene))
        scene.step()
        self.take_back(scene)

    def make(self, scene):
        raise NotImplementedError

    def take_back(self, scene):
        pass


class MouseGoes(Fault):
    """The other mouse stays. A hold of the one that goes is lost."""

    def occur(self, scene):
        away, stays = scene.random.sample(list(scene.hands), 2)
        if scene.random.random() < 0.5:
            scene.step(away, meanwhile=lambda: self.unplug(scene, away), lost=True)
        else:
            self.unplug(scene, away)
        scene.step(stays)
        self.plug_in(scene, away)
        scene.step(away)

    def unplug(self, scene, mouse):
        raise NotImplementedError

    def plug_in(self, scene, mouse):
        raise NotImplementedError


class Unplugged(MouseGoes):
    name = "a mouse is unplugged and comes back"

    def unplug(self, scene, mouse):
        scene.devices.switch(mouse, False)

    def plug_in(self, scene, mouse):
        scene.devices.switch(mouse, True)
        scene.hands[mouse].mouse.device.reconnect()


class Floating(MouseGoes):
    name = "a mouse is detached from the pointer"

    def unplug(self, scene, mouse):
        scene.devices.detach(mouse)

    def plug_in(self, scene, mouse):
        scene.devices.attach(mouse)


class ManagerRestarts(Fault):
    name = "the window manager starts anew"

    def make(self, scene):
        scene.desk.restart_window_manager()
        scene.front()


class CompositorComesAndGoes(Fault):
    name = "a compositing manager comes and goes"

    def make(self, scene):
        scene.desk.start_compositor()

    def take_back(self, scene):
        scene.desk.stop_compositor()


class LayoutChanges(Fault):
    name = "the keyboard layout changes"

    def make(self, scene):
        self._set(scene, "fr")

    def take_back(self, scene):
        self._set(scene, "us")

    @staticmethod
    def _set(scene, layout):
        subprocess.run(["setxkbmap", layout], env=scene.desk.env, check=True)


class ButtonTaken(Fault):
    """By a grab of the core protocol, of which the server tells nobody; the later one wins."""
    name = "another program takes the button"

    def occur(self, scene):
        with contextlib.closing(display.Display(scene.desk.env["DISPLAY"])) as other:
            other.screen().root.grab_button(RIGHT, X.AnyModifier, False, X.ButtonPressMask, X.GrabModeAsync,
                                            X.GrabModeAsync, X.NONE, X.NONE)
            other.sync()
            scene.step_of_another(seen=False)
        scene.step()


class ScreenLocked(Fault):
    """A locker tries until it has pointer and keyboard."""
    name = "the screen is locked"

    def occur(self, scene):
        with contextlib.closing(display.Display(scene.desk.env["DISPLAY"])) as locker:
            if scene.random.random() < 0.5:
                waiting = threading.Thread(target=self._lock, args=(locker,))
                scene.step(kind=DROPPED, meanwhile=waiting.start, fence=False)
                waiting.join()
            else:
                self._lock(locker)
            scene.step_of_another(seen=False)
            scene.check(poll(locker.pending_events), "the locker did not get the click")
        scene.step()

    @staticmethod
    def _lock(locker):
        root = locker.screen().root

        def locked():
            return (root.grab_pointer(False, X.ButtonPressMask, X.GrabModeAsync, X.GrabModeAsync, X.NONE, X.NONE,
                                      X.CurrentTime) == X.GrabSuccess and
                    root.grab_keyboard(False, X.GrabModeAsync, X.GrabModeAsync, X.CurrentTime) == X.GrabSuccess)
        poll(locked, interval=0.002)


class MenuOpen(Fault):
    name = "an open menu has the pointer"

    def occur(self, scene):
        if scene.random.random() < 0.5:
            scene.step(meanwhile=lambda: scene.check(not scene.probe.take_pointer(), "a hold lost the pointer"))
        scene.check(poll(scene.probe.take_pointer), "the menu does not get the pointer")
        scene.step_of_another(seen=True)
        scene.probe.give_pointer_back()
        scene.step()


class WindowVanishes(Fault):
    """The window that a gesture is for goes at any moment between the press and the action."""
    name = "a window vanishes under a gesture"

    def occur(self, scene):
        gesture, action = scene.random.choice((("LU", "Minimize Window"), ("LD", "Close Window"),
                                               ("LR", "Enter Full Screen")))
        with scene.other_application() as (process, window), scene.other_application() as (_, behind):
            window.activate()
            scene.check(poll(lambda: scene.screen.active() == window), "the window does not come to the front")
            logged = scene.log_counter()
            scene.hands["mouse"].hold((600, 450), gesture, **PACE)
            killing = threading.Timer(scene.random.random() * 0.002, process.kill)
            killing.start()
            scene.desk.mouse.release(RIGHT)
            killing.join()
            scene.expect_logged(logged, f"perform {action}")
            scene.check(poll(lambda: not window.exists), "the window is still there")
            if behind.exists and behind.full_screen:
                behind.set_full_screen(False)
        scene.step()


class WindowHangs(Fault):
    """A window whose program does not answer holds up neither the pointer nor later actions."""
    name = "a window does not answer"

    def occur(self, scene):
        with scene.other_application() as (process, window):
            process.send_signal(signal.SIGSTOP)
            logged = scene.log_counter()
            for gesture, action in (("LR", "Enter Full Screen"), ("LD", "Close Window"), ("LU", "Minimize Window")):
                scene.hands["mouse"].mouse.move_to(600, 450)
                scene.hands["mouse"].mouse.press(RIGHT)
                time.sleep(ANSWER)
                scene.hands["mouse"].strokes(gesture, **PACE)
                scene.desk.mouse.release(RIGHT)
                scene.expect_logged(logged, f"perform {action}")
            scene.check(poll(lambda: window.minimised), "the window that does not answer is not minimised")
            scene.front()
            scene.step()  # with the other one still hanging
        scene.step()


FAULTS = (Unplugged, Floating, ManagerRestarts, CompositorComesAndGoes, LayoutChanges, ButtonTaken, ScreenLocked, MenuOpen,
          WindowVanishes, WindowHangs)


def button_held_at_start(scene):
    """Tarvik starts all the same, and has the button a second after the other program has given it up."""
    other = Desktop(scene.desk.env)
    # The same request for all pointers as Tarvik's own, so that the server refuses one of both.
    scene.tarvik.end()
    refused = xinput.passive_grab_device(
        other.root, _ALL_MASTERS, X.CurrentTime, RIGHT, _BUTTON_GRAB, X.GrabModeAsync, X.GrabModeAsync, False, 1 << 4,
        [1 << 31])
    scene.check(not refused.modifiers, "the other program does not get the button")
    waiting = Tarvik(scene.program, scene.desk.env, scene.desk.path("tarvik-refused"))

    def give_up():
        scene.check(poll(lambda: waiting.log().count("event tap creation failed") >= 2), "it is not tried again")
        scene.check(waiting.log().count("no tap: another program holds the button") == 1, "the reason is not logged once")
        other.close()
    giving_up = threading.Thread(target=give_up)
    giving_up.start()
    with waiting:
        giving_up.join()
    scene.start_tarvik()
    scene.step()
    return "it has the button as soon as that gives it up"
