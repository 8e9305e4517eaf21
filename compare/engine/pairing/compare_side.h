// One side of a compare as pairing sees it: the lines that take part, and the key of each.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/run_watcher.h"
#include "compare/engine/line_filter.h"
#include "compare/engine/line_text.h"

namespace zorvane {

/// A place is the 0-based number of a line among those that take part; where nothing is left out
/// it is the line itself. Lines with equal keys are equal.
class CompareSide {
  public:
    /// All are borrowed. Keys are made for all lines at once when the filter changes lines. `words`
    /// filters what is cut into words, since a key without blanks has none to cut at; nullptr: the
    /// key is cut.
    void Prepare(const LineText& lines, const LineFilter& filter, bool leave_out_blank,
                 const LineFilter* words = nullptr);

    std::int32_t Count() const { return count_; }
    std::int32_t LineOf(std::int32_t place) const {
        return lines_of_.empty() ? place : lines_of_[static_cast<std::size_t>(place)];
    }
    std::string_view Key(std::int32_t place) const {
        if (keys_.empty())
            return lines_->Bytes(LineOf(place));
        return keys_[static_cast<std::size_t>(place)];
    }
    /// Bytes of a unit of the keys.
    std::size_t UnitSize() const { return keys_.empty() && lines_->IsWide() ? 2 : 1; }
    /// What is cut into words, in UTF-16; `buffer` holds it where it had to be decoded.
    std::u16string_view KeyText(std::int32_t place, std::u16string& buffer) const;
    /// Units of a stretch of places: how much there is to pair in it.
    std::int64_t Units(std::int32_t first, std::int32_t end) const;
    const LineText& Lines() const { return *lines_; }
    /// Who may stop whatever is done with this side; to be set before `Prepare`. Borrowed.
    void Watch(RunWatcher* watcher) { watcher_ = watcher; }
    RunWatcher* Watcher() const { return watcher_; }
    /// The lines that were left out; empty when none can be.
    std::vector<bool> LeftOut() const;

  private:
    const LineText* lines_ = nullptr;
    const LineFilter* words_ = nullptr;
    std::int32_t count_ = 0;
    std::vector<std::int32_t> lines_of_;
    std::vector<std::string> keys_;
    bool leaves_out_ = false;
    RunWatcher* watcher_ = nullptr;
};

}  // namespace zorvane
