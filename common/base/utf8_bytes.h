// Text of which some bytes may be no UTF-8, as names of files are.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "common/base/text_encoding.h"

namespace zorvane {

/// Whether a byte of UTF-8 goes on with a character that an earlier byte began.
constexpr bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// Characters that `text` begins, whole or not.
inline std::int32_t CharactersIn(std::string_view text) {
    return static_cast<std::int32_t>(text.size()) -
           static_cast<std::int32_t>(std::count_if(text.begin(), text.end(), IsContinuation));
}

/// Bytes of the character that `bytes` begin with; 0 where they begin with none.
inline std::size_t FirstCharacter(std::string_view bytes) {
    constexpr std::size_t kLongest = 4;
    for (std::size_t length = 1; length <= std::min(kLongest, bytes.size()); ++length) {
        if (IsValidUtf8(bytes.substr(0, length)))
            return length;
    }
    return 0;
}

}  // namespace zorvane
