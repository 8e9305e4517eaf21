#include "find/engine/word_edges.h"

#include <algorithm>
#include <cstdint>
#include <unicode/uchar.h>

#include "common/base/ascii.h"
#include "common/base/text_bytes.h"

namespace zorvane {
namespace {

bool IsWordCharacter(UChar32 code) {
    if (code < 0x80) {
        return IsAsciiDigit(code) || IsAsciiLetter(code) || code == '_';
    }
    constexpr std::uint32_t kParts = U_GC_M_MASK | U_GC_ND_MASK | U_GC_PC_MASK;
    return u_isUAlphabetic(code) != 0 || (U_GET_GC_MASK(code) & kParts) != 0;
}

bool Parts(UChar32 code, WordRule rule) {
    return rule == WordRule::Letters ? !IsWordCharacter(code) : u_isUWhiteSpace(code) != 0;
}

unsigned ByteAt(std::string_view bytes, std::size_t at) {
    return static_cast<unsigned char>(bytes[at]);
}

// The length of the character that begins there; 1 for a byte that is no UTF-8.
std::size_t LengthAt(std::string_view bytes, std::size_t at) {
    const unsigned lead = ByteAt(bytes, at);
    const std::size_t length = lead < 0xC2 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (lead > 0xF4 || at + length > bytes.size())
        return 1;
    for (std::size_t next = at + 1; next < at + length; ++next) {
        if (!IsContinuation(bytes[next]))
            return 1;
    }
    return length;
}

UChar32 Behind(std::string_view line, std::size_t at) {
    const std::size_t length = LengthAt(line, at);
    unsigned code = ByteAt(line, at);
    if (length > 1) {
        code &= 0x7FU >> length;
        for (std::size_t next = at + 1; next < at + length; ++next)
            code = (code << 6U) | (ByteAt(line, next) & 0x3FU);
    }
    return static_cast<UChar32>(code);
}

UChar32 Before(std::string_view line, std::size_t at) {
    constexpr std::size_t kLongest = 4;
    for (std::size_t back = 2; back <= std::min(at, kLongest); ++back) {
        if (LengthAt(line, at - back) == back)
            return Behind(line, at - back);
    }
    return static_cast<UChar32>(ByteAt(line, at - 1));
}

}  // namespace

bool StandsAsWord(std::string_view line, MatchSpan match, WordRule rule) {
    if (rule == WordRule::Any)
        return true;
    return (match.begin == 0 || Parts(Before(line, match.begin), rule)) &&
           (match.end >= line.size() || Parts(Behind(line, match.end), rule));
}

}  // namespace zorvane
