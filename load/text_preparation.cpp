#include "load/text_preparation.h"

#include <algorithm>
#include <chrono>

#include "common/base/text_encoding.h"
#include "common/log_message.h"
#include "common/platform/files.h"
#include "common/process_state.h"
#include "compare/document/rtf_reader.h"
#include "load/file_kind.h"
#include "options/compare_file_options.h"
#include "options/recent_items.h"

namespace zorvane {
namespace {

constexpr std::int32_t kLongestDelay = 20;  // seconds

// Numbers of the steps, as the log names them.
enum class ListStep : std::int32_t { Open = 1, Read = 3, Replace = 4, SecondOpen = 8, Write = 10 };

bool IsExcluded(const std::string& sFile, const clsMRU& extensions) {
    const std::string extension = UpperExtension(sFile);
    return extension == "C" ||
           ExtensionContains(sFile,
                             "JHTM XHTM HTM DAT ASP JS PHP VB VBS LOG MOD BAS FRM CPP XLS TXT") ||
           extensions.bItemExistsInMRU(extension, true);
}

void LogStep(ProcessState& process, ListStep step, const std::string& reason) {
    LogMessage(process,
               "NumberedList " + std::to_string(static_cast<std::int32_t>(step)) + " - " + reason,
               process.sLogFile, false);
}

}  // namespace

Result<bool> AddSpaceToTextFileIfNecessary(const std::string& sFile) {
    const Result<std::string> bytes = ReadWholeFile(sFile);
    if (!bytes.ok())
        return bytes.failure();
    if (!bytes.value().starts_with('{'))
        return false;
    const Status written = WriteWholeFile(sFile, " " + bytes.value());
    if (!written.ok())
        return written.failure();
    return true;
}

void RemoveFirstSpaceOfRichTextBox(Editor& oRichText) {
    if (oRichText.Length() > 0)
        oRichText.Replace({CharPos{0}, 1}, u"");
}

Status DeleteEmptyLinesFromTextFile(const std::string& sFile) {
    const Result<std::string> bytes = ReadWholeFile(sFile);
    if (!bytes.ok())
        return bytes.failure();
    std::string kept;
    std::string_view rest = bytes.value();
    while (!rest.empty()) {
        const std::size_t end = rest.find('\n');
        const std::string_view line = rest.substr(0, end == std::string_view::npos ? end : end + 1);
        if (!Trim(line).empty())
            kept += line;
        rest.remove_prefix(line.size());
    }
    return WriteWholeFile(sFile, kept);
}

void ReplaceStringFromText(std::string& sText, std::string_view sFind, std::string_view sReplace) {
    if (sFind.empty() || sText.find(sFind) == std::string::npos)
        return;
    std::string out;
    std::size_t begin = 0;
    for (std::size_t at = 0; (at = sText.find(sFind, begin)) != std::string::npos;
         begin = at + sFind.size())
        out.append(sText, begin, at - begin).append(sReplace);
    out.append(sText, begin);
    sText = std::move(out);
}

void RemoveNumberedListAndEmptyLines(ProcessState& process, clsCompareFileOptions& options,
                                     const clsMRU& extensions, const std::string& sTempFile,
                                     const std::string& sFile) {
    if (IsExcluded(sFile, extensions))
        return;
    Result<std::string> bytes = ReadWholeFile(sTempFile);
    if (!bytes.ok()) {
        LogStep(process, ListStep::Open, bytes.failure().reason);
        return;
    }
    std::string text = std::move(bytes).value();
    if (!LooksLikeRtf(text))
        return;
    ReplaceStringFromText(text, "\\pn", "\\pzn");
    if (options.bRemoveBlankLines.Data()) {
        // Kept: the end of every paragraph that stands at a line end of the file goes, so the
        // paragraphs of a file written that way are joined.
        ReplaceStringFromText(text, "\\par \r\n", "");
        ReplaceStringFromText(text, "\\par\r\n", "");
    }
    process.platform.clock->Sleep(std::chrono::seconds(options.lLoadDelay.Data()));
    const Status written = WriteWholeFile(sTempFile, text);
    if (written.ok())
        return;
    // Whoever holds the file may let go of it later: the next load waits longer.
    if (options.lLoadDelay.Data() < kLongestDelay)
        options.lLoadDelay.SetData(options.lLoadDelay.Data() + 1);
    LogStep(process, ListStep::SecondOpen, written.failure().reason);
}

bool bIsValidExtension(std::string& sText, const clsMRU& extensions) {
    sText = std::string(Trim(sText));
    std::erase_if(sText, [](char character) { return character == '-' || character == '_'; });
    const bool letters = std::all_of(sText.begin(), sText.end(), [](char character) {
        return (character >= '0' && character <= '9') || (character >= 'A' && character <= 'Z') ||
               (character >= 'a' && character <= 'z');
    });
    return !sText.empty() && letters && !extensions.bItemExistsInMRU(sText, true);
}

}  // namespace zorvane
