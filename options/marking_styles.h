// How the four kinds of difference are marked.
#pragma once

#include "common/base/mark_style.h"

namespace zorvane {

class clsCompareFileOptions;

enum class Mark { Addition, Deletion, ChangeOriginal, ChangeModified };

MarkStyle StyleFor(const clsCompareFileOptions& options, Mark mark);
/// The style of an addition or deletion inside a changed paragraph: that of a change of the
/// modified side under `bShowSubParagraphChangesSimilarly`.
MarkStyle SubParagraphStyleFor(const clsCompareFileOptions& options, Mark mark);

}  // namespace zorvane
