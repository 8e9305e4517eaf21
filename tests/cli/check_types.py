#!/usr/bin/env python3
"""Every kind of document loads, and compares with every other kind.

usage: check_types.py ZORVANE CORPUS

Small documents of each kind are made here; the files of the corpus join them where it is there. An
office suite is hidden, so that what only it reads has to fail with the words that say so."""

import itertools
import os
import pathlib
import subprocess
import sys
import tempfile

sys.dont_write_bytecode = True
sys.path.insert(0, os.path.dirname(__file__))
from check_bad_input import open_document, package, word, workbook  # noqa: E402

OFFICE_ONLY = {".doc", ".wps", ".xlsb", ".ppt"}
PASSWORDS = {"bug53475-password-is-pass.docx": "pass", "issue6010_1.pdf": "abc",
             "bug1782186.pdf": "Hello"}
# What is wrong with documents of the corpus that nobody could read, or may.
REFUSED = {"calamine-pass_protected.ods": "--password",
           "unstructured-copy-protected.pdf": "does not permit its text to be copied",
           "unstructured-password.pdf": "--password"}
LINK = b"../"  # a link that was kept as a file
ZIP = b"PK"  # of slides in the modern form, whatever their name says
# They show nothing that could be read: a drawing, a table without text, notes alone.
WITHOUT_WORDS = {"empty.txt", "bug1782186.pdf", "table_test.pptx", "sld-notes.pptx"}


def slides():
    shape = ('<p:sp><p:nvSpPr><p:cNvPr id="2" name="a"/><p:nvPr/></p:nvSpPr><p:txBody><a:p><a:r><a:t>'
             'alpha beta</a:t></a:r></a:p></p:txBody></p:sp>')
    names = 'xmlns:a="a" xmlns:p="p" xmlns:r="r"'
    relation = '<Relationships><Relationship Id="{}" Type="x/{}" Target="{}"/></Relationships>'
    return package({
        "_rels/.rels": relation.format("r", "officeDocument", "ppt/presentation.xml"),
        "ppt/presentation.xml": f'<p:presentation {names}><p:sldIdLst><p:sldId id="256" r:id="r1"/>'
                                '</p:sldIdLst></p:presentation>',
        "ppt/_rels/presentation.xml.rels": relation.format("r1", "slide", "slides/s1.xml"),
        "ppt/slides/s1.xml": f'<p:sld {names}><p:cSld><p:spTree>{shape}</p:spTree></p:cSld></p:sld>'})


def pdf():
    content = b"BT /F 12 Tf 72 700 Td (alpha beta) Tj ET"
    objects = [b"<</Type/Catalog/Pages 2 0 R>>", b"<</Type/Pages/Kids[3 0 R]/Count 1>>",
               b"<</Type/Page/Parent 2 0 R/MediaBox[0 0 612 792]/Contents 4 0 R/Resources<</Font<</F "
               b"5 0 R>>>>>>", b"<</Length %d>>\nstream\n%s\nendstream" % (len(content), content),
               b"<</Type/Font/Subtype/Type1/BaseFont/Times-Roman>>"]
    out = b"%PDF-1.4\n"
    places = []
    for number, body in enumerate(objects, 1):
        places.append(len(out))
        out += b"%d 0 obj\n%s\nendobj\n" % (number, body)
    table = b"".join(b"%010d 00000 n \n" % place for place in places)
    return out + (b"xref\n0 6\n0000000000 65535 f \n" + table +
                  b"trailer<</Size 6/Root 1 0 R>>\nstartxref\n%d\n%%%%EOF\n" % len(out))


