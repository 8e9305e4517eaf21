#include "common/base/text_encoding.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <map>
#include <memory>
#include <uchardet/uchardet.h>
#include <unicode/uchar.h>
#include <unicode/ucnv.h>

#include "common/base/surrogates.h"
#include "common/base/unit_search.h"

namespace zorvane {
namespace {

constexpr char16_t kReplacement = 0xFFFD;
constexpr std::size_t kGuessedHead = std::size_t{256} * 1024;

// Windows-1252 where it differs from Latin-1: the bytes 80 to 9F.
constexpr std::array<char16_t, 32> kWindows1252 = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

struct ConverterCloser {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, ConverterCloser>;

Converter OpenConverter(const std::string& name) {
    UErrorCode error = U_ZERO_ERROR;
    Converter converter(ucnv_open(name.c_str(), &error));
    if (U_FAILURE(error))
        return nullptr;
    return converter;
}

// Opening a converter costs more than the few bytes that RTF decodes at a time, so each thread
// keeps those of the pages it has met.
UConverter* ConverterOf(CodePage page) {
    thread_local std::map<std::int32_t, Converter> kept;
    const auto found = kept.find(page.number);
    if (found != kept.end())
        return found->second.get();
    const std::string number = std::to_string(page.number);
    Converter converter = OpenConverter(page.number == 10000 ? "macintosh" : "ibm-" + number);
    if (page.number != 10000) {
        Converter windows = OpenConverter("windows-" + number);
        if (windows)
            converter = std::move(windows);
        else if (!converter)
            converter = OpenConverter("cp" + number);
    }
    return kept.emplace(page.number, std::move(converter)).first->second.get();
}

std::u16string Decode(UConverter* converter, std::string_view bytes) {
    std::u16string text;
    text.resize(bytes.size() + 8);
    UErrorCode error = U_ZERO_ERROR;
    const char* source = bytes.data();
    const char* const source_end = source + bytes.size();
    std::size_t filled = 0;
    ucnv_reset(converter);
    while (true) {
        char16_t* target = text.data() + filled;
        error = U_ZERO_ERROR;
        ucnv_toUnicode(converter, &target, text.data() + text.size(), &source, source_end, nullptr,
                       true, &error);
        filled = static_cast<std::size_t>(target - text.data());
        if (error != U_BUFFER_OVERFLOW_ERROR)
            break;
        text.resize(text.size() * 2);
    }
    text.resize(filled);
    return text;
}

std::u16string DecodeWindows1252(std::string_view bytes) {
    std::u16string text(bytes.size(), u'\0');
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        text[i] = byte >= 0x80 && byte < 0xA0 ? kWindows1252[byte - 0x80] : byte;
    }
    return text;
}

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

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

constexpr std::uint64_t kHighBits = 0x8080808080808080U;

// Length of the run of ASCII at the start, found eight bytes at a time.
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

std::u16string DecodeUtf16(std::string_view bytes, bool big_endian) {
    std::u16string text(bytes.size() / 2, u'\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto first = static_cast<unsigned char>(bytes[2 * i]);
        const auto second = static_cast<unsigned char>(bytes[2 * i + 1]);
        text[i] = static_cast<char16_t>(big_endian ? first << 8 | second : second << 8 | first);
    }
    return text;
}

struct BomRow {
    std::string_view bytes;
    const char* name;
};
constexpr BomRow kBoms[] = {{"\xEF\xBB\xBF", "UTF-8"},
                            {std::string_view("\xFF\xFE\0\0", 4), "UTF-32LE"},
                            {std::string_view("\0\0\xFE\xFF", 4), "UTF-32BE"},
                            {"\xFF\xFE", "UTF-16LE"},
                            {"\xFE\xFF", "UTF-16BE"}};

// Text in UTF-16 without a mark: every other byte is zero for nearly all of the head.
std::string GuessUtf16(std::string_view bytes) {
    const std::string_view head = bytes.substr(0, 4096);
    if (head.size() < 4 || bytes.size() % 2 != 0)
        return {};
    std::array<std::size_t, 2> zeros{};
    for (std::size_t i = 0; i < head.size(); ++i)
        zeros[i % 2] += head[i] == '\0' ? 1U : 0U;
    const std::size_t half = head.size() / 2;
    if (zeros[1] * 10 >= half * 9 && zeros[0] == 0)
        return "UTF-16LE";
    if (zeros[0] * 10 >= half * 9 && zeros[1] == 0)
        return "UTF-16BE";
    return {};
}

// Encodings of small reach, which the guesser names too often for a handful of accents or quotation
// marks of Western Europe, and the number of bytes beyond ASCII from which it is believed.
constexpr std::string_view kRareGuesses[] = {
    "IBM852",       "IBM855",      "IBM865",       "ISO-8859-2",   "ISO-8859-3",
    "ISO-8859-4",   "ISO-8859-10", "ISO-8859-13",  "ISO-8859-16",  "MAC-CENTRALEUROPE",
    "MAC-CYRILLIC", "VISCII",      "WINDOWS-1257", "WINDOWS-1258",
};
constexpr std::ptrdiff_t kBelievedFrom = 20;

bool IsGuessBelieved(std::string_view head, std::string_view name) {
    if (std::find(std::begin(kRareGuesses), std::end(kRareGuesses), name) == std::end(kRareGuesses))
        return true;
    return std::count_if(head.begin(), head.end(), [](char byte) {
               return static_cast<unsigned char>(byte) >= 0x80;
           }) >= kBelievedFrom;
}

// The part of a text that tells its encoding: from a little before the first byte beyond ASCII.
std::string_view TellingPart(std::string_view bytes) {
    constexpr std::size_t kContext = 4096;
    const std::size_t ascii = AsciiRun(bytes);
    return bytes.substr(ascii - std::min(ascii, kContext), kGuessedHead);
}

std::string GuessByContent(std::string_view bytes) {
    uchardet_t detector = uchardet_new();
    const std::string_view head = TellingPart(bytes);
    std::string name;
    if (uchardet_handle_data(detector, head.data(), head.size()) == 0) {
        uchardet_data_end(detector);
        name = uchardet_get_charset(detector);
    }
    uchardet_delete(detector);
    if (name == "UHC")  // the one library's name for what the other calls by its code page
        return "windows-949";
    if (name == "ISO-8859-1")  // the same but for control codes, for which no text has a use
        return "windows-1252";
    if (!IsGuessBelieved(head, name))
        return {};
    return name == "ASCII" || name == "UTF-8" ? std::string() : name;
}

}  // namespace

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

std::string ToUtf8(std::u16string_view utf16) {
    std::string out;
    AppendUtf8(utf16, out);
    return out;
}

std::size_t Utf8Length(std::u16string_view utf16) {
    std::size_t length = 0;
    std::size_t at = 0;
    while (at < utf16.size()) {
        const char32_t code = NextCodePoint(utf16, at);
        length += code < 0x80 ? 1U : code < 0x800 ? 2U : code < 0x10000 ? 3U : 4U;
    }
    return length;
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

std::u16string DecodeCodePage(std::string_view bytes, CodePage page) {
    if (AsciiRun(bytes) == bytes.size() || page.number == 1252)
        return DecodeWindows1252(bytes);
    if (page.number == 65001)
        return ToUtf16(bytes);
    UConverter* converter = ConverterOf(page);
    return converter == nullptr ? DecodeWindows1252(bytes) : Decode(converter, bytes);
}

std::optional<std::string> EncodeCodePage(std::u16string_view text, CodePage page) {
    UConverter* converter = ConverterOf(page);
    if (converter == nullptr)
        return std::nullopt;
    UErrorCode error = U_ZERO_ERROR;
    ucnv_setFromUCallBack(converter, UCNV_FROM_U_CALLBACK_STOP, nullptr, nullptr, nullptr, &error);
    std::string bytes(text.size() * 4 + 4, '\0');
    const std::int32_t size =
        ucnv_fromUChars(converter, bytes.data(), static_cast<std::int32_t>(bytes.size()),
                        text.data(), static_cast<std::int32_t>(text.size()), &error);
    if (U_FAILURE(error))
        return std::nullopt;
    bytes.resize(static_cast<std::size_t>(size));
    return bytes;
}

bool IsLeadByte(CodePage page, unsigned char lead) {
    switch (page.number) {
        case 932:
            return (lead >= 0x81 && lead <= 0x9F) || (lead >= 0xE0 && lead <= 0xFC);
        case 936:
        case 949:
        case 950:
            return lead >= 0x81 && lead <= 0xFE;
        case 1361:
            return (lead >= 0x84 && lead <= 0xD3) || (lead >= 0xD8 && lead <= 0xDE) ||
                   (lead >= 0xE0 && lead <= 0xF9);
        default:
            return false;
    }
}

DetectedEncoding DetectEncoding(std::string_view bytes, std::string_view locale_encoding) {
    for (const BomRow& row : kBoms) {
        if (bytes.starts_with(row.bytes))
            return {row.name, row.bytes.size()};
    }
    if (const std::string utf16 = GuessUtf16(bytes); !utf16.empty())
        return {utf16, 0};
    if (IsValidUtf8(bytes))
        return {"UTF-8", 0};
    if (const std::string guess = GuessByContent(bytes);
        !guess.empty() && OpenConverter(guess) != nullptr)
        return {guess, 0};
    const std::string locale(locale_encoding);
    if (!locale.empty() && ToUpper(locale) != "UTF-8" && OpenConverter(locale) != nullptr)
        return {locale, 0};
    return {"windows-1252", 0};
}

std::u16string DecodeText(std::string_view bytes, const DetectedEncoding& encoding) {
    bytes.remove_prefix(std::min(encoding.bom_size, bytes.size()));
    if (encoding.name == "UTF-8")
        return ToUtf16(bytes);
    if (encoding.name == "UTF-16LE" || encoding.name == "UTF-16BE")
        return DecodeUtf16(bytes, encoding.name == "UTF-16BE");
    if (encoding.name == "windows-1252" || encoding.name == "WINDOWS-1252")
        return DecodeWindows1252(bytes);
    const Converter converter = OpenConverter(encoding.name);
    return converter == nullptr ? DecodeWindows1252(bytes) : Decode(converter.get(), bytes);
}

bool LooksLikeUtf16(std::string_view bytes) {
    const bool marked = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
    return marked || !GuessUtf16(bytes).empty();
}

std::u16string NormalizeBreaks(std::u16string_view text) {
    std::u16string out;
    out.reserve(text.size() + text.size() / 16);
    std::size_t begin = 0;
    while (true) {
        const std::size_t end = FindEitherUnit(text, u'\r', u'\n', begin);
        if (end == std::u16string_view::npos)
            break;
        out.append(text.substr(begin, end - begin)).append(u"\r\n");
        const bool pair = text[end] == u'\r' && end + 1 < text.size() && text[end + 1] == u'\n';
        begin = end + (pair ? 2 : 1);
    }
    out.append(text.substr(begin));
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
