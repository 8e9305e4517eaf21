#include "compare/document/rich_document.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "compare/document/rtb_document.h"
#include "tests/support/fakes.h"
#include "tests/support/printers.h"
#include "tests/support/random_edits.h"
#include "tests/support/rich_text_notation.h"
#include "tests/support/temp_folder.h"

namespace zorvane::rich_document_test {
namespace {

TextRange At(std::int32_t first, std::int32_t length) {
    return {CharPos{first}, length};
}

CharFormatChange Bold() {
    CharFormatChange change;
    change.bold = true;
    return change;
}

// A copy of the text that knows of it only by notices, and what the notices were.
class Mirror : public DocumentObserver {
  public:
    explicit Mirror(RichDocument& document) : document_(document), rich_(document.Rich()) {
        document_.AddObserver(*this);
    }
    ~Mirror() override { document_.RemoveObserver(*this); }
    Mirror(const Mirror&) = delete;
    Mirror& operator=(const Mirror&) = delete;

    void Replaced(CharPos first, std::int32_t removed, std::int32_t inserted) override {
        told += "r" + std::to_string(first.value) + "-" + std::to_string(removed) + "+" +
                std::to_string(inserted) + " ";
        Copy(first, removed, inserted);
        ++edits;
    }
    void Reformatted(CharPos first, std::int32_t length) override {
        told += "f" + std::to_string(first.value) + "+" + std::to_string(length) + " ";
        Copy(first, length, length);
        ++edits;
    }
    void Reset() override {
        told += "reset ";
        rich_.SetRich(document_.Rich());
        ++edits;
    }
    void SelectionChanged() override { ++selections; }

    RichText Rich() const { return rich_.Rich(); }

    std::string told;
    int edits = 0;
    int selections = 0;

  private:
    void Copy(CharPos first, std::int32_t removed, std::int32_t inserted) {
        rich_.Replace({first, removed}, document_.Rich({first, inserted}));
    }

