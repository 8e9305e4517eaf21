// The list of differences that a user moves in: a line of text for each record.
#pragma once

#include <optional>
#include <string>

#include "common/base/number.h"
#include "compare/engine/comparison.h"
#include "compare/view/translate_text.h"
#include "compare/viewer_window.h"

namespace zorvane {

/// A model for a list box: a line is made when somebody asks for it, so a list of 50,000 entries
/// costs nothing until it is unfolded. Indices are 0-based; every look-up is a constant or by
/// binary search.
class DifferenceList {
  public:
    /// The comparison is borrowed until the next `Show` or `Clear`.
    void Show(const Comparison& comparison, TranslateText translate);
    void Clear();

    std::int32_t Count() const;
    /// The line of a record, with the first 100 characters of its first paragraph; empty past the
    /// end.
    std::string Line(std::int32_t index) const;
    /// What the status bar says of it; empty past the end.
    std::string Status(std::int32_t index) const;
    /// The entry that is the fewest paragraphs away from one of either side, as it was compared;
    /// of two as near the first.
    std::optional<std::int32_t> Nearest(Side side, ParagraphNumber number) const;

  private:
    const DifferenceRecord* RecordAt(std::int32_t index) const;
    std::string Excerpt(const DifferenceRecord& record) const;

    const Comparison* comparison_ = nullptr;
    TranslateText translate_;
};

/// Which buttons fit difference `current` (1-based) of `count`.
NavigationButtons NavigationFor(std::int32_t current, std::int32_t count);

}  // namespace zorvane
