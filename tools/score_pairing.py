#!/usr/bin/env python3
"""Scores how a comparer pairs paragraphs and words: ours, git, wdiff and dwdiff in one run.

    tools/score_pairing.py build/release/zorvane --histories DIR [--check] [--details N]

DIR has a subfolder for each file whose revisions are known, with the revisions as files in the order of
their names; programs (.js, .c, ...) make the set "code", all others are prose: as it is ("text"), as a
word processor has it, each paragraph in one and no blank lines ("documents"), and at 72 columns
("wrapped"). Each revision is compared with the next and every third with the one after that; texts with
few words in common are sets of their own ("rewritten"); the aims hold for both together ("all"). Beside
them stand edits of which the truth is known, planted in the same texts and in made ones of several
kinds. What is counted: tools/pairing/metrics.py; what a clear counterpart is: tools/pairing/reference.py.
Comparers that are not installed are told and passed over. Printed are Markdown tables; --details prints
the worst N cases of each kind with their text; --check fails when an aim is missed (report.py)."""

import argparse
import os
import sys
import time

from pairing import comparers, inputs, planted, report, scoring, selftest


def arguments():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("program", nargs="?", help="the zorvane to score")
    parser.add_argument("--histories", metavar="DIR", help="folder of revisions; without it planted edits only")
    parser.add_argument("--limit", type=int, default=300, help="pairs of each form of the revisions (300)")
    parser.add_argument("--seed", type=int, default=1, help="of the planted edits (1)")
    parser.add_argument("--sets", help="only these sets, apart by commas, such as text,laws")
    parser.add_argument("--jobs", type=int, default=min(2, os.cpu_count() or 1), help="cases at once (2)")
    parser.add_argument("--details", type=int, metavar="N", help="print the worst N cases of each kind")
    parser.add_argument("--of", default=scoring.OURS, metavar="COMPARER", help="whose details (zorvane)")
    parser.add_argument("--check", action="store_true", help="fail when an aim is missed")
    parser.add_argument("--self-test", action="store_true", help="test the measures themselves")
    options = parser.parse_args()
    if not options.program and not options.self_test:
        parser.error("the program to score is missing")
    return options


def cases_of(options):
    found = []
    if options.histories:
        found.extend(inputs.spread(inputs.real_cases(options.histories), options.limit))
    found.extend(planted.planted_cases(options.histories, options.seed))
    found.extend(planted.genre_cases(options.seed))
    if options.sets:
        wanted = {name.strip() for name in options.sets.split(",")}
        if unknown := wanted - {case.set for case in found}:
            sys.exit(f"no such set: {', '.join(sorted(unknown))}; there are "
                     + ", ".join(sorted({case.set for case in found})))
        found = [case for case in found if case.set in wanted]
    return found


def main():
    options = arguments()
    if options.self_test:
        return selftest.run()
    tools = comparers.available()
    for tool in comparers.ALL:
        if tool not in tools:
            print(f"{tool} is not installed and passed over", file=sys.stderr)
    begin = time.monotonic()
    scores = scoring.score_all(cases_of(options), os.path.abspath(options.program), tools, options.jobs)
    totals = report.Totals(scores)
    tools = (scoring.OURS, *tools)
    print(report.real_table(totals, tools), report.planted_table(totals, tools), report.promise_table(totals),
          sep="\n\n")
    for failure in totals.failures:
        print(f"no figure: {failure}")
    if options.details:
        report.details(scores, options.details, options.of)
    print(f"{len(scores)} pairs in {time.monotonic() - begin:.0f} s", file=sys.stderr)
    missed = list(report.missed_aims(totals)) if options.check else []
    for line in missed:
        print(f"missed: {line}")
    return 1 if missed else 0


if __name__ == "__main__":
    sys.exit(main())
