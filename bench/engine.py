#!/usr/bin/python3 -B
"""The engine's cost for one event: nanoseconds (scripts/bench engine), and instructions, which are the same on a busy
machine:

    bench/engine.py PATH-TO-ENGINE-BENCH

Ends with 1 when an event takes more instructions than its budget."""

import re
import subprocess
import sys

from report import Samples, Table

ROUNDS, QUICK_ROUNDS = 20, 5
EVENTS = 200_000  # measured in each round
PASSES = {"other": "another button passes", "moved": "a movement without a hold passes",
          "wheel": "a turn of the wheel passes"}
DRAGS = {"drag10": "a movement in a hold of 10 points", "drag1000": "of 1,000", "drag100000": "of 100,000"}
NAMES = PASSES | DRAGS
MOST_TIME = {**dict.fromkeys(PASSES, 30), **dict.fromkeys(DRAGS, 100)}  # nanoseconds
# A tenth more than what GCC 12 makes of it on x86-64, as users run it.
MOST_INSTRUCTIONS = {"other": 176, "moved": 214, "wheel": 171, **dict.fromkeys(DRAGS, 352)}


def nanoseconds(tool, name, events):
    return float(subprocess.run([tool, name, str(events)], stdout=subprocess.PIPE, check=True).stdout)


def instructions(tool, name, events=1000):
    """Of one event, its way into the engine and out included."""
    command = ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", "--toggle-collect=*measured*",
               tool, name, str(events)]
    report = subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, check=True).stderr
    return int(re.search(r"Collected : (\d+)", report)[1]) / events


def engine(context):
    tool = context.tool("engine_bench")
    samples = {name: Samples() for name in NAMES}
    for _ in range(QUICK_ROUNDS if context.quick else ROUNDS):
        for name, sample in samples.items():
            sample.add_round([nanoseconds(tool, name, EVENTS)])
    table = Table("engine.handle", "event", "instructions", "ns, median", "lowest", "highest")
    for name, sample in samples.items():
        times = (sample.median, min(sample.values), max(sample.values))
        table.row(NAMES[name], f"{instructions(tool, name):.0f}", *(f"{time:.1f}" for time in times))
    for kind, names in (("pass", PASSES), ("drag", DRAGS)):
        table.goal(f"{kind}, the slowest median", max(samples[name].median for name in names),
                   max(MOST_TIME[name] for name in names), " ns")
    return table


def main():
    table = Table("engine.handle, instructions", "event", "is", "budget")
    for name, text in NAMES.items():
        count = instructions(sys.argv[1], name)
        table.row(text, f"{count:.0f}", MOST_INSTRUCTIONS[name])
        table.goal(text, count, MOST_INSTRUCTIONS[name])
    print(table)
    return 0 if table.met else 1


if __name__ == "__main__":
    sys.exit(main())
