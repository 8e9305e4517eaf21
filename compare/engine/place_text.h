// The text at the place of a difference.
#pragma once

#include <cstddef>
#include <string_view>

#include "compare/engine/comparison.h"

namespace zorvane {

/// `text` is that of the paragraphs whose places these are.
inline std::u16string_view TextAt(const DetailPlace& place, std::u16string_view text) {
    return text.substr(static_cast<std::size_t>(place.begin),
                       static_cast<std::size_t>(place.Length()));
}

}  // namespace zorvane
