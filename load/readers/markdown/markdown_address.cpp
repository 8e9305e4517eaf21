#include "load/readers/markdown/markdown_address.h"

#include <algorithm>

#include "common/base/text_encoding.h"
#include "load/readers/markdown/markdown_lines.h"

namespace zorvane {
namespace {

// The address in front of a title, without its angle brackets and backslashes.
std::string AddressIn(std::string_view text) {
    text = Trim(text);
    const bool angles = text.starts_with('<');
    if (angles)
        text.remove_prefix(1);
    std::string address;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool escaped =
            text[at] == '\\' && at + 1 < text.size() &&
            std::string_view("()<>[]\\\"'*_#!").find(text[at + 1]) != std::string_view::npos;
        if (escaped) {
            address += text[++at];
            continue;
        }
        if (angles ? text[at] == '>' : kMarkdownBlanks.find(text[at]) != std::string_view::npos)
            break;
        address += text[at];
    }
    return address;
}

std::string AttributeOf(std::string_view address) {
    std::string value;
    for (const char character : address) {
        if (character == '"')
            value += "&quot;";
        else
            value += character;
    }
    return value;
}

}  // namespace

std::string MarkdownOpenTag(bool image, std::string_view own, std::string_view behind,
                            const MarkdownDefinitions& definitions) {
    std::string address;
    if (behind.starts_with('(')) {
        behind.remove_prefix(1);
        address = AddressIn(behind.substr(0, behind.rfind(')')));
    } else {
        std::string_view label = behind.size() > 2 ? behind.substr(1, behind.size() - 2) : own;
        const auto found = definitions.links.find(MarkdownLabel(label));
        if (found != definitions.links.end())
            address = AddressIn(found->second);
    }
    return (image ? "<img src=\"" : "<a href=\"") + AttributeOf(address) + "\">";
}

std::string MarkdownOpenTag(std::string_view address) {
    return "<a href=\"" + AttributeOf(address) + "\">";
}

}  // namespace zorvane
