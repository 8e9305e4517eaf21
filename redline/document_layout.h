// Walks through a rich text as a document of its own: paragraphs, runs, tables.
#pragma once

#include <string>
#include <string_view>

#include "compare/document/rich_text.h"

namespace zorvane {

/// A line break inside a paragraph.
inline constexpr char16_t kLineMark = 0x0B;

/// Stand around a generated number in the text of a paragraph; no document holds them.
inline constexpr char16_t kLabelBegin = 0xFDD0;
inline constexpr char16_t kLabelEnd = 0xFDD1;

/// Gets a document piece by piece, nested as it is.
class DocumentPen {
  public:
    virtual ~DocumentPen() = default;
    /// `label`: a generated number or bullet in front of it; empty for none.
    virtual void BeginParagraph(const ParagraphFormat& format, std::u16string_view label) = 0;
    virtual void EndParagraph() = 0;
    /// May hold tabs, line marks and control characters.
    virtual void Run(const CharFormat& format, std::u16string_view text) = 0;
    virtual void BeginTable(std::size_t columns) = 0;
    virtual void EndTable() = 0;
    virtual void BeginRow() = 0;
    virtual void EndRow() = 0;
    virtual void BeginCell() = 0;
    virtual void EndCell() = 0;
};

/// Lines whose cells end in the mark of a cell are rows; rows beside each other are one table.
void LayOut(const RichText& text, DocumentPen& pen);

/// A character that a document can hold as it is.
inline bool IsShown(char16_t unit) {
    return unit >= u' ' && unit < 0xFFFE && unit != kLabelBegin && unit != kLabelEnd;
}
/// As text or in an attribute.
void AppendXml(std::string_view utf8, std::string& out);
/// "00FF00".
std::string HexOf(Color color);

}  // namespace zorvane
