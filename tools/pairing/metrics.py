"""What is counted of a comparer on one pair of texts.

wrong    changed paragraphs with a clear counterpart (reference.py) that are shown against another one:
         their changed stretch holds paragraphs of the other side but not the counterpart; or most of
         their unmarked words stand in another paragraph (ASIDE of their weight or more). A wrapped line
         that keeps REFLOWED of its weight, most of it in the line next to its counterpart, is right if all
         stand in one stretch: words flowed from line to line.
         Pairs that cross others and are no moves are counted apart (crossing).
missed   such paragraphs whose stretch has nothing on the other side: shown as deleted and added.
woven    paragraphs of LONG words and more, of either side, of which less than SCRAPS of the weight stays
         unmarked, and that in ISLANDS separate islands or more. An island is a row of unmarked words
         unbroken on both sides.
chunks   stretches of marked words between two unmarked ones, paragraph breaks not counting as words. A word
         marked only for the blanks behind it is none: the other tools do not tell a change of blanks.
marked   marked words of both sides."""

import collections

ASIDE = 0.15
REFLOWED = 0.5
LONG = 8
SCRAPS = 0.25
ISLANDS = 3
CHUNK = 2.5  # words that a chunk is worth to the reader's eye
KEYS = ("clear", "wrong", "crossing", "wrong_crossing", "missed", "woven", "chunks", "marked", "records")

# weight: the greater, the worse; lines: what to read.
Finding = collections.namedtuple("Finding", "kind where weight lines")


class Picture:
    """One comparer's answer with what the metrics ask of it: who shares unmarked words with whom."""

    def __init__(self, shown, first, second, weights):
        self.shown, self.first, self.second, self.weights = shown, first, second, weights
        self.shared = (collections.defaultdict(collections.Counter), collections.defaultdict(collections.Counter))
        self.islands = (collections.Counter(), collections.Counter())
        before = None
        for i, j in shown.pairs:
            p, q = first.paragraph_of(i), second.paragraph_of(j)
            weight = weights.of_word(first.words[i])
            self.shared[0][p][q] += weight
            self.shared[1][q][p] += weight
            unbroken = before == (i - 1, j - 1)
            for side, text, word, paragraph in ((0, first, i, p), (1, second, j, q)):
                if not unbroken or word == text.first_word[paragraph]:
                    self.islands[side][paragraph] += 1
            before = i, j
        self.record_of = self.find_records()

    def find_records(self):
        found = ({}, {})
        for number, (begin, end, other_begin, other_end) in enumerate(self.shown.records or ()):
            found[0].update(dict.fromkeys(range(begin, end), number))
            found[1].update(dict.fromkeys(range(other_begin, other_end), number))
        return found

    def weight(self, side, paragraph):
        text = (self.first, self.second)[side]
        return self.weights.of_words(text.words[text.first_word[paragraph]:text.first_word[paragraph + 1]])

    def main_partner(self, side, paragraph):
        """The paragraph that holds most of the unmarked words, if they are ASIDE of the weight."""
        shared = self.shared[side].get(paragraph)
        if not shared:
            return None
        weight, partner = max((weight, -partner) for partner, weight in shared.items())
        return -partner if weight >= ASIDE * self.weight(side, paragraph) else None

    def opposite(self, side, paragraph):
        """Paragraphs of the other side in the same changed stretch, blank ones apart; None without one."""
        number = self.record_of[side].get(paragraph)
        if number is None:
            return None
        ranges = self.shown.records[number]
        text = (self.second, self.first)[side]
        span = range(*(ranges[2:] if side == 0 else ranges[:2]))
        return [other for other in span if not text.is_blank(other)]

    def verdict(self, side, paragraph, partner):
        """right, wrong or missed: how a paragraph is shown whose counterpart is known."""
        main = self.main_partner(side, paragraph)
        if self.shown.records is not None:
            others = self.opposite(side, paragraph)
            if others is not None and partner not in others:
                return "wrong" if others else "missed"
        elif main is None:
            return "missed"
        return "right" if main in (None, partner) or self.flowed(side, paragraph, partner, main) else "wrong"

    def flowed(self, side, paragraph, partner, main):
        """Whether words went over into a line beside the counterpart, within one stretch."""
        number = self.record_of[1 - side].get(partner)
        if number != self.record_of[1 - side].get(main) or number != self.record_of[side].get(paragraph):
            return False
        kept = sum(self.shared[side][paragraph].values())
        return abs(partner - main) == 1 and kept >= REFLOWED * self.weight(side, paragraph)


