#!/usr/bin/python3
"""Proves redlines with programs that did not write them.

    tools/check_redlines.py build/release/zorvane FOLDER [--pairs 100] [--kind docx|odt] [--seed 0]
                            [--schema FILE.rng] [--pixels] [--real DIR...]

For seeded pairs with labelled edits, or for all pairs of neighbours among the files of DIR, a redline
is written (which checks itself), then
 - the redline, compared with the modified document, has to give "No differences.";
 - pandoc's and LibreOffice's reading with all changes accepted and rejected has to be theirs of the
   modified and of the original document;
 - no id of a change may come twice, and marks stand where the format has a place for them;
 - with --schema (the published RELAX NG schema of OpenDocument, read by jing) the redline may have no
   kind of error that neither document has;
 - with --pixels LibreOffice prints the redline as it is, the redline with all accepted, and the
   modified document: the first has to look like the last wherever nothing is marked, the second all
   over.
FOLDER gets all files. What a program is known not to read is told apart from what fails. Needs
pandoc and LibreOffice with python3-uno; what is missing is told and passed over."""

import argparse
import collections
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree
import zipfile

import page_pictures
import redline_pairs
from other_readers import Office, Pandoc

# What these programs were seen to read otherwise, by the edits of a pair. pandoc 2.17: a marked row
# is an empty one, formulas and pictures in changes are left out (so that its texts are taken without
# any), items of lists and headings are not joined, and a join gets a blank.
NOT_READ = {
    "pandoc": {"row more", "row less", "column", "table more", "block less", "move", "list", "split",
               "join", "paragraph more"},
    # A formula stays, whatever happens to what is around it. (It also leaves empty paragraphs in
    # front of a tracked table and in rows without text, and does not join a paragraph that holds a
    # note: where only ends of paragraphs differ is told by itself.)
    "LibreOffice": {"formula"},
    # What is joined keeps the look of its first paragraph.
    "pixels": {"join", "split"},
    # Items that are deleted count as long as they are seen.
    "pixels beside marks": {"list"},
}


class Checks:
    def __init__(self, arguments, office, pandoc):
        self.arguments = arguments
        self.office = office
        self.pandoc = pandoc
        self.tally = collections.defaultdict(collections.Counter)
        self.by_edit = collections.defaultdict(collections.Counter)
        self.failed = False
        self.log = open(arguments.folder / "readings.log", "w", encoding="utf-8", buffering=1)

    def note(self, check, good, pair, edits, detail="", but_for=""):
        known = NOT_READ.get(check, set()).intersection(edits)
        kind = ("good" if good else "but for " + but_for if but_for
                else "not read" if known else "FAILED")
        self.tally[check][kind] += 1
        for edit in set(edits):
            self.by_edit[check, edit][kind] += 1
        if not good:
            self.log.write(f"{kind}\t{check}\t{pair[1].name}\t{', '.join(edits)}\t{detail[:300]}\n")
        if kind == "FAILED":
            self.failed = True
            print(f"FAILED {check}: {pair[1].name} ({', '.join(edits)}) {detail[:200]}", flush=True)

    def tell(self):
        """What each check came to, and how often with each edit where not all was good."""
        for check, counts in self.tally.items():
            print(f"{check}: " + ", ".join(f"{kind} {count}"
                                           for kind, count in sorted(counts.items())))
            for (its, edit), of_edit in sorted(self.by_edit.items()):
                if its == check and len(counts) > 1:
                    print(f"    {edit}: " + ", ".join(f"{kind} {count}" for kind, count
                                                      in sorted(of_edit.items())))
        sys.stdout.flush()

    def check(self, pair, edits):
        redline = self.arguments.folder / f"{pair[1].stem}.redline{pair[1].suffix}"
        redline.unlink(missing_ok=True)
        run = subprocess.run([self.arguments.program, "compare", *pair, "-q", "-o", redline],
                             capture_output=True, text=True, errors="replace", check=False)
        self.note("written and verified", run.returncode < 2 and redline.exists(), pair, edits,
                  run.stderr)
        if not redline.exists():
            return
        run = subprocess.run([self.arguments.program, "compare", redline, pair[1], "--no-pager"],
                             capture_output=True, text=True, errors="replace", check=False)
        self.note("compared again", run.returncode == 0, pair, edits, run.stdout)
        if pair[1].suffix == ".docx":
            new = disorder_in(redline) - disorder_in(pair[0]) - disorder_in(pair[1])
            self.note("order of elements", not new, pair, edits, "; ".join(sorted(new)))
        self.note("ids", not twice_in(redline), pair, edits, str(twice_in(redline)))
        if self.pandoc and pair[1].suffix == ".docx":
            self.by_pandoc(redline, pair, edits)
        if self.office:
            self.by_office(redline, pair, edits)
        if self.arguments.schema and pair[1].suffix == ".odt":
            new = new_errors(redline, pair, self.arguments.schema)
            self.note("schema", not new, pair, edits, "; ".join(sorted(new)))

    def by_pandoc(self, redline, pair, edits):
        read = self.pandoc.lines
        for changes, wanted in (("accept", pair[1]), ("reject", pair[0])):
            got, same = read(redline, changes), read(wanted, "accept")
            self.note("pandoc", got == same, pair, edits, changes + ": " + first_other(got, same),
                      "ends of paragraphs" if " ".join(got) == " ".join(same) else "")

    def by_office(self, redline, pair, edits):
        exact = True
        for command, wanted in (("AcceptAllTrackedChanges", pair[1]),
                                ("RejectAllTrackedChanges", pair[0])):
            try:
                got = self.office.texts(redline, command)
                same = self.office.texts(wanted, "AcceptAllTrackedChanges")
            except Exception as error:  # of any kind that the office has
                self.note("LibreOffice", False, pair, edits, repr(error))
                self.office.restart()
                exact = False
                continue
            self.note("LibreOffice", got == same, pair, edits,
                      command + ": " + first_other(got, same), same_but_for(got, same))
            exact = exact and got == same
        if self.arguments.pixels:
            self.by_pixels(redline, pair, edits, exact)

    def by_pixels(self, redline, pair, edits, accepted_too):
        accept = "AcceptAllTrackedChanges"
        looks = [("pixels beside marks", None)] + ([("pixels", accept)] if accepted_too else [])
        for check, command in looks:
            try:
                same, faults = page_pictures.compare(
                    page_pictures.bands_of(self.office, redline, command),
                    page_pictures.bands_of(self.office, pair[1], command))
                told = f"{same} lines alike, others {faults}"
            except Exception as error:  # of any kind that the office has
                faults, told = True, repr(error)
                self.office.restart()
            self.note(check, not faults, pair, edits, told)


