// Columns, tables and their order on pages that are made letter by letter.
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "load/readers/pdf/pdf_lines.h"
#include "tests/support/pdf_page_maker.h"

namespace zorvane {
namespace {

using test_pdf::EmptyPage;
using test_pdf::LinesOf;
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

struct OrderRow {
    const char* name;
    std::function<void(PdfPage&)> draw;
    const char* expected;  ///< the first words of the lines
};
const OrderRow kOrderRows[] = {
    {"three columns, a line over them",
     [](PdfPage& page) {
         Put(page, 40, 40, U"title over all of the three columns that stand below it, as it is");
         for (int column = 0; column < 3; ++column)
             PutText(page, 40 + 170 * static_cast<float>(column), 70, Numbered(U"c", column) + U"l",
                     4);
     },
     "title c0l0 c0l1 c0l2 c0l3 c1l0 c1l1 c1l2 c1l3 c2l0 c2l1 c2l2 c2l3"},
    {"unequal columns with line grids of their own",
     [](PdfPage& page) {
         PutText(page, 40, 70, U"a", 6);
         PutText(page, 210, 74, U"b", 4, 17);
     },
     "a0 a1 a2 a3 a4 a5 b0 b1 b2 b3"},
    {"columns drawn line by line across the page",
     [](PdfPage& page) {
         for (int line = 0; line < 8; ++line) {
             const float y = 70 + 12 * static_cast<float>(line);
             Put(page, 40, y, Numbered(U"a", line) + U" with so many words here");
             Put(page, 210, y, Numbered(U"b", line) + U" with so many words here");
         }
     },
     "a0 a1 a2 a3 a4 a5 a6 a7 b0 b1 b2 b3 b4 b5 b6 b7"},
    {"a gap between paragraphs that both columns have",
     [](PdfPage& page) {
         PutText(page, 40, 70, U"a", 4);
         PutText(page, 40, 150, U"b", 4);
         PutText(page, 210, 70, U"c", 4);
         PutText(page, 210, 150, U"d", 4);
     },
     "a0 a1 a2 a3 b0 b1 b2 b3 c0 c1 c2 c3 d0 d1 d2 d3"},
    {"cards in rows",
     [](PdfPage& page) {
         PutText(page, 40, 70, U"a", 4);
         PutText(page, 210, 70, U"c", 4);
         PutText(page, 40, 150, U"b", 4);
         PutText(page, 210, 150, U"d", 4);
     },
     "a0 a1 a2 a3 c0 c1 c2 c3 b0 b1 b2 b3 d0 d1 d2 d3"},
    {"a heading above the right column alone",
     [](PdfPage& page) {
         PutText(page, 40, 90, U"a", 5);
         Put(page, 210, 70, U"heading");
         PutText(page, 210, 90, U"b", 5);
     },
     "a0 a1 a2 a3 a4 heading b0 b1 b2 b3 b4"},
    {"names and amounts are rows, whatever was drawn first",
     [](PdfPage& page) {
         for (int line = 0; line < 5; ++line)
             Put(page, 40, 70 + 12 * static_cast<float>(line), Numbered(U"name", line));
         for (int line = 0; line < 5; ++line)
             Put(page, 210, 70 + 12 * static_cast<float>(line), Numbered(U"10.0", line));
     },
     "name0 name1 name2 name3 name4"},
    {"a page number at the right of a heading",
     [](PdfPage& page) {
         Put(page, 40, 40, U"heading of the page");
         Put(page, 500, 40, U"17");
         PutText(page, 40, 70, U"a", 3);
     },
     "heading a0 a1 a2"},
    {"dots lead to their numbers",
     [](PdfPage& page) {
         for (int line = 0; line < 6; ++line) {
             const float y = 70 + 12 * static_cast<float>(line);
             Put(page, 40, y, Numbered(U"chapter", line));
             Put(page, 120, y, U"..................................");
             Put(page, 310, y, Numbered(U"1", line));
         }
     },
     "chapter0 chapter1 chapter2 chapter3 chapter4 chapter5"},
};
TEST(PdfColumns, AreReadOneAfterTheOther) {
    for (const OrderRow& row : kOrderRows) {
        SCOPED_TRACE(row.name);
        PdfPage page = EmptyPage();
        row.draw(page);
        EXPECT_EQ(Joined(Starts(LinesOf(page))), row.expected);
    }
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

struct GridRow {
    const char* name;
    std::function<void(PdfPage&)> draw;
    const char* expected;
};
const GridRow kGridRows[] = {
    {"lines in both directions",
     [](PdfPage& page) {
         for (const float y : {50.0F, 80.0F, 110.0F, 140.0F})
             PutAcross(page, y);
         for (const float x : {40.0F, 140.0F, 440.0F})
             PutDown(page, x, 50, 140);
         PutCells(page);
     },
     "key0|a text that fills its cell to the end of it, as row 0 goes on|\n"
     "key1|a text that fills its cell to the end of it, as row 1 goes on|\n"
     "key2|a text that fills its cell to the end of it, as row 2 goes on|\n"},
    {"vertical lines alone",
     [](PdfPage& page) {
         for (const float x : {40.0F, 140.0F, 440.0F})
             PutDown(page, x, 50, 140);
         PutCells(page);
     },
     "key0|a text that fills its cell to the end of it, as row 0 goes on|\n"
     "key1|a text that fills its cell to the end of it, as row 1 goes on|\n"
     "key2|a text that fills its cell to the end of it, as row 2 goes on|\n"},
    {"horizontal lines alone",
     [](PdfPage& page) {
         for (const float y : {50.0F, 80.0F, 110.0F, 140.0F})
             PutAcross(page, y);
         PutCells(page);
     },
     "key0|a text that fills its cell to the end of it, as row 0 goes on|\n"
     "key1|a text that fills its cell to the end of it, as row 1 goes on|\n"
     "key2|a text that fills its cell to the end of it, as row 2 goes on|\n"},
    {"a line in pieces",
     [](PdfPage& page) {
         for (const float y : {50.0F, 62.0F, 74.0F}) {
             for (float x = 40; x < 440; x += 10)
                 PutAcross(page, y, x, x + 9);
         }
         for (const float x : {40.0F, 240.0F, 440.0F})
             PutDown(page, x, 50, 74);
         for (const float y : {60.0F, 72.0F}) {
             Put(page, 44, y, U"key");
             Put(page, 244, y, U"value");
         }
     },
     "key|value|\nkey|value|\n"},
    {"cells of a grid without lines between its rows",
     [](PdfPage& page) {
         PutAcross(page, 50);
         PutAcross(page, 100);
         for (const float x : {40.0F, 240.0F, 440.0F})
             PutDown(page, x, 50, 100);
         for (int row = 0; row < 3; ++row) {
             Put(page, 44, 62 + 12 * static_cast<float>(row), Numbered(U"12.0", row));
             Put(page, 244, 62 + 12 * static_cast<float>(row), U"value");
         }
     },
     "12.00|value|\n12.01|value|\n12.02|value|\n"},
    {"a frame is no table",
     [](PdfPage& page) {
         PutAcross(page, 50);
         PutAcross(page, 100);
         PutDown(page, 40, 50, 100);
         PutDown(page, 440, 50, 100);
         Put(page, 44, 65, U"text in a frame");
         Put(page, 44, 85, U"below it more");
     },
     "text in a frame\nbelow it more\n"},
    {"a line between columns is no table",
     [](PdfPage& page) {
         PutDown(page, 200, 50, 140);
         PutText(page, 40, 60, U"a", 3);
         PutText(page, 210, 64, U"b", 3);
     },
     "a0 and many a word here\na1 with words that\na2 and many a word here\n"
     "b0 and many a word here\nb1 with words that\nb2 and many a word here\n"},
    {"a vertical line parts what stands close",
     [](PdfPage& page) {
         for (const float y : {50.0F, 62.0F, 74.0F})
             PutAcross(page, y);
         for (const float x : {40.0F, 100.0F, 440.0F})
             PutDown(page, x, 50, 74);
         for (const float y : {60.0F, 72.0F}) {
             Put(page, 84, y, U"end");
             Put(page, 102, y, U"begin");
         }
     },
     "end|begin|\nend|begin|\n"},
};
TEST(PdfColumns, TakeRuledTablesWhole) {
    for (const GridRow& row : kGridRows) {
        SCOPED_TRACE(row.name);
        PdfPage page = EmptyPage();
        row.draw(page);
        EXPECT_EQ(LinesOf(page), row.expected);
    }
}

TEST(PdfColumns, JoinWhatDotsLeadTo) {
    PdfPage page = EmptyPage();
    for (const float y : {50.0F, 62.0F}) {
        Put(page, 40, y, U"chapter");
        Put(page, 100, y, U"......");
        Put(page, 150, y, U"17");
    }
    EXPECT_EQ(LinesOf(page), "chapter ...... 17\nchapter ...... 17\n");
}

// A justified line with wide gaps is no row of cells.
TEST(PdfColumns, KeepStretchedLines) {
    PdfPage page = EmptyPage();
    Put(page, 40, 50, U"a line of the text that is full of words");  // ends at 240
    Put(page, 40, 62, U"wide");
    Put(page, 100, 62, U"gaps");
    Put(page, 205, 62, U"between");
    Put(page, 40, 74, U"and a line that is full of words as well");
    EXPECT_EQ(LinesOf(page),
              "a line of the text that is full of words\nwide gaps between\n"
              "and a line that is full of words as well\n");
}

}  // namespace
}  // namespace zorvane
