// The list of differences that a user moves in: a line of text for each record.
#pragma once

#include <string>
#include <vector>

#include "compare/pass_context.h"
#include "compare/viewer_window.h"

namespace zorvane {

/// The line of one record, with the first 100 characters of its first paragraph.
std::string DifferenceListLine(PassContext& context, RecordIndex index,
                               const DifferenceRecord& record);

/// The lines in ascending order; what is there when the run is aborted.
std::vector<std::string> DifferenceListLines(PassContext& context);

/// What the status bar says of the selected record.
std::string DifferenceStatus(ProcessState& process, RecordIndex index,
                             const DifferenceRecord& record);

/// Which buttons fit difference `current` (1-based) of `count`.
NavigationButtons NavigationFor(std::int32_t current, std::int32_t count);

}  // namespace zorvane
