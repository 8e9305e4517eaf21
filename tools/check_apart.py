#!/usr/bin/env python3
"""Compiles every file by itself, without precompiled headers and without an object file: the release build compiles ten
at once, which hides an include that is missing or a name that another file of the folder lends. A file that passed is
not compiled again until it, or what it includes, changes.

usage: tools/check_apart.py [FILE...]        all files of the build where none is named; status 1 where one fails

Fuzzers are no part of that build. Theirs compiles each by itself.
"""
import pathlib
import subprocess
import sys

from compile_units import ROOT, Memory, look_at, units, with_output

BUILD = ROOT / "build" / "apart"


def fault(entry):
    run = subprocess.run(with_output(entry, "-fsyntax-only"), shell=True, cwd=entry["directory"], capture_output=True,
                         text=True)
    return run.stderr or f"{entry['file']}: status {run.returncode}\n" if run.returncode else ""


def main():
    entries = units(BUILD, "-DZORVANE_UNITY=OFF")
    wanted = {str(pathlib.Path(name).resolve()) for name in sys.argv[1:]}
    missing = wanted - {entry["file"] for entry in entries}
    if missing:
        print("no part of the build, not looked at:", *sorted(missing))
    entries = [entry for entry in entries if not wanted or entry["file"] in wanted]
    version = subprocess.run(["g++", "--version"], capture_output=True).stdout
    looked, failed = look_at(entries, fault, Memory(BUILD / "passed", version))
    print(f"{len(entries)} files, {looked} compiled apart, {failed} failed")
    return failed > 0


sys.exit(main())
