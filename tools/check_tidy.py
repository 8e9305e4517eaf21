#!/usr/bin/env python3
"""clang-tidy with the rules of .clang-tidy over all but tests and benchmarks. All files are looked at as they are
compiled together, ten at once, which takes a sixth of the time. What passed is not looked at again until it, what it
includes or a rule changes.

usage: tools/check_tidy.py [FILE...]         the files named, each by itself; status 1 where something is found
"""
import pathlib
import subprocess
import sys

from compile_units import ROOT, Memory, look_at, units

APART = ("/tests/", "/bench/", "/precompiled.cpp")


def main():
    wanted = [str(pathlib.Path(name).resolve()) for name in sys.argv[1:]]
    build = ROOT / "build" / ("tidy" if wanted else "tidy-all")
    # Precompiled headers are left out as those of g++ are not clang's.
    entries = units(build, "-DZORVANE_UNITY=" + ("OFF" if wanted else "ON"))
    entries = [entry for entry in entries
               if (entry["file"] in wanted if wanted else not any(part in entry["file"] for part in APART))]
    if len(entries) < (len(wanted) or 50):
        print(f"only {len(entries)} files to look at")
        return 1
    rules = (ROOT / ".clang-tidy").read_text()
    if not wanted:  # the files that are compiled together are included from one
        rules = rules.replace("-bugprone-easily-swappable-parameters",
                              "-bugprone-easily-swappable-parameters,\n  -bugprone-suspicious-include")
    (build / "rules").write_text(rules)

    def fault(entry):
        run = subprocess.run(["clang-tidy", "-p", build, "--quiet", f"--config-file={build}/rules", entry["file"]],
                             capture_output=True, text=True)
        return run.stdout + run.stderr if run.returncode else ""

    version = subprocess.run(["clang-tidy", "--version"], capture_output=True).stdout
    looked, failed = look_at(entries, fault, Memory(build / "passed", version + rules.encode()))
    print(f"{len(entries)} units, {looked} looked at, {failed} failed")
    return failed > 0


sys.exit(main())
