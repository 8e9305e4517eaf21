// What an engine report is asked for: the vocabulary that the engine and its report writers share.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "common/base/mark_style.h"
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
    NotCompared = -6,  ///< both files are there; the reason was told: a bad expression
    TargetNotWritten = -21
};

/// How much of what did not change a page holds.
enum class UnchangedText {
    Fitting,  ///< folded; left out, with its count told, where it would make the page too large
    All,      ///< open
    Folded,   ///< folded, whatever the size
    None      ///< only the paragraphs beside differences
};

/// The user's marks; as here where the user chose nothing.
struct ReportLook {
    MarkStyle addition{.ForeColor = 0x008000, .bBold = true, .bUnderline = true};
    MarkStyle deletion{.ForeColor = 0xFF0000, .bBold = true, .bStrikeout = true};
    MarkStyle change_original{.ForeColor = 0x0000FF, .bBold = true, .bStrikeout = true};
    MarkStyle change_modified{.ForeColor = 0x0000FF, .bBold = true, .bUnderline = true};
    /// Additions and deletions inside a changed paragraph look like changes of the Modified side.
    bool similar_sub_paragraph_marks = false;
    friend bool operator==(const ReportLook&, const ReportLook&) = default;
};

}  // namespace zorvane
