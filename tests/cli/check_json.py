#!/usr/bin/env python3
"""Applies the records of `zorvane compare --json` to the Original and expects the Modified.

Reads the documents by itself, so that nothing of the program is trusted: random pairs from fixed seeds,
and the text files of a folder of real documents, each against edited copies of itself.

    check_json.py PROGRAM [CORPUS]
"""

import json
import pathlib
import random
import subprocess
import sys
import tempfile

WORDS = ("the tenant pays rent on first day of every month and landlord keeps roof windows walls "
         "in order ändern größer 東京 данные \u05e9\u05dc\u05d5\u05dd x y z 1 22 333").split()
OPTION_SETS = [[], ["--letters"], ["--faster"], ["--bracket", "3"], ["--larger-sections"]]


def paragraphs_of(text):
    """The paragraphs as an editor holds them: any line end ends one, the last needs none."""
    return text.replace("\r\n", "\n").replace("\r", "\n").split("\n")


def random_paragraph(rng):
    return " ".join(rng.choice(WORDS) for _ in range(rng.choice([0, 1, 3, 8, 20])))


def edited(paragraphs, rng, rate):
    result = []
    for paragraph in paragraphs:
        kind = rng.random()
        if kind < rate / 3:
            continue
        if kind < rate * 2 / 3:
            words = paragraph.split(" ")
            words[rng.randrange(len(words))] = rng.choice(WORDS)
            paragraph = " ".join(words)
        elif kind < rate:
            result.append(random_paragraph(rng))
        result.append(paragraph)
    return result or [""]


def applied(records, original):
    """The Modified that the records make of the Original, and a complaint if they contradict it."""
    result, at = [], 0
    for record in records:
        first, last = record["original"]["first"], record["original"]["last"]
        begin = first if record["type"] == "a" else first - 1
        if begin < at:
            return None, f"record {record['number']} overlaps the one before"
        result += original[at:begin]
        at = begin if record["type"] == "a" else last
        if record["original"]["text"] != original[begin:at]:
            return None, f"record {record['number']} quotes another original text"
        if record["type"] != "d":
            place = record["modified"]
            if (place["first"], place["last"]) != (len(result) + 1,
                                                   len(result) + len(place["text"])):
                return None, f"record {record['number']} stands elsewhere in the modified"
        result += record["modified"]["text"]
    return result + original[at:], None


def applied_sections(record):
    """True when the section records turn the words of the original side into the modified's."""
    def sections(texts):
        out, text = [], "\r\n".join(texts)
        begin = 0
        for index, character in enumerate(text):
            if character in "\x07\n\v\r ":
                out.append(text[begin:index + 1])
                begin = index + 1
        return out + [text[begin:] + " "]  # the last word is compared with a separator behind it
    original, modified = sections(record["original"]["text"]), sections(record["modified"]["text"])
    result, at = [], 0
    for section in record["sections"]:
        first, last = section["original"]["first"], section["original"]["last"]
        begin = first if section["type"] == "a" else first - 1
        result += original[at:begin]
        at = begin if section["type"] == "a" else last
        if section["type"] != "d":
            place = section["modified"]
            result += modified[place["first"] - 1:place["last"]]
    return "".join(result + original[at:]).rstrip(" ") == "".join(modified).rstrip(" ")


def complaint_about(program, folder, original, modified, options):
    """None when the program's records fit the pair."""
    run = subprocess.run([program, "compare", "original.txt", "modified.txt", "--json", "-",
                          *options], cwd=folder, capture_output=True, check=False)
    if run.returncode not in (0, 1):
        return f"exit status {run.returncode}: {run.stderr.decode()}"
    result = json.loads(run.stdout)
    if (run.returncode == 0) != (not result["records"]):
        return "the exit status does not tell whether there are records"
    for side, paragraphs in (("original", original), ("modified", modified)):
        if result[side]["paragraphs"] != len(paragraphs):
            return f"{result[side]['paragraphs']} {side} paragraphs instead of {len(paragraphs)}"
    made, complaint = applied(result["records"], original)
    if complaint is None and made != modified:
        complaint = "the records do not make the modified"
    for record in result["records"]:
        if complaint is None and record["type"] == "c" and not applied_sections(record):
            complaint = f"the sections of record {record['number']} do not make its modified text"
    return complaint


def pairs(corpus):
    """Name, original and modified paragraphs."""
    for seed in range(150):
        rng = random.Random(seed)
        original = [random_paragraph(rng) for _ in range(rng.choice([1, 2, 5, 30, 200]))]
        yield f"random {seed}", original, edited(original, rng, rng.choice([0.05, 0.3, 0.9]))
        if seed % 10 == 0:
            yield f"unrelated {seed}", original, [random_paragraph(rng) for _ in range(20)]
    for number, file in enumerate(sorted(corpus.glob("text/*utf8*.txt")) if corpus else []):
        paragraphs = paragraphs_of(file.read_bytes().decode("utf-8-sig"))
        for seed in range(10):
            rng = random.Random(1000 * number + seed)
            yield f"{file.name} {seed}", paragraphs, edited(paragraphs, rng, 0.2)


def main():
    program = str(pathlib.Path(sys.argv[1]).resolve())
    corpus = pathlib.Path(sys.argv[2]) if len(sys.argv) > 2 else None
    checked = failed = 0
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        for number, (title, original, modified) in enumerate(pairs(corpus)):
            for side, paragraphs in (("original", original), ("modified", modified)):
                end = ["\r\n", "\n", "\r"][number % 3]
                (folder / f"{side}.txt").write_bytes(end.join(paragraphs).encode())
            complaint = complaint_about(program, folder, original, modified,
                                        OPTION_SETS[number % len(OPTION_SETS)])
            checked += 1
            if complaint:
                failed += 1
                print(f"{title}: {complaint}")
    print(f"{checked - failed} passed, {failed} failed")
    return 1 if failed or checked < 150 else 0


if __name__ == "__main__":
    sys.exit(main())