SIGNS = re.compile("[\u200b\u200d]")


def same_but_for(got, wanted):
    """Of texts with pictures as numbers in brackets. LibreOffice puts signs without width around a
    tracked text box and into tracked cells without text."""
    if SIGNS.search("".join(got)) and not SIGNS.search("".join(wanted)):
        got = [SIGNS.sub("", text) for text in got]
        if got == wanted:
            return "signs without width"
    got, wanted = "".join(got), "".join(wanted)
    if got == wanted:
        return "ends of paragraphs"
    picture = re.compile(r"\[\d+\]")
    return "pictures" if picture.sub("", got) == picture.sub("", wanted) else ""


def first_other(got, wanted):
    return next((f"{i}: {a!r} instead of {b!r}" for i, (a, b) in enumerate(zip(got, wanted))
                 if a != b), f"{len(got)} paragraphs instead of {len(wanted)}")


# The order of what may stand in the properties of a paragraph, a run and a row, where marks are put.
ORDER = {
    "pPr": """pStyle keepNext keepLines pageBreakBefore framePr widowControl numPr suppressLineNumbers
           pBdr shd tabs suppressAutoHyphens kinsoku wordWrap overflowPunct topLinePunct autoSpaceDE
           autoSpaceDN bidi adjustRightInd snapToGrid spacing ind contextualSpacing mirrorIndents
           suppressOverlap jc textDirection textAlignment textboxTightWrap outlineLvl divId cnfStyle
           rPr sectPr pPrChange""".split(),
    "rPr": """ins del moveFrom moveTo rStyle rFonts b bCs i iCs caps smallCaps strike dstrike outline
           shadow emboss imprint noProof snapToGrid vanish webHidden color spacing w kern position sz
           szCs highlight u effect bdr shd fitText vertAlign rtl cs em lang eastAsianLayout specVanish
           oMath rPrChange""".split(),
}
# What may not stand in an insertion or deletion, and what may not stand in a run of the other kind.
NOT_IN_MARKS = {"hyperlink", "fldSimple", "p", "tbl"}


def disorder_in(file):
    """Kinds of elements at places where the format has none for them."""
    found = set()
    if not zipfile.is_zipfile(file):
        return found  # behind a password
    with zipfile.ZipFile(file) as package:
        for name in package.namelist():
            if not re.fullmatch(r"word/(document|header\d*|footer\d*|footnotes|endnotes)\.xml", name):
                continue
            for element in xml.etree.ElementTree.fromstring(package.read(name)).iter():
                kind = element.tag.rpartition("}")[2]
                inside = [child.tag.rpartition("}")[2] for child in element]
                places = [ORDER[kind].index(one) for one in inside if one in ORDER[kind]] \
                    if kind in ORDER else []
                for one, other in zip(places, places[1:]):
                    if one > other:
                        found.add(f"{kind}: {ORDER[kind][one]} before {ORDER[kind][other]}")
                if kind in ("ins", "del", "moveFrom", "moveTo") and NOT_IN_MARKS.intersection(inside):
                    found.add(f"{kind} around {' '.join(inside)}")
                if kind == "del" and any(run.tag.endswith("}t") for child in element
                                         for run in child if child.tag.endswith("}r")):
                    found.add("text that is no deleted text in a deletion")
    return found


