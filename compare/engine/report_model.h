// A comparison as the report writers get it: with names, title and look.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/result.h"
#include "common/base/run_watcher.h"
#include "common/base/surrogates.h"
#include "compare/engine/comparison.h"
#include "compare/engine/document_look.h"
#include "compare/engine/engine_report.h"

namespace zorvane {

struct ReportModel {
    const Comparison& comparison;  ///< borrowed
    std::string title{};           ///< empty: none
    PerSide<std::string> names{};
    PerSide<std::string> dates{};  ///< when the files were written; empty: not known
    bool high_detail = false;      ///< counts of words and letters too
    ReportLook look{};
    UnchangedText unchanged = UnchangedText::Fitting;
    PerSide<const DocumentLook*> document_looks{};  ///< borrowed; nullptr: plain text
    std::uint32_t file_mode = 0666;  ///< of the file it is written to, see `ReplaceFile`
    RunWatcher* watcher = nullptr;   ///< a writer that it stopped leaves half a text or fails
};

/// What a record is, for people: "Change at paragraph 3", "Addition of 2 paragraphs behind
/// paragraph 7", "2 paragraphs moved to paragraph 12".
std::string DescribeRecord(const Comparison& comparison, std::size_t record);

/// "1 change", "3 changes".
std::string CountText(std::int64_t count, std::string_view singular, std::string_view plural);

/// "No differences.", or "5 differences: 3 changes, 1 addition, 1 deletion." A move counts as one
/// and not as what it leaves and makes: "..., 1 move."
std::string SummaryText(const Comparison& comparison);

/// What a compare comes to, in one honest sentence or two: "The files are identical.", "No
/// differences in the words. Beside the words: ...", or the counts and what lies beside them.
std::string VerdictText(const Comparison& comparison);

/// One difference beside the words, for a list: "link target changed, paragraph 3: old -> new".
std::string DescribeBeside(const BesideNote& note);

/// One of the two places of a move, for people: "paragraph 12", "paragraphs 12 to 14".
std::string MovedPlace(const Comparison& comparison, const Move& move, Side side);

/// Records between two looks for a stop.
inline constexpr std::int64_t kBetweenStops = 32;

/// Units of text between two looks for a stop, and how many of them a record counts for.
inline constexpr std::int64_t kUnitsBetweenStops = 1 << 16;
inline constexpr std::int64_t kUnitsOfRecord = kUnitsBetweenStops / kBetweenStops;

/// Calls `write` for parts of a text that may be long, until the watcher stops it. What belongs
/// together, a surrogate pair or CR LF, stays in one part.
template <class Write>
void WriteInParts(std::u16string_view text, StopCheck& stop, const Write& write) {
    constexpr std::size_t kPart = 1 << 14;
    while (text.size() > kPart && !stop.Stopped()) {
        const char16_t last = text[kPart - 1];
        const bool half = last == u'\r' || IsHighSurrogate(last);
        const std::size_t size = half ? kPart - 1 : kPart;
        write(text.substr(0, size));
        text.remove_prefix(size);
        stop.KeepGoing(static_cast<std::int64_t>(size));
    }
    if (stop.KeepGoing(static_cast<std::int64_t>(text.size())))
        write(text);
}

/// The reason of a report that was stopped.
inline constexpr std::string_view kReportStopped = "stopped";

/// Takes a page in parts, so that a large one is nowhere whole in memory.
using PageTarget = std::function<Status(std::string_view)>;

std::string WriteHtmlReport(const ReportModel& model, std::int32_t style);
Status WriteHtmlReport(const ReportModel& model, std::int32_t style, const PageTarget& target);
std::string WriteTextReport(const ReportModel& model);
std::string WriteCsvReport(const ReportModel& model);

/// Writes one of the three whole to a new file and renames it.
Status WriteEngineReport(const ReportModel& model, const std::string& file, ReportType type,
                         std::int32_t style);

}  // namespace zorvane
