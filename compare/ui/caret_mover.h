// Where the caret goes by each key, as the eye sees the text.
#pragma once

#include <cstdint>
#include <optional>

#include "compare/ui/view_page.h"

namespace zorvane {

enum class CaretMove : std::uint8_t {
    Left,
    Right,
    WordLeft,
    WordRight,
    LineUp,
    LineDown,
    PageUp,
    PageDown,
    LineStart,
    LineEnd,
    ParagraphUp,
    ParagraphDown,
    TextStart,
    TextEnd
};

/// Left and right are those of the window, also in text that runs from right to left.
class CaretMover {
  public:
    explicit CaretMover(ViewPage& page) : page_(page) {}

    struct Target {
        CharPos place;
        std::optional<double> wanted_x;  ///< to be kept for the next step up or down
    };
    /// Page moves scroll the page.
    Target Go(CaretMove move, const TextSelection& from);

    /// The word, or the run of blanks or signs, at a position.
    TextRange WordAt(CharPos position) const;
    /// The paragraph at a position, with its break.
    TextRange ParagraphAt(CharPos position) const;

  private:
    CharPos Step(CharPos from, bool right);
    CharPos WordStep(CharPos from, bool right);
    CharPos LineStep(CharPos from, bool down, double x);
    CharPos PageStep(CharPos from, bool down, double x);
    CharPos LineEdge(CharPos from, bool end);
    CharPos ParagraphStep(CharPos from, bool down);
    /// The block behind or in front that is not folded; -1 at the text's end.
    std::int32_t Neighbour(std::int32_t block, bool behind) const;
    CharPos EndOf(std::int32_t block);
    std::u16string TextAround(const Block& block) const;

    ViewPage& page_;
};

}  // namespace zorvane
