// The choice of sheets, and which options a file type has.
#include "load/sheet_names.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "load/file_type_options.h"
#include "load/grid_bridge.h"
#include "options/recent_items.h"
#include "tests/support/fakes.h"
#include "tests/support/xlsx_file.h"

namespace zorvane {
namespace {

class SheetNamesTest : public ::testing::Test {
  protected:
    SheetNamesTest() {
        const std::string folder = fakes.platform.folders->ProgramFolder();
        std::filesystem::create_directories(folder);
        std::filesystem::create_symlink(ZORVANE_CONVERTER, folder + "/zorvane-convert");
    }
    Result<std::vector<std::string>> Read(const std::string& path) {
        return ReadSheetNames(bridge, path,
                              [](std::string_view text) { return "[" + std::string(text) + "]"; });
    }

    FakePlatform fakes;
    ConversionService service{fakes.platform};
    GridBridge bridge{service, {}};
};

TEST_F(SheetNamesTest, AreThoseOfTheWorkbookInItsOrder) {
    const auto names = Read(fakes.folder.Write("a.xlsx", MakeXlsx({})));
    ASSERT_TRUE(names.ok());
    ASSERT_GE(names.value().size(), 2u);
    EXPECT_EQ(names.value()[0], "One & only");
    EXPECT_EQ(names.value()[1], "Secret");
}

TEST_F(SheetNamesTest, TellsInTheLanguageWhyThereAreNone) {
    const auto missing = Read("/no/such.xlsx");
    ASSERT_FALSE(missing.ok());
    EXPECT_EQ(missing.failure().reason, "[Source file does not exist: ]/no/such.xlsx");
    const auto broken = Read(fakes.folder.Write("a.xlsx", "not a workbook"));
    ASSERT_FALSE(broken.ok());
    EXPECT_TRUE(broken.failure().reason.starts_with("[Unable to Get Excel Properties]\n\n"))
        << broken.failure().reason;
}

TEST_F(SheetNamesTest, AreJoinedAsTheOptionsWantThem) {
    EXPECT_EQ(JoinedSheetNames({"Prices", "Q1 2026"}), "Prices,Q1 2026");
    EXPECT_EQ(JoinedSheetNames({}), "");
}

TEST(FileTypeOptions, BelongToTheKindOfFile) {
    const struct {
        const char* file;
        FileTypeOptions options;
    } kRows[] = {{"a.docx", FileTypeOptions::Word},        {"a.PDF", FileTypeOptions::Pdf},
                 {"a.xlsm", FileTypeOptions::Spreadsheet}, {"a.csv", FileTypeOptions::Spreadsheet},
                 {"a.pptx", FileTypeOptions::Slides},      {"a.htm", FileTypeOptions::Html},
                 {"a.xml", FileTypeOptions::Html},         {"a.txt", FileTypeOptions::Text},
                 {"a.rtf", FileTypeOptions::None},         {"makefile", FileTypeOptions::None}};
    const clsMRU none;
    for (const auto& row : kRows) {
        SCOPED_TRACE(row.file);
        EXPECT_EQ(OptionsOf(lFileType(row.file, false, none)), row.options);
    }
}

}  // namespace
}  // namespace zorvane
