// What an engine report is asked for: the vocabulary that the engine and its report writers share.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "compare/engine/difference_record.h"

namespace zorvane {

enum class ReportType : std::int32_t { Html = 1, Text = 2, Csv = 3, Document = 4 };

/// 0 and above is success. Target: the folder or the file of a word-processor report.
enum class ReportResult : std::int32_t {
    Ok = 0,
    Aborted = -1,
    Busy = -2,
    MasterNotLoaded = -3,
    SourceNotLoaded = -4,
    TargetNotCreated = -5,
    TargetNotWritten = -21
};

/// How a difference is marked. Colours have red in the low byte.
struct ReportMark {
    std::int32_t fore_color = 0;
    std::int32_t back_color = 0xFFFFFF;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    bool strikeout = false;
    friend bool operator==(const ReportMark&, const ReportMark&) = default;
};

/// The user's marks, and how deep a changed paragraph is looked into.
struct ReportLook {
    ReportMark addition;
    ReportMark deletion;
    ReportMark change_original;
    ReportMark change_modified;
    /// Additions and deletions inside a changed paragraph look like changes of the Modified side.
    bool similar_sub_paragraph_marks = false;
    bool by_character = false;     ///< letters inside changed words
    bool filter_sections = false;  ///< the filter expression also holds inside a paragraph
    friend bool operator==(const ReportLook&, const ReportLook&) = default;
};

}  // namespace zorvane
