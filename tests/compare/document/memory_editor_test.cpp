#include "compare/document/memory_editor.h"

#include <random>

#include <gtest/gtest.h>

#include "tests/support/printers.h"
#include "tests/support/rich_text_notation.h"
#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

TextRange At(std::int32_t first, std::int32_t length) {
    return {CharPos{first}, length};
}

CharFormatChange Bold() {
    CharFormatChange change;
    change.bold = true;
    return change;
}

struct ClipRow {
    const char* name;
    TextRange asked;
    TextRange given;
};
// The text is "ab", a break, "c": positions 0 to 5, and the break behind the text up to 7.
const ClipRow kClipRows[] = {
    {"inside", {CharPos{0}, 2}, {CharPos{0}, 2}},
    {"ends between CR and LF", {CharPos{0}, 3}, {CharPos{0}, 2}},
    {"begins between CR and LF", {CharPos{3}, 2}, {CharPos{2}, 3}},
    {"the whole break", {CharPos{2}, 2}, {CharPos{2}, 2}},
    {"to the text's end", {CharPos{4}, 1}, {CharPos{4}, 1}},
    {"half the last break", {CharPos{4}, 2}, {CharPos{4}, 1}},
    {"the last break", {CharPos{4}, 3}, {CharPos{4}, 3}},
    {"beyond everything", {CharPos{4}, 99}, {CharPos{4}, 3}},
    {"begins beyond", {CharPos{50}, 5}, {CharPos{7}, 0}},
    {"negative", {CharPos{-5}, 6}, {CharPos{0}, 1}},
    {"negative length", {CharPos{2}, -1}, {CharPos{2}, 0}},
};
TEST(MemoryEditor, ClipsRangesAtBreaksAndEnds) {
    MemoryEditor editor;
    editor.SetText(u"ab\r\nc");
    for (const ClipRow& row : kClipRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(editor.Clip(row.asked), row.given);
    }
}

TEST(MemoryEditor, TheBreakBehindTheTextIsTakenAndNeverRemoved) {
    MemoryEditor editor;
    editor.SetText(u"ab");
    editor.SelectAll();
    EXPECT_EQ(editor.SelectedText(), u"ab\r\n");
    EXPECT_EQ(Notation(editor.SelectedRich()), "ab|");
    editor.ReplaceSelection(u"xy\r\n");
    EXPECT_EQ(editor.Text(), u"xy");
    editor.SelectAll();
    editor.ReplaceSelection(u"");
    EXPECT_EQ(editor.Length(), 0);
    EXPECT_EQ(editor.Text({CharPos{0}, 2}), u"\r\n");
}

TEST(MemoryEditor, MakesEveryLineEndOneBreak) {
    MemoryEditor editor;
    editor.SetText(u"a\nb\rc\r\nd\n\r");
    EXPECT_EQ(editor.Text(), u"a\r\nb\r\nc\r\nd\r\n\r\n");
    editor.Replace(At(0, 0), u"\n");
    EXPECT_EQ(editor.Text({CharPos{0}, 3}), u"\r\na");
    RichText rich = RichText::Plain(u"x");
    rich.text = u"p\nq";
    rich.char_runs = {{2, {}}, {1, {}}};
    rich.char_runs[1].format.bold = true;
    rich.paragraph_runs = {{3, {}}};
    editor.SetRich(rich);
    EXPECT_EQ(Notation(editor.Rich()), "p|[b:q]");
}

TEST(MemoryEditor, FormatsARangeOnly) {
    MemoryEditor editor;
    editor.SetText(u"one two three");
    editor.Format(At(4, 3), Bold());
    EXPECT_EQ(Notation(editor.Rich()), "one [b:two] three");
    EXPECT_EQ(Notation(editor.Rich(At(2, 4))), "e [b:tw]");
    editor.Format(At(0, 4), Bold());
    EXPECT_EQ(editor.Rich().char_runs.size(), 2U) << "equal neighbours are one run";
    EXPECT_EQ(editor.Selection(), At(0, 0)) << "the selection is not a variable of others";
}

TEST(MemoryEditor, NewTextTakesTheFormatOfItsPlace) {
    MemoryEditor editor;
    editor.SetText(u"ab");
    editor.Format(At(1, 1), Bold());
    editor.Replace(At(1, 1), u"X");
    EXPECT_EQ(Notation(editor.Rich()), "a[b:X]") << "of what it replaces";
    editor.Replace(At(2, 0), u"Y");
    EXPECT_EQ(Notation(editor.Rich()), "a[b:XY]") << "else of what stands in front";
    editor.Replace(At(0, 0), u"0");
    EXPECT_EQ(Notation(editor.Rich()), "0a[b:XY]");
}

TEST(MemoryEditor, CaretStandsBehindWhatWasPut) {
    MemoryEditor editor;
    editor.SetText(u"ad");
    editor.Select(At(1, 0));
    editor.ReplaceSelection(u"b");
    editor.ReplaceSelection(u"c");
    EXPECT_EQ(editor.Text(), u"abcd");
    EXPECT_EQ(editor.Selection(), At(3, 0));
}

