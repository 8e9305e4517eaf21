#!/usr/bin/env python3
"""One document saved by LibreOffice in every format has the same words in all of them.

usage: tools/check_same_document.py build/release/zorvane [DOCUMENT...]

Without documents a made one is taken: headings, marks, lists, a table, symbols, other scripts. Each is
saved as DOCX, ODT, RTF, HTML and PDF; DOCX is compared with each of the others, white space apart, and
the number of changed words is printed. Exit status 1 when any of the made document's pairs differ."""

import os
import pathlib
import subprocess
import sys
import tempfile

FORMATS = ["docx", "odt", "rtf", "html", "pdf"]
MADE = """<html><head><meta charset="utf-8"></head><body>
<h1>The lease of the house</h1>
<p>This agreement is made between the <b>landlord</b> and the <i>tenant</i>, who is <u>liable</u> for the rent of
1,250.00 &euro; each month. It begins on the first day of May and is renewed each year unless one of the parties gives
notice three months before its end.</p>
<h2>Duties</h2>
<ol><li>The tenant keeps the garden.</li><li>The landlord repairs the roof, the walls and the windows.</li></ol>
<ul><li>Keys are handed over in person.</li><li>Smoke detectors are tested each year.</li></ul>
<table border="1"><tr><td>Room</td><td>Size</td></tr><tr><td>Kitchen</td><td>12 m&sup2;</td></tr></table>
<p>Straße, façade, naïve, Ελλάδα, Москва; a dash &ndash; and quotes &ldquo;here&rdquo;.</p>
<p>The last paragraph ends the document.</p>
</body></html>"""


def convert(source, target_format, folder):
    writer = "docx:MS Word 2007 XML" if target_format == "docx" else target_format
    subprocess.run(["soffice", "--headless", "--convert-to", writer, "--outdir", folder, source],
                   capture_output=True, check=True)
    return folder / (source.stem + "." + target_format)


def changed(program, first, second):
    """Counts of changed, added and deleted paragraphs and words, as --stat prints them."""
    run = subprocess.run([program, "compare", "--stat", "-w", "-B", "--plain", first, second],
                         capture_output=True, text=True)
    if run.returncode == 2:
        return "fails: " + run.stderr.strip()
    lines = run.stdout.strip().splitlines()[-2:]
    return None if run.returncode == 0 else "; ".join(" ".join(line.split()) for line in lines)


def main():
    program = os.path.abspath(sys.argv[1])
    given = [pathlib.Path(name).resolve() for name in sys.argv[2:]]
    faults = 0
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        made = folder / "made.html"
        made.write_text(MADE, encoding="utf-8")
        for document in given or [made]:
            saved = folder / document.stem
            saved.mkdir()
            base = document
            if document == made:
                subprocess.run(["soffice", "--headless", "--infilter=HTML (StarWriter)", "--convert-to", "odt",
                                "--outdir", saved, made], capture_output=True, check=True)
                base = saved / "made.odt"
            files = [base if base.suffix == "." + kind and base.parent == saved else convert(base, kind, saved)
                     for kind in FORMATS]
            for file in files[1:]:
                difference = changed(program, files[0], file)
                print(f"{document.name} as docx and {file.suffix[1:]}: {difference or 'the same words'}")
                faults += bool(difference) and not given
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
