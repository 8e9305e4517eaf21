// The one walk over difference records, from the last to the first: an edit moves only what lies
// behind it, so the positions of what is still to come stay valid.
#pragma once

#include <cstdint>

#include "common/base/number.h"
#include "compare/engine/comparison.h"
#include "compare/run_monitor.h"

namespace zorvane {

/// What one level and view does with a record.
class RecordMarker {
  public:
    virtual ~RecordMarker() = default;
    virtual void Addition(RecordIndex index, const DifferenceRecord& record) = 0;
    virtual void Deletion(RecordIndex index, const DifferenceRecord& record) = 0;
    virtual void Change(RecordIndex index, const DifferenceRecord& record) = 0;
    /// What the walk is called.
    virtual RunStep Step() const = 0;
};

enum class WalkEnd { Finished, Aborted };

/// Asks in front of each record whether to go on.
WalkEnd WalkRecords(const Comparison& comparison, RecordMarker& marker, RunMonitor& monitor);

}  // namespace zorvane
