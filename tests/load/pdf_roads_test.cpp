// The roads of PDF from a file to the editor, with the real converter.
#include <filesystem>

#include <gtest/gtest.h>

#include "load/easy_converter.h"
#include "load/pdf_conversion.h"
#include "load/trellis_port.h"
#include "tests/support/false_converter.h"
#include "tests/support/pdf_file.h"
#include "tests/support/roads_fixture.h"

namespace zorvane {
namespace {

using namespace std::literals;

std::string ThreePages() {
    return test_pdf::MakePdf({{test_pdf::Line(72, 700, "One"), ""},
                              {test_pdf::Line(72, 700, "Two"), ""},
                              {test_pdf::Line(72, 700, "Three"), ""}});
}

TEST(PageRange, IsNormalised) {
    struct Row {
        PageRange given;
        PageRange normal;
    };
    constexpr Row kRows[] = {{{10, 5}, {5, 8}}, {{9, 12}, {1, 8}}, {{0, 3}, {1, 3}},
                             {{1, 1}, {1, 1}},  {{8, 8}, {8, 8}},  {{-1, 9}, {1, 8}}};
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.given.from);
        EXPECT_EQ(NormalisedRange(row.given, 8), row.normal);
    }
}

TEST_F(ConversionRoadsTest, BothRoadsReadTheirSidesPages) {
    settings_.bBCLUsingPageRange = true;
    settings_.lBCLPageFrom = settings_.lBCLPageTo = 2;
    settings_.lBCLPageFromModified = 5;
    settings_.lBCLPageToModified = 3;
    for (const bool quick : {false, true}) {
        SCOPED_TRACE(quick);
        settings_.bDoQuickTextExtraction = quick;
        EXPECT_EQ(Trim(Loaded("a.pdf", ThreePages())), "Two");
        EXPECT_EQ(Trim(Loaded("b.pdf", ThreePages(), Side::Modified)), "Three");
        EXPECT_EQ(settings_.bDoQuickTextExtraction, quick);
    }
    options_.bRemoveFormatting.SetData(true);
    settings_.bDoQuickTextExtraction = false;
    EXPECT_EQ(Trim(Loaded("a.pdf", ThreePages())), "Two") << "the second stage gives plain text";
}

TEST_F(ConversionRoadsTest, AFailureTriesTheOtherRoadOnceAndTellsOnceInALife) {
    EXPECT_EQ(Loaded("a.pdf", "no pdf").substr(0, 7), "failed:");
    EXPECT_TRUE(details_.empty()) << "a silent run has no status bar";
    process_.telling.manner.bSilent = false;
    questions_.answer = true;
    EXPECT_EQ(Loaded("a.pdf", "no pdf").substr(0, 7), "failed:");
    EXPECT_EQ(
        details_,
        std::vector{"Original File Conversion Failed. TPORT: File is invalid or could not open"s});
    EXPECT_EQ(Loaded("a.pdf", "no pdf").substr(0, 7), "failed:");
    ASSERT_EQ(questions_.shown.size(), 1u);
    EXPECT_TRUE(questions_.shown[0].starts_with(
        "Conversion Failed|Could not load the PDF file: a.pdf, we will try"))
        << questions_.shown[0];
    EXPECT_TRUE(settings_.bWarnedAboutSwitchingPDFConversionMethods);
    EXPECT_NE(Log().find("Original File Conversion Failed. LCCBB:Cannot open input file. Check "
                         "file type, permissions etc.\r\nOriginal File Conversion Failed. TPORT: "
                         "File is invalid or could not open\r\n"),
              std::string::npos)
        << Log();
}

// Ten forms that each show the next one ten times: some seconds of work in a small file.
TEST_F(ConversionRoadsTest, TheRoadsOfAPdfShareOneLimit) {
    const std::string bomb = test_pdf::MakeFormBomb(10, 10);
    system_.clock().step = 30'000;  // between two looks, more than the limit
    for (const bool quick : {false, true}) {
        SCOPED_TRACE(quick);
        settings_.bDoQuickTextExtraction = quick;
        EXPECT_EQ(Loaded("a.pdf", bomb).substr(0, 7), "failed:");
        EXPECT_NE(Log().find(quick ? "TPORT: PDF File is damaged" : "LCCBB:Conversion timed out"),
                  std::string::npos)
            << Log();
        EXPECT_EQ(Log().find("TPORT") == std::string::npos, !quick) << "the other road was tried";
        EXPECT_EQ(Log().find("LCCBB") == std::string::npos, quick) << "the other road was tried";
        system_.folder.Write("log", "");
    }
}

TEST_F(ConversionRoadsTest, AReaderThatSaysNothingIsGivenUp) {
    InstallFalseConverter(system_.folder.Path("program"), "", "");
    std::filesystem::permissions(system_.folder.Path(), std::filesystem::perms::all);
    system_.clock().step = 30'000;
    for (const bool quick : {false, true}) {
        SCOPED_TRACE(quick);
        settings_.bDoQuickTextExtraction = quick;
        system_.clock().ticks = 0;
        EXPECT_EQ(Loaded("a.pdf", ThreePages()).substr(0, 7), "failed:");
        EXPECT_LT(system_.clock().ticks / system_.clock().step, 20U) << "it was waited for";
    }
}

TEST(PdfErrors, HaveTheirTexts) {
    struct PortRow {
        std::int32_t code;
        std::string_view text;
    };
    constexpr PortRow kPort[] = {{0, ""},   {-1, ""},  {-2, "TPORT: File is invalid or could"},
                                 {-13, ""}, {-99, ""}, {-6, "TPORT: PDF File is damaged"}};
    for (const PortRow& row : kPort) {
        SCOPED_TRACE(row.code);
        const std::string text = ReportTrellisPortError(row.code);
        EXPECT_TRUE(row.text.empty() ? text.empty() : text.starts_with(row.text)) << text;
    }
    EXPECT_EQ(ReportBCLError(EasyError::None), "Successfully Converted.");
    EXPECT_EQ(ReportBCLError(static_cast<EasyError>(0xFFFFFFFD)), "Unknown error.");
    EXPECT_EQ(ReportBCLError(EasyError::BadPageRange), "Invalid page range numbers.");
    EXPECT_EQ(ReportBCLError(static_cast<EasyError>(0x80050009)), "Unknown error.");
    EXPECT_EQ(ReportBCLError(EasyError::TimedOut), "Conversion timed out");
}

}  // namespace
}  // namespace zorvane
