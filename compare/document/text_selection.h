// A selection with a direction, and the caret at its end.
#pragma once

#include <optional>

#include "compare/document/document_observer.h"
#include "compare/document/editor.h"

namespace zorvane {

/// Anchor and caret are always positions that the editor's `Clip` gives: never outside, never
/// between the CR and the LF of a break. As an observer of its document it moves with the edits of
/// others: text put in at the caret or at the selection's end stays outside.
class TextSelection : public DocumentObserver {
  public:
    /// The editor is borrowed. Who makes a selection of its own adds it to the document's
    /// observers; the one that a `RichDocument` holds is moved by it, before its observers hear.
    explicit TextSelection(const Editor& editor) : editor_(&editor) {}

    CharPos Anchor() const { return anchor_; }
    CharPos Caret() const { return caret_; }
    TextRange Range() const;
    bool Empty() const { return anchor_ == caret_; }

    /// Caret and anchor, at most at the text's end.
    void MoveTo(CharPos place);
    /// The caret alone, to the break behind the text at most.
    void ExtendTo(CharPos place);
    void Select(CharPos anchor, CharPos caret);
    void Select(TextRange range) { Select(range.first, range.end()); }

    /// Where the caret wants to be in its row, in the view's units, while it goes up and down.
    /// Every move of the caret forgets it, so it is set behind the move.
    std::optional<double> WantedX() const { return wanted_x_; }
    void SetWantedX(double x) { wanted_x_ = x; }

    void Replaced(CharPos first, std::int32_t removed, std::int32_t inserted) override;
    void Reformatted(CharPos first, std::int32_t length) override;
    /// Stays where it is as far as the new text reaches.
    void Reset() override;

  private:
    CharPos Clipped(CharPos place) const { return editor_->Clip({place, 0}).first; }

    const Editor* editor_;
    CharPos anchor_;
    CharPos caret_;
    std::optional<double> wanted_x_;
};

}  // namespace zorvane