    RichDocument& document_;
    struct Copied : MemoryEditor {
        explicit Copied(RichText text) { SetRich(std::move(text)); }
    } rich_;
};

TEST(RichDocument, TellsEachEditAndABatchOnce) {
    RichDocument document;
    document.SetText(u"one two");
    Mirror mirror(document);
    document.Type(u"x");
    document.Replace(At(4, 2), u"");
    document.Format(At(1, 2), Bold());
    document.Replace(At(3, 0), u"");
    EXPECT_EQ(mirror.told, "r0-0+1 r4-2+0 f1+2 ");
    mirror.told.clear();
    {
        const EditBatch outer(document);
        document.Replace(At(4, 1), u"abc");
        const EditBatch inner(document);
        document.Format(At(0, 1), Bold());
        document.Replace(At(1, 1), u"");
        EXPECT_EQ(mirror.told, "");
    }
    EXPECT_EQ(mirror.told, "r0-5+6 ");
    mirror.told.clear();
    document.Undo();
    EXPECT_EQ(mirror.told, "r0-6+5 ");
    mirror.told.clear();
    document.Replace(At(0, 0), std::u16string((1 << 20) + 1, u'x'));
    document.SetText(u"new");
    EXPECT_EQ(mirror.told, "reset reset ") << "a large edit, and another text";
    const int selections = mirror.selections;
    document.MoveCaret(CharPos{2});
    EXPECT_EQ(mirror.selections, selections + 1);
}

// What a user does, as letters: > < caret to the right or left, _ pause, B and D delete back and
// forward, W and X the same by words, O type over, ( ) a batch, others are typed.
void Do(RichDocument& document, const std::string& keys) {
    std::vector<std::unique_ptr<EditBatch>> batches;
    for (std::size_t at = 0; at < keys.size(); ++at) {
        const CharPos caret = document.Caret().Caret();
        switch (keys[at]) {
            case '>':
                document.MoveCaret(caret + 1);
                break;
            case '<':
                document.MoveCaret(caret - 1);
                break;
            case '_':
                document.EndTyping();
                break;
            case 'B':
                document.DeleteBack(TextUnit::Character);
                break;
            case 'D':
                document.DeleteForward(TextUnit::Character);
                break;
            case 'W':
                document.DeleteBack(TextUnit::Word);
                break;
            case 'X':
                document.DeleteForward(TextUnit::Word);
                break;
            case 'O':
                document.TypeOver(ToUtf16(keys.substr(++at, 1)));
                break;
            case '(':
                batches.push_back(std::make_unique<EditBatch>(document));
                break;
            case ')':
                batches.pop_back();
                break;
            case '|':
                document.Type(u"\r\n");
                break;
            default:
                document.Type(ToUtf16(keys.substr(at, 1)));
        }
    }
}

struct UndoRow {
    const char* name;
    const char* keys;
    std::vector<std::string> states;  // from the last to the first, "word" being there at first
};
const UndoRow kUndoRows[] = {
    {"letters are a word", "abc", {"abcword", "word"}},
    {"blanks go with the word in front", "ab  cd ", {"ab  cd word", "ab  word", "word"}},
    {"a break is one of its own", "a|b", {"a|bword", "a|word", "aword", "word"}},
    {"a pause", "ab_cd", {"abcdword", "abword", "word"}},
    {"the caret went elsewhere", "a>b", {"awbord", "aword", "word"}},
    {"and came back", "a><b", {"abword", "aword", "word"}},
    {"removed one by one to the front", ">>BB", {"rd", "word"}},
    {"and behind", ">DD", {"wd", "word"}},
    {"removed here and there", ">>B>>B", {"wr", "wrd", "word"}},
    {"other edits", "aBD", {"ord", "word", "aword", "word"}},
    {"words", ">>>XW", {"", "wor", "word"}},
    {"over others", "OaOb", {"abrd", "word"}},
    {"a batch", "a(b<cd)e", {"acdebword", "acdbword", "aword", "word"}},
    {"batches in each other", "((a)b)", {"abword", "word"}},
    {"nothing is no entry", "B()", {"word"}},
};
TEST(RichDocument, UndoesAsPeopleThink) {
    for (const UndoRow& row : kUndoRows) {
        SCOPED_TRACE(row.name);
        RichDocument document;
        document.SetText(u"word");
        Do(document, row.keys);
        std::vector<std::string> undone{Notation(document.Rich())};
        while (document.CanUndo()) {
            document.Undo();
            undone.push_back(Notation(document.Rich()));
        }
        EXPECT_EQ(undone, row.states);
        std::vector<std::string> redone{Notation(document.Rich())};
        for (; document.CanRedo(); redone.push_back(Notation(document.Rich())))
            document.Redo();
        EXPECT_EQ(redone, std::vector<std::string>(row.states.rbegin(), row.states.rend()));
    }
}

TEST(RichDocument, PutsTheSelectionBackWithAnUndo) {
    RichDocument document;
    document.SetText(u"one two three");
    document.Select(At(4, 3));
    document.Type(u"2");
    document.MoveCaret(CharPos{0});
    EXPECT_EQ(document.Undo(), At(4, 3));
    EXPECT_EQ(document.Selection(), At(4, 3)) << "as it was before";
    EXPECT_EQ(document.Redo(), At(4, 1));
    EXPECT_EQ(document.Selection(), At(5, 0));
    document.MoveCaret(CharPos{0});
    document.Replace(At(6, 5), u"3");
    EXPECT_EQ(document.Undo(), At(6, 5));
    EXPECT_EQ(document.Selection(), At(6, 5)) << "it was not there, so what came back is shown";
}

TEST(RichDocument, AProgrammesEditsAreNoUsers) {
    RichDocument document;
    FakeSound sound;
    clsRTBDocument wrapper;
    wrapper.Setup(document, sound);
    document.SetText(u"ab");
    EXPECT_FALSE(document.CanUndo());
    document.Type(u"x");
    wrapper.ParagraphCollectionCreate();
    wrapper.ColorizeAll({});
    wrapper.ChangeFontAll("Arial", 9);
    wrapper.ColorizeParagraphs(ParagraphNumber{1}, ParagraphNumber{1}, {});
    document.Undo();
    EXPECT_EQ(document.Text(), u"ab");
    EXPECT_EQ(document.FormatAt(CharPos{0}).font.view(), "Arial") << "formats stay";
    EXPECT_FALSE(document.CanUndo());
    EXPECT_EQ(wrapper.FindAndReplaceString(u"b", u"abab", true), 1);
    EXPECT_EQ(wrapper.FindAndReplaceString(u"a", u"", true), 3);
    document.Undo();
    EXPECT_EQ(document.Text(), u"aabab") << "all replaced at once is one entry";
    {
        const ProgrammeEdit programme(document);
        document.Replace(At(0, 1), u"new");
    }
    EXPECT_FALSE(document.CanUndo() || document.CanRedo()) << "places are no more what they were";
}

TEST(RichDocument, KnowsWhetherItIsSaved) {
    RichDocument document;
    document.SetText(u"ab");
    EXPECT_FALSE(document.IsModified());
    document.Type(u"x");
    EXPECT_TRUE(document.IsModified());
    document.SetCleanPoint();
    document.Type(u"y");
    EXPECT_TRUE(document.IsModified()) << "nothing is joined over the clean point";
    document.Undo();
    EXPECT_FALSE(document.IsModified());
    document.Undo();
    EXPECT_TRUE(document.IsModified());
    document.Type(u"z");
    document.Undo();
    EXPECT_TRUE(document.IsModified()) << "what was saved cannot be reached any more";
    {
        const ProgrammeEdit programme(document);
        document.Replace(At(0, 0), u"p");
    }
    EXPECT_TRUE(document.IsModified());
    const TempFolder folder;
    ASSERT_TRUE(document.LoadFile(folder.Write("a.txt", "a"), FileFormat::PlainText).ok());
    EXPECT_FALSE(document.IsModified());
    document.Type(u"x");
    EXPECT_FALSE(document.LoadFile(folder.Path("none"), FileFormat::PlainText).ok());
    EXPECT_TRUE(document.IsModified() && document.CanUndo()) << "a failed load changes nothing";
}

TEST(RichDocument, TypesInTheFormatOfItsParagraph) {
    RichDocument document;
    document.SetText(u"head\r\nwords");
    document.Format(At(0, 6), Bold());
    document.MoveCaret(CharPos{6});
    document.Type(u"x");
    EXPECT_EQ(document.FormatAt(CharPos{6}), document.FormatAt(CharPos{7})) << "not the heading's";
}

TEST(RichDocument, TypesOverNoBreak) {
    RichDocument document;
    document.SetText(u"a\xD83D\xDE00\r\nb");
    document.MoveCaret(CharPos{1});
    document.TypeOver(u"x");
    EXPECT_EQ(document.Text(), u"ax\r\nb") << "a character, not a unit";
    document.TypeOver(u"\r\n");
    EXPECT_EQ(document.Text(), u"ax\r\n\r\nb") << "nor does one take a character";
    document.Undo();
    document.MoveCaret(CharPos{2});
    document.TypeOver(u"yz");
    EXPECT_EQ(document.Text(), u"axyz\r\nb");
    EXPECT_EQ(document.Selection(), At(4, 0));
    document.Undo();
    document.Undo();
    EXPECT_EQ(document.Text(), u"a\xD83D\xDE00\r\nb");
}

struct AlignRow {
    const char* name;
    TextRange range;
    std::int32_t first;  // what is centred then
    std::int32_t length;
};
// Paragraphs at 0 to 3, 3 to 6 and 6 to 7.
const AlignRow kAlignRows[] = {
    {"a caret", {CharPos{4}, 0}, 3, 3},
    {"a caret in front", {CharPos{3}, 0}, 3, 3},
    {"to the begin of the next, which is left", {CharPos{1}, 2}, 0, 3},
    {"over a break", {CharPos{1}, 3}, 0, 6},
    {"the last", {CharPos{7}, 0}, 6, 1},
    {"all", {CharPos{0}, 99}, 0, 7},
};
TEST(RichDocument, FormatsWholeParagraphs) {
    for (const AlignRow& row : kAlignRows) {
        SCOPED_TRACE(row.name);
        RichDocument document;
        document.SetText(u"a\r\nb\r\nc");
        Mirror mirror(document);
        ParagraphFormatChange change;
        change.alignment = Alignment::Center;
        document.FormatParagraphs(row.range, change);
        for (std::int32_t at = 0; at < 7; ++at) {
            const bool centred =
                document.ParagraphFormatAt(CharPos{at}).alignment == Alignment::Center;
            EXPECT_EQ(centred, at >= row.first && at < row.first + row.length) << at;
        }
        EXPECT_EQ(mirror.Rich(), document.Rich());
        document.Undo();
        EXPECT_EQ(document.Rich().paragraph_runs.size(), 1U);
    }
}

TEST(RichDocument, AnEmptyLastParagraphHasAFormat) {
    for (const char16_t* text : {u"", u"a\r\n"}) {
        RichDocument document;
        document.SetText(text);
        Mirror mirror(document);
        const CharPos end{document.Length()};
        ParagraphFormatChange change;
        change.alignment = Alignment::Center;
        document.MoveCaret(end);
        document.FormatParagraphs({end, 0}, change);
        EXPECT_EQ(mirror.edits, 1);
        change = {};
        change.left_indent = 100;
        document.FormatParagraphs(At(0, 99), change);
        const auto last = [&] { return document.ParagraphFormatAt(end); };
        EXPECT_EQ(last().alignment, Alignment::Center);
        document.Type(u"x");
        EXPECT_EQ(last().alignment, Alignment::Center) << "what is typed there takes it";
        EXPECT_EQ(last().left_indent, 100);
        document.Undo();
        EXPECT_EQ(last().left_indent, 100);
        document.Undo();
        EXPECT_EQ(last().left_indent, 0);
        EXPECT_EQ(last().alignment, Alignment::Center);
        document.Undo();
        EXPECT_EQ(last(), ParagraphFormat{});
        document.Redo();
        document.Redo();
        EXPECT_EQ(last().left_indent, 100);
        document.SetText(u"");
        EXPECT_EQ(last(), ParagraphFormat{});
    }
}

TEST(RichDocumentProperty, NoticesMakeTheSameTextAndUndoGoesThroughAllStates) {
    for (unsigned seed = 0; seed < 120; ++seed) {
        SCOPED_TRACE(seed);
        RichDocument document;
        document.SetText(u"one two\r\nthree\vfour\r\n");
        Mirror mirror(document);
        RandomEdits edits(document, seed);
        std::vector<RichText> states{document.Rich()};
        std::size_t state = 0;
        for (int step = 0; step < 150; ++step) {
            const int told = mirror.edits;
            const std::int32_t choice = edits.Below(6);
            if (choice == 0) {
                state -= document.Undo() ? 1U : 0U;
            } else if (choice == 1) {
                state += document.Redo() ? 1U : 0U;
            } else {
                document.EndTyping();
                choice == 2 ? edits.Batch() : edits.One();
                if (mirror.edits > told) {
                    states.resize(++state);
                    states.push_back(document.Rich());
                }
            }
            ASSERT_EQ(document.Rich(), states[state]) << "step " << step;
            ASSERT_EQ(mirror.Rich(), document.Rich()) << "step " << step;
            ASSERT_EQ(document.Clip(document.Caret().Range()), document.Caret().Range());
            ASSERT_EQ(document.CanUndo(), state > 0);
            ASSERT_EQ(document.CanRedo(), state + 1 < states.size());
        }
        while (document.Undo()) {
        }
        EXPECT_EQ(document.Rich(), states.front());
        while (document.Redo()) {
        }
        EXPECT_EQ(document.Rich(), states.back());
    }
}

}  // namespace
}  // namespace zorvane::rich_document_test
