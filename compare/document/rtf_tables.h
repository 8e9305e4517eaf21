// What RTF's control words mean to the reader, as tables.
#pragma once

#include <cstdint>
#include <string_view>

#include "common/base/text_encoding.h"

namespace zorvane {

enum class RtfAction : std::uint8_t {
    Character,  // value: the UTF-16 unit
    ParagraphEnd,
    SectionEnd,
    LineBreak,
    PageBreak,
    CellEnd,
    CellTab,  // the next tab is a cell's end
    RowEnd,
    NestedRowEnd,
    ParagraphDefaults,
    InTable,
    Plain,
    Bold,
    Italic,
    Strike,
    Hidden,
    Deleted,
    UnderlineKind,  // value: the kind
    Superscript,
    Subscript,
    NoSuperSub,
    RaiseLower,
    FontSize,
    Font,
    DefaultFont,
    ForeColor,
    BackColor,
    Align,        // value: the alignment
    RightToLeft,  // value: 1 or 0
    LeftIndent,
    RightIndent,
    FirstIndent,
    SpaceBefore,
    SpaceAfter,
    LineSpacing,
    LineSpacingMultiple,
    TabAt,
    TabKindNext,  // value: the kind
    TabBarAt,
    AnsiCodePage,
    CodePageFixed,  // value: the code page
    Unicode,
    UnicodeSkip,
    Binary,
    FontTable,
    ColorTable,
    FontCharset,
    FontCodePage,
    Red,
    Green,
    Blue,
    Footnote,
    Box,             // a text box
    AnsiAndUnicode,  // a group with the same text twice
    UnicodeText,     // the second of the two
    Visible,         // a starred group whose text is seen
    SkipGroup
};

struct RtfWord {
    std::string_view name;
    RtfAction action;
    std::int32_t value = 0;
};

/// Nothing for a word that the reader does not know.
const RtfWord* FindRtfWord(std::string_view name);

/// Code page of a font's charset number; 42 is the mark of symbol fonts, 0 none of its own.
CodePage CodePageOfCharset(std::int32_t charset);
inline constexpr CodePage kSymbolPage{42};

}  // namespace zorvane
