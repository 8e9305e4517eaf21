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


def word(rng):
    return "".join(rng.choice("abcdefghijklmnop") for _ in range(6))


def rows_of(rng, words, count):
    return [[str(number), rng.choice(words), rng.choice(words), str(rng.randrange(100_000)), rng.choice(words),
             f"{rng.randrange(10_000)}.{rng.randrange(100):02}", rng.choice(words)] for number in range(count)]


def unlike_inputs(rng):
    """Name and both texts of inputs that have next to nothing in common."""
    words = [word(rng) for _ in range(30_000)]
    yield ("100,000 unlike short paragraphs a side", "txt",
           *(["\n".join(" ".join(rng.choice(words) for _ in range(5)) for _ in range(100_000)) for _ in "ab"]))
    yield ("2,000,000 one-letter lines against others", "txt",
           *("\n".join(rng.choice(letters) for _ in range(2_000_000)) for letters in ("abcdefghijklm",
                                                                                     "nopqrstuvwxyz")))
    rows = rows_of(rng, words, 1_000_000)
    before = "\n".join(map(",".join, rows))
    for row in rows:
        row[rng.randrange(1, 7)] = rng.choice(words)
    yield "CSV of 1,000,000 rows, a field changed in each", "csv", before, "\n".join(map(",".join, rows))


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
    for name, kind, *texts in unlike_inputs(rng):
        sides = [folder / f"unlike.{side}.{kind}" for side in "ab"]
        for file, text in zip(sides, texts):
            file.write_text(text + "\n")
        memory, cpu, _ = peak_and_cpu([program, "compare", *map(str, sides), "-o", str(folder / "r.html")])
        print(f"{name}, to HTML: {cpu:.2f} s processor, {memory:.0f} MiB")
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
