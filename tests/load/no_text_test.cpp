#include "load/no_text.h"

#include <gtest/gtest.h>

#include "options/compare_file_options.h"
#include "options/compare_files_settings.h"
#include "options/recent_items.h"
#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

class NoTextTest : public testing::Test {
  protected:
    NoTextTest() {
        const auto profile = MakeMemoryIniProfile();
        EXPECT_TRUE(options_.LoadStateFromFile(*profile).ok());
    }
    std::string Why(const char* name, std::string_view bytes, std::u16string_view text,
                    Side side = Side::Original) {
        const std::string file = folder_.Write(name, bytes);
        const SideType type = TypeOfSide(file, options_, extensions_);
        return WhyNoText({type, "it", file, text, options_, settings_, side});
    }

    TempFolder folder_;
    clsCompareFileOptions options_;
    CompareFilesSettings settings_;
    clsMRU extensions_;
};

TEST_F(NoTextTest, IsToldOfWhatHoldsSomething) {
    using namespace std::literals;
    constexpr std::u16string_view kUnseen = u" \t\r\n\v\a\u00A0\u200B\uFEFF";
    EXPECT_NE(Why("a.docx", "PK", kUnseen), "");
    EXPECT_EQ(Why("a.docx", "PK", u"\r\na"), "");
    EXPECT_EQ(Why("a.docx", "", u""), "");
    EXPECT_EQ(Why("a.txt", "\xFF\xFE \0\n\0"sv, u" \r\n"), "") << "white space alone is empty";
    EXPECT_EQ(Why("a.csv", ",,\n", u", ,\r\n"), "") << "a table without content is empty";
    EXPECT_NE(Why("a.md", "![](x)", u"").find("--source"), std::string::npos);
}

TEST_F(NoTextTest, SheetsAreMoreThanTheirNames) {
    constexpr std::u16string_view kNames =
        u"============= One =============\r\n ,\"\" \r\n\r\n============= Two =============\r\n";
    options_.sExcelSheetNumberSource.SetData("3");
    EXPECT_NE(Why("a.xlsx", "PK", kNames, Side::Modified).find("sheets (3)"), std::string::npos);
    EXPECT_EQ(Why("a.xlsx", "PK", std::u16string(kNames) + u" ,0"), "");
    options_.bExcelUseRowsMaster.SetData(true);
    EXPECT_NE(Why("a.csv", "a", u"").find("--rows"), std::string::npos);
    EXPECT_EQ(Why("a.csv", "a", u"", Side::Modified), "");
}

TEST_F(NoTextTest, NamesThePagesAndSlidesOfItsSide) {
    EXPECT_NE(Why("a.pdf", "%PDF", u"").find("(OCR)"), std::string::npos);
    EXPECT_NE(Why("a.pptx", "PK", u"").find("pictures"), std::string::npos);
    settings_.bBCLUsingPageRange = true;
    settings_.lBCLPageFrom = settings_.lBCLPageTo = 7;
    settings_.lBCLPageFromModified = 2;
    settings_.lBCLPageToModified = 5;
    settings_.bConvertAllSlides = false;
    settings_.lFromSlideOriginal = 3;
    settings_.lToSlideOriginal = 4;
    EXPECT_EQ(Why("a.pdf", "%PDF", u""),
              "it: no text was found on the pages 7; choose others with --pages");
    EXPECT_NE(Why("a.pdf", "%PDF", u"", Side::Modified).find("pages 2-5;"), std::string::npos);
    EXPECT_NE(Why("a.odp", "PK", u"").find("slides 3-4;"), std::string::npos);
}

}  // namespace
}  // namespace zorvane
