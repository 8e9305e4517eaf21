#include "compare/engine/pairing/alike_lines.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <xxhash.h>

#include "compare/engine/pairing/heaviest_chain.h"

namespace zorvane {
namespace {

constexpr std::size_t kEndBytes = 32;    // of a line's beginning or end
constexpr std::size_t kLeastBytes = 48;  // shorter lines are told by their words

enum class End { Front, Back };

std::uint64_t HashOfEnd(std::string_view line, End end) {
    return XXH3_64bits(end == End::Front ? line.data() : line.data() + line.size() - kEndBytes,
                       kEndBytes);
}

// An end of a line, and where it stands: with all of one hash side by side after sorting.
struct Entry {
    std::uint64_t hash;
    std::int32_t place;
};

// In groups by their first byte, since a million at once take too long to be stopped in between.
void SortByHash(std::vector<Entry>& entries, StopCheck& stop) {
    constexpr std::size_t kGroups = 256;
    constexpr unsigned kShift = 56;
    std::array<std::size_t, kGroups + 1> ends{};
    for (const Entry& entry : entries)
        ++ends[(entry.hash >> kShift) + 1];
    std::partial_sum(ends.begin(), ends.end(), ends.begin());
    const std::array<std::size_t, kGroups + 1> begins = ends;
    std::vector<Entry> sorted(entries.size());
    for (const Entry& entry : entries)
        sorted[ends[entry.hash >> kShift]++] = entry;
    for (std::size_t group = 0; group < kGroups; ++group) {
        const auto at = [&](std::size_t place) {
            return sorted.begin() + static_cast<std::ptrdiff_t>(place);
        };
        std::sort(
            at(begins[group]), at(begins[group + 1]), [](const Entry& left, const Entry& right) {
                return left.hash != right.hash ? left.hash < right.hash : left.place < right.place;
            });
        if (!stop.KeepGoing(static_cast<std::int64_t>(begins[group + 1] - begins[group])))
            return;
    }
    entries = std::move(sorted);
}

std::vector<Entry> EntriesOf(const CompareSide& side, std::int32_t begin, std::int32_t end,
                             End which, StopCheck& stop) {
    std::vector<Entry> entries;
    entries.reserve(static_cast<std::size_t>(end - begin));
    for (std::int32_t place = begin; place < end && stop.KeepGoing(); ++place) {
        const std::string_view line = side.Key(place);
        if (line.size() >= kLeastBytes)
            entries.push_back({HashOfEnd(line, which), place});
    }
    SortByHash(entries, stop);
    return entries;
}

// Only ends that stand once on their side.
void KeepUnique(std::vector<Entry>& entries) {
    std::vector<Entry> unique;
    for (std::size_t i = 0; i < entries.size(); ++i) {
        const bool before = i > 0 && entries[i - 1].hash == entries[i].hash;
        const bool behind = i + 1 < entries.size() && entries[i + 1].hash == entries[i].hash;
        if (!before && !behind)
            unique.push_back(entries[i]);
    }
    entries = std::move(unique);
}

bool AreAlike(std::string_view first, std::string_view second, std::size_t unit_size) {
    return CommonEnds(first, second, unit_size) * 5 >= std::max(first.size(), second.size()) * 3;
}

// For each place of the first side its partner by that end, or -1.
std::vector<std::int32_t> PartnersOf(const CompareSide& first, const CompareSide& second,
                                     const PlaceRange& range, End which, StopCheck& stop) {
    std::vector<Entry> left = EntriesOf(first, range.first_begin, range.first_end, which, stop);
    std::vector<Entry> right = EntriesOf(second, range.second_begin, range.second_end, which, stop);
    KeepUnique(left);
    KeepUnique(right);
    std::vector<std::int32_t> partners(static_cast<std::size_t>(range.FirstCount()), -1);
    std::size_t at = 0;
    for (const Entry& entry : left) {
        if (!stop.KeepGoing())
            break;
        while (at < right.size() && right[at].hash < entry.hash)
            ++at;
        if (at < right.size() && right[at].hash == entry.hash &&
            AreAlike(first.Key(entry.place), second.Key(right[at].place), first.UnitSize()))
            partners[static_cast<std::size_t>(entry.place - range.first_begin)] = right[at].place;
    }
    return partners;
}

// By ascending first place, and of one place by falling second, as the chain wants them.
std::vector<EqualRun> PairsOf(const std::vector<std::int32_t>& by_front,
                              const std::vector<std::int32_t>& by_back, std::int32_t begin) {
    std::vector<EqualRun> pairs;
    for (std::size_t i = 0; i < by_front.size(); ++i) {
        const std::int32_t place = begin + static_cast<std::int32_t>(i);
        const auto [low, high] = std::minmax(by_front[i], by_back[i]);
        if (high >= 0)
            pairs.push_back({place, high, 1, true});
        if (low >= 0 && low != high)
            pairs.push_back({place, low, 1, true});
    }
    return pairs;
}

std::vector<EqualRun> InRuns(const std::vector<EqualRun>& pairs) {
    std::vector<EqualRun> runs;
    for (const EqualRun& pair : pairs) {
        if (!runs.empty() && runs.back().first + runs.back().length == pair.first &&
            runs.back().second + runs.back().length == pair.second)
            ++runs.back().length;
        else
            runs.push_back(pair);
    }
    return runs;
}

}  // namespace

std::size_t CommonEnds(std::string_view first, std::string_view second, std::size_t unit_size) {
    const std::size_t most = std::min(first.size(), second.size());
    auto front = static_cast<std::size_t>(
        std::mismatch(first.begin(), first.begin() + static_cast<std::ptrdiff_t>(most),
                      second.begin())
            .first -
        first.begin());
    front -= front % unit_size;
    std::size_t back = 0;
    while (back < most - front &&
           first[first.size() - 1 - back] == second[second.size() - 1 - back])
        ++back;
    return front + back - back % unit_size;
}

std::vector<EqualRun> RunsOfAlikeLines(const CompareSide& first, const CompareSide& second,
                                       const PlaceRange& range) {
    StopCheck stop(first.Watcher());
    const std::vector<std::int32_t> by_front = PartnersOf(first, second, range, End::Front, stop);
    const std::vector<std::int32_t> by_back = PartnersOf(first, second, range, End::Back, stop);
    if (stop.Stopped())
        return {};
    // The same pair twice, or two pairs of one line: the chain takes one.
    return InRuns(HeaviestChain(PairsOf(by_front, by_back, range.first_begin), first, range));
}

}  // namespace zorvane
