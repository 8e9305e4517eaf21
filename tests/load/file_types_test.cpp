// The road of a side, and the table that it comes from.
#include "load/file_types.h"

#include <map>
#include <sstream>

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"
#include "common/platform/files.h"
#include "load/file_kind.h"
#include "options/compare_file_options.h"
#include "options/recent_items.h"
#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

using namespace std::literals;

TEST(Signature, IsToldByTheFirstBytes) {
    struct Row {
        const char* name;
        std::string bytes;
        Signature signature;
    };
    const Row rows[] = {
        {"nothing", "", Signature::Text},
        {"letters", "abc", Signature::Text},
        {"a package", "PK\x03\x04", Signature::Package},
        {"an empty package", "PK\x05\x06", Signature::Package},
        {"letters that begin like one", "PK is short for a key", Signature::Text},
        {"a compound file", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", Signature::Compound},
        {"rich text behind a mark and blanks", "\xEF\xBB\xBF \r\n{\\rtf1", Signature::RichText},
        {"PDF behind other bytes", std::string(1000, 'x') + "%PDF-1.4", Signature::Pdf},
        {"the letters of PDF too far behind", std::string(1024, 'x') + "%PDF-", Signature::Text},
        {"records of a workbook", "\x09\x08\x10\0\0\6\5\0"s, Signature::SheetStream},
        {"text of two bytes a letter",
         "\xFF\xFE"
         "a\0b\0"s,
         Signature::Utf16Text},
        {"a page of two bytes a letter", "\xFE\xFF\0 \0<\0p\0>"s, Signature::Markup},
        {"a page behind blanks", "\xEF\xBB\xBF\n <!DOCTYPE html>", Signature::Markup},
        {"a formula is no page", "< 5", Signature::Text},
        {"bytes", "GIF\0\1"s, Signature::Binary},
        {"a NUL that is not looked at", std::string(kSignatureReach, 'a') + '\0', Signature::Text},
    };
    for (const Row& row : rows)
        EXPECT_EQ(SignatureOf(row.bytes), row.signature) << row.name;
}

class SideTypeTest : public testing::Test {
  protected:
    SideTypeTest() {
        EXPECT_TRUE(options_.LoadStateFromFile(*profile_).ok());
        extensions_.Setup(15, *profile_, "x", "txt,mine,htm,pdf");
        options_.bRemoveFormatting.SetData(false);
        options_.bHTMLCompareSource.SetData(false);
    }
    SideType Of(const std::string& name, std::string_view bytes = {}) {
        return TypeOfSide(folder_.Write(name, bytes), options_, extensions_);
    }

    TempFolder folder_;
    std::unique_ptr<IniProfile> profile_ = MakeMemoryIniProfile();
    clsCompareFileOptions options_;
    clsMRU extensions_;
};

TEST_F(SideTypeTest, GoesTheRoadOfItsName) {
    struct Row {
        const char* file;
        LoadRoad road;
        LoadRoad plain;   // formatting removed
        LoadRoad source;  // the source of pages compared
    };
    constexpr LoadRoad kWord = LoadRoad::Word;
    constexpr LoadRoad kText = LoadRoad::Text;
    constexpr LoadRoad kAsItIs = LoadRoad::AsItIs;
    constexpr Row rows[] = {
        {"a.xlsxlsx", LoadRoad::Sheets, LoadRoad::Sheets, LoadRoad::Sheets},
        {"a=Word.csv", LoadRoad::Sheets, LoadRoad::Sheets, LoadRoad::Sheets},
        {"a=Word.txt", kWord, kWord, kWord},
        {"a.docm", kWord, kWord, kWord},
        {"a.rtf", kAsItIs, kWord, kAsItIs},
        {"a.html", kWord, kWord, kAsItIs},
        {"a.htm", kText, kText, kText},  // the user's own
        {"a.dochtml", kWord, kWord, kWord},
        {"a.xml", kWord, kWord, kAsItIs},
        {"a.markdown", kWord, kWord, kAsItIs},
        {"a.mhtml", kWord, kWord, kAsItIs},
        {"a.php", kText, kText, kText},
        {"a.ascx", kText, kText, kText},
        {"a.asc", kWord, kWord, kWord},
        {"a.pdf", LoadRoad::Pdf, LoadRoad::Pdf, LoadRoad::Pdf},
        {"a.pptm", LoadRoad::Slides, LoadRoad::Slides, LoadRoad::Slides},
        {"a.mine", kText, kText, kText},
        {"a.unknown", kAsItIs, kAsItIs, kAsItIs},
        {"README", kAsItIs, kAsItIs, kAsItIs},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.file);
        EXPECT_EQ(Of(row.file).road, row.road);
        options_.bRemoveFormatting.SetData(true);
        EXPECT_EQ(Of(row.file).road, row.plain);
        options_.bRemoveFormatting.SetData(false);
        options_.bHTMLCompareSource.SetData(true);
        EXPECT_EQ(Of(row.file).road, row.source);
        options_.bHTMLCompareSource.SetData(false);
    }
}

