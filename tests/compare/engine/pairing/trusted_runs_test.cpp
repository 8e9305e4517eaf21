// Compare sides and the runs of equal lines that cut a compare into stretches.
#include "compare/engine/pairing/trusted_runs.h"

#include <ostream>
#include <random>

#include <gtest/gtest.h>

#include "compare/engine/pairing/unique_lines.h"

namespace zorvane {

void PrintTo(const EqualRun& run, std::ostream* out) {
    *out << run.first << "=" << run.second << "+" << run.length;
}

namespace {

using Runs = std::vector<EqualRun>;

// A side and what it borrows. Each letter of `letters` is a line of thirty of it; a dot an empty
// one, a comma the line ",".
class TestSide {
  public:
    explicit TestSide(std::string_view letters) {
        for (const char letter : letters)
            text_ += (letter == '.'   ? std::string()
                      : letter == ',' ? std::string(",")
                                      : std::string(30, letter)) +
                     "\r\n";
        lines_.SplitFile(text_);
        side_.Prepare(lines_, filter_, false);
    }
    const CompareSide& side() const { return side_; }

  private:
    std::string text_;
    LineText lines_;
    LineFilter filter_;
    CompareSide side_;
};

Runs RunsOf(std::string_view first, std::string_view second) {
    const TestSide left(first);
    const TestSide right(second);
    return FindTrustedRuns(left.side(), right.side(), nullptr);
}

struct RunRow {
    const char* name;
    const char* first;
    const char* second;
    Runs runs;
};
TEST(TrustedRuns, AreThoseThatNothingHeavierCrosses) {
    const RunRow rows[] = {
        {"nothing", "", "", {}},
        {"nothing on one side", "", "ab", {}},
        {"the same", "abc", "abc", {{0, 0, 3}}},
        {"the ends", "abxcd", "abyzcd", {{0, 0, 2}, {3, 4, 2}}},
        {"the common front is not counted twice", "aa", "aaa", {{0, 0, 2}}},
        {"one in the middle", "xabcy", "uvabcw", {{1, 2, 3}}},
        {"of crossing blocks the heavier one", "PabcdeQ", "RabcdeP", {{1, 1, 5}}},
        {"a light line across a heavy block is no anchor", "abcde,x", "y,abcde", {{0, 2, 5}}},
        {"a lone line between large changes is left to a closer look",
         "abcdeMfghij",
         "fghijMabcde",
         {}},
    };
    for (const RunRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(RunsOf(row.first, row.second), row.runs);
    }
}

void ExpectSound(const Runs& runs, std::string_view first, std::string_view second) {
    EqualRun at;
    for (const EqualRun& run : runs) {
        EXPECT_GE(run.first, at.first);
        EXPECT_GE(run.second, at.second);
        EXPECT_GT(run.length, 0);
        for (std::int32_t i = 0; i < run.length; ++i)
            EXPECT_EQ(first[static_cast<std::size_t>(run.first + i)],
                      second[static_cast<std::size_t>(run.second + i)]);
        at = {run.first + run.length, run.second + run.length, 0};
    }
}

TEST(TrustedRunsProperty, AscendAndAreEqualAndMirrored) {
    std::mt19937 random(33);
    for (unsigned round = 0; round < 400; ++round) {
        const auto text = [&] {
            std::string letters;
            for (auto count = random() % 40; count > 0; --count)
                letters += ".,abcdefghijklmnopqrstuvwxyzABCDEFGHIJ"[random() % (4 + round % 34)];
            return letters;
        };
        const std::string first = text();
        std::string second = text();
        if (round % 2 == 0 && !first.empty()) {
            const std::size_t cut = random() % first.size();
            second = first.substr(cut) + second.substr(0, 3) + first.substr(0, cut);
        }
        SCOPED_TRACE(first + " | " + second);
        ExpectSound(RunsOf(first, second), first, second);
        const TestSide left(first);
        const TestSide right(second);
        ExpectSound(RunsAtUniqueLines(left.side(), right.side(),
                                      {0, left.side().Count(), 0, right.side().Count()}),
                    first, second);
    }
}

TEST(TrustedRuns, AreNoneAfterAStop) {
    struct Stop : RunWatcher {
        bool KeepGoing() override { return false; }
    } stop;
    const TestSide left("abcdefghijklmnopqrstuvwxyz");
    const TestSide right("zyxwvutsrqponmlkjihgfedcba");
    EXPECT_EQ(FindTrustedRuns(left.side(), right.side(), &stop), Runs{});
}

struct SideRow {
    const char* name;
    FilterSwitches switches;
    const char* expressions;
    bool leave_out_blank;
    std::vector<std::string> keys;  // of "A b", " , ", "", "x9"
    std::vector<std::int32_t> lines;
};
TEST(CompareSide, KnowsKeysAndLinesOfItsPlaces) {
    const SideRow rows[] = {
        {"as it is", {}, "", false, {"A b", " , ", "", "x9"}, {0, 1, 2, 3}},
        {"without blank lines", {}, "", true, {"A b", "x9"}, {0, 3}},
        {"case", {true, false, false}, "", false, {"a b", " , ", "", "x9"}, {0, 1, 2, 3}},
        {"case without blank lines", {true, false, false}, "", true, {"a b", "x9"}, {0, 3}},
        {"white space leaves the comma",
         {false, true, false},
         "",
         true,
         {"Ab", ",", "x9"},
         {0, 1, 3}},
        {"what an expression empties is blank", {false, false, true}, "x9", true, {"A b"}, {0}},
    };
    constexpr std::string_view kText = "A b\r\n , \r\n\r\nx9";
    LineText lines;
    lines.SplitFile(kText);
    for (const SideRow& row : rows) {
        SCOPED_TRACE(row.name);
        LineFilter filter;
        ASSERT_TRUE(filter.Set(row.switches, row.expressions).ok());
        CompareSide side;
        side.Prepare(lines, filter, row.leave_out_blank);
        std::vector<std::string> keys;
        std::vector<std::int32_t> numbers;
        for (std::int32_t place = 0; place < side.Count(); ++place) {
            keys.emplace_back(side.Key(place));
            numbers.push_back(side.LineOf(place));
        }
        EXPECT_EQ(keys, row.keys);
        EXPECT_EQ(numbers, row.lines);
        const std::vector<bool> left_out = side.LeftOut();
        EXPECT_EQ(left_out.empty(), !row.leave_out_blank);
        for (std::size_t line = 0; line < left_out.size(); ++line)
            EXPECT_EQ(left_out[line],
                      std::find(numbers.begin(), numbers.end(), line) == numbers.end());
    }
}

// A side is prepared anew: nothing of the last compare stays.
TEST(CompareSide, IsPreparedAnew) {
    LineText lines;
    lines.SplitFile("A\r\n\r\nb");
    LineFilter fold;
    ASSERT_TRUE(fold.Set({true, false, false}, "").ok());
    CompareSide side;
    side.Prepare(lines, fold, true);
    side.Prepare(lines, LineFilter(), false);
    EXPECT_EQ(side.Count(), 3);
    EXPECT_EQ(side.Key(0), "A");
    EXPECT_TRUE(side.LeftOut().empty());
}

}  // namespace
}  // namespace zorvane
