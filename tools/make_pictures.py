#!/usr/bin/env python3
"""Makes the pictures in docs/images from the example pair: the HTML page, the terminal, the word-processor
report, the windows.

    tools/make_pictures.py build/release/zorvane               all
    tools/make_pictures.py build/release/zorvane --windows     those of the windows alone

Needs Chromium, ImageMagick, LibreOffice and pdftoppm, which neither building nor testing needs."""

import html
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
PAIR = ["examples/lease-2025.rtf", "examples/lease-2026.rtf"]
COLORS = {"1": "font-weight:bold", "36": "color:#0b7285", "31;9": "color:#b02a37;text-decoration:line-through",
          "32;4": "color:#0a7d3c;text-decoration:underline", "0": None}


def run(*command, **options):
    return subprocess.run([str(part) for part in command], check=False, cwd=ROOT, capture_output=True, **options)


def shoot(page, picture, size, folder):
    run("chromium", "--headless", "--no-sandbox", "--disable-gpu", "--hide-scrollbars", f"--window-size={size}",
        f"--user-data-dir={folder / 'profile'}", f"--screenshot={picture}", f"file://{page}")


def terminal_page(text):
    """The escape sequences of the terminal report as a page."""
    out, is_open = [], False
    for part in re.split(r"(\x1b\[[0-9;]*m)", text):
        code = re.fullmatch(r"\x1b\[([0-9;]*)m", part)
        if not code:
            out.append(html.escape(part))
            continue
        if is_open:
            out.append("</span>")
        style = COLORS.get(code.group(1))
        is_open = style is not None
        if is_open:
            out.append(f'<span style="{style}">')
    return ('<meta charset="utf-8"><body style="margin:24px;background:#fdfdfb"><pre style="font:15px/1.5 monospace;'
            'white-space:pre-wrap">' + "".join(out) + "</pre>")


# Of the user guide: what zv_window_pictures draws, and its name in docs/images.
WINDOWS = {"01-start": "window-start", "02-compare": "window-compare", "05-result-panel": "window-panel",
           "08-all-in-one-dark": "window-all-in-one"}


# Of the README: the same for the pair as a PDF and a word processor's document.
KINDS = {"08-all-in-one-dark": "window-pdf-dark"}


def office(folder, document, kind):
    run("soffice", f"-env:UserInstallation=file://{folder / 'office'}", "--headless", "--convert-to", kind,
        "--outdir", folder, document)
    return folder / pathlib.Path(document).with_suffix(f".{kind}").name


def small(picture):
    """256 colours are enough for a window."""
    run("convert", picture, "+dither", "-colors", "256", f"PNG8:{picture}")


def draw_windows(painter, images, folder):
    if not painter.exists():
        print(f"{painter} is not built; the pictures of the windows stay as they are")
        return
    kinds = office(folder, PAIR[0], "pdf").name, office(folder, PAIR[1], "docx").name
    # Names as short as they are given stand in the pictures.
    for pair, place, drawings in ((PAIR, ROOT, WINDOWS), (kinds, folder, KINDS)):
        subprocess.run([painter, "compare", *pair, folder], check=True, cwd=place,
                       env={**os.environ, "QT_QPA_PLATFORM": "offscreen"})
        for drawn, name in drawings.items():
            shutil.copy(folder / f"{drawn}.png", images / f"{name}.png")
            small(images / f"{name}.png")


def main():
    program = pathlib.Path(sys.argv[1]).resolve()
    images = ROOT / "docs/images"
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        draw_windows(program.parent / "tests/ui/zv_window_pictures", images, folder)
        if sys.argv[2:] == ["--windows"]:
            return
        run(program, "compare", *PAIR, "--title", "Lease, 2025 and 2026", "-o", folder / "lease.html",
            "-o", folder / "lease.doc")
        shoot(folder / "lease.html", images / "report.png", "1280,1100", folder)
        shown = run(program, "compare", *PAIR, "--color=always", "--no-pager", "-U", "0").stdout.decode()
        (folder / "terminal.html").write_text(terminal_page(shown), encoding="utf-8")
        shoot(folder / "terminal.html", images / "terminal.png", "1100,900", folder)
        page = office(folder, folder / "lease.doc", "pdf")
        run("pdftoppm", "-png", "-r", "80", "-f", "1", "-l", "1", "-singlefile", page, images / "document")


if __name__ == "__main__":
    main()
