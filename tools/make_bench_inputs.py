#!/usr/bin/env python3
"""Writes the pairs of line files on which speed is measured, from a fixed seed: make_bench_inputs.py FOLDER"""

import pathlib
import random
import sys

WORDS = [a + b for a in "ba de fo gu ka li mo nu pa ri so tu ve wi zo".split()
         for b in "r n st nd ck ll m p t rk".split()]


def sentence(rng, length=80):
    text = rng.choice(WORDS)
    while len(text) < length:
        text += " " + rng.choice(WORDS)
    return text[:length]


def changed(lines, rng, share):
    out = list(lines)
    for at in rng.sample(range(len(out)), int(len(out) * share)):
        words = out[at].split(" ")
        for _ in range(rng.randint(1, 3)):
            words[rng.randrange(len(words))] = rng.choice(WORDS)
        out[at] = " ".join(words)
    return out


def many_small_changes(lines, rng):
    out = []
    for line in lines:
        kind = rng.random()
        if kind < 0.01:
            continue
        if kind < 0.02:
            out.append(str(rng.randrange(1000)))
        out.append(line if kind > 0.04 else line + "x")
    return out


def moved_blocks(lines, rng):
    out = list(lines)
    for _ in range(20):
        at = rng.randrange(len(out) - 500)
        block, out[at:at + 200] = out[at:at + 200], []
        to = rng.randrange(len(out))
        out[to:to] = block
    return out


def pairs():
    rng = random.Random(1)
    prose = [sentence(rng) for _ in range(50000)]
    for percent in (1, 10, 50):
        yield f"prose{percent}", prose, changed(prose, rng, percent / 100)
    yield "moved", prose, moved_blocks(prose, rng)
    short = [str(rng.randrange(100000)) for _ in range(1000000)]
    yield "short", short, many_small_changes(short, rng)
    distinct = [f"line {n} {rng.random()}" for n in range(200000)]
    few = [f"line {n}" for n in range(20)]
    repeated = [rng.choice(few) for _ in range(200000)]
    yield "repeated", repeated, many_small_changes(repeated, rng)
    periodic = [few[n % 20] for n in range(200000)]
    yield "periodic", periodic, many_small_changes(periodic, rng)
    yield "reversed", distinct, distinct[::-1]
    yield "shuffled", distinct, rng.sample(distinct, len(distinct))
    yield "unrelated", distinct, [f"other {n} {rng.random()}" for n in range(200000)]


def main():
    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for name, original, modified in pairs():
        for side, lines in (("a", original), ("b", modified)):
            (folder / f"{name}.{side}").write_bytes("".join(f"{x}\r\n" for x in lines).encode())


if __name__ == "__main__":
    main()