def made():
    paragraph = '<w:p><w:r><w:t>alpha beta</w:t></w:r></w:p>'
    document = word(f'<w:document xmlns:w="w"><w:body>{paragraph}</w:body></w:document>')
    sheet = workbook('<row><c t="inlineStr"><is><t>alpha beta</t></is></c></row>')
    text = open_document("text", "<text:p>alpha beta</text:p>")
    return {
        "a.txt": b"alpha beta\n", "a.rtf": b"{\\rtf1 alpha beta}", "a.md": b"**alpha** beta\n",
        "a.eml": b"Subject: alpha\r\n\r\nbeta\r\n", "a.html": b"<p>alpha <b>beta</b></p>",
        "a.xhtml": b"<?xml version='1.0'?><html><body><p>alpha beta</p></body></html>",
        "a.xml": b"<a><b>alpha beta</b></a>", "a.docx": document, "a.docm": document,
        "a.dotx": document, "a.doc": document, "a.odt": text, "a.ott": text, "a.csv": b"alpha,beta\n",
        "a.xlsx": sheet, "a.xlsm": sheet, "a.xltx": sheet,
        "a.ods": open_document("spreadsheet", '<table:table table:name="s"><table:table-row>'
                               '<table:table-cell><text:p>alpha beta</text:p></table:table-cell>'
                               '</table:table-row></table:table>'),
        "a.odp": open_document("presentation", '<draw:page><draw:frame><draw:text-box><text:p>'
                               'alpha beta</text:p></draw:text-box></draw:frame></draw:page>'),
        "a.pptx": slides(), "a.ppsx": slides(), "a.pdf": pdf(),
        "a.epub": package({
            "mimetype": "application/epub+zip",
            "META-INF/container.xml": '<container><rootfiles><rootfile full-path="b.opf"/></rootfiles>'
                                      '</container>',
            "b.opf": '<package><manifest><item id="c" href="c.xhtml" media-type="application/'
                     'xhtml+xml"/></manifest><spine><itemref idref="c"/></spine></package>',
            "c.xhtml": "<html><body><p>alpha beta</p></body></html>"})}


class Checker:
    def __init__(self, program):
        self.program = program
        self.faults = 0
        self.count = 0
        self.environment = {**os.environ, "ZORVANE_OFFICE": "none"}

    def run(self, *arguments):
        self.count += 1
        return subprocess.run([self.program, *map(str, arguments)], capture_output=True, text=True,
                              env=self.environment)

    def expect(self, good, what, run):
        if not good:
            self.faults += 1
            print(f"{what}: exit status {run.returncode}: {run.stdout[:200]!r} {run.stderr[:300]}")

    def expect_words(self, file, run):
        told = "no text was found" in run.stderr or "nothing was found" in run.stderr
        words = run.stdout.split() or file.name in WITHOUT_WORDS or told
        self.expect(run.returncode == 0 and words, file.name, run)

    def check_made(self, files):
        for file in files:
            run = self.run("text", file)
            words = run.stdout.replace(",", " ").replace("Subject:", "").split()
            fits = words[-2:] == ["alpha", "beta"]
            self.expect(run.returncode == 0 and fits and not run.stderr, file.name, run)
        for first, second in itertools.product(files, files):
            run = self.run("compare", "-q", first, second)
            self.expect(run.returncode in (0, 1) and not run.stderr, f"{first.name} {second.name}", run)

    def check_corpus(self, corpus):
        for file in sorted(corpus.rglob("*.*")):
            if file.parent == corpus or file.name.startswith("."):
                continue
            run = self.run("text", file)
            content = file.read_bytes()
            if file.name in REFUSED:
                self.expect(run.returncode == 2 and REFUSED[file.name] in run.stderr, file.name, run)
            elif content.startswith(LINK) and file.suffix in (".pdf", ".pptx"):
                self.expect(run.returncode == 2 and "no document of its kind" in run.stderr, file.name, run)
            elif file.suffix in OFFICE_ONLY and not (file.suffix == ".ppt" and content.startswith(ZIP)):
                self.expect(run.returncode == 2 and "install LibreOffice" in run.stderr, file.name, run)
            elif file.name in PASSWORDS:
                self.expect(run.returncode == 2 and "--password" in run.stderr, file.name, run)
                run = self.run("text", file, "--password", PASSWORDS[file.name])
                self.expect_words(file, run)
            else:
                self.expect_words(file, run)


def main():
    checker = Checker(os.path.abspath(sys.argv[1]))
    corpus = pathlib.Path(sys.argv[2])
    with tempfile.TemporaryDirectory() as folder:
        files = []
        for name, content in made().items():
            files.append(pathlib.Path(folder) / name)
            files[-1].write_bytes(content)
        checker.check_made(files)
    if corpus.is_dir():
        checker.check_corpus(corpus)
    else:
        print("no documents: the corpus is skipped")
    print(f"{checker.count} runs, {checker.faults} faults")
    return 1 if checker.faults else 0


if __name__ == "__main__":
    sys.exit(main())
