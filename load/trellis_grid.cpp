#include "load/trellis_grid.h"

#include <algorithm>

#include "common/base/text_encoding.h"
#include "common/platform/files.h"

namespace zorvane {
namespace {

constexpr std::int32_t kFailed = 1;

}  // namespace

std::int32_t TrellisGrid::Rewrite(
    const std::string& sIn, const std::string& sOut,
    const std::function<std::string(const std::string&)>& operation) const {
    const Result<std::string> text = ReadWholeFile(sIn, watcher_);
    if (!text.ok() || !KeepGoing(watcher_))
        return kFailed;
    const std::string made = operation(text.value());
    if (!KeepGoing(watcher_))
        return kFailed;
    return WriteWholeFile(sOut, made, watcher_).ok() && KeepGoing(watcher_) ? 0 : kFailed;
}

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
    error_ = service_.Explain(result, sFile);
    return static_cast<std::int32_t>(result.error);
}

std::int32_t TrellisGrid::csvRecogniseFile(const std::string& sIn, const std::string& sOut,
                                           const std::string& sLocaleEncoding) {
    return Rewrite(sIn, sOut, [this, &sLocaleEncoding](const std::string& bytes) {
        const std::u16string wide =
            DecodeText(bytes, DetectEncoding(bytes, sLocaleEncoding), watcher_);
        std::string out;
        if (!KeepGoing(watcher_))
            return out;
        const std::string text = ToUtf8(wide, watcher_);
        if (!KeepGoing(watcher_))
            return out;
        out.reserve(text.size() + text.size() / 2);
        CsvWriter writer(out);
        CsvReader reader(text, {DetectCsv(text), watcher_});
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
    return Rewrite(sIn, sOut, [this](const std::string& text) { return csvTrim(text, Input()); });
}

std::int32_t TrellisGrid::csvPadWithSpaces(const std::string& sIn, const std::string& sOut) {
    return Rewrite(sIn, sOut, [this](const std::string& text) {
        return zorvane::csvPadWithSpaces(text, Input());
    });
}

std::int32_t TrellisGrid::csvPadForFixedLengthFields(const std::string& sIn,
                                                     const std::string& sOut,
                                                     std::int32_t lLength) {
    return Rewrite(sIn, sOut, [this, lLength](const std::string& text) {
        return zorvane::csvPadForFixedLengthFields(
            text, static_cast<std::size_t>(std::max(lLength, 0)), ' ', true, "*", Input());
    });
}

std::int32_t TrellisGrid::csvRemoveControlCharactersFromFile(const std::string& sIn,
                                                             const std::string& sOut) {
    return Rewrite(sIn, sOut, [this](const std::string& text) {
        return csvRemoveControlCharacters(text, Input());
    });
}

std::int32_t TrellisGrid::csvCropCSVFileRows(const std::string& sIn, const std::string& sOut,
                                             const std::string& sRows) {
    return Rewrite(sIn, sOut, [this, &sRows](const std::string& text) {
        return csvCropRows(text, sRows, Input());
    });
}

std::int32_t TrellisGrid::csvCropCSVFileCols(const std::string& sIn, const std::string& sOut,
                                             const std::string& sCols) {
    return Rewrite(sIn, sOut, [this, &sCols](const std::string& text) {
        return csvCropCols(text, sCols, Input());
    });
}

std::int32_t TrellisGrid::csvRemoveEmptyLines(const std::string& sIn, const std::string& sOut) {
    return Rewrite(sIn, sOut, [this](const std::string& text) {
        return zorvane::csvRemoveEmptyLines(text, Input());
    });
}

std::int32_t TrellisGrid::ConcatenateTwoTextFilesEx(const std::string& sFirst,
                                                    const std::string& sSecond) {
    const Result<std::string> text = ReadWholeFile(sFirst);
    return text.ok() && AppendToFile(sSecond, text.value()).ok() ? 0 : kFailed;
}

}  // namespace zorvane
