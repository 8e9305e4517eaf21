#include "compare/engine/pairing/heaviest_chain.h"

#include <algorithm>

namespace zorvane {

std::vector<EqualRun> HeaviestChain(const std::vector<EqualRun>& runs, const CompareSide& first,
                                    const PlaceRange& range) {
    PrefixMaxima maxima(range.SecondCount());
    std::vector<std::int32_t> previous(runs.size(), -1);
    StopCheck stop(first.Watcher());
    for (std::size_t i = 0; i < runs.size(); ++i) {
        if (!stop.KeepGoing())
            return {};
        const EqualRun& run = runs[i];
        const PrefixMaxima::Best before = maxima.Below(run.second - range.second_begin);
        previous[i] = before.index;
        const std::int64_t weight = first.Units(run.first, run.first + run.length) + 1;
        maxima.Raise(run.second + run.length - 1 - range.second_begin,
                     {before.score + weight, static_cast<std::int32_t>(i)});
    }
    std::vector<EqualRun> chain;
    for (std::int32_t at = maxima.Below(range.SecondCount()).index; at >= 0;
         at = previous[static_cast<std::size_t>(at)])
        chain.push_back(runs[static_cast<std::size_t>(at)]);
    std::reverse(chain.begin(), chain.end());
    return chain;
}

}  // namespace zorvane
