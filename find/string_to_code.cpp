#include "find/string_to_code.h"

namespace zorvane {
namespace {

constexpr std::string_view kAnd = " & ";

void ReplaceAll(std::string& text, std::string_view from, std::string_view to) {
    for (std::size_t at = text.find(from); at != std::string::npos;
         at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

std::string ControlCode(unsigned char code) {
    switch (code) {
        case 0:
            return "vbNullChar & ";
        case '\t':
            return "  ";
        case '\n':
            return "<LF> & ";
        case '\r':
            return "<CR>& ";  // Kept: without a blank in front, so that it stays at the end
        default:
            return "Chr$(" + std::to_string(code) + ") & ";
    }
}

}  // namespace

std::string StringToCode(std::string_view sText) {
    std::string code;
    bool quoted = false;
    for (const char character : sText) {
        const auto byte = static_cast<unsigned char>(character);
        if (byte < ' ') {
            if (quoted)
                code.append("\"") += kAnd;
            quoted = false;
            code += ControlCode(byte);
            continue;
        }
        if (!quoted)
            code += '"';
        quoted = true;
        code += character;
        if (character == '"')
            code += '"';
    }
    if (quoted)
        code += '"';
    else if (code.ends_with(kAnd))
        code.resize(code.size() - kAnd.size());
    ReplaceAll(code, "vbCr & vbLf", "vbCrLf");
    return code.empty() ? "\"\"" : code;
}

CodePlace PlaceInCode(std::string_view line, std::size_t begin, std::string_view item) {
    // What stands between the literal of what lies before and that of the item is no letter of it.
    const std::size_t before = begin == 0 ? 0 : StringToCode(line.substr(0, begin)).size() - 1;
    std::string code = StringToCode(item);
    if (code.ends_with('"'))
        code.pop_back();
    if (code.starts_with('"'))
        code.erase(0, 1);
    const std::size_t at = code.empty() ? std::string::npos : StringToCode(line).find(code, before);
    if (at == std::string::npos)
        return {};
    return {static_cast<std::int32_t>(at), static_cast<std::int32_t>(code.size())};
}

}  // namespace zorvane
