"""Waiting for what other programs do: with a deadline, never for a fixed time."""

import os
import time

# Seconds; nothing asked here takes one second on an idle machine. Programs with sanitizers are slower.
PATIENCE = 20.0 * float(os.environ.get("TARVIK_PATIENCE", "1"))


def poll(question, patience=PATIENCE, interval=0.01):
    """The first true answer, or the last one once patience has run out."""
    deadline = time.monotonic() + patience
    while True:
        answer = question()
        if answer or time.monotonic() > deadline:
            return answer
        time.sleep(interval)
