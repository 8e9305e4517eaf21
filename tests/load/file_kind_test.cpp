#include "load/file_kind.h"

#include <sys/stat.h>

#include <gtest/gtest.h>

#include "options/recent_items.h"
#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

class FileKindTest : public testing::Test {
  protected:
    FileKindTest() { extensions_.Setup(15, *profile_, "x", "txt,log,md"); }
    std::unique_ptr<IniProfile> profile_ = MakeMemoryIniProfile();
    clsMRU extensions_;
};

struct KindRow {
    const char* name;
    const char* file;
    bool remove_formatting;
    FileKind kind;
    bool text;
    bool text_or_excel;
};
constexpr KindRow kKindRows[] = {
    {"workbook by containment", "a.xlsx", false, FileKind::Spreadsheet, false, true},
    {"a template of workbooks", "a.xltx", false, FileKind::Spreadsheet, false, false},
    {"OpenDocument sheets", "a.ods", false, FileKind::Spreadsheet, false, false},
    {"slides that show at once", "a.ppsx", false, FileKind::Slides, false, false},
    {"Markdown shows as a page", "a.markdown", false, FileKind::Html, false, false},
    {"commas", "a.csv", false, FileKind::CommaDelimited, true, true},
    {"tabs are text, not a spreadsheet", "a.tsv", false, FileKind::Text, true, true},
    {"PHP is HTML before it is text", "a.php", false, FileKind::Html, true, true},
    {"XHTML is HTML before XML", "a.xhtml", false, FileKind::Html, false, false},
    {"XML", "a.XML", false, FileKind::Xml, false, false},
    {"an XML workbook is a workbook", "a.xmlxls", false, FileKind::Spreadsheet, false, false},
    {"rich text stays", "a.rtf", false, FileKind::Other, false, false},
    {"rich text is converted when formatting goes", "a.rtf", true, FileKind::WordProcessor, false,
     false},
    {"DOC with macros", "a.DocM", false, FileKind::WordProcessor, false, false},
    {"template", "a.dotx", false, FileKind::WordProcessor, false, false},
    {"BK anywhere", "a.bkp", false, FileKind::WordProcessor, false, false},
    {"flat text document", "a.fodt", false, FileKind::WordProcessor, false, false},
    {"PDF", "a.pdf", false, FileKind::Pdf, false, false},
    {"slides", "a.pptm", false, FileKind::Slides, false, false},
    {"only the last extension counts", "report.docx.txt", false, FileKind::Text, true, true},
    {"blanks around the extension", "a. txt ", false, FileKind::Text, true, true},
    {"the user's own extension, any case", "a.MD", false, FileKind::Text, true, true},
    {"C is equal, not contained", "a.cc", false, FileKind::Other, false, false},
    {"C", "a.c", false, FileKind::Text, true, true},
    {"no dot", "makefile", false, FileKind::Other, false, false},
    {"a dot at the end", "makefile.", false, FileKind::Other, false, false},
    {"a dot in a folder", "notes.doc/README", false, FileKind::Other, false, false},
    {"a dot in a folder, other separator", "notes.doc\\README", false, FileKind::Other, false,
     false},
};

TEST_F(FileKindTest, IsToldByTheExtension) {
    for (const KindRow& row : kKindRows) {
        SCOPED_TRACE(row.name);
        EXPECT_EQ(lFileType(row.file, row.remove_formatting, extensions_), row.kind);
        EXPECT_EQ(bIsFileText(row.file, extensions_), row.text);
        EXPECT_EQ(bIsFileTextOrExcel(row.file, extensions_), row.text_or_excel);
    }
}

TEST_F(FileKindTest, TellsUnicodeTextByItsBytes) {
    const TempFolder folder;
    using namespace std::literals;
    const auto kind = [&](std::string_view bytes) {
        return lFileType(folder.Write("a.txt", bytes), false, extensions_);
    };
    EXPECT_EQ(kind("\xFF\xFEh\0i\0"sv), FileKind::UnicodeText);
    EXPECT_EQ(kind("\0h\0e\0l\0l\0o\0!"sv), FileKind::UnicodeText);
    EXPECT_EQ(kind("\xEF\xBB\xBFhi"sv), FileKind::Text);
    EXPECT_EQ(kind(""sv), FileKind::Text);
    const std::string pipe = folder.Path("b.txt");
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(lFileType(pipe, false, extensions_), FileKind::Text) << "and waits for nobody";
}

TEST(WebNames, NeedAWordProcessorThatOpensThem) {
    EXPECT_TRUE(bLoadingFromSkyDrive("http://host/a.docx?x", 15));
    EXPECT_FALSE(bLoadingFromSkyDrive("http://host/a.docx?x", 14.9));
    EXPECT_FALSE(bLoadingFromSkyDrive("HTTP://host/a.docx?x", 16));
    EXPECT_FALSE(bLoadingFromSkyDrive("http://host/a.docx", 16));
}

}  // namespace
}  // namespace zorvane
