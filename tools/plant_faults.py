#!/usr/bin/env python3
"""Plants faults, one at a time, and tells which of them no test notices.

    cmake --preset plant && cmake --build build/plant
    tools/plant_faults.py --count 40 --tests zv_engine_test zv_compare_test -- compare/engine/*.cpp

A fault is a small change that somebody could make: a border moved by one, a condition turned round, the other
side, a step left out. The file is compiled with it, alone and in a folder apart; its library is linked again
with that in front, and the named test programs run with this library, in their order, until one fails. What
does not compile is not counted. The files of the tree are read only; they must be as they were when
build/plant was built. Programs that the tests start have the fault too, all but zorvane-convert, which starts
without an environment. Choose few, quick test programs first; one that does not use the library is left out.
Not part of any gate.
"""
import argparse
import concurrent.futures
import json
import os
import pathlib
import random
import re
import resource
import shlex
import subprocess
import sys
import tempfile

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


class Build:
    """What the build folder knows of its files: how each is compiled, and how its library is linked."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        self.compiled = {}  # file: (flags of the compiler, object of the build that holds it)
        for entry in json.loads(self.ninja("-t", "compdb")):
            if not entry["output"].endswith(".o"):
                continue
            unit = pathlib.Path(entry["file"])
            flags = [f for f in shlex.split(entry["command"]) if re.match(r"-(D|I/|isystem|std|f(?!preprocessed))", f)]
            files = [unit]
            if unit.match("Unity/unity_*.cxx"):
                files = [pathlib.Path(f) for f in re.findall(r'^#include "(.+)"', unit.read_text(), re.M)]
            for file in files:
                self.compiled[file.resolve()] = (flags, entry["output"])
        self.links = {}  # object: (command of the linker, library)
        for line in self.ninja("-t", "commands").split("\n"):
            command = shlex.split(line.split(" && ")[1]) if " -shared " in line else []
            if "-o" in command:
                library = command[command.index("-o") + 1]
                self.links.update({word: (command, library) for word in command if word.endswith(".o")})

    def ninja(self, *words):
        return subprocess.run(["ninja", "-C", self.folder, *words], capture_output=True, text=True, check=True).stdout

    def libraries_of(self, program):
        return self.ninja("-t", "inputs", program).split("\n")

    def library_of(self, path):
        """The library that holds the file, or None where it stands in no library."""
        _, made = self.compiled.get(path.resolve(), (None, None))
        return self.links.get(made, (None, None))[1]

    def make(self, path, text, folder):
        """The library with `text` in place of the file, in `folder`; whether that can be built."""
        source = folder / path.name
        source.write_text(text)
        flags, made = self.compiled[path.resolve()]
        mended = [*flags, "-I", str(path.resolve().parent), "-O0", "-w", "-UNDEBUG", "-U_FORTIFY_SOURCE"]
        fault = folder / "fault.o"
        compiler = ["g++", *mended, "-D_GLIBCXX_ASSERTIONS", "-c", str(source), "-o", str(fault)]
        if subprocess.run(compiler, cwd=self.folder, capture_output=True).returncode:
            return False
        command, library = self.links[made]
        at = next(i for i, word in enumerate(command) if word.endswith(".o"))
        linker = [*command[:at], "-Wl,--allow-multiple-definition", str(fault), *command[at:]]
        linker[linker.index("-o") + 1] = str(folder / pathlib.Path(library).name)
        return subprocess.run(linker, cwd=self.folder, capture_output=True).returncode == 0


class Trial:
    def __init__(self, build, tests, seconds):
        self.build, self.seconds = build, seconds
        self.programs = [self.program(test) for test in tests]
        self.made_of = {program: build.libraries_of(program.name) for program, _ in self.programs}

    def program(self, test):
        name, _, told = test.partition("@")
        if told:
            return (self.build.folder / name).resolve(), [str(pathlib.Path(told).resolve())]
        name, _, chosen = test.partition(":")
        found = [p for p in (self.build.folder / "tests").rglob(name) if p.is_file()]
        if not found:
            sys.exit(f"{name}: no such test program below {self.build.folder}/tests; build it first")
        return found[0].resolve(), ["--gtest_fail_fast", "--gtest_brief=1", f"--gtest_filter={chosen or '*'}"]

    def noticed_by(self, folder, library=None):
        """The first program that fails with the libraries of `folder`, "" where all pass."""
        environment = {**os.environ, "LD_LIBRARY_PATH": str(folder)}
        # Processor time ends what has no end, so a busy machine makes no fault noticed that is not.
        limit = lambda: resource.setrlimit(resource.RLIMIT_CPU, (self.seconds, self.seconds))
        for program, arguments in self.programs:
            if library and library not in self.made_of[program]:
                continue
            try:
                run = subprocess.run(
                    [program, *arguments], capture_output=True, text=True, errors="replace",
                    timeout=10 * self.seconds, env=environment, preexec_fn=limit)
            except subprocess.TimeoutExpired:
                return program.name + " (no end)"
            if run.returncode != 0:
                failed = re.search(r"^\[  FAILED  \] (\S+?),? ", run.stdout, re.M)
                return f"{program.name} {failed[1] if failed else run.returncode}"
        return ""

    def noticed(self, fault):
        """The test program that notices the fault, "" where none does, None where it does not build."""
        path, number, _, new = fault
        lines = path.read_text().split("\n")
        lines[number] = new
        with tempfile.TemporaryDirectory(prefix="zv-fault") as name:
            folder = pathlib.Path(name)
            if not self.build.make(path, "\n".join(lines), folder):
                return None
            return self.noticed_by(folder, self.build.library_of(path))


def chosen_faults(asked, build):
    """All faults that the files could have, in the order in which they are tried."""
    found = [f for path in asked.files for f in faults_of(path, path.read_text().split("\n"))]
    if asked.again:
        wanted = set(re.findall(r"^SURVIVED: (.*)$", asked.again.read_text(), re.M))
        return [f for f in found if told(f) in wanted]
    random.Random(asked.seed).shuffle(found)
    return found


def told(fault):
    path, number, name, new = fault
    return f"{path}:{number + 1}: {name}: {new.strip()}"


def main():
    arguments = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawTextHelpFormatter)
    arguments.add_argument("--build", default="build/plant", help="folder of the build (build/plant)")
    arguments.add_argument("--tests", nargs="+", required=True, metavar="PROGRAM[:FILTER]",
                           help="test programs, the quickest first; PROGRAM@FILE: any other, with that argument")
    arguments.add_argument("--count", type=int, default=50, help="how many faults (50)")
    arguments.add_argument("--seed", type=int, default=1, help="which faults (1)")
    arguments.add_argument("--again", type=pathlib.Path, metavar="FILE", help="the survivors that FILE tells of")
    arguments.add_argument("--jobs", type=int, default=1, help="how many at once (1)")
    arguments.add_argument("--seconds", type=int, default=120, help="processor time of a test program (120)")
    arguments.add_argument("files", nargs="+", type=pathlib.Path)
    asked = arguments.parse_args()
    build = Build(asked.build)
    for path in [path for path in asked.files if not build.library_of(path)]:
        sys.exit(f"{path}: in no shared library of {asked.build}; configure with the preset \"plant\"")
    trial = Trial(build, asked.tests, asked.seconds)
    if trial.noticed_by(build.folder) != "":
        sys.exit("the tests fail without any fault")
    faults = chosen_faults(asked, build)
    planted = noticed = 0
    with concurrent.futures.ThreadPoolExecutor(asked.jobs) as pool:
        while faults and planted < asked.count:
            batch, faults = faults[: asked.count - planted], faults[asked.count - planted :]
            for fault, by in zip(batch, pool.map(trial.noticed, batch)):
                if by is None:
                    continue
                planted += 1
                noticed += bool(by)
                print(f"{by or 'SURVIVED'}: {told(fault)}", flush=True)
    if planted:
        print(f"{noticed} of {planted} noticed ({100 * noticed // planted} %)")


if __name__ == "__main__":
    main()
