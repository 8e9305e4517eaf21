#!/usr/bin/env python3
"""Broken, cut off and hostile documents: each must end by itself, within bounds of time and memory,
with a text or with words that name the file.

usage: check_bad_input.py ZORVANE CORPUS [COPIES]
COPIES: broken copies of each file of the corpus, half cut off and half with bytes changed."""

import io
import os
import pathlib
import random
import resource
import subprocess
import sys
import tempfile
import time
import zipfile

SANITIZED = bool(os.environ.get("ZORVANE_SANITIZED"))
SECONDS = 60 if SANITIZED else 10
MEBIBYTES = 512


def package(parts, level=9):
    out = io.BytesIO()
    with zipfile.ZipFile(out, "w", zipfile.ZIP_DEFLATED, compresslevel=level) as archive:
        for name, content in parts.items():
            archive.writestr(name, content)
    return out.getvalue()


def word(document, **more):
    types = ('<Types><Override PartName="/word/document.xml" ContentType="application/vnd.openxml'
             'formats-officedocument.wordprocessingml.document.main+xml"/></Types>')
    return package({"[Content_Types].xml": types, "word/document.xml": document,
                    **{name.replace("__", "/") + ".xml": part for name, part in more.items()}})


def open_document(kind, body):
    return package({"mimetype": "application/vnd.oasis.opendocument." + kind,
                    "content.xml": '<office:document-content xmlns:office="o" xmlns:text="t" '
                                   'xmlns:table="b" xmlns:draw="d"><office:body><office:' + kind +
                                   '>' + body + '</office:' + kind +
                                   '></office:body></office:document-content>',
                    "styles.xml": "<x/>"})


def workbook(sheet):
    return package({
        "[Content_Types].xml": "<Types/>",
        "_rels/.rels": '<Relationships><Relationship Id="r" Type="x/officeDocument" '
                       'Target="xl/workbook.xml"/></Relationships>',
        "xl/workbook.xml": '<workbook><sheets><sheet name="S" sheetId="1" r:id="r1"/></sheets>'
                           '</workbook>',
        "xl/_rels/workbook.xml.rels": '<Relationships><Relationship Id="r1" Type="x/worksheet" '
                                      'Target="s.xml"/></Relationships>',
        "xl/s.xml": '<worksheet><sheetData>' + sheet + '</sheetData></worksheet>'})


class Zeros(io.RawIOBase):
    """As many zero bytes as wanted, without holding them."""

    def __init__(self, count):
        self.left = count

    def readinto(self, buffer):
        size = min(len(buffer), self.left)
        buffer[:size] = bytes(size)
        self.left -= size
        return size


def zip_bomb(name, count):
    out = io.BytesIO()
    with zipfile.ZipFile(out, "w", zipfile.ZIP_DEFLATED) as archive:
        archive.writestr("[Content_Types].xml", "<Types>wordprocessingml.</Types>")
        with archive.open(name, "w", force_zip64=True) as part:
            source = Zeros(count)
            while chunk := source.read(1 << 20):
                part.write(chunk)
    return out.getvalue()


