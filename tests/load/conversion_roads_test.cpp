// The roads of all file types from a file to the editor, with the real converter.
#include <gtest/gtest.h>

#include "load/easy_converter.h"
#include "load/office_place.h"
#include "load/pdf_conversion.h"
#include "load/trellis_port.h"
#include "tests/support/encrypted_package.h"
#include "tests/support/pdf_file.h"
#include "tests/support/roads_fixture.h"
#include "tests/support/stopping_watcher.h"
#include "tests/support/word_file.h"
#include "tests/support/xlsx_file.h"

namespace zorvane {
namespace {

using namespace std::literals;

// ---- word processor ----

std::string ListDocument() {
    WordFile file;
    file.body =
        "<w:p><w:pPr><w:numPr><w:ilvl w:val=\"0\"/><w:numId w:val=\"1\"/></w:numPr></w:pPr><w:r>"
        "<w:rPr><w:b/></w:rPr><w:t>item</w:t></w:r></w:p>";
    file.numbering =
        "<w:abstractNum w:abstractNumId=\"0\"><w:lvl w:ilvl=\"0\"><w:start w:val=\"4\"/><w:lvlText "
        "w:val=\"%1)\"/></w:lvl></w:abstractNum><w:num w:numId=\"1\"><w:abstractNumId "
        "w:val=\"0\"/></w:num>";
    return MakeWordFile(file);
}

TEST_F(ConversionRoadsTest, ListNumbersOfDocumentsVanishUnlessTheyAreToStay) {
    EXPECT_EQ(Loaded("a.docx", ListDocument()), "item\r\n");
    options_.bModifyOriginalDocuments.SetData(false);
    EXPECT_EQ(Loaded("a.docx", ListDocument()), "4)\titem\r\n");
    EXPECT_TRUE(DocumentOf(EditorTarget::Original)
                    .RichTB()
                    .Rich({CharPos{3}, 1})
                    .char_runs.at(0)
                    .format.bold);
    options_.bRemoveFormatting.SetData(true);
    EXPECT_EQ(Loaded("a.docx", ListDocument()), "4)\titem\r\n") << "plain text has them as text";
}

TEST_F(ConversionRoadsTest, EachPasswordOfItsOwnSideOpens) {
    WordFile word;
    word.body = "<w:p><w:r><w:t>words</w:t></w:r></w:p>";
    const std::string document = StandardEncrypted(MakeWordFile(word), "key", 128);
    XlsxParts sheet;
    sheet.rows = "<row r=\"1\"><c r=\"A1\"><v>17</v></c></row>";
    const std::string workbook = StandardEncrypted(MakeXlsx(sheet), "key", 128);
    struct Row {
        clsVarString& option;
        Side side;
        bool is_sheet;
    };
    const Row rows[] = {{options_.sDOCPassword_TO_Original, Side::Original, false},
                        {options_.sDOCPassword_TOTW_Original, Side::Original, false},
                        {options_.sDOCPasswordTemplate_TO_Original, Side::Original, false},
                        {options_.sDOCPasswordTemplate_TOTW_Original, Side::Original, false},
                        {options_.sDOCPassword_TO_Modified, Side::Modified, false},
                        {options_.sDOCPassword_TOTW_Modified, Side::Modified, false},
                        {options_.sDOCPasswordTemplate_TO_Modified, Side::Modified, false},
                        {options_.sDOCPasswordTemplate_TOTW_Modified, Side::Modified, false},
                        {options_.sExcelPasswordOriginal, Side::Original, true},
                        {options_.sExcelPasswordOriginal_TW, Side::Original, true},
                        {options_.sExcelPasswordModified, Side::Modified, true},
                        {options_.sExcelPasswordModified_TW, Side::Modified, true}};
    for (const Row& row : rows) {
        SCOPED_TRACE(&row - rows);
        const std::string name = row.is_sheet ? "a.xlsx" : "a.docx";
        const std::string& bytes = row.is_sheet ? workbook : document;
        const Side other = row.side == Side::Original ? Side::Modified : Side::Original;
        for (const bool quick : {false, true}) {
            options_.bExcelQuickTextExtraction.SetData(quick);
            row.option.SetData("key");
            EXPECT_TRUE(
                Trim(Loaded(name, bytes, row.side)).ends_with(row.is_sheet ? "17" : "words"));
            EXPECT_EQ(Loaded(name, bytes, other).substr(0, 7), "failed:");
            row.option.SetData("");
        }
    }
}

// ---- what lies beside the words ----

std::string ShownBeside(const std::vector<BesideItem>& items) {
    std::string text;
    for (const BesideItem& item : items)
        text += std::string(NameOf(item.kind).option) + " " + std::to_string(item.paragraph) + " " +
                item.text + "; ";
    return text;
}

TEST_F(ConversionRoadsTest, WhatLiesBesideTheWordsComesOnEveryRoad) {
    constexpr std::string_view kPage =
        "<title>T</title><p>a<br>b<p> <p><a href='http://x/'>c</a><p><img src=p.png>";
    struct Row {
        const char* name;
        bool plain;
        bool without_blank_lines;
        std::string_view text;
        std::string_view items;
    };
    constexpr std::string_view kRich = "metadata 0 title: T; links 2 http://x/; pictures 2 p.png; ";
    constexpr std::string_view kPlain =
        "metadata 0 title: T; links 3 http://x/; pictures 3 p.png; ";
    const Row rows[] = {
        {"rich text", false, false, "a\vb\r\nc\r\n", kRich},
        {"plain text, where a line is a paragraph", true, false, "a\r\nb\r\nc\r\n", kPlain},
        {"plain text without blank lines", true, true, "a\r\nb\r\nc\r\n", kPlain},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        options_.bRemoveFormatting.SetData(row.plain);
        options_.bRemoveBlankLines.SetData(row.without_blank_lines);
        EXPECT_EQ(Loaded("a.html", kPage), row.text);
        EXPECT_EQ(ShownBeside(loader_.Memory().beside[Side::Original]), row.items);
    }
    EXPECT_EQ(Loaded("b.txt", "words"), "words");
    EXPECT_EQ(ShownBeside(loader_.Memory().beside[Side::Original]), "")
        << "nothing of the file before";
    EXPECT_EQ(Log(), "");
}

TEST_F(ConversionRoadsTest, WhatLiesBesideRichTextComesWithoutItsFormattingToo) {
    constexpr std::string_view kRich =
        "{\\rtf1 a\\line b\\par\\par {\\field{\\*\\fldinst HYPERLINK http://x/}{\\fldrslt c}}}";
    EXPECT_EQ(Loaded("a.rtf", kRich), "a\vb\r\n\r\nc");
    EXPECT_EQ(ShownBeside(loader_.Memory().beside[Side::Original]), "links 3 http://x/; ");
    options_.bRemoveBlankLines.SetData(true);
    EXPECT_EQ(Loaded("a.rtf", kRich), "a\vb\r\nc");
    EXPECT_EQ(ShownBeside(loader_.Memory().beside[Side::Original]), "links 2 http://x/; ");
    options_.bRemoveBlankLines.SetData(false);
    options_.bRemoveFormatting.SetData(true);
    EXPECT_EQ(Loaded("a.rtf", kRich), "a\r\nb\r\n\r\nc");
    EXPECT_EQ(ShownBeside(loader_.Memory().beside[Side::Original]), "links 4 http://x/; ");
    options_.bRemoveBlankLines.SetData(true);
    EXPECT_EQ(Loaded("a.rtf", kRich), "a\r\nb\r\nc");
    EXPECT_EQ(ShownBeside(loader_.Memory().beside[Side::Original]), "links 3 http://x/; ");
}

TEST_F(ConversionRoadsTest, AsMuchAsMayLieBesideTheWordsComesWhole) {
    std::string page;
    for (std::size_t i = 0; i < kMostBesideItems + 5; ++i)
        page += "<p><a href='http://host/" + std::to_string(i) + std::string(100, 'x') + "'>c</a>";
    options_.bRemoveFormatting.SetData(true);
    Loaded("a.html", page);
    const std::vector<BesideItem>& items = loader_.Memory().beside[Side::Original];
    ASSERT_EQ(items.size(), kMostBesideItems + 1);
    EXPECT_TRUE(items[kMostBesideItems - 1].text.starts_with("http://host/3999x"));
    EXPECT_EQ(items[kMostBesideItems].text, "others: 5");
}

TEST_F(ConversionRoadsTest, LooksAreComparedAsFarAsBothSidesHaveThem) {
    const auto depth = [this](const char* original, const char* modified) {
        Loaded(original, "{\\rtf1 a}");
        Loaded(modified, "{\\rtf1 a}", Side::Modified);
        return loader_.Memory().FormattingDepth();
    };
    EXPECT_EQ(depth("a.rtf", "b.rtf"), FormatDepth::Full);
    EXPECT_EQ(depth("a.doc", "b.docx"), FormatDepth::Full);
    EXPECT_EQ(depth("a.rtf", "b.doc"), FormatDepth::Marks);
    EXPECT_EQ(depth("a.rtf", "b.txt"), FormatDepth::None);
}

TEST_F(ConversionRoadsTest, DocumentsAreToldByTheirBytes) {
    EXPECT_EQ(Loaded("a.doc", ListDocument()), "item\r\n");
    EXPECT_EQ(Loaded("nameless", ListDocument()), "item\r\n");
    EXPECT_EQ(Loaded("b", test_pdf::MakePdf(test_pdf::Line(72, 700, "Hello"))), "Hello\r\n");
}

TEST_F(ConversionRoadsTest, NothingIsShownAsItsMarkup) {
    // Every extension of the word processor's road, and some that only contain one.
    for (const char* extension :
         {"jhtm", "xhtm", "xhtml", "html", "htm",   "odt", "ott",       "epub",     "bk",
          "bkp",  "tmp",  "dot",   "dotx", "reg",   "wpd", "wps",       "mcw",      "ans",
          "asc",  "doc",  "docx",  "fodt", "shtml", "rtf", "=Word.txt", "=Word.php"}) {
        for (const bool plain : {false, true}) {
            SCOPED_TRACE(std::string(extension) + (plain ? " plain" : ""));
            options_.bRemoveFormatting.SetData(plain);
            const std::string name = "a." + std::string(extension);
            EXPECT_EQ(Loaded(name, "{\\rtf1 one\\par\r\ntwo}"), "one\r\ntwo");
            if (std::string_view(extension) == "rtf")
                continue;
            EXPECT_EQ(Loaded(name, "<html><p>one<p>two</html>"), "one\r\ntwo\r\n");
        }
    }
}

TEST_F(ConversionRoadsTest, SourceCodeIsComparedAsSourceCode) {
    constexpr std::string_view kSource =
        "<html><p class=\"a\"><?php if ($a < 1) { echo '{\\rtf1 x}'; } ?></p>\n<%= b %>\n</html>\n";
    const std::string shown =
        "<html><p class=\"a\"><?php if ($a < 1) { echo '{\\rtf1 x}'; } ?></p>\r\n<%= b %>\r\n"
        "</html>\r\n";
    extensions_.AddUniqueItemToCollection("xml");
    for (const char* extension : {"php", "PHP5", "phps", "phtml", "cshtml", "vbhtml", "rhtml",
                                  "tmpl", "ascx", "asp", "js", "vb", "xml"}) {
        SCOPED_TRACE(extension);
        EXPECT_EQ(Loaded("a." + std::string(extension), kSource), shown);
    }
    // Under the name of something else it is told by its first characters.
    for (const char* code : {"<?php $a = 1; ?>", "<?= $a ?>", "<%@ Page %><p>"})
        EXPECT_EQ(Loaded("a.bk", code), std::string(code) + "\r\n");
    EXPECT_EQ(Loaded("a.pot", "msgid \"a\"\n"), "msgid \"a\"\r\n");
}

TEST_F(ConversionRoadsTest, APageKeptAsAMessageIsAPage) {
    constexpr std::string_view kKept =
        "MIME-Version: 1.0\nContent-Type: multipart/related; boundary=x\n\n--x\nContent-Type: "
        "text/html\nContent-Transfer-Encoding: quoted-printable\n\n<p "
        "class=3D1>one=\n</p>\n--x--\n";
    EXPECT_EQ(Loaded("a.mht", kKept), "\r\none\r\n");
    EXPECT_EQ(Loaded("a.mhtml", kKept), "\r\none\r\n");
}

TEST_F(ConversionRoadsTest, OpenWordSaveAsWritesItsFormats) {
    TrellisPage& page = loader_.Page();
    const std::string source = system_.folder.Write("a.docx", ListDocument());
    const std::string target = system_.folder.Path("out");
    EXPECT_EQ(page.OpenWordSaveAs(source, target, WordFormat::PlainText), WordResult::Ok);
    EXPECT_EQ(system_.folder.Read("out"), "4)\titem\r\n");
    EXPECT_EQ(page.OpenWordSaveAs(source, target, WordFormat::RichText), WordResult::Ok);
    EXPECT_TRUE(system_.folder.Read("out").starts_with("{\\rtf1"));
    EXPECT_EQ(page.OpenWordSaveAs(source, target, WordFormat::Html), WordResult::Ok);
    EXPECT_NE(system_.folder.Read("out").find(">item</span>"), std::string::npos);
    const std::string rtf = system_.folder.Write("a.rtf", "{\\rtf1 x{\\i y}}");
    EXPECT_EQ(page.OpenWordSaveAs(rtf, target, WordFormat::Html), WordResult::Ok);
    EXPECT_NE(system_.folder.Read("out").find("font-style: italic\">y"), std::string::npos);
    EXPECT_EQ(page.OpenWordSaveAs(rtf, target, WordFormat::Document), WordResult::NotInstalled);
    EXPECT_NE(page.ErrorString().find("install LibreOffice"), std::string::npos);
    EXPECT_EQ(page.OpenWordSaveAs("", target, WordFormat::RichText), WordResult::PathEmpty);
    EXPECT_EQ(page.OpenWordSaveAs(system_.folder.Path("none"), target, WordFormat::RichText),
              WordResult::SourceInvalid);
}

// A word processor of our making: says what it is told to say.
class FakePage : public TrellisPage {
  public:
    double WordVersion() const override { return version; }
    bool OptimizeForSpeed() const override { return puts >= puts_until_running; }
    void putOptimizeForSpeed(bool) override { ++puts; }
    WordResult OpenWordSaveAs(const std::string&, const std::string&, WordFormat) override {
        ++conversions;
        return result;
    }
    void HideWordIfVisible() override { ++hides; }
    std::string ErrorString() const override { return "what it says"; }

