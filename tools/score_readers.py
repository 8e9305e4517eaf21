#!/usr/bin/env python3
"""Scores the readers of documents against independent ones.

    tools/score_readers.py build/release/zorvane FOLDER...

For each file of the folders, the words that `zorvane text FILE` prints are set against those that
other programs find: 2 x longest common subsequence / sum of both counts. Printed are a row for each
file and reader, the means for each type, and the files that stay under 0.95 with their best reader.

What is a word: what stands between white space, case and punctuation kept. Characters without width
and soft hyphens are taken out, ligatures are their letters, and each Chinese or Japanese character
is a word of its own, since such lines are broken anywhere. The compare passes over the labels of
lists, and readers differ in whether they write them: bullets and numbers in front of a line are
left out of all texts (but those of PDF, where they are text). Pandoc draws tables with characters
of its own: words that are all of - = + | : are left out of its text. Of a spreadsheet the cells of
the first sheet are taken, without the line that names it. A program that is not installed is told
and passed over.
"""

import argparse
import csv
import io
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import unicodedata

INVISIBLE = re.compile("[\u00ad\u200b-\u200f\u202a-\u202e\u2060\ufeff]")
IDEOGRAPH = re.compile("([\u3040-\u30ff\u3400-\u9fff\uf900-\ufaff\U00020000-\U0003ffff])")
LIGATURES = str.maketrans({"\ufb00": "ff", "\ufb01": "fi", "\ufb02": "fl", "\ufb03": "ffi",
                           "\ufb04": "ffl", "\ufb05": "st", "\ufb06": "st"})
PAGE_SIZE = re.compile(rb"/MediaBox\s*\[[^\]]*\]")
DRAWN = re.compile(r"[-=+|:]+")
LABEL = re.compile(
    r"^[ \t|]*(?:[\u2022\u25cf\u25cb\u25aa\u25e6\uf0b7\u00b7\u2713\u27a2]|"
    r"(?:[-*\u2013o]|\(?(?:\d+(?:\.\d+)*|[A-Za-z]|[ivxlcdmIVXLCDM]+)[.)])(?=\s))"
)
SHEET_NAME = re.compile(r"^=+ .* =+$", re.MULTILINE)
LOW = 0.95

WORD_TYPES = {".docx", ".docm", ".dotx", ".odt", ".ott", ".rtf", ".html", ".htm", ".doc"}
PANDOC = {".docx": "docx", ".docm": "docx", ".dotx": "docx", ".odt": "odt", ".ott": "odt",
          ".rtf": "rtf", ".html": "html", ".htm": "html", ".epub": "epub", ".md": "markdown"}
SHEET_TYPES = {".xlsx", ".xlsm", ".xls", ".ods", ".xlsb"}
SLIDE_TYPES = {".pptx", ".pptm", ".ppsx", ".potx", ".ppt", ".odp"}
KNOWN = WORD_TYPES | SHEET_TYPES | SLIDE_TYPES | {".pdf", ".epub", ".md"}
# The ninth value has cells exported as they are shown: without it no number format is scored.
SHEET_FILTER = 'csv:Text - txt - csv (StarCalc):44,34,76,1,,0,false,true,true,false,false'
TEXT_FILTER = "txt:Text (encoded):UTF8"
WEB_TEXT_FILTER = "txt:Text (encoded) (StarWriter/Web):UTF8"


def words(text):
    text = INVISIBLE.sub("", unicodedata.normalize("NFC", text)).translate(LIGATURES)
    return IDEOGRAPH.sub(r" \1 ", text).split()


def without_labels(text):
    return "\n".join(LABEL.sub("", line) for line in text.splitlines())


def without_drawing(text):
    """A lone - stays: it is the bullet of a list."""
    def kept(line):
        return " ".join(word for word in line.split() if word == "-" or not DRAWN.fullmatch(word))
    return "\n".join(kept(line) for line in text.splitlines())


