#include "compare/document/memory_editor.h"

#include <random>

#include <gtest/gtest.h>

#include "tests/support/printers.h"
#include "tests/support/rich_text_notation.h"
#include "tests/support/stopping_watcher.h"
#include "tests/support/temp_folder.h"

namespace zorvane::memory_editor_test {
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
        EXPECT_EQ(editor.Text(row.asked), editor.Text(row.given));
        EXPECT_EQ(Notation(editor.Rich(row.asked)), Notation(editor.Rich(row.given)));
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
    editor.SetText(u"\n\ra");
    EXPECT_EQ(editor.Text(), u"\r\n\r\na");
    RichText rich = RichText::Plain(u"x");
    rich.text = u"p\nq";
    rich.char_runs = {{2, {}}, {1, {}}};
    rich.char_runs[1].format.bold = true;
    rich.paragraph_runs = {{3, {}}};
    editor.SetRich(rich);
    EXPECT_EQ(Notation(editor.Rich()), "p|[b:q]");
    // A break whose halves differ, next to lone ones: the LF's run goes, its neighbours join.
    rich.text = u"\r\n\r\n\n";
    rich.char_runs = {{1, {}}, {1, {}}, {1, {}}, {2, {}}};
    rich.char_runs[1].format.bold = rich.char_runs[3].format.bold = true;
    rich.paragraph_runs = {{4, {}}, {1, {}}};
    rich.paragraph_runs[1].format.left_indent = 9;
    editor.SetRich(rich);
    EXPECT_EQ(Notation(editor.Rich()), "||[b:|]");
    EXPECT_EQ(editor.Rich().char_runs.size(), 2U);
    EXPECT_EQ(editor.Rich().paragraph_runs[0].length, 4);
    EXPECT_EQ(editor.Rich().paragraph_runs[1].length, 2);
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

TEST(MemoryEditor, MovesWholeTextsWithoutACopy) {
    MemoryEditor from;
    from.SetText(std::u16string(1000, u'x'));
    from.Format(At(0, 10), Bold());
    const char16_t* const data = from.TextPieces()[0].data();
    MemoryEditor to;
    to.SetRich(from.TakeRich());
    EXPECT_EQ(to.TextPieces()[0].data(), data);
    EXPECT_EQ(to.Length(), 1000);
    EXPECT_EQ(from.Length(), 0);
}

TEST(MemoryEditor, TextBehindTheLastBreakJoinsTheLastParagraph) {
    MemoryEditor editor;
    RichText rich = RichText::Plain(u"ab");
    rich.paragraph_runs[0].format.left_indent = 100;
    editor.SetRich(rich);
    EXPECT_EQ(editor.Replace(At(99, 0), u"c"), At(2, 1));
    EXPECT_EQ(editor.Rich().paragraph_runs.size(), 1U);
}

// ---- against a naive editor: a unit with its formats in a vector ----

struct Unit {
    char16_t unit = 0;
    CharFormat format;
    ParagraphFormat paragraph;
};

class NaiveEditor {
  public:
    std::size_t Size() const { return units_.size(); }

