// Columns, tables and their order on pages that are made letter by letter.
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "load/readers/pdf/pdf_lines.h"
#include "tests/support/pdf_page_maker.h"

namespace zorvane::pdf_columns_test {
namespace {

using test_pdf::Drawn;
using test_pdf::EmptyPage;
using test_pdf::LinesOf;
using test_pdf::PageOf;
using test_pdf::Put;

std::u32string Numbered(std::u32string_view name, int number) {
    std::u32string text(name);
    for (const char digit : std::to_string(number))
        text += static_cast<char32_t>(digit);
    return text;
}

// Lines of unequal lengths, as text has them: each ends where the next word had no room in a column
// of 150 points.
void PutText(PdfPage& page, float x, float y, std::u32string_view name, int lines,
             float pitch = 12) {
    for (int line = 0; line < lines; ++line) {
        const std::u32string_view rest =
            line % 2 == 0 ? U" and many a word here" : U" with words that";
        Put(page, x, y + pitch * static_cast<float>(line),
            Numbered(name, line) + std::u32string(rest));
    }
}

std::vector<std::string> Starts(const std::string& lines) {
    std::vector<std::string> starts;
    for (std::size_t at = 0; at < lines.size();) {
        const std::size_t end = lines.find('\n', at);
        starts.push_back(lines.substr(at, std::min(lines.find_first_of(" \t|\n", at), end) - at));
        at = end + 1;
    }
    return starts;
}

std::string Joined(const std::vector<std::string>& texts) {
    std::string joined;
    for (const std::string& text : texts)
        joined += (joined.empty() ? "" : " ") + text;
    return joined;
}

struct Block {
    float x;
    float y;
    const char32_t* name;
    int lines = 0;  ///< of `PutText`; 0: the name alone
    float pitch = 12;
};
struct OrderRow {
    const char* name;
    std::vector<Block> blocks;
    const char* expected;  ///< the first words of the lines
};
const OrderRow kOrderRows[] = {
    {"three columns, a line over them",
     {{40, 40, U"title over all of the three columns that stand below it, as it is"},
      {40, 70, U"c0l", 4},
      {210, 70, U"c1l", 4},
      {380, 70, U"c2l", 4}},
     "title c0l0 c0l1 c0l2 c0l3 c1l0 c1l1 c1l2 c1l3 c2l0 c2l1 c2l2 c2l3"},
    {"unequal columns with line grids of their own",
     {{40, 70, U"a", 6}, {210, 74, U"b", 4, 17}},
     "a0 a1 a2 a3 a4 a5 b0 b1 b2 b3"},
    {"a gap between paragraphs that both columns have",
     {{40, 70, U"a", 4}, {40, 150, U"b", 4}, {210, 70, U"c", 4}, {210, 150, U"d", 4}},
     "a0 a1 a2 a3 b0 b1 b2 b3 c0 c1 c2 c3 d0 d1 d2 d3"},
    {"cards in rows",
     {{40, 70, U"a", 4}, {210, 70, U"c", 4}, {40, 150, U"b", 4}, {210, 150, U"d", 4}},
     "a0 a1 a2 a3 c0 c1 c2 c3 b0 b1 b2 b3 d0 d1 d2 d3"},
    {"a heading above the right column alone",
     {{40, 90, U"a", 5}, {210, 70, U"heading"}, {210, 90, U"b", 5}},
     "a0 a1 a2 a3 a4 heading b0 b1 b2 b3 b4"},
    {"a page number at the right of a heading",
     {{40, 40, U"heading of the page"}, {500, 40, U"17"}, {40, 70, U"a", 3}},
     "heading a0 a1 a2"},
};
TEST(PdfColumns, AreReadOneAfterTheOther) {
    for (const OrderRow& row : kOrderRows) {
        SCOPED_TRACE(row.name);
        PdfPage page = EmptyPage();
        for (const Block& block : row.blocks) {
            if (block.lines == 0)
                Put(page, block.x, block.y, block.name);
            PutText(page, block.x, block.y, block.name, block.lines, block.pitch);
        }
        EXPECT_EQ(Joined(Starts(LinesOf(page))), row.expected);
    }
}

/// Lines of pieces whose "#" is the number of the line, drawn line by line or piece by piece.
PdfPage Pieces(int lines, const std::vector<Drawn::Text>& pieces, bool piece_by_piece = false) {
    PdfPage page = EmptyPage();
    const auto put = [&](int line, const Drawn::Text& piece) {
        std::u32string text = piece.text;
        if (const std::size_t at = text.find(U'#'); at != std::u32string::npos)
            text[at] = U'0' + static_cast<char32_t>(line);
        Put(page, piece.x, 70 + 12 * static_cast<float>(line), text);
    };
    const int count = static_cast<int>(pieces.size());
    for (int i = 0; i < lines * count; ++i) {
        const int piece = piece_by_piece ? i / lines : i % count;
        put(piece_by_piece ? i % lines : i / count, pieces[static_cast<std::size_t>(piece)]);
    }
    return page;
}

TEST(PdfColumns, AreToldFromRowsWhateverWasDrawnFirst) {
    const auto starts = [](const PdfPage& page) { return Joined(Starts(LinesOf(page))); };
    EXPECT_EQ(starts(Pieces(
                  8, {{40, U"a# with so many words here"}, {210, U"b# with so many words here"}})),
              "a0 a1 a2 a3 a4 a5 a6 a7 b0 b1 b2 b3 b4 b5 b6 b7");
    EXPECT_EQ(starts(Pieces(5, {{40, U"name#"}, {210, U"10.0#"}}, true)),
              "name0 name1 name2 name3 name4")
        << "names and amounts";
    EXPECT_EQ(
        starts(Pieces(
            6, {{40, U"chapter#"}, {120, U".................................."}, {310, U"1#"}})),
        "chapter0 chapter1 chapter2 chapter3 chapter4 chapter5")
        << "dots lead to their numbers";
}

// The order of drawing may be lost: words sorted by height still make columns.
TEST(PdfColumns, AreFoundInSortedWords) {
    PdfPage page = EmptyPage();
    for (int line = 0; line < 10; ++line) {
        const float y = 70 + 12 * static_cast<float>(line);
        for (const float x : {40.0F, 163.0F}) {
            float at = x;
            for (const char32_t* const word : {U"every", U"line", U"has", U"words", U"here"}) {
                Put(page, at, y, word);
                at += 5 * static_cast<float>(std::u32string_view(word).size()) + 3;
            }
        }
    }
    const std::string text = LinesOf(page);
    EXPECT_EQ(text.find("here every"), std::string::npos);
    EXPECT_EQ(text.find('\t'), std::string::npos) << text;
}

void PutAcross(PdfPage& page, float y, float x0 = 40, float x1 = 440) {
    page.rules.push_back({x0, y - 0.25F, x1, y + 0.25F});
}
void PutDown(PdfPage& page, float x, float y0, float y1) {
    page.uprights.push_back({x - 0.25F, y0, x + 0.25F, y1});
}

/// A cell of two lines beside one of one line, in each of three rows.
void PutCells(PdfPage& page) {
    for (int row = 0; row < 3; ++row) {
        const float y = 60 + 30 * static_cast<float>(row);
        Put(page, 44, y, Numbered(U"key", row));
        Put(page, 160, y, Numbered(U"a text that fills its cell to the end of it, as row ", row));
        Put(page, 160, y + 11, U"goes on");
    }
}

const std::string kCells =
    "key0|a text that fills its cell to the end of it, as row 0 goes on|\n"
    "key1|a text that fills its cell to the end of it, as row 1 goes on|\n"
    "key2|a text that fills its cell to the end of it, as row 2 goes on|\n";
struct GridRow {
    const char* name;
    std::vector<float> across;  ///< heights
    std::vector<float> down;    ///< places of lines from 50 to `bottom`
    float bottom;
    PdfPage page;
    std::string expected;
};
TEST(PdfColumns, TakeRuledTablesWhole) {
    PdfPage cells = EmptyPage();
    PutCells(cells);
    PdfPage text = EmptyPage();
    PutText(text, 40, 60, U"a", 3);
    PutText(text, 210, 64, U"b", 3);
    const GridRow rows[] = {
        {"lines in both directions", {50, 80, 110, 140}, {40, 140, 440}, 140, cells, kCells},
        {"vertical lines alone", {}, {40, 140, 440}, 140, cells, kCells},
        {"horizontal lines alone", {50, 80, 110, 140}, {}, 0, cells, kCells},
        {"cells of a grid without lines between its rows",
         {50, 100},
         {40, 240, 440},
         100,
         PageOf({{62, {{44, U"12.00"}, {244, U"value"}}},
                 {74, {{44, U"12.01"}, {244, U"value"}}},
                 {86, {{44, U"12.02"}, {244, U"value"}}}}),
         "12.00|value|\n12.01|value|\n12.02|value|\n"},
        {"a frame is no table",
         {50, 100},
         {40, 440},
         100,
         PageOf({{65, {{44, U"text in a frame"}}}, {85, {{44, U"below it more"}}}}),
         "text in a frame\nbelow it more\n"},
        {"a line between columns is no table",
         {},
         {200},
         140,
         text,
         "a0 and many a word here\na1 with words that\na2 and many a word here\n"
         "b0 and many a word here\nb1 with words that\nb2 and many a word here\n"},
        {"a vertical line parts what stands close",
         {50, 62, 74},
         {40, 100, 440},
         74,
         PageOf({{60, {{84, U"end"}, {102, U"begin"}}}, {72, {{84, U"end"}, {102, U"begin"}}}}),
         "end|begin|\nend|begin|\n"},
    };
    for (const GridRow& row : rows) {
        SCOPED_TRACE(row.name);
        PdfPage page = row.page;
        for (const float y : row.across)
            PutAcross(page, y);
        for (const float x : row.down)
            PutDown(page, x, 50, row.bottom);
        EXPECT_EQ(LinesOf(page), row.expected);
    }
}

TEST(PdfColumns, ALineMayBeDrawnInPieces) {
    PdfPage page =
        PageOf({{60, {{44, U"key"}, {244, U"value"}}}, {72, {{44, U"key"}, {244, U"value"}}}});
    for (const float y : {50.0F, 62.0F, 74.0F}) {
        for (float x = 40; x < 440; x += 10)
            PutAcross(page, y, x, x + 9);
    }
    for (const float x : {40.0F, 240.0F, 440.0F})
        PutDown(page, x, 50, 74);
    EXPECT_EQ(LinesOf(page), "key|value|\nkey|value|\n");
}

TEST(PdfColumns, JoinWhatDotsLeadTo) {
    const PdfPage page = Pieces(2, {{40, U"chapter"}, {100, U"......"}, {150, U"17"}});
    EXPECT_EQ(LinesOf(page), "chapter ...... 17\nchapter ...... 17\n");
}

// A justified line with wide gaps is no row of cells.
TEST(PdfColumns, KeepStretchedLines) {
    const PdfPage page =
        PageOf({{50, {{40, U"a line of the text that is full of words"}}},  // to 240
                {62, {{40, U"wide"}, {100, U"gaps"}, {205, U"between"}}},
                {74, {{40, U"and a line that is full of words as well"}}}});
    EXPECT_EQ(LinesOf(page),
              "a line of the text that is full of words\nwide gaps between\n"
              "and a line that is full of words as well\n");
}

}  // namespace
}  // namespace zorvane::pdf_columns_test
