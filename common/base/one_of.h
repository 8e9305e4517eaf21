// Whether a word is one of a list that is written out.
#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace zorvane {

template <std::size_t kCount>
constexpr bool IsOneOf(std::string_view word, const std::array<std::string_view, kCount>& words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

}  // namespace zorvane
