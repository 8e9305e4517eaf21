// Bytes in any encoding to text, with ICU where this system has no table of its own.
#include <algorithm>
#include <array>
#include <map>
#include <memory>
#include <unicode/ucnv.h>

#include "common/base/text_bytes.h"
#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

constexpr std::size_t kPart = std::size_t{1}
                              << 20;  // bytes that are decoded at once, an even number

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

// A character may begin in one part and end in the next.
void DecodePart(UConverter* converter, std::string_view part, bool last, std::u16string& text) {
    const char* source = part.data();
    const char* const source_end = source + part.size();
    std::size_t filled = text.size();
    text.resize(filled + part.size() + 8);
    while (true) {
        char16_t* target = text.data() + filled;
        UErrorCode error = U_ZERO_ERROR;
        ucnv_toUnicode(converter, &target, text.data() + text.size(), &source, source_end, nullptr,
                       static_cast<UBool>(last), &error);
        filled = static_cast<std::size_t>(target - text.data());
        if (error != U_BUFFER_OVERFLOW_ERROR)
            break;
        text.resize(text.size() + part.size() + 8);
    }
    text.resize(filled);
}

std::u16string Decode(UConverter* converter, std::string_view bytes,
                      RunWatcher* watcher = nullptr) {
    std::u16string text;
    text.reserve(bytes.size() + 8);
    ucnv_reset(converter);
    do {
        const std::string_view part = bytes.substr(0, kPart);
        bytes.remove_prefix(part.size());
        DecodePart(converter, part, bytes.empty(), text);
    } while (!bytes.empty() && KeepGoing(watcher));
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

std::u16string DecodeUtf16(std::string_view bytes, bool big_endian) {
    std::u16string text(bytes.size() / 2, u'\0');
    for (std::size_t i = 0; i < text.size(); ++i) {
        const auto first = static_cast<unsigned char>(bytes[2 * i]);
        const auto second = static_cast<unsigned char>(bytes[2 * i + 1]);
        text[i] = static_cast<char16_t>(big_endian ? first << 8 | second : second << 8 | first);
    }
    return text;
}

// A part that ends with a character. It has three bytes behind its first one at most; where more
// follow they are none of its own.
std::size_t WholeUtf8(std::string_view bytes) {
    if (bytes.size() <= kPart)
        return bytes.size();
    for (std::size_t back = 0; back <= 3; ++back) {
        if (!IsContinuation(bytes[kPart - back]))
            return kPart - back;
    }
    return kPart;
}

// `decode` for one part after the other. `is_utf8`: it is not cut inside a character.
template <class DecodeOne>
std::u16string InParts(std::string_view bytes, bool is_utf8, RunWatcher* watcher,
                       const DecodeOne& decode) {
    if (bytes.size() <= kPart)
        return decode(bytes);
    std::u16string text;
    text.reserve(bytes.size());
    while (!bytes.empty() && KeepGoing(watcher)) {
        const std::size_t size = is_utf8 ? WholeUtf8(bytes) : std::min(kPart, bytes.size());
        text += decode(bytes.substr(0, size));
        bytes.remove_prefix(size);
    }
    return text;
}

}  // namespace

bool HasConverter(const std::string& encoding) {
    return OpenConverter(encoding) != nullptr;
}

std::u16string DecodeCodePage(std::string_view bytes, CodePage page) {
    if (AsciiRun(bytes) == bytes.size() || page.number == 1252)
        return DecodeWindows1252(bytes);
    if (page.number == 65001)
        return ToUtf16(bytes);
    UConverter* converter = ConverterOf(page);
    return converter == nullptr ? DecodeWindows1252(bytes) : Decode(converter, bytes);
}

std::u16string DecodeText(std::string_view bytes, const DetectedEncoding& encoding,
                          RunWatcher* watcher) {
    bytes.remove_prefix(std::min(encoding.bom_size, bytes.size()));
    if (encoding.name == "UTF-8")
        return InParts(bytes, true, watcher, ToUtf16);
    if (encoding.name == "UTF-16LE" || encoding.name == "UTF-16BE")
        return InParts(bytes, false, watcher, [&encoding](std::string_view part) {
            return DecodeUtf16(part, encoding.name == "UTF-16BE");
        });
    if (encoding.name != "windows-1252" && encoding.name != "WINDOWS-1252") {
        if (const Converter converter = OpenConverter(encoding.name))
            return Decode(converter.get(), bytes, watcher);
    }
    return InParts(bytes, false, watcher, DecodeWindows1252);
}

}  // namespace zorvane
