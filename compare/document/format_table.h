// Each format of a text once, by number.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "compare/document/rich_text.h"

namespace zorvane {

std::uint64_t HashOf(const CharFormat& format);
std::uint64_t HashOf(const ParagraphFormat& format);

/// Numbers formats from 0 on. A format stays until `Clear`, since an undo may bring it back.
template <class Format>
class FormatTable {
  public:
    void Clear() {
        formats_.clear();
        slots_.clear();
    }
    const Format& At(std::int32_t number) const {
        return formats_[static_cast<std::size_t>(number)];
    }
    std::int32_t NumberOf(const Format& format) {
        // Runs of the same format come in a row, and most texts have a handful of formats.
        if (last_ < formats_.size() && formats_[last_] == format)
            return static_cast<std::int32_t>(last_);
        last_ = formats_.size() < kLookThrough ? LookThrough(format) : LookUp(format);
        return static_cast<std::int32_t>(last_);
    }

  private:
    static constexpr std::size_t kLookThrough = 6;
    static constexpr std::int32_t kFree = -1;

    std::size_t LookThrough(const Format& format) {
        for (std::size_t number = 0; number < formats_.size(); ++number) {
            if (formats_[number] == format)
                return number;
        }
        formats_.push_back(format);
        return formats_.size() - 1;
    }
    std::size_t LookUp(const Format& format) {
        if (formats_.size() * 2 >= slots_.size())
            GrowSlots();
        std::int32_t& slot = SlotOf(format);
        if (slot == kFree) {
            slot = static_cast<std::int32_t>(formats_.size());
            formats_.push_back(format);
        }
        return static_cast<std::size_t>(slot);
    }
    std::int32_t& SlotOf(const Format& format) {
        std::size_t at = HashOf(format) % slots_.size();
        while (slots_[at] != kFree && !(At(slots_[at]) == format))
            at = (at + 1) % slots_.size();
        return slots_[at];
    }
    void GrowSlots() {
        slots_.assign(formats_.size() * 4 + 16, kFree);
        for (std::size_t number = 0; number < formats_.size(); ++number)
            SlotOf(formats_[number]) = static_cast<std::int32_t>(number);
    }

    std::vector<Format> formats_;
    std::vector<std::int32_t> slots_;  // by hash; used only above `kLookThrough` formats
    std::size_t last_ = 0;
};

}  // namespace zorvane
