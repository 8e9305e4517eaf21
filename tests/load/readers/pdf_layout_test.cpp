#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "load/readers/pdf/pdf_font_style.h"
#include "load/readers/pdf/pdf_fonts.h"
#include "load/readers/pdf/pdf_line_join.h"
#include "load/readers/pdf/pdf_lines.h"
#include "load/readers/pdf/pdf_order.h"
#include "load/readers/pdf/pdf_running.h"
#include "tests/support/pdf_page_maker.h"

namespace zorvane {
namespace {

using test_pdf::EmptyPage;
using test_pdf::LinesOf;
using test_pdf::Put;
using test_pdf::Utf8;

struct PageRow {
    const char* name;
    std::function<void(PdfPage&)> draw;
    const char* expected;
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
    {"nothing", [](PdfPage&) {}, ""},
    {"words by drawn blanks", [](PdfPage& page) { Put(page, 50, 50, U"two words"); },
     "two words\n"},
    {"words by gaps",
     [](PdfPage& page) {
         Put(page, 50, 50, U"two");
         Put(page, 68, 50, U"words");
     },
     "two words\n"},
    {"pieces of one word",
     [](PdfPage& page) {
         Put(page, 50, 50, U"wo");
         Put(page, 60.5F, 50, U"rd");
     },
     "word\n"},
    {"drawn from right to left",
     [](PdfPage& page) {
         Put(page, 80, 50, U"second");
         Put(page, 50, 50, U"first");
     },
     "first second\n"},
    {"drawn twice for a bold look",
     [](PdfPage& page) {
         Put(page, 50, 50, U"bold");
         Put(page, 50.4F, 50, U"bold");
         Put(page, 80, 50, U"I");
         Put(page, 80.3F, 50, U"I");
     },
     "bold I\n"},
    {"the same word again, farther on",
     [](PdfPage& page) {
         Put(page, 50, 50, U"bold");
         Put(page, 73, 50, U"bold");
     },
     "bold bold\n"},
    {"a raised number belongs to its line",
     [](PdfPage& page) {
         Put(page, 50, 46, U"2", 6);
         Put(page, 20, 50, U"xxxxxx");
         Put(page, 56, 50, U"yy");
         Put(page, 20, 62, U"next");
     },
     "xxxxxx2 yy\nnext\n"},
    {"an accent over its letter",
     [](PdfPage& page) {
         Put(page, 50, 50, U"caf");
         Put(page, 65.2F, 50, U"\u00B4");
         Put(page, 65, 50, U"e");
     },
     "caf\xC3\xA9\n"},
    {"a blank that is drawn elsewhere parts nothing",
     [](PdfPage& page) {
         Put(page, 50, 50, U"end");
         Put(page, 300, 90, U" ");
         Put(page, 65.1F, 50, U".");
     },
     "end.\n"},
    {"lines of two columns at unequal heights",
     [](PdfPage& page) {
         for (const float y : {50.0F, 62.0F, 74.0F}) {
             Put(page, 50, y, U"left");
             Put(page, 300, y + 5, U"right");
         }
     },
     "left\nleft\nleft\nright\nright\nright\n"},
    {"text that runs down stands behind the rest",
     [](PdfPage& page) {
         Put(page, 10, 20, U"aside");
         for (PdfCharacter& character : page.characters)
             character.direction = PdfDirection::Down;
         Put(page, 50, 50, U"main text");
     },
     "main text\naside\n"},
};
TEST(PdfLayout, FindsWordsAndLines) {
    for (const PageRow& row : kWordRows) {
        SCOPED_TRACE(row.name);
        PdfPage page = EmptyPage();
        row.draw(page);
        EXPECT_EQ(LinesOf(page), row.expected);
    }
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
    PdfPage page = EmptyPage();
    Put(page, 50, 60, U"left one that is long");
    Put(page, 220, 60, U"right one, which is long");
    Put(page, 50, 80, U"left two that is long");
    Put(page, 220, 80, U"right two, which is long");
    Put(page, 50, 100, U"left end that is long");
    Put(page, 220, 100, U"right end, which is long");
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
     [](PdfPage& page) {
         Put(page, 50, 50, U"name");
         Put(page, 200, 50, U"what it is for");
         Put(page, 50, 70, U"alpha");
         Put(page, 200, 70, U"the first letter");
         Put(page, 200, 82, U"of all");
         Put(page, 50, 102, U"beta");
         Put(page, 200, 102, U"the next one");
     },
     "name\twhat it is for\nalpha\tthe first letter of all\nbeta\tthe next one\n"},
    {"rows that follow as closely as lines",
     [](PdfPage& page) {
         for (const float y : {50.0F, 62.0F, 74.0F}) {
             Put(page, 50, y, U"key");
             Put(page, 200, y, U"value");
             Put(page, 300, y, U"more");
         }
     },
     "key\tvalue\tmore\nkey\tvalue\tmore\nkey\tvalue\tmore\n"},
    {"drawn rows with several lines each",
     [](PdfPage& page) {
         PutRule(page, 40);
         Put(page, 50, 50, U"one");
         Put(page, 200, 50, U"first line of it");
         Put(page, 50, 62, U"two");
         Put(page, 200, 62, U"second");
         PutRule(page, 65);
         Put(page, 50, 75, U"three");
         Put(page, 200, 75, U"third, the longest of all");
         PutRule(page, 78);
         Put(page, 50, 88, U"four");
         Put(page, 200, 88, U"fourth");
     },
     "one two|first line of it\vsecond|\nthree|third, the longest of all|\nfour|fourth|\n"},
    {"a rule under the heads of columns is no table of drawn rows",
     [](PdfPage& page) {
         Put(page, 50, 50, U"head");
         Put(page, 200, 50, U"title");
         PutRule(page, 53);
         for (const float y : {63.0F, 75.0F, 87.0F}) {
             Put(page, 50, y, U"key");
             Put(page, 200, y, U"value");
         }
     },
     "head\ttitle\nkey\tvalue\nkey\tvalue\nkey\tvalue\n"},
    {"a numbered list is no table",
     [](PdfPage& page) {
         for (const float y : {50.0F, 62.0F}) {
             Put(page, 50, y, U"1.");
             Put(page, 80, y, U"item of it");
         }
     },
     "1.\titem of it\n1.\titem of it\n"},
};
TEST(PdfLayout, JoinsTheLinesOfATablesCells) {
    for (const PageRow& row : kTableRows) {
        SCOPED_TRACE(row.name);
        PdfPage page = EmptyPage();
        row.draw(page);
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
    PdfPage page = EmptyPage();
    Put(page, 50, 50, U"left");
    Put(page, 150, 50, U"mid word");
    Put(page, 100, 62, U"in");
    PdfLineOptions layout;
    layout.by_layout = true;
    EXPECT_EQ(LinesOf(page, layout), "left                mid word\n          in\n");
}

TEST(PdfLayout, UnderlinesWhatALineRunsUnder) {
    PdfPage page = EmptyPage();
    Put(page, 50, 50, U"under over");
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
    PdfPage page = EmptyPage();
    Put(page, 50, 50, U"see the site of");
    Put(page, 50, 62, U"ours or not");
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
    PdfPage page = EmptyPage();
    // Drawn from the left: the last word first, each word turned round, the number as it reads.
    Put(page, 50, 50, U"12 \u05D2\u05D1\u05D0 \u05E0\u05DE\u05DC");
    EXPECT_EQ(LinesOf(page), "\xD7\x9C\xD7\x9E\xD7\xA0 \xD7\x90\xD7\x91\xD7\x92 12\n");
    // A number with a sign at its end, which stands at its left when drawn.
    PdfPage mixed = EmptyPage();
    Put(mixed, 50, 50, U"\u05D2\u05D1 !12 \u05D0\u05E9");
    EXPECT_EQ(LinesOf(mixed), "\xD7\xA9\xD7\x90 12! \xD7\x91\xD7\x92\n");
    PdfPage words = EmptyPage();
    Put(words, 50, 50, U"\u05D2\u05D1 12 ab \u05D0\u05E9");
    EXPECT_EQ(LinesOf(words), "\xD7\xA9\xD7\x90 12 ab \xD7\x91\xD7\x92\n");
    std::vector<PdfLetter> latin = {{U'a'}, {U'b'}};
    EXPECT_FALSE(ReorderVisualLine(latin));
    EXPECT_EQ(Utf8(latin), "ab");
    EXPECT_EQ(Composed(U'e', 0xB4), char32_t{0xE9});
    EXPECT_EQ(Composed(0x131, 0xA8), char32_t{0xEF});
    EXPECT_EQ(Composed(U'x', 0xB4), char32_t{0});
    EXPECT_EQ(Composed(U'e', U'f'), char32_t{0});
}

struct FamilyRow {
    const char* name;
    const char* family;
};
TEST(PdfLayout, TellsTheFamilyOfAFont) {
    const FamilyRow rows[] = {{"TimesNewRomanPS-BoldMT", "Times New Roman"},
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
    for (const FamilyRow& row : rows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(FamilyOfFont(row.name), row.family);
    }
}

struct StyleRow {
    const char* name;
    bool bold;
    bool italic;
};
TEST(PdfLayout, TellsTheStyleOfAFontByItsName) {
    const StyleRow rows[] = {{"CMBX12", true, false},
                             {"CMR10", false, false},
                             {"CMTI10", false, true},
                             {"CMMI7", false, true},
                             {"CMBXTI10", true, true},
                             {"SFBX1200", true, false},
                             {"SFRM1095", false, false},
                             {"SFTI1000", false, true},
                             {"SFBI1000", true, true},
                             {"CMSY10", false, false},
                             {"NimbusRomNo9L-Medi", true, false},
                             {"NimbusRomNo9L-MediItal", true, true},
                             {"NimbusRomNo9L-ReguItal", false, true},
                             {"Roboto-Medium", false, false},
                             {"Arial-BoldMT", true, false},
                             {"LMRoman10-Italic", false, true},
                             {"LMRoman10-Bold", true, false},
                             {"MyriadPro-It", false, true},
                             {"Frutiger-B", true, false},
                             {"MyriadPro-Bd", true, false},
                             {"ItemList", false, false},
                             {"CMBXVERSION", false, false}};
    for (const StyleRow& row : rows) {
        SCOPED_TRACE(row.name);
        const PdfFontStyle style = StyleOfFontName(row.name);
        EXPECT_EQ(style.bold, row.bold);
        EXPECT_EQ(style.italic, row.italic);
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
}  // namespace zorvane
