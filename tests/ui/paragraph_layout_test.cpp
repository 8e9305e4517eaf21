#include "compare/ui/paragraph_layout.h"

#include <gtest/gtest.h>

#include "compare/ui/font_families.h"

namespace zorvane {
namespace {

BlockText BlockOf(std::u16string text) {
    BlockText block;
    block.text = std::move(text);
    if (!block.text.empty())
        block.runs = {{static_cast<std::int32_t>(block.text.size()), CharFormat()}};
    block.right_to_left = StartsRightToLeft(block.text);
    return block;
}

ParagraphLayout LayOut(const BlockText& block, double width = 300, bool wrap = true) {
    TextStyle style;
    style.width = width;
    style.wrap = wrap;
    FormatMaker formats;
    return {block, style, formats};
}

struct TextRow {
    const char* name;
    std::u16string text;
};

const TextRow kTexts[] = {
    {"empty", u""},
    {"one letter", u"a"},
    {"several lines",
     u"The Tenant pays the rent in advance on the first working day of each month "
     u"and keeps the premises clean and in good repair."},
    {"tabs", u"1.\tThe first\tpoint of it"},
    {"a break inside", u"one line\vand another\v"},
    {"a row of cells", u"Item\aMonthly amount\aAdjusted\a"},
    {"a row with empty cells", u"\a\aend\a"},
    {"Hebrew", u"\u05e9\u05dc\u05d5\u05dd \u05e2\u05d5\u05dc\u05dd \u05d5\u05e2\u05d5\u05d3"},
    {"English with Hebrew in it", u"the word \u05e9\u05dc\u05d5\u05dd means peace"},
    {"two units in a letter", u"a \U0001F600 b"},
    {"no blank to wrap at", std::u16string(200, u'x')},
};

// A place inside a letter of two units is none.
bool IsPlace(const std::u16string& text, std::int32_t at) {
    return at == 0 || (text[static_cast<std::size_t>(at - 1)] & 0xFC00) != 0xD800;
}

TEST(ParagraphLayout, GoesFromPositionsToPointsAndBack) {
    for (const TextRow& row : kTexts) {
        for (const bool wrap : {true, false}) {
            SCOPED_TRACE(std::string(row.name) + (wrap ? ", wrapped" : ", unwrapped"));
            const ParagraphLayout layout = LayOut(BlockOf(row.text), 300, wrap);
            for (std::int32_t at = 0; at <= layout.Length(); ++at) {
                if (!IsPlace(row.text, at))
                    continue;
                const QRectF caret = layout.CaretRect(at);
                const std::int32_t back = layout.PositionAt(caret.center());
                // Where text of two directions meets, two positions share a place.
                EXPECT_NEAR(layout.CaretRect(back).x(), caret.x(), 0.6) << "at " << at;
                EXPECT_GE(caret.top(), 0);
                EXPECT_LE(caret.bottom(), layout.Height());
            }
        }
    }
}

TEST(ParagraphLayout, StepsThroughEveryPlaceInTheOrderOfTheEye) {
    for (const TextRow& row : kTexts) {
        SCOPED_TRACE(row.name);
        if (row.text.find(u'\a') != std::u16string::npos)
            continue;  // cells stand beside each other on lines of their own
        const ParagraphLayout layout = LayOut(BlockOf(row.text), 100000);
        const bool right_to_left = layout.RightToLeft();
        // Lines of one paragraph differ in y alone; within one, x never goes back.
        std::int32_t at = 0;
        for (std::int32_t step = 0; step < 2 * layout.Length() + 2; ++step) {
            const std::int32_t next = layout.VisualStep(at, !right_to_left);
            if (next < 0 || next == at)
                break;
            const QRectF before = layout.CaretRect(at);
            const QRectF after = layout.CaretRect(next);
            if (before.top() == after.top()) {
                EXPECT_GT((after.x() - before.x()) * (right_to_left ? -1 : 1), -0.01)
                    << at << " to " << next;
            }
            at = next;
        }
        EXPECT_EQ(at, layout.Length());
    }
}

TEST(ParagraphLayout, KeepsComposedTextOutOfItsPositions) {
    BlockText block = BlockOf(u"before behind");
    const ParagraphLayout plain = LayOut(block);
    block.preedit = {7, u"\u304b\u306a", 1};
    const ParagraphLayout composing = LayOut(block);
    EXPECT_EQ(composing.Length(), plain.Length());
    EXPECT_EQ(composing.CaretRect(3).x(), plain.CaretRect(3).x());
    const double shift = composing.CaretRect(10).x() - plain.CaretRect(10).x();
    EXPECT_GT(shift, 5);
    EXPECT_EQ(composing.PositionAt(composing.CaretRect(10).center()), 10);
    // The caret stands inside the composed text, which is no place of the document.
    const double inside = composing.PreeditCaretRect().x();
    EXPECT_GT(inside, composing.CaretRect(7).x());
    EXPECT_EQ(composing.PositionAt({inside, composing.CaretRect(7).center().y()}), 7);
    EXPECT_EQ(composing.PreeditBoxes().size(), 1U);
}

TEST(ParagraphLayout, ShowsFormatsOfParagraphs) {
    const std::u16string text = u"word";
    BlockText block = BlockOf(text);
    const double left = LayOut(block).CaretRect(0).x();
    block.paragraph.alignment = Alignment::Right;
    EXPECT_NEAR(LayOut(block).CaretRect(4).x(), 300, 1);
    block.paragraph.alignment = Alignment::Center;
    const ParagraphLayout middle = LayOut(block);
    EXPECT_NEAR((middle.CaretRect(0).x() + middle.CaretRect(4).x()) / 2, 150, 1);
    block.paragraph = {};
    block.paragraph.left_indent = 1440;
    block.paragraph.first_line_indent = -720;
    EXPECT_NEAR(LayOut(block).CaretRect(0).x(), left + 48, 0.5);
    // The hanging indent of a list is where its first tab goes.
    BlockText list = BlockOf(u"1.\tword");
    list.paragraph = block.paragraph;
    EXPECT_NEAR(LayOut(list).CaretRect(3).x(), 96, 0.5);
    block.paragraph = {};
    const double height = LayOut(block).Height();
    block.paragraph.space_before = 1440;
    EXPECT_NEAR(LayOut(block).Height(), height + 96 - 5, 1);
    block.first_slice = false;
    EXPECT_NEAR(LayOut(block).Height(), height - 5, 1);
}

TEST(ParagraphLayout, TrimsMarksAtLineEnds) {
    const ParagraphLayout layout =
        LayOut(BlockOf(u"  several words that wrap more than once in a narrow column  "), 120);
    ASSERT_GT(layout.LineCount(), 2);
    const auto all = layout.Boxes(0, layout.Length(), EndTrim::No);
    const auto trimmed = layout.Boxes(0, layout.Length(), EndTrim::Blanks);
    ASSERT_EQ(all.size(), trimmed.size());
    EXPECT_GT(trimmed.front().rect.left(), all.front().rect.left());
    for (std::size_t line = 0; line < trimmed.size(); ++line)
        EXPECT_LE(trimmed[line].rect.right(), 120.5);
    EXPECT_TRUE(layout.Boxes(0, 2, EndTrim::Blanks).empty());
}

TEST(ParagraphLayout, BoxesOfRightToLeftTextLieWhereItsLettersDo) {
    const ParagraphLayout layout =
        LayOut(BlockOf(u"the word \u05e9\u05dc\u05d5\u05dd means"), 1000);
    const auto boxes = layout.Boxes(10, 2, EndTrim::No);  // two letters inside the Hebrew word
    ASSERT_EQ(boxes.size(), 1U);
    const auto word = layout.Boxes(9, 4, EndTrim::No);
    ASSERT_EQ(word.size(), 1U);
    EXPECT_GT(boxes[0].rect.width(), 4);
    EXPECT_GT(boxes[0].rect.left(), word[0].rect.left() + 2);
    EXPECT_LT(boxes[0].rect.right(), word[0].rect.right() - 2);
    // Selected from inside the word to behind it, the text lies in two pieces.
    EXPECT_EQ(layout.Boxes(11, 4, EndTrim::No).size(), 2U);
}

// In either direction of the paragraph, letter by letter, nothing is left out or covered twice.
TEST(ParagraphLayout, BoxesOfLettersFillTheirLine) {
    for (const std::u16string& text :
         {std::u16string(u"the word \u05e9\u05dc\u05d5\u05dd means"),
          std::u16string(u"\u05e9\u05dc\u05d5\u05dd, EUR 4,200 \u05dc\u05db\u05dc")}) {
        const ParagraphLayout layout = LayOut(BlockOf(text), 1000);
        double sum = 0;
        for (std::int32_t at = 0; at < layout.Length(); ++at) {
            for (const RangeBox& box : layout.Boxes(at, 1, EndTrim::No))
                sum += box.rect.width();
        }
        const auto all = layout.Boxes(0, layout.Length(), EndTrim::No);
        ASSERT_EQ(all.size(), 1U);
        EXPECT_NEAR(sum, all[0].rect.width(), 0.1);
        EXPECT_NEAR(sum, layout.Width(), 1);
    }
}

TEST(FontFamilies, AreThoseOfTheFacesThatPdfDocumentsName) {
    const std::pair<const char*, const char*> rows[] = {
        {"LiberationSerif-Bold", "Liberation Serif"},
        {"TimesNewRomanPS-BoldMT", "Times New Roman"},
        {"TimesNewRomanPSMT", "Times New Roman"},
        {"ArialMT", "Arial"},
        {"DejaVu Sans Mono", "DejaVu Sans Mono"},
        {"CMR10", "CMR10"},
        {"Noto Sans CJK JP", "Noto Sans CJK JP"},
        {"-", "-"},
        {"PT-Sans", "PT"},
        {"", ""},
    };
    for (const auto& [name, family] : rows)
        EXPECT_EQ(FamilyOfFace(QString::fromLatin1(name)), QString::fromLatin1(family)) << name;
}

}  // namespace
}  // namespace zorvane
