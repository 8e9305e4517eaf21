#!/usr/bin/env python3
"""Makes the quick start documents (RTF) in installed/ from docs/guide/, and the help pages (HTML): the English one
from docs/USER_GUIDE.md, whose table of keys it writes, the others from docs/guide/.

  make_guides.py            writes them
  make_guides.py --check    fails where one is not what its source says

The sources are Markdown: headings, paragraphs, code (four blanks), tables, pictures, **bold**, and marks
of differences as the guide shows them: {-gone-} and {+new+}.
"""

import html
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
SOURCES = ROOT / "docs" / "guide"
USER_GUIDE = ROOT / "docs" / "USER_GUIDE.md"
COMMANDS = ["app/ui/frame_commands.cpp", "compare/ui/compare_commands.cpp",
            "folders/ui/folder_commands.cpp", "find/ui/find_commands.cpp"]
BEGIN, END = "<!-- Keys, made by tools/make_guides.py -->\n", "<!-- End of the keys -->\n"
ROW = re.compile(r'\{"[\w.]+", "((?:[^"\\]|\\.)*)", "([^"]*)", \d+, "([^"]*)", "[^"]*", "((?:[^"\\]|\\.)*)"')
TARGET = ROOT / "installed"

LANGUAGES = {  # name: (code, font of RTF, its language number, help page)
    "English": ("en", "Liberation Sans", 1033, "Zorvane.html"),
    "German": ("de", "Liberation Sans", 1031, "Zorvane-German.html"),
    "Japanese": ("ja", "Noto Sans CJK JP", 1041, "Zorvane-Japanese.html"),
}
PICTURE = re.compile(r"!\[(.*)\]\((.*)\)")
INLINE = re.compile(r"\*\*(?P<bold>.+?)\*\*|\{-(?P<gone>.+?)-\}|\{\+(?P<new>.+?)\+\}")


def blocks_of(text):
    """(kind, content) of each block: title, heading, paragraph, code, table."""
    for block in re.split(r"\n\s*\n", text.strip()):
        lines = block.split("\n")
        if block.startswith("## "):
            yield "heading", block[3:]
        elif block.startswith("# "):
            yield "title", block[2:]
        elif block.startswith("    "):
            yield "code", "\n".join(line[4:] for line in lines)
        elif block.startswith("<!--"):
            continue
        elif PICTURE.fullmatch(block):
            yield "picture", PICTURE.fullmatch(block).groups()
        elif block.startswith("|"):
            rows = [[cell.strip() for cell in line.strip("|").split("|")] for line in lines]
            yield "table", [row for number, row in enumerate(rows) if number != 1]
        else:
            yield "paragraph", " ".join(lines)


def inline(text, plain, styles):
    """`text` with its marks: `plain` makes text safe, `styles` are what stands around each kind."""
    out, end = "", 0
    for match in INLINE.finditer(text):
        out += plain(text[end:match.start()])
        before, behind = styles[match.lastgroup]
        out += before + plain(match[match.lastgroup]) + behind
        end = match.end()
    return out + plain(text[end:])


# ---- RTF ----

RTF_STYLES = {
    "bold": ("{\\b ", "}"),
    "gone": ("{\\strike\\cf3 ", "}"),
    "new": ("{\\ul\\cf4 ", "}"),
}


def rtf_text(text):
    out = []
    for character in text:
        if character in "\\{}":
            out.append("\\" + character)
        elif ord(character) < 128:
            out.append(character)
        else:
            units = character.encode("utf-16-le")
            for place in range(0, len(units), 2):
                unit = int.from_bytes(units[place:place + 2], "little", signed=True)
                out.append(f"\\u{unit}?")
    return "".join(out)


def rtf_row(cells, heading):
    edges = (3000, 9640)
    row = "\\trowd\\trgaph100\\trleft0\\trkeep" + ("\\trhdr" if heading else "")
    for edge in edges:
        row += "\\clbrdrb\\brdrs\\brdrw8\\brdrcf5" + ("\\clcbpat6" if heading else "")
        row += f"\\clvertalt\\cellx{edge}"
    row += "\n"
    for cell in cells:
        words = inline(cell, rtf_text, RTF_STYLES)
        row += "\\pard\\plain\\intbl\\f0\\fs19\\sb50\\sa50" + ("\\keepn " if heading else " ")
        row += ("{\\b " + words + "}" if heading else words)
        row += "\\cell\n"
    return row + "\\row\n"


def rtf_block(kind, content):
    if kind == "title":
        return "\\pard\\plain\\f0\\fs40\\b\\cf2\\sa160 " + rtf_text(content) + "\\par\n"
    if kind == "heading":
        return ("\\pard\\plain\\f0\\fs26\\b\\cf2\\sb220\\sa80\\keepn\\outlinelevel0 " + rtf_text(content) +
                "\\par\n")
    if kind == "code":
        lines = "\\line ".join(rtf_text(line) for line in content.split("\n"))
        return ("\\pard\\plain\\f1\\fs18\\sb40\\sa120\\li200\\ri200\\cbpat6"
                "\\brdrl\\brdrs\\brdrw30\\brdrcf2\\brsp120 " + lines + "\\par\n")
    if kind == "table":
        rows = "".join(rtf_row(row, number == 0) for number, row in enumerate(content))
        return rows + "\\pard\\plain\\f0\\fs8\\sa40\\par\n"
    return ("\\pard\\plain\\f0\\fs20\\sa110\\sl264\\slmult1 " + inline(content, rtf_text, RTF_STYLES) +
            "\\par\n")


