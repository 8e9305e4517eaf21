// From rich text to what a page shows of it.
#pragma once

#include "compare/document/rich_text.h"
#include "compare/engine/document_look.h"

namespace zorvane {

/// Bold and italic words, alignment, indents, and headings: short paragraphs in letters larger than
/// most of the text. Nothing for a text in one format.
DocumentLook LookOf(const RichText& text);

}  // namespace zorvane
