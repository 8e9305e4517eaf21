"""Which changed paragraphs have a clear counterpart: an exact, slow search to judge others by.

The likeness of two paragraphs is the mean of two Dice figures: of their bags of weighted words, and of
their longest common row of words. The best total of one-to-one pairs is found for each group of
paragraphs that could be partners; order plays no part. A pair of it is clear when its likeness is CLEAR
or more and no other paragraph comes within MARGIN of it for either partner. Paragraphs of fewer than
SHORT words prove nothing. A clear pair that crosses heavier pairs or equal paragraphs cannot be shown in
order: it is a move when it has MOVE_WORDS and a likeness of MOVED, else only crossing, and counted apart."""

import collections

from pairing.text import common_length, increasing_chain, runs

CLEAR = 0.5
MARGIN = 0.1
SHORT = 3
LEAST_BAG = 0.35   # below it the mean hardly reaches CLEAR - MARGIN
EXACT_GROUP = 60   # above it, as in tables of like rows, only mutual bests are taken

MOVED = 0.8
MOVE_WORDS = 10

# kind: "in place", "moved" or "crossing".
Pair = collections.namedtuple("Pair", "first second likeness kind")


class Bags:
    """The paragraphs of one side that stand on the other side less or more often."""

    def __init__(self, text, numbers, weights):
        self.rows = {number: runs(text.paragraphs[number]) for number in numbers}
        self.rows = {number: row for number, row in self.rows.items() if len(row) >= SHORT}
        self.bags = {number: collections.Counter(row) for number, row in self.rows.items()}
        self.totals = {number: sum(weights.of_run(run) * count for run, count in bag.items())
                       for number, bag in self.bags.items()}


def unequal(first, second):
    """Numbers of the paragraphs of each side whose text the other has not as often."""
    counts = [collections.Counter(text.paragraphs) for text in (first, second)]
    return [[number for number, paragraph in enumerate(text.paragraphs)
             if paragraph.strip() and counts[0][paragraph] != counts[1][paragraph]]
            for text in (first, second)]


def candidates(one, other, weights):
    """Pairs whose bags have a likeness of LEAST_BAG, none left out. Such a pair shares a run beside the
    lightest ones of the first side, since its common weight is LEAST_BAG / 2 of that side or more."""
    index = collections.defaultdict(list)
    for number, bag in other.bags.items():
        for run in bag:
            index[run].append(number)
    for number, bag in one.bags.items():
        left, seen = one.totals[number], set()
        for run in sorted(bag, key=lambda run: (-weights.of_run(run), run)):
            if left < LEAST_BAG / 2 * one.totals[number]:
                break
            seen.update(index[run])
            left -= weights.of_run(run) * bag[run]
        for partner in sorted(seen):
            if bag_likeness(one, other, number, partner, weights) >= LEAST_BAG:
                yield number, partner


def bag_likeness(one, other, first, second, weights):
    small, large = one.bags[first], other.bags[second]
    if len(small) > len(large):
        small, large = large, small
    common = sum(weights.of_run(run) * min(count, large[run]) for run, count in small.items() if run in large)
    return 2 * common / (one.totals[first] + other.totals[second])


def likenesses(first, second, weights):
    numbers = unequal(first, second)
    one, other = Bags(first, numbers[0], weights), Bags(second, numbers[1], weights)
    found = {}
    for p, q in candidates(one, other, weights):
        row, column = one.rows[p], other.rows[q]
        order = 2 * common_length(row, column) / (len(row) + len(column))
        found[p, q] = (bag_likeness(one, other, p, q, weights) + order) / 2
    return found


def groups(edges):
    """Connected paragraphs as lists of edges."""
    root = {}

    def find(node):
        while root.setdefault(node, node) != node:
            root[node] = root[root[node]]
            node = root[node]
        return node

    for p, q in edges:
        root[find((0, p))] = find((1, q))
    parts = collections.defaultdict(list)
    for p, q in edges:
        parts[find((0, p))].append((p, q))
    return list(parts.values())


def best_total(rows, columns, likeness):
    """One-to-one pairs of the greatest total likeness (Hungarian method with potentials)."""
    flip = len(rows) > len(columns)
    if flip:
        rows, columns = columns, rows
    cost = [[-likeness.get((q, p) if flip else (p, q), 0.0) for q in columns] for p in rows]
    width = len(columns)
    up, vp, owner = [0.0] * (len(rows) + 1), [0.0] * (width + 1), [0] * (width + 1)
    for row in range(1, len(rows) + 1):
        owner[0] = row
        augment(cost, up, vp, owner)
    pairs = [(rows[owner[j] - 1], columns[j - 1]) for j in range(1, width + 1) if owner[j]]
    return {(q, p) if flip else (p, q) for p, q in pairs}


def augment(cost, up, vp, owner):
    width = len(vp) - 1
    least, way, used = [float("inf")] * (width + 1), [0] * (width + 1), [False] * (width + 1)
    column = 0
    while owner[column]:
        used[column] = True
        row, step, following = owner[column], float("inf"), 0
        for j in range(1, width + 1):
            if used[j]:
                continue
            reduced = cost[row - 1][j - 1] - up[row] - vp[j]
            if reduced < least[j]:
                least[j], way[j] = reduced, column
            if least[j] < step:
                step, following = least[j], j
        for j in range(width + 1):
            if used[j]:
                up[owner[j]] += step
                vp[j] -= step
            else:
                least[j] -= step
        column = following
    while column:
        owner[column] = owner[way[column]]
        column = way[column]


def clear_pairs(first, second, weights):
    likeness = likenesses(first, second, weights)
    best = {}
    for (p, q), value in likeness.items():
        for node, partner in (((0, p), q), ((1, q), p)):
            best.setdefault(node, []).append((value, partner))
    for values in best.values():
        values.sort(reverse=True)

    def clear(p, q):
        if likeness[p, q] < CLEAR:
            return False
        return all(values[0][1] == partner and (len(values) == 1 or values[1][0] <= values[0][0] - MARGIN)
                   for values, partner in ((best[0, p], q), (best[1, q], p)))

    chosen = []
    for edges in groups(likeness):
        rows, columns = sorted({p for p, _ in edges}), sorted({q for _, q in edges})
        exact = len(rows) <= EXACT_GROUP and len(columns) <= EXACT_GROUP
        total = best_total(rows, columns, likeness) if exact else set(edges)
        chosen.extend((p, q) for p, q in edges if (p, q) in total and clear(p, q))
    return with_crossing(first, second, sorted(chosen), likeness, weights)


def with_crossing(first, second, chosen, likeness, weights):
    def weight(number):
        return weights.of_words(first.words[first.first_word[number]:first.first_word[number + 1]])

    counts = [collections.Counter(text.paragraphs) for text in (first, second)]
    place = {paragraph: number for number, paragraph in enumerate(second.paragraphs)}
    equal = [(number, place[paragraph]) for number, paragraph in enumerate(first.paragraphs)
             if counts[0][paragraph] == counts[1][paragraph] == 1]
    both = chosen + equal
    chain = increasing_chain([(p, q, weight(p) + 0.001) for p, q in both])

    def kind(k, p, q):
        if k in chain:
            return "in place"
        long = min(len(first.word_span(p)), len(second.word_span(q))) >= MOVE_WORDS
        return "moved" if long and likeness[p, q] >= MOVED else "crossing"

    return [Pair(p, q, likeness[p, q], kind(k, p, q)) for k, (p, q) in enumerate(chosen)]
