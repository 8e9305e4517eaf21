"""Looks at units of the build one by one, with all processors, and remembers which were found without fault."""
import concurrent.futures
import hashlib
import json
import os
import pathlib
import re
import subprocess

ROOT = pathlib.Path(__file__).resolve().parent.parent


def units(build, *flags):
    """The compile commands of the release build with these flags more, configured in that folder; a file once."""
    subprocess.run(["cmake", "--preset", "release", "-B", build, "-DZORVANE_PRECOMPILE=OFF", *flags], cwd=ROOT,
                   check=True, stdout=subprocess.DEVNULL)
    entries = json.loads((build / "compile_commands.json").read_text())
    return list({entry["file"]: entry for entry in entries if "autogen" not in entry["file"]}.values())


def with_output(entry, options):
    """The unit's command with these options in place of the object file that it writes."""
    command, changed = re.subn(r" -o \S+ -c ", f" {options} -c ", entry["command"])
    assert changed == 1, entry["command"]
    return command


class Memory:
    """Keeps, below a folder, what each unit without fault was: its command, all that it includes, comments too, and the
    rules."""

    def __init__(self, folder, rules):
        self.folder = folder
        self.rules = rules
        folder.mkdir(parents=True, exist_ok=True)

    def mark(self, entry):
        """A file that is there when this very text was found without fault."""
        text = subprocess.run(with_output(entry, "-E -CC -o -"), shell=True, cwd=entry["directory"],
                              capture_output=True).stdout
        seen = b"\n".join((self.rules, entry["command"].encode(), text))
        digest = hashlib.sha256(seen.replace(bytes(ROOT), b""))
        return self.folder / digest.hexdigest()


def look_at(entries, fault, memory):
    """Calls fault(entry), a text where there is one, for each unit that is new to the memory; prints the texts.
    How many units were looked at, and how many failed."""
    def outcome(entry):
        mark = memory.mark(entry)
        if mark.exists():
            return None
        told = fault(entry)
        if not told:
            mark.touch()
        return told

    looked = failed = 0
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as workers:
        for told in workers.map(outcome, entries):
            looked += told is not None
            failed += bool(told)
            print(told or "", end="", flush=True)
    return looked, failed
