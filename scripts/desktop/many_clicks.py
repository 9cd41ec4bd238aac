"""Clicks at a pace that no hand keeps up, all of them held back and given back."""

import os
import re
import subprocess

_ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.realpath(__file__))))
_LONG, _FAST = 10000, 20  # clicks, and milliseconds from one to the next
_SHORT, _SLOW = 50, 60


def _lost(scene, clicks, interval, *options):
    """How many clicks of either button an application has not got, or got twice; and all that bench/click-stress said."""
    command = [os.path.join(_ROOT, "bench", "click-stress"), scene.program, str(clicks), "--interval", str(interval), *options]
    said = subprocess.run(command, stdout=subprocess.PIPE, text=True, check=False).stdout
    counts = re.findall(r"(\d+) lost, (\d+) doubled, (\d+) torn, (\d+) stuck", said)
    scene.check(len(counts) == 2 and all(int(torn) == int(stuck) == 0 for _, _, torn, stuck in counts), said)
    return sum(int(lost) + int(doubled) for lost, doubled, _, _ in counts), said


def given_back(scene):
    """With another mouse and another program's input among them. On a machine that is too busy the server itself merges
    clicks; the same clicks without Tarvik show it."""
    program = os.path.join(os.path.dirname(os.path.abspath(scene.program)), "bench", "click_stress")
    if not os.path.exists(program):
        return "SKIPPED: the program has no bench/click_stress beside it"
    clicks, interval = (_LONG, _FAST) if scene.long else (max(_SHORT, 5 * scene.share), _SLOW)
    lost, said = _lost(scene, clicks, interval)
    if not lost:
        return f"{clicks} clicks, {interval} ms from one to the next: none lost, doubled or torn, no button stuck"
    without, _ = _lost(scene, clicks, interval, "--without")
    scene.check(lost <= without, said)
    return f"{clicks} clicks, {interval} ms from one to the next: {lost} lost or doubled, without Tarvik {without}"


TRIALS = (("clicks faster than any hand", given_back),)
