"""Tests of the measures: each is shown what is right, and faults that it must count."""

import random
import shutil
import unittest

from pairing import comparers, genres, metrics, planted, reference
from pairing.text import Text, Weights, common_length, increasing_chain

BOATS = "Boats are painted white each spring by the members of the club."
SAILS = "Sails are dried on the upper floor of the shed after rain."
LAMP = "The lamp is cleaned every morning before the ferry leaves."
TIDE = "The keeper notes the weather and the height of the tide."
RENT = "Visitors may rent one of the boats of the club for half a day."


def text(*paragraphs):
    return Text("\n".join(paragraphs) + "\n")


def picture(first, second, pairs, records):
    return metrics.Picture(comparers.Shown(pairs, records), first, second, Weights(first, second))


def by_words(first, second, *paragraphs):
    """Unmarked words of the named pairs of paragraphs: those equal at equal places from the front."""
    return [(i, j) for p, q in paragraphs for i, j in zip(first.word_span(p), second.word_span(q))
            if first.words[i] == second.words[j]]


def clear(first, second):
    return reference.clear_pairs(first, second, Weights(first, second))


def side(first, last, *paragraphs, **more):
    return {"first": first, "last": last, "text": list(paragraphs), **more}


class Words(unittest.TestCase):
    def test_common_length(self):
        for first, second, length in (("", "", 0), ("abc", "abc", 3), ("abcd", "acbd", 3), ("ab", "ba", 1)):
            self.assertEqual(common_length(first, second), length, (first, second))

    def test_chain_against_all_subsets(self):
        chance = random.Random(5)
        for _ in range(60):
            pairs = [(chance.randrange(6), chance.randrange(6), chance.randint(1, 9)) for _ in range(7)]
            chain = sorted(pairs[k] for k in increasing_chain(pairs))
            best = 0
            for mask in range(1 << len(pairs)):
                taken = sorted(pairs[k] for k in range(len(pairs)) if mask >> k & 1)
                if all(a[0] < b[0] and a[1] < b[1] for a, b in zip(taken, taken[1:])):
                    best = max(best, sum(pair[2] for pair in taken))
            self.assertEqual(sum(pair[2] for pair in chain), best)
            self.assertTrue(all(a[0] < b[0] and a[1] < b[1] for a, b in zip(chain, chain[1:])))

    def test_small_and_common_words_weigh_little(self):
        sides = text(BOATS, SAILS), text(LAMP, TIDE)
        weights = Weights(*sides)
        self.assertLess(weights.of_word("the"), 0.2)
        self.assertGreater(weights.of_word("painted"), 0.9)
        self.assertLess(weights.of_word("|"), 0.2)


class Reference(unittest.TestCase):
    def pairs(self, first, second):
        return [(pair.first, pair.second, pair.kind) for pair in clear(text(*first), text(*second))]

    def test_clear_pairs(self):
        blue, late = BOATS.replace("white", "blue"), SAILS.replace("rain", "storms")
        copies = [BOATS.replace("white", colour) for colour in ("red", "green")]
        moved = [LAMP, TIDE, RENT]
        rows = (("in order", [BOATS, SAILS], [blue, LAMP, late], [(0, 0, "in place"), (1, 2, "in place")]),
                ("unlike", [BOATS], [LAMP], []),
                ("equal ones are none", [BOATS], [BOATS], []),
                ("two copies leave it open", [BOATS], copies, []),
                ("two copies on the first side", copies, [BOATS], []),
                ("a move", [BOATS, *moved], [*moved, blue], [(0, 3, "moved")]),
                ("short ones only cross", ["Paint the white boats", *moved], [*moved, "Paint the blue boats"],
                 [(0, 3, "crossing")]))
        for name, first, second, expected in rows:
            with self.subTest(name):
                self.assertEqual(self.pairs(first, second), expected)

    def test_candidates_are_complete(self):
        """The index leaves no pair out that comparing all with all finds."""
        chance = random.Random(3)
        paragraphs = genres.make(genres.laws, 4)
        editor = planted.Editor(chance, " ", paragraphs)
        first, second = text(*paragraphs), text(*(editor.share(paragraph, 0.2, 0.7) for paragraph in paragraphs))
        weights = Weights(first, second)
        one, other = (reference.Bags(side, numbers, weights) for side, numbers
                      in zip((first, second), reference.unequal(first, second)))
        everything = {(p, q) for p in one.bags for q in other.bags
                      if reference.bag_likeness(one, other, p, q, weights) >= reference.LEAST_BAG}
        self.assertEqual(set(reference.candidates(one, other, weights)), everything)
        self.assertGreater(len(everything), 20)

    def test_best_total_against_all_assignments(self):
        chance = random.Random(8)
        for rows, columns in ((3, 3), (2, 4), (4, 2), (1, 3)):
            likeness = {(p, q): chance.random() for p in range(rows) for q in range(columns)}
            found = reference.best_total(list(range(rows)), list(range(columns)), likeness)
            self.assertAlmostEqual(sum(likeness[pair] for pair in found), best_of_all(likeness, range(rows), columns))


