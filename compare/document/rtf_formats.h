// What RTF's control words do to the formats of characters and paragraphs.
#pragma once

#include <cstdint>
#include <optional>

#include "compare/document/rich_text.h"
#include "compare/document/rtf_header.h"
#include "compare/document/rtf_tables.h"

namespace zorvane {

/// False when the word says nothing of characters. A word without a parameter switches on.
bool ApplyToChars(const RtfWord& word, std::optional<std::int32_t> parameter,
                  const RtfHeader& header, CharFormat& chars);
/// `next_tab` is the kind that the next place of a tab has. False when the word says nothing of
/// paragraphs.
bool ApplyToParagraph(const RtfWord& word, std::int32_t number, ParagraphFormat& paragraph,
                      TabKind& next_tab);

}  // namespace zorvane
