#include "load/text_preparation.h"

#include <algorithm>
#include <chrono>

#include "common/base/ascii.h"
#include "common/base/text_encoding.h"
#include "common/log_message.h"
#include "common/platform/files.h"
#include "common/platform/services.h"
#include "common/process_state.h"
#include "compare/document/rtf_reader.h"
#include "load/file_types.h"
#include "options/compare_file_options.h"
#include "options/recent_items.h"

namespace zorvane {
namespace {

constexpr std::int32_t kLongestDelay = 20;  // seconds

constexpr std::string_view kNumbering = "\\pn";

constexpr std::int32_t kPathAccessError = 75;  // the number under which such faults are known

// Numbers of the steps, as the log names them.
enum class ListStep : std::int32_t { Open = 1, SecondOpen = 8 };

struct Line {
    std::size_t end;  // behind its break
    bool empty;
};

// The line or paragraph that begins there. A page's empty paragraph often holds a no-break space.
Line LineFrom(std::u16string_view text, std::size_t begin) {
    std::size_t end = std::min(text.find_first_of(u"\r\n", begin), text.size());
    const std::size_t first = text.find_first_not_of(u" \t\v\u00A0", begin);
    const bool empty = first == std::u16string_view::npos || first >= end;
    if (end < text.size())
        end += text.substr(end, 2) == u"\r\n" ? 2U : 1U;
    return {end, empty};
}

// Goes through the runs of a text, stretch by stretch, each of which is kept or not.
template <typename Run>
class RunCutter {
  public:
    explicit RunCutter(const std::vector<Run>& runs) : runs_(runs) {}
    void Take(std::int32_t length, std::vector<Run>* kept) {
        while (length > 0 && run_ < runs_.size()) {
            const std::int32_t part = std::min(length, runs_[run_].length - taken_);
            if (kept != nullptr)
                Keep(part, *kept);
            length -= part;
            taken_ += part;
            if (taken_ == runs_[run_].length) {
                ++run_;
                taken_ = 0;
            }
        }
    }

  private:
    void Keep(std::int32_t part, std::vector<Run>& kept) const {
        if (!kept.empty() && kept.back().format == runs_[run_].format)
            kept.back().length += part;
        else
            kept.push_back({part, runs_[run_].format});
    }

    const std::vector<Run>& runs_;
    std::size_t run_ = 0;
    std::int32_t taken_ = 0;  // of that run
};

bool IsExcluded(const std::string& sFile, const clsMRU& extensions) {
    const std::string extension = UpperExtension(sFile);
    return extension == "C" ||
           ExtensionContains(sFile,
                             "JHTM XHTM HTM DAT ASP JS PHP VB VBS LOG MOD BAS FRM CPP XLS TXT") ||
           extensions.bItemExistsInMRU(extension, true);
}

void LogStep(RunTelling& telling, ListStep step, const std::string& reason) {
    LogMessage(telling,
               "NumberedList " + std::to_string(static_cast<std::int32_t>(step)) + " - " +
                   std::to_string(kPathAccessError) + " :" + reason,
               telling.manner.sLogFile, false);
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
        const Line line = LineFrom(text, begin);
        const std::size_t end = line.end;
        if (!line.empty) {
            std::copy(text.begin() + static_cast<std::ptrdiff_t>(begin),
                      text.begin() + static_cast<std::ptrdiff_t>(end),
                      text.begin() + static_cast<std::ptrdiff_t>(kept));
            kept += end - begin;
        }
        begin = end;
    }
    text.resize(kept);
}

void RemoveEmptyParagraphs(RichText& rich) {
    RichText kept;
    kept.text.reserve(rich.text.size());
    RunCutter chars(rich.char_runs);
    RunCutter paragraphs(rich.paragraph_runs);
    for (std::size_t begin = 0; begin < rich.text.size();) {
        const Line line = LineFrom(rich.text, begin);
        const auto length = static_cast<std::int32_t>(line.end - begin);
        if (!line.empty)
            kept.text.append(rich.text, begin, line.end - begin);
        chars.Take(length, line.empty ? nullptr : &kept.char_runs);
        paragraphs.Take(length, line.empty ? nullptr : &kept.paragraph_runs);
        begin = line.end;
    }
    rich = std::move(kept);
}

void NumberWithoutEmptyLines(std::u16string_view text, std::vector<BesideItem>& beside) {
    std::vector<std::int32_t> numbers;  // by the number of the line
    std::int32_t number = 1;
    for (std::size_t begin = 0; !beside.empty() && begin < text.size();) {
        const Line line = LineFrom(text, begin);
        numbers.push_back(number);
        if (!line.empty)
            ++number;
        begin = line.end;
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

bool HasNumberedList(std::string_view rtf) {
    return rtf.find(kNumbering) != std::string_view::npos;
}

RichText ReadFormatted(std::string_view bytes, bool remove_empty, std::vector<BesideItem>& beside,
                       RunWatcher* watcher) {
    RichText text = ReadRtf(bytes, beside, watcher);
    if (remove_empty && KeepGoing(watcher)) {
        NumberWithoutEmptyLines(text.text, beside);
        RemoveEmptyParagraphs(text);
    }
    return text;
}

void RemoveNumberedListAndEmptyLines(const StreamWait& wait, RunTelling& telling,
                                     clsCompareFileOptions& options, const clsMRU& extensions,
                                     const std::string& sTempFile, const std::string& sFile) {
    if (IsExcluded(sFile, extensions))
        return;
    std::string text;
    const Status read = OpenTextStreamWithDelay(wait, [&]() -> Status {
        Result<std::string> bytes = ReadWholeFile(sTempFile);
        if (!bytes.ok())
            return bytes.failure();
        text = std::move(bytes).value();
        return Status::Ok();
    });
    if (!read.ok()) {
        LogStep(telling, ListStep::Open, read.failure().reason);
        return;
    }
    if (!LooksLikeRtf(text))
        return;
    // Kept: plain replacement, so each word that begins so is spoilt, and its text is skipped.
    ReplaceStringFromText(text, kNumbering, "\\pzn");
    wait.clock.Sleep(std::chrono::seconds(options.lLoadDelay.Data()));
    const Status written =
        OpenTextStreamWithDelay(wait, [&] { return WriteWholeFile(sTempFile, text); });
    if (written.ok())
        return;
    // Whoever holds the file may let go of it later: the next load waits longer.
    if (options.lLoadDelay.Data() < kLongestDelay)
        options.lLoadDelay.SetData(options.lLoadDelay.Data() + 1);
    LogStep(telling, ListStep::SecondOpen, written.failure().reason);
}

bool bIsValidExtension(std::string& sText, const clsMRU& extensions) {
    sText = std::string(Trim(sText));
    std::erase_if(sText, [](char character) { return character == '-' || character == '_'; });
    const bool letters = std::all_of(sText.begin(), sText.end(), [](char character) {
        return IsAsciiDigit(character) || IsAsciiLetter(character);
    });
    return !sText.empty() && letters && !extensions.bItemExistsInMRU(sText, true);
}

}  // namespace zorvane