def is_woven(picture, side, paragraph):
    text = (picture.first, picture.second)[side]
    if len(text.word_span(paragraph)) < LONG or picture.islands[side][paragraph] < ISLANDS:
        return False
    return sum(picture.shared[side][paragraph].values()) < SCRAPS * picture.weight(side, paragraph)


def count_chunks(pairs, first, second):
    chunks, i, j = 0, -1, -1
    for following in [*pairs, (len(first.words), len(second.words))]:
        chunks += following != (i + 1, j + 1)
        i, j = following
    return chunks


def judge_pairs(picture, clear):
    for pair in clear:
        verdicts = {picture.verdict(0, pair.first, pair.second), picture.verdict(1, pair.second, pair.first)}
        verdict = "wrong" if "wrong" in verdicts else "missed" if "missed" in verdicts else "right"
        yield pair, verdict


def measure(picture, clear):
    """The counts of KEYS, and the findings worth reading."""
    counts = dict.fromkeys(KEYS, 0)
    findings = []
    first, second = picture.first, picture.second
    for pair, verdict in judge_pairs(picture, clear):
        crossing = pair.kind == "crossing"
        counts["crossing" if crossing else "clear"] += 1
        if verdict == "right" or crossing and verdict == "missed":
            continue
        counts["wrong_crossing" if crossing else verdict] += 1
        findings.append(pair_finding(picture, pair, verdict))
    for side, text in enumerate((first, second)):
        for paragraph in list(picture.shared[side]):
            if is_woven(picture, side, paragraph):
                counts["woven"] += 1
                findings.append(woven_finding(picture, side, paragraph))
    counts["chunks"] = count_chunks(picture.shown.pairs, first, second)
    counts["marked"] = len(first.words) + len(second.words) - 2 * len(picture.shown.pairs)
    counts["records"] = len(picture.shown.records or ())
    return counts, findings


def pair_finding(picture, pair, verdict):
    lines = [f"original: {picture.first.paragraphs[pair.first]}",
             f"counterpart: {picture.second.paragraphs[pair.second]}"]
    for side, paragraph, name in ((0, pair.first, "original"), (1, pair.second, "counterpart")):
        others = picture.opposite(side, paragraph)
        others = others if others is not None else [picture.main_partner(side, paragraph)]
        text = (picture.second, picture.first)[side]
        lines.append(f"{name} is shown against: " +
                     " / ".join(text.paragraphs[other] for other in others if other is not None))
    return Finding(f"{verdict} ({pair.kind})", (pair.first + 1, pair.second + 1), pair.likeness, lines)


def woven_finding(picture, side, paragraph):
    texts = (picture.first, picture.second)
    partners = sorted(picture.shared[side][paragraph])
    share = sum(picture.shared[side][paragraph].values()) / picture.weight(side, paragraph)
    spans = [(paragraph, paragraph + 1), (partners[0], partners[-1] + 1)]
    ranges = (*spans[side], *spans[1 - side])
    lines = [f"{'modified' if side else 'original'}: {texts[side].paragraphs[paragraph]}",
             f"as marked: {marked_up(picture, ranges)}"]
    return Finding("woven", (paragraph + 1, *(number + 1 for number in partners)), 1 - share, lines)


def inner_pairs(picture, ranges):
    """The unmarked words between two ranges of paragraphs, and the words of both as ranges."""
    first, second = picture.first, picture.second
    begin, end = first.first_word[ranges[0]], first.first_word[ranges[1]]
    other, other_end = second.first_word[ranges[2]], second.first_word[ranges[3]]
    pairs = [(i, j) for i, j in picture.shown.pairs if begin <= i < end and other <= j < other_end]
    return pairs, range(begin, end), range(other, other_end)


