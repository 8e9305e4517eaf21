#!/usr/bin/env python3
"""Folder compares and searches of the whole program, in turn with diff, ripgrep and grep.

    tools/bench_trees.py build/release/zorvane FOLDER [PART ...]

Makes its trees below FOLDER (4 GB). Parts: folders, million, find, hostile, documents; without one all of them. Root
drops the kernel's caches before each run "from the disk"; others ask it to forget each file.
"""

import hashlib
import os
import pathlib
import random
import resource
import shutil
import statistics
import subprocess
import sys
import time
import zipfile

sys.path.insert(0, str(pathlib.Path(__file__).parent))
from make_bench_inputs import sentence  # noqa: E402


class Bench:
    def __init__(self, program, folder):
        self.program, self.folder = os.path.abspath(program), folder
        self.cache = folder / "cache"
        self.environment = dict(os.environ, XDG_CACHE_HOME=str(self.cache), LC_ALL="C.UTF-8")

    def run(self, command, keep=False):
        """Seconds by the clock, of the processor, and what was printed."""
        before, used = time.monotonic(), resource.getrusage(resource.RUSAGE_CHILDREN)
        with open(self.folder / "out", "wb") as out:  # to /dev/null, some programs stop at the first hit
            subprocess.run(command, stdout=out, stderr=subprocess.DEVNULL, env=self.environment, check=False)
        wall, after = time.monotonic() - before, resource.getrusage(resource.RUSAGE_CHILDREN)
        cpu = after.ru_utime + after.ru_stime - used.ru_utime - used.ru_stime
        return wall, cpu, (self.folder / "out").read_bytes() if keep else b""

    def in_turn(self, title, commands, rounds, prepare=None):
        times = {name: [] for name in commands}
        for _ in range(rounds):
            for name, command in commands.items():
                if prepare:
                    prepare()
                    subprocess.run([command[0], "--version"], stdout=subprocess.DEVNULL, check=False)
                times[name].append(self.run(command)[:2])
        figures = {name: [statistics.median(row[0] for row in rows), min(rows)[0],
                          statistics.median(row[1] for row in rows)] for name, rows in times.items()}
        cells = " | ".join(f"{name} {wall:.3f} ({least:.3f}, {cpu:.3f})" for name, (wall, least, cpu) in figures.items())
        first, *others = figures.values()
        ratios = ", ".join(f"{first[0] / other[0]:.2f} ({first[1] / other[1]:.2f})" for other in others)
        print(f"| {title} | {cells} | {ratios} |", flush=True)


def write(path, data):
    path.parent.mkdir(parents=True, exist_ok=True)
    path.write_bytes(data)


def make_pairs(root, count):
    if root.is_dir():
        return root
    rng = random.Random(1)
    text = "\n".join(sentence(rng) for _ in range(150)).encode()
    for number in range(count):
        place = f"d{number // 1000}/e{number // 50 % 20}/{number}.txt"
        whole = text[:8500 + rng.randrange(1000)]
        write(root / "a" / place, whole)
        half = len(whole) // 2
        write(root / "b" / place, whole if number % 100 else whole[:half] + b"#" + whole[half + 1:])
    subprocess.run(["sync"], check=True)
    return root


def forget(root):
    try:
        pathlib.Path("/proc/sys/vm/drop_caches").write_text("3")
    except OSError:
        for path in root.rglob("*.txt"):
            handle = os.open(path, os.O_RDONLY)
            os.posix_fadvise(handle, 0, 0, os.POSIX_FADV_DONTNEED)
            os.close(handle)


def folders(bench):
    for count, rounds in ((20_000, 7), (100_000, 3)):
        root = make_pairs(bench.folder / f"pairs{count}", count)
        sides = [str(root / "a"), str(root / "b")]
        commands = {"ours": [bench.program, "folders", *sides, "-r", "-q", "--no-renames"],
                    "diff -rq": ["diff", "-rq", *sides]}
        bench.in_turn(f"{count:,} pairs from memory", commands, rounds)
        if count == 20_000:
            bench.in_turn(f"{count:,} pairs from the disk", commands, 5, lambda: forget(root))
            same_records(bench, sides)


def same_records(bench, sides):
    prints = set()
    for threads in "128":
        table = bench.folder / "table"
        listed = bench.run([bench.program, "folders", *sides, "-r", "-j", threads, "-o", str(table)], keep=True)[2]
        prints.add(hashlib.sha256(listed + table.read_bytes()).hexdigest())
    print(f"Lists and tables by 1, 2 and 8 threads: {'the same' if len(prints) == 1 else 'NOT the same'}", flush=True)


def million(bench):
    root = bench.folder / "million"
    if not root.is_dir():
        (root / "b").mkdir(parents=True)
        for number in range(1_000_000):
            if number % 1000 == 0:
                (root / f"a/d{number // 1000}").mkdir(parents=True)
            open(root / f"a/d{number // 1000}/a file {number}", "wb").close()
    code = ("import resource,subprocess,sys\nsubprocess.run(sys.argv[1:], stdout=subprocess.DEVNULL)\n"
            "print(resource.getrusage(resource.RUSAGE_CHILDREN).ru_maxrss // 1024)")
    command = [bench.program, "folders", str(root / "a"), str(root / "b"), "-r", "--stat"]
    begin = time.monotonic()
    peak = subprocess.run([sys.executable, "-c", code, *command], capture_output=True, text=True, check=True).stdout
    print(f"A million files on one side: {time.monotonic() - begin:.1f} s, {peak.strip()} MB at most", flush=True)


