// Copying large texts in a way that can be stopped.
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "common/base/run_watcher.h"

namespace zorvane {

/// False after a stop; then some of it is missing.
template <class Unit>
bool AppendInParts(std::basic_string_view<Unit> text, StopCheck& stop,
                   std::basic_string<Unit>& to) {
    constexpr std::size_t kPart = std::size_t{1} << 18;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t size = std::min(kPart, text.size() - at);
        if (!stop.KeepGoing(static_cast<std::int64_t>(size)))
            return false;
        to.append(text, at, size);
        at += size;
    }
    return !stop.Stopped();
}

}  // namespace zorvane
