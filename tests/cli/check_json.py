#!/usr/bin/env python3
"""Applies the records, sections, letters and moves of `zorvane compare --json` to the Original, expects
the Modified, and swaps the sides.

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
    kind = rng.random()
    if kind < 0.1:
        return ""
    if kind < 0.2:
        return "| " + " | ".join(rng.choice(WORDS) for _ in range(4)) + " |"
    words = [rng.choice(WORDS) for _ in range(rng.choice([1, 3, 8, 20]))]
    return " ".join(words) + rng.choice(["", "", ".", " ", "\u00a0", "  "])


def edited_paragraph(paragraph, rng):
    """The paragraphs that one edit makes of one."""
    words = paragraph.split(" ")
    at = rng.randrange(len(words))
    kind = rng.randrange(6)
    if kind == 0:
        return [" ".join(words[:at]), " ".join(words[at:])]
    if kind == 1:
        return [paragraph + rng.choice([" ", "\u00a0", "  "])]
    if kind == 2:
        return [paragraph.replace(" ", "\u00a0", 1)]
    if kind == 3:
        return [paragraph.rstrip()]
    words[at] = rng.choice(WORDS)
    return [" ".join(words)]


def edited(paragraphs, rng, rate):
    result = []
    for paragraph in paragraphs:
        kind = rng.random()
        if kind < rate / 4:
            continue
        if kind < rate * 2 / 4:
            result += edited_paragraph(paragraph, rng)
        elif kind < rate * 3 / 4 and result:
            result[-1] += " " + paragraph  # two became one
        else:
            if kind < rate:
                result.append(random_paragraph(rng))
            result.append(paragraph)
    if len(result) > 6 and rng.random() < 0.5:
        begin, size = rng.randrange(len(result) - 3), rng.randrange(1, 4)
        block = result[begin:begin + size]
        del result[begin:begin + size]
        at = rng.randrange(len(result) + 1)
        result[at:at] = block
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


def units(text):
    """As UTF-16, in which positions are counted."""
    return text.encode("utf-16-le", "surrogatepass")


def part(text, begin, end):
    return text[2 * begin:2 * end]


def applied_details(details, original, modified, letters):
    """A complaint when sections or letters do not turn the one text (UTF-16) into the other."""
    result, at = b"", 0
    for detail in details:
        old, new = detail["original"], detail["modified"]
        if old["begin"] < at or old["end"] < old["begin"] or new["end"] < new["begin"]:
            return "a place goes back"
        result += part(original, at, old["begin"])
        if len(result) != 2 * new["begin"]:
            return "a place in the modified is wrong"
        for side, text in ((old, original), (new, modified)):
            if part(text, side["begin"], side["end"]) != units(side["text"]):
                return "another text is quoted"
            for end in (side["begin"], side["end"]):
                if part(text, end - 1, end + 1) == units("\r\n") and end > 0:
                    return "a break is cut"
                if end > 0 and 0xDC <= (part(text, end, end + 1) or b"\0\0")[1] <= 0xDF:
                    return "a character is cut"
        if old["text"] == new["text"]:
            return "equal texts are marked"
        kind = "a" if not old["text"] else "d" if not new["text"] else "c"
        if detail["type"] != kind:
            return f"type {detail['type']} instead of {kind}"
        result += part(modified, new["begin"], new["end"])
        at = old["end"]
        if letters and detail["characters"]:
            complaint = applied_details(detail["characters"], units(old["text"]),
                                        units(new["text"]), False)
            if complaint:
                return "letters: " + complaint
    return None if result + original[2 * at:] == modified else "what is made is not the modified"


def joined(place):
    return units("\r\n".join(place["text"]))


def complaint_about_moves(result):
    records = {record["number"]: record for record in result["records"]}
    moved = {number for number, record in records.items() if "moved" in record}
    for move in result["moves"]:
        deletion, addition = records[move["deletion"]], records[move["addition"]]
        if deletion["type"] != "d" or addition["type"] != "a":
            return "a move is not of a deletion and an addition"
        if (deletion.get("moved"), addition.get("moved")) != (addition["number"],
                                                              deletion["number"]):
            return "the records of a move do not name each other"
        moved -= {deletion["number"], addition["number"]}
        complaint = applied_details(move["sections"], joined(deletion["original"]),
                                    joined(addition["modified"]), True)
        if complaint:
            return f"move to record {addition['number']}: {complaint}"
    if moved or len(result["moves"]) != result["counts"]["moves"]:
        return "a record names a move that is not there"
    return None


def mirrored(result):
    """What the swapped compare must tell, as far as the order of "d" and "a" leaves it alone."""
    def own(records, side, kinds):
        return [(r[side]["first"], r[side]["last"]) for r in records if r["type"] in kinds]
    records, flip = result["records"], {"original": "modified", "modified": "original"}
    changes = [[(s[a]["begin"], s[a]["end"], s[b]["begin"], s[b]["end"], len(s["characters"]))
                for a, b in [("original", "modified")] for s in r["sections"]]
               for r in records if r["type"] == "c"]
    swapped = [[(m, n, o, p, c) for o, p, m, n, c in sections] for sections in changes]
    sides = {side: own(records, side, "cd" if side == "original" else "ca") for side in flip}
    return (sides, changes), ({flip[side]: ranges for side, ranges in sides.items()}, swapped)


def run_compare(program, folder, names, options):
    run = subprocess.run([program, "compare", *names, "--json", "-", *options], cwd=folder,
                         capture_output=True, check=False)
    if run.returncode not in (0, 1):
        return None, f"exit status {run.returncode}: {run.stderr.decode()}"
    result = json.loads(run.stdout)
    if (run.returncode == 0) != (not result["records"]):
        return None, "the exit status does not tell whether there are records"
    return result, None


def complaint_about(program, folder, original, modified, options):
    """None when the program's records fit the pair."""
    names = ["original.txt", "modified.txt"]
    result, complaint = run_compare(program, folder, names, options)
    if complaint:
        return complaint
    for side, paragraphs in (("original", original), ("modified", modified)):
        if result[side]["paragraphs"] != len(paragraphs):
            return f"{result[side]['paragraphs']} {side} paragraphs instead of {len(paragraphs)}"
    made, complaint = applied(result["records"], original)
    if complaint is None and made != modified:
        complaint = "the records do not make the modified"
    for record in result["records"]:
        if complaint is None and record["type"] == "c":
            complaint = applied_details(record["sections"], joined(record["original"]),
                                        joined(record["modified"]), True)
            complaint = complaint and f"record {record['number']}: {complaint}"
    complaint = complaint or complaint_about_moves(result)
    if complaint:
        return complaint
    swapped, complaint = run_compare(program, folder, names[::-1], options)
    if complaint is None and mirrored(swapped)[0] != mirrored(result)[1]:
        complaint = "the swapped sides are no mirror image"
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
