// The user's options reach every level of a compare.
#include "compare/run_options.h"

#include "compare/run/redline_run.h"
#include "tests/support/option_effects.h"
#include "tests/support/viewer_fixture.h"

namespace zorvane::run_options_test {
namespace {

void SetAll(const CompareOptions& asked, clsCompareFileOptions& options) {
    options.bIgnoreCase.SetData(asked.ignore_case);
    options.bIgnoreWhitespace.SetData(asked.ignore_whitespace);
    options.bIgnoreEmptyLines.SetData(asked.ignore_empty_lines);
    options.bCompareFaster.SetData(asked.faster);
    options.bShowChangesInLargerSections.SetData(asked.larger_sections);
    options.bUseLineBracket.SetData(asked.bracket > 0);
    options.lLineBracket.SetData(asked.bracket);
    options.sIgnoreRegularExpression.SetData(asked.expressions);
    options.bIgnoreRegExOnBothPasses.SetData(asked.filter_sections);
    options.bCompareByCharacter.SetData(asked.by_character);
}

class RunOptionsTest : public ViewerTest {
  protected:
    std::string Summaries() {
        const ViewerEditors& editors = viewer.Editors();
        return Readable(editors.rtbChanges.Text()) + Readable(editors.rtbAdditions.Text()) +
               Readable(editors.rtbDeletions.Text());
    }
};

TEST_F(RunOptionsTest, AreEachPassedOn) {
    EXPECT_EQ(CompareOptionsOf(viewer.Options()), CompareOptions{}) << "the defaults";
    const CompareOptions rows[] = {
        {.ignore_case = true},   {.ignore_whitespace = true}, {.ignore_empty_lines = true},
        {.faster = true},        {.larger_sections = true},   {.bracket = 7},
        {.expressions = "a@@b"}, {.filter_sections = true},   {.by_character = true},
    };
    for (const CompareOptions& row : rows) {
        SCOPED_TRACE(&row - rows);
        SetAll(row, viewer.Options());
        EXPECT_EQ(CompareOptionsOf(viewer.Options()), row);
    }
}

TEST_F(RunOptionsTest, OddValuesMeanSomething) {
    clsCompareFileOptions& options = viewer.Options();
    options.lLineBracket.SetData(9);
    EXPECT_EQ(CompareOptionsOf(options).bracket, 0) << "not in use";
    options.bUseLineBracket.SetData(true);
    options.lLineBracket.SetData(0);
    EXPECT_EQ(CompareOptionsOf(options).bracket, 1);
    options.sIgnoreRegularExpression.SetData("  ");
    EXPECT_EQ(CompareOptionsOf(options).expressions, "");
}

TEST_F(RunOptionsTest, ReachTheComparisonOfARun) {
    for (const BuildViews views : {BuildViews::Yes, BuildViews::No}) {
        for (const OptionEffect& row : kOptionEffects) {
            SCOPED_TRACE(row.name);
            for (const auto& [options, expected] :
                 {std::pair{row.base, row.without}, std::pair{row.options, row.with}}) {
                SetAll(options, viewer.Options());
                viewer.LookForMoves(options.find_moves);
                ASSERT_TRUE(Compare(FileOf(row.original), FileOf(row.modified), View::SideBySide,
                                    "txt", views));
                EXPECT_EQ(LetterNotationOf(viewer.Compared()), expected);
            }
        }
    }
}

// The marks of the editors come from the same comparison.
TEST_F(RunOptionsTest, ReachTheMarksOfBothViews) {
    for (const OptionEffect& row : kOptionEffects) {
        SCOPED_TRACE(row.name);
        std::vector<std::string> shown;
        for (const CompareOptions& options : {row.base, row.options}) {
            SetAll(options, viewer.Options());
            viewer.LookForMoves(options.find_moves);
            ASSERT_TRUE(Compare(FileOf(row.original), FileOf(row.modified), View::AllInOne));
            shown.push_back(AllInOne() + Summaries());
            ASSERT_TRUE(Compare(FileOf(row.original), FileOf(row.modified), View::SideBySide));
            shown.push_back(Left() + "\n" + Right() + Summaries());
        }
        EXPECT_NE(shown[0], shown[2]);
        EXPECT_NE(shown[1], shown[3]);
    }
}

TEST(RedlineDates, AreMomentsOfTheCalendar) {
    struct Row {
        const char* date;
        const char* epoch;
        const char* told;  // empty: refused
    };
    constexpr std::int64_t kNow = 1'000'000'000;
    for (const Row& row :
         {Row{"", "", "2001-09-09T01:46:40Z"}, Row{"", "0", "1970-01-01T00:00:00Z"},
          Row{"", "253402300799", "9999-12-31T23:59:59Z"}, Row{"", "253402300800", ""},
          Row{"", "-1", ""}, Row{"", "soon", ""},
          Row{"2024-02-29T23:59:59", "0", "2024-02-29T23:59:59Z"},
          Row{"2024-02-29T23:59:59Z", "x", "2024-02-29T23:59:59Z"},
          Row{"2023-02-29T23:59:59", "", ""}, Row{"2024-02-29T24:00:00Z", "", ""},
          Row{"2024-02-29T23:60:00Z", "", ""}, Row{"2024-02-29T23:59:60Z", "", ""},
          Row{"2024-02-29 23:59:59Z", "", ""}, Row{"2024-02-2 T23:59:59Z", "", ""},
          Row{"2024-02-29T23:59Z", "", ""}}) {
        SCOPED_TRACE(std::string(row.date) + " " + row.epoch);
        RedlineOptions options;
        options.date = row.date;
        const Result<std::string> told = RevisionDate(options, row.epoch, kNow);
        EXPECT_EQ(told.ok() ? told.value() : "", row.told);
    }
}

}  // namespace
}  // namespace zorvane::run_options_test
