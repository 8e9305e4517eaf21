// The character pass: one changed run of sections, letter by letter.
#pragma once

#include "compare/pass_context.h"

namespace zorvane {

/// Compares the texts of the two character editors.
Status RunCharacterEngine(PassContext& context);

/// Merges the modified run into the original one, in `rtbOriginalDiffCharacterTemp`, and gives the
/// merged text. Both editors hold their run between two guard blanks, so that every letter has a
/// place in front of it.
RichText HighlightPerCharacter_AIO(PassContext& context);

struct MarkedRuns {
    RichText original;
    RichText modified;
};
/// Marks the letters in both runs, which have no guards.
MarkedRuns HighlightPerCharacter_SBS(PassContext& context);

}  // namespace zorvane
