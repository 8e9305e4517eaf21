// Text made safe for a page that is well formed as XML too.
#pragma once

#include <string>
#include <string_view>

namespace zorvane {

/// Markup made harmless; a cell mark becomes a tab, a line break in a paragraph a line feed, a
/// control character its picture, what is no character of a page the replacement character.
void AppendHtmlText(std::u16string_view text, std::string& out);
void AppendHtmlText(std::string_view utf8, std::string& out);

/// The first `most` units of the first paragraph; no surrogate pair is cut.
std::u16string_view Excerpt(std::u16string_view text, std::size_t most);

}  // namespace zorvane
