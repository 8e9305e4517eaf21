#include "load/no_text.h"

#include <algorithm>

#include "common/base/text_encoding.h"
#include "common/platform/files.h"
#include "options/compare_file_options.h"
#include "options/compare_files_settings.h"

namespace zorvane {
namespace {

constexpr std::size_t kHead = std::size_t{64} * 1024;

// White space, the marks of cells and lines, and characters that nobody sees.
bool IsBlank(std::u16string_view text) {
    constexpr std::u16string_view kBlanks =
        u" \t\r\n\v\f\a\u00A0\u00AD\u200B\u200C\u200D\u2028\u2029\u2060\u3000\uFEFF";
    return text.find_first_not_of(kBlanks) == std::u16string_view::npos;
}

// The lines that name the sheets, and the signs between cells, are made by the reading.
bool IsBlankSheets(std::u16string_view text) {
    constexpr std::u16string_view kHeader = u"============= ";
    while (!text.empty()) {
        const std::size_t end = std::min(text.find_first_of(u"\r\n"), text.size());
        std::u16string line(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        std::erase_if(line, [](char16_t unit) { return unit == u',' || unit == u'"'; });
        if (!line.starts_with(kHeader) && !IsBlank(line))
            return false;
    }
    return true;
}

// The name counts as a file that holds something when it cannot be looked at.
bool HoldsNothing(const std::string& file) {
    const Result<std::string> head = ReadFileHead(file, kHead);
    if (!head.ok())
        return false;
    const DetectedEncoding encoding = DetectEncoding(head.value(), {});
    return IsBlank(DecodeText(head.value(), encoding));
}

std::string Range(std::int32_t first, std::int32_t last) {
    return first == last ? std::to_string(first)
                         : std::to_string(first) + "-" + std::to_string(last);
}

std::string InPages(const LoadedText& loaded) {
    const CompareFilesSettings& settings = loaded.settings;
    const bool original = loaded.side == Side::Original;
    if (settings.bBCLUsingPageRange) {
        const std::string pages =
            original ? Range(settings.lBCLPageFrom, settings.lBCLPageTo)
                     : Range(settings.lBCLPageFromModified, settings.lBCLPageToModified);
        return "no text was found on the pages " + pages + "; choose others with --pages";
    }
    return "no text was found on its pages; they may be pictures (a scan), whose text has to be "
           "recognised (OCR) first";
}

std::string InSlides(const LoadedText& loaded) {
    const CompareFilesSettings& settings = loaded.settings;
    const bool original = loaded.side == Side::Original;
    if (!settings.bConvertAllSlides) {
        const std::string slides =
            original ? Range(settings.lFromSlideOriginal, settings.lToSlideOriginal)
                     : Range(settings.lFromSlideModified, settings.lToSlideModified);
        return "no text was found on the slides " + slides + "; choose others with --slides";
    }
    return "no text was found on its slides; what they hold may be pictures";
}

std::string InSheets(const LoadedText& loaded) {
    const clsCompareFileOptions& options = loaded.options;
    const bool original = loaded.side == Side::Original;
    const bool rows = (original ? options.bExcelUseRowsMaster : options.bExcelUseRowsSource).Data();
    const bool columns =
        (original ? options.bExcelUseColsMaster : options.bExcelUseColsSource).Data();
    if (rows || columns) {
        return std::string("nothing was found in the chosen ") +
               (rows && columns ? "rows and columns; choose others with --rows and --columns"
                : rows          ? "rows; choose others with --rows"
                                : "columns; choose others with --columns");
    }
    if (loaded.type.type != nullptr && loaded.type.type->kind == FileKind::CommaDelimited)
        return {};  // commas alone: an empty table
    const std::string sheets =
        (original ? options.sExcelSheetNumberMaster : options.sExcelSheetNumberSource).Data();
    return "nothing was found in the cells of the chosen sheets (" + sheets +
           "); choose others with --sheets, * for all";
}

std::string InDocument(const LoadedText& loaded) {
    if (loaded.type.IsRendered())
        return "no text was found in what it shows; --source compares its source";
    return "no text was found in it; what it holds may be pictures";
}

}  // namespace

std::string WhyNoText(const LoadedText& loaded) {
    const bool sheets = loaded.type.IsSheets();
    if (!(sheets ? IsBlankSheets(loaded.text) : IsBlank(loaded.text)) || HoldsNothing(loaded.file))
        return {};
    std::string reason;
    if (sheets)
        reason = InSheets(loaded);
    else if (loaded.type.road == LoadRoad::Pdf)
        reason = InPages(loaded);
    else if (loaded.type.road == LoadRoad::Slides)
        reason = InSlides(loaded);
    else
        reason = InDocument(loaded);
    return reason.empty() ? reason : std::string(loaded.shown_name) + ": " + reason;
}

}  // namespace zorvane
