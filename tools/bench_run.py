#!/usr/bin/env python3
"""The whole program, load to HTML report, and its start: processor time and peak memory, medians of five.

    tools/bench_run.py build/release/zorvane FOLDER
"""

import pathlib
import random
import statistics
import subprocess
import sys
import time

sys.path.insert(0, str(pathlib.Path(__file__).parent))
from make_bench_inputs import changed, sentence  # noqa: E402


def peak_and_cpu(command):
    """Peak MiB, processor seconds and wall seconds, from a small parent so that only the child counts."""
    code = ("import os,resource,subprocess,sys\n"
            "subprocess.run(sys.argv[1:], stdout=subprocess.DEVNULL)\n"
            "u=resource.getrusage(resource.RUSAGE_CHILDREN)\n"
            "print(u.ru_maxrss/1024, u.ru_utime+u.ru_stime)")
    begin = time.monotonic()
    out = subprocess.run([sys.executable, "-c", code, *command], capture_output=True, text=True,
                         check=True).stdout.split()
    return float(out[0]), float(out[1]), time.monotonic() - begin


def main():
    program, folder = sys.argv[1], pathlib.Path(sys.argv[2])
    folder.mkdir(parents=True, exist_ok=True)
    rng = random.Random(5)
    for count in (50_000, 500_000):
        original = [sentence(rng) for _ in range(count)]
        sides = [folder / f"run{count}.{side}.txt" for side in "ab"]
        for file, lines in zip(sides, (original, changed(original, rng, 0.1))):
            file.write_text("\n".join(lines) + "\n")
        runs = [peak_and_cpu([program, "compare", *map(str, sides), "-o", str(folder / "r.html")])
                for _ in range(5)]
        print(f"{count} paragraphs, 10 % changed, to HTML: "
              f"{statistics.median(r[1] for r in runs):.2f} s processor, "
              f"{statistics.median(r[0] for r in runs):.0f} MiB")
    for side, text in (("a", "one\ntwo\n"), ("b", "one\nthree\n")):
        (folder / f"small.{side}.txt").write_text(text)
    command = [program, "compare", str(folder / "small.a.txt"), str(folder / "small.b.txt")]
    walls = []
    for _ in range(50):
        begin = time.monotonic()
        subprocess.run(command, stdout=subprocess.DEVNULL, check=False)
        walls.append(time.monotonic() - begin)
    print(f"two small files, start to end: {1000 * statistics.median(walls):.1f} ms")


if __name__ == "__main__":
    main()
