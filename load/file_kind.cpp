#include "load/file_kind.h"

#include "common/base/text_encoding.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "options/compare_file_options.h"
#include "options/recent_items.h"

namespace zorvane {
namespace {

constexpr std::string_view kTextOnOtherRoads = " CSV PHP ";
constexpr std::string_view kExcelExtensions = " XLS XLSX XLSM XLSB ";

bool IsOneOf(const std::string& extension, std::string_view list) {
    return !extension.empty() && list.find(" " + extension + " ") != std::string_view::npos;
}

// Behind a dot in a folder's name there is no extension.
bool HasDot(std::string_view sFile) {
    return FileNameOf(sFile).find('.') != std::string_view::npos;
}

// Of what is no regular file nothing may be read in advance: it counts as bytes that tell nothing.
Signature SignatureOfFile(const std::string& sFile) {
    const Result<std::string> head = ReadFileHead(sFile, kSignatureReach);
    return head.ok() ? SignatureOf(head.value()) : Signature::Binary;
}

bool IsText(Signature signature) {
    return signature == Signature::Text || signature == Signature::Utf16Text ||
           signature == Signature::Markup;
}

bool IsTaken(const FileType& type, const std::string& sFile, const clsCompareFileOptions& options) {
    switch (type.when) {
        case RoadWhen::Always:
            return true;
        case RoadWhen::FormattingGoes:
            return options.bRemoveFormatting.Data();
        case RoadWhen::UnlessSource:
            return !options.bHTMLCompareSource.Data();
        case RoadWhen::BytesAreText:
            return IsText(SignatureOfFile(sFile));
    }
    return false;
}

// So that no document shows as bytes.
LoadRoad RoadByContent(const std::string& sFile) {
    switch (SignatureOfFile(sFile)) {
        case Signature::Pdf:
            return LoadRoad::Pdf;
        case Signature::Package:
        case Signature::Compound:
            return LoadRoad::Word;
        default:
            return LoadRoad::AsItIs;
    }
}

// A text of the user's takes no word processor's road, but that of sheets, PDF and slides.
const FileType* TakenRow(const std::string& sFile, const clsCompareFileOptions& options,
                         bool is_text) {
    const std::string extension = UpperExtension(sFile);
    for (const FileType& type : FileTypes()) {
        if (type.Matches(extension) && !(is_text && type.road == LoadRoad::Word) &&
            IsTaken(type, sFile, options))
            return &type;
    }
    return nullptr;
}

}  // namespace

SideType TypeOfSide(const std::string& sFile, const clsCompareFileOptions& options,
                    const clsMRU& extensions) {
    const bool is_text = bIsFileText(sFile, extensions);
    SideType side;
    side.type = TakenRow(sFile, options, is_text);
    if (side.type != nullptr)
        side.road = side.type->road;
    else
        side.road = is_text ? LoadRoad::Text : RoadByContent(sFile);
    // The name of a web document that a word processor opens says so in the middle.
    if (!side.IsSheets() && sFile.find("=Word") != std::string::npos)
        side.road = LoadRoad::Word;
    side.as_text = side.road == LoadRoad::Text || (is_text && side.road != LoadRoad::Word);
    if (side.type == nullptr)
        side.type = TypeNamed(sFile);
    return side;
}

bool bIsFileText(std::string_view sFile, const clsMRU& extensions) {
    if (!HasDot(sFile))
        return false;
    const std::string extension = UpperExtension(sFile);
    const FileType* type = TypeNamed(sFile);
    return (type != nullptr && type->kind == FileKind::Text) ||
           IsOneOf(extension, kTextOnOtherRoads) || extensions.bItemExistsInMRU(extension, true);
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
    // Windows ask this often, and of files of any size; of a FIFO nothing may be taken.
    constexpr std::size_t kHead = 1 << 16;
    const Result<std::string> bytes = ReadFileHead(sFile, kHead);
    return bytes.ok() && LooksLikeUtf16(bytes.value());
}

FileKind lFileType(const std::string& sFile, bool bRemoveFormatting, const clsMRU& extensions) {
    if (!HasDot(sFile))
        return FileKind::Other;
    const std::string extension = UpperExtension(sFile);
    const bool is_text = bIsFileText(sFile, extensions);
    for (const FileType& type : FileTypes()) {
        // Markdown and messages are pages only where the user doesn't call them text.
        const bool own_text = is_text && type.test == NameTest::Equals;
        const bool stays_rich = type.when == RoadWhen::FormattingGoes && !bRemoveFormatting;
        if (type.kind != FileKind::Text && !own_text && !stays_rich && type.Matches(extension))
            return type.kind;
    }
    if (!is_text)
        return FileKind::Other;
    return IsFileUnicode(sFile) ? FileKind::UnicodeText : FileKind::Text;
}

}  // namespace zorvane
