#include "common/base/json_text.h"

#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

void AppendHex(char byte, std::string& out) {
    constexpr const char* kDigits = "0123456789abcdef";
    const auto value = static_cast<unsigned char>(byte);
    out += kDigits[value >> 4];
    out += kDigits[value & 0xF];
}

}  // namespace

void AppendJsonEscaped(std::string_view text, std::string& out) {
    for (std::size_t at = 0; at < text.size(); ++at) {
        const char character = text[at];
        const auto byte = static_cast<unsigned char>(character);
        if (character == '"' || character == '\\') {
            out.append({'\\', character});
        } else if (byte < 0x20 || byte == 0x7F) {
            out += "\\u00";
            AppendHex(character, out);
        } else if (text.substr(at, 2) == "\u00A0") {
            out += "\\u00a0";
            ++at;
        } else {
            out += character;
        }
    }
}

void AppendJsonString(std::string_view text, std::string& out) {
    out += '"';
    if (IsValidUtf8(text))
        AppendJsonEscaped(text, out);
    else
        AppendJsonEscaped(ToUtf8(ToUtf16(text)), out);
    out += '"';
}

void AppendJsonPath(std::string_view field, std::string_view path, std::string& out) {
    out.append("\"").append(field).append("\":");
    AppendJsonString(path, out);
    if (IsValidUtf8(path))
        return;
    out.append(",\"").append(field).append("_bytes\":\"");
    for (const char character : path)
        AppendHex(character, out);
    out += '"';
}

}  // namespace zorvane
