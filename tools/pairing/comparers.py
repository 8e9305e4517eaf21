"""Runs the comparers, and brings what each shows into one form.

`Shown.pairs` are the words left unmarked, as (word of the first side, word of the second), ascending.
`Shown.records` are the changed stretches as paragraph ranges (first begin, end, second begin, end),
counted from 0; None when a tool knows words only. The changed stretches of git are its hunks; its words
come from --word-diff, which looks at each hunk alone."""

import os
import pathlib
import re
import shutil
import subprocess
import unicodedata

from pairing.text import WORD

HUNK = re.compile(r"^@@ -(\d+)(?:,(\d+))? \+(\d+)(?:,(\d+))? @@", re.MULTILINE)
MARKS = "\x01\x02\x03\x04"  # begin and end of deleted, begin and end of added
PLAIN = {"GIT_CONFIG_GLOBAL": "/dev/null", "GIT_CONFIG_NOSYSTEM": "1", "LC_ALL": "C.UTF-8"}
GIT = ["git", "diff", "--no-index", "--no-color", "--no-ext-diff", "--no-prefix"]
ALGORITHMS = {"git": "--diff-algorithm=myers", "patience": "--patience"}
ALL = ("git", "patience", "wdiff", "dwdiff")
LONGEST = 120  # seconds for one run


class Unreadable(Exception):
    """A comparer gave up, or its output does not fit the two texts."""


class Shown:
    def __init__(self, pairs, records=None, moves=()):
        self.pairs, self.records, self.moves = pairs, records, list(moves)
        self.result = None  # the parsed JSON, of ours only


def available():
    return [tool for tool in ALL if shutil.which("git" if tool in ALGORITHMS else tool)]


def run(command, folder):
    try:
        done = subprocess.run(command, cwd=folder, capture_output=True, timeout=LONGEST,
                              env={**os.environ, **PLAIN}, check=False)
    except subprocess.TimeoutExpired:
        raise Unreadable(f"{command[0]}: no answer within {LONGEST} s") from None
    if done.returncode not in (0, 1):
        raise Unreadable(f"{command[0]}: exit {done.returncode}: {done.stderr.decode(errors='replace')[:200]}")
    return done.stdout.decode("utf-8", "replace")


def write_sides(folder, first, second):
    folder = pathlib.Path(folder)
    (folder / "original.txt").write_text(first.content, encoding="utf-8")
    (folder / "modified.txt").write_text(second.content, encoding="utf-8")


def show(tool, folder, first, second):
    """What a yardstick shows of the files that write_sides left in the folder."""
    if tool in ALGORITHMS:
        return show_git(ALGORITHMS[tool], folder, first, second)
    command = [tool, "-w", MARKS[0], "-x", MARKS[1], "-y", MARKS[2], "-z", MARKS[3]]
    output = run(command + ["original.txt", "modified.txt"], folder)
    return Shown(kept_words(first, second, marked_stream(output)))


def show_git(algorithm, folder, first, second):
    names = ["original.txt", "modified.txt"]
    hunks = run([*GIT, algorithm, "-U0", *names], folder)
    words = run([*GIT, algorithm, "-U1000000", "--word-diff=porcelain", *names], folder)
    return Shown(kept_words(first, second, porcelain_stream(words)), hunk_ranges(hunks))


def hunk_ranges(output):
    records = []
    for found in HUNK.finditer(output):
        begin, count, other, other_count = (int(part) if part else 1 for part in found.groups())
        first = begin - 1 if count else begin
        second = other - 1 if other_count else other
        records.append((first, first + count, second, second + other_count))
    return records


def porcelain_stream(output):
    body = False
    for line in output.split("\n"):
        if line.startswith("@@"):
            body = True
        elif body and line[:1] in (" ", "-", "+"):
            yield line[0], line[1:]


def marked_stream(output):
    signs = {MARKS[0]: "-", MARKS[1]: " ", MARKS[2]: "+", MARKS[3]: " "}
    sign = " "
    for part in re.split(f"([{MARKS}])", output):
        if part in signs:
            sign = signs[part]
        elif part:
            yield sign, part


def kept_words(first, second, stream):
    """The unmarked words of a stream of (sign, text)."""
    stream = list(stream)
    i = j = 0
    pairs = []
    for sign, text in stream:
        count = len(WORD.findall(text))
        if sign == " ":
            pairs.extend(zip(range(i, i + count), range(j, j + count)))
        i += count if sign != "+" else 0
        j += count if sign != "-" else 0
    if i == len(first.words) and j == len(second.words) and same_words(first, second, pairs):
        return pairs
    return kept_by_letters(first, second, stream)


def same_words(first, second, pairs):
    return all(first.words[i] == second.words[j] for i, j in pairs)


def kept_by_letters(first, second, stream):
    """For tools that end words elsewhere, at no-break spaces too: a word is kept when all its letters are."""
    owners = [[number for number, word in enumerate(text.words) for _ in letters(word)]
              for text in (first, second)]
    i = j = 0
    hits = {}
    for sign, text in stream:
        count = len(letters(text))
        if sign == " ":
            for pair in zip(owners[0][i:i + count], owners[1][j:j + count]):
                hits[pair] = hits.get(pair, 0) + 1
        i += count if sign != "+" else 0
        j += count if sign != "-" else 0
    if (i, j) != (len(owners[0]), len(owners[1])):
        raise Unreadable("output does not hold the words of the two texts")
    return sorted((i, j) for (i, j), count in hits.items()
                  if first.words[i] == second.words[j] and count == len(letters(first.words[i])))


def letters(text):
    """Without blanks of any kind, and composed, since dwdiff does both."""
    return unicodedata.normalize("NFC", "".join(text.split()))
