// The encoding in which the bytes of a file are to be read, guessed with uchardet where no mark
// tells.
#include <algorithm>
#include <array>
#include <uchardet/uchardet.h>

#include "common/base/text_bytes.h"
#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

constexpr std::size_t kGuessedHead = std::size_t{256} * 1024;

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

DetectedEncoding DetectEncoding(std::string_view bytes, std::string_view locale_encoding) {
    for (const BomRow& row : kBoms) {
        if (bytes.starts_with(row.bytes))
            return {row.name, row.bytes.size()};
    }
    if (const std::string utf16 = GuessUtf16(bytes); !utf16.empty())
        return {utf16, 0};
    if (IsValidUtf8(bytes))
        return {"UTF-8", 0};
    if (const std::string guess = GuessByContent(bytes); !guess.empty() && HasConverter(guess))
        return {guess, 0};
    const std::string locale(locale_encoding);
    if (!locale.empty() && ToUpper(locale) != "UTF-8" && HasConverter(locale))
        return {locale, 0};
    return {"windows-1252", 0};
}

bool LooksLikeUtf16(std::string_view bytes) {
    const bool marked = bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF");
    return marked || !GuessUtf16(bytes).empty();
}

}  // namespace zorvane
