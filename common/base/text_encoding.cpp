#include "common/base/text_encoding.h"

#include <algorithm>
#include <cstring>
#include <unicode/uchar.h>

#include "common/base/append_in_parts.h"
#include "common/base/surrogates.h"
#include "common/base/text_bytes.h"
#include "common/base/unit_search.h"

namespace zorvane {
namespace {

constexpr char16_t kReplacement = 0xFFFD;
constexpr std::int64_t kUnitsBetweenStops = 1 << 18;

struct Sequence {
    char32_t code_point = 0;
    std::size_t length = 0;  // 0: ill-formed
};

struct LeadRow {
    unsigned char mask;
    unsigned char bits;
    std::size_t length;
    char32_t smallest;
};
constexpr LeadRow kLeads[] = {
    {0xE0, 0xC0, 2, 0x80}, {0xF0, 0xE0, 3, 0x800}, {0xF8, 0xF0, 4, 0x10000}};

// One character beyond ASCII at the start of `bytes`; overlong forms and surrogates are ill-formed.
Sequence ReadSequence(std::string_view bytes) {
    const auto lead = static_cast<unsigned char>(bytes[0]);
    for (const LeadRow& row : kLeads) {
        if ((lead & row.mask) != row.bits)
            continue;
        if (bytes.size() < row.length)
            return {};
        char32_t code = lead & static_cast<unsigned char>(~row.mask);
        for (std::size_t i = 1; i < row.length; ++i) {
            if (!IsContinuation(bytes[i]))
                return {};
            code = (code << 6) | (static_cast<unsigned char>(bytes[i]) & 0x3F);
        }
        if (code < row.smallest || code > 0x10FFFF || IsSurrogate(code))
            return {};
        return {code, row.length};
    }
    return {};
}

char* PutUtf8(char32_t code, char* out) {
    const auto tail = [&](int shift) {
        *out++ = static_cast<char>(0x80 | ((code >> shift) & 0x3F));
    };
    if (code < 0x80) {
        *out++ = static_cast<char>(code);
    } else if (code < 0x800) {
        *out++ = static_cast<char>(0xC0 | (code >> 6));
        tail(0);
    } else if (code < 0x10000) {
        *out++ = static_cast<char>(0xE0 | (code >> 12));
        tail(6);
        tail(0);
    } else {
        *out++ = static_cast<char>(0xF0 | (code >> 18));
        tail(12);
        tail(6);
        tail(0);
    }
    return out;
}

// The character at `at`, which moves behind it.
char32_t NextCodePoint(std::u16string_view text, std::size_t& at) {
    const char16_t unit = text[at++];
    if (!IsHighSurrogate(unit) && !IsLowSurrogate(unit))
        return unit;
    if (IsLowSurrogate(unit) || at == text.size() || !IsLowSurrogate(text[at]))
        return kReplacement;
    return OfSurrogates(unit, text[at++]);
}

}  // namespace

std::size_t FirstCharacter(std::string_view bytes) {
    if (bytes.empty())
        return 0;
    return static_cast<unsigned char>(bytes.front()) < 0x80 ? 1 : ReadSequence(bytes).length;
}

constexpr std::uint64_t kHighBits = 0x8080808080808080U;

// Found eight bytes at a time.
std::size_t AsciiRun(std::string_view bytes) {
    std::size_t at = 0;
    while (at + 8 <= bytes.size()) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes.data() + at, 8);
        if ((word & kHighBits) != 0)
            break;
        at += 8;
    }
    while (at < bytes.size() && static_cast<unsigned char>(bytes[at]) < 0x80)
        ++at;
    return at;
}

std::u16string ToUtf16(std::string_view utf8) {
    std::u16string out;
    out.reserve(utf8.size());
    while (!utf8.empty()) {
        const std::size_t run = AsciiRun(utf8);
        const std::size_t old = out.size();
        out.resize(old + run);
        std::transform(utf8.begin(), utf8.begin() + static_cast<std::ptrdiff_t>(run),
                       out.begin() + static_cast<std::ptrdiff_t>(old),
                       [](char byte) { return static_cast<char16_t>(byte); });
        utf8.remove_prefix(run);
        if (utf8.empty())
            break;
        const Sequence sequence = ReadSequence(utf8);
        AppendCodePoint(sequence.length == 0 ? kReplacement : sequence.code_point, out);
        utf8.remove_prefix(std::max<std::size_t>(sequence.length, 1));
    }
    return out;
}

