// Text of which some bytes may be no UTF-8, as names of files are.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string_view>

#include "common/base/text_encoding.h"

namespace zorvane {

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
