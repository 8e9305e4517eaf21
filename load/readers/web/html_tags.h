// Classes of HTML elements that the parser and the layout share.
#pragma once

#include <gumbo.h>
#include <string_view>

namespace zorvane {

/// What HTML takes for white space.
inline constexpr std::string_view kHtmlBlanks = " \t\n\f\r";
constexpr bool IsHtmlBlank(char character) {
    return kHtmlBlanks.find(character) != std::string_view::npos;
}

/// Shown on lines of their own.
bool IsBlockTag(GumboTag tag);
/// An open paragraph ends before them.
bool EndsParagraph(GumboTag tag);
/// Without content and end tag.
bool IsVoidTag(GumboTag tag);
/// Elements such as b and font, which go on behind a block that ends around them.
bool IsFormattingTag(GumboTag tag);
/// What they hold is no markup.
bool IsRawTag(GumboTag tag);
bool IsHeadingTag(GumboTag tag);
/// End tags inside do not close what is open outside.
bool IsScopeTag(GumboTag tag);

}  // namespace zorvane
