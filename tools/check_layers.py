#!/usr/bin/env python3
"""Refuses what would let the house decay unseen:

- an #include that looks downward in the architecture, and Qt outside the ui folders;
- a type that has two definitions in one namespace, in files that one program may link: the linker
  takes either without a word;
- a folder of more than ten files without a README.md.
"""

import collections
import pathlib
import re
import subprocess
import sys

# From the bottom to the top. A folder may include itself and every one that stands above it here.
LAYERS = [
    "common/base",
    "common/platform",
    "common",
    "app/command_line_request.h",
    "options",
    "compare/engine",
    "compare/document",
    "load",
    "load/readers",
    "redline",
    "load/readers/convert_main.cpp",
    "reports",
    "compare",
    "find",
    "folders",
    "app",
    "app/main.cpp",
]
# Linked into zorvane-convert alone: the program's own layers reach it over a pipe, never by include.
ISOLATED = ("load/readers", "redline", "load/readers/convert_main.cpp")
# What is linked with the readers, in that program and in their tests.
LINKED_WITH_READERS = ("common/base", "common/platform", "common", "options", "compare/engine",
                       "compare/document", "load")
# Each folder of them makes programs of its own, of whatever it needs.
EVERYTHING = ("tests/", "bench/", "tools/viewer_driver/")
SUPPORT = "tests/support"
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]')


def layer_of(path):
    """The longest entry of LAYERS that holds `path`."""
    return max((layer for layer in LAYERS if path == layer or path.startswith(layer + "/")),
               key=len, default=None)


def faults_of(path, text):
    in_ui = "/ui/" in path
    own = layer_of(path.replace("/ui/", "/"))
    for number, line in enumerate(text.splitlines(), 1):
        match = INCLUDE.match(line)
        if not match:
            continue
        bracket, target = match.groups()
        if bracket == "<":
            if re.match(r"Q[A-Z]", target) and not in_ui:
                yield number, f"<{target}>: Qt belongs in ui folders"
            continue
        other = layer_of(target.replace("/ui/", "/"))
        if other is None:
            yield number, f'"{target}" is no path from the root'
            continue
        if "/ui/" in target and not in_ui and own != "app/main.cpp":
            yield number, f'"{target}": the core does not see windows'
        elif own and other in ISOLATED and own not in ISOLATED:
            yield number, f'"{target}": the readers live in a program of their own'
        elif own and not in_ui and LAYERS.index(other) > LAYERS.index(own):
            yield number, f'"{target}": {own} stands above {other}'


MOST_FILES = 10  # of a folder that needs no page


def folders_without_page(paths):
    """Folders with too many files of their own; those of their folders do not count."""
    counts = collections.Counter(str(pathlib.PurePosixPath(path).parent) for path in paths)
    for folder, count in sorted(counts.items()):
        if count > MOST_FILES and not pathlib.Path(folder, "README.md").exists():
            yield f"{folder}: {count} files and no README.md"


# What may hide a brace or look like a definition: comments, literals, raw ones first, directives.
NO_CODE = re.compile(r'''R"([^(\s]*)\(.*?\)\1"|//[^\n]*|/\*.*?\*/|"(?:\\.|[^"\\\n])*"'''
                     r'''|(?<![0-9a-fA-F])'(?:\\.|[^'\\\n])+'|^[ \t]*\#(?:\\\n|[^\n])*''', re.S | re.M)
# In front of a brace that opens the definition of a type.
TYPE_HEAD = re.compile(r"(?:^|[\s>\]])(?:class|struct|union|enum(?:\s+(?:class|struct))?)\s+"
                       r"(?:\[\[[^\]]*\]\]\s*)?(\w+)(?:\s+final)?\s*(?::(?!:).*)?$", re.S)
SPACE_HEAD = re.compile(r"(?:^|\s)namespace(?:\s+([\w:]+))?\s*$")


def types_of(text):
    """Full names of the types that a file defines: not nested ones, none of an unnamed namespace."""
    code = NO_CODE.sub(lambda found: "\n" * found.group().count("\n"), text)
    open_braces = []  # the namespace that each opens: "" if it is unnamed, None for any other brace
    head = 0
    for found in re.finditer(r"[{};]", code):
        if found.group() == "{":
            words = code[head:found.start()]
            space = SPACE_HEAD.search(words)
            named = TYPE_HEAD.search(words)
            if space is None and named and all(open_braces):
                yield "::".join([*open_braces, named.group(1)])
            open_braces.append((space.group(1) or "") if space else None)
        elif found.group() == "}" and open_braces:
            open_braces.pop()
        head = found.end()


def may_meet(one, other):
    """Whether one program can hold both files."""
    beside = [path.startswith(EVERYTHING) for path in (one, other)]
    if all(beside):
        folders = [str(pathlib.PurePosixPath(path).parent) for path in (one, other)]
        return SUPPORT in folders or folders[0] == folders[1] and folders[0] != "bench"
    readers = [path.startswith(("load/readers/", "redline/")) for path in (one, other)]
    return (any(beside) or readers[0] == readers[1]
            or any(layer_of(path) in LINKED_WITH_READERS for path in (one, other)))


def doubles(texts):
    """Types with definitions in two files that may meet."""
    places = collections.defaultdict(list)
    for path, text in texts.items():
        for name in set(types_of(text)):
            places[name].append(path)
    for name, paths in sorted(places.items()):
        for index, path in enumerate(paths):
            for other in paths[index + 1:]:
                if may_meet(path, other):
                    yield f"{name}: defined in {path} and in {other}"


def files_named(*patterns):
    names = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard", *patterns],
                           check=True, capture_output=True, text=True).stdout
    return [path for path in names.splitlines() if pathlib.Path(path).exists()]


def main():
    texts = {path: pathlib.Path(path).read_text(encoding="utf-8")
             for path in files_named("*.cpp", "*.h")}
    faults = [*folders_without_page(files_named("*.cpp", "*.h", "*.py", "*.sh")), *doubles(texts)]
    for path, text in texts.items():
        if path.startswith(EVERYTHING):
            continue
        if layer_of(path.replace("/ui/", "/")) is None:
            faults.append(f"{path}: in no known folder")
            continue
        faults += [f"{path}:{number}: {fault}" for number, fault in faults_of(path, text)]
    for fault in faults:
        print(fault)
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
