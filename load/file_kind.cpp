#include "load/file_kind.h"

#include "common/base/text_encoding.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "options/compare_file_options.h"
#include "options/recent_items.h"

namespace zorvane {
namespace {

struct KindRow {
    std::string_view parts;
    FileKind kind;
};
// In the order of the tests: the first that the extension contains counts.
constexpr KindRow kKinds[] = {
    {"XLS XLT ODS OTS", FileKind::Spreadsheet}, {"CSV", FileKind::CommaDelimited},
    {"JHTM XHTM PHP HTML HTM", FileKind::Html}, {"XML", FileKind::Xml},
    {kWordExtensions, FileKind::WordProcessor}, {"PDF", FileKind::Pdf},
    {"PPT PPS POT ODP OTP", FileKind::Slides},
};
constexpr std::string_view kTextExtensions =
    " TXT CPP C FRM BAS MOD LOG CSV TSV VB VBS PHP JS ASP RPF ";
constexpr std::string_view kExcelExtensions = " XLS XLSX XLSM XLSB ";

bool IsOneOf(const std::string& extension, std::string_view list) {
    return !extension.empty() && list.find(" " + extension + " ") != std::string_view::npos;
}

// Behind a dot in a folder's name there is no extension.
bool HasDot(std::string_view sFile) {
    return FileNameOf(sFile).find('.') != std::string_view::npos;
}

}  // namespace

std::string UpperExtension(std::string_view sFile) {
    return ToUpper(Trim(ExtensionOf(sFile)));
}

bool ExtensionContains(std::string_view sFile, std::string_view parts) {
    const std::string extension = UpperExtension(sFile);
    while (!parts.empty()) {
        const std::size_t end = parts.find(' ');
        if (extension.find(parts.substr(0, end)) != std::string::npos)
            return true;
        parts.remove_prefix(end == std::string_view::npos ? parts.size() : end + 1);
    }
    return false;
}

bool IsRenderedText(std::string_view sFile) {
    return IsOneOf(UpperExtension(sFile), " MD MARKDOWN EML MHT ");
}

bool IsSourceCode(std::string_view sFile) {
    return ExtensionContains(sFile, "PHP PHTM") ||
           IsOneOf(UpperExtension(sFile), " CSHTML VBHTML RHTML TMPL ASCX ");
}

bool bIsFileText(std::string_view sFile, const clsMRU& extensions) {
    if (!HasDot(sFile))
        return false;
    const std::string extension = UpperExtension(sFile);
    return IsOneOf(extension, kTextExtensions) || extensions.bItemExistsInMRU(extension, true);
}

bool IsTranslationSource(const std::string& sFile) {
    constexpr std::size_t kHead = 4096;
    if (UpperExtension(sFile) != "POT")
        return false;
    const Result<std::string> head = ReadFileHead(sFile, kHead);
    return head.ok() && head.value().find('\0') == std::string::npos &&
           !head.value().starts_with("PK");
}

bool TakesWordRoad(const std::string& sFile, const clsCompareFileOptions& options,
                   const clsMRU& extensions) {
    if (sFile.find("=Word") != std::string::npos)
        return true;
    if (IsSourceCode(sFile) || bIsFileText(sFile, extensions))
        return false;
    if (options.bRemoveFormatting.Data() && ExtensionContains(sFile, "RTF"))
        return true;
    if (!options.bHTMLCompareSource.Data() &&
        (IsRenderedText(sFile) || ExtensionContains(sFile, "JHTM XHTM XML HTML HTM")))
        return true;
    return ExtensionContains(sFile, kWordExtensions);
}

bool bIsFileTextOrExcel(std::string_view sFile, const clsMRU& extensions) {
    return bIsFileText(sFile, extensions) || IsOneOf(UpperExtension(sFile), kExcelExtensions);
}

bool bLoadingFromSkyDrive(std::string_view sFile, double word_version) {
    constexpr double kOpensWebNames = 15;
    return sFile.find('?') != std::string_view::npos &&
           sFile.find("http") != std::string_view::npos && word_version >= kOpensWebNames;
}

bool IsFileUnicode(const std::string& sFile) {
    const Result<std::string> bytes = ReadWholeFile(sFile);
    return bytes.ok() && LooksLikeUtf16(bytes.value());
}

FileKind lFileType(const std::string& sFile, bool bRemoveFormatting, const clsMRU& extensions) {
    if (!HasDot(sFile))
        return FileKind::Other;
    for (const KindRow& row : kKinds) {
        const bool rich_text = row.kind == FileKind::WordProcessor && bRemoveFormatting &&
                               ExtensionContains(sFile, "RTF");
        if (rich_text || ExtensionContains(sFile, row.parts))
            return row.kind;
    }
    if (!bIsFileText(sFile, extensions))
        return IsRenderedText(sFile) ? FileKind::Html : FileKind::Other;
    return IsFileUnicode(sFile) ? FileKind::UnicodeText : FileKind::Text;
}

}  // namespace zorvane
