"""Texts as paragraphs and words, and how much words weigh.

All of it is written anew, slow and plain, so that it can judge the engine without sharing its faults."""

import bisect
import collections
import math
import re

# Blanks as the C locale has them: the yardsticks part words there, and so must the counts.
WORD = re.compile(r"[^ \t\n\v\f\r]+")
RUN = re.compile("[\u0e00-\u0e7f\u3040-\u30ff\u3400-\u9fff\uf900-\ufaff]|"
                 "(?:(?![\u0e00-\u0e7f\u3040-\u30ff\u3400-\u9fff\uf900-\ufaff])[^\\W_])+")
ODD = re.compile(r"[\x00-\x08\x0b-\x1f\x7f\x85\u2028\u2029]")
SMALL = 0.25  # weight of a run of at most three letters
SIGNS = 0.1   # weight of a word without letters and digits


def clean(content):
    """Line ends as one character and no control characters, which the tools treat each in its way."""
    content = content.replace("\r\n", "\n").replace("\r", "\n").lstrip("\ufeff")
    content = ODD.sub(" ", content)
    return content if content.endswith("\n") else content + "\n"


def runs(paragraph):
    return RUN.findall(paragraph.lower())


class Text:
    """One side of a compare. Words are numbered through; `first_word[p]` is the first of paragraph p."""

    def __init__(self, content):
        self.content = content
        self.paragraphs = content.split("\n")
        self.words, self.first_word = [], [0]
        for paragraph in self.paragraphs:
            self.words.extend(WORD.findall(paragraph))
            self.first_word.append(len(self.words))

    def paragraph_of(self, word):
        return bisect.bisect_right(self.first_word, word) - 1

    def word_span(self, paragraph):
        return range(self.first_word[paragraph], self.first_word[paragraph + 1])

    def is_blank(self, paragraph):
        return self.first_word[paragraph] == self.first_word[paragraph + 1]


class Weights:
    """Rare words weigh 1, words of every paragraph and scraps near to nothing."""

    def __init__(self, first, second):
        self.holders = collections.Counter()
        count = 0
        for text in (first, second):
            for paragraph in text.paragraphs:
                self.holders.update(set(runs(paragraph)))
                count += bool(paragraph.strip())
        self.count = max(count, 16)
        self.known = {}

    def of_run(self, run):
        held = max(self.holders[run], 1)
        weight = math.log2(1 + self.count / held) / math.log2(1 + self.count)
        small = len(run) <= 3 and ord(run[0]) < 0x0e00
        return weight * (SMALL if small else 1)

    def of_word(self, word):
        if word not in self.known:
            self.known[word] = sum(self.of_run(run) for run in runs(word)) or SIGNS
        return self.known[word]

    def of_words(self, words):
        return sum(self.of_word(word) for word in words)


def common_length(first, second):
    """Length of the longest common subsequence, a row of the table at a time as bits."""
    places = collections.defaultdict(int)
    for place, item in enumerate(second):
        places[item] |= 1 << place
    full = (1 << len(second)) - 1
    row = full
    for item in first:
        hit = row & places.get(item, 0)
        row = ((row + hit) | (row - hit)) & full
    return len(second) - bin(row).count("1")


def increasing_chain(pairs):
    """The heaviest chain of (first, second, weight) that increases on both sides, as a set of indexes."""
    order = sorted(range(len(pairs)), key=lambda k: (pairs[k][0], -pairs[k][1]))
    size = max((pair[1] for pair in pairs), default=0) + 2
    tree = [(0.0, -1)] * (size + 1)
    before = {}
    for k in order:
        best, place = (0.0, -1), pairs[k][1]
        while place > 0:
            best = max(best, tree[place])
            place -= place & -place
        before[k] = best[1]
        total, place = (best[0] + pairs[k][2], k), pairs[k][1] + 1
        while place <= size:
            tree[place] = max(tree[place], total)
            place += place & -place
    chain, k = set(), max(tree)[1]
    while k >= 0:
        chain.add(k)
        k = before[k]
    return chain