def cells(text):
    """A sheet as text: its cells apart by blanks, quotes of the form undone."""
    first = text[:65536].split("\n", 1)[0]  # a cell may hold a tab, further down or in quotes
    delimiter = "\t" if "\t" in first and "," not in first else ","
    csv.field_size_limit(1 << 30)
    return "\n".join(" ".join(row) for row in csv.reader(io.StringIO(text), delimiter=delimiter))


def common_words(first, second):
    """Length of the longest common subsequence, a row of the table at a time as bits."""
    places = {}
    for index, word in enumerate(first):
        places[word] = places.get(word, 0) | (1 << index)
    all_bits = (1 << len(first)) - 1
    row = all_bits
    for word in second:
        matches = row & places.get(word, 0)
        if matches:
            row = ((row + matches) | (row - matches)) & all_bits
    return len(first) - bin(row).count("1")


def similarity(ours, theirs):
    if not ours and not theirs:
        return 1.0
    return 2 * common_words(ours, theirs) / (len(ours) + len(theirs))


def output_of(command, seconds=120):
    """What a program prints, or nothing when it fails."""
    try:
        run = subprocess.run(command, capture_output=True, timeout=seconds, check=False)
    except (subprocess.TimeoutExpired, OSError):
        return None
    return run.stdout.decode("utf-8", "replace") if run.returncode == 0 else None


class Office:
    """LibreOffice, with a profile of its own; files of one target format go in one run."""

    def __init__(self, folder):
        self.folder = folder
        self.converted = {}

    def prepare(self, files):
        groups = {}
        for file in files:
            if target := self.target(file):
                groups.setdefault(target, []).append(file)
        for target, group in groups.items():
            self.convert(group, target)

    @staticmethod
    def target(file):
        kind = file.suffix.lower()
        if kind in SHEET_TYPES:
            return SHEET_FILTER
        if kind in SLIDE_TYPES:
            return "pdf"
        if kind in (".html", ".htm"):
            return WEB_TEXT_FILTER
        return TEXT_FILTER if kind in WORD_TYPES else None

    def convert(self, files, target):
        """Copies get numbers as names, since two files may differ in their type alone."""
        copies = {}
        for file in files:
            copy = self.folder / f"{len(self.converted) + len(copies):05}{file.suffix.lower()}"
            shutil.copy(file, copy)
            copies[file] = copy
        command = ["soffice", f"-env:UserInstallation=file://{self.folder}/profile", "--headless",
                   "--convert-to", target, "--outdir", str(self.folder / "out")]
        output_of(command + [str(copy) for copy in copies.values()], 60 + 10 * len(files))
        for file, copy in copies.items():
            result = self.folder / "out" / f"{copy.stem}.{target.split(':')[0]}"
            if not result.exists():  # one bad file may have ended the run
                output_of(command + [str(copy)], 60)
            self.converted[file] = result if result.exists() else None

    def text(self, file):
        result = self.converted.get(file)
        if result is None:
            return None
        if result.suffix == ".pdf":
            # Text that runs over the edge of a slide is on the slide all the same.
            wide = PAGE_SIZE.sub(b"/MediaBox[-3000 -3000 5000 5000]", result.read_bytes())
            result.write_bytes(wide)
            return output_of(["pdftotext", str(result), "-"])
        text = result.read_bytes().decode("utf-8-sig", "replace")
        return cells(text) if result.suffix == ".csv" else text


def readers_of(file, installed, office):
    """Name and text of each independent reader; nothing as text when it cannot read the file."""
    kind = file.suffix.lower()
    if kind in PANDOC and "pandoc" in installed:
        text = output_of(["pandoc", "-f", PANDOC[kind], "-t", "plain", "--wrap=none", str(file)])
        yield "pandoc", None if text is None else without_drawing(text)
    if kind in (".xlsx", ".xlsm") and "xlsx2csv" in installed:
        text = output_of(["xlsx2csv", "-s", "1", str(file)])
        yield "xlsx2csv", None if text is None else cells(text)
    if kind == ".pdf" and "pdftotext" in installed:
        yield "pdftotext", output_of(["pdftotext", str(file), "-"])
    if "soffice" in installed and Office.target(file):
        if kind not in SLIDE_TYPES or "pdftotext" in installed:
            yield "LibreOffice", office.text(file)


