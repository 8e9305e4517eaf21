// The roads of sheets and slides from a file to the editor, with the real converter.
#include <gtest/gtest.h>

#include "load/grid_bridge.h"
#include "tests/support/deck_file.h"
#include "tests/support/roads_fixture.h"
#include "tests/support/xlsx_file.h"

namespace zorvane {
namespace {

using namespace std::literals;

// ---- sheets ----

std::string Workbook() {
    XlsxParts parts;
    parts.rows =
        "<row r=\"1\"><c t=\"inlineStr\"><is><t>a</t></is></c><c><v>1.5</v></c></row>"
        "<row r=\"3\"><c><f>B1*2</f><v>3</v></c></row>";
    return MakeXlsx(parts);
}

struct SheetRow {
    const char* name;
    void (*set)(clsCompareFileOptions&);
    std::string_view shown;
};

TEST_F(ConversionRoadsTest, SheetsAreCroppedPaddedHeadedAndJoined) {
    constexpr SheetRow kRows[] = {
        {"padded to four", [](clsCompareFileOptions& options) { options.lPadLength.SetData(4); },
         "============= One & only =============\r\na   ,1.5 \r\n    \r\n3   \r\n"},
        {"all sheets that are seen",
         [](clsCompareFileOptions& options) { options.sExcelSheetNumberMaster.SetData("*"); },
         "============= One & only =============\r\na ,1.5\r\n\r\n3\r\n\r\n============= Chart "
         "=============\r\n"},
        {"a hidden sheet by its name, a blank line in front of it",
         [](clsCompareFileOptions& options) {
             options.sExcelSheetNumberMaster.SetData("1,Secret");
             options.bExcelAddSheetNameBetweenSheets.SetData(false);
         },
         "a ,1.5\r\n\r\n3\r\n\r\n\r\n2\r\n"},
        {"rows and columns",
         [](clsCompareFileOptions& options) {
             options.bExcelAddSheetNameBetweenSheets.SetData(false);
             options.bExcelUseRowsMaster.SetData(true);
             options.sExcelRowsMaster.SetData("1");
             options.bExcelUseColsMaster.SetData(true);
             options.sExcelColsMaster.SetData("2-");
         },
         "1.5\r\n"},
        {"formulas",
         [](clsCompareFileOptions& options) {
             options.bExcelAddSheetNameBetweenSheets.SetData(false);
             options.bExcelCompareFormulas.SetData(true);
         },
         "a ,1.5\r\n\r\n=B1*2\r\n"},
        {"no such sheet",
         [](clsCompareFileOptions& options) { options.sExcelSheetNumberMaster.SetData("9"); },
         "failed: LoadFileIntoEditor(): Unable to convert spreadsheet.\n\n"},
    };
    for (const SheetRow& row : kRows) {
        SCOPED_TRACE(row.name);
        std::filesystem::remove(process_.telling.manner.sLogFile);
        ASSERT_TRUE(options_.LoadStateFromFile(*profile_).ok());
        options_.lPadLength.SetData(0);
        row.set(options_);
        const std::string shown = Loaded("a.xlsx", Workbook());
        EXPECT_EQ(shown.starts_with("failed") ? shown.substr(0, row.shown.size()) : shown,
                  row.shown);
    }
}

TEST_F(ConversionRoadsTest, TheLibraryTellsTheSheetsOfAWorkbook) {
    ConversionService service(system_.platform);
    GridBridge bridge(service, {});
    bridge.OptInputFileSet(system_.folder.Write("a.xlsx", Workbook()));
    ASSERT_EQ(bridge.ExcelGetProperties(), 0);
    std::string name;
    EXPECT_EQ(bridge.GetSheetName(2, name), 0);
    EXPECT_EQ(name, "Secret");
    EXPECT_NE(bridge.GetSheetName(bridge.GetNumberOfSheets() + 1, name), 0);
}

TEST_F(ConversionRoadsTest, CommasOfAnyKindAndEncodingAreRecognised) {
    options_.lPadLength.SetData(0);
    EXPECT_EQ(Loaded("a.csv", "n;v\nM\xFCller;1,5\nK\xF6nig;\"a;b\"\n"),
              "n ,v\r\nM\xC3\xBCller ,\"1,5\"\r\nK\xC3\xB6nig ,a;b\r\n");
    EXPECT_EQ(Loaded("b.csv",
                     "\xFF\xFE"
                     "a\0\t\0b\0\n\0"
                     "c\0\t\0d\0\n\0"sv),
              "a ,b\r\nc ,d\r\n");
}

// ---- slides ----

TEST_F(ConversionRoadsTest, SlidesFollowTheirSettings) {
    Deck deck;
    const auto shape = [](const char* text) {
        return std::string(
                   "<p:sp><p:nvSpPr><p:cNvPr id=\"2\" name=\"a\"/><p:nvPr/></p:nvSpPr>"
                   "<p:txBody><a:p><a:r><a:t>") +
               text + "</a:t></a:r></a:p></p:txBody></p:sp>";
    };
    deck.AddSlide(shape("first"));
    deck.AddSlide(shape("second"));
    deck.AddSlide(shape("third"));
    const std::string bytes = deck.Finish();
    EXPECT_EQ(Loaded("a.pptx", bytes), "first\r\nsecond\r\nthird\r\n");
    settings_.bConvertAllSlides = false;
    settings_.lFromSlideOriginal = settings_.lToSlideOriginal = 2;
    EXPECT_EQ(Loaded("a.pptx", bytes), "second\r\n");
    EXPECT_EQ(Loaded("b.pptx", bytes, Side::Modified), "first\r\nsecond\r\n");
    settings_.bShowSlideAndShapeNumber = true;
    options_.bRemoveFormatting.SetData(true);
    EXPECT_EQ(Loaded("a.pptx", bytes), "Slide 2\r\nShape 1:\r\nsecond\r\n");
    EXPECT_FALSE(loader_.Memory().bSlidesFailed.original);
    EXPECT_EQ(Loaded("c.pptx", "PK\3\4 broken"), "");
    EXPECT_TRUE(loader_.Memory().bSlidesFailed.original);
    EXPECT_EQ(Loaded("a.txt", "no slides"), "no slides");
    EXPECT_FALSE(loader_.Memory().bSlidesFailed.original) << "that was another file";
}

TEST_F(ConversionRoadsTest, NotesOfSlidesComeWithPlainTextAlone) {
    Deck deck;
    deck.AddSlide(Deck::Text("shown"), Deck::Relation("rN", "notesSlide", "../notes.xml"));
    deck.Add("ppt/notes.xml",
             Deck::Page("p:notes", Deck::Shape("type=\"body\"", Deck::Paragraph("spoken")), ""));
    const std::string bytes = deck.Finish();
    settings_.bIncludeNotes = true;
    EXPECT_EQ(Loaded("a.pptx", bytes), "shown\r\n");
    options_.bRemoveFormatting.SetData(true);
    EXPECT_EQ(Loaded("a.pptx", bytes), "shown\r\nspoken\r\n");
    settings_.bIncludeNotesOnly = true;
    EXPECT_EQ(Loaded("a.pptx", bytes), "spoken\r\n");
    settings_.bIncludeNotes = false;
    EXPECT_EQ(Loaded("a.pptx", bytes), "shown\r\n");
}

}  // namespace
}  // namespace zorvane