def rtf_document(text, font, language):
    head = ("{\\rtf1\\ansi\\ansicpg1252\\uc1\\deff0\\deflang" + str(language) +
            "{\\fonttbl{\\f0\\fswiss " + font + ";}{\\f1\\fmodern Liberation Mono;}}\n"
            "{\\colortbl;\\red0\\green0\\blue0;\\red43\\green59\\blue75;\\red26\\green78\\blue155;"
            "\\red0\\green102\\blue77;\\red200\\green206\\blue212;\\red241\\green243\\blue245;}\n"
            "{\\info{\\title Zorvane}}\n"
            "\\paperw11906\\paperh16838\\margl1134\\margr1134\\margt1020\\margb1020\\widowctrl\n"
            "{\\footer\\pard\\plain\\qc\\f0\\fs16 {\\field{\\*\\fldinst PAGE}{\\fldrslt 1}}\\par}\n")
    return head + "".join(rtf_block(*block) for block in blocks_of(text)) + "}\n"


# ---- HTML ----

HTML_STYLES = {
    "bold": ("<b>", "</b>"),
    "gone": ("<del>", "</del>"),
    "new": ("<ins>", "</ins>"),
}
STYLE_SHEET = """
:root { color-scheme: light dark; --ink: #2b3b4b; --line: #d9dee3; --ground: #f1f3f5;
  --gone: #1a4e9b; --new: #00664d; }
@media (prefers-color-scheme: dark) { :root { --ink: #c6d3e0; --line: #393f46; --ground: #202429;
  --gone: #94c0ff; --new: #82e6c0; } }
body { font: 1rem/1.5 sans-serif; max-width: 46rem; margin: 2rem auto; padding: 0 1rem; }
h1, h2 { color: var(--ink); line-height: 1.2; }
h2 { margin-top: 2rem; }
pre { background: var(--ground); border-left: 3px solid var(--ink); padding: .6rem .8rem; overflow: auto; }
table { border-collapse: collapse; width: 100%; }
th, td { text-align: left; vertical-align: top; padding: .35rem .6rem; border-bottom: 1px solid var(--line); }
th:first-child, td:first-child { width: 32%; }
th { background: var(--ground); }
img { max-width: 100%; border: 1px solid var(--line); border-radius: 4px; }
del { color: var(--gone); }
ins { color: var(--new); }
"""


def html_text(text):
    return html.escape(text, quote=False)


def html_block(kind, content):
    if kind in ("title", "heading"):
        tag = "h1" if kind == "title" else "h2"
        return f"<{tag}>{html_text(content)}</{tag}>\n"
    if kind == "code":
        return f"<pre>{html_text(content)}</pre>\n"
    if kind == "table":
        out = "<table>\n"
        for number, row in enumerate(content):
            tag = "th" if number == 0 else "td"
            cells = (f"<{tag}>{inline(cell, html_text, HTML_STYLES)}</{tag}>" for cell in row)
            out += "<tr>" + "".join(cells) + "</tr>\n"
        return out + "</table>\n"
    if kind == "picture":
        words, path = content
        return f'<p><img src="{html.escape(path)}" alt="{html.escape(words)}"></p>\n'
    return f"<p>{inline(content, html_text, HTML_STYLES)}</p>\n"


def html_document(text, code):
    title = html_text(next(content for kind, content in blocks_of(text) if kind == "title"))
    return (f'<!DOCTYPE html>\n<html lang="{code}">\n<head>\n<meta charset="utf-8">\n'
            f'<meta name="viewport" content="width=device-width">\n<title>{title}</title>\n'
            f"<style>{STYLE_SHEET}</style>\n</head>\n<body>\n" +
            "".join(html_block(*block) for block in blocks_of(text)) + "</body>\n</html>\n")


# ---- keys ----

def key_table():
    """Of the command tables, in their order; a command without a key is reached by its menu."""
    rows = ["| Keys | Command |", "|---|---|"]
    for name in COMMANDS:
        source = (ROOT / name).read_text(encoding="utf-8")
        for text, _, keys, hint in ROW.findall(source):
            if keys:
                command = text.replace("&", "").rstrip(".")
                rows.append(f"| {keys.replace('; ', ', ')} | **{command}**: {hint[:1].lower()}{hint[1:]} |")
    return "\n".join(rows) + "\n"


def with_keys(guide):
    head, rest = guide.split(BEGIN)
    return head + BEGIN + "\n" + key_table() + "\n" + END + rest.split(END)[1]


def documents():
    guide = with_keys(USER_GUIDE.read_text(encoding="utf-8"))
    yield USER_GUIDE, guide
    for name, (code, font, number, page) in LANGUAGES.items():
        text = (SOURCES / f"{name}.md").read_text(encoding="utf-8")
        yield TARGET / f"Zorvane_QuickStart_{name}.rtf", rtf_document(text, font, number)
        yield TARGET / "help" / page, html_document(guide if name == "English" else text, code)


def main(arguments):
    stale = []
    for path, content in documents():
        if arguments != ["--check"]:
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(content, encoding="utf-8")
        elif not path.exists() or path.read_text(encoding="utf-8") != content:
            stale.append(path.name)
    for name in stale:
        print(f"{name} is not what docs/guide says; run tools/make_guides.py")
    return 1 if stale else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
