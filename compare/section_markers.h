// The section pass: which words of one changed stretch of paragraphs differ.
#pragma once

#include "compare/pass_context.h"

namespace zorvane {

/// Compares the texts of `rtbOriginalDiffTemp` and `rtbModifiedDiffTemp`, which both end in a guard
/// blank, so that their last words compare equal whatever followed them.
Status RunSectionEngine(PassContext& context);

/// Merges the modified words into `rtbAIODiffTemp`, which holds the original text without the
/// guard.
void UpdateChangesToParagraphsRTF_AIO(PassContext& context);

/// Marks the words in both editors; their texts stay as they are.
void UpdateChangesToParagraphsRTF_SBS(PassContext& context);

}  // namespace zorvane
