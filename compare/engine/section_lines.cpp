#include "compare/engine/section_lines.h"

#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

constexpr std::string_view kLineEnd = "\r\n";

bool EndsSectionLine(char16_t unit) {
    return unit == u' ' || unit == u'\n' || unit == 11 || unit == 7;
}

bool IsHighSurrogate(char16_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}
bool IsLowSurrogate(char16_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

}  // namespace

void AppendSectionLines(std::u16string_view text, std::string& out) {
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (!EndsSectionLine(text[at]))
            continue;
        AppendUtf8(text.substr(begin, at + 1 - begin), out);
        out += kLineEnd;
        begin = at + 1;
    }
    if (begin == text.size())
        return;
    AppendUtf8(text.substr(begin), out);
    out += kLineEnd;
}

void AppendCharacterLines(std::u16string_view text, std::string& out) {
    // The mark tells the second half of a pair from the first, and the doubled one from both.
    const auto append_line = [&](std::size_t at, char mark) {
        const bool low = IsLowSurrogate(text[at]) && at > 0 && IsHighSurrogate(text[at - 1]);
        const bool high =
            IsHighSurrogate(text[at]) && at + 1 < text.size() && IsLowSurrogate(text[at + 1]);
        if (low)
            out += mark;
        AppendUtf8(text.substr(low ? at - 1 : at, low || high ? 2 : 1), out);
        out += kLineEnd;
    };
    for (std::size_t at = 0; at < text.size(); ++at)
        append_line(at, '\1');
    // Kept: the last character stands twice.
    if (!text.empty())
        append_line(text.size() - 1, '\2');
}

void FindSectionEnds(std::u16string_view text, std::vector<std::int32_t>& ends) {
    ends.clear();
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (EndsSectionLine(text[at]) || text[at] == u'\r')
            ends.push_back(static_cast<std::int32_t>(at) + 1);
    }
    const auto size = static_cast<std::int32_t>(text.size());
    if (size > 0 && (ends.empty() || ends.back() != size))
        ends.push_back(size);
}

CharacterRange WholeCharacters(std::u16string_view text, CharacterRange range) {
    const auto is_low = [&](std::int32_t number) {
        return number >= 1 && number <= static_cast<std::int32_t>(text.size()) &&
               IsLowSurrogate(text[static_cast<std::size_t>(number - 1)]);
    };
    if (is_low(range.first) && is_low(range.last + 1))
        return {range.first - 1, range.last - 1};
    return range;
}

}  // namespace zorvane