TEST_F(SideTypeTest, LooksInsideWhereTheNameSaysNothing) {
    EXPECT_EQ(Of("a.dat", "%PDF-1.7").road, LoadRoad::Pdf);
    EXPECT_EQ(Of("a", "PK\x03\x04").road, LoadRoad::Word);
    EXPECT_EQ(Of("a", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1").road, LoadRoad::Word);
    EXPECT_EQ(Of("a", "{\\rtf1 x}").road, LoadRoad::AsItIs);
    EXPECT_EQ(Of("messages.pot", "msgid \"\"\n").road, LoadRoad::Text);
    EXPECT_EQ(Of("deck.pot", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1").road, LoadRoad::Slides);
}

TEST_F(SideTypeTest, TellsWhatIsShownLetterByLetter) {
    EXPECT_TRUE(Of("a.c").as_text);
    EXPECT_TRUE(Of("a.csv").as_text);
    EXPECT_TRUE(Of("messages.pot", "msgid").as_text);
    EXPECT_FALSE(Of("a=Word.txt").as_text);
    EXPECT_FALSE(Of("a.html").as_text);
    EXPECT_FALSE(Of("a.unknown").as_text);
    EXPECT_TRUE(Of("a.eml").IsRendered());
    EXPECT_FALSE(Of("a.docx").IsRendered());
    const FileType* page = Of("a.html").type;
    options_.bHTMLCompareSource.SetData(true);
    EXPECT_EQ(Of("a.html").type, page) << "its source is a page's";
    EXPECT_EQ(Of("a.unknown").type, nullptr);
}

// The first two columns of the first table in docs/FORMATS.md.
std::multimap<std::string, std::string> DocumentedRows() {
    const Result<std::string> text = ReadWholeFile(ZORVANE_TEST_DATA "/../../docs/FORMATS.md");
    std::multimap<std::string, std::string> rows;
    std::istringstream lines(text.ok() ? text.value() : std::string());
    bool in_table = false;
    for (std::string line; std::getline(lines, line);) {
        if (in_table && !line.starts_with("|"))
            break;
        in_table = in_table || line.starts_with("| Type | Read by |");
        if (!in_table || line.starts_with("|--"))
            continue;
        const std::size_t second = line.find('|', 1);
        const std::size_t third = line.find('|', second + 1);
        rows.emplace(Trim(line.substr(1, second - 1)),
                     Trim(line.substr(second + 1, third - second - 1)));
    }
    return rows;
}

TEST(FileTypes, AreDocumentedByTheirTable) {
    const auto documented = DocumentedRows();
    std::size_t found = 0;
    for (const FileType& type : FileTypes()) {
        if (type.title.empty())
            continue;
        const bool stands = std::any_of(documented.begin(), documented.end(), [&](const auto& row) {
            return row.first.starts_with(type.title) && row.second.starts_with(type.reader);
        });
        EXPECT_TRUE(stands) << type.title << " | " << type.reader;
    }
    for (const auto& row : documented) {
        for (const FileType& type : FileTypes()) {
            if (!type.title.empty() && row.first.starts_with(type.title)) {
                ++found;
                break;
            }
        }
    }
    EXPECT_EQ(found + 1, documented.size()) << "rows but the heading that no type stands behind";
}

}  // namespace
}  // namespace zorvane
