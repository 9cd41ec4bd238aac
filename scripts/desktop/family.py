"""Processes by what they belong to."""

import os


def processes_of(folder):
    """{number: name} of those that were started with this folder for their state (see program.py), and are alive."""
    mark = f"XDG_STATE_HOME={folder}".encode()
    found = {}
    for number in filter(str.isdigit, os.listdir("/proc")):
        try:
            with open(f"/proc/{number}/environ", "rb") as file:
                if mark not in file.read().split(b"\0"):
                    continue
            found[int(number)] = name_of(number)
        except OSError:
            continue  # it has just ended, or is another user's
    return found


def thread_of(process, name):
    """The number of the process's thread of this name, or None."""
    for number in os.listdir(f"/proc/{process}/task"):
        if name_of(f"{process}/task/{number}") == name:
            return int(number)
    return None


def name_of(number):
    with open(f"/proc/{number}/comm", encoding="ascii", errors="replace") as file:
        return file.read().rstrip("\n")
