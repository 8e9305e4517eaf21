#include "compare/engine/html_markup.h"

#include <algorithm>
#include <array>

#include "common/base/surrogates.h"
#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

constexpr std::string_view kReplacement = "\xEF\xBF\xBD";

// Units that need no further look: nearly all.
constexpr std::array<bool, 0xA0> kPlain = [] {
    std::array<bool, 0xA0> plain{};
    for (std::size_t unit = 0x20; unit < 0x7F; ++unit)
        plain[unit] =
            std::string_view("&<>\"").find(static_cast<char>(unit)) == std::string_view::npos;
    plain[u'\t'] = true;
    return plain;
}();

bool IsPlain(char16_t unit) {
    return unit < kPlain.size() ? kPlain[unit] : unit < 0xFFFE;
}

void AppendControl(char16_t unit, std::string& out) {
    constexpr char16_t kPictures = 0x2400;
    constexpr char16_t kPictureOfDelete = 0x2421;
    if (unit >= 0x80) {
        out += kReplacement;
        return;
    }
    const char16_t picture =
        unit == 0x7F ? kPictureOfDelete : static_cast<char16_t>(kPictures + unit);
    AppendUtf8(std::u16string_view(&picture, 1), out);
}

void AppendEscape(char16_t unit, std::string& out) {
    switch (unit) {
        case u'&':
            out += "&amp;";
            return;
        case u'<':
            out += "&lt;";
            return;
        case u'>':
            out += "&gt;";
            return;
        case u'"':
            out += "&quot;";
            return;
        case u'\a':
            out += '\t';
            return;
        case u'\v':
        case u'\r':
        case u'\n':
            out += '\n';
            return;
        default:
            AppendControl(unit, out);
    }
}

}  // namespace

void AppendHtmlText(std::u16string_view text, std::string& out) {
    std::size_t begin = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (IsPlain(text[at]))
            continue;
        AppendUtf8(text.substr(begin, at - begin), out);
        AppendEscape(text[at], out);
        begin = at + 1;
    }
    AppendUtf8(text.substr(begin), out);
}

void AppendHtmlText(std::string_view utf8, std::string& out) {
    AppendHtmlText(ToUtf16(utf8), out);
}

std::u16string_view Excerpt(std::u16string_view text, std::size_t most) {
    std::size_t size = std::min({text.find(u'\r'), text.size(), most});
    if (size < text.size() && size > 0 && IsLowSurrogate(text[size]))
        --size;
    return text.substr(0, size);
}

}  // namespace zorvane
