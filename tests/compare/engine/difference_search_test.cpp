// The quick searches for what two sequences have in common, beside the plain whole table.
#include "compare/engine/difference_search.h"

#include <algorithm>
#include <map>
#include <random>

#include <gtest/gtest.h>

namespace zorvane::difference_search_test {
namespace {

using Numbers = std::vector<std::uint32_t>;
using Random = std::mt19937;

// How many numbers stay at most.
std::int32_t MostKept(const Numbers& original, const Numbers& modified) {
    std::vector<std::int32_t> row(modified.size() + 1, 0);
    for (const std::uint32_t number : original) {
        std::int32_t slanted = 0;
        for (std::size_t j = 0; j < modified.size(); ++j) {
            const std::int32_t above = row[j + 1];
            row[j + 1] = modified[j] == number ? slanted + 1 : std::max(above, row[j]);
            slanted = above;
        }
    }
    return row.back();
}

Numbers RandomNumbers(Random& random, std::size_t count, std::uint32_t different) {
    Numbers numbers(count);
    for (std::uint32_t& number : numbers)
        number = static_cast<std::uint32_t>(random()) % different;
    return numbers;
}

// Of a thousand places each as many as `edits` are changed, left out or get something in front.
Numbers Edited(Random& random, const Numbers& numbers, std::uint32_t edits, std::uint32_t fresh) {
    Numbers edited;
    for (const std::uint32_t number : numbers) {
        const auto kind = static_cast<std::uint32_t>(random()) % 1000;
        if (kind < 2 * edits)
            edited.push_back(static_cast<std::uint32_t>(random()) % fresh);
        if (kind >= 2 * edits || kind < edits / 2)
            edited.push_back(number);
    }
    return edited;
}

TEST(BitVectorLcs, KeepsAsMuchAsTheWholeTable) {
    Random random(5);
    BitVectorLcs lcs;
    for (const std::size_t size : {1U, 2U, 63U, 64U, 65U, 130U, 200U}) {
        for (const std::uint32_t different : {2U, 5U, 90U}) {
            SCOPED_TRACE(std::to_string(size) + " of " + std::to_string(different));
            const Numbers original = RandomNumbers(random, size, different);
            const Numbers modified = RandomNumbers(random, 1 + random() % 150, different);
            MatchedPlaces last{static_cast<std::int32_t>(size),
                               static_cast<std::int32_t>(modified.size())};
            const auto matches = lcs.Run(original, modified, different);
            for (const MatchedPlaces match : matches) {
                EXPECT_TRUE(match.original < last.original && match.modified < last.modified);
                EXPECT_EQ(original[static_cast<std::size_t>(match.original)],
                          modified[static_cast<std::size_t>(match.modified)]);
                last = match;
            }
            EXPECT_EQ(static_cast<std::int32_t>(matches.size()), MostKept(original, modified));
        }
    }
}

// Places of the runs that stand once in a text.
std::map<Numbers, std::size_t> RunsThatStandOnce(const Numbers& numbers, std::size_t length) {
    std::map<Numbers, std::vector<std::size_t>> places;
    for (std::size_t at = 0; at + length <= numbers.size(); ++at) {
        const auto begin = numbers.begin() + static_cast<std::ptrdiff_t>(at);
        places[Numbers(begin, begin + static_cast<std::ptrdiff_t>(length))].push_back(at);
    }
    std::map<Numbers, std::size_t> once;
    for (const auto& [run, at] : places) {
        if (at.size() == 1)
            once.emplace(run, at.front());
    }
    return once;
}

TEST(AnchorFinder, ChainsAsManyUniqueRunsAsCanBe) {
    Random random(6);
    AnchorFinder finder;
    for (int round = 0; round < 400; ++round) {
        SCOPED_TRACE(round);
        const auto length = static_cast<std::size_t>(1 + round % 3);
        const Numbers original = RandomNumbers(random, 1 + random() % 60,
                                               length == 1   ? 90U
                                               : length == 2 ? 9U
                                                             : 4U);
        Numbers modified = Edited(random, original, 100, 20);
        modified.push_back(3);
        if (round % 2 == 0)
            std::rotate(modified.begin(),
                        modified.begin() + static_cast<std::ptrdiff_t>(modified.size() / 3),
                        modified.end());
        const auto originals = RunsThatStandOnce(original, length);
        const auto modifieds = RunsThatStandOnce(modified, length);
        std::map<std::size_t, std::size_t> pairs;
        for (const auto& [run, at] : originals) {
            if (modifieds.contains(run))
                pairs[at] = modifieds.at(run);
        }
        std::vector<std::size_t> longest;  // that ends in the pair
        std::size_t most = 0;
        for (auto pair = pairs.begin(); pair != pairs.end(); ++pair) {
            std::size_t best = 0;
            std::size_t index = 0;
            for (auto before = pairs.begin(); before != pair; ++before, ++index)
                best = before->second < pair->second ? std::max(best, longest[index]) : best;
            longest.push_back(best + 1);
            most = std::max(most, best + 1);
        }
        const auto chain = finder.Find(original, modified, static_cast<std::int32_t>(length));
        EXPECT_EQ(chain.size(), most);
        std::int32_t last = -1;
        for (const MatchedPlaces place : chain) {
            EXPECT_EQ(pairs.at(static_cast<std::size_t>(place.original)),
                      static_cast<std::size_t>(place.modified));
            EXPECT_GT(place.modified, std::exchange(last, place.modified));
        }
    }
}

struct SearchRow {
    const char* name;
    std::size_t count;
    std::uint32_t different;
    std::uint32_t edits;  // in a thousand
    std::int32_t lost;    // of what could stay: large parts are cut where that is quick
};
const SearchRow kSearchRows[] = {
    {"few lines, solved whole", 300, 40, 200, 0},
    {"many, few edits", 1700, 1 << 20, 20, 0},
    {"many of few kinds, few edits", 1700, 30, 15, 0},
    {"many edits between lines that stand once", 1700, 1 << 20, 300, 0},
    {"copies of few lines", 1700, 60, 300, 31},
    {"nothing but chance in common", 1700, 8, 1000, 465},
};
TEST(DifferenceSearch, LosesLittleOfWhatCouldStay) {
    DifferenceSearch search;  // one for all
    for (const SearchRow& row : kSearchRows) {
        SCOPED_TRACE(row.name);
        Random random(7);
        const Numbers original = RandomNumbers(random, row.count, row.different);
        const Numbers modified = Edited(random, original, row.edits, row.different);
        search.Run(original, modified, row.different);
        Numbers kept;
        Numbers other;
        for (std::size_t i = 0; i < original.size(); ++i) {
            if (search.Changed().original[i] == 0)
                kept.push_back(original[i]);
        }
        for (std::size_t i = 0; i < modified.size(); ++i) {
            if (search.Changed().modified[i] == 0)
                other.push_back(modified[i]);
        }
        EXPECT_EQ(kept, other);
        EXPECT_EQ(MostKept(original, modified) - static_cast<std::int32_t>(kept.size()), row.lost);
    }
}

}  // namespace
}  // namespace zorvane::difference_search_test