    double version = 16.1;
    WordResult result = WordResult::Ok;
    int puts_until_running = 1;
    int puts = 0;
    int conversions = 0;
    int hides = 0;
};

TEST_F(ConversionRoadsTest, EachResultOfTheWordProcessorHasItsLog) {
    struct Row {
        WordResult result;
        std::string_view log;
    };
    constexpr Row kRows[] = {
        {WordResult::Ok, ""},
        {WordResult::SourceInvalid, "Source file is invalid \n  s\r\n"},
        {WordResult::NotInstalled, "Failed to Convert.  Check that MS Word is installed\r\n"},
        {WordResult::PathEmpty, "Source or Target file path is empty\r\n"},
        {WordResult::Protected, "File is password protected\r\n"},
        {WordResult::Other, "what it says\r\n"},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.log);
        std::filesystem::remove(process_.telling.manner.sLogFile);
        FakePage page;
        page.result = row.result;
        WordConversion word{process_, process_.telling, page, {}};
        EXPECT_EQ(word.ConverterWordDoc("s", "t", WordFormat::RichText, {"1", "2", "3", "4"}),
                  row.result == WordResult::Ok);
        EXPECT_EQ(Log(), row.log);
        EXPECT_EQ(page.hides, 1);
        EXPECT_EQ(page.InputFileTemplate_PassWord_TW, "4");
    }
}

TEST_F(ConversionRoadsTest, ANewerWordProcessorIsRefusedAndAStartIsNotCounted) {
    FakePage page;
    int restarts = 0;
    WordConversion word{process_, process_.telling, page, [&restarts] { ++restarts; }};
    process_.telling.manner.bSilent = false;
    EXPECT_TRUE(word.ConverterWordDoc("s", "t", WordFormat::RichText, {}));
    EXPECT_EQ(restarts, 0);
    page.puts_until_running = page.puts + 2;
    EXPECT_TRUE(word.ConverterWordDoc("s", "t", WordFormat::RichText, {}));
    EXPECT_EQ(restarts, 1);
    page.version = 16.2;
    EXPECT_FALSE(word.ConverterWordDoc("s", "t", WordFormat::RichText, {}));
    EXPECT_EQ(page.conversions, 2);
    EXPECT_EQ(Log(), "Error 20: Version of MS Word : Version (16.2)\r\n");
}

TEST_F(ConversionRoadsTest, AnOfficeSuiteReadsAndWritesWhatOnlyItCan) {
    unsetenv("ZORVANE_OFFICE");
    if (!FindOffice())
        GTEST_SKIP() << "no office suite is installed";
    TrellisPage& page = loader_.Page();
    page.putOptimizeForSpeed(true);
    const std::string source = system_.folder.Write("a.rtf", "{\\rtf1 one{\\b two}\\par three}");
    const std::string document = system_.folder.Path("b.doc");
    ASSERT_EQ(page.OpenWordSaveAs(source, document, WordFormat::Document), WordResult::Ok)
        << page.ErrorString();
    EXPECT_TRUE(system_.folder.Read("b.doc").starts_with("\xD0\xCF\x11\xE0"));
    ASSERT_TRUE(Load(document)) << Log();
    EXPECT_EQ(Trim(Text()), "onetwo\r\nthree");
    EXPECT_TRUE(DocumentOf(EditorTarget::Original)
                    .RichTB()
                    .Rich({CharPos{4}, 1})
                    .char_runs.at(0)
                    .format.bold);
}

// ---- a stop ----

std::string Repeated(std::string_view part, int count) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += part;
    return text;
}

