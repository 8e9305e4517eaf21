"""Reads the JSON of `zorvane compare` and holds it to its promises."""

import array
import collections
import json
import re

from pairing.comparers import Shown, Unreadable, run
from pairing.text import WORD

SECTION = re.compile("[^ \r\n\v\a]*[ \r\n\v\a]|[^ \r\n\v\a]+$")
SIDES = ("original", "modified")
GUARD = " "  # one blank stands behind the joined text of each side


def compare(program, folder, swapped=False):
    names = ["modified.txt", "original.txt"] if swapped else ["original.txt", "modified.txt"]
    output = run([str(program), "compare", *names, "--json", "-"], folder)
    try:
        return json.loads(output)
    except ValueError as error:
        raise Unreadable(f"no JSON: {error}") from None


def half_open(side, empty):
    """A range as numbers from 0; an empty one stands where it names."""
    return (side["first"], side["first"]) if empty else (side["first"] - 1, side["last"])


def record_ranges(record):
    ranges = []
    for side, lacking in zip(SIDES, "ad"):
        ranges.extend(half_open(record[side], record["type"] == lacking))
    return tuple(ranges)


def units(text):
    """The text with one character for each UTF-16 unit, so that offsets count as they are meant."""
    if text.isascii() or max(map(ord, text), default=0) < 0x10000:
        return text
    return "".join(map(chr, array.array("H", text.encode("utf-16-le", "surrogatepass"))))


def joined(record, side):
    return units("\r\n".join(record[side]["text"]))


def section_ranges(record):
    """The marked ranges of a changed record in its joined texts, guard included, and of which texts."""
    ends = []
    for side in SIDES:
        ends.append([0] + [found.end() for found in SECTION.finditer(joined(record, side) + GUARD)])
    for section in record["sections"]:
        ranges = []
        for side, lacking, places in zip(SIDES, "ad", ends):
            part = section[side]
            if "begin" in part:
                ranges.append((part["begin"], part["end"]))
                continue
            begin, end = half_open(part, section["type"] == lacking)
            if end >= len(places):
                raise Unreadable(f"record {record['number']}: no section {end}")
            ranges.append((places[begin], places[end]))
        yield section, ranges[0], ranges[1]


def unmarked_pieces(record):
    """Pairs of ranges of a changed record that the sections leave unmarked."""
    one = other = 0
    for _, first, second in section_ranges(record):
        yield (one, first[0]), (other, second[0])
        one, other = first[1], second[1]
    yield (one, len(joined(record, "original")) + 1), (other, len(joined(record, "modified")) + 1)


def shown(result, first, second):
    """What a result shows, as comparers.Shown."""
    pairs, records = [], []
    p = q = 0
    for record in result["records"]:
        ranges = record_ranges(record)
        pairs.extend(zip(range(first.first_word[p], first.first_word[ranges[0]]),
                         range(second.first_word[q], second.first_word[ranges[2]])))
        if record["type"] == "c":
            pairs.extend(kept_inside(record, first.first_word[ranges[0]], second.first_word[ranges[2]]))
        records.append(ranges)
        p, q = ranges[1], ranges[3]
    pairs.extend(zip(range(first.first_word[p], len(first.words)), range(second.first_word[q], len(second.words))))
    picture = Shown(pairs, records, moves_of(result))
    picture.result = result
    return picture


def kept_inside(record, first_word, second_word):
    """Unmarked words, and those marked for the blanks behind them only: other tools pass over these."""
    spans = [[found.span() for found in WORD.finditer(joined(record, side))] for side in SIDES]
    numbers = [{span: number for number, span in enumerate(side)} for side in spans]
    pairs = list(kept_by_blanks(record, spans))
    for one, other in unmarked_pieces(record):
        shift = other[0] - one[0]
        for begin, end in inside(spans[0], one):
            number = numbers[1].get((begin + shift, end + shift))
            if number is not None and end + shift <= other[1]:
                pairs.append((numbers[0][begin, end], number))
    return sorted((first_word + one, second_word + other) for one, other in pairs)


def kept_by_blanks(record, spans):
    for _, *ranges in section_ranges(record):
        words = [[number for number, (begin, end) in enumerate(side) if begin >= span[0] and end <= span[1]]
                 for side, span in zip(spans, ranges)]
        texts = [[joined(record, side)[slice(*places[number])] for number in numbers]
                 for side, places, numbers in zip(SIDES, spans, words)]
        if texts[0] == texts[1]:
            yield from zip(*words)


def inside(spans, piece):
    return [span for span in spans if span[0] >= piece[0] and span[1] <= piece[1]]


def moves_as_changes(result):
    """Each move as the change that it would be if both its ends stood in one place."""
    records = result["records"]
    for number, move in enumerate(result.get("moves", ()), 1):
        yield {"number": f"of move {number}", "type": "c", "sections": move["sections"],
               "original": records[move["deletion"] - 1]["original"],
               "modified": records[move["addition"] - 1]["modified"]}


