#!/usr/bin/env python3
"""Times a redline with tracked changes against the HTML report of the same pair, in one run.

usage: tools/bench_redline.py build/release/zorvane [PAGES[+MB][.odt]...]

A pair of .docx for each number of pages (100 and 1000 without one), or of .odt, every tenth paragraph
edited, both with that many megabytes of pictures that nothing can pack. Printed are the least processor
time of seven runs with all processes, the least wall time, the peak memory of the largest process, and
the ratios to the report and to both packages as they are unpacked."""

import os
import pathlib
import random
import resource
import subprocess
import sys
import tempfile
import time
import zipfile

import bench_readers

PARAGRAPHS_A_PAGE = 7


def edited(texts):
    chance = random.Random(11)
    texts = list(texts)
    for _ in range(len(texts) // 10):
        place = chance.randrange(len(texts))
        kind = chance.random()
        if kind < 0.7:
            words = texts[place].split(" ")
            words[chance.randrange(len(words))] = "changed"
            texts[place] = " ".join(words)
        elif kind < 0.85:
            texts.insert(place, bench_readers.sentence(chance))
        else:
            texts.pop(place)
    return texts


def measure(command, target):
    best = wall = float("inf")
    for _ in range(7):
        pathlib.Path(target).unlink(missing_ok=True)
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        begin = time.monotonic()
        run = subprocess.run([*command, target], stdout=subprocess.DEVNULL, check=False)
        wall = min(wall, time.monotonic() - begin)
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        best = min(best, after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime)
        if run.returncode != 1 or not os.path.exists(target):
            sys.exit(f"{target}: no report of a pair that differs")
    peak = subprocess.run([sys.executable, "-c",
                           "import resource, subprocess, sys; subprocess.run(sys.argv[1:]); "
                           "print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss)", *command,
                           target], capture_output=True, text=True, check=True)
    return best, wall, int(peak.stdout) / 1024


def add_pictures(path, megabytes):
    chance = random.Random(5)
    with zipfile.ZipFile(path, "a") as package:
        for number in range(megabytes):
            package.writestr(f"word/media/{number}.png", chance.randbytes(1 << 20))


def unpacked(path):
    with zipfile.ZipFile(path) as package:
        return sum(part.file_size for part in package.infolist()) / (1 << 20)


def main():
    program = os.path.abspath(sys.argv[1])
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for asked in sys.argv[2:] or ["100", "1000"]:
            number, _, form = asked.partition(".")
            form = form or "docx"
            pages, _, pictures = number.partition("+")
            texts = bench_readers.paragraphs(int(pages) * PARAGRAPHS_A_PAGE)
            pair = [folder / f"old.{form}", folder / f"new.{form}"]
            make = {"docx": bench_readers.docx, "odt": bench_readers.odt}[form]
            make(pair[0], texts)
            make(pair[1], edited(texts))
            for path in pair:
                add_pictures(path, int(pictures or "0"))
            size = sum(unpacked(path) for path in pair)
            report = None
            for kind in ["html", form]:
                result = measure([program, "compare", *pair, "-q", "-o"], folder / f"redline.{kind}")
                report = report or result
                print(f"{asked} pages, {kind}: {result[0] * 1000:.0f} ms cpu ({result[0] / report[0]:.1f}), "
                      f"{result[1] * 1000:.0f} ms wall ({result[1] / report[1]:.1f}), {result[2]:.0f} MiB "
                      f"({result[2] / size:.1f} times {size:.1f} MiB of packages)", flush=True)


if __name__ == "__main__":
    main()
