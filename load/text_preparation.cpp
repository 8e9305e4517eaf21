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

constexpr std::string_view kNumbering = "\\pn";
constexpr std::string_view kParagraphEnds[] = {"\\par \r\n", "\\par\r\n"};

constexpr std::int32_t kPathAccessError = 75;  // the number under which such faults are known

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
               "NumberedList " + std::to_string(static_cast<std::int32_t>(step)) + " - " +
                   std::to_string(kPathAccessError) + " :" + reason,
               process.sLogFile, false);
}

}  // namespace

bool AddSpaceToTextFileIfNecessary(std::string& sText) {
    if (!sText.starts_with('{'))
        return false;
    sText.insert(0, 1, ' ');
    return true;
}

void RemoveFirstSpaceOfRichTextBox(Editor& oRichText) {
    if (oRichText.Length() > 0)
        oRichText.Replace({CharPos{0}, 1}, u"");
}

void DeleteEmptyLinesFromText(std::u16string& text) {
    std::size_t kept = 0;
    std::size_t begin = 0;
    while (begin < text.size()) {
        std::size_t end = std::min(text.find_first_of(u"\r\n", begin), text.size());
        const std::size_t first = text.find_first_not_of(u" \t", begin);
        const bool empty = first == std::u16string::npos || first >= end;
        if (end < text.size())
            end += text.compare(end, 2, u"\r\n") == 0 ? 2U : 1U;
        if (!empty) {
            std::copy(text.begin() + static_cast<std::ptrdiff_t>(begin),
                      text.begin() + static_cast<std::ptrdiff_t>(end),
                      text.begin() + static_cast<std::ptrdiff_t>(kept));
            kept += end - begin;
        }
        begin = end;
    }
    text.resize(kept);
}

void NumberWithoutEmptyLines(std::u16string_view text, std::vector<BesideItem>& beside) {
    std::vector<std::int32_t> numbers;  // by the number of the line
    std::int32_t number = 1;
    for (std::size_t begin = 0; !beside.empty() && begin < text.size();) {
        std::size_t end = std::min(text.find_first_of(u"\r\n", begin), text.size());
        const std::size_t first = text.find_first_not_of(u" \t", begin);
        numbers.push_back(number);
        if (first < end)
            ++number;
        if (end < text.size())
            end += text.substr(end, 2) == u"\r\n" ? 2U : 1U;
        begin = end;
    }
    for (BesideItem& item : beside) {
        if (item.paragraph > 0)
            item.paragraph = item.paragraph <= std::ssize(numbers)
                                 ? numbers[static_cast<std::size_t>(item.paragraph - 1)]
                                 : number;
    }
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

bool HasNumberedListOrEmptyLines(std::string_view rtf, bool bRemoveBlankLines) {
    return rtf.find(kNumbering) != std::string_view::npos ||
           (bRemoveBlankLines && (rtf.find(kParagraphEnds[0]) != std::string_view::npos ||
                                  rtf.find(kParagraphEnds[1]) != std::string_view::npos));
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
    // Kept: plain replacement, so each word that begins so is spoilt, and its text is skipped.
    ReplaceStringFromText(text, kNumbering, "\\pzn");
    if (options.bRemoveBlankLines.Data()) {
        // Kept: the end of every paragraph that stands at a line end of the file goes, so the
        // paragraphs of a file written that way are joined.
        for (const std::string_view paragraph_end : kParagraphEnds)
            ReplaceStringFromText(text, paragraph_end, "");
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
