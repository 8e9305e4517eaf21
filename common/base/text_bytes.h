// UTF-8 byte by byte, and what else the files share that turn bytes into text.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zorvane {

/// Length of the run of ASCII at the start.
std::size_t AsciiRun(std::string_view bytes);
constexpr bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}
/// Bytes of the character that `bytes` begin with; 0 where they begin with none: in names of files
/// some may be no UTF-8.
std::size_t FirstCharacter(std::string_view bytes);
/// Characters of UTF-8, not bytes.
inline std::int32_t CountUtf8(std::string_view text) {
    return static_cast<std::int32_t>(
        std::count_if(text.begin(), text.end(), [](char byte) { return !IsContinuation(byte); }));
}
/// One character, at most 0x10FFFF and no surrogate.
void AppendUtf8(char32_t code, std::string& out);
/// Whether text of that encoding can be decoded.
bool HasConverter(const std::string& encoding);

}  // namespace zorvane
