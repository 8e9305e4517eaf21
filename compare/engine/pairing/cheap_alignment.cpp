#include "compare/engine/pairing/cheap_alignment.h"

namespace zorvane {

std::vector<AlignedPair> MatchedPairs(const ChangedPlaces& changed) {
    std::vector<AlignedPair> pairs;
    std::size_t second = 0;
    for (std::size_t first = 0; first < changed.original.size(); ++first) {
        if (changed.original[first] != 0)
            continue;
        while (changed.modified[second] != 0)
            ++second;
        pairs.push_back({static_cast<std::int32_t>(first), static_cast<std::int32_t>(second++)});
    }
    return pairs;
}

std::vector<AlignedPair> AlignCheaply(std::span<const std::uint32_t> first,
                                      std::span<const std::uint32_t> second,
                                      std::uint32_t number_count,
                                      const std::function<std::int32_t(std::int32_t)>& keep,
                                      std::int32_t chunk_cost, DifferenceSearch& search) {
    search.Run(first, second, number_count);
    const std::vector<AlignedPair> pairs = MatchedPairs(search.Changed());
    std::vector<AlignedPair> kept;
    std::size_t begin = 0;
    std::size_t told = 0;
    while (begin < pairs.size() &&
           search.KeepGoing(static_cast<std::int64_t>(kept.size() - told))) {
        told = kept.size();
        std::size_t end = begin;
        std::int64_t brings = 0;
        do {
            brings += keep(pairs[end].first);
            ++end;
        } while (end < pairs.size() && pairs[end].first == pairs[end - 1].first + 1 &&
                 pairs[end].second == pairs[end - 1].second + 1);
        const bool at_front = pairs[begin] == AlignedPair{0, 0};
        const bool at_back = pairs[end - 1].first + 1 == static_cast<std::int32_t>(first.size()) &&
                             pairs[end - 1].second + 1 == static_cast<std::int32_t>(second.size());
        if (at_front || at_back || brings >= chunk_cost)
            kept.insert(kept.end(), pairs.begin() + static_cast<std::ptrdiff_t>(begin),
                        pairs.begin() + static_cast<std::ptrdiff_t>(end));
        begin = end;
    }
    return kept;
}

}  // namespace zorvane