    void Replace(std::int64_t first, std::int64_t length, std::vector<Unit> put) {
        const auto [begin, end] = Snapped(first, length);
        const bool over_the_end = begin < end && end > Size();
        if (over_the_end && put.size() >= 2 && put.back().unit == u'\n')
            put.resize(put.size() - 2);
        const auto place = units_.begin() + Offset(std::min(begin, Size()));
        const auto behind = units_.erase(place, units_.begin() + Offset(std::min(end, Size())));
        units_.insert(behind, put.begin(), put.end());
    }
    void Replace(std::int64_t first, std::int64_t length, const std::u16string& text) {
        const auto [begin, end] = Snapped(first, length);
        const bool replaces = begin < end && begin < Size();
        Unit like;
        const std::size_t at = std::min(begin, Size());
        if (Size() > 0) {
            like.paragraph = units_[std::min(at, Size() - 1)].paragraph;
            like.format = units_[replaces || at == 0 ? at : at - 1].format;
        }
        std::vector<Unit> put;
        for (const char16_t unit : text) {
            like.unit = unit;
            put.push_back(like);
        }
        Replace(first, length, put);
    }
    void Format(std::int64_t first, std::int64_t length, const CharFormatChange& change) {
        const auto [begin, end] = Snapped(first, length);
        for (std::size_t i = begin; i < std::min(end, Size()); ++i)
            change.ApplyTo(units_[i].format);
    }
    RichText Rich() const { return Rich(0, Size()); }
    RichText Rich(std::size_t begin, std::size_t end) const {
        RichText rich;
        for (std::size_t i = begin; i < end; ++i) {
            RichText one;
            one.text = units_[i].unit;
            one.char_runs.push_back({1, units_[i].format});
            one.paragraph_runs.push_back({1, units_[i].paragraph});
            rich.Append(one);
        }
        return rich;
    }
    std::int32_t LineOf(std::size_t position) const {
        std::int32_t line = 0;
        for (std::size_t i = 0; i < Snap(std::min(position, Size())); ++i)
            line += EndsLine(i) ? 1 : 0;
        return line;
    }
    std::int32_t FirstOfLine(std::int32_t line) const {
        std::size_t first = 0;
        for (std::size_t i = 0; i < Size() && line > 0; ++i) {
            if (EndsLine(i)) {
                first = i + 1;
                --line;
            }
        }
        return static_cast<std::int32_t>(first);
    }

  private:
    struct Place {
        std::size_t begin;
        std::size_t end;
    };
    static std::ptrdiff_t Offset(std::size_t index) { return static_cast<std::ptrdiff_t>(index); }
    bool EndsLine(std::size_t at) const {
        return units_[at].unit == u'\n' || units_[at].unit == u'\v';
    }
    std::size_t Snap(std::size_t position) const {
        if (position == Size() + 1)
            return Size();
        const bool inside = position > 0 && position < Size() && units_[position].unit == u'\n';
        return inside ? position - 1 : position;
    }
    Place Snapped(std::int64_t first, std::int64_t length) const {
        const auto most = static_cast<std::int64_t>(Size()) + 2;
        const auto clip = [&](std::int64_t position) {
            return Snap(static_cast<std::size_t>(std::clamp<std::int64_t>(position, 0, most)));
        };
        return {clip(first), clip(first + length)};
    }

    std::vector<Unit> units_;
};

// An editor and its naive twin, edited alike at random.
class TwinEditors {
  public:
    explicit TwinEditors(unsigned seed) : random_(seed) { Edit(); }

    MemoryEditor editor;
    NaiveEditor naive;

    void Edit() {
        const std::int32_t first = Below(naive.Size() + 6) - 2;
        const std::int32_t length = Below(Below(3) == 0 ? naive.Size() + 6 : 4);
        switch (Below(4)) {
            case 0:
                Format(first, length);
                break;
            case 1: {
                const std::vector<Unit> units = Units();
                naive.Replace(first, length, units);
                NaiveEditor put;
                put.Replace(0, 0, units);
                editor.Replace(At(first, length), put.Rich());
                break;
            }
            case 2:
                naive.Replace(first, length, std::u16string(u"p\r\nq"));
                editor.Replace(At(first, length), u"p\nq");
                break;
            default:
                naive.Replace(first, length, std::u16string());
                editor.Replace(At(first, length), u"");
        }
    }
    void ExpectAlike() {
        const RichText expected = naive.Rich();
        ASSERT_EQ(Notation(editor.Rich()), Notation(expected));
        ASSERT_EQ(editor.Rich(), expected) << "runs";
        ASSERT_EQ(editor.Selection(), At(0, 0)) << "the selection is not a variable of others";
        const std::int32_t first = Below(naive.Size() + 1);
        const std::int32_t length = Below(naive.Size() + 3);
        const TextRange range = editor.Clip(At(first, length));
        std::u16string text = expected.text + u"\r\n";
        text = text.substr(static_cast<std::size_t>(range.first.value),
                           static_cast<std::size_t>(range.length));
        ASSERT_EQ(editor.Text(At(first, length)), text);
        const auto begin = static_cast<std::size_t>(std::min(range.first.value, editor.Length()));
        const auto end = static_cast<std::size_t>(std::min(range.end().value, editor.Length()));
        ASSERT_EQ(editor.Rich(
                      At(static_cast<std::int32_t>(begin), static_cast<std::int32_t>(end - begin))),
                  naive.Rich(begin, end));
        ASSERT_EQ(editor.LineOfChar(CharPos{first}), naive.LineOf(static_cast<std::size_t>(first)));
        const std::int32_t line = Below(8);
        ASSERT_EQ(editor.FirstCharOfLine(line), CharPos{naive.FirstOfLine(line)});
    }

