// What somebody looks at while a compare goes on.
#pragma once

#include <cstdint>

namespace zorvane {

/// Paragraphs of the Original by their 0-based numbers, `end` behind the last one.
struct ParagraphsInSight {
    std::int32_t begin = 0;
    std::int32_t end = 0;
    friend bool operator==(const ParagraphsInSight&, const ParagraphsInSight&) = default;
};

}  // namespace zorvane
