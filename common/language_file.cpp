#include "common/language_file.h"

#include "common/base/text_encoding.h"
#include "common/platform/files.h"

namespace zorvane {
namespace {

constexpr std::string_view kBetween = "\",\"";
constexpr std::string_view kUtf16Mark = "\xFF\xFE";

std::string_view WithoutMark(std::string_view bytes) {
    constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
    if (bytes.starts_with(kUtf8Mark))
        bytes.remove_prefix(kUtf8Mark.size());
    return bytes;
}

std::string Utf16Bytes(std::u16string_view text) {
    std::string bytes;
    bytes.reserve(text.size() * 2);
    for (const char16_t unit : text) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
}

}  // namespace

LanguageFileFormat GetFileFormat(const std::string& sPath) {
    const Result<std::string> bytes = ReadWholeFile(sPath);
    if (!bytes.ok())
        return LanguageFileFormat::Neither;
    if (WithoutMark(bytes.value()).starts_with('"'))
        return LanguageFileFormat::Ansi;
    const std::string_view text = bytes.value();
    if (text.starts_with(kUtf16Mark) && text.substr(2).starts_with(std::string_view("\"\0", 2)))
        return LanguageFileFormat::Unicode;
    return LanguageFileFormat::Neither;
}

bool EndsLanguageTable(std::string_view line) {
    return line.starts_with("\"****");
}

std::optional<LanguageEntry> ParseLanguageLine(std::string_view line) {
    if (Trim(line).empty() || line.starts_with("\"!"))
        return std::nullopt;
    const std::size_t between = line.find(kBetween);
    if (between == std::string_view::npos) {
        const std::string text(line.size() < 2 ? "" : line.substr(1, line.size() - 2));
        return LanguageEntry{text, text};
    }
    std::string_view rest = line.substr(between + kBetween.size());
    // Of several separators only the first two parts count; the last part loses its closing quote.
    const std::size_t second = rest.find(kBetween);
    if (second != std::string_view::npos)
        rest = rest.substr(0, second);
    else if (!rest.empty())
        rest.remove_suffix(1);
    return LanguageEntry{std::string(between == 0 ? "" : line.substr(1, between - 1)),
                         std::string(rest)};
}

Result<std::string> ReadLanguageFile(const std::string& path, LanguageFileFormat format) {
    Result<std::string> bytes = ReadWholeFile(path);
    if (!bytes.ok())
        return bytes;
    if (format == LanguageFileFormat::Unicode)
        return ToUtf8(DecodeText(bytes.value(), {"UTF-16LE", kUtf16Mark.size()}));
    const std::string text(WithoutMark(bytes.value()));
    return IsValidUtf8(text) ? text : ToUtf8(DecodeCodePage(text, CodePage{1252}));
}

bool CanStandInLanguageFile(std::string_view sEnglish) {
    const std::string text(sEnglish);
    const std::string line = "\"" + text + "\"";
    return text.find_first_of("\r\n") == std::string::npos && !EndsLanguageTable(line) &&
           ParseLanguageLine(line) == LanguageEntry{text, text};
}

Status AppendLanguageLine(const std::string& path, LanguageFileFormat format,
                          std::string_view sEnglish) {
    const Result<std::string> old = ReadWholeFile(path);
    if (!old.ok())
        return old.failure();
    const std::string line = "\"" + std::string(sEnglish) + "\"\r\n";
    const bool unicode = format == LanguageFileFormat::Unicode;
    const auto in_file = [&](std::string_view text) {
        return unicode ? Utf16Bytes(ToUtf16(text)) : std::string(text);
    };
    const bool ended = old.value().empty() || old.value().ends_with(in_file("\n"));
    return AppendToFile(path, (ended ? "" : in_file("\r\n")) + in_file(line));
}

}  // namespace zorvane
