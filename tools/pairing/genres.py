"""Texts of several kinds, made from a seed: each is a list of paragraphs."""

import random

SMALL_WORDS = "the of and to a in is for on that by with as be at or from this are not which".split()
PARTS = "ba ber cal den dor fen gar hol ist ken lar mer nov or pel quin ras sol tan ul ver wes yor zan".split()
IDEOGRAPHS = [chr(0x4e00 + 37 * number % 5000) for number in range(600)]
NAMES = "Abel Berta Carl Dora Emil Frida Georg Hanna Ivar Jutta Karl Lena Moritz Nora Otto Paula".split()
BOILERPLATE = ["This provision shall apply without prejudice to the other provisions of this title.",
               "The competent authority shall publish the decision without delay.",
               "Further details shall be laid down by order of the minister."]


class Language:
    """Words of a made-up language; the earlier a word stands in the list, the more often it comes."""

    def __init__(self, chance, size=1500):
        self.chance = chance
        self.words = sorted({"".join(chance.choice(PARTS) for _ in range(chance.randint(2, 3)))
                             for _ in range(size)}, key=lambda word: chance.random())

    def word(self):
        if self.chance.random() < 0.42:
            return self.chance.choice(SMALL_WORDS)
        return self.words[int(len(self.words) * self.chance.random() ** 2.5)]

    def phrase(self, count):
        return " ".join(self.word() for _ in range(count))

    def sentence(self, least=6, most=20):
        text = self.phrase(self.chance.randint(least, most))
        return text[0].upper() + text[1:] + "."

    def paragraph(self, least=1, most=5):
        return " ".join(self.sentence() for _ in range(self.chance.randint(least, most)))


def prose(chance):
    language = Language(chance)
    return [language.paragraph() if chance.random() < 0.8 else language.phrase(chance.randint(1, 4)).title()
            for _ in range(chance.randint(40, 120))]


def table(chance):
    language = Language(chance, 300)
    names = chance.sample(language.words, 60)
    return [f"| {name.title()} {language.words[row % 40]} | {chance.randint(1, 40)} | "
            f"{chance.randint(100, 99999) / 100:.2f} | {chance.choice(['open', 'closed', 'paid'])} |"
            for row, name in enumerate(names)]


def rows(chance):
    language = Language(chance, 600)
    return [f"{1000 + row},{chance.choice(NAMES)} {language.words[chance.randrange(400)].title()},"
            f"{chance.randint(1, 28):02}.{chance.randint(1, 12):02}.2024,{chance.randint(100, 9999) / 100:.2f},"
            f"{language.phrase(2)}" for row in range(chance.randint(60, 160))]


def letters(chance):
    language = Language(chance)
    result = []
    for _ in range(6):
        name, other = chance.sample(NAMES, 2)
        result += [f"{name} {language.words[9].title()}", f"{chance.randint(1, 90)} {language.word().title()} Street",
                   f"{chance.randint(1, 28)} May 2024", f"Dear {other},",
                   *(language.paragraph(1, 4) for _ in range(chance.randint(2, 5))),
                   "Please do not hesitate to write to us.", "Yours faithfully,", name]
    return result


def ideographs(chance):
    def sentence():
        return "".join(IDEOGRAPHS[int(600 * chance.random() ** 2)] for _ in range(chance.randint(6, 24))) + "\u3002"
    return ["".join(sentence() for _ in range(chance.randint(1, 5))) for _ in range(chance.randint(30, 80))]


def minutes(chance):
    language = Language(chance)
    result = ["Minutes", f"Present: {', '.join(chance.sample(NAMES, 8))}"]
    for item in range(1, chance.randint(8, 16)):
        result += [f"{item}. {language.phrase(3).capitalize()}",
                   *(f"{chance.choice(NAMES)}: {language.paragraph(1, 3)}" for _ in range(chance.randint(1, 5))),
                   chance.choice(["Agreed.", "Agreed unanimously.", f"Action: {chance.choice(NAMES)}."])]
    return result


def laws(chance):
    language = Language(chance, 400)
    result = []
    for article in range(1, chance.randint(15, 35)):
        result.append(f"Article {article}")
        for number in range(1, chance.randint(2, 5)):
            result.append(f"({number}) {language.sentence(10, 30)} {chance.choice(BOILERPLATE)}"
                          if chance.random() < 0.5 else f"({number}) {language.sentence(12, 40)}")
        if chance.random() < 0.4:
            result.append(chance.choice(BOILERPLATE))
    return result


# Name, maker, what parts its units, whether blank lines stand between paragraphs.
GENRES = (("table", table, " ", False), ("CSV rows", rows, ",", False), ("letters", letters, " ", True),
          ("CJK", ideographs, "", False), ("minutes", minutes, " ", True), ("laws", laws, " ", False))


def make(maker, seed):
    return maker(random.Random(seed))