def best_of_all(likeness, rows, columns, taken=frozenset()):
    if not rows:
        return 0
    rest = [best_of_all(likeness, rows[1:], columns, taken)]
    rest += [likeness[rows[0], q] + best_of_all(likeness, rows[1:], columns, taken | {q})
             for q in range(columns) if q not in taken]
    return max(rest)


class Measures(unittest.TestCase):
    def verdict_of(self, first, second, pairs, records):
        counts, _ = metrics.measure(picture(first, second, pairs, records), clear(first, second))
        return "wrong" if counts["wrong"] else "missed" if counts["missed"] else "right"

    def test_wrongly_paired(self):
        first, second = text(SAILS), text(RENT, SAILS.replace("upper", "old"))
        right, none = by_words(first, second, (0, 1)), []
        aside = [(0, 0), (2, 1), (3, 2), (4, 3), (7, 5), (9, 8)]
        rows = (("its own record", right, [(0, 0, 0, 1), (0, 1, 1, 2)], "right"),
                ("with another in one record, words right", right, [(0, 1, 0, 2)], "right"),
                ("with another in one record, words aside", aside, [(0, 1, 0, 2)], "wrong"),
                ("against the other one", none, [(0, 1, 0, 1), (1, 1, 1, 2)], "wrong"),
                ("deleted and added", none, [(0, 1, 0, 0), (1, 1, 0, 2)], "missed"),
                ("words only, right", right, None, "right"), ("words only, aside", aside, None, "wrong"),
                ("words only, none", none, None, "missed"))
        for name, pairs, records, expected in rows:
            with self.subTest(name):
                self.assertEqual(self.verdict_of(first, second, pairs, records), expected)

    def test_words_that_flow_into_the_next_line(self):
        first = text("the old keeper notes the weather and the", "height of the tide each evening before supper")
        second = text("each day the old keeper notes", "the weather and the height of the tide", "each evening")
        flow = [(0, 2), (1, 3), (2, 4), (3, 5), *((word, word + 2) for word in range(4, 14))]
        one = [(0, 2, 0, 3)]
        rows = (("one stretch", one, flow, 1, "right"), ("words only", None, flow, 1, "right"),
                ("stretches apart", [(0, 1, 0, 1), (1, 2, 1, 3)], flow, 1, "wrong"),
                ("little kept", one, flow[:3], 1, "wrong"), ("not the next line", one, flow, 2, "wrong"))
        for name, records, pairs, partner, expected in rows:
            with self.subTest(name):
                self.assertEqual(picture(first, second, pairs, records).verdict(0, 0, partner), expected)

    def test_the_counterpart_counts_as_well(self):
        first, second = text(RENT, SAILS.replace("upper", "old")), text(SAILS)
        self.assertEqual(self.verdict_of(first, second, [], [(0, 1, 0, 1), (1, 2, 1, 1)]), "wrong")

    def test_woven(self):
        first = text("The mill grinds rye and barley for the three villages of the valley.")
        second = text(RENT)
        scraps = [(7, 4), (10, 5), (11, 8)]                     # "the" "of" "the" against unlike words
        records = [(0, 1, 0, 1)]
        for name, pairs, expected in (("scraps", scraps, 2), ("two islands", scraps[:2], 0), ("none", [], 0),
                                      ("one row", [(1, 1), (2, 2), (3, 3)], 0),
                                      ("weighty", [(1, 1), (3, 3), (5, 5), (9, 9), (12, 12)], 0)):
            with self.subTest(name):
                counts, _ = metrics.measure(picture(first, second, pairs, records), [])
                self.assertEqual(counts["woven"], expected)

    def test_chunks_and_marked_words(self):
        first, second = text("a b c d", "e"), text("a x c", "e f")
        rows = (([], 1, 10), ([(0, 0), (2, 2), (4, 3)], 3, 4), ([(0, 0), (2, 2)], 2, 6))
        for pairs, chunks, marked in rows:
            counts, _ = metrics.measure(picture(first, second, pairs, [(0, 2, 0, 2)]), [])
            self.assertEqual((counts["chunks"], counts["marked"]), (chunks, marked), pairs)
        same = text("a b")
        self.assertEqual(metrics.count_chunks([(0, 0), (1, 1)], same, same), 0)

    def test_cost_of_a_record_is_its_own(self):
        first, second = text("a b", "c d e", "f"), text("a x", "c y e", "f g")
        shown = picture(first, second, [(0, 0), (2, 2), (4, 4), (5, 5)], [(0, 1, 0, 1), (1, 2, 1, 2)])
        self.assertEqual(metrics.cost(shown, (1, 2, 1, 2)), 2 + metrics.CHUNK)
        self.assertEqual(metrics.marked_up(shown, (1, 2, 1, 2)), "c [-d-] {+y+} e")
        crossing = picture(first, second, [(0, 0), (1, 2), (4, 4)], [(0, 1, 0, 1)])
        self.assertEqual(metrics.cost(crossing, (0, 1, 0, 1)), 2 + metrics.CHUNK)


def run():
    if not shutil.which("git"):
        print("git is not installed: its output is tested from samples only")
    tests = unittest.defaultTestLoader.loadTestsFromNames([__name__, "pairing.selftest_answers"])
    result = unittest.TextTestRunner(verbosity=1).run(tests)
    return 0 if result.wasSuccessful() else 1
