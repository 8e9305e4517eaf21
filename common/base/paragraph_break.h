// What parts the paragraphs of an editor's text, and stands once more behind the last.
#pragma once

#include <cstdint>
#include <string_view>

namespace zorvane {

inline constexpr std::u16string_view kBreak = u"\r\n";
inline constexpr std::int32_t kBreakLength = 2;

}  // namespace zorvane
