#include "load/readers/sheets/cell_reference.h"

#include <gtest/gtest.h>

#include "load/column_letters.h"
#include "load/readers/sheets/merged_cells.h"

namespace zorvane::cell_reference_test {
namespace {

TEST(CellReference, ReadsAddresses) {
    const struct {
        std::string_view text;
        CellPlace place;
    } kRows[] = {
        {"A1", {0, 0}},
        {"$B$12", {11, 1}},
        {"AA3", {2, 26}},
        {"XFD1048576", {1048575, 16383}},
        {"XFE1", {-1, -1}},
        {"A0", {-1, -1}},
        {"A", {-1, -1}},
        {"1", {-1, -1}},
        {"A1048577", {-1, -1}},
        {"", {-1, -1}},
        {"A1B", {-1, -1}},
        {"AAAA1", {-1, -1}},
        {"A99999999999", {-1, -1}},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(ParseCell(row.text), row.place);
    }
}

TEST(CellReference, WritesEveryColumnAsItIsRead) {
    for (std::int32_t column = 0; column < kMaxSheetColumns; ++column) {
        std::string text;
        AppendColumn(column, text);
        text += '7';
        ASSERT_EQ(ParseCell(text), (CellPlace{6, column}));
    }
}

TEST(CellReference, MovesFormulas) {
    const struct {
        const char* name;
        std::string_view formula;
        std::int32_t rows;
        std::int32_t columns;
        std::string_view moved;
    } kRows[] = {
        {"relative", "A1+b2", 1, 2, "C2+D3"},
        {"fixed", "$A1+A$1+$A$1", 1, 1, "$A2+B$1+$A$1"},
        {"ranges", "SUM(A1:B2,C:C,3:3,$D:E)", 1, 1, "SUM(B2:C3,D:D,4:4,$D:F)"},
        {"functions that look like cells", "LOG10(A1)+DAY2(1)", 1, 0, "LOG10(A2)+DAY2(1)"},
        {"names that look like cells", "A1_x+wxyzA1+A1.b+TAX2010rate", 1, 0,
         "A1_x+wxyzA1+A1.b+TAX2010rate"},
        {"texts and sheets", "\"A1\"&'A1 ''x'!A1&A1!B1", 1, 0, "\"A1\"&'A1 ''x'!A2&A1!B2"},
        {"table columns", "Table1[A1]+A1", 1, 0, "Table1[A1]+A2"},
        {"out of the sheet", "A1+B2", -1, 0, "#REF!+B1"},
        {"numbers", "1.5E+10+12*A1", 1, 0, "1.5E+10+12*A2"},
        {"ratio of numbers", "IF(A1,1:2)", 1, 0, "IF(A2,2:3)"},
        {"unfinished", "\"A1", 1, 0, "\"A1"},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.name);
        std::string moved;
        AppendShifted(row.formula, row.rows, row.columns, moved);
        EXPECT_EQ(moved, row.moved);
    }
}

TEST(MergedCells, CoverAllButTheFirst) {
    MergedCells merges;
    merges.Add(ParseRange("B2:C3"));
    merges.Add(ParseRange("A5:A6"));
    merges.Add(ParseRange("A1"));
    merges.Add(ParseRange("C3:D4"));  // overlaps and is passed over
    std::string covered;
    for (std::int32_t row = 0; row < 7; ++row) {
        for (std::int32_t column = 0; column < 4; ++column)
            covered += merges.Covers(row, column) ? 'x' : '.';
        covered += '\n';
    }
    EXPECT_EQ(covered, "....\n..x.\n.xx.\n....\n....\nx...\n....\n");
}

TEST(MergedCells, StayFastWhenManyOverlap) {
    MergedCells merges;
    for (std::int32_t i = 0; i < 200'000; ++i)
        merges.Add({{i % 1000, 0}, {kMaxSheetRows - 1, kMaxSheetColumns - 1 - i % 1000}});
    int covered = 0;
    for (std::int32_t row = 0; row < 100'000; ++row)
        covered += merges.Covers(row, 5) ? 1 : 0;
    EXPECT_EQ(covered, 100'000);
}

}  // namespace
}  // namespace zorvane::cell_reference_test
