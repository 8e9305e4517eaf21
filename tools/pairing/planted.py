"""Edits made from a seed, so that it is known which paragraph became which."""

import collections
import random
import re

from pairing import genres
from pairing.inputs import Case, Truth, histories, unwrapped
from pairing.text import common_length, runs

ROUNDS = 10        # cases of each kind and form
MOVE_WORDS = 10    # paragraphs of fewer words are not expected to be seen as moved
FAR = 8            # paragraphs that a moved one passes at least
ALIKE = 0.5        # share of common words from which a new paragraph has a counterpart
HARDLY_ALIKE = 0.34  # share of common words below which nobody can tell the origin: "Fixed" made "Added"
STILL_MOVED = 0.85   # share of common words that an edited move keeps
ARTICLE = re.compile(r"^Article \d+$")

# A paragraph of the Modified, and the numbers of those of the Original that it came from.
Item = collections.namedtuple("Item", "text origins moved")


class Editor:
    """Changes units of a text: words, the fields of a row, or characters where no blanks part words."""

    def __init__(self, chance, separator, vocabulary):
        self.chance, self.separator = chance, separator
        self.vocabulary = [unit for text in vocabulary for unit in self.units(text) if unit] or ["new"]

    def units(self, text):
        return text.split(self.separator) if self.separator else list(text)

    def edit(self, text, count):
        units = self.units(text)
        for _ in range(count):
            place = self.chance.randrange(len(units))
            action = 0 if self.separator == "," else self.chance.random()
            if action < 0.6:
                units[place] = self.chance.choice(self.vocabulary)
            elif action < 0.8:
                units.insert(place, self.chance.choice(self.vocabulary))
            elif len(units) > 1:
                del units[place]
        return self.separator.join(units)

    def light(self, text):
        return self.edit(text, self.chance.randint(1, max(1, min(4, len(self.units(text)) // 4))))

    def share(self, text, least, most):
        return self.edit(text, max(1, round(len(self.units(text)) * self.chance.uniform(least, most))))

    def split(self, text):
        """Two halves at a sentence's end, or None."""
        places = [found.end() for found in re.finditer(r"[.!?\u3002] ?", text)]
        places = [place for place in places if len(text[:place].split()) >= 8 and len(text[place:].split()) >= 8]
        if not places:
            return None
        place = self.chance.choice(places)
        return text[:place].rstrip(), text[place:]


def likeness(first, second):
    rows = [runs(text) or text.split() for text in (first, second)]
    return 2 * common_length(*rows) / max(len(rows[0]) + len(rows[1]), 1)


def unlike(paragraphs, others, chance):
    """Those of the others, each once and in any order, that are like none of the paragraphs: a new
    paragraph must not have a counterpart by accident, as copies of licence lines would."""
    bags = [frozenset(runs(paragraph)) for paragraph in paragraphs]
    fresh = [other for other in sorted(set(others)) if other.strip()
             and all(2 * len(bag & own) < ALIKE * (len(bag) + len(own)) or not own
                     for own in [frozenset(runs(other))] for bag in bags)]
    chance.shuffle(fresh)
    return fresh


def mixed(editor, paragraphs, foreign):
    return changed(editor, paragraphs, foreign, light=0.2, heavy=0.06, gone=0.05, new=0.05, other=0.01)


def in_place(editor, paragraphs, foreign):
    return changed(editor, paragraphs, foreign, light=0.2, heavy=0.04)


def renewed(editor, paragraphs, foreign):
    return changed(editor, paragraphs, foreign, light=0.2, heavy=0.05, gone=0.15, new=0.15, other=0.15)


def changed(editor, paragraphs, foreign, **rates):
    chance, items = editor.chance, []
    fresh = unlike(paragraphs, foreign, chance)
    for number, text in enumerate(paragraphs):
        kind = chance.choices(["same", *rates], [1 - sum(rates.values()), *rates.values()])[0]
        own = frozenset([number])
        if kind in ("new", "other") and fresh:
            items.append(Item(fresh.pop(), frozenset(), False))
        if kind == "other":
            continue
        if kind == "light":
            items.append(Item(editor.light(text), own, False))
        elif kind == "heavy":
            items.append(Item(editor.share(text, 0.25, 0.45), own, False))
        elif kind != "gone":
            items.append(Item(text, own, False))
    return items


def splits_and_joins(editor, paragraphs, _):
    chance, items, number = editor.chance, [], 0
    while number < len(paragraphs):
        text, own = paragraphs[number], frozenset([number])
        kind = chance.random()
        halves = editor.split(text) if kind < 0.25 else None
        following = paragraphs[number + 1] if number + 1 < len(paragraphs) else ""
        if halves:
            items.extend(Item(half, own, False) for half in halves)
        elif 0.25 <= kind < 0.4 and len(text.split()) >= 8 and len(following.split()) >= 8:
            items.append(Item(text + " " + following, own | {number + 1}, False))
            number += 1
        else:
            items.append(Item(editor.light(text) if kind > 0.85 else text, own, False))
        number += 1
    return items


def moves(editor, paragraphs, _):
    """Single paragraphs and rows of two carried far away, half of them with a tenth to a fifth edited."""
    chance = editor.chance
    items = [Item(editor.light(text) if chance.random() < 0.1 else text, frozenset([number]), False)
             for number, text in enumerate(paragraphs)]
    counts = collections.Counter(paragraphs)
    fit = [number for number, text in enumerate(paragraphs)
           if len(text.split()) >= MOVE_WORDS and counts[text] == 1]
    for number in chance.sample(fit, min(len(fit), max(1, len(paragraphs) // 25))):
        place = next(k for k, item in enumerate(items) if item.origins == {number})
        targets = [k for k in range(len(items)) if abs(k - place) > FAR]
        if not targets:
            continue
        text = paragraphs[number]
        edited = editor.share(text, 0.1, 0.2)
        if chance.random() < 0.5 and likeness(text, edited) >= STILL_MOVED:
            text = edited
        del items[place]
        items.insert(chance.choice(targets), Item(text, frozenset([number]), True))
    return items


def renumbered(items):
    """Articles are counted anew, as they are where one comes in or goes."""
    number = 0
    for item in items:
        if ARTICLE.match(item.text):
            number += 1
            item = item._replace(text=f"Article {number}")
        yield item


def case(name, title, paragraphs, items, spaced):
    step = 2 if spaced else 1
    items = [item for item in items if item.text.strip()]
    pairs = {(step * origin, step * place) for place, item in enumerate(items) for origin in item.origins}
    moved = {(step * origin, step * place) for place, item in enumerate(items) if item.moved
             for origin in item.origins}
    doubtful = {(step * origin, step * place) for place, item in enumerate(items) for origin in item.origins
                if len(item.origins) == 1 and likeness(paragraphs[origin], item.text) < HARDLY_ALIKE}
    sides = [("\n" * step).join(texts) + "\n" for texts in (paragraphs, [item.text for item in items])]
    return Case(name, title, *sides, Truth(pairs - doubtful, moved, doubtful))


KINDS = (("mixed", mixed), ("renewed", renewed), ("splits and joins", splits_and_joins), ("moves", moves))


def bases(folder):
    """Paragraphs of real texts, or of made ones where there are none."""
    found = []
    for _, code, texts in histories(folder) if folder else ():
        paragraphs = [line for line in unwrapped(texts[-1]).split("\n") if line.strip()]
        if not code and 30 <= len(paragraphs) <= 400:
            found.append(paragraphs)
    return found if len(found) > 4 else [genres.make(genres.prose, seed) for seed in range(8)]


def planted_cases(folder, seed):
    texts = bases(folder)
    for kind, edit in KINDS:
        for number in range(ROUNDS):
            chance = random.Random(f"{seed} {kind} {number}")
            paragraphs, foreign = chance.sample(texts, 2)
            editor = Editor(chance, " ", foreign)
            items = edit(editor, paragraphs, foreign)
            for form, spaced in (("text", True), ("documents", False)):
                yield case(f"{kind} ({form})", f"{kind} {number}", paragraphs, items, spaced)


def in_place_cases(seed):
    """Nothing but edits in place, in texts of every kind."""
    for name, maker, separator, spaced in (*genres.GENRES, ("prose", genres.prose, " ", True)):
        for number in range(ROUNDS // 2):
            chance = random.Random(f"{seed} in place {name} {number}")
            paragraphs = maker(chance)
            editor = Editor(chance, separator, maker(chance))
            yield case("in place", f"{name} {number}", paragraphs, in_place(editor, paragraphs, []), spaced)


def genre_cases(seed):
    yield from in_place_cases(seed)
    for name, maker, separator, spaced in genres.GENRES:
        for number in range(ROUNDS):
            chance = random.Random(f"{seed} {name} {number}")
            paragraphs, foreign = maker(chance), maker(chance)
            editor = Editor(chance, separator, foreign)
            items = mixed(editor, paragraphs, foreign)
            items = list(renumbered(items)) if name == "laws" else items
            yield case(name, f"{name} {number}", paragraphs, items, spaced)
