#!/usr/bin/env python3
"""Refuses an #include that looks downward in the architecture, and Qt outside the ui folders."""

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
    "reports",
    "compare",
    "find",
    "folders",
    "app",
    "app/main.cpp",
]
# Linked into zorvane-convert alone: the program's own layers reach it over a pipe, never by include.
ISOLATED = "load/readers"
EVERYTHING = ("tests/", "bench/", "tools/viewer_driver/")
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
        elif own and other == ISOLATED and own != ISOLATED:
            yield number, f'"{target}": the readers live in a program of their own'
        elif own and not in_ui and LAYERS.index(other) > LAYERS.index(own):
            yield number, f'"{target}": {own} stands above {other}'


def main():
    names = subprocess.run(["git", "ls-files", "--cached", "--others", "--exclude-standard",
                            "*.cpp", "*.h"], check=True, capture_output=True, text=True).stdout
    failed = False
    for path in names.splitlines():
        file = pathlib.Path(path)
        if path.startswith(EVERYTHING) or not file.exists():
            continue
        if layer_of(path.replace("/ui/", "/")) is None:
            print(f"{path}: in no known folder")
            failed = True
            continue
        for number, fault in faults_of(path, file.read_text(encoding="utf-8")):
            print(f"{path}:{number}: {fault}")
            failed = True
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
