// A text with a gap at the place of the last edit.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zorvane {

/// Replacing at a place costs by its distance from the last edit and the lengths touched;
/// amortized, since the gap grows with the text.
class GapText {
  public:
    std::int32_t Length() const {
        return static_cast<std::int32_t>(buffer_.size() - (gap_end_ - gap_begin_));
    }
    void Assign(std::u16string text);
    std::vector<std::u16string_view> Pieces(std::int32_t first, std::int32_t length) const;
    /// Moves the text out.
    std::u16string TakeAll();
    std::u16string Take(std::int32_t first, std::int32_t length) const;
    char16_t At(std::int32_t position) const {
        const auto at = static_cast<std::size_t>(position);
        return buffer_[at < gap_begin_ ? at : at + (gap_end_ - gap_begin_)];
    }
    void Replace(std::int32_t first, std::int32_t length, std::u16string_view text);
    /// Position of the next end of a line (a line feed, or the break inside a paragraph) at or
    /// behind `from` and in front of `before`, or -1.
    std::int32_t NextLineEnd(std::int32_t from, std::int32_t before) const;
    /// Position of the last end of a line in front of `before`, or -1.
    std::int32_t LastLineEnd(std::int32_t before) const;

  private:
    void MoveGap(std::size_t place);
    void GrowGap(std::size_t wanted);

    std::u16string buffer_;
    std::size_t gap_begin_ = 0;
    std::size_t gap_end_ = 0;
};

}  // namespace zorvane
