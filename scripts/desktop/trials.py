"""The trials of scripts/trial-faults, in their groups and order. A trial is a function of the scene; it makes about
`scene.share` clicks and gestures, and returns in a few words what came out. What takes minutes is done in full only when
`scene.long` is set."""

from desktop import file_faults, kill_faults, load, many_clicks, session_faults
from desktop.faults import FAULTS, button_held_at_start


def fault_trial(kinds):
    """Faults of these kinds, at random moments between the clicks and gestures."""
    def trial(scene):
        occurred = 0
        end = scene.clicks + scene.gestures + scene.share
        while scene.clicks + scene.gestures < end:
            scene.random.choice(kinds)().occur(scene)
            occurred += 1
            for _ in range(scene.random.randrange(STEPS_BETWEEN)):
                scene.step()
        return f"{occurred} times"
    return trial


STEPS_BETWEEN = 6  # at most, from one fault to the next

GROUPS = {
    "desktop": (("no fault", fault_trial([type("Nothing", (), {"occur": lambda _, scene: scene.step()})])),
                ("another program holds the button at the start", button_held_at_start),
                *((kind.name, fault_trial([kind])) for kind in FAULTS),
                ("all of these, mixed", fault_trial(FAULTS))),
    "files": file_faults.TRIALS,
    "session": session_faults.TRIALS,
    "load": load.TRIALS,
    "tap": (*kill_faults.TRIALS, *many_clicks.TRIALS),
}
