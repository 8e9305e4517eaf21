#include <algorithm>

#include "common/base/ascii.h"
#include "load/readers/markdown/markdown_lines.h"

namespace zorvane {
namespace {

std::size_t SkipName(std::string_view text, std::size_t at, std::string_view more) {
    while (at < text.size() && (IsAsciiLetter(text[at]) || IsAsciiDigit(text[at]) ||
                                more.find(text[at]) != std::string_view::npos))
        ++at;
    return at;
}

// Behind "= value"; where it was without one, and `std::string_view::npos` for a broken one.
std::size_t SkipTagValue(std::string_view text, std::size_t at) {
    const std::size_t equals = std::min(text.find_first_not_of(kMarkdownBlanks, at), text.size());
    if (equals >= text.size() || text[equals] != '=')
        return at;
    const std::size_t from =
        std::min(text.find_first_not_of(kMarkdownBlanks, equals + 1), text.size());
    const char quote = from < text.size() ? text[from] : '\0';
    if (quote != '"' && quote != '\'') {
        const std::size_t end = std::min(text.find_first_of(" \t\r\n\"'=<>`", from), text.size());
        return end == from ? std::string_view::npos : end;
    }
    const std::size_t end = text.find(quote, from + 1);
    return end == std::string_view::npos ? std::string_view::npos : end + 1;
}

}  // namespace

std::size_t HtmlTagEnd(std::string_view text) {
    char quote = 0;
    for (std::size_t at = 1; at < text.size(); ++at) {
        const char character = text[at];
        if (quote != 0)
            quote = character == quote ? '\0' : quote;
        else if (character == '"' || character == '\'')
            quote = character;
        else if (character == '>')
            return at;
    }
    return std::string_view::npos;
}

bool IsHtmlTag(std::string_view inner) {
    if (inner.starts_with('!') || inner.starts_with('?'))
        return true;
    const bool closing = inner.starts_with('/');
    if (inner.ends_with('/'))
        inner.remove_suffix(1);
    inner.remove_prefix(closing && !inner.empty() ? 1 : 0);
    if (inner.empty() || !IsAsciiLetter(inner[0]))
        return false;
    std::size_t at = SkipName(inner, 0, "-");
    while (at < inner.size()) {
        const std::size_t name =
            std::min(inner.find_first_not_of(kMarkdownBlanks, at), inner.size());
        if (name == inner.size())
            return true;
        const std::size_t end = SkipName(inner, name, "_:.-");
        if (name == at || end == name || closing)
            return false;
        at = SkipTagValue(inner, end);
    }
    return at == inner.size();
}

}  // namespace zorvane
