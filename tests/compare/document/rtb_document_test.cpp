#include "compare/document/rtb_document.h"

#include <random>

#include <gtest/gtest.h>

#include "compare/document/memory_editor.h"
#include "tests/support/fakes.h"
#include "tests/support/printers.h"
#include "tests/support/rich_text_notation.h"

namespace zorvane {
namespace {

class RtbDocumentTest : public ::testing::Test {
  protected:
    void Fill(std::u16string_view text) {
        document_.Setup(editor_, sound_);
        editor_.SetText(text);
        document_.ParagraphCollectionCreate();
    }
    std::string Selected(std::int32_t first, std::int32_t last, LastBreak last_break) {
        document_.SelectParagraphs(ParagraphNumber{first}, ParagraphNumber{last}, last_break);
        return Readable(editor_.SelectedText());
    }

    MemoryEditor editor_;
    FakeSound sound_;
    clsRTBDocument document_;
};

struct ParagraphRow {
    const char* name;
    const char16_t* text;
    std::vector<clsParagraph> paragraphs;
};
const ParagraphRow kParagraphRows[] = {
    {"an empty text", u"", {{CharPos{0}, CharPos{2}}}},
    {"no break", u"ab", {{CharPos{0}, CharPos{4}}}},
    {"a last empty one", u"a\r\n", {{CharPos{0}, CharPos{3}}, {CharPos{3}, CharPos{5}}}},
    {"two", u"a\r\nbc", {{CharPos{0}, CharPos{3}}, {CharPos{3}, CharPos{7}}}},
};
TEST_F(RtbDocumentTest, NumbersParagraphs) {
    for (const ParagraphRow& row : kParagraphRows) {
        SCOPED_TRACE(row.name);
        Fill(row.text);
        ASSERT_EQ(document_.ParagraphCount(), static_cast<std::int32_t>(row.paragraphs.size()));
        for (std::int32_t i = 0; i < document_.ParagraphCount(); ++i) {
            const ParagraphNumber number{i + 1};
            const clsParagraph& expected = row.paragraphs[static_cast<std::size_t>(i)];
            EXPECT_EQ(document_.GetFirstCharLocationOfParagraph(number), expected.FirstChar);
            EXPECT_EQ(document_.GetLastCharLocationOfParagraph(number), expected.LastChar);
        }
    }
}

TEST_F(RtbDocumentTest, SelectsWithAndWithoutTheLastBreak) {
    Fill(u"one\r\ntwo\r\nthree");
    EXPECT_EQ(Selected(1, 1, LastBreak::Keep), "one|");
    EXPECT_EQ(Selected(1, 2, LastBreak::LeaveOut), "one|two");
    EXPECT_EQ(Selected(3, 3, LastBreak::LeaveOut), "three");
    EXPECT_EQ(Selected(3, 3, LastBreak::Keep), "three|") << "the last paragraph has a break too";
    EXPECT_EQ(Selected(0, 0, LastBreak::Keep), "o") << "one character at the beginning";
    EXPECT_EQ(sound_.beeps, 0);
    EXPECT_EQ(Selected(1, 4, LastBreak::Keep), "");
    EXPECT_EQ(sound_.beeps, 1);
}

TEST_F(RtbDocumentTest, SelectsBetweenParagraphs) {
    Fill(u"one\r\ntwo\r\nthree");
    document_.SelectAllTextBetween(ParagraphNumber{1}, ParagraphNumber{2}, LastBreak::LeaveOut);
    EXPECT_EQ(editor_.Selection().first, CharPos{5});
    document_.SelectAllTextBetween(ParagraphNumber{2}, ParagraphNumber{9}, LastBreak::Keep);
    EXPECT_EQ(Readable(editor_.SelectedText()), "three");
    document_.SelectAllTextBetween(ParagraphNumber{0}, ParagraphNumber{1}, LastBreak::Keep);
    EXPECT_EQ(Readable(editor_.SelectedText()), "one|");
}

TEST_F(RtbDocumentTest, PutsTheCaretInFrontOfTheBreak) {
    Fill(u"one\r\ntwo");
    document_.SetCursorAt(ParagraphNumber{1});
    EXPECT_EQ(editor_.Selection().first, CharPos{3});
    document_.SetCursorAt(ParagraphNumber{2});
    EXPECT_EQ(editor_.Selection().first, CharPos{8});
    document_.SetCursorAt(ParagraphNumber{0});
    EXPECT_EQ(editor_.Selection().first, CharPos{0});
}

TEST_F(RtbDocumentTest, MarksWholeParagraphs) {
    Fill(u"one\r\ntwo\r\nthree");
    document_.ColorizeParagraphs(ParagraphNumber{2}, ParagraphNumber{2},
                                 {.ForeColor = 255, .bBold = true, .bUnderline = true});
    EXPECT_EQ(Notation(editor_.Rich()), "one|[bu3#255:two|]three");
}

TEST_F(RtbDocumentTest, ChangesTheFontOfTextAndDefault) {
    Fill(u"ab");
    document_.ChangeFontAll("Arial", 0);
    EXPECT_EQ(editor_.Rich().char_runs[0].format.font.view(), "Arial");
    EXPECT_EQ(editor_.Rich().char_runs[0].format.half_points, 20);
    document_.ChangeFontAll("", 12.5);
    EXPECT_EQ(editor_.DefaultFormat().half_points, 25);
    EXPECT_EQ(editor_.DefaultFormat().font.view(), "Arial");
}

TEST_F(RtbDocumentTest, ScrollsByLines) {
    Fill(u"a\r\nb\r\nc");
    document_.ScrollRTB(false);
    EXPECT_EQ(editor_.Selection(), (TextRange{CharPos{3}, 1}));
    document_.ScrollRTB(true);
    EXPECT_EQ(editor_.Selection(), (TextRange{CharPos{3}, 1})) << "stays on the first two lines";
    document_.ScrollRTB(false);
    document_.ScrollRTB(false);
    EXPECT_EQ(editor_.Selection(), (TextRange{CharPos{6}, 1})) << "stays on the last line";
    document_.ScrollRTB(true);
    EXPECT_EQ(editor_.Selection(), (TextRange{CharPos{3}, 1}));
    EXPECT_EQ(document_.GetEditStatus().line, 2);
    EXPECT_EQ(document_.GetEditStatus().column, 0);
}

struct ReplaceRow {
    const char* name;
    const char16_t* text;
    const char16_t* find;
    const char16_t* replace;
    bool match_case;
    const char16_t* result;
    std::int32_t count;
};
const ReplaceRow kReplaceRows[] = {
    {"longer", u"a-a-a", u"-", u"--", true, u"a--a--a", 2},
    {"shorter", u"xxyxx", u"xx", u"", true, u"y", 2},
    {"overlapping, from the end", u"aaa", u"aa", u"b", true, u"ab", 1},
    {"by case", u"aA", u"A", u"x", true, u"ax", 1},
    {"without case", u"aÄA", u"ä", u"x", false, u"axA", 1},
    {"nothing to find", u"a", u"", u"x", true, u"a", 0},
    {"an empty text", u"", u"a", u"x", true, u"", 0},
};
TEST_F(RtbDocumentTest, FindsAndReplaces) {
    for (const ReplaceRow& row : kReplaceRows) {
        SCOPED_TRACE(row.name);
        Fill(row.text);
        EXPECT_EQ(document_.FindAndReplaceString(row.find, row.replace, row.match_case), row.count);
        EXPECT_EQ(editor_.Text(), row.result);
    }
}

TEST_F(RtbDocumentTest, WritesAParagraphALine) {
    const TempFolder folder;
    Fill(u"one\r\nzwölf\r\n");
    ASSERT_TRUE(document_.SaveAsLineFile(folder.Path("a")).ok());
    ASSERT_TRUE(document_.SaveAsLineFileNew(folder.Path("b")).ok());
    EXPECT_EQ(folder.Read("a"), "one\r\nzwölf\r\n\r\n");
    EXPECT_EQ(folder.Read("b"), folder.Read("a"));
}

TEST_F(RtbDocumentTest, AdjustsByTheSumOfEarlierDeltas) {
    Fill(u"a\r\nb\r\nc\r\nd");
    document_.ParagraphCollectionAdjustmentAddDelta(ParagraphNumber{2}, 5);
    document_.ParagraphCollectionAdjustmentAddDelta(ParagraphNumber{2}, 7);
    document_.ParagraphCollectionAdjustmentAddDelta(ParagraphNumber{3}, -1);
    document_.ParagraphCollectionAdjustmentAddDelta(ParagraphNumber{4}, 100);
    document_.ParagraphCollectionAdjust();
    EXPECT_EQ(document_.GetFirstCharLocationOfParagraph(ParagraphNumber{1}), CharPos{0});
    EXPECT_EQ(document_.GetFirstCharLocationOfParagraph(ParagraphNumber{2}), CharPos{10})
        << "the later of two deltas counts";
    EXPECT_EQ(document_.GetFirstCharLocationOfParagraph(ParagraphNumber{3}), CharPos{12});
    EXPECT_EQ(document_.GetFirstCharLocationOfParagraph(ParagraphNumber{4}), CharPos{15})
        << "nothing lies behind the last";
}

}  // namespace
}  // namespace zorvane