// A conversion is asked about its progress as often as its child tells of it, so what can be said
// of every road is that it ends soon behind the answer, and that nothing counts as loaded.
TEST_F(ConversionRoadsTest, AStopEndsTheLoadOnEveryRoad) {
    WordFile document;
    document.body = Repeated("<w:p><w:r><w:t>a paragraph of it</w:t></w:r></w:p>", 5000);
    const struct {
        const char* name;
        std::string bytes;
    } rows[] = {{"a.docx", MakeWordFile(document)},
                {"a.html", Repeated("<p>a paragraph</p>", 50000)},
                {"a.rtf", "{\\rtf1 " + Repeated("a {\\b line}\\par ", 20000) + "}"},
                {"a.csv", Repeated("name, 1, \"a, b\"\n", 20000)},
                {"a.txt", Repeated("a line\n", 20000)}};
    for (const auto& row : rows) {
        const std::string file = system_.folder.Write(row.name, row.bytes);
        const auto load = [&](RunWatcher& watcher) {
            DocumentLoader loader(
                {process_,
                 process_.telling,
                 options_,
                 settings_,
                 questions_,
                 recent_,
                 extensions_,
                 [this](EditorTarget target) -> clsRTBDocument& { return DocumentOf(target); },
                 [](const std::string&) {},
                 {},
                 &watcher});
            std::string path = file;
            return loader.LoadSide(Side::Original, path, Reload::Forced);
        };
        StoppingWatcher whole(-1);
        ASSERT_TRUE(load(whole)) << row.name;
        for (const std::int64_t at : {1, 2, 3, 4}) {
            SCOPED_TRACE(std::string(row.name) + " " + std::to_string(at));
            ASSERT_GE(whole.asked, at) << "nobody could stop this";
            StoppingWatcher watcher(at);
            EXPECT_FALSE(load(watcher));
            EXPECT_LE(watcher.asked, at + 10) << "went on after the stop";
            EXPECT_EQ(Log().find("Unable to copy file."), std::string::npos);
        }
    }
}

}  // namespace
}  // namespace zorvane
