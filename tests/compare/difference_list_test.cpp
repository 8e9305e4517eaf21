// The list of differences as a model: its lines, the nearest entry, the buttons.
#include "compare/difference_list.h"

#include <random>

#include <gtest/gtest.h>

#include "compare/engine/compare_texts.h"
#include "tests/support/printers.h"

namespace zorvane::difference_list_test {
namespace {

constexpr auto kA = DifferenceType::Addition;
constexpr auto kC = DifferenceType::Change;
constexpr auto kD = DifferenceType::Deletion;

std::string Same(std::string_view english) {
    return std::string(english);
}

// Paragraphs p1, p2, ... against q1, q2, ...; the records are the test's own.
class DifferenceListTest : public ::testing::Test {
  protected:
    void Show(std::vector<DifferenceRecord> records,
              const std::u16string& original = u"p1\r\np2\r\np3",
              const std::u16string& modified = u"q1\r\nq2\r\nq3") {
        comparison.SetEditorTexts({std::make_shared<const std::u16string>(original),
                                   std::make_shared<const std::u16string>(modified)});
        comparison.records = std::move(records);
        list.Show(comparison, Same);
    }

    Comparison comparison;
    DifferenceList list;
};

struct LineRow {
    DifferenceRecord record;
    const char* line;
    const char* status;
};
TEST_F(DifferenceListTest, TellsLinesAndStatus) {
    const LineRow rows[] = {
        {{kA, {{0, 0}, {1, 1}}},
         "[2] Addition of 1 line at paragraph (0) : \"q1\"",
         "[2] Addition of 1 line at paragraph: 0"},
        {{kA, {{2, 2}, {2, 3}}},
         "[2] Addition of 2 lines at paragraph (2) : \"q2\"",
         "[2] Addition of 2 lines at paragraph: 2"},
        {{kD, {{3, 3}, {0, 0}}},
         "[2] Deletion of 1 line at paragraph (3) : \"p3\"",
         "[2] Deletion of 1 line at paragraph: 3"},
        {{kD, {{1, 2}, {0, 0}}},
         "[2] Deletion of 2 lines at paragraph (1) : \"p1\"",
         "[2] Deletion of 2 lines at paragraph: 1"},
        {{kC, {{2, 2}, {2, 2}}},
         "[2] 1 change at paragraph (2) :\"p2\"",
         "[2] Change at paragraph: 2"},
        {{kC, {{1, 1}, {1, 3}}},
         "[2] 3 changes at paragraph (1) :\"p1\"",
         "[2] Change at paragraph: 1"},
    };
    for (const LineRow& row : rows) {
        SCOPED_TRACE(row.line);
        Show({{}, row.record});
        EXPECT_EQ(list.Count(), 2);
        EXPECT_EQ(list.Line(1), row.line);
        EXPECT_EQ(list.Status(1), row.status);
    }
    EXPECT_EQ(list.Line(2) + list.Line(-1) + list.Status(2) + list.Status(-2), "");
    list.Clear();
    EXPECT_EQ(list.Count(), 0);
    EXPECT_EQ(list.Line(0), "");
    EXPECT_EQ(list.Nearest(Side::Original, ParagraphNumber{1}), std::nullopt);
}

TEST_F(DifferenceListTest, CutsTheExcerptBehindAHundredCharacters) {
    const auto excerpt = [&](const std::u16string& paragraph) {
        Show({{kD, {{1, 1}, {0, 0}}}}, paragraph);
        const std::string line = list.Line(0);
        return line.substr(line.find('"'));
    };
    const std::u16string long_text(99, u'x');
    const std::string x(99, 'x');
    EXPECT_EQ(excerpt(long_text + u"ab"), "\"" + x + "a\"");
    EXPECT_EQ(excerpt(long_text + u"a"), "\"" + x + "a\"");
    EXPECT_EQ(excerpt(long_text + u"\U0001F600"), "\"" + x + "\"") << "no half character";
    EXPECT_EQ(excerpt(u""), "\"\"");
}

TEST_F(DifferenceListTest, TranslatesEachPiece) {
    Show({{kA, {{0, 0}, {1, 1}}}});
    list.Show(comparison,
              [](std::string_view english) { return "<" + std::string(english) + ">"; });
    EXPECT_EQ(list.Line(0), "[1] <Addition of> 1< line at paragraph (>0) : \"q1\"");
    EXPECT_EQ(list.Status(0), "[1] <Addition of> 1 <line at paragraph>: 0");
}

// In half paragraphs: an addition stands between two.
std::int64_t HalvesTo(const DifferenceRecord& record, Side side, std::int32_t number) {
    std::int64_t least = std::abs(2 * record.paragraphs[side].first.value + 1 - 2 * number);
    for (std::int32_t i = 0; i < record.Count(side); ++i) {
        const std::int64_t there = std::abs(2 * (record.paragraphs[side].first.value + i - number));
        least = i == 0 ? there : std::min(least, there);
    }
    return least;
}

TEST_F(DifferenceListTest, FindsTheNearestEntry) {
    std::mt19937 random(7);
    for (int round = 0; round < 200; ++round) {
        std::vector<DifferenceRecord> records;
        PerSide<std::int32_t> at{0, 0};
        for (unsigned i = 0; i < 1 + random() % 8; ++i) {
            const auto gap = static_cast<std::int32_t>(random() % 4);
            at = {at.original + gap, at.modified + gap};
            const auto original = static_cast<std::int32_t>(random() % 3);
            const std::int32_t modified =
                static_cast<std::int32_t>(random() % 3) + (original == 0 ? 1 : 0);
            records.push_back({original == 0   ? kA
                               : modified == 0 ? kD
                                               : kC,
                               {{at.original + (original == 0 ? 0 : 1), at.original + original},
                                {at.modified + (modified == 0 ? 0 : 1), at.modified + modified}}});
            at = {at.original + original, at.modified + modified};
        }
        Show(records);
        for (const Side side : kBothSides) {
            for (std::int32_t number = 1; number < at[side] + 3; ++number) {
                std::int32_t best = 0;
                for (std::int32_t i = 1; i < list.Count(); ++i) {
                    const auto distance = [&](std::int32_t index) {
                        return HalvesTo(records[static_cast<std::size_t>(index)], side, number);
                    };
                    best = distance(i) < distance(best) ? i : best;
                }
                ASSERT_EQ(list.Nearest(side, ParagraphNumber{number}), best)
                    << "round " << round << ", paragraph " << number;
            }
        }
    }
}

struct ButtonRow {
    std::int32_t current;
    std::int32_t count;
    NavigationButtons buttons;
};
TEST(NavigationFor, KeepsTheEndsShut) {
    const ButtonRow rows[] = {
        {-1, 0, {}},
        {1, 1, {}},
        {1, 2, {false, false, true, true, true}},
        {2, 2, {true, true, false, false, true}},
        {2, 3, {true, true, true, true, true}},
    };
    for (const ButtonRow& row : rows)
        EXPECT_EQ(NavigationFor(row.current, row.count), row.buttons) << row.current << row.count;
}

}  // namespace
}  // namespace zorvane::difference_list_test