void AppendUtf8(std::u16string_view utf16, std::string& out) {
    const std::size_t old = out.size();
    out.resize(old + 3 * utf16.size());  // a pair takes four bytes, which is less than twice three
    char* target = out.data() + old;
    std::size_t at = 0;
    while (at < utf16.size()) {
        if (utf16[at] < 0x80)
            *target++ = static_cast<char>(utf16[at++]);
        else
            target = PutUtf8(NextCodePoint(utf16, at), target);
    }
    out.resize(static_cast<std::size_t>(target - out.data()));
}

void AppendUtf8(char32_t code, std::string& out) {
    char bytes[4];
    out.append(bytes, PutUtf8(code, bytes));
}

std::string ToUtf8(std::u16string_view utf16, RunWatcher* watcher) {
    constexpr std::size_t kUnits = std::size_t{1} << 18;
    std::string out;
    if (utf16.size() > kUnits)
        out.reserve(utf16.size() + utf16.size() / 4);
    while (utf16.size() > kUnits && KeepGoing(watcher)) {
        const bool pair = utf16[kUnits - 1] >= 0xD800 && utf16[kUnits - 1] < 0xDC00;
        const std::size_t size = pair ? kUnits - 1 : kUnits;
        AppendUtf8(utf16.substr(0, size), out);
        utf16.remove_prefix(size);
    }
    AppendUtf8(utf16.substr(0, kUnits), out);
    return out;
}

bool IsValidUtf8(std::string_view bytes) {
    while (true) {
        bytes.remove_prefix(AsciiRun(bytes));
        if (bytes.empty())
            return true;
        const Sequence sequence = ReadSequence(bytes);
        if (sequence.length == 0)
            return false;
        bytes.remove_prefix(sequence.length);
    }
}

std::u16string NormalizeBreaks(std::u16string_view text, RunWatcher* watcher) {
    StopCheck stop(watcher, kUnitsBetweenStops);
    std::u16string out;
    out.reserve(text.size() + text.size() / 16);
    std::size_t begin = 0;
    while (true) {
        const std::size_t end = FindEitherUnit(text, u'\r', u'\n', begin);
        if (end == std::u16string_view::npos)
            break;
        if (!AppendInParts(text.substr(begin, end - begin), stop, out))
            return out;
        out.append(u"\r\n");
        const bool pair = text[end] == u'\r' && end + 1 < text.size() && text[end + 1] == u'\n';
        begin = end + (pair ? 2 : 1);
    }
    AppendInParts(text.substr(begin), stop, out);
    return out;  // and not what append() gives, which would be copied
}

std::u16string FoldCase(std::u16string_view text) {
    std::u16string out;
    out.reserve(text.size());
    std::size_t at = 0;
    while (at < text.size()) {
        if (text[at] < 0x80) {
            const char16_t unit = text[at++];
            out.push_back(unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit + 32) : unit);
            continue;
        }
        const char32_t code = NextCodePoint(text, at);
        AppendCodePoint(
            static_cast<char32_t>(u_foldCase(static_cast<UChar32>(code), U_FOLD_CASE_DEFAULT)),
            out);
    }
    return out;
}

namespace {

std::string Cased(std::string_view utf8, UChar32 (*change)(UChar32)) {
    const std::u16string text = ToUtf16(utf8);
    std::u16string out;
    std::size_t at = 0;
    while (at < text.size()) {
        const char32_t code = NextCodePoint(text, at);
        AppendCodePoint(static_cast<char32_t>(change(static_cast<UChar32>(code))), out);
    }
    return ToUtf8(out);
}

}  // namespace

std::string ToUpper(std::string_view utf8) {
    return Cased(utf8, u_toupper);
}

std::string ToLower(std::string_view utf8) {
    return Cased(utf8, u_tolower);
}

std::string_view Trim(std::string_view text) {
    constexpr std::string_view kBlank = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlank);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlank) - first + 1);
}

}  // namespace zorvane
