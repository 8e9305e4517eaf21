// Which options a kind of file has of its own.
#pragma once

#include <cstdint>

#include "load/file_kind.h"

namespace zorvane {

enum class FileTypeOptions : std::uint8_t { None, Text, Word, Pdf, Spreadsheet, Slides, Html };

constexpr FileTypeOptions OptionsOf(FileKind kind) {
    switch (kind) {
        case FileKind::Spreadsheet:
        case FileKind::CommaDelimited:
            return FileTypeOptions::Spreadsheet;
        case FileKind::UnicodeText:
        case FileKind::Text:
            return FileTypeOptions::Text;
        case FileKind::Html:
        case FileKind::Xml:
            return FileTypeOptions::Html;
        case FileKind::WordProcessor:
            return FileTypeOptions::Word;
        case FileKind::Slides:
            return FileTypeOptions::Slides;
        case FileKind::Pdf:
            return FileTypeOptions::Pdf;
        case FileKind::Other:
            break;
    }
    return FileTypeOptions::None;
}

}  // namespace zorvane
