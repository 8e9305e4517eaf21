#include <gtest/gtest.h>

#include "load/readers/sheets/workbook.h"
#include "tests/support/encrypted_package.h"
#include "tests/support/shown_workbook.h"
#include "tests/support/xlsx_file.h"

namespace zorvane::xlsx_workbook_test {
namespace {

std::string ShownSheets(const XlsxParts& parts, const SheetOptions& options = {}) {
    return ShownSheet(MakeXlsx(parts), 0, options);
}

TEST(XlsxWorkbook, ListsSheetsInOrder) {
    const std::string bytes = MakeXlsx({});
    std::unique_ptr<Workbook> workbook;
    ASSERT_TRUE(OpenWorkbook(bytes, "", workbook).ok());
    ASSERT_EQ(workbook->Sheets().size(), 3u);
    EXPECT_EQ(workbook->Sheets()[0].name, "One & only");
    EXPECT_FALSE(workbook->Sheets()[0].hidden);
    EXPECT_TRUE(workbook->Sheets()[1].hidden);
    EXPECT_EQ(ShownSheet(*workbook, 0), "");
    EXPECT_EQ(ShownSheet(*workbook, 1), "2\n");
    EXPECT_EQ(ShownSheet(*workbook, 2), "");
    EXPECT_EQ(ShownSheet(*workbook, 3), "error 2\n");
}

struct CellRow {
    const char* name;
    std::string_view rows;
    std::string_view shown;
};

constexpr CellRow kCells[] = {
    {"shared text", R"(<row r="1"><c r="A1" t="s"><v>1</v></c></row>)", "rich text\n"},
    {"shared text that is missing", R"(<row r="1"><c t="s"><v>99</v></c><c><v>1</v></c></row>)",
     "|1\n"},
    {"own text", R"(<row><c t="inlineStr"><is><t>a &lt;b&gt; &#228;</t></is></c></row>)",
     "a <b> \xC3\xA4\n"},
    {"own rich text without its pronunciation",
     R"(<row><c t="inlineStr"><is><r><t>a</t></r><rPh sb="0"><t>x</t></rPh><r><t xml:space="preserve"> b</t></r></is></c></row>)",
     "a b\n"},
    {"own text beside a value, in either order",
     R"(<row><c t="inlineStr"><v>a</v><is><t>a</t></is></c><c t="inlineStr"><is><r><t>b</t></r><r><t>c</t></r></is><v>bc</v></c></row>)",
     "a|bc\n"},
    {"a value where its own text is empty or missing",
     R"(<row><c t="inlineStr"><v>a</v><is><t></t></is></c><c t="inlineStr"><v>b</v></c><c><v>3</v><is><t>x</t></is></c></row>)",
     "a|b|3\n"},
    {"text without a type",
     R"(<row><c><is><t>a</t></is></c><c t="inlineStr"><is><t>b</t></is></c><c/></row>)", "a|b\n"},
    {"text of a formula", R"(<row><c t="str"><f>A2</f><v>so</v></c></row>)", "so\n"},
    {"truths and errors",
     R"(<row><c t="b"><v>1</v></c><c t="b"><v>0</v></c><c t="e"><v>#DIV/0!</v></c></row>)",
     "TRUE|FALSE|#DIV/0!\n"},
    {"numbers by format",
     R"(<row><c><v>0.1</v></c><c s="1"><v>0.256</v></c><c s="2"><v>45000</v></c><c s="3"><v>-1.5</v></c></row>)",
     "0.1|26%|3/15/2023|minus 1.5\n"},
    {"numbers as programs write them",
     R"(<row><c><v>1E-3</v></c><c><v>30.000000000000004</v></c><c><v>007</v></c><c><v>1.50</v></c><c><v>x</v></c><c><v>-0</v></c></row>)",
     "0.001|30|7|1.5|x|0\n"},
    {"style that is missing", R"(<row><c s="77"><v>5</v></c></row>)", "5\n"},
    {"text section", R"(<row><c s="4" t="s"><v>0</v></c></row>)", "<plain>\n"},
    {"date as text",
     R"(<row><c s="2" t="d"><v>2023-03-15</v></c><c s="5" t="d"><v>2023-03-15T18:30:15</v></c><c t="d"><v>2023-03-15</v></c></row>)",
     "3/15/2023|2023-03-15 18:30:15|2023-03-15\n"},
    {"empty rows and cells between",
     R"(<row r="2"><c r="C2"><v>1</v></c></row><row r="4"><c r="A4"><v>2</v></c><c r="C4"/></row>)",
     "\n||1\n\n2\n"},
    {"rows and cells without numbers",
     R"(<row><c><v>1</v></c><c><v>2</v></c></row><row/><row><c><v>3</v></c></row>)", "1|2\n\n3\n"},
    {"rows out of order follow",
     R"(<row r="3"><c><v>1</v></c></row><row r="1"><c><v>2</v></c></row>)", "\n\n1\n2\n"},
    {"cells out of order", R"(<row><c r="B1"><v>1</v></c><c r="A1"><v>2</v></c></row>)", "2|1\n"},
    {"prefixes, comments and CDATA",
     R"(<x:row><!-- <c> --><x:c t="str"><x:v><![CDATA[a&b<]]></x:v></x:c></x:row>)", "a&b<\n"},
    {"escaped characters", R"(<row><c t="str"><v>a_x000A_b_x005F_x_xD83D__xDE00_</v></c></row>)",
     "a\nb_x\xF0\x9F\x98\x80\n"},
    {"sign in quotes of a tag", R"(<row note="a>b"><c t="str"><v>1</v></c></row>)", "1\n"},
};

TEST(XlsxWorkbook, ShowsEachKindOfCell) {
    for (const CellRow& row : kCells) {
        SCOPED_TRACE(row.name);
        XlsxParts parts;
        parts.rows = row.rows;
        parts.texts =
            "<si><t>plain</t></si><si><r><t>rich "
            "</t></r><r><t>text</t></r><rPh><t>x</t></rPh></si>";
        parts.formats =
            "<numFmt numFmtId=\"170\" formatCode=\"0.0;&quot;minus &quot;0.0\"/>"
            "<numFmt numFmtId=\"171\" formatCode=\"0;0;0;&lt;@&gt;\"/>"
            "<numFmt numFmtId=\"172\" formatCode=\"yyyy-mm-dd hh:mm:ss\"/>";
        parts.styles =
            "<xf/><xf numFmtId=\"9\"/><xf numFmtId=\"14\"/><xf numFmtId=\"170\"/>"
            "<xf numFmtId=\"171\"/><xf numFmtId=\"172\"/>";
        EXPECT_EQ(ShownSheets(parts), row.shown);
    }
}

TEST(XlsxWorkbook, ReadsDatesOfTheOtherSystem) {
    XlsxParts parts;
    parts.rows = R"(<row><c s="0"><v>0</v></c><c s="0" t="d"><v>1904-01-03</v></c></row>)";
    parts.styles = "<xf numFmtId=\"14\"/>";
    parts.properties = "date1904=\"1\"";
    EXPECT_EQ(ShownSheets(parts), "1/1/1904|1/3/1904\n");
}

TEST(XlsxWorkbook, ShowsAMergedRangeInItsFirstCell) {
    XlsxParts parts;
    parts.rows =
        R"(<row r="1"><c r="A1"><v>1</v></c><c r="B1"><v>2</v></c><c r="C1"><v>3</v></c></row>)"
        R"(<row r="2"><c r="A2"><v>4</v></c><c r="B2"><v>5</v></c><c r="C2"><v>6</v></c></row>)";
    parts.behind = R"(<mergeCells><mergeCell ref="A1:B2"/><mergeCell ref="B2:C2"/></mergeCells>)";
    EXPECT_EQ(ShownSheets(parts), "1||3\n||6\n");
    parts.behind = R"(<x:mergeCells><x:mergeCell note="" ref="A1:B2"/></x:mergeCells>)";
    EXPECT_EQ(ShownSheets(parts), "1||3\n||6\n");
    parts.behind = R"(<t>: mergeCell ref="A1:B2" and a:mergeCell ref="A1:B2"</t>)";
    EXPECT_EQ(ShownSheets(parts), "1|2|3\n4|5|6\n");
    // Found wherever the tag stands in the chunks of the reading.
    for (std::size_t size = 262'000; size < 262'500; size += 7) {
        parts.behind = "<!--" + std::string(size, 'x') + "--><mergeCell ref=\"A1:B2\"/>";
        ASSERT_EQ(ShownSheets(parts), "1||3\n||6\n") << size;
    }
}

TEST(XlsxWorkbook, ShowsFormulasAsText) {
    XlsxParts parts;
    parts.rows =
        R"(<row r="1"><c r="A1"><f>SUM(B1:B2)&amp;"x"</f><v>3</v></c><c r="B1"><v>7</v></c></row>)"
        R"(<row r="2"><c r="A2"><f t="shared" ref="A2:B3" si="0">A1+$A1+A$1+LOG10(C1)</f><v>1</v></c>)"
        R"(<c r="B2"><f t="shared" si="0"/><v>2</v></c></row>)"
        R"(<row r="3"><c r="A3"><f t="shared" si="0"/><v>3</v></c></row>)"
        R"(<row r="4"><c r="A4"><f t="array" ref="A4:B4">C1:D1*2</f><v>1</v></c><c r="B4"><v>2</v></c></row>)";
    EXPECT_EQ(ShownSheets(parts), "3|7\n1|2\n3\n1|2\n");
    EXPECT_EQ(ShownSheets(parts, {.formulas = true}),
              "=SUM(B1:B2)&\"x\"|7\n=A1+$A1+A$1+LOG10(C1)|=B1+$A1+B$1+LOG10(D1)\n"
              "=A2+$A2+A$1+LOG10(C2)\n{=C1:D1*2}|{=C1:D1*2}\n");
    EXPECT_EQ(ShownSheets(parts, {.formulas = true, .values_too = true}).substr(0, 20),
              "=SUM(B1:B2)&\"x\" 3|7\n");
}

TEST(XlsxWorkbook, StaysWithinBoundsAtHugeAddresses) {
    XlsxParts parts;
    parts.rows = R"(<row r="1"><c><v>1</v></c></row><row r="1048577"><c><v>2</v></c></row>)";
    EXPECT_EQ(ShownSheets(parts), "1\nerror 7\n");
    parts.rows = R"(<row><c r="XFE1"><v>1</v></c></row>)";
    EXPECT_EQ(ShownSheets(parts), "1\n");  // an address that is none is passed over
    parts.rows = R"(<row><c r="XFD1"><v>1</v></c><c><v>2</v></c></row>)";
    EXPECT_EQ(ShownSheets(parts), "error 7\n");
}

TEST(XlsxWorkbook, EndsWhenItIsToldTo) {
    XlsxParts parts;
    for (int row = 1; row <= 10'000; ++row)
        parts.rows += "<row><c><v>1</v></c></row>";
    const std::string bytes = MakeXlsx(parts);
    std::unique_ptr<Workbook> workbook;
    ASSERT_TRUE(OpenWorkbook(bytes, "", workbook).ok());
    int rows = 0;
    PatientMonitor patient;
    const RowSink three = [&rows](const std::vector<std::string_view>&) { return ++rows < 3; };
    EXPECT_EQ(workbook->ReadSheet(0, {}, three, patient).error, ReadError::Cancelled);
    EXPECT_EQ(rows, 3);

    class : public ReadMonitor {
        bool Progress(std::int64_t /*done*/, std::int64_t /*total*/) override { return false; }
    } impatient;
    rows = 0;
    const RowSink all = [&rows](const std::vector<std::string_view>&) { return ++rows > 0; };
    EXPECT_EQ(workbook->ReadSheet(0, {}, all, impatient).error, ReadError::Cancelled);
    EXPECT_LT(rows, 10'000);
}

TEST(XlsxWorkbook, TellsWhatItCannotRead) {
    const auto error = [](std::string_view bytes) {
        std::unique_ptr<Workbook> workbook;
        return OpenWorkbook(bytes, "", workbook).error;
    };
    EXPECT_EQ(error(""), ReadError::WrongFormat);
    EXPECT_EQ(error("a,b,c\n"), ReadError::WrongFormat);
    EXPECT_EQ(error("PK\x03\x04 rubbish"), ReadError::Damaged);
    EXPECT_EQ(error(MakeZip({{"word/document.xml", "<document/>"}})), ReadError::WrongFormat);
    EXPECT_EQ(error(MakeZip({{"xl/workbook.xml", "<workbook/>"}})), ReadError::Damaged);
    EXPECT_EQ(error(MakeZip({{"_rels/.rels",
                              "<Relationships><Relationship Id=\"r\" Type=\"x/officeDocument\" "
                              "Target=\"xl/workbook.bin\"/></Relationships>"}})),
              ReadError::NeedsOffice);
    // A sheet that stops in the middle of a tag.
    XlsxParts cut;
    cut.rows = "<row><c><v>1</v></c></row><row note=\"";
    EXPECT_EQ(ShownSheets(cut), "1\nerror 3\n");
}

TEST(XlsxWorkbook, OpensAnEncryptedOneByItsPassword) {
    XlsxParts parts;
    parts.rows = "<row><c><v>42</v></c></row>";
    const std::string bytes = StandardEncrypted(MakeXlsx(parts), "open", 128);
    std::unique_ptr<Workbook> workbook;
    EXPECT_EQ(OpenWorkbook(bytes, "", workbook).error, ReadError::PasswordNeeded);
    EXPECT_EQ(OpenWorkbook(bytes, "shut", workbook).error, ReadError::PasswordNeeded);
    ASSERT_TRUE(OpenWorkbook(bytes, "open", workbook).ok());
    EXPECT_EQ(ShownSheet(*workbook, 0), "42\n");
}

}  // namespace
}  // namespace zorvane::xlsx_workbook_test
