"""Tests of what is read and made: answers and their promises, yardsticks, planted edits, inputs, aims."""

import copy
import tempfile
import unittest

from pairing import comparers, inputs, metrics, ours, planted, report, scoring
from pairing.selftest import BOATS, LAMP, RENT, SAILS, by_words, picture, side, text
from pairing.text import Text, common_length, runs


def part(kind, original, modified):
    """A section; sides are (begin, end, text)."""
    sides = [{"first": 0, "last": 0, "begin": begin, "end": end, "text": words}
             for begin, end, words in (original, modified)]
    return {"type": kind, "original": sides[0], "modified": sides[1], "characters": []}


def answer(sections=None):
    """The result for `x / old lamp \U0001f600 here / y` against `x / new lamp \U0001f600 there / z / y`."""
    sections = sections or [part("c", (0, 4, "old "), (0, 4, "new ")), part("c", (12, 16, "here"), (12, 17, "there"))]
    records = [{"number": 1, "type": "c", "original": side(2, 2, "old lamp \U0001f600 here"),
                "modified": side(2, 2, "new lamp \U0001f600 there"), "sections": sections},
               {"number": 2, "type": "a", "original": side(2, 2), "modified": side(3, 3, "z"), "sections": []}]
    counts = {"records": 2, "changes": 1, "additions": 1, "deletions": 0,
              "sections": {"changes": 2, "additions": 0, "deletions": 0}}
    return {"counts": counts, "records": records, "moves": []}


FIRST = text("x", "old lamp \U0001f600 here", "y")
SECOND = text("x", "new lamp \U0001f600 there", "z", "y")


def mirrored(result):
    turned = copy.deepcopy(result)
    for record in turned["records"]:
        for entry in (record, *record["sections"]):
            entry["original"], entry["modified"] = entry["modified"], entry["original"]
            entry["type"] = {"a": "d", "d": "a"}.get(entry["type"], "c")
    for counts in (turned["counts"], turned["counts"]["sections"]):
        counts["additions"], counts["deletions"] = counts["deletions"], counts["additions"]
    return turned


def moved():
    """The result for `x / the old lamp / y` against `x / y / the new lamp`."""
    records = [{"number": 1, "type": "d", "original": side(2, 2, "the old lamp"), "modified": side(1, 1), "moved": 2,
                "sections": []},
               {"number": 2, "type": "a", "original": side(3, 3), "modified": side(3, 3, "the new lamp"), "moved": 1,
                "sections": []}]
    move = {"deletion": 1, "addition": 2, "sections": [part("c", (4, 8, "old "), (4, 8, "new "))]}
    return {"counts": {"additions": 1, "deletions": 1}, "records": records, "moves": [move]}


