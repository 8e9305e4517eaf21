// The marks of a difference, and the two effects that a selection's plain properties lack.
#pragma once

#include <cstdint>

#include "compare/document/editor.h"
#include "options/marking_styles.h"

namespace zorvane {

/// Background colour and kind of underline of an editor's selection.
class ClsAPIHighlight {
  public:
    void AssignControls(Editor& editor) { editor_ = &editor; }
    void APIHighlight(Color color);        ///< 0 is black, not a removal
    void APIUnderline(std::uint8_t type);  ///< a number of `Underline`; others do nothing

  private:
    Editor* editor_ = nullptr;
};

/// A whole mark on a range in one pass: colour, bold, underline (double), strikeout, italic,
/// background. The selection stays where it is.
void ApplyMark(Editor& editor, TextRange range, const MarkStyle& mark);

}  // namespace zorvane
