#include "compare/document/rtf_page.h"

#include <gtest/gtest.h>

#include "compare/document/rtf_reader.h"
#include "compare/document/rtf_writer.h"
#include "tests/support/rich_text_notation.h"

namespace zorvane::rtf_page_test {
namespace {

std::size_t CountIn(const std::string& text, std::string_view part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

std::string Page(const RichText& text, TableForm tables) {
    const RtfParts parts = WriteRtfPage(text, tables);
    return parts.head + parts.body;
}

RichText Text(std::u16string_view text) {
    RichText rich = RichText::Plain(text);
    if (!rich.Empty())
        rich.paragraph_runs = {{rich.Length(), {}}};
    return rich;
}

struct PageRow {
    const char* name;
    std::u16string text;
    std::size_t rows;
    std::size_t cells;
};
const PageRow kPageRows[] = {
    {"no table", u"a\r\n\tb\r\n", 0, 0},
    {"nothing", u"", 0, 0},
    {"a table", u"in front\r\na\u0007b\u0007\r\nc\u0007d\u0007\r\nbehind", 2, 4},
    {"cells without text", u"\u0007\u0007\r\n\u0007\r\n", 2, 3},
    {"a table at the end, without a break", u"a\u0007b\u0007", 1, 2},
    {"two tables", u"a\u0007\r\nbetween\r\nb\u0007c\u0007\r\n", 2, 3},
    {"a line in a cell", u"a\u000Bb\u0007\r\n", 1, 1},
    {"a table with too many columns", std::u16string(64, u'\u0007') + u"\r\n", 0, 0},
};
TEST(RtfPage, WritesTablesAsTables) {
    for (const PageRow& row : kPageRows) {
        SCOPED_TRACE(row.name);
        const std::string page = Page(Text(row.text), TableForm::Cells);
        EXPECT_EQ(CountIn(page, "\\row\r\n"), row.rows);
        EXPECT_EQ(CountIn(page, "\\cell "), row.cells);
        EXPECT_EQ(CountIn(page, "\\cellx"), row.cells);
        std::u16string whole = row.text;  // a row always ends
        if (whole.ends_with(u'\u0007'))
            whole += u"\r\n";
        EXPECT_EQ(Readable(ReadRtf(page).text), Readable(whole));
        EXPECT_EQ(Page(Text(row.text), TableForm::Tabs).find("\\cellx"), std::string::npos);
    }
}

TEST(RtfPage, KeepsTheWidestTableOnThePage) {
    const std::u16string wide(300, u'w');
    const std::string page = Page(
        Text(u"a\u0007" + wide + u"\u0007" + wide + u"\u0007\r\n1\u0007\r\n"), TableForm::Cells);
    const std::size_t last = page.rfind("\\cellx", page.find("\\row"));
    EXPECT_LE(std::stoi(page.substr(last + 6)), 9000);
    EXPECT_EQ(std::stoi(page.substr(page.rfind("\\cellx") + 6)),
              std::stoi(page.substr(page.find("\\cellx") + 6)))
        << "the first columns of both rows end at one place";
}

// What was put in behind a paragraph brings the break that ends that paragraph.
TEST(RtfPage, GivesAParagraphTheFormatOfItsText) {
    ParagraphFormat center;
    center.alignment = Alignment::Center;
    RichText text = RichText::Plain(u"left\r\nmiddle\r\n\r\nlast");
    text.paragraph_runs = {{4, {}}, {8, center}, {2, {}}, {2, center}, {4, {}}};
    const RichText read = ReadRtf(Page(text, TableForm::Tabs));
    EXPECT_EQ(read.text, text.text);
    const std::vector<ParagraphRun> expected = {{6, {}}, {10, center}, {4, {}}};
    EXPECT_EQ(read.paragraph_runs, expected);
}

TEST(RtfPage, KeepsTheFormatsOfCharacters) {
    RichText text = Text(u"a\u0007b\u0007\r\nc d e");
    CharFormat raised;
    raised.baseline = Baseline::Superscript;
    CharFormat bold;
    bold.bold = true;
    text.char_runs = {{1, {}}, {2, bold}, {4, {}}, {2, raised}, {2, {}}};
    // The end of a cell has no look of its own in a table.
    EXPECT_EQ(Notation(ReadRtf(Page(text, TableForm::Cells))), "a![b:b!|]c[^: d] e");
    EXPECT_EQ(Notation(ReadRtf(Page(text, TableForm::Tabs))), "a[b:!b]!|c[^: d] e");
}

// Some word processors drop the rest of the paragraph behind raised text that has no end.
TEST(RtfWriter, EndsRaisedText) {
    CharFormat raised;
    raised.baseline = Baseline::Subscript;
    RichText text = RichText::Plain(u"H2O", CharFormat{});
    text.char_runs = {{1, {}}, {1, raised}, {1, {}}};
    const std::string rtf = WriteRtf(text);
    EXPECT_EQ(rtf.find("\\nosupersub"), rtf.find("2\\nosupersub\\plain") + 1);
    text.char_runs = {{1, {}}, {2, raised}};
    EXPECT_NE(WriteRtf(text).find("2O\\nosupersub}"), std::string::npos);
}

}  // namespace
}  // namespace zorvane::rtf_page_test
