#!/usr/bin/env python3
"""Times the readers of documents against named peers, all in one run.

usage: tools/bench_readers.py build/release/zorvane [FOLDER]

Inputs are made in FOLDER (a temporary one without it). Printed are the processor time of the whole
process with its children (the least of several runs), its wall time and its peak memory, and the
ratio to the peer. Peers that are not installed are told and passed over. The PDF input needs
LibreOffice."""

import os
import pathlib
import random
import resource
import shutil
import subprocess
import sys
import tempfile
import time
import zipfile

WORDS = ("contract party shall agreement term notice liability section payment service delivery "
         "price order invoice account rate change period month year").split()


def sentence(chance):
    return " ".join(chance.choice(WORDS) for _ in range(chance.randrange(8, 20))).capitalize() + "."


def paragraphs(count, seed=7):
    chance = random.Random(seed)
    return [" ".join(sentence(chance) for _ in range(5)) for _ in range(count)]


def docx(path, texts):
    body = "".join('<w:p><w:pPr><w:pStyle w:val="N"/></w:pPr><w:r><w:t xml:space="preserve">' + text[:40] +
                   '</w:t></w:r><w:r><w:rPr><w:b/></w:rPr><w:t xml:space="preserve">' + text[40:] +
                   '</w:t></w:r></w:p>' for text in texts)
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as out:
        out.writestr("[Content_Types].xml",
                     '<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types"><Default '
                     'Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>'
                     '<Override PartName="/word/document.xml" ContentType="application/vnd.openxmlformats-'
                     'officedocument.wordprocessingml.document.main+xml"/></Types>')
        out.writestr("_rels/.rels",
                     '<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">'
                     '<Relationship Id="r1" Type="http://schemas.openxmlformats.org/officeDocument/2006/'
                     'relationships/officeDocument" Target="word/document.xml"/></Relationships>')
        out.writestr("word/document.xml",
                     '<w:document xmlns:w="http://schemas.openxmlformats.org/wordprocessingml/2006/main">'
                     '<w:body>' + body + '</w:body></w:document>')


def odt(path, texts):
    names = " ".join(f'xmlns:{name}="urn:oasis:names:tc:opendocument:xmlns:{name}:1.0"'
                     for name in ["office", "style", "text"])
    body = "".join(f'<text:p text:style-name="P1"><text:span>{text}</text:span></text:p>' for text in texts)
    parts = {
        "content.xml": f"<office:document-content {names}><office:body><office:text>{body}"
                       "</office:text></office:body></office:document-content>",
        "styles.xml": f"<office:document-styles {names}><office:styles/></office:document-styles>",
        "META-INF/manifest.xml":
            '<m:manifest xmlns:m="urn:oasis:names:tc:opendocument:xmlns:manifest:1.0">'
            '<m:file-entry m:full-path="/" m:media-type="application/vnd.oasis.opendocument.text"/>'
            '<m:file-entry m:full-path="content.xml" m:media-type="text/xml"/>'
            '<m:file-entry m:full-path="styles.xml" m:media-type="text/xml"/></m:manifest>',
    }
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as package:
        package.writestr("mimetype", "application/vnd.oasis.opendocument.text", zipfile.ZIP_STORED)
        for name, content in parts.items():
            package.writestr(name, content)


def xlsx(path, rows, columns):
    chance = random.Random(3)
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as out:
        out.writestr("[Content_Types].xml",
                     '<Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types"><Override '
                     'PartName="/xl/workbook.xml" ContentType="application/vnd.openxmlformats-officedocument.'
                     'spreadsheetml.sheet.main+xml"/><Override PartName="/xl/worksheets/sheet1.xml" ContentType='
                     '"application/vnd.openxmlformats-officedocument.spreadsheetml.worksheet+xml"/></Types>')
        out.writestr("_rels/.rels",
                     '<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">'
                     '<Relationship Id="r1" Type="http://schemas.openxmlformats.org/officeDocument/2006/'
                     'relationships/officeDocument" Target="xl/workbook.xml"/></Relationships>')
        out.writestr("xl/workbook.xml",
                     '<workbook xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main" xmlns:r='
                     '"http://schemas.openxmlformats.org/officeDocument/2006/relationships"><sheets><sheet '
                     'name="Data" sheetId="1" r:id="r1"/></sheets></workbook>')
        out.writestr("xl/_rels/workbook.xml.rels",
                     '<Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">'
                     '<Relationship Id="r1" Type="http://schemas.openxmlformats.org/officeDocument/2006/'
                     'relationships/worksheet" Target="worksheets/sheet1.xml"/></Relationships>')
        with out.open("xl/worksheets/sheet1.xml", "w") as sheet:
            sheet.write(b'<worksheet xmlns="http://schemas.openxmlformats.org/spreadsheetml/2006/main">'
                        b'<sheetData>')
            for row in range(1, rows + 1):
                cells = "".join(f'<c r="{chr(65 + c)}{row}"><v>{chance.random() * 1000:.2f}</v></c>'
                                for c in range(columns))
                sheet.write(f'<row r="{row}">{cells}</row>'.encode())
            sheet.write(b"</sheetData></worksheet>")


