"""One pair of texts against all comparers; many pairs at once."""

import collections
import multiprocessing
import tempfile

from pairing import comparers, metrics, ours, reference
from pairing.text import Text, Weights, common_length

OURS = "zorvane"
DEARER = 3  # records of a case that are looked at for being marked more than git marks them
Job = collections.namedtuple("Job", "case program tools")
# least: the fewest words that can be marked in order. counts, findings: by comparer; faults: (kind, text)
# of ours; failures: what no figure could be had of.
Score = collections.namedtuple("Score", "case least counts findings truths faults failures")


def score(job):
    case = job.case
    first, second = Text(case.first), Text(case.second)
    weights = Weights(first, second)
    clear = reference.clear_pairs(first, second, weights)
    least = len(first.words) + len(second.words) - 2 * common_length(first.words, second.words)
    result = Score(case._replace(first="", second="", truth=None), least, {}, {}, {}, [], [])
    pictures = {}
    with tempfile.TemporaryDirectory(prefix="score_pairing.") as folder:
        comparers.write_sides(folder, first, second)
        for tool in (OURS, *job.tools):
            try:
                shown = show_ours(job.program, folder, first, second, result) if tool == OURS \
                    else comparers.show(tool, folder, first, second)
            except comparers.Unreadable as failure:
                result.failures.append((tool, str(failure)))
                continue
            picture = metrics.Picture(shown, first, second, weights)
            result.counts[tool], result.findings[tool] = metrics.measure(picture, clear)
            if case.truth:
                result.truths[tool] = metrics.score_truth(picture, case.truth)
                result.findings[tool] += truth_findings(result.truths[tool], first, second)
            pictures[tool] = picture
    if OURS in pictures and "git" in pictures:
        result.findings[OURS] += metrics.dearer_records(pictures[OURS], pictures["git"], DEARER)
    return result


def show_ours(program, folder, first, second, result):
    answer = ours.compare(program, folder)
    result.faults.extend(("law", fault) for fault in ours.broken_promises(answer, first, second))
    result.faults.extend(("equal marked", fault) for fault in ours.equal_marked(answer))
    swapped = ours.compare(program, folder, swapped=True)
    result.faults.extend(("unmirrored", fault) for fault in ours.unmirrored(answer, swapped))
    return ours.shown(answer, first, second)


def truth_findings(truth, first, second):
    for kind, pairs in (("planted pair not shown", truth["missing"]), ("pair that is none", truth["false"]),
                        ("move not told", truth["lost_moves"])):
        for p, q in pairs:
            yield metrics.Finding(kind, (p + 1, q + 1), 0.5, [f"original: {first.paragraphs[p]}",
                                                              f"modified: {second.paragraphs[q]}"])


def score_all(cases, program, tools, workers):
    jobs = [Job(case, program, tools) for case in cases]
    if workers == 1:
        return [score(job) for job in jobs]
    with multiprocessing.Pool(workers) as pool:
        return pool.map(score, jobs, chunksize=1)
