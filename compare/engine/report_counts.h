// How much a comparison found, as a reader counts: paragraphs and words.
#pragma once

#include <cstdint>
#include <string_view>

#include "compare/engine/comparison.h"

namespace zorvane {

struct ReportCounts {
    std::int64_t paragraphs_changed = 0;  ///< of the side that has more of them
    std::int64_t paragraphs_added = 0;    ///< without those that moved here
    std::int64_t paragraphs_deleted = 0;
    std::int64_t paragraphs_moved = 0;
    std::int64_t words_added = 0;  ///< in added, changed and moved paragraphs together
    std::int64_t words_deleted = 0;
    friend bool operator==(const ReportCounts&, const ReportCounts&) = default;
};

/// After a stop the counts are too small.
ReportCounts CountForReaders(const Comparison& comparison, RunWatcher* watcher = nullptr);

/// Words are parted by blanks, tabs, breaks and cell marks; a character of a script that is written
/// without blanks is a word of its own.
std::int64_t CountWords(std::u16string_view text);

}  // namespace zorvane
