#include "compare/engine/pairing/affine_table.h"

#include <random>

#include <gtest/gtest.h>

#include "compare/engine/pairing/heaviest_chain.h"

namespace zorvane {
namespace {

// Random gains and costs; a few pairs may not be.
struct Problem {
    std::int32_t firsts = 0;
    std::int32_t seconds = 0;
    std::vector<std::int32_t> gains;
    std::vector<std::int32_t> opens;
    std::vector<std::int32_t> closes;

    explicit Problem(std::mt19937& random)
        : firsts(static_cast<std::int32_t>(random() % 6)),
          seconds(static_cast<std::int32_t>(random() % 6)) {
        const auto cells = static_cast<std::size_t>((firsts + 1) * (seconds + 1));
        for (std::size_t i = 0; i < cells; ++i) {
            gains.push_back(random() % 3 == 0 ? -1 : static_cast<std::int32_t>(random() % 5));
            opens.push_back(static_cast<std::int32_t>(random() % 4));
            closes.push_back(-static_cast<std::int32_t>(random() % 2));
        }
    }
    std::size_t At(std::int32_t i, std::int32_t j) const {
        return static_cast<std::size_t>(i * (seconds + 1) + j);
    }
    std::int32_t Gain(std::int32_t i, std::int32_t j) const { return gains[At(i, j)]; }
    std::int32_t Open(std::int32_t i, std::int32_t j) const { return opens[At(i, j)]; }
    std::int32_t Close(std::int32_t i, std::int32_t j) const { return closes[At(i, j)]; }
};

// What the stretch between two places costs; nothing when it is empty.
std::int64_t CostOf(const Problem& problem, AlignedPair from, AlignedPair to) {
    if (from == to)
        return 0;
    return problem.Open(from.first, from.second) + problem.Close(to.first, to.second);
}

// The slow reference: every alignment behind `from` is tried.
std::int64_t BestTotal(const Problem& problem, AlignedPair from) {
    std::int64_t best = -CostOf(problem, from, {problem.firsts, problem.seconds});
    for (std::int32_t i = from.first; i < problem.firsts; ++i) {
        for (std::int32_t j = from.second; j < problem.seconds; ++j) {
            if (problem.Gain(i, j) >= 0)
                best = std::max(best, problem.Gain(i, j) - CostOf(problem, from, {i, j}) +
                                          BestTotal(problem, {i + 1, j + 1}));
        }
    }
    return best;
}

std::int64_t TotalOf(const Problem& problem, const std::vector<AlignedPair>& pairs) {
    std::int64_t total = 0;
    AlignedPair at;
    for (const AlignedPair& pair : pairs) {
        EXPECT_GE(pair.first, at.first);
        EXPECT_GE(pair.second, at.second);
        EXPECT_GE(problem.Gain(pair.first, pair.second), 0);
        total += problem.Gain(pair.first, pair.second) - CostOf(problem, at, pair);
        at = {pair.first + 1, pair.second + 1};
    }
    return total - CostOf(problem, at, {problem.firsts, problem.seconds});
}

TEST(AffineTable, IsAsGoodAsTryingAll) {
    std::mt19937 random(31);
    AffineTable table;  // one for all, as its users keep it
    for (int round = 0; round < 500; ++round) {
        SCOPED_TRACE(round);
        const Problem problem(random);
        const std::vector<AlignedPair> pairs = table.Run(
            problem.firsts, problem.seconds,
            [&](std::int32_t i, std::int32_t j) { return problem.Gain(i, j); },
            [&](std::int32_t i, std::int32_t j) { return problem.Open(i, j); },
            [&](std::int32_t i, std::int32_t j) { return problem.Close(i, j); });
        EXPECT_EQ(TotalOf(problem, pairs), BestTotal(problem, {}));
    }
}

TEST(PrefixMaxima, AgreeWithALinearSearch) {
    std::mt19937 random(32);
    for (std::int32_t places = 0; places < 40; ++places) {
        PrefixMaxima maxima(places);
        std::vector<PrefixMaxima::Best> raised(static_cast<std::size_t>(places));
        for (std::int32_t step = 0; step < 60 && places > 0; ++step) {
            const auto place = static_cast<std::int32_t>(random() % static_cast<unsigned>(places));
            const PrefixMaxima::Best best{static_cast<std::int64_t>(random() % 20), step};
            maxima.Raise(place, best);
            PrefixMaxima::Best& known = raised[static_cast<std::size_t>(place)];
            if (best.score > known.score)
                known = best;
            std::int64_t highest = 0;
            for (std::int32_t below = 0; below <= places; ++below) {
                const PrefixMaxima::Best found = maxima.Below(below);
                EXPECT_EQ(found.score, highest) << places << " " << below;
                EXPECT_EQ(found.index == -1, highest == 0);
                if (below < places)
                    highest = std::max(highest, raised[static_cast<std::size_t>(below)].score);
            }
        }
    }
}

TEST(PrefixMaxima, TheFirstOfEqualsStays) {
    PrefixMaxima maxima(4);
    maxima.Raise(1, {5, 10});
    maxima.Raise(1, {5, 11});
    EXPECT_EQ(maxima.Below(2).index, 10);
    EXPECT_EQ(maxima.Below(1).index, -1) << "only places in front";
}

}  // namespace
}  // namespace zorvane