def our_text(program, file, passwords):
    command = [program, "text", str(file)]
    if file.name in passwords:
        command += ["--password", passwords[file.name]]
    text = output_of(command)
    if text is not None and file.suffix.lower() in SHEET_TYPES:
        text = cells(SHEET_NAME.sub("", text))
    return text


def score(program, files, passwords, installed, office):
    """Rows of file, reader, similarity or nothing, counts of both."""
    for file in files:
        labels = file.suffix.lower() in SHEET_TYPES | {".pdf"}
        ours = our_text(program, file, passwords)
        if ours is None:
            yield file, "ours fails", None, 0, 0
            continue
        for reader, theirs in readers_of(file, installed, office):
            if theirs is None:
                yield file, reader + " fails", None, len(words(ours)), 0
                continue
            own = words(ours if labels else without_labels(ours))
            other = words(theirs if labels else without_labels(theirs))
            yield file, reader, similarity(own, other), len(own), len(other)


def mean(values):
    return sum(values) / len(values)


def report(rows):
    best = {}
    by_reader = {}
    failed = []
    print(f"{'similarity':>10} {'ours':>8} {'theirs':>8}  {'reader':<12} file")
    for file, reader, value, ours, theirs in rows:
        shown = "-" if value is None else f"{value:.4f}"
        print(f"{shown:>10} {ours:>8} {theirs:>8}  {reader:<12} {file}", flush=True)
        if value is None:
            failed.append((file, reader))
            continue
        best[file] = max(best.get(file, (0.0, "")), (value, reader))
        by_reader.setdefault((file.suffix.lower(), reader), []).append(value)
    print("\nMean for each type and reader")
    for (kind, reader), values in sorted(by_reader.items()):
        print(f"{mean(values):>10.4f} {len(values):>8} files   {kind:<6} {reader}")
    print("\nMean for each type, the best reader of each file")
    for kind in sorted({file.suffix.lower() for file in best}):
        values = [value for file, (value, _) in best.items() if file.suffix.lower() == kind]
        print(f"{mean(values):>10.4f} {len(values):>8} files   {kind}")
    low = [(value, reader, file) for file, (value, reader) in best.items() if value < LOW]
    print(f"\nUnder {LOW} with the best reader: {len(low) or 'none'}")
    for value, reader, file in sorted(low):
        print(f"{value:>10.4f}  {reader:<12} {file}")
    if failed:
        print("\nNot compared")
        for file, reader in failed:
            print(f"            {reader:<20} {file}")


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", help="the program whose readers are scored")
    parser.add_argument("folders", nargs="+", type=pathlib.Path, help="folders or files")
    parser.add_argument("--password", action="append", default=[], metavar="NAME=PASSWORD",
                        help="of a protected file, by its name")
    arguments = parser.parse_args()
    installed = set()
    for tool in ("pandoc", "soffice", "xlsx2csv", "pdftotext"):
        if shutil.which(tool):
            installed.add(tool)
        else:
            print(f"not installed, passed over: {tool}")
    files = []
    for folder in arguments.folders:
        found = [folder] if folder.is_file() else sorted(folder.rglob("*"))
        files += [file for file in found if file.is_file() and file.suffix.lower() in KNOWN
                  and file.name != "README.md"]
    if not files:
        sys.exit("no documents found")
    passwords = dict(pair.split("=", 1) for pair in arguments.password)
    with tempfile.TemporaryDirectory() as temporary:
        office = Office(pathlib.Path(temporary))
        if "soffice" in installed:
            office.prepare(files)
        report(score(arguments.program, files, passwords, installed, office))


if __name__ == "__main__":
    main()
