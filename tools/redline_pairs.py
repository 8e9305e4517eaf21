"""Seeded pairs of documents with labelled edits, for `check_redlines.py`.

A document is a value, so that an edit has a name; it is written as Markdown, which pandoc makes into
a word-processor document. So each pair has styles, numbering, notes, tables, formulas and pictures as
that program lays them out, or, passed through LibreOffice, as that one does."""

import dataclasses
import pathlib
import random
import struct
import zlib

WORDS = ("harbour lamp keeper tide sails rain morning quay rope ledger visitor winter boat paint gate "
         "of the a in and to with 12 340 2026").split()


@dataclasses.dataclass
class Paragraph:
    words: list
    style: str = ""      # "#", "-" or "1."
    bold: int = -1       # the word that is
    note: str = ""
    link: str = ""
    formula: str = ""
    picture: int = 0
    hard_break: bool = False


@dataclasses.dataclass
class Table:
    rows: list           # of cells, each a list of words


class Story:
    def __init__(self, seed):
        self.chance = random.Random(seed)
        self.blocks = []
        for _ in range(self.chance.randint(4, 12)):
            self.blocks.append(self.table() if self.chance.random() < 0.15 else self.paragraph())
        self.blocks.append(self.paragraph())

    def sentence(self, least, most):
        return [self.chance.choice(WORDS) for _ in range(self.chance.randint(least, most))]

    def paragraph(self):
        made = Paragraph(self.sentence(3, 25), self.chance.choice(["", "", "", "", "#", "-", "1."]))
        luck = self.chance.random
        made.bold = self.chance.randrange(len(made.words)) if luck() < 0.3 else -1
        made.note = " ".join(self.sentence(2, 6)) if luck() < 0.15 else ""
        made.link = "https://example.org/" + self.chance.choice("abc") if luck() < 0.1 else ""
        made.formula = self.chance.choice(["x^2", "\\frac{a}{b}"]) if luck() < 0.1 else ""
        made.picture = self.chance.randint(1, 3) if luck() < 0.1 else 0
        return made

    def table(self):
        columns = self.chance.randint(1, 4)
        return Table([[self.sentence(1, 4) for _ in range(columns)]
                      for _ in range(self.chance.randint(2, 5))])

    # ---- edits ----

    def paragraphs(self):
        return [block for block in self.blocks if isinstance(block, Paragraph)]

    def edit(self, name):
        """False where the document has no place for it."""
        return EDITS[name](self) is not False

    def word(self):
        words = self.chance.choice(self.paragraphs()).words
        at = self.chance.randrange(len(words))
        kind = self.chance.randrange(3)
        if kind == 0:
            words[at] = self.chance.choice(["changed", "wholly", "tides"])
        elif kind == 1 or len(words) < 3:
            words.insert(at, "added")
        else:
            words.pop(at)

    def number(self):
        words = self.chance.choice(self.paragraphs()).words
        words[self.chance.randrange(len(words))] = str(self.chance.randint(1, 9999))

    def more(self):
        self.blocks.insert(self.chance.randrange(len(self.blocks)), self.paragraph())

    def less(self):
        if len(self.blocks) < 3:
            return False
        self.blocks.pop(self.chance.randrange(len(self.blocks) - 1))

    def split(self):
        at = self.chance.randrange(len(self.blocks))
        block = self.blocks[at]
        if not isinstance(block, Paragraph) or len(block.words) < 6:
            return False
        half = len(block.words) // 2
        tail = Paragraph(block.words[half:], block.style)
        block.words = block.words[:half]
        block.bold = -1
        self.blocks.insert(at + 1, tail)

    def join(self):
        for at in range(len(self.blocks) - 1):
            first, second = self.blocks[at:at + 2]
            if isinstance(first, Paragraph) and isinstance(second, Paragraph) and not second.note:
                first.words += second.words
                del self.blocks[at + 1]
                return True
        return False

    def move(self):
        if len(self.blocks) < 4:
            return False
        block = self.blocks.pop(self.chance.randrange(len(self.blocks) - 1))
        self.blocks.insert(self.chance.randrange(len(self.blocks)), block)

    def with_table(self, change):
        tables = [block for block in self.blocks if isinstance(block, Table)]
        return bool(tables) and change(self.chance.choice(tables).rows) is not False

    def row(self):
        return self.with_table(lambda rows: rows.insert(
            self.chance.randrange(1, len(rows) + 1), [self.sentence(1, 3) for _ in rows[0]]))

    def row_less(self):
        return self.with_table(lambda rows: len(rows) > 2 and bool(rows.pop()))

    def column(self):
        def widen(rows):
            for row in rows:
                row.append(self.sentence(1, 2))
        return self.with_table(widen)

    def cell(self):
        def fill(rows):
            row = self.chance.choice(rows)
            row[self.chance.randrange(len(row))] = self.sentence(1, 3)
        return self.with_table(fill)

    def new_table(self):
        self.blocks.insert(self.chance.randrange(len(self.blocks)), self.table())

    def toggle(self, field, value):
        block = self.chance.choice(self.paragraphs())
        setattr(block, field, value if not getattr(block, field) else type(value)())

    # ---- as Markdown ----

    def markdown(self, picture_folder):
        out, notes, before = [], [], ""
        for block in self.blocks:
            style = "table" if isinstance(block, Table) else block.style
            if before and style and before != style and "table" not in (before, style):
                out.append("<!-- -->")
            out.append(self.table_text(block) if style == "table"
                       else self.paragraph_text(block, picture_folder, notes))
            before = style
        return "\n\n".join(out + notes) + "\n"

    @staticmethod
    def paragraph_text(block, picture_folder, notes):
        words = [f"**{word}**" if i == block.bold else word for i, word in enumerate(block.words)]
        text = " ".join(words)
        if block.formula:
            text += f" ${block.formula}$"
        if block.link:
            text += f" [see there]({block.link})"
        if block.picture:
            text += f" ![]({picture_folder}/{block.picture}.png)"
        if block.note:
            notes.append(f"[^{len(notes) + 1}]: {block.note}")
            text += f"[^{len(notes)}]"
        if text[0].isdigit():
            text = "No " + text
        return {"": "", "#": "## ", "-": "- ", "1.": "1. "}[block.style] + text

    @staticmethod
    def table_text(block):
        rows = ["| " + " | ".join(" ".join(cell) for cell in row) + " |" for row in block.rows]
        rows.insert(1, "|" + "---|" * len(block.rows[0]))
        return "\n".join(rows)


