// Puts one side of a difference in the place of the other.
#pragma once

#include <cstdint>

#include "common/base/side.h"
#include "compare/document/block_index.h"
#include "compare/document/rich_document.h"
#include "compare/view/paragraph_rows.h"

namespace zorvane {

/// Both texts with the index of their paragraphs, borrowed.
struct CopyTexts {
    PerSide<RichDocument*> documents;
    PerSide<const BlockIndex*> indexes;
};

/// The paragraphs of a record, with their formats, from one side to the other; where that side has
/// none they go from the other as well. One step to undo. False when edits left nothing of it.
bool CopyOver(const ParagraphRows& rows, const CopyTexts& texts, std::int32_t record, Side from);

}  // namespace zorvane