def make_sources(root):
    if root.is_dir():
        return root
    rng = random.Random(2)
    for number in range(20_000):
        lines = [sentence(rng, rng.randrange(20, 90)) for _ in range(200)]
        for at in range(0, 200, 18):
            lines[at] = f"std::vector<int> item{at}(count); // {sentence(rng, 20)}"
        lines[50] += f" on 2024-0{rng.randrange(1, 10)}-1{rng.randrange(10)}"
        lines[60] = f"Word{number}"
        if number % 200 == 0:
            lines[100] += " a rare needle in it"
        if number % 20 == 0:
            lines[120] += " The Hammer falls"
        write(root / f"d{number // 500}/{number}.txt", "\n".join(lines).encode() + b"\n")
    return root


def find(bench):
    root = str(make_sources(bench.folder / "sources"))
    rows = (("a rare text", ["-F"], "needle in it"), ("a common text", ["-F"], "std::vector"),
            ("a word without case", ["-F", "-i", "-w"], "hammer"),
            ("`std::[a-z_]+<int>`", [], "std::[a-z_]+<int>"),
            ("a date in digits", [], "[0-9]{4}-[0-9]{2}-[0-9]{2}"),
            ("`[A-Z][a-z]+[0-9]+$`", [], "[A-Z][a-z]+[0-9]+$"))
    for title, switches, text in rows:
        own = ["-r"] + [switch for switch in switches if switch != "-F"] + ([] if "-F" in switches else ["-e"])
        commands = {"ours": [bench.program, "find", *own, "--", text, root],
                    "ripgrep": ["rg", "-n", "--no-heading", "--hidden", "--no-ignore", *switches, "--", text, root],
                    "grep": ["grep", "-rn", *(switches or ["-E"]), "--", text, root]}
        bench.in_turn(title, commands, 5)
        found = [sorted(bench.run(command, keep=True)[2].splitlines()) for command in commands.values()]
        if any(lines != found[0] for lines in found):
            print(f"  NOT the same lines: {[len(lines) for lines in found]}")


def hostile(bench):
    rng = random.Random(3)
    for expression, letters in (("(a+)+$", "a"), ("(a|b|c|d)*e$", "abcd"), ("a.*b.*c.*d.*e$", "abcd")):
        path = bench.folder / "hostile.txt"
        with open(path, "w", encoding="ascii") as out:
            while out.tell() < 50_000_000:
                length = rng.randrange(80, 4000)
                out.write("".join(rng.choices(letters, k=length)) + rng.choice("!!!e") + "\n")
        commands = {"ours": [bench.program, "find", "-c", "-e", "--", expression, str(path)],
                    "ripgrep": ["rg", "-c", "--", expression, str(path)]}
        bench.in_turn(f"`{expression}`, 50 MB", commands, 3)
        print("  lines:", *(bench.run(command, keep=True)[2].decode().strip().rpartition(":")[2]
                            for command in commands.values()))


CONTENT_TYPES = ('<?xml version="1.0"?><Types xmlns="http://schemas.openxmlformats.org/package/2006/content-types">'
                 '<Default Extension="rels" ContentType="application/vnd.openxmlformats-package.relationships+xml"/>'
                 '<Override PartName="/word/document.xml" ContentType="application/'
                 'vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml"/></Types>')
RELATIONS = ('<?xml version="1.0"?><Relationships xmlns="http://schemas.openxmlformats.org/package/2006/relationships">'
             '<Relationship Id="r1" Type="http://schemas.openxmlformats.org/officeDocument/2006/relationships/'
             'officeDocument" Target="word/document.xml"/></Relationships>')


def write_docx(path, paragraphs):
    path.parent.mkdir(parents=True, exist_ok=True)
    body = "".join(f"<w:p><w:r><w:t>{text}</w:t></w:r></w:p>" for text in paragraphs)
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED) as package:
        package.writestr("[Content_Types].xml", CONTENT_TYPES)
        package.writestr("_rels/.rels", RELATIONS)
        package.writestr("word/document.xml",
                         '<?xml version="1.0"?><w:document xmlns:w="http://schemas.openxmlformats.org/'
                         f'wordprocessingml/2006/main"><w:body>{body}</w:body></w:document>')


def documents(bench):
    rng = random.Random(4)
    root = bench.folder / "documents"
    if not root.is_dir():
        for number in range(1000):  # 20 pages of 3,000 characters
            write_docx(root / f"find/{number}.docx", [sentence(rng, 400) for _ in range(150)])
        for number in range(500):
            text = [sentence(rng, 200) for _ in range(30)]
            write_docx(root / f"a/{number}.docx", text)
            write_docx(root / f"b/{number}.docx", text[:10] + [sentence(rng, 200)] + text[12:])
    for title, command in (("1,000 DOCX of 20 pages", ["find", "-r", "--office", "-c", "ban", str(root / "find")]),
                           ("500 pairs of DOCX with a report each",
                            ["folders", str(root / "a"), str(root / "b"), "-q", "--no-renames", "--reports",
                             str(bench.folder / "reports")])):
        shutil.rmtree(bench.cache, ignore_errors=True)
        cold, *warm = [bench.run([bench.program, *command])[0] for _ in range(6)]
        print(f"| {title} | {cold:.1f} s | then {statistics.median(warm):.2f} s |", flush=True)


def main():
    bench = Bench(sys.argv[1], pathlib.Path(sys.argv[2]).absolute())
    bench.folder.mkdir(parents=True, exist_ok=True)
    parts = {"folders": folders, "million": million, "find": find, "hostile": hostile, "documents": documents}
    print(f"Load of the machine: {os.getloadavg()[0]:.1f} on {os.cpu_count()} cores.\n"
          "Seconds by the clock: median (least, processor); then ours to each of the others.")
    for name in sys.argv[3:] or parts:
        parts[name](bench)


if __name__ == "__main__":
    main()
