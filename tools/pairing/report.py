"""Totals as Markdown tables, the aims, and the worst cases to read."""

import collections

from pairing.metrics import CHUNK
from pairing.scoring import OURS

REAL = ("text", "documents", "wrapped", "code", "rewritten text", "rewritten documents", "rewritten wrapped",
        "all text", "all documents")
REFLOWED = {"wrapped", "rewritten wrapped"}  # lines of re-wrapped paragraphs have no counterparts to be judged by
PROMISES = ("unmirrored", "equal marked", "law")
LEAST = "fewest possible"  # words that any comparer marks that keeps the order
WIDTH = 600
# Set: share wrongly paired, woven against git's, chunks against git's, marked words against git's.
AIMS = {"all text": (0.005, 0.15, 0.7, 0.95), "all documents": (0.002, 0.15, 0.7, 1.05)}
MOVES_FOUND = 0.95
SLACK = 0.01  # in place, so much above git's cost is no more than another choice among equals


class Totals:
    """Sums over the cases: counts[set, comparer], pairs[set], promises[set]."""

    def __init__(self, scores):
        self.counts = collections.defaultdict(collections.Counter)
        self.pairs, self.promises = collections.Counter(), collections.defaultdict(collections.Counter)
        self.failures = []
        for score in scores:
            self.add(score)

    def add(self, score):
        name = score.case.set
        self.sum_up(name, score)
        if name.removeprefix("rewritten ") in ("text", "documents"):
            self.sum_up("all " + name.removeprefix("rewritten "), score)
        self.promises[name].update(kind for kind, _ in score.faults)
        self.failures += [f"{name}, {score.case.name}: {tool}: {failure}" for tool, failure in score.failures]

    def sum_up(self, name, score):
        self.pairs[name] += 1
        # A pair that one comparer could not do is left out for all, so that the sums can be compared.
        if not score.failures:
            self.counts[name, LEAST]["marked"] += score.least
            for tool, counts in score.counts.items():
                self.counts[name, tool].update(counts)
            for tool, truth in score.truths.items():
                self.counts[name, tool].update({key: value for key, value in truth.items() if isinstance(value, int)})

    def ratio(self, name, tool, key):
        of_git = self.counts[name, "git"][key]
        return self.counts[name, tool][key] / of_git if of_git else None

    def cost(self, name, tool):
        return self.counts[name, tool]["marked"] + CHUNK * self.counts[name, tool]["chunks"]

    def f1(self, name, tool):
        counts = self.counts[name, tool]
        both = counts["shown"] + counts["true"]
        return 2 * counts["right"] / both if both else 1.0


def number(value, digits=3):
    return "-" if value is None else f"{value:,}" if isinstance(value, int) else f"{value:.{digits}f}"


def row(*cells):
    return "| " + " | ".join(map(str, cells)) + " |"


def header(*cells):
    return row(*cells) + "\n" + "|" + "---|" * len(cells)


def real_table(totals, tools):
    lines = [header("Revisions", "Pairs", "Comparer", "Wrongly paired", "As deleted and added", "Crossing, wrong",
                    "Woven", "Chunks", "/ git", "Marked words", "/ git")]
    for name in REAL:
        for tool in tools if totals.pairs[name] else ():
            counts = totals.counts[name, tool]
            judged = [f"{counts['wrong']} of {counts['clear']:,}", counts["missed"],
                      f"{counts['wrong_crossing']} of {counts['crossing']}"]
            lines.append(row(name, totals.pairs[name], tool, *(["-"] * 3 if name in REFLOWED else judged),
                             counts["woven"], number(counts["chunks"]), number(totals.ratio(name, tool, "chunks")),
                             number(counts["marked"]), number(totals.ratio(name, tool, "marked"))))
        if totals.pairs[name]:
            lines.append(row(name, totals.pairs[name], LEAST, *(["-"] * 6),
                             number(totals.counts[name, LEAST]["marked"]), number(totals.ratio(name, LEAST, "marked"))))
    return "\n".join(lines)