class Promises(unittest.TestCase):
    def test_a_right_answer_keeps_them(self):
        self.assertEqual(ours.broken_promises(answer(), FIRST, SECOND), [])
        self.assertEqual(ours.equal_marked(answer()), [])
        self.assertEqual(ours.unmirrored(answer(), mirrored(answer())), [])
        pairs = ours.shown(answer(), FIRST, SECOND).pairs
        self.assertEqual([FIRST.words[i] for i, _ in pairs], ["x", "lamp", "\U0001f600", "y"])

    def test_a_change_of_blanks_marks_no_word(self):
        record = {"number": 1, "type": "c", "original": side(1, 1, "a lamp  b c"), "modified": side(1, 1, "a lamp b d"),
                  "sections": [part("c", (2, 8, "lamp  "), (2, 7, "lamp ")), part("c", (10, 11, "c"), (9, 10, "d"))]}
        self.assertEqual(ours.kept_inside(record, 5, 7), [(5, 7), (6, 8), (7, 9)])

    def test_sections_by_their_numbers(self):
        result = answer()
        for section, number in zip(result["records"][0]["sections"], (1, 4)):
            for name in ours.SIDES:
                section[name] = {"first": number, "last": number, "text": section[name]["text"]}
        self.assertEqual(ours.broken_promises(result, FIRST, SECOND), [])
        self.assertEqual(len(ours.shown(result, FIRST, SECOND).pairs), 4)
        wide = result["records"][0]["sections"][0]
        wide["original"].update(last=2, text="old lamp ")
        wide["modified"].update(last=2, text="new lamp ")
        self.assertEqual(ours.broken_promises(result, FIRST, SECOND), [])
        self.assertEqual(len(ours.shown(result, FIRST, SECOND).pairs), 3)

    def test_faults_are_counted(self):
        def quote(result):
            result["records"][0]["original"]["text"] = ["old lamp \U0001f600 there"]

        def added(result):
            result["records"][1]["modified"]["text"] = ["zz"]

        def unmarked(result):
            del result["records"][0]["sections"][1]

        def misquoted(result):
            result["records"][0]["sections"][0]["modified"]["text"] = "now "

        def lost(result):
            del result["records"][1]

        def shifted(result):
            result["records"][1]["modified"].update(first=4, last=4)

        def twice(result):
            result["records"].append(result["records"][1])

        for fault in (quote, added, unmarked, misquoted, lost, shifted, twice):
            with self.subTest(fault.__name__):
                result = answer()
                fault(result)
                self.assertTrue(ours.broken_promises(result, FIRST, SECOND))
        for first in (text("w", *FIRST.paragraphs[1:-1]), text(*FIRST.paragraphs[:2], "w")):
            self.assertEqual(len(ours.broken_promises(answer(), first, SECOND)), 1)

    def test_moves(self):
        sides = text("x", "the old lamp", "y"), text("x", "y", "the new lamp")
        self.assertEqual(ours.broken_promises(moved(), *sides), [])
        self.assertEqual(ours.shown(moved(), *sides).moves, [(1, 2, 2, 3)])

        def one_sided(result):
            del result["records"][0]["moved"]

        def turned(result):
            result["moves"][0].update(deletion=2, addition=1)

        def untold_edit(result):
            result["moves"][0]["sections"] = []

        def unlisted(result):
            result["moves"] = []

        for fault in (one_sided, turned, untold_edit, unlisted):
            with self.subTest(fault.__name__):
                result = moved()
                fault(result)
                self.assertTrue(ours.broken_promises(result, *sides))
        same = moved()
        same["moves"][0]["sections"].append(part("c", (8, 12, "lamp"), (8, 12, "lamp")))
        self.assertEqual(len(ours.equal_marked(same)), 1)

    def test_equal_marked(self):
        result = answer([part("c", (0, 4, "old "), (0, 4, "new ")), part("c", (4, 9, "lamp "), (4, 9, "lamp "))])
        self.assertEqual(len(ours.equal_marked(result)), 1)
        result["records"][0]["modified"]["text"] = result["records"][0]["original"]["text"]
        self.assertEqual(len(ours.equal_marked(result)), 2)

    def test_unmirrored(self):
        def kind(result):
            result["records"][1]["type"] = "a"

        def own_place(result):
            result["records"][1]["original"].update(first=4, last=4)

        def words(result):
            result["records"][0]["sections"][0]["original"].update(end=3)

        def counts(result):
            result["counts"]["sections"]["changes"] = 3

        def moves(result):
            result["moves"].append({"deletion": 1, "addition": 2, "sections": []})

        for fault in (kind, own_place, words, counts, moves):
            with self.subTest(fault.__name__):
                swapped = mirrored(answer())
                fault(swapped)
                self.assertTrue(ours.unmirrored(answer(), swapped))
        empty_side = mirrored(answer())
        empty_side["records"][1]["modified"].update(first=1, last=1)
        self.assertEqual(ours.unmirrored(answer(), empty_side), [])


class Yardsticks(unittest.TestCase):
    def test_streams(self):
        first, second = text("a b\u00a0c d"), text("a x d e")
        for name, stream in (("porcelain", comparers.porcelain_stream("@@ -1 +1 @@\n a \n-b\u00a0c\n+x\n  d\n+e\n~")),
                             ("marked", comparers.marked_stream("a \x01b\u00a0c\x02 \x03x\x04 d \x03e\x04\n")),
                             ("other word ends", [(" ", "a"), ("-", "b c"), ("+", "x"), (" ", "d"), ("+", "e")])):
            with self.subTest(name):
                self.assertEqual(comparers.kept_words(first, second, stream), [(0, 0), (2, 2)])
        self.assertEqual(comparers.kept_words(text("a b"), text("a c"), [(" ", "a b")]), [(0, 0)])
        with self.assertRaises(comparers.Unreadable):
            comparers.kept_words(first, second, [(" ", "a")])

    def test_hunks(self):
        output = "@@ -1 +1,2 @@\n-a\n@@ -3,2 +4,0 @@ b\n@@ -0,0 +1 @@\n"
        self.assertEqual(comparers.hunk_ranges(output), [(0, 1, 0, 2), (2, 4, 4, 4), (0, 0, 0, 1)])

    def test_those_installed(self):
        first, second = text(BOATS, "", SAILS), text(BOATS.replace("white", "blue"), "", RENT, SAILS)
        for tool in comparers.available():
            with self.subTest(tool), tempfile.TemporaryDirectory() as folder:
                comparers.write_sides(folder, first, second)
                shown = comparers.show(tool, folder, first, second)
                self.assertEqual(len(shown.pairs), len(first.words) - 1)
                self.assertIn(shown.records, (None, [(0, 1, 0, 1), (2, 2, 2, 3)]))


