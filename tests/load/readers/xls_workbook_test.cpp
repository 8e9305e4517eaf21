#include <gtest/gtest.h>

#include "load/readers/sheets/workbook.h"
#include "tests/support/shown_workbook.h"
#include "tests/support/xls_stream.h"

namespace zorvane::xls_workbook_test {
namespace {

std::string At(int row, int column, int style = 0) {
    return Low(static_cast<std::uint64_t>(row)) + Low(static_cast<std::uint64_t>(column)) +
           Low(static_cast<std::uint64_t>(style));
}

std::string NumberCell(int row, int column, double value, int style = 0) {
    return XlsRecord(0x203, At(row, column, style) + LowDouble(value));
}

std::string FormulaCell(int row, int column, std::string_view result, std::string_view tokens) {
    return XlsRecord(0x06, At(row, column) + std::string(result) + Low(0) + Low(0, 4) +
                               Low(tokens.size()) + std::string(tokens));
}

std::string Formats(bool biff8) {
    const std::string code = "0.0\"x\"";
    const std::string size = Low(code.size(), biff8 ? 2 : 1);
    std::string records = XlsRecord(0x41E, Low(170) + size + XlsText(biff8, code));
    for (const int id : {0, 9, 14, 170})
        records +=
            XlsRecord(0xE0, Low(0) + Low(static_cast<std::uint64_t>(id)) + std::string(16, '\0'));
    return records;
}

std::string MixedCells(bool biff8) {
    const std::string text = "a\xE4";
    return XlsRecord(0x204, At(0, 0) + Low(text.size()) + XlsText(biff8, text)) +
           NumberCell(0, 1, 0.256, 1) + NumberCell(0, 2, 45000, 2) +
           XlsRecord(0x27E, At(0, 3, 3) + Low(0x40290000, 4)) +                  // 12.5
           XlsRecord(0x27E, At(0, 4) + Low((1234u << 2 | 3) & 0xFFFFFFFF, 4)) +  // 12.34
           XlsRecord(0xBD, Low(1) + Low(1) + Low(0) + Low(7 << 2 | 2, 4) + Low(1) +
                               Low(1 << 2 | 2, 4) + Low(2)) +
           XlsRecord(0x205, At(2, 0) + Low(1, 1) + Low(0, 1)) +
           XlsRecord(0x205, At(2, 1) + Low(7, 1) + Low(1, 1)) + XlsRecord(0x201, At(3, 0)) +
           FormulaCell(5, 0, LowDouble(2.5), "\x1E\x01\x00") +
           FormulaCell(5, 1, std::string("\0\0\0\0\0\0\xFF\xFF", 8), "\x1E\x01\x00") +
           XlsRecord(0x207, Low(2) + XlsText(biff8, "so")) +
           FormulaCell(5, 2, std::string("\x02\0\x2A\0\0\0\xFF\xFF", 8), "\x1E\x01\x00") +
           FormulaCell(5, 3, std::string("\x01\0\x01\0\0\0\xFF\xFF", 8), "\x1E\x01\x00") +
           FormulaCell(5, 4, std::string("\x03\0\0\0\0\0\xFF\xFF", 8), "\x1E\x01\x00");
}

TEST(XlsWorkbook, ShowsEachKindOfCell) {
    for (const bool biff8 : {true, false}) {
        SCOPED_TRACE(biff8);
        XlsParts parts;
        parts.biff8 = biff8;
        parts.globals = Formats(biff8);
        parts.cells = MixedCells(biff8);
        parts.second = NumberCell(0, 0, 2);
        const std::string bytes = MakeXls(parts);
        std::unique_ptr<Workbook> workbook;
        ASSERT_TRUE(OpenWorkbook(bytes, "", workbook).ok());
        ASSERT_EQ(workbook->Sheets().size(), 2u);
        EXPECT_EQ(workbook->Sheets()[1].name, "My two");
        EXPECT_TRUE(workbook->Sheets()[1].hidden);
        // Bytes are Latin-1 in the later version, of the code page (Cyrillic) in the earlier one.
        const std::string letter = biff8 ? "\xC3\xA4" : "\xD0\xB4";
        EXPECT_EQ(ShownSheet(*workbook, 0), "a" + letter +
                                                "|26%|3/15/2023|12.5x|12.34\n|7|100%\n"
                                                "TRUE|#DIV/0!\n\n\n2.5|so|#N/A|TRUE\n");
        EXPECT_EQ(ShownSheet(*workbook, 1), "2\n");
        EXPECT_EQ(ShownSheet(MakeXlsStream(parts), 1), "2\n");  // without its container
    }
}

TEST(XlsWorkbook, ReadsSharedTextsOverSeveralRecords) {
    XlsParts parts;
    // The second text is cut between its characters and goes on in the other width; behind it its
    // formats and its pronunciation are cut too.
    parts.globals =
        XlsRecord(0xFC, Low(3, 4) + Low(3, 4) + Low(2) + Low(0, 1) + "ab" + Low(6) + Low(0x0D, 1) +
                            Low(1) + Low(3, 4) + Low('c') + Low(0x20AC)) +
        XlsRecord(0x3C, Low(0, 1) + "de") +
        XlsRecord(0x3C, Low(1, 1) + Low('f') + Low(0x20AC) + "r") + XlsRecord(0x3C, "unspo") +
        XlsRecord(0x3C, "h" + Low(1) + Low(0, 1)) + XlsRecord(0x3C, Low(0, 1) + "z");
    const auto text = [](int row, std::uint64_t index) {
        return XlsRecord(0xFD, At(row, 0) + Low(index, 4));
    };
    parts.cells = text(0, 1) + text(1, 2) + text(2, 0) + text(3, 9);
    EXPECT_EQ(ShownSheet(MakeXls(parts), 0),
              "c\xE2\x82\xAC"
              "def\xE2\x82\xAC\nz\nab\n");
}

TEST(XlsWorkbook, KnowsTheOtherDateSystemAndMergedCells) {
    XlsParts parts;
    parts.globals = XlsRecord(0x22, Low(1)) + Formats(true);
    parts.cells = NumberCell(2, 0, 7) + NumberCell(0, 0, 1, 2) + NumberCell(0, 1, 5) +
                  XlsRecord(0xE5, Low(1) + Low(0) + Low(1) + Low(0) + Low(1));
    EXPECT_EQ(ShownSheet(MakeXls(parts), 0), "1/2/1904\n\n7\n");
}

std::string Ref(std::uint64_t row, std::uint64_t column) {
    return "\x24" + Low(row) + Low(column);
}

TEST(XlsWorkbook, ShowsFormulasAsText) {
    constexpr std::uint64_t kMoves = 0xC000;
    // Behind what stands there already.
    const auto call = [](std::uint64_t function, std::uint64_t operands) {
        std::string tokens;
        for (std::uint64_t operand = 1; operand <= operands; ++operand)
            tokens += Low(0x1E, 1) + Low(operand);
        return tokens + "\x41" + Low(function);
    };
    const struct {
        const char* name;
        std::string tokens;
        std::string_view shown;
    } kRows[] = {
        {"operators",
         Ref(0, kMoves) + Ref(1, 1 | 0x4000) + "\x03" + Low(0x1E, 1) + Low(3) + "\x05\x13",
         "=-A1+B$2*3"},
        {"brackets and percent", Ref(0, 0) + "\x15\x14", "=($A$1)%"},
        {"text", "\x17" + Low(3, 1) + Low(0, 1) + "a\"b", "=\"a\"\"b\""},
        {"sum in short",
         "\x25" + Low(0) + Low(2) + Low(kMoves) + Low(kMoves | 1) + "\x19\x10" + Low(0),
         "=SUM(A1:B3)"},
        {"functions",
         Ref(0, kMoves) + Low(0x1E, 1) + Low(2) + "\x41" + Low(27) + "\x1D\x01" + Low(0x42, 1) +
             Low(2, 1) + Low(36),
         "=AND(ROUND(A1,2),TRUE)"},
        {"functions that take so many operands",
         call(314, 2) + call(293, 3) + call(61, 2) + call(119, 3) + call(325, 1) + call(142, 2),
         "=SLN(LARGE(REPLACE(MIRR(NORMDIST(STEYX(1,2),1,2,3),1,2),1,2,3),1),1,2)"},
        {"whole column and row",
         "\x25" + Low(0) + Low(0xFFFF) + Low(kMoves) + Low(1) + "\x25" + Low(4) + Low(4) + Low(0) +
             Low(0xFF) + "\x10",
         "=A:$B,$5:$5"},
        {"other sheet", "\x3A" + Low(0) + Low(4) + Low(kMoves | 2), "='My two'!C5"},
        {"name", "\x23" + Low(1) + Low(0), "=Rate"},
        {"missing argument and error", "\x16\x1C\x17\x42\x02" + Low(1), "=IF(,#REF!)"},
        {"choice",
         Low(0x1E, 1) + Low(1) + "\x19\x04" + Low(1) + Low(0, 4) + Low(0x1E, 1) + Low(5) +
             "\x42\x02" + Low(100),
         "=CHOOSE(1,5)"},
        {"what is not known shows its value", "\x60", "2.5"},
        {"too few operands", "\x03", "2.5"},
        {"too many operands", Ref(0, 0) + Ref(0, 0), "2.5"},
        {"cut", "\x24\x01", "2.5"},
        {"function that is not known", "\x42\x00" + Low(999), "2.5"},
        {"other book", "\x3A" + Low(1) + Low(4) + Low(2), "2.5"},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.name);
        XlsParts parts;
        parts.globals =
            XlsRecord(0x1AE, Low(2) + Low(0x401)) + XlsRecord(0x1AE, Low(1) + "other") +
            XlsRecord(0x17, Low(2) + Low(0) + Low(1) + Low(1) + Low(1) + Low(0) + Low(0)) +
            XlsRecord(0x18, Low(0) + Low(0, 1) + Low(4, 1) + std::string(10, '\0') +
                                XlsText(true, "Rate"));
        parts.cells = FormulaCell(0, 0, LowDouble(2.5), row.tokens);
        EXPECT_EQ(ShownSheet(MakeXls(parts), 0, {.formulas = true}), std::string(row.shown) + "\n");
    }
}

TEST(XlsWorkbook, ShowsSharedFormulasInEachCell) {
    XlsParts parts;
    const std::string expand = "\x01" + Low(0) + Low(1);
    const std::string shared = "\x2C" + Low(0) + Low(0xC0FF) + "\x1E" + Low(2) + "\x05";
    const std::string array = "\x25" + Low(0) + Low(1) + Low(0) + Low(0);
    parts.cells = FormulaCell(0, 1, LowDouble(1), expand) +
                  XlsRecord(0x4BC, Low(0) + Low(1) + Low(1, 1) + Low(1, 1) + Low(2) +
                                       Low(shared.size()) + shared) +
                  FormulaCell(1, 1, LowDouble(2), expand) +
                  FormulaCell(2, 2, LowDouble(3), "\x01" + Low(2) + Low(2)) +
                  XlsRecord(0x221, Low(2) + Low(3) + Low(2, 1) + Low(2, 1) + Low(0) + Low(0, 4) +
                                       Low(array.size()) + array) +
                  FormulaCell(3, 2, LowDouble(4), "\x01" + Low(2) + Low(2));
    EXPECT_EQ(ShownSheet(MakeXls(parts), 0, {.formulas = true}),
              "|=A1*2\n|=A2*2\n||{=$A$1:$A$2}\n||{=$A$1:$A$2}\n");
    EXPECT_EQ(ShownSheet(MakeXls(parts), 0, {.formulas = true, .values_too = true}),
              "|=A1*2 1\n|=A2*2 2\n||{=$A$1:$A$2} 3\n||{=$A$1:$A$2} 4\n");
}

TEST(XlsWorkbook, TellsWhatItCannotRead) {
    XlsParts locked;
    locked.globals = XlsRecord(0x2F, Low(1));
    std::unique_ptr<Workbook> workbook;
    EXPECT_EQ(OpenWorkbook(MakeXls(locked), "", workbook).error, ReadError::PasswordNeeded);
    EXPECT_EQ(OpenWorkbook(MakeXls(locked), "x", workbook).error, ReadError::Unsupported);
    std::string old = MakeXlsStream({});
    old[5] = 4;
    EXPECT_EQ(OpenWorkbook(old, "", workbook).error, ReadError::Unsupported);
    XlsParts cut;
    cut.globals = XlsRecord(0xFC, Low(1, 4) + Low(1, 4) + Low(99) + Low(0, 1) + "short");
    EXPECT_EQ(OpenWorkbook(MakeXls(cut), "", workbook).error, ReadError::Damaged);
    CompoundWriter document;
    document.Add("WordDocument", "x");
    EXPECT_EQ(OpenWorkbook(document.Finish(), "", workbook).error, ReadError::WrongFormat);
}

TEST(XlsWorkbook, GivesUpOnFormulasThatGrowWithoutEnd) {
    XlsParts parts;
    const std::string name(255, 'n');
    parts.globals = XlsRecord(
        0x18, Low(0) + Low(0, 1) + Low(255, 1) + std::string(10, '\0') + XlsText(true, name));
    std::string tokens = "\x23" + Low(1) + Low(0);
    for (int i = 0; i < 60; ++i)
        tokens += "\x23" + Low(1) + Low(0) + "\x08";
    tokens += std::string(1000, '\x12');  // each moves the text before it
    for (int row = 0; row < 200; ++row)
        parts.cells += FormulaCell(row, 0, LowDouble(1), tokens);
    const std::string shown = ShownSheet(MakeXls(parts), 0, {.formulas = true});
    EXPECT_EQ(shown.size(), 400u);  // the values
}

}  // namespace
}  // namespace zorvane::xls_workbook_test
