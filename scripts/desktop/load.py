"""More than a hand can do: fast mice, very long paths, and many gestures."""

import threading
import time

from desktop import usage
from desktop.devices import RIGHT
from desktop.polling import poll
from desktop.scene import ANSWER, KEYS
from desktop.tray import Tray

_RATE = 8000  # reports a second of the fastest mice
_STROKE = 40  # pixels; 30 make a stroke
_LONGEST_ANSWER = 2  # seconds of the main thread, on a busy machine
_MORE_MEMORY = 500  # kB that may stay after a long path, for what is made once
_GESTURES_A_MINUTE = 200
_GROWTH = 200  # kB in a soak
_LITTLE = 5  # clicks and gestures for a trial: then the whole run is to be short
_TOWARDS = {"L": (-1, 0), "R": (1, 0), "U": (0, -1), "D": (0, 1)}


def _private(scene):
    return usage.memory(scene.tarvik.process.pid)["Private_Dirty"]


def _memory_comes_back(scene, before, kilobytes):
    scene.check(poll(lambda: _private(scene) <= before + kilobytes), f"{before} kB became {_private(scene)}")


def _steps(directions, count):
    """Each stroke in so many reports."""
    length = _STROKE / count
    return [(x * length, y * length) for direction in directions for x, y in [_TOWARDS[direction]] * count]


def _draw_at(scene, rate, directions, reports):
    """A gesture that means nothing, each stroke in so many reports."""
    mouse, logged = scene.desk.mouse, scene.log_counter()
    mouse.move_to(600, 400)
    mouse.press(RIGHT)
    time.sleep(ANSWER)
    mouse.move_at(rate, _steps(directions, reports))
    mouse.release(RIGHT)
    scene.gestures += 1
    scene.expect_logged(logged, f"gesture '{directions}' scrolled=false -> unmapped")


def fast_mouse(scene):
    """At rest nobody wakes up. Drawn with it, strokes just long enough are what they are, and the main thread, which paints
    the newest state only, has time for other things."""
    mouse, pid = scene.desk.mouse, scene.tarvik.process.pid
    seconds = 10 if scene.long else 1
    with Tray(scene.desk.env) as tray:
        item = tray.item()
        mouse.move_to(600, 400)  # the server tells every client that another device moves now
        scene.check(poll(lambda: _rests(pid)), "it never rests")
        before = usage.wake_ups(pid)
        rate = mouse.move_at(_RATE, [(1, 0), (-1, 0)] * (seconds * _RATE // 2))
        woken = sum(usage.wake_ups(pid).values()) - sum(before.values())
        scene.check(woken == 0, f"{woken} wake-ups at rest: {before} became {usage.wake_ups(pid)}")
        _draw_at(scene, _RATE, "RDL", 1200)
        memory, longest = _private(scene), 0
        for directions in ("RDL", "DRU", "LURD", "RLRL") * (5 if scene.long else 1):
            drawing = threading.Thread(target=_draw_at, args=(scene, _RATE, directions, 2000))
            drawing.start()
            while drawing.is_alive():
                asked = time.monotonic()
                item.property("Title")
                longest = max(longest, time.monotonic() - asked)
                time.sleep(0.02)
            drawing.join()
        scene.check(longest < _LONGEST_ANSWER, f"the main thread took {longest:.1f} s to answer")
        _memory_comes_back(scene, memory, _MORE_MEMORY)
    mouse.move_to(600, 400)
    scene.step()
    return f"{rate:.0f} a second; at rest no wake-up, drawing the main thread answers within {longest * 1000:.0f} ms"


def _rests(pid):
    before = usage.wake_ups(pid)
    time.sleep(1)
    return usage.wake_ups(pid) == before


def long_path(scene):
    """Two strokes, a scribble that is none, and a third."""
    mouse, notes = scene.desk.mouse, []
    scene.step()  # what is made once
    for points in (10_000, 100_000) if scene.share > _LITTLE else (10_000,):
        before, logged = _private(scene), scene.log_counter()
        mouse.move_to(600, 400)
        mouse.press(RIGHT)
        time.sleep(ANSWER)
        mouse.move_at(_RATE, _steps("RD", 100))
        mouse.move_at(10 * _RATE, [(2, 10), (-2, -10), (-2, 10), (2, -10)] * (points // 4))
        held = _private(scene)
        scene.check(poll(lambda: _trail_shows(scene)), "there is no trail")
        mouse.move_at(_RATE, _steps("L", 100))
        mouse.release(RIGHT)
        scene.gestures += 1
        scene.expect_logged(logged, "gesture 'RDL' scrolled=false -> unmapped")
        scene.check(poll(lambda: not _trail_shows(scene)), "the trail stays")
        _memory_comes_back(scene, before, _MORE_MEMORY)
        notes.append(f"{points} points {max(0, held - before)} kB, then {max(0, _private(scene) - before)}")
    scene.step()
    return "; ".join(notes)


def _trail_shows(scene):
    """On the application's white, around the end of the second stroke."""
    return set(scene.screen.pixels((630, 430, 20, 20)).rgb) != {255}


def many_gestures(scene):
    """As many as nobody makes, for ten minutes."""
    minutes = 10 if scene.long else scene.share / _GESTURES_A_MINUTE
    pid, connection = scene.tarvik.process.pid, scene.screen.connection
    for _ in range(10):
        scene.step(kind=KEYS)  # what is made once, the trail's window and the keys
    time.sleep(1)  # the last trail goes

    def state():
        return usage.descriptors(pid), usage.x_resources(connection, pid)
    memory, before, start = _private(scene), state(), time.monotonic()
    for number in range(int(minutes * _GESTURES_A_MINUTE)):
        time.sleep(max(0.0, start + number * 60 / _GESTURES_A_MINUTE - time.monotonic()))
        scene.step(kind=scene.random.choice((KEYS, "RDL")))
    pace = number / (time.monotonic() - start) * 60
    scene.check(poll(lambda: state() == before), f"files and X resources: {before} became {state()}")
    _memory_comes_back(scene, memory, _GROWTH)
    return (f"{pace:.0f} a minute; memory {_private(scene) - memory:+} kB, {before[0]} files, "
            f"{before[1]} X resources before and after")


TRIALS = (("a mouse reports 8,000 times a second", fast_mouse),
          ("a path of 10,000 points and more", long_path),
          ("200 gestures a minute", many_gestures))
