#!/usr/bin/env python3
"""Ends the program in every bad way and looks at what it leaves: check_endings.py PROGRAM."""

import os
import pathlib
import resource
import shutil
import signal
import subprocess
import sys
import tempfile
import time

PROGRAM = sys.argv[1]
SANITIZED = bool(os.environ.get("ZORVANE_SANITIZED"))
faults = []


def check(name, holds, shown=""):
    if not holds:
        faults.append(name)
        print(f"FAILED {name}: {shown}")


class Folder:
    """A fresh folder with a home, a runtime folder and a temporary folder of its own."""

    def __init__(self):
        self.path = pathlib.Path(tempfile.mkdtemp(prefix="endings-"))
        for name in ("home", "run", "tmp"):
            (self.path / name).mkdir(mode=0o700)
        self.environment = {"PATH": os.environ["PATH"], "LANG": "C.UTF-8",
                            "HOME": str(self.path / "home"),
                            "XDG_RUNTIME_DIR": str(self.path / "run"),
                            "TMPDIR": str(self.path / "tmp")}
        self.write("a.txt", "one\ntwo\nthree\n")
        self.write("b.txt", "one\n2\nthree\n")

    def write(self, name, text):
        (self.path / name).write_text(text, encoding="utf-8")

    def read(self, name):
        return (self.path / name).read_text(encoding="utf-8")

    def start(self, *arguments, limits=(), environment=None, **options):
        def limit():
            for kind, amount in limits:
                resource.setrlimit(kind, (amount, amount))
        options.setdefault("stdout", subprocess.PIPE)
        return subprocess.Popen([PROGRAM, *arguments], cwd=self.path, stderr=subprocess.PIPE,
                                env={**self.environment, **(environment or {})},
                                preexec_fn=limit, **options)

    def run(self, *arguments, **options):
        process = self.start(*arguments, **options)
        output, error = process.communicate(timeout=120)
        return process.returncode, (output or b"").decode(), error.decode()

    def left(self):
        return sorted(path.name for path in (self.path / "tmp").iterdir())


def outputs_harm_nothing(folder):
    folder.write("old.html", "mine\n")
    (folder.path / "hard.txt").hardlink_to(folder.path / "a.txt")
    (folder.path / "soft.txt").symlink_to("a.txt")
    for name in ("a.txt", "hard.txt", "soft.txt", "./home/../b.txt"):
        for option in ("--log", "--json"):
            status, _, error = folder.run("compare", "a.txt", "b.txt", option, name)
            check(f"{option} {name}", status == 2 and name in error, error)
        status, _, error = folder.run("text", "a.txt", "--log", name)
        check(f"text --log {name}", (status == 2) == ("b.txt" not in name), error)
    for first, second in (("r.html", "r.html"), ("r.html", "./r.html"), ("r.html", "link.html")):
        (folder.path / "link.html").unlink(missing_ok=True)
        (folder.path / "link.html").symlink_to("r.html")
        status, _, error = folder.run("compare", "a.txt", "b.txt", "-o", first, "--json", second)
        check(f"-o {first} --json {second}", status == 2 and "--report" in error, error)
    check("inputs as they were", folder.read("a.txt") == "one\ntwo\nthree\n")
    (folder.path / "to-come.html").symlink_to("home/new.html")
    status, _, error = folder.run("compare", "a.txt", "b.txt", "-q", "-o", "to-come.html")
    check("a link to nothing yet", status == 1 and (folder.path / "to-come.html").is_symlink() and
          "<html" in folder.read("home/new.html"), error)


def streams_and_limits(folder):
    folder.write("long.txt", "".join(f"line {number}\n" for number in range(300000)))
    folder.write("longer.txt", "".join(f"line {number}!\n" for number in range(300000)))
    reader, writer = os.pipe()
    os.close(reader)
    status, _, error = folder.run("text", "long.txt", stdout=writer)
    os.close(writer)
    check("a closed pipe", status == 2 and "standard output: Broken pipe" in error, error)
    status, _, error = folder.run("compare", "long.txt", "longer.txt", "-q", "--unchanged", "all",
                                  "-o", "r2.html", limits=[(resource.RLIMIT_FSIZE, 100000)])
    left = [path.name for path in folder.path.iterdir() if path.name.startswith(".zorvane")]
    check("a file-size limit", status == 2 and "File too large" in error and not left and
          not (folder.path / "r2.html").exists(), (status, error, left))
    if not SANITIZED:
        status, _, error = folder.run("compare", "long.txt", "longer.txt", "-q", "-o", "r3.html",
                                      limits=[(resource.RLIMIT_AS, 90 << 20)])
        check("no memory", status == 2 and "memory" in error, (status, error))
        check("no memory: nothing left", folder.left() == [], folder.left())
    missing = {"TMPDIR": str(folder.path / "missing")}
    folder.write("page.html", "<p>one</p>")
    status, _, error = folder.run("compare", "a.txt", "b.txt", "-q", environment=missing)
    check("two plain texts need no temporary folder", status == 1, error)
    status, _, error = folder.run("text", "page.html", environment=missing)
    check("a missing temporary folder is named", status == 2 and "missing" in error, error)


def wait_for_folder(folder):
    for _ in range(400):
        if folder.left():
            return True
        time.sleep(0.01)
    return False


def killed_while_reading(folder):
    fifo = folder.path / "slow.docx"
    os.mkfifo(fifo)

    for number in (signal.SIGTERM, signal.SIGINT, signal.SIGHUP, signal.SIGKILL):
        for pause in (0.0, 0.01, 0.03):
            process = folder.start("compare", "page.html", "slow.docx", "-q")
            time.sleep(0.05 + pause)
            process.send_signal(number)
            process.communicate(timeout=60)
            if number != signal.SIGKILL:
                check(f"nothing left after {number}", folder.left() == [], folder.left())
    fifo.unlink()
    stale = folder.path / "tmp" / "zorvane-abcdef"
    stale.mkdir()
    (stale / ".owner").touch()
    (stale / "document.rtf").touch()
    strange = folder.path / "tmp" / "zorvane-fedcba"  # without a mark it may be anybody's
    strange.mkdir()
    status, _, error = folder.run("text", "page.html")
    check("the next run sweeps", status == 0 and folder.left() == [strange.name],
          (error, folder.left()))
    strange.rmdir()


def killed_while_converting(folder):
    if not shutil.which("soffice"):
        print("no office suite here: its children are not tried")
        return
    subprocess.run(["soffice", "--headless", "--convert-to", "doc", "--outdir", str(folder.path),
                    str(folder.path / "a.txt")], check=False, capture_output=True,
                   env=folder.environment, timeout=120)
    if not (folder.path / "a.doc").exists():
        check("a document to try", False, "soffice made none")
        return
    for shift in range(12):
        process = folder.start("text", "a.doc", stdout=subprocess.DEVNULL)
        wait_for_folder(folder)
        time.sleep(0.04 * shift)
        process.send_signal(signal.SIGTERM)
        _, error = process.communicate(timeout=60)
        check(f"a suite ended after {0.04 * shift:.2f} s", folder.left() == [] and not error,
              (folder.left(), error))


def main():
    folder = Folder()
    try:
        outputs_harm_nothing(folder)
        streams_and_limits(folder)
        killed_while_reading(folder)
        killed_while_converting(folder)
    finally:
        shutil.rmtree(folder.path)
    print(f"{len(faults)} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
