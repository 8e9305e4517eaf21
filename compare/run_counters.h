// What a run counts at its three levels.
#pragma once

#include "compare/engine/difference_counts.h"

namespace zorvane {

struct RunCounters {
    DifferenceCounts document;
    DifferenceCounts section;
    DifferenceCounts character;
    friend bool operator==(const RunCounters&, const RunCounters&) = default;
};

}  // namespace zorvane
