// What a line of Markdown is, looked at by itself.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace zorvane {

inline constexpr std::size_t kCodeIndent = 4;  ///< blanks in front that make a line code
inline constexpr std::string_view kMarkdownBlanks = " \t\r\n";

/// A list's item: "- ", "1. ".
struct MarkdownMarker {
    char kind = 0;  ///< "-", "+", "*", or what stands behind a number
    std::int32_t number = 0;
    std::size_t content = 0;  ///< where the item's text begins
    bool empty = false;
};

std::size_t IndentOf(std::string_view line);
bool IsBlankLine(std::string_view line);
bool IsCodeLine(std::string_view line);
/// 1 to 6; 0 for no heading.
std::size_t HeadingLevel(std::string_view line);
bool IsRule(std::string_view line);
/// Length of the fence that begins code; 0 for none.
std::size_t FenceLength(std::string_view line);
bool IsQuote(std::string_view line);
std::optional<MarkdownMarker> ReadMarker(std::string_view line);
bool IsHtmlBlock(std::string_view line);
/// True for what ends a paragraph above it.
bool BeginsBlock(std::string_view line);
/// The cells of a table's row.
std::vector<std::string_view> CellsOf(std::string_view line);
/// The line between a table's head and its rows.
bool IsTableRule(std::string_view line);

/// The place of the bracket that ends a tag, outside of quotes.
std::size_t HtmlTagEnd(std::string_view text);
/// What stands between the brackets of a tag of HTML.
bool IsHtmlTag(std::string_view inner);

}  // namespace zorvane