EDITS = {
    "word": Story.word, "number": Story.number, "paragraph more": Story.more,
    "block less": Story.less, "split": Story.split, "join": Story.join, "move": Story.move,
    "row more": Story.row, "row less": Story.row_less, "column": Story.column, "cell": Story.cell,
    "table more": Story.new_table,
    "note": lambda story: story.toggle("note", "A note of its own"),
    "link": lambda story: story.toggle("link", "https://example.org/d"),
    "formula": lambda story: story.toggle("formula", "y_1"),
    "picture": lambda story: story.toggle("picture", 2),
    "list": lambda story: story.toggle("style", "-"),
    "look": lambda story: setattr(story.chance.choice(story.paragraphs()), "bold", 0),
}


def write_pictures(folder):
    def chunk(kind, data):
        return (struct.pack(">I", len(data)) + kind + data +
                struct.pack(">I", zlib.crc32(kind + data)))
    folder.mkdir(parents=True, exist_ok=True)
    for number in (1, 2, 3):
        rows = (b"\0" + bytes([80 * number, 40, 200]) * 24) * 24
        (folder / f"{number}.png").write_bytes(
            b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", struct.pack(">IIBBBBB", 24, 24, 8, 2, 0, 0, 0)) +
            chunk(b"IDAT", zlib.compress(rows)) + chunk(b"IEND", b""))


def write_pair(seed, folder, kind, by_office, pandoc):
    """Two files with names from the seed, and the edits between them. `by_office` names the sides
    that LibreOffice writes anew; the caller has it do that to all files at once."""
    story = Story(seed)
    names = [folder / f"{seed}{'o' if 'original' in by_office else 'p'}-old.{kind}",
             folder / f"{seed}{'o' if 'modified' in by_office else 'p'}-new.{kind}"]
    edits = []
    for name in names:
        if name is names[1]:
            for _ in range(random.Random(seed).randint(1, 4)):
                edit = story.chance.choice(list(EDITS))
                if story.edit(edit):
                    edits.append(edit)
        pandoc.make(story.markdown(folder / "pictures"), name)
    return names, edits


def pictures_of(folder: pathlib.Path):
    write_pictures(folder / "pictures")
