// What is shown in which view, and the marks over the height of a window.
#include "compare/view/view_state.h"

#include <cmath>

#include <gtest/gtest.h>

#include "compare/view/overview.h"
#include "tests/support/comparison_notation.h"

namespace zorvane::view_state_test {
namespace {

using Editors = std::vector<ShownEditor>;

struct ViewRow {
    View view;
    ViewFilter filter;
    Editors shown;
    ShownEditor focus;
};
TEST(ArrangementOf, PutsTheSummaryInFrontOfTheView) {
    using enum ShownEditor;
    const Editors both{OriginalDiffFinal, ModifiedDiffFinal};
    const ViewRow rows[] = {
        {View::SideBySide, ViewFilter::All, both, Original},
        {View::AllInOne, ViewFilter::All, {AllInOneDiff}, AllInOneDiff},
        {View::SideBySide, ViewFilter::Additions, {both[0], both[1], Additions}, Additions},
        {View::SideBySide, ViewFilter::Deletions, {both[0], both[1], Deletions}, Deletions},
        {View::AllInOne, ViewFilter::Changes, {AllInOneDiff, Changes}, Changes},
    };
    for (const ViewRow& row : rows)
        EXPECT_EQ(ArrangementOf(row.view, row.filter), (ResultArrangement{row.shown, row.focus}));
    EXPECT_STREQ(ViewButtonCaption(View::SideBySide), "View All In One");
    EXPECT_STREQ(ViewButtonCaption(View::AllInOne), "View Side By Side");
}

std::string Notation(const std::vector<OverviewMark>& marks) {
    std::string text;
    for (const OverviewMark& mark : marks) {
        text += (text.empty() ? "" : " ");
        text += "cdame"[static_cast<std::size_t>(mark.kind)];
        text += std::to_string(mark.record);
        for (const Side side : kBothSides)
            text += ":" + std::to_string(std::lround(mark.shares[side].begin * 100)) + "-" +
                    std::to_string(std::lround(mark.shares[side].end * 100));
    }
    return text;
}

TEST(Overview, TellsTheShareOfEitherSide) {
    const std::string stays =
        " / the parties named above agree on every one of the terms that follow below this line / "
        "whatever else was said between them before today has no bearing on this contract";
    const std::string moves =
        "the deposit of three monthly rents is due before the keys change hands";
    const Comparison comparison = Compared("goes away first" + stays + " of old / " + moves,
                                           moves + stays + " of new / brand text / second one");
    ParagraphRows rows;
    rows.Assign(comparison);
    // Left 4 paragraphs, right 5. What wanders moved in front of what goes away.
    EXPECT_EQ(Notation(MakeOverview(rows, comparison, 0)),
              "d0:0-25:0-0 m1:25-25:0-20 c2:50-75:40-60 m3:75-100:60-60 a4:100-100:60-100");
    const auto doubled = [](Side side, ParagraphNumber number) {
        return (side == Side::Modified && number.value > 4 ? 2 : 1) * (number.value - 1.0);
    };
    EXPECT_EQ(Notation(MakeOverview(rows, comparison, doubled, 0)),
              "d0:0-25:0-0 m1:25-25:0-10 c2:50-75:20-30 m3:75-100:30-30 a4:100-100:30-100");
    rows.Apply(Side::Original, {ParagraphNumber{2}, 1, 1});
    EXPECT_EQ(Notation(MakeOverview(rows, comparison, 0)),
              "d0:0-25:0-0 m1:25-25:0-20 e-1:25-50:20-40 c2:50-75:40-60 m3:75-100:60-60 "
              "a4:100-100:60-100");
}

TEST(Overview, JoinsWhatNoPixelParts) {
    std::string original = "p0";
    std::string modified = "p0";
    for (int i = 1; i < 1000; ++i) {
        const std::string number = " / this is paragraph " + std::to_string(i);
        original += number + " old";
        modified += number + (i % 2 == 0 ? " new" : " old");
    }
    const Comparison comparison = Compared(original, modified);
    ParagraphRows rows;
    rows.Assign(comparison);
    ASSERT_EQ(comparison.records.size(), 499U);
    EXPECT_EQ(MakeOverview(rows, comparison, 0).size(), 499U);
    const std::vector<OverviewMark> joined = MakeOverview(rows, comparison, 0.002);
    ASSERT_EQ(joined.size(), 1U);
    EXPECT_DOUBLE_EQ(joined[0].shares.original.begin, 0.002);
    EXPECT_DOUBLE_EQ(joined[0].shares.modified.end, 0.999);
    EXPECT_TRUE(MakeOverview(ParagraphRows(), comparison, 0.002).empty());
}

}  // namespace
}  // namespace zorvane::view_state_test