TEST(MemoryEditor, FindsLines) {
    MemoryEditor editor;
    editor.SetText(u"ab\r\nc\vd\r\n");
    EXPECT_EQ(editor.LineOfChar(CharPos{1}), 0);
    EXPECT_EQ(editor.LineOfChar(CharPos{3}), 0) << "between CR and LF is in front of the break";
    EXPECT_EQ(editor.LineOfChar(CharPos{4}), 1);
    EXPECT_EQ(editor.LineOfChar(CharPos{6}), 2);
    EXPECT_EQ(editor.FirstCharOfLine(2), CharPos{6});
    EXPECT_EQ(editor.FirstCharOfLine(3), CharPos{9});
    EXPECT_EQ(editor.FirstCharOfLine(99), CharPos{9});
}

TEST(MemoryEditor, LoadsAndSaves) {
    const TempFolder folder;
    MemoryEditor editor;
    ASSERT_TRUE(
        editor.LoadFile(folder.Write("a.rtf", "{\\rtf1 x{\\b y}}"), FileFormat::RichText).ok());
    EXPECT_EQ(Notation(editor.Rich()), "x[b:y]");
    ASSERT_TRUE(editor.LoadFile(folder.Path("a.rtf"), FileFormat::PlainText).ok());
    EXPECT_EQ(editor.Text(), u"{\\rtf1 x{\\b y}}");
    ASSERT_TRUE(editor.SaveFile(folder.Path("b.txt"), FileFormat::PlainText).ok());
    EXPECT_EQ(folder.Read("b.txt"), "{\\rtf1 x{\\b y}}");
    const Status missing = editor.LoadFile(folder.Path("none"), FileFormat::RichText);
    ASSERT_FALSE(missing.ok());
    EXPECT_NE(missing.failure().reason.find("none"), std::string::npos);
    EXPECT_EQ(editor.Length(), 15) << "a failed load loses nothing";
    EXPECT_FALSE(editor.SaveFile(folder.Path("no/such/x.rtf"), FileFormat::RichText).ok());
}

// ---- against a naive editor: a character with its format in a vector ----

class NaiveEditor {
  public:
    void Replace(std::size_t first, std::size_t length, const RichText& text) {
        std::vector<std::pair<char16_t, CharFormat>> put;
        std::size_t at = 0;
        for (const CharRun& run : text.char_runs) {
            for (std::int32_t i = 0; i < run.length; ++i)
                put.emplace_back(text.text[at++], run.format);
        }
        const auto begin = characters_.begin() + static_cast<std::ptrdiff_t>(first);
        characters_.erase(begin, begin + static_cast<std::ptrdiff_t>(length));
        characters_.insert(characters_.begin() + static_cast<std::ptrdiff_t>(first), put.begin(),
                           put.end());
    }
    void Format(std::size_t first, std::size_t length, const CharFormatChange& change) {
        for (std::size_t i = first; i < first + length; ++i)
            change.ApplyTo(characters_[i].second);
    }
    RichText Rich() const {
        RichText rich;
        for (const auto& [unit, format] : characters_) {
            RichText one;
            one.text = unit;
            one.char_runs.push_back({1, format});
            rich.Append(one);
        }
        return rich;
    }
    std::size_t Size() const { return characters_.size(); }

  private:
    std::vector<std::pair<char16_t, CharFormat>> characters_;
};

TEST(MemoryEditorProperty, AgreesWithANaiveEditorAndUndoesEverything) {
    std::mt19937 random(3);
    const auto below = [&](std::size_t limit) {
        return static_cast<std::size_t>(random()) % limit;
    };
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE(round);
        MemoryEditor editor;
        NaiveEditor naive;
        RichText start = RichText::Plain(u"The quick brown fox");
        editor.SetRich(start);
        naive.Replace(0, 0, start);
        for (int edit = 0; edit < 40; ++edit) {
            const std::size_t first = below(naive.Size() + 1);
            const std::size_t length = below(naive.Size() - first + 1);
            const TextRange range =
                At(static_cast<std::int32_t>(first), static_cast<std::int32_t>(length));
            if (below(2) == 0) {
                CharFormatChange change;
                change.bold = below(2) == 0;
                change.fore_color = Color{static_cast<std::int32_t>(below(3))};
                editor.Format(range, change);
                naive.Format(first, length, change);
            } else {
                CharFormat format;
                format.italic = below(2) == 0;
                const RichText text = RichText::Plain(
                    std::u16string(below(5), static_cast<char16_t>(u'a' + below(26))), format);
                editor.Replace(range, text);
                naive.Replace(first, length, text);
            }
            const RichText expected = naive.Rich();
            const RichText actual = editor.Rich();
            ASSERT_EQ(actual.text, expected.text);
            ASSERT_EQ(actual.char_runs, expected.char_runs);
            const auto pieces = editor.TextPieces();
            ASSERT_EQ(std::u16string(pieces[0]) + std::u16string(pieces[1]), expected.text);
        }
        while (editor.CanUndo())
            editor.Undo();
        EXPECT_EQ(editor.Rich(), start);
        EXPECT_EQ(editor.TakeRich(), start);
        EXPECT_EQ(editor.Length(), 0);
    }
}

}  // namespace
}  // namespace zorvane