class Planted(unittest.TestCase):
    def test_truth_names_the_right_paragraphs(self):
        for case in [*planted.planted_cases(None, 7), *planted.genre_cases(7)]:
            first, second = Text(case.first), Text(case.second)
            same = sum(first.paragraphs[p] == second.paragraphs[q] for p, q in case.truth.pairs)
            self.assertGreater(same, 0.2 * len(case.truth.pairs), case.name)
            for p, q in case.truth.pairs:
                rows = [runs(first.paragraphs[p]), runs(second.paragraphs[q])]
                if min(map(len, rows)) >= 10:
                    self.assertGreater(common_length(*rows), 0.4 * min(map(len, rows)), (case.name, p, q))
            if case.set == "splits and joins (text)":
                self.assertIn("\n\n", case.first)
                self.assertEqual({p for p, _ in case.truth.pairs | case.truth.doubtful},
                                 set(range(0, len(first.paragraphs) - 1, 2)))
            self.assertLessEqual(case.truth.moves, case.truth.pairs)

    def test_scores(self):
        first, second = text(BOATS, SAILS, LAMP), text(LAMP + " Twice.", BOATS.replace("white", "blue"), SAILS)
        truth = inputs.Truth({(0, 1), (1, 2), (2, 0)}, {(2, 0)}, set())
        right = by_words(first, second, (0, 1), (1, 2))
        rows = (("all right", right, [(0, 0, 0, 1), (0, 1, 1, 2), (2, 3, 3, 3)], [(2, 3, 0, 1)], (1, 1, 1, 1, 0)),
                ("no move told", right, [(0, 1, 1, 2)], [], (1, 1, 1, 0, 0)),
                ("false move", right, [(0, 1, 1, 2)], [(1, 2, 0, 1)], (1, 1, 1, 0, 1)),
                ("against another", [], [(0, 1, 0, 1)], [], (0, 1, 1, 0, 0)),
                ("nothing", [], [(0, 3, 0, 0), (3, 3, 0, 3)], [], (0, 0, 1, 0, 0)))
        for name, pairs, records, moves, expected in rows:
            with self.subTest(name):
                shown = picture(first, second, pairs, records)
                shown.shown.moves = moves
                score = metrics.score_truth(shown, truth)
                self.assertEqual(tuple(score[key] for key in
                                       ("right", "shown", "true", "moves_found", "moves_false")), expected)


class Inputs(unittest.TestCase):
    def test_forms(self):
        source = "# Head\n\nOne line\nand its end.\n- point\n  more\n```\ncode a\ncode c\n\ncode b\n```\n"
        self.assertEqual(inputs.unwrapped(source), "# Head\nOne line and its end.\n- point more\n```\n"
                         "code a\ncode c\ncode b\n```\n")
        self.assertTrue(all(len(line) <= inputs.WIDTH for line in inputs.wrapped(BOATS + " " + SAILS).split("\n")))

    def test_steps(self):
        self.assertEqual(list(inputs.steps(4)), [(0, 1), (0, 2), (1, 2), (2, 3)])


class Aims(unittest.TestCase):
    def missed(self, change=None, faults=(), failures=()):
        git = {"clear": 1000, "wrong": 100, "woven": 100, "chunks": 1000, "marked": 1000}
        counts = {"clear": 1000, "wrong": 2, "woven": 15, "chunks": 700, "marked": 950, **(change or {})}
        case = inputs.Case("text", "a", "", "")
        return list(report.missed_aims(report.Totals([scoring.Score(
            case, 900, {scoring.OURS: counts, "git": git}, {}, {}, list(faults), list(failures))])))

    def test_each_aim_is_checked(self):
        self.assertEqual(self.missed(), [])
        for change in ({"wrong": 6}, {"woven": 16}, {"chunks": 701}, {"marked": 951}):
            self.assertEqual(len(self.missed(change)), 1, change)
        for kind in report.PROMISES:
            self.assertEqual(len(self.missed(faults=[(kind, "x")])), 1, kind)
        # A pair that one comparer could not do is told, and no figure of it counts.
        missed = self.missed({"wrong": 999}, failures=[("zorvane", "exit 2")])
        self.assertTrue(missed)
        self.assertFalse([line for line in missed if "wrongly" in line])
        self.assertNotIn("exit 2", " ".join(self.missed(failures=[("git", "exit 2")])))

    def test_planted(self):
        def missed(name, **change):
            ours_ = {"right": 90, "shown": 100, "true": 100, "moves_found": 19, "moves_true": 20, "moves_false": 0,
                     "marked": 100, "chunks": 100, **change}
            counts = {"marked": ours_["marked"], "chunks": ours_["chunks"]}
            truth = {key: ours_[key] for key in ("right", "shown", "true", "moves_found", "moves_true", "moves_false")}
            git = {"right": 90, "shown": 100, "true": 100}
            score = scoring.Score(inputs.Case(name, "a", "", ""), 0, {scoring.OURS: counts,
                                  "git": {"marked": 100, "chunks": 100}}, {}, {scoring.OURS: truth, "git": git}, [], [])
            return len(list(report.missed_aims(report.Totals([score]))))

        for name, change, expected in (("laws", {}, 0), ("laws", {"right": 89}, 1), ("laws", {"moves_found": 18}, 1),
                                       ("laws", {"moves_false": 1}, 1), ("laws", {"marked": 200}, 0),
                                       ("in place", {"marked": 110}, 1), ("in place", {}, 0)):
            self.assertEqual(missed(name, **change), expected, (name, change))
