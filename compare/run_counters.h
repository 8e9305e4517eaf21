// What a run counts at its three levels.
#pragma once

#include <cstdint>

namespace zorvane {

struct LevelCounters {
    std::int32_t changes = 0;
    std::int32_t additions = 0;
    std::int32_t deletions = 0;
    friend bool operator==(const LevelCounters&, const LevelCounters&) = default;
};

struct RunCounters {
    LevelCounters document;
    LevelCounters section;
    LevelCounters character;
    friend bool operator==(const RunCounters&, const RunCounters&) = default;
};

}  // namespace zorvane
