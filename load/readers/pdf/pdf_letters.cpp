#include "load/readers/pdf/pdf_letters.h"

#include <array>
#include <cstdint>

#include "common/base/text_bytes.h"

namespace zorvane {
namespace {

constexpr std::array<std::u32string_view, 7> kLatin = {U"ff",  U"fi", U"fl", U"ffi",
                                                       U"ffl", U"st", U"st"};
constexpr std::array<std::u32string_view, 5> kArmenian = {
    U"\u0574\u0576", U"\u0574\u0565", U"\u0574\u056B", U"\u057E\u0576", U"\u0574\u056D"};

constexpr std::string_view kSoftHyphen = "\xC2\xAD";

// Only these bytes begin what is changed.
bool IsOfInterest(char byte) {
    return byte == '\xEF' || byte == '\xC2' || byte == '\xE2';
}

std::size_t NextOfInterest(std::string_view text, std::size_t from) {
    while (from < text.size() && !IsOfInterest(text[from]))
        ++from;
    return from;
}

bool IsDirectionMark(std::string_view three) {
    // U+200E, U+200F and U+202A to U+202E.
    return three == "\xE2\x80\x8E" || three == "\xE2\x80\x8F" ||
           (three.size() == 3 && three.starts_with("\xE2\x80") && three[2] >= '\xAA' &&
            three[2] <= '\xAE');
}

char32_t ThreeByteCharacter(std::string_view three) {
    const auto bits = [&](std::size_t index) { return static_cast<unsigned char>(three[index]); };
    return (char32_t{bits(0)} & 0x0F) << 12 | (char32_t{bits(1)} & 0x3F) << 6 |
           (char32_t{bits(2)} & 0x3F);
}

// Appends what stands for the character at `at`, and gives the bytes that it took.
std::size_t Replace(std::string_view text, std::size_t at, std::string& result) {
    const std::string_view rest = text.substr(at);
    if (rest.starts_with(kSoftHyphen)) {
        if (rest.size() > 2 && rest[2] == '\n')
            return 3;
        result += '-';
        return 2;
    }
    if (rest.size() >= 3 && rest[0] != '\xC2') {
        if (IsDirectionMark(rest.substr(0, 3)))
            return 3;
        const std::u32string_view letters = LettersOfLigature(ThreeByteCharacter(rest));
        for (const char32_t letter : letters)
            AppendUtf8(letter, result);
        if (!letters.empty())
            return 3;
    }
    result += rest[0];
    return 1;
}

}  // namespace

std::u32string_view LettersOfLigature(char32_t character) {
    if (character >= 0xFB00 && character <= 0xFB06)
        return kLatin[character - 0xFB00];
    if (character >= 0xFB13 && character <= 0xFB17)
        return kArmenian[character - 0xFB13];
    return {};
}

void PlainLetters(std::string& text, std::size_t start) {
    std::size_t at = NextOfInterest(text, start);
    if (at == text.size())
        return;
    std::string result;
    result.reserve(text.size() - at + 16);
    const std::size_t first = at;
    while (at < text.size()) {
        at += Replace(text, at, result);
        const std::size_t next = NextOfInterest(text, at);
        result.append(text, at, next - at);
        at = next;
    }
    text.replace(first, std::string::npos, result);
}

}  // namespace zorvane
