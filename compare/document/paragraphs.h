// The paragraphs of an editor's text by number, with position changes that wait.
#pragma once

#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

#include "common/base/number.h"
#include "common/base/run_watcher.h"

namespace zorvane {

struct clsParagraph {
    CharPos FirstChar;  ///< 0-based index of the first character
    CharPos
        LastChar;  ///< just behind the break; for the last paragraph, behind the text's own break
    friend bool operator==(const clsParagraph&, const clsParagraph&) = default;
};

/// The list is built from a text and is stale after any edit that it is not told of. Looking up
/// a paragraph costs a constant.
class Paragraphs {
  public:
    /// One paragraph for each line feed, and a last one behind it, which may be empty. After a stop
    /// the last one is all the rest.
    void Build(std::u16string_view text) { Build({&text, 1}); }
    /// Of a text that lies in pieces.
    void Build(std::span<const std::u16string_view> pieces, RunWatcher* watcher = nullptr);
    void Clear();
    std::int32_t Count() const { return static_cast<std::int32_t>(list_.size()); }
    bool Has(ParagraphNumber number) const { return number.value >= 1 && number.value <= Count(); }
    /// Only when `Has(number)`.
    const clsParagraph& At(ParagraphNumber number) const {
        return list_[static_cast<std::size_t>(number.value - 1)];
    }
    void SetLastChar(ParagraphNumber number, CharPos last);
    /// The text was edited: `removed` units at `first` gave way to `inserted` others. No paragraph
    /// comes or goes; what is put in at a paragraph's begin is of it. Costs by the paragraphs
    /// behind.
    void Replaced(CharPos first, std::int32_t removed, std::int32_t inserted);

    /// Keeps a change of length in front of paragraph `number`. A second change there replaces the
    /// first; one at the last paragraph or behind it is dropped, since nothing lies behind.
    void AddDelta(ParagraphNumber number, std::int32_t delta);
    /// Moves paragraph i by the sum of the changes 1 to i, in one pass. The changes are kept.
    void Adjust();

  private:
    std::vector<clsParagraph> list_;
    std::vector<std::int32_t> deltas_;  // a slot for each number, 0 to the count
};

}  // namespace zorvane