  private:
    std::int32_t Below(std::size_t limit) { return static_cast<std::int32_t>(random_() % limit); }
    void Format(std::int32_t first, std::int32_t length) {
        CharFormatChange change;
        change.bold = Below(2) == 0;
        change.fore_color = Color{Below(3)};
        naive.Format(first, length, change);
        editor.Format(At(first, length), change);
    }
    std::vector<Unit> Units() {
        constexpr std::u16string_view kPieces[] = {u"a", u"b", u"\r\n", u"\v", u"\xD83D\xDE00"};
        std::vector<Unit> units;
        Unit unit;
        for (std::int32_t piece = Below(6); piece > 0; --piece) {
            unit.format.italic = Below(2) == 0;
            for (const char16_t code : kPieces[Below(std::size(kPieces))]) {
                unit.unit = code;
                units.push_back(unit);
            }
            if (units.back().unit == u'\n')
                unit.paragraph.alignment = Below(2) == 0 ? Alignment::Left : Alignment::Right;
        }
        return units;
    }

    std::mt19937 random_;
};

TEST(MemoryEditorProperty, AgreesWithANaiveEditor) {
    for (unsigned seed = 0; seed < 150; ++seed) {
        SCOPED_TRACE(seed);
        TwinEditors twins(seed);
        for (int edit = 0; edit < 60 && !HasFatalFailure(); ++edit) {
            twins.Edit();
            ASSERT_NO_FATAL_FAILURE(twins.ExpectAlike());
        }
        const RichText end = twins.naive.Rich();
        twins.editor.SetRich(end);
        EXPECT_EQ(twins.editor.TakeRich(), end);
    }
}

// Whatever is stopped, wherever: what is given and put is whole or nothing, and the editor stays
// usable.
TEST(MemoryEditor, GivesAllOrNothingWhenItIsStopped) {
    std::u16string text;
    for (int i = 0; i < 60'000; ++i)
        text += u"words of a line\r\n";
    int refused = 0;
    for (std::int64_t at = 1;; ++at) {
        SCOPED_TRACE(at);
        StoppingWatcher watcher(at);
        MemoryEditor editor;
        editor.SetText(text);
        for (std::int32_t place = 0; place < 40'000; place += 2)
            editor.Format({CharPos{place}, 1}, Bold());
        const RichText whole = editor.Rich();
        editor.Watch(&watcher);
        const RichText given = editor.Rich();
        EXPECT_TRUE(given == whole || given == RichText());
        EXPECT_EQ(given == whole, watcher.asked < at);
        editor.Replace(At(0, 4), whole);
        const bool stopped = watcher.asked >= at;
        const bool put = editor.Length() != whole.Length();
        refused += put ? 0 : 1;
        editor.Watch(nullptr);
        const RichText both = editor.TakeRich();
        EXPECT_EQ(both.text, put ? whole.text + whole.text.substr(4) : whole.text);
        std::int32_t length = 0;
        for (const CharRun& run : both.char_runs)
            length += run.length;
        EXPECT_EQ(length, both.Length());
        EXPECT_EQ(editor.Length(), 0);
        if (!stopped) {
            EXPECT_TRUE(put);
            break;
        }
        ASSERT_LT(at, 100);
    }
    EXPECT_GT(refused, 0);
}

TEST(MemoryEditor, AnEditInFrontLeavesTheFormatOfAnEmptyLastParagraph) {
    MemoryEditor editor;
    editor.SetText(u"a\r\n");
    ParagraphFormatChange change;
    change.alignment = Alignment::Center;
    editor.FormatParagraphs({CharPos{3}, 0}, change);
    editor.Replace({CharPos{0}, 1}, u"b");
    EXPECT_EQ(editor.ParagraphFormatAt(CharPos{3}).alignment, Alignment::Center);
}

}  // namespace
}  // namespace zorvane::memory_editor_test
