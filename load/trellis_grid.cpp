#include "load/trellis_grid.h"

#include <algorithm>
#include <functional>

#include "common/base/text_encoding.h"
#include "common/platform/files.h"
#include "load/csv_operations.h"

namespace zorvane {
namespace {

constexpr std::int32_t kFailed = 1;

// One operation from file to file.
std::int32_t Rewrite(const std::string& sIn, const std::string& sOut,
                     const std::function<std::string(const std::string&)>& operation) {
    const Result<std::string> text = ReadWholeFile(sIn);
    if (!text.ok())
        return kFailed;
    return WriteWholeFile(sOut, operation(text.value())).ok() ? 0 : kFailed;
}

}  // namespace

std::int32_t TrellisGrid::OpenXLSSaveAs(const std::string& sFile, const std::string& sTarget,
                                        const std::string& sSheets, bool bFormulas, bool bValues) {
    const ConversionResult result = service_.Run(
        {{"kind", "sheets"},
         {"source", sFile},
         {"target", sTarget},
         {"sheets", sSheets},
         {"formulas", bFormulas ? "1" : "0"},
         {"values", bValues ? "1" : "0"},
         {"password", InputFile_PassWord.empty() ? InputFile_PassWord_TW : InputFile_PassWord}},
        observer_);
    made_ = {result.files, result.sheets};
    error_ = Explain(result, sFile);
    return static_cast<std::int32_t>(result.error);
}

std::int32_t TrellisGrid::csvRecogniseFile(const std::string& sIn, const std::string& sOut,
                                           const std::string& sLocaleEncoding) {
    return Rewrite(sIn, sOut, [&sLocaleEncoding](const std::string& bytes) {
        const std::string text = ToUtf8(DecodeText(bytes, DetectEncoding(bytes, sLocaleEncoding)));
        std::string out;
        CsvWriter writer(out);
        CsvReader reader(text, DetectCsv(text));
        std::vector<std::string_view> fields;
        while (reader.Next(fields)) {
            for (const std::string_view field : fields)
                writer.Field(field);
            writer.EndRecord();
        }
        return out;
    });
}

std::int32_t TrellisGrid::csvTrimCSVFile(const std::string& sIn, const std::string& sOut) {
    return Rewrite(sIn, sOut, [](const std::string& text) { return csvTrim(text); });
}

std::int32_t TrellisGrid::csvPadWithSpaces(const std::string& sIn, const std::string& sOut) {
    return Rewrite(sIn, sOut,
                   [](const std::string& text) { return zorvane::csvPadWithSpaces(text); });
}

std::int32_t TrellisGrid::csvPadForFixedLengthFields(const std::string& sIn,
                                                     const std::string& sOut,
                                                     std::int32_t lLength) {
    return Rewrite(sIn, sOut, [lLength](const std::string& text) {
        return zorvane::csvPadForFixedLengthFields(
            text, static_cast<std::size_t>(std::max(lLength, 0)), ' ', true, "*");
    });
}

std::int32_t TrellisGrid::csvRemoveControlCharactersFromFile(const std::string& sIn,
                                                             const std::string& sOut) {
    return Rewrite(sIn, sOut,
                   [](const std::string& text) { return csvRemoveControlCharacters(text); });
}

std::int32_t TrellisGrid::csvCropCSVFileRows(const std::string& sIn, const std::string& sOut,
                                             const std::string& sRows) {
    return Rewrite(sIn, sOut,
                   [&sRows](const std::string& text) { return csvCropRows(text, sRows); });
}

std::int32_t TrellisGrid::csvCropCSVFileCols(const std::string& sIn, const std::string& sOut,
                                             const std::string& sCols) {
    return Rewrite(sIn, sOut,
                   [&sCols](const std::string& text) { return csvCropCols(text, sCols); });
}

std::int32_t TrellisGrid::csvRemoveEmptyLines(const std::string& sIn, const std::string& sOut) {
    return Rewrite(sIn, sOut,
                   [](const std::string& text) { return zorvane::csvRemoveEmptyLines(text); });
}

std::int32_t TrellisGrid::ConcatenateTwoTextFilesEx(const std::string& sFirst,
                                                    const std::string& sSecond) {
    const Result<std::string> text = ReadWholeFile(sFirst);
    return text.ok() && AppendToFile(sSecond, text.value()).ok() ? 0 : kFailed;
}

}  // namespace zorvane
