#include "load/readers/web/html_references.h"

#include <array>
#include <gumbo.h>

#include "common/base/ascii.h"
#include "common/base/parse_number.h"
#include "common/base/surrogates.h"
#include "common/base/text_bytes.h"
#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

constexpr std::size_t kLongestName = 33;  // "CounterClockwiseContourIntegral" and a semicolon
constexpr std::size_t kMostNames = 100'000;

bool IsAlphanumeric(char character) {
    return IsAsciiDigit(character) || IsAsciiLetter(character);
}

void AppendText(const GumboNode& node, std::string& out) {
    if (node.type == GUMBO_NODE_TEXT || node.type == GUMBO_NODE_WHITESPACE)
        out += node.v.text.text;
}

// The parser's own table of names, asked by a page of one reference. An "x" in front keeps a
// reference to white space from being passed over.
std::string AskParser(std::string_view reference) {
    const std::string page = "x" + std::string(reference);
    GumboOutput* output = gumbo_parse_with_options(&kGumboDefaultOptions, page.data(), page.size());
    std::string text;
    const GumboVector& parts = output->root->v.element.children;
    for (unsigned part = 0; part < parts.length; ++part) {
        const auto* body = static_cast<const GumboNode*>(parts.data[part]);
        if (body->type != GUMBO_NODE_ELEMENT || body->v.element.tag != GUMBO_TAG_BODY)
            continue;
        for (unsigned child = 0; child < body->v.element.children.length; ++child)
            AppendText(*static_cast<const GumboNode*>(body->v.element.children.data[child]), text);
    }
    gumbo_destroy_output(&kGumboDefaultOptions, output);
    return text.empty() ? std::string(reference) : text.substr(1);
}

void AppendCode(std::uint32_t code, std::string& out) {
    if (code >= 0x80 && code <= 0x9F) {
        // Kept by every browser: such numbers mean the Windows code page.
        const char byte = static_cast<char>(code);
        AppendUtf8(DecodeCodePage(std::string_view(&byte, 1), CodePage{1252}), out);
        return;
    }
    const bool unknown = code == 0 || code > 0x10FFFF || IsSurrogate(code);
    AppendUtf8(char32_t{unknown ? 0xFFFD : code}, out);
}

}  // namespace

void HtmlReferences::Decode(std::string_view text, Place place, std::string& out) {
    while (!text.empty()) {
        const std::size_t plain = std::min(text.find('&'), text.size());
        out += text.substr(0, plain);
        text.remove_prefix(plain);
        if (text.empty())
            return;
        const bool number = text.size() > 1 && text[1] == '#';
        std::size_t used = number ? DecodeNumber(text, out) : DecodeName(text, place, out);
        if (used == 0) {
            out += '&';
            used = 1;
        }
        text.remove_prefix(used);
    }
}

std::size_t HtmlReferences::DecodeNumber(std::string_view text, std::string& out) {
    const bool hexadecimal = text.size() > 2 && (text[2] == 'x' || text[2] == 'X');
    const std::size_t mark = hexadecimal ? 3 : 2;
    const auto code = ReadNumber<std::uint32_t>(text.substr(mark), hexadecimal ? 16 : 10);
    if (code.size == 0)
        return 0;
    AppendCode(code.value.value_or(0), out);
    const std::size_t used = mark + code.size;
    return used < text.size() && text[used] == ';' ? used + 1 : used;
}

std::size_t HtmlReferences::DecodeName(std::string_view text, Place place, std::string& out) {
    struct Common {
        std::string_view reference;
        std::string_view text;
    };
    constexpr std::array<Common, 6> kCommon = {{{"&amp;", "&"},
                                                {"&nbsp;", "\u00A0"},
                                                {"&lt;", "<"},
                                                {"&gt;", ">"},
                                                {"&quot;", "\""},
                                                {"&apos;", "'"}}};
    for (const Common& common : kCommon) {
        if (text.starts_with(common.reference)) {
            out += common.text;
            return common.reference.size();
        }
    }
    std::size_t length = 1;
    while (length < text.size() && length < kLongestName && IsAlphanumeric(text[length]))
        ++length;
    if (length == 1)
        return 0;
    if (length < text.size() && text[length] == ';')
        ++length;
    if (place == Place::Value && StaysInValue(text.substr(0, length), text.substr(length)))
        return 0;
    out += LookUp(text.substr(0, length));
    return length;
}

// A name without a semicolon is none in front of more letters or of "=".
bool HtmlReferences::StaysInValue(std::string_view reference, std::string_view behind) {
    if (reference.ends_with(';'))
        return false;
    const std::string alone = LookUp(reference);
    return behind.starts_with('=') || alone != LookUp(std::string(reference) + ';');
}

const std::string& HtmlReferences::LookUp(std::string_view reference) {
    std::string key(reference);
    if (const auto found = known_.find(key); found != known_.end())
        return found->second;
    if (known_.size() >= kMostNames)
        known_.clear();
    std::string text = AskParser(reference);
    return known_.emplace(std::move(key), std::move(text)).first->second;
}

}  // namespace zorvane