def hostile():
    deep = 200_000
    entities = ('<!DOCTYPE a [<!ENTITY e0 "x">' +
                "".join(f'<!ENTITY e{i} "' + f"&e{i - 1};" * 10 + '">' for i in range(1, 12)) +
                ']><a>&e11;</a>')
    circle = ('<w:styles xmlns:w="w">' +
              "".join(f'<w:style w:type="paragraph" w:styleId="s{i}"><w:basedOn w:val="s{(i + 1) % 50}"/>'
                      '</w:style>' for i in range(50)) + '</w:styles>')
    yield "bomb.docx", zip_bomb("word/document.xml", 3 << 30)
    yield "deep.docx", word('<w:document xmlns:w="w"><w:body>' + "<w:sdt>" * deep + "</w:sdt>" * deep +
                            "</w:body></w:document>")
    yield "circle.docx", word('<w:document xmlns:w="w"><w:body><w:p><w:pPr><w:pStyle w:val="s1"/>'
                              '</w:pPr></w:p></w:body></w:document>', word__styles=circle)
    yield "deep.html", ("<div>" * deep).encode()
    yield "deep.xml", ("<a>" * deep + "</a>" * deep).encode()
    yield "entities.xml", entities.encode()
    yield "external.xml", b'<!DOCTYPE a [<!ENTITY e SYSTEM "file:///etc/passwd">]><a>[&e;]</a>'
    yield "deep.rtf.doc", ("{\\rtf1" + "{" * deep).encode()
    yield "deep.md", (">" * deep).encode()
    yield "deep.odt", open_document("text", "<text:section>" * 50_000 + "</text:section>" * 50_000)
    yield "wide.ods", open_document(
        "spreadsheet", '<table:table table:name="a"><table:table-row '
        'table:number-rows-repeated="1048576"><table:table-cell table:number-columns-repeated="16384">'
        '<text:p>x</text:p></table:table-cell></table:table-row></table:table>')
    yield "far.xlsx", workbook('<row r="1048576"><c r="XFD1048576"><v>1</v></c></row>')
    yield "beyond.xlsx", workbook('<row r="99999999999"><c r="ZZZZZZ9"><v>1</v></c></row>')
    yield "broken-xref.pdf", (b"%PDF-1.4\n1 0 obj<</Type/Catalog/Pages 2 0 R>>endobj\n"
                              b"2 0 obj<</Type/Pages/Kids[2 0 R]/Count 1>>endobj\nxref\n0 99999999\n"
                              b"trailer<</Root 1 0 R/Prev 9>>\nstartxref\n9\n%%EOF")
    yield "nothing.docx", b""
    yield "nothing.pdf", b""
    yield "nothing.xlsx", b""


def broken_copies(corpus, copies):
    for file in sorted(corpus.rglob("*")):
        if not file.is_file() or file.suffix in (".md", ".tsv", ".txt"):
            continue
        original = file.read_bytes()
        chance = random.Random(file.name)
        for number in range(copies):
            if number % 2 == 0:
                yield f"cut{number}-{file.name}", original[:chance.randrange(len(original))]
                continue
            changed = bytearray(original)
            for _ in range(chance.randrange(1, 40)):
                changed[chance.randrange(len(changed))] = chance.randrange(256)
            yield f"changed{number}-{file.name}", bytes(changed)


def fault_of(program, folder, name, content):
    path = folder / name
    path.write_bytes(content)
    begin = time.monotonic()
    try:
        run = subprocess.run([program, "text", str(path)], capture_output=True, timeout=3 * SECONDS,
                             env={**os.environ, "ZORVANE_OFFICE": "none", "TMPDIR": str(folder)})
    except subprocess.TimeoutExpired:
        return "does not end"
    finally:
        path.unlink()
    words = run.stderr.decode(errors="replace")
    if time.monotonic() - begin > SECONDS:
        return f"took {time.monotonic() - begin:.1f} s"
    if run.returncode not in (0, 2):
        return f"exit status {run.returncode}: {words}"
    if run.returncode == 2 and (name not in words or "reader of this document failed" in words):
        return f"words: {words}"
    if b"root:" in run.stdout:
        return "an external entity was fetched"
    return None


def main():
    program = os.path.abspath(sys.argv[1])
    corpus = pathlib.Path(sys.argv[2])
    copies = int(sys.argv[3]) if len(sys.argv) > 3 else 2
    faults = count = 0
    with tempfile.TemporaryDirectory() as folder:
        cases = list(hostile())
        if corpus.is_dir():
            cases += broken_copies(corpus, copies)
        else:
            print("no documents: broken copies skipped")
        for name, content in cases:
            count += 1
            fault = fault_of(program, pathlib.Path(folder), name, content)
            if fault:
                faults += 1
                print(f"{name}: {fault}")
    peak = resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss // 1024
    print(f"{count} documents, {faults} faults, at most {peak} MiB")
    return 1 if faults or (peak > MEBIBYTES and not SANITIZED) else 0


if __name__ == "__main__":
    sys.exit(main())
