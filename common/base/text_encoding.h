// Text in and out of the two forms used inside: UTF-16 in editors, UTF-8 everywhere else. Bytes in
// a foreign encoding are decoded here and nowhere else. Uses ICU for code pages and uchardet to
// guess.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "common/base/result.h"
#include "common/base/run_watcher.h"

namespace zorvane {

/// Never fails: an ill-formed sequence becomes U+FFFD, an unpaired surrogate likewise.
std::u16string ToUtf16(std::string_view utf8);
std::string ToUtf8(std::u16string_view utf16, RunWatcher* watcher = nullptr);
/// Appends to `out` and so spares a copy; otherwise as `ToUtf8`.
void AppendUtf8(std::u16string_view utf16, std::string& out);

bool IsValidUtf8(std::string_view bytes);

/// One Windows code page (1252, 932, 65001, ...), as fonts and RTF headers name it.
struct CodePage {
    std::int32_t number = 1252;
    friend bool operator==(CodePage, CodePage) = default;
};

/// Decodes bytes of a code page. An unknown page is read as 1252; a byte without a meaning becomes
/// U+FFFD. Fast for the single-byte pages, since RTF calls it for a few bytes at a time.
std::u16string DecodeCodePage(std::string_view bytes, CodePage page);

/// The encoding in which the bytes of a text file are to be read.
struct DetectedEncoding {
    std::string name;          ///< IANA name, "UTF-8", "UTF-16LE", "windows-1252", ...
    std::size_t bom_size = 0;  ///< bytes to pass over
};

/// In this order: byte-order mark; valid UTF-8; a guess by content; the locale's encoding;
/// windows-1252. Only 256 KiB around the first byte beyond ASCII are guessed at, and a rare
/// encoding is not believed for a few such bytes.
DetectedEncoding DetectEncoding(std::string_view bytes, std::string_view locale_encoding);

/// A whole text file as UTF-16, byte-order mark removed, line ends as they stand. After a stop the
/// beginning of it, as of all that takes a watcher here.
std::u16string DecodeText(std::string_view bytes, const DetectedEncoding& encoding,
                          RunWatcher* watcher = nullptr);

/// True when the bytes begin with a UTF-16 byte-order mark, or look like UTF-16 without one.
bool LooksLikeUtf16(std::string_view bytes);

/// Every CR LF, lone LF and lone CR becomes CR LF, the one paragraph break of an editor.
std::u16string NormalizeBreaks(std::u16string_view text, RunWatcher* watcher = nullptr);

/// Simple case folding, one code unit to one code unit where possible; used to compare names.
std::u16string FoldCase(std::u16string_view text);
/// ASCII and UTF-8 aware upper case, for extensions and keys.
std::string ToUpper(std::string_view utf8);
std::string ToLower(std::string_view utf8);
/// Without blanks, tabs and line ends at both ends.
std::string_view Trim(std::string_view text);

}  // namespace zorvane
