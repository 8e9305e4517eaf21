// Which paragraphs of a rich text are headings.
#pragma once

#include <cstddef>
#include <vector>

#include "common/base/number.h"
#include "compare/document/rich_text.h"

namespace zorvane {

/// Units; a paragraph that is longer is read as text, however it looks.
inline constexpr std::size_t kLongestHeading = 240;

/// Where they begin, ascending: short paragraphs in letters that are larger than most of the text,
/// or bold where most is not. None in a text of one format. The cost is that of the formats and of
/// the letters that stand out, not of the text.
std::vector<CharPos> HeadingPlaces(const RichText& text);

}  // namespace zorvane
