// Lines to dense numbers: two lines have the same number when their keys are the same bytes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zorvane {

/// Hashes by XXH3 and verifies by bytes, so a collision costs time and never a wrong result. Keys
/// are only borrowed: each must stay where it is until `Clear`.
class LineTable {
  public:
    /// Forgets the old keys and makes ready for at most `lines` new ones; the table grows by what
    /// is distinct, so that many equal lines stay in the processor's cache.
    void Clear(std::size_t lines);
    std::uint32_t NumberOf(std::string_view key);
    std::uint32_t Count() const { return static_cast<std::uint32_t>(keys_.size()); }

  private:
    struct Slot {
        std::uint32_t tag = 0;
        std::uint32_t number_plus_one = 0;  // 0: free
    };
    void Grow();

    std::vector<Slot>
        slots_;  // half full at the most; a line's place is its tag, so growing needs no key
    std::vector<std::string_view> keys_;  // the first line of each number
    std::size_t mask_ = 0;
};

}  // namespace zorvane
