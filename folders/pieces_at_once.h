// How much of a written list is held before it goes out.
#pragma once

#include <cstddef>

namespace zorvane {

inline constexpr std::size_t kBytesAtOnce = std::size_t{1} << 16;

}  // namespace zorvane
