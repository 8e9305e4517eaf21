// How many differences there are at one level.
#pragma once

#include <cstdint>

#include "compare/engine/difference_record.h"

namespace zorvane {

struct DifferenceCounts {
    std::int32_t changes = 0;
    std::int32_t additions = 0;
    std::int32_t deletions = 0;
    void Add(DifferenceType type) {
        ++(type == DifferenceType::Addition   ? additions
           : type == DifferenceType::Deletion ? deletions
                                              : changes);
    }
    std::int32_t All() const { return changes + additions + deletions; }
    friend bool operator==(const DifferenceCounts&, const DifferenceCounts&) = default;
};

}  // namespace zorvane
