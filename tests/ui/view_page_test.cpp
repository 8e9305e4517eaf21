#include "compare/ui/view_page.h"

#include <random>

#include <gtest/gtest.h>

#include "tests/ui/view_world.h"

namespace zorvane {
namespace {

std::u16string Lines(int count) {
    std::u16string text;
    for (int at = 0; at < count; ++at)
        text += Wide("line " + std::to_string(at) + " of a text that is long enough\r\n");
    return text;
}

// All that a view tells of its blocks, against a view of the same text made anew.
void ExpectSameAsNew(ShownView& shown) {
    RichDocument copy;
    copy.SetRich(shown.document.Rich());
    ViewPage fresh(copy);
    fresh.SetStyle(shown.view.Page().Style());
    fresh.SetWindowHeight(shown.view.Page().WindowHeight());
    ViewPage& own = shown.view.Page();
    ASSERT_EQ(own.Index().ParagraphCount(), fresh.Index().ParagraphCount());
    for (const ShownRow& row : own.Shown()) {
        const Block block = own.Index().At(row.row);
        const ParagraphLayout& layout = own.Layouts().Of(row.row);
        const std::u16string text = shown.document.Text({block.first, block.length});
        const std::int32_t ending = text.ends_with(u"\r\n") ? 2 : 0;
        ASSERT_EQ(layout.Length(), block.length - ending) << "row " << row.row;
        // A long paragraph may be cut elsewhere when it is cut anew.
        const Block other = fresh.Index().OfParagraph(block.paragraph);
        if (block.continues || other.length != block.length)
            continue;
        EXPECT_EQ(block.first, other.first);
        EXPECT_EQ(row.height, fresh.Layouts().Of(other.number).Height()) << "row " << row.row;
        for (const std::int32_t at : {0, layout.Length() / 2, layout.Length()})
            EXPECT_EQ(layout.CaretRect(at), fresh.Layouts().Of(other.number).CaretRect(at));
    }
}

TEST(ViewPage, IsAfterRandomEditsWhatAPageMadeAnewIs) {
    ShownView shown(Lines(60));
    std::mt19937 random(7);
    const auto upto = [&](std::int32_t most) {
        return std::uniform_int_distribution<std::int32_t>(0, most)(random);
    };
    const std::u16string pieces[] = {
        u"", u"x", u"\r\n", u"two\r\nlines", u"\r\n\r\n", std::u16string(20000, u'y'), u"a\ab\a"};
    for (int step = 0; step < 200; ++step) {
        SCOPED_TRACE(step);
        const CharPos first{upto(shown.document.Length())};
        const std::int32_t length = step % 3 == 0 ? upto(200) : upto(4);
        shown.document.Replace({first, length}, pieces[upto(6)]);
        if (step % 10 == 0)
            shown.view.ScrollByPixels(upto(400) - 200);
        if (step % 17 == 0)
            shown.document.Undo();
        shown.view.Page().Shown();
        if (step % 5 == 0)
            ExpectSameAsNew(shown);
        if (testing::Test::HasFatalFailure())
            return;
    }
}

TEST(ViewPage, KeepsWhatIsInSightWhenTextAboveChanges) {
    ShownView shown(Lines(500));
    shown.view.ShowRow(250);
    const ShownRow top = shown.view.Page().Shown().front();
    const CharPos place = shown.view.Page().Index().At(top.row).first;
    shown.document.Replace({CharPos{0}, 0}, u"new\r\nparagraphs\r\n");
    const ShownRow now = shown.view.Page().Shown().front();
    EXPECT_EQ(shown.view.Page().Index().At(now.row).first, place + 17);
    EXPECT_EQ(now.y, top.y);
}

TEST(ViewPage, EndsWithTheLastLineAtTheLowerEdge) {
    ShownView shown(Lines(100));
    ViewPage& page = shown.view.Page();
    page.ScrollBy(1e7);
    const ShownRow last = page.Shown().back();
    EXPECT_EQ(last.row, page.Rows().Count() - 1);
    EXPECT_NEAR(last.y + last.height, page.WindowHeight(), 1);
    page.ScrollBy(-1e7);
    EXPECT_EQ(page.Top(), (PageTop{0, 0}));
    // A text shorter than the window does not move.
    ShownView small(u"a\r\nb");
    EXPECT_EQ(small.view.Page().ScrollBy(50), 0);
}

TEST(ViewPage, ScrollsByTheWayItTells) {
    ShownView shown(Lines(300));
    ViewPage& page = shown.view.Page();
    std::mt19937 random(3);
    page.ScrollBy(500);
    for (int step = 0; step < 100; ++step) {
        const std::int32_t row = page.Top().row + 3;
        const double before = page.RowY(row);
        const double wanted = std::uniform_int_distribution<int>(-300, 300)(random);
        const double moved = page.ScrollBy(wanted);
        EXPECT_NEAR(before - page.RowY(row), moved, 0.001) << "step " << step;
    }
}

TEST(ViewPage, BringsTheCaretIntoSightInAParagraphOfManySlices) {
    ShownView shown(std::u16string(300000, u'w'));
    for (const std::int32_t place : {150000, 8192, 299999, 0}) {
        shown.document.MoveCaret(CharPos{place});
        shown.view.EnsureCaretVisible();
        const QRectF caret = shown.view.CaretRectOf(CharPos{place});
        EXPECT_GE(caret.top(), 0) << place;
        EXPECT_LE(caret.bottom(), shown.view.Page().WindowHeight()) << place;
    }
    EXPECT_EQ(shown.view.Page().Index().ParagraphCount(), 1);
}

TEST(ViewPage, LaysOutOnlyWhatIsInSight) {
    ShownView shown(Lines(20000));
    EXPECT_LT(shown.view.Page().Layouts().Made(), 100);
    const std::int64_t made = shown.view.Page().Layouts().Made();
    shown.view.ScrollByPixels(60);
    EXPECT_LT(shown.view.Page().Layouts().Made() - made, 10);
    shown.document.MoveCaret(shown.view.Page().Index().At(shown.view.Page().Top().row + 1).first);
    shown.view.Page().Shown();
    const std::int64_t before = shown.view.Page().Layouts().Made();
    shown.Type(QStringLiteral("a"));
    shown.Key(Qt::Key_Return);
    shown.view.Page().Shown();
    EXPECT_LT(shown.view.Page().Layouts().Made() - before, 6);
    EXPECT_LE(shown.view.Page().Layouts().Size(), 600U);
}

}  // namespace
}  // namespace zorvane
