#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "load/readers/pdf/pdf_font_style.h"
#include "load/readers/pdf/pdf_fonts.h"
#include "load/readers/pdf/pdf_line_join.h"
#include "load/readers/pdf/pdf_lines.h"
#include "load/readers/pdf/pdf_order.h"
#include "load/readers/pdf/pdf_running.h"
#include "tests/support/pdf_page_maker.h"

namespace zorvane::pdf_layout_test {
namespace {

using test_pdf::Drawn;
using test_pdf::EmptyPage;
using test_pdf::LinesOf;
using test_pdf::PageOf;
using test_pdf::Put;
using test_pdf::Utf8;

struct PageRow {
    const char* name;
    std::vector<Drawn> texts;
    const char* expected;
    std::vector<float> rules = {};  // heights of lines across the page
};

// A line of 24 letters, 120 points wide.
constexpr std::u32string_view kLine = U"some words that fill her";

void PutColumn(PdfPage& page, float x, float y, int lines) {
    for (int line = 0; line < lines; ++line)
        Put(page, x, y + 12 * static_cast<float>(line), kLine);
}

std::string Repeated(int times, const char* text = "some words that fill her\n") {
    std::string result;
    for (int time = 0; time < times; ++time)
        result += text;
    return result;
}

const PageRow kWordRows[] = {
    {"nothing", {}, ""},
    {"words by drawn blanks", {{50, {{50, U"two words"}}}}, "two words\n"},
    {"words by gaps", {{50, {{50, U"two"}, {68, U"words"}}}}, "two words\n"},
    {"pieces of one word", {{50, {{50, U"wo"}, {60.5F, U"rd"}}}}, "word\n"},
    {"drawn from right to left", {{50, {{80, U"second"}, {50, U"first"}}}}, "first second\n"},
    {"drawn twice for a bold look",
     {{50, {{50, U"bold"}, {50.4F, U"bold"}, {80, U"I"}, {80.3F, U"I"}}}},
     "bold I\n"},
    {"the same word again, farther on", {{50, {{50, U"bold"}, {73, U"bold"}}}}, "bold bold\n"},
    {"a raised number belongs to its line",
     {{46, {{50, U"2", 6}}}, {50, {{20, U"xxxxxx"}, {56, U"yy"}}}, {62, {{20, U"next"}}}},
     "xxxxxx2 yy\nnext\n"},
    {"an accent over its letter",
     {{50, {{50, U"caf"}, {65.2F, U"\u00B4"}, {65, U"e"}}}},
     "caf\xC3\xA9\n"},
    {"a blank that is drawn elsewhere parts nothing",
     {{50, {{50, U"end"}}}, {90, {{300, U" "}}}, {50, {{65.1F, U"."}}}},
     "end.\n"},
    {"lines of two columns at unequal heights",
     {{50, {{50, U"left"}}},
      {55, {{300, U"right"}}},
      {62, {{50, U"left"}}},
      {67, {{300, U"right"}}},
      {74, {{50, U"left"}}},
      {79, {{300, U"right"}}}},
     "left\nleft\nleft\nright\nright\nright\n"},
};
TEST(PdfLayout, FindsWordsAndLines) {
    for (const PageRow& row : kWordRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(LinesOf(PageOf(row.texts)), row.expected);
    }
    PdfPage page = PageOf({{20, {{10, U"aside"}}}});
    for (PdfCharacter& character : page.characters)
        character.direction = PdfDirection::Down;
    Put(page, 50, 50, U"title");
    EXPECT_EQ(LinesOf(page), "title\naside\n")
        << "what runs down stands behind as much that does not";
}

TEST(PdfLayout, ReadsColumnsOneAfterTheOther) {
    PdfPage page = EmptyPage();
    Put(page, 100, 30, U"a title that stands over the two columns of the page", 10);
    PutColumn(page, 50, 60, 6);
    PutColumn(page, 220, 60, 6);
    Put(page, 230, 132, U"right");
    Put(page, 150, 150, U"below both of the columns there");
    const std::string expected = "a title that stands over the two columns of the page\n" +
                                 Repeated(12) + "right\nbelow both of the columns there\n";
    EXPECT_EQ(LinesOf(page), expected);
    PdfLineOptions many;
    many.document_type = PdfDocumentType::ManyColumns;
    EXPECT_EQ(LinesOf(page, many), expected);
}

// Three rows are too few for a page of one column: they are read as a row of cells.
TEST(PdfLayout, TakesShortColumnsOnlyWhenToldOfColumns) {
    const PdfPage page =
        PageOf({{60, {{50, U"left one that is long"}, {220, U"right one, which is long"}}},
                {80, {{50, U"left two that is long"}, {220, U"right two, which is long"}}},
                {100, {{50, U"left end that is long"}, {220, U"right end, which is long"}}}});
    EXPECT_EQ(LinesOf(page).find("left one that is long\tright one"), 0U);
    PdfLineOptions many;
    many.document_type = PdfDocumentType::ManyColumns;
    EXPECT_EQ(LinesOf(page, many).find("left one that is long\nleft two"), 0U);
}

void PutRule(PdfPage& page, float y) {
    page.rules.push_back({40, y, 500, y + 0.5F});
}

const PageRow kTableRows[] = {
    {"rows by spacing, a cell of two lines",
     {{50, {{50, U"name"}, {200, U"what it is for"}}},
      {70, {{50, U"alpha"}, {200, U"the first letter"}}},
      {82, {{200, U"of all"}}},
      {102, {{50, U"beta"}, {200, U"the next one"}}}},
     "name\twhat it is for\nalpha\tthe first letter of all\nbeta\tthe next one\n"},
    {"rows that follow as closely as lines",
     {{50, {{50, U"key"}, {200, U"value"}, {300, U"more"}}},
      {62, {{50, U"key"}, {200, U"value"}, {300, U"more"}}},
      {74, {{50, U"key"}, {200, U"value"}, {300, U"more"}}}},
     "key\tvalue\tmore\nkey\tvalue\tmore\nkey\tvalue\tmore\n"},
    {"drawn rows with several lines each",
     {{50, {{50, U"one"}, {200, U"first line of it"}}},
      {62, {{50, U"two"}, {200, U"second"}}},
      {75, {{50, U"three"}, {200, U"third, the longest of all"}}},
      {88, {{50, U"four"}, {200, U"fourth"}}}},
     "one two|first line of it\vsecond|\nthree|third, the longest of all|\nfour|fourth|\n",
     {40, 65, 78}},
    {"a rule under the heads of columns is no table of drawn rows",
     {{50, {{50, U"head"}, {200, U"title"}}},
      {63, {{50, U"key"}, {200, U"value"}}},
      {75, {{50, U"key"}, {200, U"value"}}},
      {87, {{50, U"key"}, {200, U"value"}}}},
     "head\ttitle\nkey\tvalue\nkey\tvalue\nkey\tvalue\n",
     {53}},
    {"a numbered list is no table",
     {{50, {{50, U"1."}, {80, U"item of it"}}}, {62, {{50, U"1."}, {80, U"item of it"}}}},
     "1.\titem of it\n1.\titem of it\n"},
};
TEST(PdfLayout, JoinsTheLinesOfATablesCells) {
    for (const PageRow& row : kTableRows) {
        SCOPED_TRACE(row.name);
        PdfPage page = PageOf(row.texts);
        for (const float y : row.rules)
            PutRule(page, y);
        EXPECT_EQ(LinesOf(page), row.expected);
    }
}

TEST(PdfLayout, LeavesOutTheNumbersOfAPleading) {
    PdfPage page = EmptyPage();
    for (int line = 1; line <= 12; ++line) {
        const float y = 50 + 20 * static_cast<float>(line);
        const std::string digits = std::to_string(line);
        const std::u32string number(digits.begin(), digits.end());
        Put(page, line < 10 ? 25.0F : 20.0F, y, number);
        Put(page, 60, y, U"7 of the words 3");
    }
    PdfLineOptions pleading;
    pleading.document_type = PdfDocumentType::Pleading;
    EXPECT_EQ(LinesOf(page, pleading), Repeated(12, "7 of the words 3\n"));
    EXPECT_NE(LinesOf(page).find("12"), std::string::npos);
}

TEST(PdfLayout, KeepsNumbersThatDoNotCountLines) {
    PdfPage page = EmptyPage();
    std::u32string_view numbers = U"147258";
    for (const float y : {50.0F, 70.0F, 90.0F, 110.0F, 130.0F, 150.0F}) {
        Put(page, 20, y, numbers.substr(0, 1));
        numbers.remove_prefix(1);
        Put(page, 60, y, U"text");
    }
    PdfLineOptions pleading;
    pleading.document_type = PdfDocumentType::Pleading;
    EXPECT_EQ(LinesOf(page, pleading).find("1\ttext"), 0U);
}

TEST(PdfLayout, KeepsPlacesByBlanks) {
    const PdfPage page = PageOf({{50, {{50, U"left"}, {150, U"mid word"}}}, {62, {{100, U"in"}}}});
    PdfLineOptions layout;
    layout.by_layout = true;
    EXPECT_EQ(LinesOf(page, layout), "left                mid word\n          in\n");
}

TEST(PdfLayout, UnderlinesWhatALineRunsUnder) {
    PdfPage page = PageOf({{50, {{50, U"under over"}}}});
    page.rules.push_back({50, 51, 75, 51.6F});
    page.rules.push_back({80, 46.5F, 100, 47});
    PutRule(page, 60);
    Put(page, 50, 59, U"above a border");
    std::vector<PdfLine> lines;
    AppendLines(page, 1, {}, lines);
    ASSERT_EQ(lines.size(), 2U);
    EXPECT_TRUE(lines[0].letters[0].underline);
    EXPECT_FALSE(lines[0].letters[0].strikeout);
    EXPECT_TRUE(lines[0].letters[7].strikeout);
    EXPECT_FALSE(lines[0].letters[7].underline);
    EXPECT_FALSE(lines[1].letters[0].underline);
}

TEST(PdfLayout, TellsLinksBehindTheirTexts) {
    PdfPage page = PageOf({{50, {{50, U"see the site of"}}}, {62, {{50, U"ours or not"}}}});
    page.links.push_back({{110, 40, 130, 52}, "http://a"});
    page.links.push_back({{50, 53, 72, 64}, "http://a"});
    PdfLineOptions options;
    EXPECT_EQ(LinesOf(page, options), "see the site of\nours or not\n");
    options.links = true;
    EXPECT_EQ(LinesOf(page, options), "see the site of\nours <http://a> or not\n");
    page.links[1].address = "http://b";
    EXPECT_EQ(LinesOf(page, options), "see the site of <http://a>\nours <http://b> or not\n");
}

struct JoinRow {
    const char* name;
    const char32_t* first;
    const char32_t* next;
    const char* plain;
    const char* connected;
};
TEST(PdfLayout, JoinsLines) {
    const JoinRow rows[] = {
        {"words", U"one", U"two", "one two", "one two"},
        {"a hyphen before a letter with a stroke", U"prze-", U"\u0142om", "prze-\xC5\x82om",
         "prze\xC5\x82om"},
        {"a hyphen before a capital with a mark", U"Bia\u0142o-", U"\u0141\u0119ka",
         "Bia\xC5\x82o-\xC5\x81\xC4\x99ka", "Bia\xC5\x82o-\xC5\x81\xC4\x99ka"},
        {"a hyphen within a word", U"connec-", U"tion", "connec-tion", "connection"},
        {"a name", U"Trace-", U"Monkey", "Trace-Monkey", "Trace-Monkey"},
        {"a dash", U"this -", U"that", "this - that", "this - that"},
        {"a soft hyphen", U"connec\u00AD", U"tion", "connection", "connection"},
        {"without blanks between ideographs", U"\u6587", U"\u5B57", "\xE6\x96\x87\xE5\xAD\x97",
         "\xE6\x96\x87\xE5\xAD\x97"},
        {"nothing before", U"", U"two", "two", "two"},
        {"nothing behind", U"one", U"", "one", "one"},
    };
    const auto letters = [](std::u32string_view text) {
        std::vector<PdfLetter> result;
        for (const char32_t letter : text)
            result.push_back({letter});
        return result;
    };
    for (const JoinRow& row : rows) {
        SCOPED_TRACE(row.name);
        std::vector<PdfLetter> plain = letters(row.first);
        JoinLetters(plain, letters(row.next), false);
        EXPECT_EQ(Utf8(plain), row.plain);
        std::vector<PdfLetter> connected = letters(row.first);
        JoinLetters(connected, letters(row.next), true);
        EXPECT_EQ(Utf8(connected), row.connected);
    }
}

TEST(PdfLayout, PutsRightToLeftLinesIntoTheirOrder) {
    const auto line = [](const char32_t* drawn) { return LinesOf(PageOf({{50, {{50, drawn}}}})); };
    // Drawn from the left: the last word first, each word turned round, the number as it reads.
    EXPECT_EQ(line(U"12 \u05D2\u05D1\u05D0 \u05E0\u05DE\u05DC"),
              "\xD7\x9C\xD7\x9E\xD7\xA0 \xD7\x90\xD7\x91\xD7\x92 12\n");
    // A number with a sign at its end, which stands at its left when drawn.
    EXPECT_EQ(line(U"\u05D2\u05D1 !12 \u05D0\u05E9"), "\xD7\xA9\xD7\x90 12! \xD7\x91\xD7\x92\n");
    EXPECT_EQ(line(U"\u05D2\u05D1 12 ab \u05D0\u05E9"),
              "\xD7\xA9\xD7\x90 12 ab \xD7\x91\xD7\x92\n");
    std::vector<PdfLetter> latin = {{U'a'}, {U'b'}};
    EXPECT_FALSE(ReorderVisualLine(latin));
    EXPECT_EQ(Utf8(latin), "ab");
    EXPECT_EQ(Composed(U'e', 0xB4), char32_t{0xE9});
    EXPECT_EQ(Composed(0x131, 0xA8), char32_t{0xEF});
    EXPECT_EQ(Composed(U'x', 0xB4), char32_t{0});
    EXPECT_EQ(Composed(U'e', U'f'), char32_t{0});
}

TEST(PdfLayout, TellsTheFamilyOfAFont) {
    const std::pair<const char*, const char*> rows[] = {
        {"TimesNewRomanPS-BoldMT", "Times New Roman"},
        {"TimesNewRomanPSMT", "Times New Roman"},
        {"Times-Roman", "Times"},
        {"Helvetica-BoldOblique", "Helvetica"},
        {"ArialMT", "Arial"},
        {"Arial,Bold", "Arial"},
        {"CourierNewPS-ItalicMT", "Courier New"},
        {"LiberationSerif-Bold", "Liberation Serif"},
        {"DejaVuSansMono", "DejaVu Sans Mono"},
        {"CMR10", "CMR10"},
        {"Bold", "Bold"},
        {"-x", "-x"},
        {"", ""}};
    for (const auto& [name, family] : rows)
        EXPECT_EQ(FamilyOfFont(name), family) << name;
}

TEST(PdfLayout, TellsTheStyleOfAFontByItsName) {
    const std::pair<PdfFontStyle, std::vector<const char*>> rows[] = {
        {{.bold = false, .italic = false},
         {"CMR10", "SFRM1095", "CMSY10", "Roboto-Medium", "ItemList", "CMBXVERSION"}},
        {{.bold = true, .italic = false},
         {"CMBX12", "SFBX1200", "NimbusRomNo9L-Medi", "Arial-BoldMT", "LMRoman10-Bold",
          "Frutiger-B", "MyriadPro-Bd"}},
        {{.bold = false, .italic = true},
         {"CMTI10", "CMMI7", "SFTI1000", "NimbusRomNo9L-ReguItal", "LMRoman10-Italic",
          "MyriadPro-It"}},
        {{.bold = true, .italic = true}, {"CMBXTI10", "SFBI1000", "NimbusRomNo9L-MediItal"}},
    };
    for (const auto& [style, names] : rows) {
        for (const char* name : names) {
            SCOPED_TRACE(name);
            EXPECT_EQ(StyleOfFontName(name).bold, style.bold);
            EXPECT_EQ(StyleOfFontName(name).italic, style.italic);
        }
    }
}

PdfLine LineAt(std::int32_t page, float baseline, std::string_view text) {
    PdfLine line;
    line.page = page;
    line.baseline = baseline;
    for (const char letter : text)
        line.letters.push_back({static_cast<unsigned char>(letter)});
    return line;
}

std::string RunningOf(std::vector<PdfLine> lines) {
    MarkRunningLines(lines);
    std::string text;
    for (const PdfLine& line : lines)
        text += line.running ? Utf8(line.letters) + ";" : "";
    return text;
}

TEST(PdfLayout, FindsHeadsAndFeetByRepetition) {
    EXPECT_EQ(RunningOf({}), "");
    EXPECT_EQ(RunningOf({LineAt(1, 20, "Head"), LineAt(1, 50, "text")}), "");
    std::vector<PdfLine> lines;
    for (std::int32_t page = 9; page <= 11; ++page) {
        lines.push_back(LineAt(page, 20, "Head"));
        lines.push_back(LineAt(page, 50 + static_cast<float>(page), "the same"));
        lines.push_back(
            LineAt(page, 300, "body " + std::string(static_cast<std::size_t>(page), 'x')));
        lines.push_back(LineAt(page, 780, "Page " + std::to_string(page) + " of 20"));
    }
    EXPECT_EQ(RunningOf(lines),
              "Head;the same;Page 9 of 20;Head;the same;Page 10 of 20;"
              "Head;the same;Page 11 of 20;");
    // At another place each time, it is text.
    for (PdfLine& line : lines)
        line.baseline += static_cast<float>(line.page) * 20;
    EXPECT_EQ(RunningOf(lines), "");
}

}  // namespace
}  // namespace zorvane::pdf_layout_test
