#!/usr/bin/env python3
"""Lets each call to the file system fail in its turn: check_failing_calls.py PROGRAM FAILING_CALLS_LIBRARY.

Whatever fails, nobody is told a verdict that was not found, an old output is whole or the new one is, and no
half file, half setting or changed document is left.
"""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

PROGRAM, LIBRARY = sys.argv[1:]
MOST_RUNS = 24  # of each kind and command, spread over the calls it makes
OLD = "the report of yesterday\n"
TEXTS = {"old.txt": "one\ntwo\nthree\n" * 300, "new.txt": "one\n2\nthree\n" * 300, "same.txt": "one\ntwo\nthree\n" * 300,
         "left/a.txt": "a\n", "left/b.txt": "b\n" * 9000, "right/a.txt": "a\n", "right/b.txt": "b\n" * 8999 + "c\n",
         "pairs.tsv": "old.txt\tnew.txt\nold.txt\tsame.txt\n"}
# What is run, its outputs, and the status without any failure.
KEPT = "kept.jsonl"  # its lines stay, others come behind them
COMMANDS = [
    (["compare", "old.txt", "new.txt", "-o", "out.html", "--json", "out.json"], ["out.html", "out.json"], 1),
    (["compare", "old.txt", "same.txt", "-o", "out.csv"], ["out.csv"], 0),
    (["compare", "old.txt", "new.txt", "-o", "out.doc", "-o", "out.txt"], ["out.doc", "out.txt"], 1),
    (["compare", "old.txt", "new.txt", "-o", "out.docx"], ["out.docx"], 1),
    (["compare", "--pairs", "pairs.tsv"], [], 1),
    (["compare", "--pairs", "pairs.tsv", "-o", KEPT], [], 1),
    (["text", "old.txt"], [], 0),
    (["folders", "left", "right", "-r", "--no-cache", "--text", "-o", "out.tsv", "--json", "out.json"],
     ["out.tsv", "out.json"], 1),
    (["find", "c", "right", "--no-cache"], [], 0),
]
faults = []


class Run:
    def __init__(self, arguments, outputs, kind="", at=0):
        with tempfile.TemporaryDirectory(prefix="failing-") as name:
            folder = pathlib.Path(name, "f")
            folder.mkdir()
            for text in TEXTS:
                (folder / text).parent.mkdir(exist_ok=True)
                (folder / text).write_text(TEXTS[text])
                os.utime(folder / text, (1e9, 1e9))
            for output in outputs:
                (folder / output).write_text(OLD)
            (folder / "home").mkdir()
            environment = {"PATH": os.environ["PATH"], "HOME": f"{name}/f/home", "TMPDIR": f"{name}/f", "SOURCE_DATE_EPOCH": "1",
                           "XDG_RUNTIME_DIR": f"{name}/f/home", "LD_PRELOAD": LIBRARY, "FAILING_CALL": kind,
                           "FAILING_AT": str(at), "FAILING_FOLDER": f"{name}/f", "FAILING_COUNT": f"{name}/count",
                           "ASAN_OPTIONS": "verify_asan_link_order=0"}
            done = subprocess.run([PROGRAM, *arguments], cwd=folder, env=environment, capture_output=True, timeout=120)
            self.status, self.told = done.returncode, done.stderr.decode(errors="replace")
            self.printed = done.stdout
            self.lists = [self.printed, (folder / KEPT).read_bytes() if KEPT in TEXTS else b""]
            self.outputs = [(folder / output).read_bytes().replace(name.encode(), b"") for output in outputs]
            self.changed = [text for text in TEXTS if not (folder / text).read_text().startswith(TEXTS[text])
                            or text != KEPT and (folder / text).stat().st_size != len(TEXTS[text])]
            self.left = sorted(str(path.relative_to(folder)) for path in folder.rglob("*") if path.is_file()
                               and str(path.relative_to(folder)) not in {*TEXTS, *outputs}
                               and ".config" not in path.parts and ".local" not in path.parts and ".cache" not in path.parts)
            count = pathlib.Path(name, "count")
            self.calls = int(count.read_text() or 0) if count.exists() else 0


def check(arguments, outputs, status):
    whole = Run(arguments, outputs)
    assert whole.status == status and not whole.left, (arguments, whole.status, whole.told, whole.left)
    for kind in ("read", "write", "rename", "close", "fchmod", "short"):
        calls = 0 if kind == "short" else Run(arguments, outputs, kind).calls
        assert calls or kind != "read", f"{LIBRARY} is not in front of the program"
        step = max(1, -(-calls // MOST_RUNS))
        for at in [0] if kind == "short" else range(1, calls + 1, step):
            run = Run(arguments, outputs, kind, at)
            judged = run.status == whole.status
            if any(b"Input/output error" in text for text in run.lists + run.outputs):
                continue  # a list that names the file which it could not read
            wrong = [
                not judged and run.status != 2 and "another verdict",
                not judged and not run.told and "nothing said",
                judged and run.outputs != whole.outputs and "not what it writes",
                judged and run.printed != whole.printed and "not what it prints",
                kind == "short" and not judged and "short reads and writes are no failures",
                any(b not in (OLD.encode(), w) for b, w in zip(run.outputs, whole.outputs)) and "half an output",
                run.changed and f"changed {run.changed}",
                run.left and f"left {run.left}",
            ]
            for fault in filter(None, wrong):
                faults.append(f"{' '.join(arguments)}: {kind} {at} of {calls}: {fault}: {run.status} {run.told[:200]}")


TEXTS[KEPT] = Run(["compare", "--pairs", "pairs.tsv"], []).printed.decode().splitlines(True)[0]
for command in COMMANDS:
    check(*command)
for fault in faults:
    print(fault)
sys.exit(1 if faults else 0)
