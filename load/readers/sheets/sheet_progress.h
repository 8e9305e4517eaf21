// The progress of sheets read one after another, of which nobody knows the rows in advance: it
// rises with each row and never reaches the next sheet's share.
#pragma once

#include <cstddef>
#include <cstdint>

#include "load/conversion_message.h"
#include "load/readers/reader.h"

namespace zorvane {

class SheetProgress : public ReadMonitor {
  public:
    /// `whole` is borrowed.
    SheetProgress(ReadMonitor& whole, std::size_t sheets)
        : whole_(whole), share_(kWholeProgress / static_cast<std::int64_t>(sheets)) {}

    void BeginNext() { begin_ = share_ * next_++; }
    /// `row` is all that a reader knows; what it takes for the total is passed over.
    bool Progress(std::int64_t row, std::int64_t /*total*/) override {
        constexpr std::int64_t kHalfWay = 20'000;  // rows, at which half of the share is told
        return whole_.Progress(begin_ + share_ * row / (row + kHalfWay), kWholeProgress);
    }

  private:
    ReadMonitor& whole_;
    std::int64_t share_;
    std::int64_t next_ = 0;
    std::int64_t begin_ = 0;
};

}  // namespace zorvane
