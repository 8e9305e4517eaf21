// Where a link or a picture of Markdown leads to.
#pragma once

#include <string>
#include <string_view>

#include "load/readers/markdown/markdown.h"

namespace zorvane {

/// The tag that opens a link, or the one of a picture. `own` is the text in the brackets; `behind`
/// what follows them up to the end of the link: "(address "title")", "[label]" or nothing.
std::string MarkdownOpenTag(bool image, std::string_view own, std::string_view behind,
                            const MarkdownDefinitions& definitions);
/// The tag of an address that stands for itself.
std::string MarkdownOpenTag(std::string_view address);

}  // namespace zorvane
