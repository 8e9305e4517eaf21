// The table of the types of files: what their names say, by what road their text comes, who reads
// them. Both programs ask here, and the first columns of docs/FORMATS.md are held to it by a test.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "load/file_signature.h"

namespace zorvane {

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

/// By which road the text of a file comes into an editor.
enum class LoadRoad {
    AsItIs,  ///< copied; RTF and text are told apart when the editor is filled
    Text,
    Word,  ///< what a word processor opens, pages and messages too; the bytes tell which
    Sheets,
    Pdf,
    Slides
};

/// How an extension is held against `FileType::names`.
enum class NameTest {
    Contains,  ///< any of the names is part of it, so that "XLS" takes XLSX as well
    Equals
};

/// When a row's road is taken.
enum class RoadWhen {
    Always,
    FormattingGoes,  ///< only where formatting is removed
    UnlessSource,    ///< not where the source of pages is compared
    BytesAreText     ///< only where the file holds text, whatever its name promises
};

/// Text that is shown as something else than its letters.
enum class TextForm { None, Page, Xml, Markdown, Message };

struct FileType {
    std::string_view title;   ///< as docs/FORMATS.md begins its row; empty: it has none
    std::string_view reader;  ///< likewise its second column
    std::string_view names;   ///< upper case, separated by blanks
    NameTest test = NameTest::Contains;
    FileKind kind = FileKind::Other;
    LoadRoad road = LoadRoad::AsItIs;
    RoadWhen when = RoadWhen::Always;
    TextForm form = TextForm::None;
    bool needs_office = false;  ///< what bears such a name is read by an office suite alone

    bool Matches(std::string_view upper_extension) const;
};

/// In the order of the tests: the first row that fits counts.
std::span<const FileType> FileTypes();
/// The first row that fits the name, whenever its road is taken; nullptr when none does.
const FileType* TypeNamed(std::string_view sFile);

/// The extension in upper case: what follows the last "." of the file's own name; empty without
/// one.
std::string UpperExtension(std::string_view sFile);
/// True when the extension contains any of `parts`, which are in upper case and separated by
/// blanks.
bool ExtensionContains(std::string_view sFile, std::string_view parts);

}  // namespace zorvane
