#include "compare/document/rtb_document.h"

#include <random>

#include <gtest/gtest.h>

#include "compare/document/memory_editor.h"
#include "tests/support/fakes.h"
#include "tests/support/printers.h"
#include "tests/support/rich_text_notation.h"

namespace zorvane::rtb_document_test {
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

TEST_F(RtbDocumentTest, SelectsNothingWhereTheTextGotShorter) {
    Fill(u"one\r\ntwo");
    editor_.SetText(u"a\r\nb");
    EXPECT_EQ(Selected(1, 1, LastBreak::Keep), "");
    EXPECT_EQ(Selected(2, 2, LastBreak::LeaveOut), "");
    EXPECT_EQ(sound_.beeps, 0);
}

struct BetweenRow {
    const char* name;
    std::int32_t first;
    std::int32_t last;
    LastBreak last_break;
    TextRange selected;
    int beeps;
};
// "one" stands at 0, "two" at 5, "three" at 10 to 15.
const BetweenRow kBetweenRows[] = {
    {"the length is that of both", 1, 2, LastBreak::Keep, {CharPos{5}, 10}, 0},
    {"without the last break", 1, 1, LastBreak::LeaveOut, {CharPos{5}, 3}, 0},
    {"from the beginning", 0, 1, LastBreak::Keep, {CharPos{0}, 5}, 0},
    {"from the beginning, without break", 0, 1, LastBreak::LeaveOut, {CharPos{0}, 3}, 0},
    {"the place in front", 0, 0, LastBreak::Keep, {CharPos{0}, 1}, 0},
    {"behind the last: its break", 3, 3, LastBreak::Keep, {CharPos{15}, 2}, 0},
    {"past the last: the rest", 2, 9, LastBreak::Keep, {CharPos{10}, 5}, 1},
    {"no such first: as it was", 9, 1, LastBreak::Keep, {CharPos{1}, 1}, 1},
};
TEST_F(RtbDocumentTest, SelectsBetweenParagraphs) {
    Fill(u"one\r\ntwo\r\nthree");
    for (const BetweenRow& row : kBetweenRows) {
        SCOPED_TRACE(row.name);
        sound_.beeps = 0;
        editor_.Select({CharPos{1}, 1});
        document_.SelectAllTextBetween(ParagraphNumber{row.first}, ParagraphNumber{row.last},
                                       row.last_break);
        EXPECT_EQ(editor_.Selection(), row.selected);
        EXPECT_EQ(sound_.beeps, row.beeps);
    }
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
    {"over a break", u"ab\r\ncd", u"b\r\nc", u"-", true, u"a-d", 1},
    {"a line feed stands for its break", u"a\r\nb", u"\n", u" ", true, u"a b", 1},
    {"a break put in", u"a,b", u",", u"\n", true, u"a\r\nb", 1},
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

TEST_F(RtbDocumentTest, ACharacterInTwoPiecesIsWrittenWhole) {
    Fill(u"a\xD83D\xDE00");
    editor_.Replace({CharPos{2}, 1}, u"\xDE00");
    ASSERT_EQ(editor_.TextPieces()[0].size(), 2U);
    EXPECT_EQ(document_.LineFileText(), "a😀\r\n");
    editor_.Replace({CharPos{2}, 1}, u"b");
    editor_.Replace({CharPos{2}, 1}, u"");
    EXPECT_EQ(document_.LineFileText(), "a\xEF\xBF\xBD\r\n") << "a lone half";
}

// An editor that keeps lone returns until its text is set anew, in two pieces.
class RawEditor : public MemoryEditor {
  public:
    using MemoryEditor::Text;
    std::u16string Text() const override { return raw_ ? front_ + back_ : MemoryEditor::Text(); }
    using MemoryEditor::TextPieces;
    std::vector<std::u16string_view> TextPieces(TextRange range) const override {
        return raw_ ? std::vector<std::u16string_view>{front_, back_}
                    : MemoryEditor::TextPieces(range);
    }
    void SetText(std::u16string_view text) override {
        raw_ = false;
        MemoryEditor::SetText(text);
    }
    void SetRaw(std::u16string front, std::u16string back) {
        front_ = std::move(front);
        back_ = std::move(back);
        raw_ = true;
    }
    bool Raw() const { return raw_; }

  private:
    std::u16string front_;
    std::u16string back_;
    bool raw_ = false;
};

struct ReturnsRow {
    const char* name;
    const char16_t* front;
    const char16_t* back;
    bool set_anew;
    const char* text;
};
const ReturnsRow kReturnsRows[] = {
    {"single returns stay", u"a\r\n\r\nb", u"\r\n", false, ""},
    {"a pair goes", u"a\r\rb\r\n", u"c", true, "ab|c"},
    {"a pair in the second piece", u"a", u"b\r\rc", true, "abc"},
    {"a pair across the pieces", u"a\r", u"\rb", true, "ab"},
    {"three: one is left", u"a\r\r\r\nb", u"", true, "a|b"},
};
TEST(RtbDocument, TakesDoubledReturnsOut) {
    for (const ReturnsRow& row : kReturnsRows) {
        SCOPED_TRACE(row.name);
        RawEditor editor;
        FakeSound sound;
        clsRTBDocument document;
        document.Setup(editor, sound);
        editor.SetRaw(row.front, row.back);
        EXPECT_TRUE(document.ParagraphCollectionCreate());
        EXPECT_NE(editor.Raw(), row.set_anew);
        EXPECT_EQ(Readable(editor.MemoryEditor::Text()), row.text);
    }
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

TEST_F(RtbDocumentTest, AdjustedParagraphsAreThoseOfTheNewText) {
    std::mt19937 random(4);
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE(round);
        std::u16string text;
        for (auto paragraph = random() % 20; paragraph > 0; --paragraph)
            text += std::u16string(random() % 6, u'x') + u"\r\n";
        Fill(text);
        // As a walk does: from the last to the first, positions as they were at the start. What
        // the last paragraph's own change moves lies behind it.
        for (std::int32_t i = document_.ParagraphCount() - 2; i >= 1; --i) {
            if (random() % 2 == 0)
                continue;
            const ParagraphNumber number{i};
            const TextRange old = document_.RangeOf(number, number, LastBreak::LeaveOut);
            const auto length = static_cast<std::int32_t>(random() % 9);
            editor_.Replace(old, std::u16string(static_cast<std::size_t>(length), u'y'));
            document_.ParagraphCollectionAdjustmentAddDelta(number + 1, length - old.length);
            document_.SetLastCharLocationOfParagraph(
                number, document_.GetLastCharLocationOfParagraph(number) + (length - old.length));
        }
        document_.ParagraphCollectionAdjust();
        clsRTBDocument anew;
        anew.Setup(editor_, sound_);
        anew.ParagraphCollectionCreate();
        ASSERT_EQ(document_.ParagraphCount(), anew.ParagraphCount());
        for (ParagraphNumber number{1}; number.value <= anew.ParagraphCount(); ++number) {
            EXPECT_EQ(document_.GetFirstCharLocationOfParagraph(number),
                      anew.GetFirstCharLocationOfParagraph(number));
            EXPECT_EQ(document_.GetLastCharLocationOfParagraph(number),
                      anew.GetLastCharLocationOfParagraph(number));
        }
    }
}

TEST_F(RtbDocumentTest, HighlightsTheSelection) {
    Fill(u"abc");
    ClsAPIHighlight highlight;
    highlight.APIHighlight(Color{5});  // without an editor: nothing
    highlight.AssignControls(editor_);
    highlight.APIUnderline(3);
    EXPECT_EQ(Notation(editor_.Rich()), "abc") << "an empty selection";
    editor_.Select({CharPos{1}, 1});
    highlight.APIHighlight(Color{0});
    highlight.APIUnderline(3);
    EXPECT_EQ(Notation(editor_.Rich()), "a[u3@0:b]c") << "0 is black, not a removal";
    highlight.APIUnderline(200);
    EXPECT_EQ(Notation(editor_.Rich()), "a[u3@0:b]c") << "no such underline";
    EXPECT_EQ(editor_.Selection(), (TextRange{CharPos{1}, 1}));
}

// An edit inside one paragraph that is told of leaves the same list as a new one.
TEST(Paragraphs, FollowAnEditAsIfTheyWereBuiltAnew) {
    std::mt19937 random(9);
    for (int round = 0; round < 500; ++round) {
        SCOPED_TRACE(round);
        std::u16string text;
        for (std::size_t line = random() % 6; line > 0; --line)
            text += std::u16string(random() % 5, u'a') + u"\r\n";
        text += std::u16string(random() % 5, u'a');
        Paragraphs followed;
        followed.Build(text);
        // Somewhere between two breaks.
        const std::size_t first = random() % (text.size() + 1);
        if (first > 0 && text[first - 1] == u'\r')
            continue;
        const std::size_t end = std::min(text.find(u'\r', first), text.size());
        const std::size_t removed = random() % (end - first + 1);
        const std::u16string put(random() % 4, u'b');
        text.replace(first, removed, put);
        followed.Replaced(CharPos{static_cast<std::int32_t>(first)},
                          static_cast<std::int32_t>(removed),
                          static_cast<std::int32_t>(put.size()));
        Paragraphs anew;
        anew.Build(text);
        ASSERT_EQ(followed.Count(), anew.Count());
        for (std::int32_t number = 1; number <= anew.Count(); ++number)
            EXPECT_EQ(followed.At(ParagraphNumber{number}), anew.At(ParagraphNumber{number}))
                << number;
    }
}

// What was removed with its break, or stood in it, ends where the edit ends; nothing is negative or
// out of order.
TEST(Paragraphs, StayInOrderWhateverIsRemoved) {
    Paragraphs paragraphs;
    paragraphs.Build(u"one\r\ntwo\r\nthree");
    paragraphs.Replaced(CharPos{2}, 6, 1);
    const std::vector<clsParagraph> expected = {
        {CharPos{0}, CharPos{3}}, {CharPos{3}, CharPos{5}}, {CharPos{5}, CharPos{12}}};
    for (std::int32_t number = 1; number <= 3; ++number)
        EXPECT_EQ(paragraphs.At(ParagraphNumber{number}),
                  expected[static_cast<std::size_t>(number - 1)])
            << number;
}

}  // namespace
}  // namespace zorvane::rtb_document_test
