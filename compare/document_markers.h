// The document pass: records of paragraphs become marked text and the entries of the three
// summaries.
#pragma once

#include <string>

#include "compare/pass_context.h"
#include "compare/record_walker.h"

namespace zorvane {

/// The header line of a summary entry, such as "<<<2>>> Addition of 3 lines at paragraph (7) ".
/// Kept: the closing blank comes and goes as it does; readers of the summaries rely on it.
std::string EntryHeader(RunMonitor& monitor, RecordIndex index, const DifferenceRecord& record);

/// Builds `rtbAIODiff`: the original with the additions inserted. Its paragraph collection is
/// adjusted by the caller, at the end of the run.
WalkEnd UpdateChangesToRTFFileAIO(PassContext& context);

/// Marks the working copies `rtbOriginalDiff` and `rtbModifiedDiff`; their texts stay as they are.
WalkEnd UpdateChangesToRTFFile_SBS(PassContext& context);

}  // namespace zorvane
