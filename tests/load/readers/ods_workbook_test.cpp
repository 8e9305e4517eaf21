#include <gtest/gtest.h>

#include "load/readers/opendocument/open_formula.h"
#include "tests/support/shown_workbook.h"
#include "tests/support/zip_file.h"

namespace zorvane::ods_workbook_test {
namespace {

std::string MakeOds(std::string_view sheets) {
    const std::string content =
        "<office:document-content><office:automatic-styles>"
        "<style:style style:name=\"ta1\"><style:table-properties table:display=\"true\"/>"
        "</style:style><style:style style:name=\"ta2\">"
        "<style:table-properties table:display=\"false\"/></style:style>"
        "</office:automatic-styles><office:body><office:spreadsheet>" +
        std::string(sheets) + "</office:spreadsheet></office:body></office:document-content>";
    return MakeZip(
        {{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"}, {"content.xml", content}});
}

std::string ShownTable(std::string_view inside, const SheetOptions& options = {}) {
    return ShownSheet(
        MakeOds("<table:table table:name=\"S\">" + std::string(inside) + "</table:table>"), 0,
        options);
}

TEST(OdsWorkbook, ListsSheetsAndReadsEachFromItsPlace) {
    const std::string bytes = MakeOds(
        "<table:table table:name=\"A&amp;B\" table:style-name=\"ta1\"><table:table-row>"
        "<table:table-cell><text:p>1</text:p></table:table-cell></table:table-row></table:table>"
        "<table:table table:name=\"Empty\"/>"
        "<table:table table:name=\"Secret\" table:style-name=\"ta2\"><table:table-row>"
        "<table:table-cell><text:p>2</text:p></table:table-cell></table:table-row></table:table>");
    std::unique_ptr<Workbook> workbook;
    ASSERT_TRUE(OpenWorkbook(bytes, "", workbook).ok());
    ASSERT_EQ(workbook->Sheets().size(), 3u);
    EXPECT_EQ(workbook->Sheets()[0].name, "A&B");
    EXPECT_FALSE(workbook->Sheets()[0].hidden);
    EXPECT_TRUE(workbook->Sheets()[2].hidden);
    EXPECT_EQ(ShownSheet(*workbook, 0), "1\n");
    EXPECT_EQ(ShownSheet(*workbook, 1), "");
    EXPECT_EQ(ShownSheet(*workbook, 2), "2\n");
}

// Larger than the pieces in which the content is kept, and as one XML file without a package.
TEST(OdsWorkbook, ReadsALargeFlatFile) {
    std::string content =
        "<office:document office:mimetype=\"application/vnd.oasis.opendocument.spreadsheet\">"
        "<table:table table:name=\"One\"><table:table-row><table:table-cell><text:p>" +
        std::string(3'000'000, 'x') +
        "</text:p></table:table-cell></table:table-row></table:table><table:table "
        "table:name=\"Two\"><table:table-row><table:table-cell><text:p>2</text:p>"
        "</table:table-cell></table:table-row></table:table></office:document>";
    EXPECT_EQ(ShownSheet(content, 0), std::string(3'000'000, 'x') + "\n");
    EXPECT_EQ(ShownSheet(content, 1), "2\n");
}

TEST(OdsWorkbook, ShowsEachKindOfCell) {
    const struct {
        const char* name;
        std::string_view inside;
        std::string_view shown;
    } kRows[] = {
        {"text in pieces, blanks joined",
         "<table:table-row><table:table-cell><text:p> a  <text:span>b\n</text:span> "
         "c<text:s text:c=\"3\"/>d<text:tab/>e</text:p></table:table-cell></table:table-row>",
         "a b c   d\te\n"},
        {"two paragraphs and a line break",
         "<table:table-row><table:table-cell><text:p>a<text:line-break/>b</text:p>"
         "<text:p>c</text:p></table:table-cell></table:table-row>",
         "a\nb\nc\n"},
        {"shown text goes before the value",
         "<table:table-row><table:table-cell office:value-type=\"percentage\" "
         "office:value=\"0.256\"><text:p>26%</text:p></table:table-cell></table:table-row>",
         "26%\n"},
        {"note and drawing stay out",
         "<table:table-row><table:table-cell><office:annotation><dc:date>d</dc:date>"
         "<text:p>note</text:p></office:annotation><text:p>cell</text:p>"
         "<draw:frame><draw:text-box><text:p>box</text:p></draw:text-box></draw:frame>"
         "</table:table-cell><table:table-cell><text:p>next</text:p></table:table-cell>"
         "</table:table-row>",
         "cell|next\n"},
        {"shapes of the sheet stay out",
         "<table:shapes><draw:custom-shape><text:p>x</text:p></draw:custom-shape></table:shapes>"
         "<table:table-row><table:table-cell><text:p>1</text:p></table:table-cell>"
         "</table:table-row>",
         "1\n"},
        {"repeated cells and rows",
         "<table:table-row table:number-rows-repeated=\"2\"/><table:table-row "
         "table:number-rows-repeated=\"2\"><table:table-cell "
         "table:number-columns-repeated=\"2\"/><table:table-cell "
         "table:number-columns-repeated=\"2\"><text:p>x</text:p></table:table-cell>"
         "<table:table-cell table:number-columns-repeated=\"16000\"/></table:table-row>"
         "<table:table-row table:number-rows-repeated=\"1048000\"><table:table-cell/>"
         "</table:table-row>",
         "\n\n||x|x\n||x|x\n"},
        {"covered cells, header rows, groups",
         "<table:table-header-rows><table:table-row><table:table-cell "
         "table:number-columns-spanned=\"2\"><text:p>a</text:p></table:table-cell>"
         "<table:covered-table-cell><text:p>hidden</text:p></table:covered-table-cell>"
         "<table:table-cell><text:p>b</text:p></table:table-cell></table:table-row>"
         "</table:table-header-rows><table:table-row-group><table:table-row><table:table-cell>"
         "<text:p>c</text:p></table:table-cell></table:table-row></table:table-row-group>",
         "a||b\nc\n"},
    };
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(ShownTable(row.inside), row.shown);
    }
}

TEST(OdsWorkbook, ShowsFormulasAsText) {
    constexpr std::string_view kRow =
        "<table:table-row><table:table-cell table:formula=\"of:=[.B1]*2\"><text:p>4</text:p>"
        "</table:table-cell><table:table-cell><text:p>2</text:p></table:table-cell>"
        "<table:table-cell table:formula=\"of:=[.A1:.A2]\" "
        "table:number-matrix-columns-spanned=\"1\" table:number-matrix-rows-spanned=\"2\">"
        "<text:p>4</text:p></table:table-cell></table:table-row><table:table-row>"
        "<table:table-cell table:number-columns-repeated=\"2\"/><table:table-cell>"
        "<text:p>5</text:p></table:table-cell></table:table-row>";
    EXPECT_EQ(ShownTable(kRow), "4|2|4\n||5\n");
    EXPECT_EQ(ShownTable(kRow, {.formulas = true}), "=B1*2|2|{=A1:A2}\n||{=A1:A2}\n");
    EXPECT_EQ(ShownTable(kRow, {.formulas = true, .values_too = true}),
              "=B1*2 4|2|{=A1:A2} 4\n||{=A1:A2} 5\n");
}

TEST(OpenFormula, ReadsAsPeopleWriteIt) {
    const struct {
        std::string_view formula;
        std::string_view shown;
    } kRows[] = {
        {"of:=SUM([.A1:.B2];3)", "=SUM(A1:B2,3)"},
        {"of:=[$Costs.$A$1]+[.B1]", "=Costs!$A$1+B1"},
        {"of:=['It''s; here'.A1]&\"a;[.x]\"", "='It''s; here'!A1&\"a;[.x]\""},
        {"of:=SUM({1;2|3;4})", "=SUM({1,2;3,4})"},
        {"of:=[#REF!]", "=#REF!"},
        {"msoxl:=A1;B1", "=A1;B1"},
        {"=[.A1]", "=A1"},
        {"of:=[.A1", "=A1"},
        {"of:=\"open", "=\"open"},
        {"", ""},
    };
    for (const auto& row : kRows) {
        std::string shown;
        AppendOpenFormula(row.formula, shown);
        EXPECT_EQ(shown, row.shown);
    }
}

TEST(OdsWorkbook, StaysWithinBoundsWhenCellsRepeatWithoutEnd) {
    const std::string shown = ShownTable(
        "<table:table-row table:number-rows-repeated=\"2000000000\"><table:table-cell "
        "table:number-columns-repeated=\"2000000000\"><text:p>xxxxxxxx</text:p></table:table-cell>"
        "</table:table-row>");
    EXPECT_EQ(shown, "error 7\n");
    EXPECT_EQ(
        ShownTable("<table:table-row table:number-rows-repeated=\"1000000\"><table:table-cell "
                   "table:number-columns-repeated=\"16000\"/><table:table-cell>"
                   "<text:p>x</text:p></table:table-cell></table:table-row>"),
        "error 7\n");
    EXPECT_EQ(ShownTable("<table:table-row table:number-rows-repeated=\"2147483647\"/>"
                         "<table:table-row table:number-rows-repeated=\"2147483647\"/>"
                         "<table:table-row><table:table-cell><text:p>x</text:p></table:table-cell>"
                         "</table:table-row>"),
              "");
}

TEST(OdsWorkbook, TellsWhatItCannotRead) {
    const auto error = [](std::string_view bytes) {
        std::unique_ptr<Workbook> workbook;
        return OpenWorkbook(bytes, "", workbook).error;
    };
    constexpr std::string_view kType = "application/vnd.oasis.opendocument.spreadsheet";
    EXPECT_EQ(error(MakeOds("")), ReadError::Damaged);
    EXPECT_EQ(error(MakeZip({{"mimetype", kType}})), ReadError::WrongFormat);
    EXPECT_EQ(error(MakeZip({{"mimetype", kType}, {"content.xml", "<a><table:table"}})),
              ReadError::Damaged);
    EXPECT_EQ(error(MakeZip({{"mimetype", kType},
                             {"META-INF/manifest.xml", "<manifest:encryption-data/>"},
                             {"content.xml", "\x01\x02"}})),
              ReadError::PasswordNeeded);
}

}  // namespace
}  // namespace zorvane::ods_workbook_test
