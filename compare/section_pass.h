// Marks what changed inside one changed record: sections, and letters inside them.
#pragma once

#include <cstddef>

#include "compare/document/editor.h"
#include "compare/pass_context.h"

namespace zorvane {

/// What one record's paragraphs are marked in; the texts are those of the record, paragraphs joined
/// by breaks.
struct ChangeEditors {
    Editor& original;
    Editor& modified;
};

/// The old words stay marked in `original`, and the new ones are put in behind them; `modified` is
/// only read. False after an abort.
bool UpdateChangesToParagraphsRTF_AIO(PassContext& context, std::size_t record,
                                      const ChangeEditors& editors);
/// Both texts are marked in place. False after an abort.
bool UpdateChangesToParagraphsRTF_SBS(PassContext& context, std::size_t record,
                                      const ChangeEditors& editors);

}  // namespace zorvane
