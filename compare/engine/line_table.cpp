#include "compare/engine/line_table.h"

#include <algorithm>
#include <bit>
#include <xxhash.h>

namespace zorvane {
namespace {

constexpr std::size_t kLeastSlots = 64;
constexpr std::size_t kMostSlotsAtFirst = std::size_t{1} << 16;  // what a processor's cache holds

}  // namespace

void LineTable::Clear(std::size_t lines) {
    const std::size_t size = std::bit_ceil(std::clamp(lines * 2, kLeastSlots, kMostSlotsAtFirst));
    slots_.assign(size, Slot{});
    mask_ = size - 1;
    keys_.clear();
    keys_.reserve(lines);
}

void LineTable::Grow() {
    const std::vector<Slot> old = std::move(slots_);
    slots_.assign(old.size() * 4, Slot{});
    mask_ = slots_.size() - 1;
    for (const Slot& slot : old) {
        if (slot.number_plus_one == 0)
            continue;
        std::size_t at = slot.tag & mask_;
        while (slots_[at].number_plus_one != 0)
            at = (at + 1) & mask_;
        slots_[at] = slot;
    }
}

std::uint32_t LineTable::NumberOf(std::string_view key) {
    const auto tag = static_cast<std::uint32_t>(XXH3_64bits(key.data(), key.size()));
    std::size_t at = tag & mask_;
    while (slots_[at].number_plus_one != 0) {
        const Slot& slot = slots_[at];
        if (slot.tag == tag && keys_[slot.number_plus_one - 1] == key)
            return slot.number_plus_one - 1;
        at = (at + 1) & mask_;
    }
    keys_.push_back(key);
    slots_[at] = {tag, static_cast<std::uint32_t>(keys_.size())};
    if (keys_.size() * 2 > slots_.size())
        Grow();
    return static_cast<std::uint32_t>(keys_.size() - 1);
}

}  // namespace zorvane