def marked_up(picture, ranges):
    """Both texts in one, as [-deleted-] and {+added+}."""
    pairs, words, others = inner_pairs(picture, ranges)
    parts, i, j = [], words.start, others.start
    for following in [*pairs, (words.stop, others.stop)]:
        if following[0] > i:
            parts.append("[-" + " ".join(picture.first.words[i:following[0]]) + "-]")
        if following[1] > j:
            parts.append("{+" + " ".join(picture.second.words[j:following[1]]) + "+}")
        if following[0] < words.stop:
            parts.append(picture.first.words[following[0]])
        i, j = following[0] + 1, following[1] + 1
    return " ".join(parts)


def cost(picture, ranges):
    """Marked words, and what the eye's jumps to the chunks are worth in words."""
    pairs, words, others = inner_pairs(picture, ranges)
    chunks, before = 0, (words.start - 1, others.start - 1)
    for following in [*pairs, (words.stop, others.stop)]:
        chunks += following != (before[0] + 1, before[1] + 1)
        before = following
    return len(words) + len(others) - 2 * len(pairs) + CHUNK * chunks


def dearer_records(picture, yardstick, most):
    """The records that cost the reader more than the same paragraphs do with a yardstick."""
    found = []
    for ranges in picture.shown.records:
        more = cost(picture, ranges) - cost(yardstick, ranges)
        if more > 0:
            found.append((more, ranges))
    for more, ranges in sorted(found, reverse=True)[:most]:
        yield Finding("dearer than git", (ranges[0] + 1, ranges[2] + 1), more,
                      [f"ours: {marked_up(picture, ranges)}", f"git: {marked_up(yardstick, ranges)}"])


def shown_pairs(picture):
    """Pairs of unequal paragraphs that a comparer shows against each other."""
    first, second = picture.first, picture.second
    found = set()
    for ranges in picture.shown.records or ():
        sides = [[number for number in range(*span) if not text.is_blank(number)]
                 for text, span in ((first, ranges[:2]), (second, ranges[2:]))]
        if len(sides[0]) == len(sides[1]) == 1:
            found.add((sides[0][0], sides[1][0]))
    for p in picture.shared[0]:
        if (q := picture.main_partner(0, p)) is not None:
            found.add((p, q))
    for q in picture.shared[1]:
        if (p := picture.main_partner(1, q)) is not None:
            found.add((p, q))
    return {(p, q) for p, q in found if first.paragraphs[p].split() != second.paragraphs[q].split()}


def score_truth(picture, truth):
    """Shown pairs and moves against the planted ones: numbers of right, shown and true ones."""
    first, second = picture.first, picture.second
    moved_lines = ({p for p, _ in truth.moves}, {q for _, q in truth.moves})
    expected = {(p, q) for p, q in truth.pairs - truth.moves
                if first.paragraphs[p].split() != second.paragraphs[q].split()}
    shown = {(p, q) for p, q in shown_pairs(picture) - truth.doubtful
             if not (p in moved_lines[0] and q in moved_lines[1] and (p, q) in truth.pairs)}
    moves = {(p, q) for begin, end, other, other_end in picture.shown.moves
             for p, q in aligned(picture, range(begin, end), range(other, other_end))}
    return {"right": len(shown & expected), "shown": len(shown), "true": len(expected),
            "moves_found": len(moves & truth.moves), "moves_true": len(truth.moves),
            "moves_false": len(moves - truth.pairs), "missing": sorted(expected - shown),
            "false": sorted(shown - expected), "lost_moves": sorted(truth.moves - moves)}


def aligned(picture, span, other):
    """The paragraphs of a move, blank ones apart, by their order."""
    return zip([p for p in span if not picture.first.is_blank(p)],
               [q for q in other if not picture.second.is_blank(q)])
