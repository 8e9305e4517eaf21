#include "compare/engine/pairing/alike_lines.h"

#include <algorithm>
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

std::vector<Entry> EntriesOf(const CompareSide& side, std::int32_t begin, std::int32_t end,
                             End which) {
    std::vector<Entry> entries;
    entries.reserve(static_cast<std::size_t>(end - begin));
    for (std::int32_t place = begin; place < end; ++place) {
        const std::string_view line = side.Key(place);
        if (line.size() >= kLeastBytes)
            entries.push_back({HashOfEnd(line, which), place});
    }
    std::sort(entries.begin(), entries.end(), [](const Entry& left, const Entry& right) {
        return left.hash != right.hash ? left.hash < right.hash : left.place < right.place;
    });
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

void AddPairs(const CompareSide& first, const CompareSide& second, const PlaceRange& range,
              End which, std::vector<EqualRun>& pairs) {
    std::vector<Entry> left = EntriesOf(first, range.first_begin, range.first_end, which);
    std::vector<Entry> right = EntriesOf(second, range.second_begin, range.second_end, which);
    KeepUnique(left);
    KeepUnique(right);
    std::size_t at = 0;
    for (const Entry& entry : left) {
        while (at < right.size() && right[at].hash < entry.hash)
            ++at;
        if (at < right.size() && right[at].hash == entry.hash &&
            AreAlike(first.Key(entry.place), second.Key(right[at].place), first.UnitSize()))
            pairs.push_back({entry.place, right[at].place, 1, true});
    }
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
    std::vector<EqualRun> pairs;
    AddPairs(first, second, range, End::Front, pairs);
    AddPairs(first, second, range, End::Back, pairs);
    // The same pair twice, or two pairs of one line: the chain takes one.
    std::sort(pairs.begin(), pairs.end(), [](const EqualRun& left, const EqualRun& right) {
        return left.first != right.first ? left.first < right.first : left.second > right.second;
    });
    pairs.erase(std::unique(pairs.begin(), pairs.end()), pairs.end());
    return InRuns(HeaviestChain(pairs, first, range));
}

}  // namespace zorvane
