#!/usr/bin/env python3
"""Compiles every file by itself, without precompiled headers and without an object file: the release build compiles ten
at once, which hides an include that is missing or a name that another file of the folder lends.

usage: tools/check_apart.py [FILE...]        all files of the build where none is named; status 1 where one fails

Fuzzers are no part of that build. Theirs compiles each by itself.
"""
import concurrent.futures
import json
import os
import pathlib
import re
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILD = ROOT / "build" / "apart"


def commands(named):
    subprocess.run(["cmake", "--preset", "release", "-B", BUILD, "-DZORVANE_UNITY=OFF", "-DZORVANE_PRECOMPILE=OFF"],
                   cwd=ROOT, check=True, stdout=subprocess.DEVNULL)
    wanted = {str(pathlib.Path(name).resolve()) for name in named}
    seen = {}
    for entry in json.loads((BUILD / "compile_commands.json").read_text()):
        if "autogen" not in entry["file"] and (not wanted or entry["file"] in wanted):
            seen[entry["file"]] = entry
    missing = wanted - seen.keys()
    if missing:
        print("no part of the build, not looked at:", *sorted(missing))
    return list(seen.values())


def failure(entry):
    command = re.sub(r" -o \S+ -c ", " -fsyntax-only -c ", entry["command"])
    assert "-fsyntax-only" in command, command
    run = subprocess.run(command, shell=True, cwd=entry["directory"], capture_output=True, text=True)
    return run.stderr if run.returncode else ""


def main():
    entries = commands(sys.argv[1:])
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as workers:
        for told in workers.map(failure, entries):
            failed += bool(told)
            print(told, end="", flush=True)
    print(f"{len(entries)} files compiled apart, {failed} failed")
    return failed > 0


sys.exit(main())
