#!/usr/bin/env python3
"""The engine against GNU diff, in turn in one run: processor time, memory and number of hunks.

    tools/make_bench_inputs.py FOLDER && tools/bench_engine.py build/release/bench/zv_engine_diff FOLDER
"""

import pathlib
import statistics
import subprocess
import sys

RUNS = 5


# The child is started from a small process: a child counts its parent's peak until it is another program.
STARTER = """import resource, subprocess, sys
with open(sys.argv[1], "wb") as out:
    subprocess.run(sys.argv[2:], stdout=out)
usage = resource.getrusage(resource.RUSAGE_CHILDREN)
print(usage.ru_utime + usage.ru_stime, usage.ru_maxrss)"""


def measure(command, out):
    """Processor seconds and peak KiB of one run."""
    figures = subprocess.run([sys.executable, "-S", "-c", STARTER, str(out), *command], check=True,
                             capture_output=True, text=True).stdout.split()
    return float(figures[0]), int(figures[1])


def main():
    engine, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    print(f"{'input':10} {'ours s':>7} {'diff s':>7} {'ratio':>6} {'MiB':>6} {'allowed':>7} "
          f"{'hunks':>7} {'diff':>7} {'ratio':>6}")
    for original in sorted(folder.glob("*.a")):
        modified = original.with_suffix(".b")
        commands = ([engine, str(original), str(modified)], ["diff", str(original), str(modified)])
        runs = [[measure(command, folder / f"out{n}") for n, command in enumerate(commands)]
                for _ in range(RUNS)]
        ours, theirs = (statistics.median(run[n][0] for run in runs) for n in (0, 1))
        ratio = statistics.median(run[0][0] / max(run[1][0], 1e-4) for run in runs)
        memory = max(run[0][1] for run in runs) / 1024
        data = original.read_bytes(), modified.read_bytes()
        allowed = (len(data[0]) + len(data[1]) + 48 * (data[0].count(b"\n") + data[1].count(b"\n"))) / 2**20
        hunks = [sum(line[:1].isdigit() for line in open(folder / f"out{n}", "rb")) for n in (0, 1)]
        print(f"{original.stem:10} {ours:7.3f} {theirs:7.3f} {ratio:6.2f} {memory:6.1f} {allowed:7.1f} "
              f"{hunks[0]:7} {hunks[1]:7} {hunks[0] / max(hunks[1], 1):6.3f}")


if __name__ == "__main__":
    main()
