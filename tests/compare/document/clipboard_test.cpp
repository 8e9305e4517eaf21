#include "compare/document/clipboard.h"

#include <gtest/gtest.h>

#include "compare/document/memory_editor.h"
#include "compare/document/rtb_document.h"
#include "compare/document/rtf_reader.h"
#include "tests/support/fakes.h"
#include "tests/support/rich_text_notation.h"

namespace zorvane::clipboard_test {
namespace {

class ClipboardTest : public testing::Test {
  protected:
    ClipboardTest() {
        document_.Setup(editor_, sound_);
        editor_.SetRich(ReadRtf("{\\rtf1 one {\\b two}\\par three}"));
    }
    std::string Shown() const { return Notation(editor_.Rich()); }

    FakeSound sound_;
    MemoryEditor editor_;
    clsRTBDocument document_;
    MemoryClipboard clipboard_;
};

TEST_F(ClipboardTest, TakesTheSelectionAndGivesItBack) {
    const std::string before = Shown();
    editor_.Select({CharPos{4}, 7});
    document_.Cut(clipboard_);
    EXPECT_EQ(editor_.Text(), u"one ree");
    EXPECT_EQ(clipboard_.Get().plain, u"two\r\nth");
    document_.Paste(clipboard_);
    EXPECT_EQ(Shown(), before);
    EXPECT_EQ(editor_.Selection(), (TextRange{CharPos{11}, 0}));
    document_.SelectAll();
    document_.Copy(clipboard_);
    EXPECT_EQ(Shown(), before);
    MemoryEditor other;
    clsRTBDocument copy;
    copy.Setup(other, sound_);
    copy.Paste(clipboard_);
    EXPECT_EQ(Notation(other.Rich()), before + "|") << "the last paragraph's own end as well";
}

TEST_F(ClipboardTest, NothingSelectedChangesNothing) {
    clipboard_.Put({"", u"kept"});
    const std::string before = Shown();
    document_.Copy(clipboard_);
    document_.Cut(clipboard_);
    EXPECT_EQ(clipboard_.Get().plain, u"kept");
    clipboard_.Put({});
    document_.Paste(clipboard_);
    EXPECT_EQ(Shown(), before);
}

// What other programs put there, pasted between "o" and "ne".
TEST_F(ClipboardTest, TakesWhatOtherProgramsOffer) {
    struct Row {
        const char* name;
        ClipboardText text;
        const char16_t* pasted;
    };
    const Row rows[] = {
        {"plain alone", {"", u"x\ny"}, u"ox\r\nyne"},
        {"a word whose RTF ends its paragraph", {"{\\rtf1\\ansi word\\par }", u"word"}, u"owordne"},
        {"a whole paragraph", {"{\\rtf1\\ansi word\\par }", u"word\n"}, u"oword\r\nne"},
        {"RTF alone keeps its end", {"{\\rtf1 word\\par}", u""}, u"oword\r\nne"},
        {"RTF without a text", {"{\\rtf1{\\pict 00ff}}", u"picture"}, u"opicturene"},
        {"what says it is RTF and is not", {"<b>word</b>", u"word"}, u"owordne"},
        {"RTF that is cut off", {"{\\rtf1{\\b wo", u"word"}, u"owone"},
        {"a field",
         {"{\\rtf1{\\field{\\*\\fldinst HYPERLINK \"x\"}{\\fldrslt link}}}", u"link"},
         u"olinkne"},
        {"ends of lines alone", {"", u"\n"}, u"o\r\nne"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        editor_.SetText(u"one");
        editor_.Select({CharPos{1}, 0});
        clipboard_.Put(row.text);
        document_.Paste(clipboard_);
        EXPECT_EQ(editor_.Text(), row.pasted);
    }
}

TEST_F(ClipboardTest, PlainTextTakesTheFormatOfItsPlace) {
    editor_.Select({CharPos{5}, 0});
    clipboard_.Put({"", u"X"});
    document_.Paste(clipboard_);
    EXPECT_TRUE(editor_.Rich().char_runs.at(1).format.bold);
    EXPECT_EQ(editor_.Rich().char_runs.at(1).length, 4);
}

TEST(PlainText, HasTabsBetweenCellsAndLinesAsLines) {
    EXPECT_EQ(PlainTextOf(u"a\ab\a\r\nc\vd"), u"a\tb\r\nc\nd");
    EXPECT_EQ(ClipboardTextOf(RichText::Plain(u"c\vd\n")).plain, u"c\r\nd\r\n");
}

}  // namespace
}  // namespace zorvane::clipboard_test
