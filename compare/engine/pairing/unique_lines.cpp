#include "compare/engine/pairing/unique_lines.h"

#include <algorithm>
#include <span>

#include "compare/engine/difference_search.h"
#include "compare/engine/line_table.h"
#include "compare/engine/pairing/alike_lines.h"
#include "compare/engine/pairing/cheap_alignment.h"
#include "compare/engine/pairing/heaviest_chain.h"

namespace zorvane {
namespace {

// How often a line stands on each side, and where it last stood.
struct Use {
    std::int32_t firsts = 0;
    std::int32_t seconds = 0;
    std::int32_t second = 0;
};

// The lines of a range as dense numbers; equal lines have equal ones.
struct Numbered {
    std::vector<std::uint32_t> first;
    std::vector<std::uint32_t> second;
    std::uint32_t count = 0;
};

Numbered NumberLines(const CompareSide& first, const CompareSide& second, const PlaceRange& range) {
    LineTable table;
    const auto firsts = static_cast<std::size_t>(range.FirstCount());
    const auto seconds = static_cast<std::size_t>(range.SecondCount());
    table.Clear(firsts + seconds);
    Numbered numbers;
    numbers.first.reserve(firsts);
    numbers.second.reserve(seconds);
    StopCheck stop(first.Watcher());
    for (std::int32_t place = range.first_begin; place < range.first_end && stop.KeepGoing();
         ++place)
        numbers.first.push_back(table.NumberOf(first.Key(place)));
    for (std::int32_t place = range.second_begin; place < range.second_end && stop.KeepGoing();
         ++place)
        numbers.second.push_back(table.NumberOf(second.Key(place)));
    numbers.count = table.Count();
    return numbers;
}

void AppendPlace(std::vector<EqualRun>& runs, std::int32_t first, std::int32_t second) {
    if (!runs.empty() && runs.back().first + runs.back().length == first &&
        runs.back().second + runs.back().length == second)
        ++runs.back().length;
    else
        runs.push_back({first, second, 1});
}

// Lines once on each side, ascending on the first; neighbours that follow each other on both sides
// are one run, which keeps the chain short.
std::vector<EqualRun> UniqueRuns(const Numbered& numbers, const PlaceRange& range) {
    std::vector<Use> uses(numbers.count);
    for (const std::uint32_t number : numbers.first)
        ++uses[number].firsts;
    for (std::size_t i = 0; i < numbers.second.size(); ++i) {
        ++uses[numbers.second[i]].seconds;
        uses[numbers.second[i]].second = range.second_begin + static_cast<std::int32_t>(i);
    }
    std::vector<EqualRun> runs;
    for (std::size_t i = 0; i < numbers.first.size(); ++i) {
        const Use& use = uses[numbers.first[i]];
        if (use.firsts == 1 && use.seconds == 1)
            AppendPlace(runs, range.first_begin + static_cast<std::int32_t>(i), use.second);
    }
    return runs;
}

// A large gap between unique lines (copies of few lines, as in data): a shortest list of
// differences finds its runs.
void AppendShortest(const Numbered& numbers, const PlaceRange& range, const PlaceRange& gap,
                    RunWatcher* watcher, std::vector<EqualRun>& runs) {
    constexpr std::int32_t kLeastLines = 512;  // less is for the closer look
    if (gap.FirstCount() < kLeastLines || gap.SecondCount() < kLeastLines)
        return;
    const auto part = [](const std::vector<std::uint32_t>& side, std::int32_t begin,
                         std::int32_t count) {
        return std::span(side).subspan(static_cast<std::size_t>(begin),
                                       static_cast<std::size_t>(count));
    };
    DifferenceSearch search;
    search.Watch(watcher);
    search.Run(part(numbers.first, gap.first_begin - range.first_begin, gap.FirstCount()),
               part(numbers.second, gap.second_begin - range.second_begin, gap.SecondCount()),
               numbers.count);
    for (const AlignedPair& pair : MatchedPairs(search.Changed()))
        AppendPlace(runs, gap.first_begin + pair.first, gap.second_begin + pair.second);
}

// Up to the run in front, and down to the next.
void Grow(std::vector<EqualRun>& chain, const CompareSide& first, const CompareSide& second,
          const PlaceRange& range) {
    std::int32_t low_first = range.first_begin;
    std::int32_t low_second = range.second_begin;
    for (std::size_t k = 0; k < chain.size(); ++k) {
        EqualRun& run = chain[k];
        while (run.first > low_first && run.second > low_second &&
               first.Key(run.first - 1) == second.Key(run.second - 1)) {
            --run.first;
            --run.second;
            ++run.length;
        }
        const bool last = k + 1 == chain.size();
        const std::int32_t high_first = last ? range.first_end : chain[k + 1].first;
        const std::int32_t high_second = last ? range.second_end : chain[k + 1].second;
        while (run.first + run.length < high_first && run.second + run.length < high_second &&
               first.Key(run.first + run.length) == second.Key(run.second + run.length))
            ++run.length;
        low_first = run.first + run.length;
        low_second = run.second + run.length;
    }
}

struct Sides {
    const CompareSide& first;
    const CompareSide& second;
};

// What is left between unique lines: copies first, then what is alike where there is much of it.
void FillGap(const Sides& sides, const Numbered& numbers, const PlaceRange& range,
             const PlaceRange& gap, std::vector<EqualRun>& runs) {
    // On both sides; fewer lines are left as one gap.
    constexpr std::int32_t kManyLines = 2000;
    std::vector<EqualRun> equal;
    AppendShortest(numbers, range, gap, sides.first.Watcher(), equal);
    equal.push_back({gap.first_end, gap.second_end, 0});
    PlaceRange rest = gap;
    for (const EqualRun& run : equal) {
        rest.first_end = run.first;
        rest.second_end = run.second;
        if (rest.FirstCount() >= kManyLines && rest.SecondCount() >= kManyLines) {
            const std::vector<EqualRun> alike = RunsOfAlikeLines(sides.first, sides.second, rest);
            runs.insert(runs.end(), alike.begin(), alike.end());
        }
        if (run.length > 0)
            runs.push_back(run);
        rest.first_begin = run.first + run.length;
        rest.second_begin = run.second + run.length;
    }
}

}  // namespace

std::vector<EqualRun> RunsAtUniqueLines(const CompareSide& first, const CompareSide& second,
                                        const PlaceRange& range) {
    const Numbered numbers = NumberLines(first, second, range);
    if (!KeepGoing(first.Watcher()))
        return {};
    std::vector<EqualRun> chain = HeaviestChain(UniqueRuns(numbers, range), first, range);
    Grow(chain, first, second, range);
    chain.push_back({range.first_end, range.second_end, 0});
    std::vector<EqualRun> runs;
    PlaceRange gap = range;
    for (const EqualRun& run : chain) {
        gap.first_end = run.first;
        gap.second_end = run.second;
        FillGap({first, second}, numbers, range, gap, runs);
        if (run.length > 0)
            runs.push_back(run);
        gap.first_begin = run.first + run.length;
        gap.second_begin = run.second + run.length;
    }
    return runs;
}

}  // namespace zorvane
