#include "compare/engine/line_table.h"

#include <algorithm>
#include <bit>
#include <xxhash.h>

namespace zorvane {

void LineTable::Clear(std::size_t lines) {
    // Half full at the most.
    const std::size_t size = std::bit_ceil(std::max<std::size_t>(lines * 2, 16));
    if (slots_.size() < size)
        slots_.resize(size);
    std::fill_n(slots_.begin(), size, Slot{});
    mask_ = size - 1;
    keys_.clear();
}

std::uint32_t LineTable::NumberOf(std::string_view key) {
    const std::uint64_t hash = XXH3_64bits(key.data(), key.size());
    const auto tag = static_cast<std::uint32_t>(hash >> 32);
    std::size_t at = hash & mask_;
    while (slots_[at].number_plus_one != 0) {
        const Slot& slot = slots_[at];
        if (slot.tag == tag && keys_[slot.number_plus_one - 1] == key)
            return slot.number_plus_one - 1;
        at = (at + 1) & mask_;
    }
    keys_.push_back(key);
    slots_[at] = {tag, static_cast<std::uint32_t>(keys_.size())};
    return static_cast<std::uint32_t>(keys_.size() - 1);
}

}  // namespace zorvane