def html(path, megabytes):
    texts = paragraphs(2000)
    piece = "".join(f"<p>{text[:60]}<b>{text[60:90]}</b> <a href='x'>{text[90:]}</a></p>\n" for text in texts)
    with open(path, "w", encoding="utf-8") as out:
        out.write("<!DOCTYPE html><html><head><title>x</title></head><body>\n")
        for _ in range(megabytes * 1_000_000 // len(piece) + 1):
            out.write(piece)
        out.write("</body></html>\n")


def rtf(path, megabytes):
    piece = "".join("{\\pard " + text[:60] + "{\\b " + text[60:90] + "}" + text[90:] + "\\par}\n"
                    for text in paragraphs(2000))
    with open(path, "w", encoding="ascii") as out:
        out.write("{\\rtf1\\ansi{\\fonttbl{\\f0 Times;}}\n")
        for _ in range(megabytes * 1_000_000 // len(piece) + 1):
            out.write(piece)
        out.write("}")


def measure(command, runs=5):
    """Least processor time and wall time in seconds, and the peak in MiB."""
    best, wall = float("inf"), float("inf")
    for _ in range(runs):
        before = resource.getrusage(resource.RUSAGE_CHILDREN)
        begin = time.monotonic()
        subprocess.run(command, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=True)
        wall = min(wall, time.monotonic() - begin)
        after = resource.getrusage(resource.RUSAGE_CHILDREN)
        best = min(best, after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime)
    peak = int(subprocess.run([sys.executable, "-c",
                               "import resource, subprocess, sys; subprocess.run(sys.argv[1:], stdout="
                               "subprocess.DEVNULL); print(resource.getrusage(resource.RUSAGE_CHILDREN)"
                               ".ru_maxrss)", *command], capture_output=True, text=True,
                              check=True).stdout) // 1024
    return best, wall, peak


def show(name, command, peer=None, size=None, runs=5):
    seconds, wall, peak = measure(command, runs)
    line = f"{name:34} {seconds * 1000:9.1f} ms cpu {wall * 1000:9.1f} ms wall {peak:5} MiB"
    if size:
        line += f"  {size / 1e6 / seconds:6.1f} MB/s"
    if peer and not shutil.which(peer[0]):
        line += f"  ({peer[0]} is not installed)"
    elif peer:
        other, _, _ = measure(peer, min(runs, 3))
        line += f"  {peer[0]} {other * 1000:9.1f} ms: ratio {seconds / other:.3f}"
    print(line, flush=True)


def main():
    program = os.path.abspath(sys.argv[1])
    own = tempfile.TemporaryDirectory()
    folder = pathlib.Path(sys.argv[2] if len(sys.argv) > 2 else own.name)
    folder.mkdir(exist_ok=True)
    docx(folder / "small.docx", paragraphs(5))
    docx(folder / "100-pages.docx", paragraphs(700))
    xlsx(folder / "rows.xlsx", 100_000, 10)
    html(folder / "page.html", 50)
    rtf(folder / "text.rtf", 50)
    text = [program, "text"]
    show("small DOCX", [*text, folder / "small.docx"])
    show("small DOCX against itself", [program, "compare", "-q", folder / "small.docx", folder / "small.docx"])
    show("DOCX of 100 pages", [*text, folder / "100-pages.docx"],
         ["pandoc", "-t", "plain", folder / "100-pages.docx"])
    show("XLSX 100,000 x 10", [*text, "--set", "lPadLength=0", folder / "rows.xlsx"],
         ["xlsx2csv", folder / "rows.xlsx"], runs=3)
    show("HTML 50 MB", [*text, folder / "page.html"], size=(folder / "page.html").stat().st_size, runs=2)
    show("RTF 50 MB", [*text, folder / "text.rtf"], size=(folder / "text.rtf").stat().st_size, runs=2)
    if shutil.which("soffice"):
        subprocess.run(["soffice", "--headless", "--convert-to", "pdf", "--outdir", folder,
                        folder / "100-pages.docx"], capture_output=True, check=True)
        pdf = folder / "100-pages.pdf"
        show("PDF, quick", [*text, "--pdf-quick", pdf], ["pdftotext", pdf, "-"])
        show("PDF, robust", [*text, pdf], ["pdftotext", pdf, "-"])
    own.cleanup()


if __name__ == "__main__":
    main()
