// What ends a paragraph of an editor's text.
#pragma once

#include <cstdint>
#include <string_view>

namespace zorvane {

inline constexpr std::u16string_view kBreak = u"\r\n";
inline constexpr std::int32_t kBreakLength = 2;

}  // namespace zorvane
