"""The engine's time for one event."""

import json
import subprocess

from report import Samples, Table

ROUNDS, QUICK_ROUNDS = 10, 3
EVENTS = {"pass/25": "another button passes", "pass/7": "a movement without a hold passes",
          "pass/22": "a turn of the wheel passes", "drag/10": "movement in a hold of 10 points",
          "drag/1000": "of 1,000", "drag/100000": "of 100,000"}
MOST = {"pass": 30, "drag": 100}  # nanoseconds


def engine(context):
    samples = {name: Samples() for name in EVENTS}
    for _ in range(QUICK_ROUNDS if context.quick else ROUNDS):
        output = subprocess.run([context.tool("engine_bench"), "--benchmark_format=json", "--benchmark_min_time=0.2"],
                                stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True).stdout
        for result in json.loads(output)["benchmarks"]:
            if result["name"] in samples:
                samples[result["name"]].add_round([result["cpu_time"]])
    table = Table("engine.handle, nanoseconds", "event", "median", "lowest", "highest")
    for name, text in EVENTS.items():
        all_of_it = samples[name].values
        table.row(text, *(f"{value:.1f}" for value in (samples[name].median, min(all_of_it), max(all_of_it))))
    for kind, most in MOST.items():
        worst = max(sample.median for name, sample in samples.items() if name.startswith(kind))
        table.goal(f"{kind}, the slowest median", worst, most, " ns")
    return table