def twice_in(redline):
    """Ids of changes that more than one of them bears."""
    seen = collections.Counter()
    with zipfile.ZipFile(redline) as package:
        for name in package.namelist():
            text = package.read(name).decode("utf-8", "replace") if name.endswith(".xml") else ""
            if name.startswith("word/"):
                for element in re.findall(r"<w:(?:ins|del|moveFrom|moveTo|[a-z]+Change)\s[^>]*>",
                                          text):
                    seen.update(re.findall(r'w:id="([^"]*)"', element))
            elif name == "content.xml":
                for element in re.findall(r"<text:changed-region\s[^>]*>", text):
                    seen.update(re.findall(r'xml:id="([^"]*)"', element))
    return [number for number, count in seen.items() if count > 1]


def new_errors(redline, pair, schema):
    """Kinds of errors that neither document has, by one run of the reader of schemas."""
    kinds = collections.defaultdict(set)
    with tempfile.TemporaryDirectory() as name:
        paths = []
        for file in (redline, *pair):
            folder = pathlib.Path(name) / str(len(paths))
            folder.mkdir()
            with zipfile.ZipFile(file) as package:
                for part in ("content.xml", "styles.xml"):
                    (folder / part).write_bytes(package.read(part))
                    paths.append(folder / part)
        run = subprocess.run(["jing", "-i", schema, *paths], capture_output=True, text=True,
                             check=False)
        for line in run.stdout.splitlines():
            if "loext:" in line:
                continue  # an extended document may have what is of no namespace of the format
            kind = re.sub(r";.*", "", re.sub(r"^.*?error: ", "", line))
            kinds[line.startswith(f"{name}/0/")].add(kind)
    return kinds[True] - kinds[False]


def seeded(arguments, office, pandoc):
    redline_pairs.pictures_of(arguments.folder)
    sides = [(), ("modified",), ("original", "modified")]
    for seed in range(arguments.seed, arguments.seed + arguments.pairs):
        by_office = sides[seed % 3] if office else ()
        pair, edits = redline_pairs.write_pair(seed, arguments.folder, arguments.kind, by_office,
                                               pandoc)
        for side, file in zip(("original", "modified"), pair):
            if side in by_office:
                anew = file.with_suffix(".tmp")
                office.store(file, anew, "writer8" if arguments.kind == "odt"
                             else "MS Word 2007 XML")
                anew.replace(file)
        yield pair, edits


def real(arguments):
    files = sorted(file for folder in arguments.real
                   for file in pathlib.Path(folder).rglob(f"*.{arguments.kind}"))
    for place, (original, modified) in enumerate(zip(files, files[1:] + files[:1])):
        pair = []
        for name, file in (("old", original), ("new", modified)):
            pair.append(arguments.folder / f"{place}-{file.stem}-{name}.{arguments.kind}")
            shutil.copyfile(file, pair[-1])
        yield pair, []


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", type=pathlib.Path)
    parser.add_argument("folder", type=pathlib.Path)
    parser.add_argument("--pairs", type=int, default=100)
    parser.add_argument("--seed", type=int, default=0)
    parser.add_argument("--kind", choices=["docx", "odt"], default="docx")
    parser.add_argument("--schema", type=pathlib.Path)
    parser.add_argument("--pixels", action="store_true")
    parser.add_argument("--real", nargs="*")
    arguments = parser.parse_args()
    arguments.folder = arguments.folder.resolve()
    arguments.folder.mkdir(parents=True, exist_ok=True)
    office = Office(arguments.folder) if Office.is_there() else None
    pandoc = Pandoc(arguments.folder) if Pandoc.is_there() else None
    for name, there in (("pandoc", pandoc), ("LibreOffice", office),
                        ("a schema", arguments.schema)):
        if not there:
            print(f"without {name}")
    if office and arguments.pixels:
        page_pictures.loud_changes(office)
    checks = Checks(arguments, office, pandoc)
    pairs = real(arguments) if arguments.real else seeded(arguments, office, pandoc)
    for place, (pair, edits) in enumerate(pairs, 1):
        checks.check(pair, edits)
        if place % 100 == 0:
            print(f"-- {place} pairs", flush=True)
            checks.tell()
            if office:
                office.restart()  # it grows with each document
    for program in (office, pandoc):
        if program:
            program.close()
    checks.tell()
    return 1 if checks.failed else 0


if __name__ == "__main__":
    sys.exit(main())
