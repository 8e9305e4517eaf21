// The words of two files compared, as a Compare Files viewer would, without one.
#pragma once

#include <cstdint>
#include <string>

#include "common/base/run_watcher.h"
#include "common/base/side.h"
#include "compare/engine/engine_report.h"
#include "options/compare_file_options.h"
#include "options/compare_files_settings.h"
#include "options/recent_items.h"

namespace zorvane {

class ConversionService;
struct ProcessState;

/// The settings section of the first Compare Files viewer: what a user set there holds here too.
inline constexpr const char* kTextCheckSection = "1_CompareFile";

/// How all pairs of a run are compared and reported.
struct TextCheckOptions {
    clsCompareFileOptions options;
    CompareFilesSettings settings;
    clsMRU TextFileExtensions;
    bool find_moves = true;
    std::string title;     ///< of reports
    std::string log_file;  ///< what goes wrong is told there too; empty: nowhere
};
/// Of the section.
TextCheckOptions ReadTextCheckOptions(ProcessState& process);

enum class TextCheckEnd { Compared, Failed, Aborted };

struct TextCheck {
    TextCheckEnd end = TextCheckEnd::Aborted;
    std::int32_t changed = 0;  ///< records of paragraphs
    std::int32_t added = 0;
    std::int32_t deleted = 0;
    std::int32_t beside = 0;  ///< differences beside the words: pictures, links, ...
    std::string reason;       ///< why it failed, in a user's words; also of a report that did
    std::string report;       ///< the file that was written
    std::int32_t Differences() const { return changed + added + deleted; }
    friend bool operator==(const TextCheck&, const TextCheck&) = default;
};

struct TextPair {
    PerSide<std::string> files;
    std::string report;  ///< where its report goes; empty: none is wanted
    ReportType report_type = ReportType::Html;
};

/// A report is written only where the words differ. Never fails but by its result; what it shares
/// with other checks at work is `process` alone.
TextCheck CheckText(ProcessState& process, const TextCheckOptions& how, const TextPair& pair,
                    ConversionService& service, RunWatcher& watcher);

}  // namespace zorvane
