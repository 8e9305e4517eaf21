// The small records that the steps of pairing hand to each other. Places are 0-based.
#pragma once

#include <cstdint>

namespace zorvane {

/// `length` equal lines, from these places on; or lines of which each is surely the partner of the
/// other side's, though not equal.
struct EqualRun {
    std::int32_t first = 0;
    std::int32_t second = 0;
    std::int32_t length = 0;
    bool only_alike = false;
    friend bool operator==(const EqualRun&, const EqualRun&) = default;
};

/// A stretch of both sides; the ends are behind the last place.
struct PlaceRange {
    std::int32_t first_begin = 0;
    std::int32_t first_end = 0;
    std::int32_t second_begin = 0;
    std::int32_t second_end = 0;
    std::int32_t FirstCount() const { return first_end - first_begin; }
    std::int32_t SecondCount() const { return second_end - second_begin; }
    bool Empty() const { return FirstCount() == 0 && SecondCount() == 0; }
    friend bool operator==(const PlaceRange&, const PlaceRange&) = default;
};

}  // namespace zorvane
