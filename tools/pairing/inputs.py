"""Pairs of texts: revisions of real files, and the forms in which they are compared."""

import collections
import pathlib
import re
import textwrap

from pairing.text import clean

CODE = {".js", ".mjs", ".cjs", ".ts", ".c", ".h", ".cpp", ".py", ".sh", ".java", ".go", ".rs", ".css", ".json"}
LARGEST = 200_000  # letters of a side; above it the exact reference takes too long
OWN_LINE = re.compile(r"\s*(?:[#|>*+-]|\d+[.)]|```|~~~|<|\[[^\]]+\]:|[=-]{3,}|$)")
FENCE = re.compile(r"\s*(```|~~~)")
WIDTH = 72
REWRITTEN = 0.6  # common words of both texts, as Dice; below it one text replaced another

# Pairs of paragraphs (from 0) of one origin; those of them that moved; those too unlike to be expected.
Truth = collections.namedtuple("Truth", "pairs moves doubtful")
Case = collections.namedtuple("Case", "set name first second truth")
Case.__new__.__defaults__ = (None,)


def natural(path):
    return [int(part) if part.isdigit() else part for part in re.split(r"(\d+)", path.name)]


def histories(folder):
    """(name, is code, texts in order) of each subfolder that holds the revisions of one file."""
    for history in sorted(path for path in pathlib.Path(folder).iterdir() if path.is_dir()):
        files = sorted((path for path in history.iterdir() if path.is_file()), key=natural)
        texts = [clean(path.read_text(encoding="utf-8", errors="replace")) for path in files]
        texts = [text for text in texts if len(text) <= LARGEST]
        if len(texts) > 1:
            yield history.name, files[0].suffix in CODE, texts


def steps(count):
    """Each revision with the next, and every third with the one after that."""
    for place in range(count - 1):
        yield place, place + 1
        if place % 3 == 0 and place + 2 < count:
            yield place, place + 2


def unwrapped(text):
    """The text as a word processor has it: no blank lines, each paragraph in one."""
    paragraphs, fenced, open_ended = [], False, False
    for line in text.split("\n"):
        if FENCE.match(line):
            fenced = not fenced
            open_ended = False
        elif not line.strip():
            open_ended = False
            continue
        elif open_ended and not OWN_LINE.match(line):
            paragraphs[-1] += " " + line.strip()
            continue
        else:
            open_ended = not fenced and not re.match(r"\s*[#|]|\s*[=-]{3,}\s*$| {4}", line)
        paragraphs.append(line.rstrip())
    return "\n".join(paragraphs) + "\n"


def wrapped(text):
    """Paragraphs at WIDTH columns with a blank line between them."""
    lines = []
    for paragraph in unwrapped(text).split("\n"):
        lines.extend(textwrap.wrap(paragraph, WIDTH, break_long_words=False, break_on_hyphens=False) + [""])
    return "\n".join(lines).rstrip("\n") + "\n"


FORMS = {"text": str, "documents": unwrapped, "wrapped": wrapped}


def real_cases(folder):
    for name, code, texts in histories(folder):
        forms = {"code": str} if code else FORMS
        for one, other in steps(len(texts)):
            rewritten = not code and is_rewritten(texts[one], texts[other])
            for form, shape in forms.items():
                first, second = shape(texts[one]), shape(texts[other])
                if first != second:
                    yield Case(f"rewritten {form}" if rewritten else form, f"{name} {one}-{other}", first, second)


def is_rewritten(first, second):
    bags = [collections.Counter(text.split()) for text in (first, second)]
    return 2 * (bags[0] & bags[1]).total() < REWRITTEN * (bags[0].total() + bags[1].total())


def spread(cases, limit):
    """At most `limit` cases of each form, taken evenly, so that rewritten texts keep their share."""
    sets = collections.defaultdict(list)
    for case in cases:
        sets[case.set.removeprefix("rewritten ")].append(case)
    for members in sets.values():
        count = min(limit, len(members))
        yield from (members[place * len(members) // count] for place in range(count))
