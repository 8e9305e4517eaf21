// The text file that maps English to another language, a line a text.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "common/base/result.h"

namespace zorvane {

enum class LanguageFileFormat : std::int16_t { Ansi = 0, Unicode = -1, Neither = 99 };

/// By the file's first character, a double quote in one of the two forms. ANSI is read as UTF-8
/// where it is valid UTF-8.
LanguageFileFormat GetFileFormat(const std::string& sPath);

struct LanguageEntry {
    std::string english;
    std::string translation;
    friend bool operator==(const LanguageEntry&, const LanguageEntry&) = default;
};

/// One line: a pair, a lone text that is its own translation, or nothing (empty line, comment).
std::optional<LanguageEntry> ParseLanguageLine(std::string_view line);
/// The line behind which nothing of the file is read.
bool EndsLanguageTable(std::string_view line);

/// The whole file as UTF-8. Fails as a file fails.
Result<std::string> ReadLanguageFile(const std::string& path, LanguageFileFormat format);
/// Whether `sEnglish` reads back from a line of its own: it holds no line break and does not look
/// like a pair, a comment or the end of the table.
bool CanStandInLanguageFile(std::string_view sEnglish);
/// Appends `"sEnglish"` as a line.
Status AppendLanguageLine(const std::string& path, LanguageFileFormat format,
                          std::string_view sEnglish);

}  // namespace zorvane
