// What kind of file a name denotes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zorvane {

class clsCompareFileOptions;
class clsMRU;

/// The codes are those that the viewer's options button knows.
enum class FileKind : std::int32_t {
    Spreadsheet = -4143,
    CommaDelimited = 6,
    UnicodeText = 21,
    Text = 42,
    Html = 44,
    Xml = 46,
    WordProcessor = 10001,
    Slides = 10002,
    Pdf = 10003,
    Other = 10000
};

/// The extension in upper case: what follows the last "." of the file's own name; empty without
/// one.
std::string UpperExtension(std::string_view sFile);
/// True when the extension contains any of `parts`, which are in upper case and separated by
/// blanks. So "XLS" also takes XLSX.
bool ExtensionContains(std::string_view sFile, std::string_view parts);

/// What a word processor opens, as `ExtensionContains` wants it.
inline constexpr std::string_view kWordExtensions =
    "ODT BK TMP DOT REG WPD WPS MCW ANS ASC DOC OTT EPUB";
/// Text that is rendered like a web page unless its source is asked for: Markdown, e-mail.
bool IsRenderedText(std::string_view sFile);
/// Source code whose name or look is near that of a web page or document: it is compared as text,
/// since a page made from it would hide most of it.
bool IsSourceCode(std::string_view sFile);

/// A list of texts to translate, whose extension is that of a template of slides: told by its
/// bytes.
bool IsTranslationSource(const std::string& sFile);
/// Documents that a word processor opens, and web pages and XML while their source isn't asked for.
bool TakesWordRoad(const std::string& sFile, const clsCompareFileOptions& options,
                   const clsMRU& extensions);

/// `extensions` are the user's own text extensions. A text file is told to be Unicode by its bytes.
FileKind lFileType(const std::string& sFile, bool bRemoveFormatting, const clsMRU& extensions);
/// By equality, not by containment.
bool bIsFileText(std::string_view sFile, const clsMRU& extensions);
bool bIsFileTextOrExcel(std::string_view sFile, const clsMRU& extensions);
/// A web name that a word processor of version 15 or later opens by itself.
bool bLoadingFromSkyDrive(std::string_view sFile, double word_version);
/// UTF-16, by its byte-order mark or its look.
bool IsFileUnicode(const std::string& sFile);

}  // namespace zorvane
