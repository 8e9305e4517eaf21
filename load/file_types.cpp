#include "load/file_types.h"

#include "common/base/text_encoding.h"
#include "common/platform/native_path.h"

namespace zorvane {
namespace {

constexpr std::string_view kTextTitle =
    "Text, source code (PHP, templates of pages, .pot and .asp too)";
constexpr std::string_view kByOffice = "by an office suite";
constexpr std::string_view kPackages = "libzip, pugixml";
constexpr std::string_view kCells = "libzip, own scanner";
constexpr std::string_view kOwn = "own";

// Shorter spellings for the table.
using enum NameTest;
using enum FileKind;
constexpr LoadRoad kSheets = LoadRoad::Sheets;
constexpr LoadRoad kWord = LoadRoad::Word;
constexpr LoadRoad kText = LoadRoad::Text;
constexpr LoadRoad kSlides = LoadRoad::Slides;
constexpr RoadWhen kAlways = RoadWhen::Always;
constexpr RoadWhen kUnlessSource = RoadWhen::UnlessSource;
constexpr TextForm kNoForm = TextForm::None;

constexpr FileType kFileTypes[] = {
    {"XLSX, XLSM, XLTX", kCells, "XLSX XLSM XLTX", Contains, Spreadsheet, kSheets},
    {"XLSB", kByOffice, "XLSB", Contains, Spreadsheet, kSheets, kAlways, kNoForm, true},
    {"XLS (BIFF5, BIFF8)", kOwn, "XLS XLT", Contains, Spreadsheet, kSheets},
    {"ODS, OTS, flat ODS", kCells, "ODS OTS", Contains, Spreadsheet, kSheets},
    {"CSV", kOwn, "CSV", Contains, CommaDelimited, kSheets},
    // Source code whose name or look is near that of a page or document: a page made from it
    // would hide most of it.
    {kTextTitle, kOwn, "PHP PHTM", Contains, Html, kText},
    {kTextTitle, kOwn, "CSHTML VBHTML RHTML", Equals, Html, kText},
    {kTextTitle, kOwn, "TMPL ASCX", Equals, WordProcessor, kText},
    {"Markdown", kOwn, "MD MARKDOWN", Equals, Html, kWord, kUnlessSource, TextForm::Markdown},
    {"E-mail (.eml), a web page kept as one (.mht)", "own, HTML road", "EML MHT MHTML", Equals,
     Html, kWord, kUnlessSource, TextForm::Message},
    {"HTML, XHTML", "own parser, names from gumbo", "JHTM XHTM HTML HTM", Contains, Html, kWord,
     kUnlessSource, TextForm::Page},
    {"XML", "pugixml", "XML", Contains, Xml, kWord, kUnlessSource, TextForm::Xml},
    {"RTF", kOwn, "RTF", Contains, WordProcessor, kWord, RoadWhen::FormattingGoes},
    {"DOCX, DOCM, DOTX, DOTM", kPackages, "DOCX DOCM DOTX DOTM", Contains, WordProcessor, kWord},
    {"DOC, DOT, WPS, WPD, MCW", kByOffice, "DOC DOT WPS WPD MCW", Contains, WordProcessor, kWord,
     kAlways, kNoForm, true},
    {"ODT, OTT", kPackages, "ODT OTT", Contains, WordProcessor, kWord},
    {"EPUB", "libzip, HTML road", "EPUB", Contains, WordProcessor, kWord},
    // Names without a format of their own, which a word processor opens as what they hold.
    {"", "", "BK TMP REG ANS ASC", Contains, WordProcessor, kWord},
    {"PDF", "poppler", "PDF", Contains, Pdf, LoadRoad::Pdf},
    // A list of texts to translate, with the extension of a template of slides.
    {kTextTitle, kOwn, "POT", Equals, Slides, kText, RoadWhen::BytesAreText},
    {"PPTX, PPTM, PPSX, POTX", kPackages, "PPTX PPTM PPSX POTX", Contains, Slides, kSlides},
    {"PPT", kByOffice, "PPT PPS POT", Contains, Slides, kSlides, kAlways, kNoForm, true},
    {"ODP", kPackages, "ODP OTP", Contains, Slides, kSlides},
    {kTextTitle, kOwn, "TXT CPP C FRM BAS MOD LOG TSV VB VBS JS ASP RPF", Equals, Text, kText},
};

}  // namespace

bool FileType::Matches(std::string_view upper_extension) const {
    std::string_view rest = names;
    while (!rest.empty()) {
        const std::size_t end = rest.find(' ');
        const std::string_view name = rest.substr(0, end);
        if (test == Equals ? upper_extension == name
                           : upper_extension.find(name) != std::string_view::npos)
            return true;
        rest.remove_prefix(end == std::string_view::npos ? rest.size() : end + 1);
    }
    return false;
}

std::span<const FileType> FileTypes() {
    return kFileTypes;
}

const FileType* TypeNamed(std::string_view sFile) {
    const std::string extension = UpperExtension(sFile);
    for (const FileType& type : kFileTypes) {
        if (type.Matches(extension))
            return &type;
    }
    return nullptr;
}

std::string UpperExtension(std::string_view sFile) {
    return ToUpper(Trim(ExtensionOf(sFile)));
}

bool ExtensionContains(std::string_view sFile, std::string_view parts) {
    FileType any;
    any.names = parts;
    return any.Matches(UpperExtension(sFile));
}

}  // namespace zorvane
