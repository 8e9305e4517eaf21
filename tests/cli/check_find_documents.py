#!/usr/bin/env python3
"""What `zorvane find --office` finds in documents is what an independent reader finds in them.

usage: check_find_documents.py ZORVANE CORPUS

The reader here takes packages apart itself, and asks pdftotext for PDF where it is there. Words of
the bodies have to be found in just these documents; what is found has to stand in them somewhere,
be it in a note, a header or a property. Documents are made here; the files of the corpus join them
where it is there."""

import pathlib
import random
import re
import shutil
import subprocess
import sys
import tempfile
import xml.etree.ElementTree as tree
import zipfile

sys.dont_write_bytecode = True
sys.path.insert(0, str(pathlib.Path(__file__).parent))
from check_bad_input import word, workbook  # noqa: E402
from check_types import pdf, slides  # noqa: E402

WORD = re.compile(r"[a-z]{5,}")
# Ends of these elements end a word too.
BREAKS = {"p", "h", "tab", "br", "s", "line-break", "row", "c", "si", "is", "table-cell"}
# They hold no text of the body.
ASIDE = {"instrText", "delText", "del", "tracked-changes", "note", "annotation", "rPh", "moveFrom",
         "Fallback", "script", "settings", "frame", "ruby-text", "f", "txbxContent", "rubyPr", "rt"}
MOST_WORDS = 40
# Nobody may copy its text.
REFUSED = "copy-protected"


def local(tag):
    return tag.rsplit("}", 1)[-1] if isinstance(tag, str) else ""


def text_of(element, aside=frozenset()):
    parts = [element.text or ""]
    for child in element:
        name = local(child.tag)
        if name not in aside:
            parts.append(text_of(child, aside))
        parts.append((" " if name in BREAKS else "") + (child.tail or ""))
    return "".join(parts)


def hidden(paragraph):
    return any(local(part.tag) in ("vanish", "webHidden", "specVanish") for part in paragraph.iter())


def body_words(path):
    """Of the body alone, as a person sees it; nothing where only parts of it are certain."""
    kind = path.suffix.lower()
    if kind == ".pdf":
        if not shutil.which("pdftotext"):
            return set()
        read = subprocess.run(["pdftotext", "-q", str(path), "-"], capture_output=True, check=False)
        # A word at a line's end may go on in the next line.
        lines = read.stdout.decode("utf-8", "replace").lower().splitlines()
        return {word for line in lines for word in WORD.findall(line[:line.rfind(" ") + 1])}
    with zipfile.ZipFile(path) as package:
        names = package.namelist()
        if kind == ".docx":
            bodies = ["word/document.xml"]
        elif kind == ".pptx":
            bodies = [name for name in names if re.fullmatch(r"ppt/slides/slide\d+\.xml|ppt/slides/s1.xml", name)]
        elif kind == ".xlsx":
            bodies = [name for name in names if re.fullmatch(r"xl/worksheets/[^/]+\.xml", name)]
        else:
            bodies = ["content.xml"]
        words = set()
        for name in bodies:
            for part in tree.fromstring(package.read(name)).iter():
                if local(part.tag) in ("p", "h", "is") and not hidden(part):
                    words |= set(WORD.findall(text_of(part, ASIDE).lower()))
        return words


def all_text(path):
    """Whatever stands anywhere in the file, in one piece without blanks."""
    if path.suffix.lower() == ".pdf":
        if not shutil.which("pdftotext"):
            return None
        read = subprocess.run(["pdftotext", "-q", str(path), "-"], capture_output=True, check=False)
        return re.sub(r"[-\s\u00ad\u200b]+", "", read.stdout.decode("utf-8", "replace").lower())
    text = ""
    with zipfile.ZipFile(path) as package:
        for name in package.namelist():
            if not name.endswith((".xml", ".rels")):
                continue
            try:
                part = tree.fromstring(package.read(name))
            except tree.ParseError:
                continue
            text += text_of(part) + " " + " ".join(" ".join(each.attrib.values()) for each in part.iter())
    return re.sub(r"\s+", "", text.lower())


def found_in(program, expression, folder, home):
    run = subprocess.run([program, "find", "-l", "-i", expression, ".", "-r", "--office"], cwd=folder,
                         capture_output=True, text=True, env={"HOME": home, "LANG": "C.UTF-8"}, check=False)
    return {line.removeprefix("./") for line in run.stdout.splitlines()}


def gather(corpus, folder):
    made = {"w.docx": word("<w:p><w:r><w:t>alphabet sou</w:t></w:r><w:r><w:t>ndings</w:t></w:r></w:p>"),
            "b.xlsx": workbook('<row r="1"><c r="A1" t="inlineStr"><is><t>inline cellar</t></is></c></row>'), "s.pptx": slides(), "p.pdf": pdf()}
    for name, data in made.items():
        (folder / name).write_bytes(data)
    number = 0
    for path in sorted(corpus.rglob("*")) if corpus.is_dir() else []:
        if path.suffix.lower() in (".docx", ".pptx", ".odt", ".xlsx", ".pdf") and REFUSED not in path.name:
            number += 1
            shutil.copy(path, folder / f"{number}-{path.name}")


def main():
    program, corpus = sys.argv[1], pathlib.Path(sys.argv[2])
    faults = []
    with tempfile.TemporaryDirectory() as place:
        folder = pathlib.Path(place) / "tree"
        folder.mkdir()
        gather(corpus, folder)
        bodies, wholes = {}, {}
        for path in sorted(folder.iterdir()):
            try:
                bodies[path.name] = body_words(path)
                wholes[path.name] = all_text(path)
            except (zipfile.BadZipFile, KeyError, tree.ParseError):
                continue
        words = sorted(set().union(*bodies.values()))
        chosen = random.Random(7).sample(words, min(MOST_WORDS, len(words)))
        hits = 0
        for one in chosen:
            found = found_in(program, one, folder, place)
            hits += len(found)
            for name, body in bodies.items():
                if one in body and name not in found:
                    faults.append(f"{name}: {one!r} is not found")
            for name in found & wholes.keys():
                if wholes[name] is not None and one not in wholes[name]:
                    faults.append(f"{name}: {one!r} is found and stands nowhere")
    print(f"{len(chosen)} words, {hits} files found among {len(bodies)} documents, {len(faults)} faults")
    print("\n".join(faults))
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
