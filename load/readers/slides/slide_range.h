// Which slides of a deck are read.
#pragma once

#include <cstddef>
#include <cstdint>

#include "load/readers/slides/slide_reader.h"

namespace zorvane {

struct SlideRange {
    std::int32_t first = 1;
    std::int32_t last = 0;  ///< less than `first`: none
};

/// Clipped to the deck; turned round when the ends are; 0 and 0 is all of it.
SlideRange RangeOf(const SlideOptions& options, std::int32_t count);

/// More text than this is no deck that somebody shows.
inline constexpr std::size_t kMostSlideText = std::size_t{128} << 20;

}  // namespace zorvane
