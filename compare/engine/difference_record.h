// One difference between two line files.
#pragma once

#include <cstdint>

namespace zorvane {

/// The codes are the letters "a", "c" and "d".
enum class DifferenceType : std::int32_t { Addition = 97, Change = 99, Deletion = 100 };

/// Lines are 1-based; 0 is the place before the first line. Records ascend in both files and do not
/// overlap.
struct DifferenceRecord {
    DifferenceType type = DifferenceType::Change;
    std::int32_t first_original = 0;  ///< for an addition: the line behind which the lines belong
    std::int32_t last_original = 0;   ///< for an addition: equal to `first_original`
    std::int32_t first_modified = 0;  ///< for a deletion: the line behind which the lines stood
    std::int32_t last_modified = 0;   ///< for a deletion: equal to `first_modified`

    std::int32_t OriginalCount() const {
        return type == DifferenceType::Addition ? 0 : last_original - first_original + 1;
    }
    std::int32_t ModifiedCount() const {
        return type == DifferenceType::Deletion ? 0 : last_modified - first_modified + 1;
    }
    friend bool operator==(const DifferenceRecord&, const DifferenceRecord&) = default;
};

}  // namespace zorvane
