#include "load/readers/sheets/workbook.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/support/shown_workbook.h"
#include "tests/support/xls_stream.h"
#include "tests/support/xlsx_file.h"

namespace zorvane::workbook_test {
namespace {

std::string FileBytes(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

std::vector<std::filesystem::path> CorpusFiles() {
    std::vector<std::filesystem::path> files;
    for (const char* folder : {"xlsx", "xls", "ods"}) {
        const std::filesystem::path path = std::filesystem::path(ZORVANE_CORPUS) / folder;
        if (!std::filesystem::exists(path))
            continue;
        for (const auto& entry : std::filesystem::directory_iterator(path))
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::string Folder(const char* name) {
    return std::string(ZORVANE_CORPUS) + "/" + name;
}

TEST(WorkbookCorpus, ReadsTheSameBookInThreeFormats) {
    if (CorpusFiles().empty())
        GTEST_SKIP() << "no documents";
    const std::string xlsx = FileBytes(Folder("xlsx/SampleSS.xlsx"));
    const std::string xls = FileBytes(Folder("xls/SampleSS.xls"));
    const std::string ods = FileBytes(Folder("ods/SampleSS.ods"));
    for (std::size_t sheet = 0; sheet < 3; ++sheet) {
        SCOPED_TRACE(sheet);
        const std::string shown = ShownSheet(xlsx, sheet);
        EXPECT_EQ(shown.empty(), sheet == 2);
        EXPECT_EQ(ShownSheet(xls, sheet), shown);
        EXPECT_EQ(ShownSheet(ods, sheet), shown);
    }
    const SheetOptions formulas{.formulas = true};
    EXPECT_EQ(ShownSheet(xlsx, 1, formulas), ShownSheet(xls, 1, formulas));
    EXPECT_EQ(ShownSheet(xlsx, 1, formulas), ShownSheet(ods, 1, formulas));
    EXPECT_NE(ShownSheet(xlsx, 1, formulas), ShownSheet(xlsx, 1));
}

// These books hold the expected text in their first column, the same value formatted in another.
TEST(WorkbookCorpus, ShowsNumbersAndDatesAsTheBookTells) {
    if (CorpusFiles().empty())
        GTEST_SKIP() << "no documents";
    EXPECT_EQ(ShownSheet(FileBytes(Folder("xls/1904DateWindowing.xls")), 0), "1/1/2000|1/1/2000\n");
    const std::string dates = ShownSheet(FileBytes(Folder("xlsx/DateFormatTests.xlsx")), 1);
    EXPECT_NE(dates.find("|dd-mm-yy|11-Oct-1952 14:35:27.000|Date\n"), std::string::npos);
    EXPECT_EQ(dates.find("error"), std::string::npos);
    const std::string provinces = ShownSheet(FileBytes(Folder("xls/chinese-provinces.xls")), 0);
    EXPECT_NE(provinces.find("Beijing|\xE5\x8C\x97\xE4\xBA\xAC\xE5\xB8\x82\n"), std::string::npos);
}

// Reads all that can be read; what is asked is that it ends, soon and without a crash.
void ReadWhole(const std::string& bytes) {
    std::unique_ptr<Workbook> workbook;
    if (!OpenWorkbook(bytes, "", workbook).ok())
        return;
    PatientMonitor monitor;
    for (std::size_t i = 0; i < std::min<std::size_t>(workbook->Sheets().size(), 5); ++i) {
        int rows = 0;
        const RowSink sink = [&rows](const std::vector<std::string_view>&) {
            return ++rows < 2000;
        };
        (void)workbook->ReadSheet(i, {.formulas = true, .values_too = true}, sink, monitor);
    }
}

void ReadBroken(const std::string& good, std::uint32_t seed, int rounds) {
    std::mt19937 random(seed);
    for (int round = 0; round < rounds; ++round) {
        std::string bad = good;
        if (round % 3 == 0)
            bad.resize(random() % bad.size());
        for (std::size_t flips = 1 + random() % 10; flips > 0 && !bad.empty(); --flips)
            bad[random() % bad.size()] = static_cast<char>(random());
        ReadWhole(bad);
    }
}

std::string SmallXls() {
    XlsParts parts;
    parts.globals = XlsRecord(0xFC, Low(2, 4) + Low(2, 4) + Low(2) + Low(0, 1) + "ab" + Low(3) +
                                        Low(1, 1) + Low('x') + Low('y') + Low('z'));
    for (std::uint64_t row = 0; row < 20; ++row)
        parts.cells +=
            XlsRecord(0xFD, Low(row) + Low(0) + Low(0) + Low(row % 2, 4)) +
            XlsRecord(0x203, Low(row) + Low(1) + Low(0) + LowDouble(1.5)) +
            XlsRecord(0x06, Low(row) + Low(2) + Low(0) + LowDouble(2) + Low(0) + Low(0, 4) +
                                Low(8) + "\x24" + Low(1) + Low(2) + "\x1E" + Low(7));
    return MakeXlsStream(parts);
}

TEST(Workbook, SurvivesFlippedAndMissingBytes) {
    ReadBroken(SmallXls(), 1, 3000);
    XlsxParts parts;
    for (int row = 0; row < 20; ++row)
        parts.rows += "<row><c t=\"s\"><v>0</v></c><c s=\"1\"><f>A1</f><v>1.5</v></c></row>";
    parts.texts = "<si><t>text</t></si>";
    parts.styles = "<xf/><xf numFmtId=\"14\"/>";
    ReadBroken(MakeXlsx(parts), 2, 1000);
}

// The parts themselves broken, behind a ZIP file that is whole.
TEST(Workbook, SurvivesBrokenXml) {
    std::mt19937 random(3);
    const std::string good =
        "<row r=\"2\"><c r=\"B2\" t=\"s\" s=\"1\"><f t=\"shared\" ref=\"A1:B2\" "
        "si=\"0\">A1</f><v>0</v>"
        "</c><c t=\"inlineStr\"><is><t>a&amp;b</t></is></c></row><row><c><f t=\"shared\" si=\"0\"/>"
        "</c></row><![CDATA[x]]><!-- y -->";
    for (int round = 0; round < 2000; ++round) {
        XlsxParts parts;
        parts.rows = good;
        for (std::size_t flips = 1 + random() % 5; flips > 0; --flips)
            parts.rows[random() % parts.rows.size()] = "<>/\"'=&;rcvtsf01"[random() % 16];
        ReadWhole(MakeXlsx(parts));
    }
}

TEST(WorkbookCorpus, SurvivesFlippedAndMissingBytes) {
    const std::vector<std::filesystem::path> files = CorpusFiles();
    if (files.empty())
        GTEST_SKIP() << "no documents";
    const auto begin = std::chrono::steady_clock::now();
    std::uint32_t seed = 10;
    for (const auto& path : files) {
        SCOPED_TRACE(path.filename());
        ReadBroken(FileBytes(path), ++seed, 60);
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(30));
}

}  // namespace
}  // namespace zorvane::workbook_test
