// Where the lines of a text end.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace zorvane {

/// The places of all line ends (a line feed, or the break inside a paragraph), kept through edits.
/// Those in front of the last edit count from the text's begin, those behind it to its end, so an
/// edit moves the ones between it and the last edit. Nothing is known until `Build`.
class LineEnds {
  public:
    bool Known() const { return known_; }
    void Forget();
    void Build(std::span<const std::u16string_view> pieces);
    /// `removed` units gave way to `text`. Nothing to do as long as nothing is known.
    void Replaced(std::int32_t first, std::int32_t removed, std::u16string_view text);

    std::int32_t Count() const { return static_cast<std::int32_t>(front_.size() + back_.size()); }
    /// How many there are in front of a position.
    std::int32_t CountBefore(std::int32_t position) const;
    /// The place of one, 0-based.
    std::int32_t At(std::int32_t number) const;

  private:
    void PushAll(std::u16string_view text, std::int32_t first);

    std::vector<std::int32_t> front_;
    std::vector<std::int32_t> back_;  // units from there to the text's end; the nearest is the last
    std::int32_t length_ = 0;         // of the text
    bool known_ = false;
};

}  // namespace zorvane
