"""What a document looks like, in lines of a picture, for `check_redlines.py`.

LibreOffice prints each document on pages so tall that nothing breaks, with changes and the bars beside
them in one loud colour; the pages are cut into bands of ink. Two bands are the same when hardly a
pixel of one is more than a pixel away from the other, so that a line that moved down by a fraction of
one is still itself. A redline has to show the bands of the modified document in their order: what
differs has to stand at a mark."""

import dataclasses
import difflib
import pathlib
import subprocess
import tempfile

LOUD = 0xFF00FF
TALL = 280000     # hundredths of a millimetre; the office takes up to 300000
RESOLUTION = 96
TALLEST_LINE = 38  # a band above it holds lines of a table, and is cut where only those go on
STRAIGHT = 3       # more rows alike than in a photograph, fewer than above a line of a table
OFF = 0.012       # the share of pixels that may be off: letters are drawn between pixels

INK = bytes(1 if value < 176 else 0 for value in range(256))
LOW = bytes(1 if value < 112 else 0 for value in range(256))
HIGH = bytes(1 if value > 144 else 0 for value in range(256))


@dataclasses.dataclass
class Band:
    rows: list     # of ink, a byte a pixel, as numbers
    marked: bool

    def count(self):
        return sum(row.bit_count() for row in self.rows)


def loud_changes(office):
    """For all documents that this office opens from now on."""
    access = office.service("com.sun.star.configuration.ConfigurationProvider") \
        .createInstanceWithArguments("com.sun.star.configuration.ConfigurationUpdateAccess",
                                     office.values(nodepath="/org.openoffice.Office.Writer/Revision"))
    for kind in ("TextDisplay/Insert", "TextDisplay/Delete", "TextDisplay/ChangedAttribute",
                 "LinesChanged"):
        access.setHierarchicalPropertyValue(kind + "/Color", LOUD)
    access.commitChanges()


def bands_of(office, file, command=None):
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        if command:  # read again: numbers of lists with changes come back only so
            office.store(file, folder / "a.odt", "writer8", command)
            file = folder / "a.odt"
        office.store(file, folder / "a.pdf", "writer_pdf_Export", change=_make_tall)
        subprocess.run(["pdftoppm", "-r", str(RESOLUTION), folder / "a.pdf", folder / "p"],
                       check=True, capture_output=True)
        return [band for page in sorted(folder.glob("p*.ppm")) for band in _cut(page)]


def _make_tall(document):
    styles = document.StyleFamilies.getByName("PageStyles")
    for name in styles.ElementNames:
        if styles.getByName(name).isInUse():
            styles.getByName(name).Height = TALL


def _cut(page):
    """The bands of one page, from its top."""
    kind, size, _, pixels = page.read_bytes().split(b"\n", 3)
    assert kind == b"P6"
    width = int(size.split()[0])
    bands, rows, marked = [], [], False
    for at in range(0, len(pixels) + 1, 3 * width):
        line = pixels[at:at + 3 * width]
        red, green, blue = (line[channel::3] for channel in range(3))
        ink = int.from_bytes(green.translate(INK), "big")
        loud = ink and (int.from_bytes(red.translate(HIGH), "big") &
                        int.from_bytes(blue.translate(HIGH), "big") &
                        int.from_bytes(green.translate(LOW), "big"))
        if ink:
            rows.append(ink & ~loud)
            marked = marked or bool(loud)
        elif rows:
            bands += _lines_of_table(Band(rows, marked))
            rows, marked = [], False
    return bands


def _lines_of_table(band):
    """Between its lines a table has borders alone, which go straight down for some pixels."""
    if len(band.rows) <= TALLEST_LINE:
        return [band]
    bands, rows, straight = [], [], 0
    for before, row in zip([0] + band.rows, band.rows):
        straight = straight + 1 if row == before else 0
        if straight >= STRAIGHT and rows:
            bands.append(Band(rows, band.marked))
            rows = []
        elif straight < STRAIGHT:
            rows.append(row)
    return bands + ([Band(rows, band.marked)] if rows else [])


def _spread(rows):
    wide = [row | row << 8 | row >> 8 for row in rows]
    return [above | row | below for above, row, below in zip([0] + wide, wide, wide[1:] + [0])]


def _same(one, other):
    if abs(len(one.rows) - len(other.rows)) > 1:
        return False
    most = OFF * max(one.count(), other.count(), 1)
    for shift in (0, 1):
        for first, second in ((one, other), (other, one)):
            moved = [0] * shift + second.rows
            lower = first.rows + [0] * (len(moved) - len(first.rows))
            moved += [0] * (len(lower) - len(moved))
            off = sum((a & ~b).bit_count() for a, b in zip(lower, _spread(moved))) + \
                sum((a & ~b).bit_count() for a, b in zip(moved, _spread(lower)))
            if off <= most:
                return True
    return False


def _names(bands, known):
    """A number for each band, the same for those that look the same."""
    numbers = []
    for band in bands:
        size = band.count()
        for number, other in enumerate(known):
            if abs(size - other.count()) <= 0.1 * size + 6 and _same(band, other):
                numbers.append(number)
                break
        else:
            numbers.append(len(known))
            known.append(band)
    return numbers


def compare(shown, wanted):
    """How many bands are the same, and those (of `shown`, of `wanted`) that differ at no mark."""
    known = []
    numbers, others = _names(wanted, known), _names(shown, known)
    same, faults = 0, []
    matcher = difflib.SequenceMatcher(None, others, numbers, autojunk=False)
    for kind, begin, end, first, last in matcher.get_opcodes():
        if kind == "equal":
            same += end - begin
        elif not any(band.marked for band in shown[max(begin - 1, 0):end + 1]):
            faults.append((end - begin, last - first))
    return same, faults