def moves_of(result):
    return [record_ranges(move) for move in moves_as_changes(result)]


def broken_promises(result, first, second):
    """The records, applied to the Original, must give the Modified, words included."""
    faults = []
    p = q = 0
    for record in result["records"]:
        begin, end, other_begin, other_end = record_ranges(record)
        name = f"record {record['number']}"
        if begin < p or other_begin < q:
            faults.append(f"{name} overlaps the one before it")
        if first.paragraphs[p:begin] != second.paragraphs[q:other_begin]:
            faults.append(f"unequal paragraphs before {name}")
        for text, side, span in ((first, "original", (begin, end)), (second, "modified", (other_begin, other_end))):
            if text.paragraphs[slice(*span)] != record[side]["text"]:
                faults.append(f"{name} quotes its {side} wrongly")
        if record["type"] == "c":
            faults.extend(f"{name}: {fault}" for fault in broken_sections(record))
        p, q = end, other_end
    if first.paragraphs[p:] != second.paragraphs[q:]:
        faults.append("unequal paragraphs behind the last record")
    return faults + broken_moves(result)


def broken_moves(result):
    """A move names a deletion and an addition, they name each other, and its sections tell its edits."""
    faults, records = [], result["records"]
    partners = {record["number"]: record["moved"] for record in records if "moved" in record}
    told = {}
    for move in result.get("moves", ()):
        ends = move["deletion"], move["addition"]
        told.update({ends[0]: ends[1], ends[1]: ends[0]})
        if [records[end - 1]["type"] for end in ends] != ["d", "a"]:
            faults.append(f"move of records {ends}: not a deletion and an addition")
    if partners != told:
        faults.append(f"moves tell {told}, the records {partners}")
    for change in moves_as_changes(result):
        faults.extend(f"record {change['number']}: {fault}" for fault in broken_sections(change))
    return faults


def broken_sections(record):
    texts = [joined(record, side) for side in SIDES]
    for section, *ranges in section_ranges(record):
        for text, side, (begin, end) in zip(texts, SIDES, ranges):
            if text[begin:end] != units(section[side]["text"]):
                yield f"a section quotes its {side} wrongly: {section[side]['text']!r}"
    pieces = list(unmarked_pieces(record))
    for place, (one, other) in enumerate(pieces):
        kept = (texts[0] + GUARD)[slice(*one)], (texts[1] + GUARD)[slice(*other)]
        last = place == len(pieces) - 1
        if kept[0] != kept[1] and not (last and abs(len(kept[0]) - len(kept[1])) == 1
                                       and max(kept, key=len) == min(kept, key=len) + GUARD):
            yield f"unmarked but unequal: {kept[0]!r} {kept[1]!r}"


def equal_marked(result):
    """Sections, and whole changes, whose both texts are equal."""
    faults = []
    faults.extend(f"record {record['number']}: both sides equal" for record in result["records"]
                  if record["type"] == "c" and record["original"]["text"] == record["modified"]["text"])
    for record in [*result["records"], *moves_as_changes(result)]:
        faults.extend(f"record {record['number']}: section with {section['original']['text']!r} on both sides"
                      for section in record["sections"]
                      if section["original"]["text"] == section["modified"]["text"])
    return faults


def unmirrored(result, swapped):
    """What differs when the sides are swapped; where an empty side stands does not count."""
    faults = []
    here, there = mirror_of(result["records"], False), mirror_of(swapped["records"], True)
    for only, name in ((here - there, "as given"), (there - here, "swapped")):
        faults.extend(f"record only {name}: {str(key)[:160]}" for key in only.elements())
    if mirrored_counts(result["counts"], False) != mirrored_counts(swapped["counts"], True):
        faults.append(f"counts {result['counts']} and {swapped['counts']}")
    if mirror_of(moves_as_changes(result), False) != mirror_of(moves_as_changes(swapped), True):
        faults.append("moves")
    return faults


def mirror_of(parts, swap):
    """A bag of records, sections or characters without their order: in one gap the sides change places."""
    sides = SIDES[::-1] if swap else SIDES
    turned = {"a": "d", "d": "a"} if swap else {}
    bag = collections.Counter()
    for part in parts:
        kind = turned.get(part["type"], part["type"])
        ranges = [own_range(part[side], kind == lacking) for side, lacking in zip(sides, "ad")]
        inner = mirror_of(part.get("sections", part.get("characters", ())), swap)
        bag[kind, *ranges, tuple(sorted(map(str, inner.items())))] += 1
    return bag


def own_range(side, empty):
    return None if empty else (side["first"], side["last"], side.get("begin"), side.get("end"))


def mirrored_counts(counts, swap):
    turned = {"additions": "deletions", "deletions": "additions"} if swap else {}
    return {turned.get(name, name): mirrored_counts(value, swap) if isinstance(value, dict) else value
            for name, value in counts.items()}
