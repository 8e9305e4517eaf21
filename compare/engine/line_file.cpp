#include "compare/engine/line_file.h"

#include <algorithm>
#include <cstring>

namespace zorvane {

void LineFile::Split(std::string_view text) {
    text_ = text;
    starts_.clear();
    // More than prose needs: memory that is not touched costs nothing, moving a grown list does.
    constexpr std::size_t kShortLine = 8;
    starts_.reserve(text.size() / kShortLine + 2);
    starts_.push_back(0);
    const char* const begin = text.data();
    const char* const end = begin + text.size();
    const char* at = begin;
    while (at < end) {
        const auto* feed =
            static_cast<const char*>(std::memchr(at, '\n', static_cast<std::size_t>(end - at)));
        if (feed == nullptr)
            break;
        at = feed + 1;
        if (feed > begin && feed[-1] == '\r')
            starts_.push_back(static_cast<std::uint32_t>(at - begin));
    }
    if (starts_.back() != text.size())
        starts_.push_back(static_cast<std::uint32_t>(text.size()));
}

std::int32_t LineFile::CountWithin(std::size_t bytes) const {
    const auto behind = std::upper_bound(starts_.begin(), starts_.end(), bytes);
    return static_cast<std::int32_t>(behind - starts_.begin()) - 1;
}

}  // namespace zorvane
