#include "compare/engine/line_text.h"

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

using Lines = std::vector<std::string>;

Lines LinesOf(const LineText& text) {
    Lines lines;
    for (std::int32_t line = 0; line < text.Count(); ++line)
        lines.push_back(text.Utf8(line));
    return lines;
}

struct LineRow {
    const char* name;
    std::string text;
    Lines file;
    Lines editor;
};
TEST(LineText, EndsLinesAtPairsOnly) {
    const LineRow rows[] = {
        {"nothing: a file has no line, an editor an empty one", "", {}, {""}},
        {"no end", "a", {"a"}, {"a"}},
        {"an end begins no line of a file", "a\r\n", {"a"}, {"a", ""}},
        {"an empty last line", "a\r\n\r\n", {"a", ""}, {"a", "", ""}},
        {"lone breaks are content", "a\nb\rc\r\nd", {"a\nb\rc", "d"}, {"a\nb\rc", "d"}},
        {"a lone feed first", "\n\r\n \r\n", {"\n", " "}, {"\n", " ", ""}},
        {"return at the end", "a\r", {"a\r"}, {"a\r"}},
        {"two returns in front of a feed", "a\r\r\nb", {"a\r", "b"}, {"a\r", "b"}},
        {"outside the basic plane", "\U0001F600\r\nü", {"\U0001F600", "ü"}, {"\U0001F600", "ü"}},
    };
    for (const LineRow& row : rows) {
        SCOPED_TRACE(row.name);
        LineText file;
        file.SplitFile(row.text);
        EXPECT_EQ(LinesOf(file), row.file);
        const std::u16string wide = ToUtf16(row.text);
        LineText editor;
        editor.SplitEditor(wide);
        EXPECT_EQ(LinesOf(editor), row.editor);
        for (LineText* text : {&file, &editor}) {
            std::int64_t units = 0;
            std::u16string buffer;
            for (std::int32_t line = 0; line < text->Count(); ++line) {
                units += text->Units(line, line + 1);
                EXPECT_EQ(ToUtf8(text->Text(line, buffer)), text->Utf8(line));
            }
            EXPECT_EQ(units, text->Units(0, text->Count()));
            EXPECT_EQ(units,
                      static_cast<std::int64_t>(text == &file ? row.text.size() : wide.size()));
        }
        EXPECT_EQ(editor.Joined(0, editor.Count()), wide);
    }
}

TEST(LineText, GivesStretchesAndBytes) {
    constexpr std::string_view kFile = "one\r\n\r\nthree\r\n";
    LineText text;
    text.SplitFile(kFile);
    EXPECT_EQ(text.Joined(0, 3), u"one\r\n\r\nthree");
    EXPECT_EQ(text.Joined(1, 2), u"");
    EXPECT_EQ(text.Joined(2, 2), u"");
    EXPECT_EQ(text.Bytes(2), "three");
    EXPECT_EQ(text.AllBytes(), kFile);
    text.SplitEditor(u"ab");  // takes the place of the file
    EXPECT_EQ(text.Count(), 1);
    EXPECT_EQ(text.Bytes(0).size(), 4U);
    EXPECT_EQ(text.AllBytes().size(), 4U);
    text.SplitFile("x");
    EXPECT_EQ(text.Bytes(0), "x");
}

TEST(LineText, JoinsWhereItLiesAsItJoinsIntoACopy) {
    const std::u16string text = u"one\r\n\r\ntwo\r\n";  // the last paragraph is empty
    LineText editor;
    editor.SplitEditor(text);
    LineText file;
    file.SplitFile("one\r\n\r\ntwo\r\n");
    for (const LineText* lines : {&editor, &file}) {
        for (std::int32_t first = 0; first < lines->Count(); ++first) {
            for (std::int32_t end = first + 1; end <= lines->Count(); ++end) {
                std::u16string buffer;
                EXPECT_EQ(lines->Joined(first, end, buffer), lines->Joined(first, end));
            }
        }
    }
    std::u16string buffer;
    EXPECT_EQ(editor.Joined(2, 4, buffer), u"two\r\n");
}

}  // namespace
}  // namespace zorvane
