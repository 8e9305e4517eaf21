#include "compare/engine/unchanged_plan.h"

#include "tests/support/compared_pair.h"

namespace zorvane {
namespace {

// Paragraphs of ten bytes with their ends, a difference behind each stretch.
ComparedPair StretchesOf(const std::vector<std::size_t>& lengths) {
    TextLines original;
    for (std::size_t i = 0; i < lengths.size(); ++i) {
        original.insert(original.end(), lengths[i], "same same");
        original.push_back("w" + std::to_string(100 + i) + " x y z");
    }
    for (std::string& paragraph : original)
        paragraph.resize(8, '.');
    TextLines modified = original;
    std::size_t at = 0;
    for (const std::size_t length : lengths) {
        at += length;
        modified[at++][5] = 'q';
    }
    return {original, modified};
}

struct PlanRow {
    const char* name;
    std::vector<std::size_t> stretches;
    int columns;
    std::int64_t most;
    std::size_t context;
    std::size_t least_folded;
    std::int64_t most_kept;
};
TEST(UnchangedPlan, KeepsWhatFits) {
    // Between differences 20 paragraphs are 6 of context and 14 folded, 200 bytes in all; in front
    // of the first there is context on one side only.
    const PlanRow rows[] = {
        {"all of it", {0, 20, 20}, 1, 400, 3, 4, 140},
        {"a byte too much for the second of two", {0, 20, 20}, 1, 399, 3, 4, 0},
        {"the short ones first", {0, 40, 20}, 1, 399, 3, 4, 140},
        {"shown twice it is twice as much", {0, 40, 20}, 2, 798, 3, 4, 140},
        {"half of that", {0, 40, 20}, 2, 399, 3, 4, 0},
        {"context shrinks", {0, 20, 20}, 1, 119, 2, 4, 0},
        {"to one", {0, 20, 20}, 1, 79, 1, 4, 0},
        {"to none", {0, 20, 20}, 1, 39, 0, 4, 0},
        {"short stretches go at last", {0, 3, 3}, 1, 59, 0, 1, 30 * 0},
    };
    for (const PlanRow& row : rows) {
        SCOPED_TRACE(row.name);
        const ComparedPair pair = StretchesOf(row.stretches);
        ASSERT_EQ(pair.comparison().records.size(), row.stretches.size());
        const UnchangedPlan plan =
            PlanUnchanged(pair.comparison(), UnchangedText::Fitting, row.columns, row.most);
        EXPECT_TRUE(plan.fold);
        EXPECT_EQ(plan.context, row.context);
        EXPECT_EQ(plan.least_folded, row.least_folded);
        EXPECT_EQ(plan.most_kept, row.most_kept);
    }
}

TEST(UnchangedPlan, ShowsTextsWithoutDifferencesIfTheyFit) {
    const ComparedPair same(TextLines(50, "12345678"), TextLines(50, "12345678"));
    const auto plan = [&](std::int64_t most) {
        return PlanUnchanged(same.comparison(), UnchangedText::Fitting, 1, most);
    };
    EXPECT_FALSE(plan(500).fold);
    EXPECT_TRUE(plan(499).fold);
    EXPECT_EQ(plan(499).most_kept, 0);
}

}  // namespace
}  // namespace zorvane
