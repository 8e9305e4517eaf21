// What a view paints on a paragraph besides its text: the difference it belongs to, the words that
// changed, the numbers in the gutter.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

#include "common/base/number.h"

namespace zorvane {

enum class MarkKind : std::uint8_t { None, Changed, Deleted, Added, Moved };
/// The second cue beside the colour.
enum class MarkLine : std::uint8_t { None, Strike, Underline, Dotted };

/// A stretch of a paragraph, counted from its begin, that is painted as a mark.
struct WordMark {
    std::int32_t first = 0;
    std::int32_t length = 0;
    MarkKind kind = MarkKind::None;
    MarkLine line = MarkLine::None;
    bool gap_behind = false;  ///< the new text follows at once: a little room keeps the two apart
    friend bool operator==(const WordMark&, const WordMark&) = default;
};

struct ParagraphMark {
    MarkKind kind = MarkKind::None;
    MarkLine line = MarkLine::None;  ///< of the whole paragraph: it stands on this side alone
    std::int32_t record = -1;        ///< index of the difference; paragraphs of one share it
    friend bool operator==(const ParagraphMark&, const ParagraphMark&) = default;
};

/// The view's only knowledge of a compare. Asked for the paragraphs in sight, at each layout and
/// paint, so answers must be cheap. Who changes them calls `RichTextView::MarksChanged`.
class MarkSource {
  public:
    MarkSource() = default;
    MarkSource(const MarkSource&) = default;
    MarkSource& operator=(const MarkSource&) = default;
    virtual ~MarkSource() = default;

    virtual ParagraphMark Of(ParagraphNumber paragraph) const = 0;
    /// Ascending, without overlap.
    virtual std::vector<WordMark> Words(ParagraphNumber paragraph) const = 0;
    /// Numbers in the gutter, 0 for none; a view with one column shows the first.
    virtual std::array<std::int32_t, 2> Numbers(ParagraphNumber paragraph) const {
        return {paragraph.value, 0};
    }
};

}  // namespace zorvane
