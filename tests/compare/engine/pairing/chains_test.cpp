// The chains of partners, beside plain searches for the best one, and what whole lines tell.
#include <algorithm>
#include <random>

#include <gtest/gtest.h>

#include "compare/engine/pairing/alike_lines.h"
#include "compare/engine/pairing/candidates.h"
#include "compare/engine/pairing/heaviest_chain.h"

namespace zorvane::chains_test {
namespace {

using Random = std::mt19937;

std::int32_t Below(Random& random, std::int32_t end) {
    return static_cast<std::int32_t>(random() % static_cast<std::uint32_t>(end));
}

// What a chain comes to: one directly behind its predecessor counts 150 more.
std::int64_t TotalOf(const Candidate& before, const Candidate& own) {
    const bool follows = before.first + 1 == own.first && before.second + 1 == own.second;
    return own.score + (follows ? 150 : 0);
}

TEST(BestChain, IsAsHeavyAsAny) {
    Random random(8);
    for (int round = 0; round < 500; ++round) {
        SCOPED_TRACE(round);
        std::vector<Candidate> candidates;
        for (std::int32_t first = 0; first < 9; ++first) {
            for (std::int32_t second = 8; second >= 0; --second) {
                if (Below(random, 4) == 0)
                    candidates.push_back({first, second, false, 0, 1 + Below(random, 300)});
            }
        }
        std::vector<std::int64_t> totals;  // of the best chain that ends there
        std::int64_t most = 0;
        for (const Candidate& own : candidates) {
            std::int64_t best = own.score;
            for (std::size_t i = 0; i < totals.size(); ++i) {
                const Candidate& before = candidates[i];
                if (before.first < own.first && before.second < own.second)
                    best = std::max(best, totals[i] + TotalOf(before, own));
            }
            totals.push_back(best);
            most = std::max(most, best);
        }
        std::int64_t total = 0;
        Candidate before{-9, -9};
        for (const Candidate& own : BestChain(candidates, 9)) {
            EXPECT_TRUE(own.first > before.first && own.second > before.second);
            total += TotalOf(before, own);
            before = own;
        }
        EXPECT_EQ(total, most);
    }
}

// A side of lines that end as files' lines do.
class Lines {
  public:
    explicit Lines(const std::vector<std::string>& lines) {
        for (const std::string& line : lines)
            text_ += line + "\r\n";
        cut_.SplitFile(text_);
        side_.Prepare(cut_, filter_, false);
    }
    const CompareSide& side() const { return side_; }

  private:
    std::string text_;
    LineText cut_;
    LineFilter filter_;
    CompareSide side_;
};

TEST(HeaviestChain, IsAsHeavyAsAny) {
    Random random(9);
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE(round);
        std::vector<std::string> texts;
        for (int i = 0; i < 12; ++i)
            texts.emplace_back(static_cast<std::size_t>(Below(random, 30)), 'x');
        const Lines lines(texts);
        // Places of a larger side: the chain counts from the range's begin.
        const PlaceRange range{0, 12, 5, 17};
        std::vector<EqualRun> runs;
        for (std::int32_t first = 0; first < 10; ++first) {
            for (std::int32_t second = 14; second >= 5; --second) {
                if (Below(random, 5) == 0)
                    runs.push_back({first, second, 1 + Below(random, 2)});
            }
        }
        const auto weight = [&](const EqualRun& run) {
            return lines.side().Units(run.first, run.first + run.length) + 1;
        };
        std::vector<std::int64_t> totals;
        std::int64_t most = 0;
        for (const EqualRun& own : runs) {
            std::int64_t best = 0;
            for (std::size_t i = 0; i < totals.size(); ++i) {
                if (runs[i].second + runs[i].length <= own.second)
                    best = std::max(best, totals[i]);
            }
            totals.push_back(best + weight(own));
            most = std::max(most, totals.back());
        }
        std::int64_t total = 0;
        std::int32_t behind = 0;
        for (const EqualRun& run : HeaviestChain(runs, lines.side(), range)) {
            EXPECT_GE(run.second, behind);
            behind = run.second + run.length;
            total += weight(run);
        }
        EXPECT_EQ(total, most);
    }
}

// Rows of data in which one letter changed, some moved, gone, new, too short or there twice.
TEST(AlikeLines, AreThoseWithOneEndThatStandsOnce) {
    Random random(10);
    const auto row = [&](std::int32_t length) {
        std::string line;
        for (std::int32_t i = 0; i < length; ++i)
            line += static_cast<char>('a' + Below(random, 20));
        return line;
    };
    std::vector<std::string> left;
    std::vector<std::string> right{"new in front"};
    std::vector<std::pair<std::int32_t, std::int32_t>> partners;
    for (std::int32_t i = 0; i < 300; ++i) {
        const std::int32_t kind = Below(random, 10);
        const std::string line = row(kind == 0 ? 40 + Below(random, 8) : 48 + Below(random, 40));
        const auto size = static_cast<std::int32_t>(line.size());
        const std::int32_t place = Below(random, size);
        std::string changed = line;
        if (kind == 1)  // two fifths in the middle and a little
            changed.replace(static_cast<std::size_t>(size / 4),
                            static_cast<std::size_t>(size * 5 / 12),
                            static_cast<std::size_t>(size * 5 / 12), '-');
        else
            changed[static_cast<std::size_t>(place)] = '-';
        left.push_back(line);
        if (kind == 2)
            continue;
        right.push_back(changed);
        if (kind == 3) {  // there twice
            left.push_back(line);
            right.push_back(changed);
        }
        if (kind == 4)
            right.push_back(row(60));
        // Ends are of 32 letters.
        if (kind > 3 && (place >= 32 || place < size - 32))
            partners.emplace_back(static_cast<std::int32_t>(left.size()) - 1,
                                  static_cast<std::int32_t>(right.size()) - (kind == 4 ? 2 : 1));
    }
    const Lines first(left);
    const Lines second(right);
    std::vector<std::pair<std::int32_t, std::int32_t>> found;
    for (const EqualRun& run : RunsOfAlikeLines(
             first.side(), second.side(), {0, first.side().Count(), 0, second.side().Count()})) {
        EXPECT_TRUE(run.only_alike);
        for (std::int32_t i = 0; i < run.length; ++i)
            found.emplace_back(run.first + i, run.second + i);
    }
    EXPECT_EQ(found, partners);
}

// A line whose beginning went one way and whose end another goes where it crosses nothing.
TEST(AlikeLines, GoByEitherEnd) {
    const std::string next = "0123456789012345678901234567890123456789012345678901234567890123";
    const std::string line = "A line of four and sixty letters, of which forty are at each end";
    const std::string by_front = line.substr(0, 40) + std::string(24, '-');
    const std::string by_back = std::string(24, '+') + line.substr(24);
    const Lines first({line, next});
    for (const bool front_behind : {true, false}) {
        const Lines second(front_behind ? std::vector<std::string>{by_back, next, by_front}
                                        : std::vector<std::string>{by_front, next, by_back});
        const auto runs = RunsOfAlikeLines(first.side(), second.side(), {0, 2, 0, 3});
        ASSERT_EQ(runs.size(), 1U);
        EXPECT_EQ(runs[0], (EqualRun{0, 0, 2, true}));
    }
}

}  // namespace
}  // namespace zorvane::chains_test