def planted_table(totals, tools):
    others = [tool for tool in tools if tool != OURS]
    lines = [header("Planted edits", "Cases", "True pairs", "Precision", "Recall", "F1",
                    *(f"F1 {tool}" for tool in others), "Moves found", "False", "Woven / git", "Chunks / git",
                    "Marked / git")]
    for name in (name for name in totals.pairs if name not in REAL):
        counts = totals.counts[name, OURS]
        woven = f"{counts['woven']} / {totals.counts[name, 'git']['woven']}"
        found = f"{counts['moves_found']} of {counts['moves_true']}" if counts["moves_true"] else "-"
        lines.append(row(name, totals.pairs[name], counts["true"],
                         number(counts["right"] / max(counts["shown"], 1)),
                         number(counts["right"] / max(counts["true"], 1)),
                         *(number(totals.f1(name, tool)) for tool in (OURS, *others)), found,
                         counts["moves_false"], woven, number(totals.ratio(name, OURS, "chunks")),
                         number(totals.ratio(name, OURS, "marked"))))
    return "\n".join(lines)


def promise_table(totals):
    lines = [header("Promises", "Pairs", "Unmirrored", "Equal sections marked", "Law of the records broken")]
    everything = collections.Counter()
    sets = {name: pairs for name, pairs in totals.pairs.items() if name not in AIMS}
    for name, pairs in sets.items():
        broken = totals.promises[name]
        everything.update(broken)
        if name in REAL or broken:
            lines.append(row(name, pairs, *(broken[kind] for kind in PROMISES)))
    lines.append(row("all", sum(sets.values()), *(everything[kind] for kind in PROMISES)))
    return "\n".join(lines)


def missed_aims(totals):
    """What stays behind the aims, as sentences."""
    for name, aims in AIMS.items():
        if totals.pairs[name]:
            yield from missed_real(totals, name, *aims)
    for name in totals.pairs:
        yield from (f"{name}: {totals.promises[name][kind]} {kind}" for kind in PROMISES
                    if totals.promises[name][kind])
        if name not in REAL:
            yield from missed_planted(totals, name)
    # A yardstick that fails is told, but it is no fault of ours.
    yield from (f"no figure: {failure}" for failure in totals.failures if f": {OURS}: " in failure)


def missed_real(totals, name, wrong, woven, chunks, marked):
    counts, of_git = totals.counts[name, OURS], totals.counts[name, "git"]
    if counts["wrong"] > wrong * counts["clear"]:
        yield f"{name}: {counts['wrong']} of {counts['clear']} wrongly paired, at most {wrong:.1%} wanted"
    if not of_git:
        yield f"{name}: git is missing, so nothing to measure by"
        return
    if counts["woven"] > woven * of_git["woven"]:
        yield f"{name}: {counts['woven']} woven, at most {woven} of git's {of_git['woven']} wanted"
    for key, most in (("chunks", chunks), ("marked", marked)):
        if totals.ratio(name, OURS, key) > most:
            least = totals.ratio(name, LEAST, key)
            yield (f"{name}: {key} {totals.ratio(name, OURS, key):.3f} of git's, at most {most} wanted"
                   + (f" ({least:.3f} is the fewest possible)" if least else ""))


def missed_planted(totals, name):
    counts = totals.counts[name, OURS]
    if counts["moves_false"]:
        yield f"{name}: {counts['moves_false']} paragraphs in false moves"
    if counts["moves_found"] < MOVES_FOUND * counts["moves_true"]:
        yield f"{name}: {counts['moves_found']} of {counts['moves_true']} moves found"
    if not totals.counts[name, "git"]:
        return
    if totals.f1(name, OURS) < totals.f1(name, "git"):
        yield f"{name}: F1 {totals.f1(name, OURS):.3f}, git {totals.f1(name, 'git'):.3f}"
    if name == "in place" and totals.cost(name, OURS) > (1 + SLACK) * totals.cost(name, "git"):
        yield (f"{name}: marked words and {CHUNK} x chunks {totals.cost(name, OURS):.0f}, "
               f"git {totals.cost(name, 'git'):.0f}")


def details(scores, most, tool):
    """The worst findings of each kind and set."""
    kinds = collections.defaultdict(list)
    for score in scores:
        for finding in score.findings.get(tool, ()):
            kinds[score.case.set, finding.kind].append((finding.weight, score.case.name, finding))
        for kind, fault in score.faults if tool == OURS else ():
            kinds[score.case.set, kind].append((1, score.case.name, fault))
    for (name, kind), found in kinds.items():
        print(f"\n## {name}: {kind} ({len(found)})")
        for weight, case, finding in sorted(found, key=lambda entry: -entry[0])[:most]:
            if isinstance(finding, str):
                print(f"- {case}: {finding}")
                continue
            print(f"- {case}, paragraphs {', '.join(map(str, finding.where))}, {weight:.2f}")
            for line in finding.lines:
                print("    " + (line if len(line) <= WIDTH else line[:WIDTH] + " ..."))
