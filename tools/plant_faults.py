#!/usr/bin/env python3
"""Plants faults, one at a time, and tells which of them no test notices.

    tools/plant_faults.py --count 40 --tests zv_engine_test zv_compare_test -- compare/engine/*.cpp

A fault is a small change that somebody could make: a border moved by one, a condition turned round, the other
side, a step left out. Each is built and the named test programs run, in their order, until one fails. What
does not build is not counted. The files must be as committed; each is put back at once, also after Ctrl+C.
Choose few, quick test programs first: a fault costs a compile, a link and a run; a program that is not made of
the file is left out. Not part of any gate.
"""
import argparse
import pathlib
import random
import re
import resource
import subprocess
import sys

# (what it is called, where it stands, what takes its place)
KINDS = [
    ("border", r"(?<=\w|\)|\]) < (?=[\w(])", " <= "),
    ("border", r" <= ", " < "),
    ("border", r"(?<=\w|\)|\]) > (?=[\w(])", " >= "),
    ("border", r" >= ", " > "),
    ("equal", r" == ", " != "),
    ("equal", r" != ", " == "),
    ("logic", r" && ", " || "),
    ("logic", r" \|\| ", " && "),
    ("not", r"(?<=[(\s])!(?=[\w(])", ""),
    ("sign", r" \+ (?=\w)", " - "),
    ("sign", r" - (?=\w)", " + "),
    ("off by one", r" [+-] 1\b", ""),
    ("number", r"(?<![\w.'\"])([2-9]|[1-9]\d+)(?![\w.'\"])", lambda m: str(int(m[1]) + 1)),
    ("truth", r"\btrue\b", "false"),
    ("truth", r"\bfalse\b", "true"),
    ("side", r"\bSide::Original\b", "Side::Modified"),
    ("side", r"\bSide::Modified\b", "Side::Original"),
    ("side", r"\.original\b", ".modified"),
    ("side", r"\.modified\b", ".original"),
    ("order", r"\bstd::min\b", "std::max"),
    ("order", r"\bstd::max\b", "std::min"),
    ("step left out", r"^\s+[\w.\->\[\]]+(\([^;{}]*\))?( [-+|]?= [^;{}]+)?;$", ";"),
    ("way out left out", r"^\s+(return|continue|break);$", ";"),
]
DATA = re.compile(r"^[\s\d,.{}x\-]*$")  # a row of a table of figures
NO_CODE = re.compile(r"^\s*(//|#|using |static_assert|namespace |template|case |default:|return;?$)")
# What no run of the program can show: how much room is made beforehand, and what the release build leaves out.
UNSEEN = re.compile(r"[.>]reserve\(|\bassert\(")


def faults_of(path, lines):
    for number, line in enumerate(lines):
        if DATA.match(line) or UNSEEN.search(line):
            continue
        if NO_CODE.match(line) and not line.strip() in ("return;", "continue;", "break;"):
            continue
        code = re.sub(r'"(\\.|[^"\\])*"', lambda m: "\x01" * len(m[0]), line)  # texts are no code
        code = code.split("//")[0].rstrip()
        for name, pattern, other in KINDS:
            for match in re.finditer(pattern, code):
                new = other(match) if callable(other) else other
                yield path, number, name, line[: match.start()] + new + line[match.end():]


class Trial:
    def __init__(self, build, tests, seconds):
        self.build, self.tests, self.seconds = build, tests, seconds
        self.programs = [self.program(test) for test in tests]
        self.made_of = {program: self.sources(program.name) for program in self.programs}

    def program(self, test):
        found = [p for p in pathlib.Path(self.build, "tests").rglob(test) if p.is_file()]
        if not found:
            sys.exit(f"{test}: no such test program below {self.build}/tests; build it first")
        return found[0]

    def sources(self, test):
        listed = subprocess.run(["ninja", "-C", self.build, "-t", "inputs", test], capture_output=True, text=True)
        files = {pathlib.Path(self.build, file).resolve() for file in listed.stdout.split("\n")}
        for unity in [file for file in files if file.match("Unity/unity_*.cxx")]:
            files.update(pathlib.Path(name) for name in re.findall(r'^#include "(.+)"', unity.read_text(), re.M))
        return files

    def compiles(self, tests):
        return subprocess.run(["ninja", "-C", self.build, *tests], capture_output=True).returncode == 0

    def noticed_by(self, path=None):
        """The first program that fails, "" where all pass, None where one does not build."""
        for program in self.programs:
            if path and path.resolve() not in self.made_of[program]:
                continue
            if not self.compiles([program.name]):
                return None
            # Processor time ends what has no end, so a busy machine makes no fault noticed that is not.
            limit = lambda: resource.setrlimit(resource.RLIMIT_CPU, (self.seconds, self.seconds))
            try:
                run = subprocess.run(
                    [program, "--gtest_fail_fast", "--gtest_brief=1"], capture_output=True, text=True,
                    errors="replace", timeout=10 * self.seconds, preexec_fn=limit)
            except subprocess.TimeoutExpired:
                return program.name + " (no end)"
            if run.returncode != 0:
                failed = re.search(r"^\[  FAILED  \] (\S+?),? ", run.stdout, re.M)
                return f"{program.name} {failed[1] if failed else run.returncode}"
        return ""


def try_fault(trial, fault):
    """The test program that notices the fault, "" where none does, None where it does not build."""
    path, number, _, new = fault
    whole = path.read_text()
    lines = whole.split("\n")
    lines[number] = new
    try:
        path.write_text("\n".join(lines))
        return trial.noticed_by(path)
    finally:
        path.write_text(whole)


def main():
    arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    arguments.add_argument("--build", default="build/release", help="folder of the build (build/release)")
    arguments.add_argument("--tests", nargs="+", required=True, help="test programs, the quickest first")
    arguments.add_argument("--count", type=int, default=50, help="how many faults (50)")
    arguments.add_argument("--seed", type=int, default=1, help="which faults (1)")
    arguments.add_argument("--seconds", type=int, default=120, help="processor time of a test program (120)")
    arguments.add_argument("files", nargs="+", type=pathlib.Path)
    asked = arguments.parse_args()
    if subprocess.run(["git", "diff", "--quiet", "HEAD", "--", *asked.files]).returncode:
        sys.exit("the files differ from their commit")
    trial = Trial(asked.build, asked.tests, asked.seconds)
    if trial.noticed_by() != "":
        sys.exit("the tests fail without any fault")
    all_faults = [f for path in asked.files for f in faults_of(path, path.read_text().split("\n"))]
    random.Random(asked.seed).shuffle(all_faults)
    planted = noticed = 0
    for fault in all_faults:
        if planted == asked.count:
            break
        by = try_fault(trial, fault)
        if by is None:
            continue
        planted += 1
        noticed += bool(by)
        path, number, name, new = fault
        print(f"{by or 'SURVIVED'}: {path}:{number + 1}: {name}: {new.strip()}", flush=True)
    if planted:
        print(f"{noticed} of {planted} noticed ({100 * noticed // planted} %)")


if __name__ == "__main__":
    main()
