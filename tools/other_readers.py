"""LibreOffice and pandoc as long-lived processes, for `check_redlines.py`: the start of either takes
longer than what it is asked."""

import pathlib
import shutil
import subprocess
import sys
import time
import xml.etree.ElementTree
import zlib

try:
    import uno
    from com.sun.star.beans import PropertyValue
except ImportError:
    uno = None

# Answers a line of tabs with the size of a text and the text. Formulas and pictures are left out.
PANDOC_SERVER = """
local without = {Math = function() return {} end, Image = function() return {} end}
local function Whole(name)
  local file = assert(io.open(name, "rb"))
  local bytes = file:read("a")
  file:close()
  return bytes
end
local function Answer(verb, from, to)
  if verb == "make" then
    local document = pandoc.read(Whole(from), "markdown-auto_identifiers")
    local file = assert(io.open(to, "wb"))
    local kind = to:match("%a+$")
    local options = nil
    if kind == "odt" then
      options = {template = pandoc.template.compile(pandoc.template.default(kind))}
    end
    file:write(pandoc.write(document, kind, options))
    file:close()
    return ""
  end
  local document = pandoc.read(Whole(from), from:match("%a+$"), {track_changes = verb})
  return pandoc.write(document:walk(without), "plain", {wrap_text = "wrap-none"})
end
function Pandoc(document)
  for line in io.stdin:lines() do
    local verb, from, to = line:match("^([^\\t]*)\\t([^\\t]*)\\t?(.*)$")
    local good, text = pcall(Answer, verb, from, to)
    text = (good and "" or "FAULT ") .. tostring(text)
    io.stdout:write(#text, "\\n", text)
    io.stdout:flush()
  end
  return document
end
"""


class Pandoc:
    """One process that reads and writes all documents."""

    @staticmethod
    def is_there():
        return shutil.which("pandoc") is not None

    def __init__(self, folder):
        server = folder / "server.lua"
        server.write_text(PANDOC_SERVER)
        self.process = subprocess.Popen(["pandoc", "-f", "markdown", "-t", "plain", "/dev/null",
                                         "--lua-filter", server], stdin=subprocess.PIPE,
                                        stdout=subprocess.PIPE)

    def ask(self, *words):
        self.process.stdin.write("\t".join(map(str, words)).encode() + b"\n")
        self.process.stdin.flush()
        size = int(self.process.stdout.readline())
        return self.process.stdout.read(size).decode("utf-8", "replace")

    def make(self, markdown, file):
        """A document whose kind its name tells."""
        source = file.with_suffix(".md")
        source.write_text(markdown)
        fault = self.ask("make", source, file)
        source.unlink()
        if fault:
            raise RuntimeError(fault)

    def lines(self, file, changes):
        text = self.ask(changes, file)
        # Without the rules of tables, which are as long as what a cell would need.
        return [" ".join(line.split()) for line in text.splitlines() if line.strip(" -")]

    def close(self):
        self.process.stdin.close()
        self.process.wait(30)


NAMES = "{urn:oasis:names:tc:opendocument:xmlns:"
OFFICE, TEXT, TABLE, DRAW = (f"{NAMES}{kind}:1.0}}" for kind in ("office", "text", "table", "drawing"))
BLANKS = {TEXT + "s": " ", TEXT + "tab": "\t", TEXT + "line-break": "\n"}


def append_texts(holder, found):
    """Appends what stands in a holder of paragraphs; what a paragraph holds itself comes behind it."""
    for block in holder:
        if block.tag in (TEXT + "p", TEXT + "h"):
            nested = []
            found.append(letters_of(block, nested))
            for inner in nested:
                found.append("NOTE" if inner.tag == TEXT + "note-body" else "BOX")
                append_texts(inner, found)
        elif block.tag != TEXT + "tracked-changes":
            if block.tag == TABLE + "table-cell":
                found.append("CELL")
            append_texts(block, found)


def letters_of(element, nested):
    # Between the elements of a frame there are blanks for the eye.
    holds_text = element.tag.startswith(TEXT)
    text = (element.text or "") if holds_text else ""
    for child in element:
        if child.tag in BLANKS:
            text += BLANKS[child.tag] * int(child.get(TEXT + "c", "1"))
        elif child.tag in (TEXT + "note-body", DRAW + "text-box"):
            nested.append(child)
        elif child.tag == OFFICE + "binary-data":
            text += f"[{zlib.crc32(''.join((child.text or '').split()).encode())}]"
        elif child.tag not in (TEXT + "note-citation", DRAW + "object", OFFICE + "annotation"):
            text += letters_of(child, nested)
        text += (child.tail or "") if holds_text else ""
    return text


class Office:
    """LibreOffice behind a pipe."""

    @staticmethod
    def is_there():
        return uno is not None and shutil.which("soffice") is not None

    def __init__(self, folder: pathlib.Path):
        self.profile = folder / "profile"
        self.start()

    def start(self):
        pipe = f"zv{time.monotonic_ns()}"
        self.process = subprocess.Popen(
            ["soffice", "--headless", "--norestore",
             f"-env:UserInstallation=file://{self.profile}",
             f"--accept=pipe,name={pipe};urp;"], stdout=subprocess.DEVNULL,
            stderr=subprocess.DEVNULL)
        local = uno.getComponentContext()
        resolver = local.ServiceManager.createInstanceWithContext(
            "com.sun.star.bridge.UnoUrlResolver", local)
        for _ in range(240):
            try:
                context = resolver.resolve(
                    f"uno:pipe,name={pipe};urp;StarOffice.ComponentContext")
                break
            except Exception:  # not up yet
                time.sleep(0.5)
        else:
            sys.exit("LibreOffice does not start")
        self.service = lambda name: context.ServiceManager.createInstanceWithContext(name, context)
        self.desktop = self.service("com.sun.star.frame.Desktop")
        self.dispatcher = self.service("com.sun.star.frame.DispatchHelper")

    @staticmethod
    def values(**named):
        values = []
        for name, value in named.items():
            one = PropertyValue()
            one.Name, one.Value = name, value
            values.append(one)
        return tuple(values)

    def open(self, file, command=None):
        document = self.desktop.loadComponentFromURL(file.resolve().as_uri(), "_blank", 0,
                                                     self.values(Hidden=True))
        if command:
            self.dispatcher.executeDispatch(document.CurrentController.Frame, ".uno:" + command, "",
                                            0, ())
        return document

    def texts(self, file, command=None):
        """Of paragraphs, cells and notes, in their order. The document comes in one piece: asked for
        its paragraphs, the office answers as slowly as the machine is busy."""
        flat = self.profile.with_suffix(".fodt")
        self.store(file, flat, "OpenDocument Text Flat XML", command)
        found = []
        append_texts(xml.etree.ElementTree.parse(flat).find(f"{OFFICE}body/{OFFICE}text"), found)
        return found

    def store(self, file, target, filter_name, command=None, change=None):
        document = self.open(file, command)
        if change:
            change(document)
        document.storeToURL(target.resolve().as_uri(), self.values(FilterName=filter_name))
        document.close(True)

    def close(self):
        try:
            self.desktop.terminate()
        except Exception:  # it is gone before it answers
            pass
        try:
            self.process.wait(30)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()

    def restart(self):
        self.close()
        self.start()
