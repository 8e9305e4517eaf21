// Rich text in a readable form: <b>bold</b> becomes [b:bold]; a break is "|".
#pragma once

#include <string>

#include "common/base/text_encoding.h"
#include "compare/document/rich_text.h"

namespace zorvane {

/// The marks of one format: bold, italic, underline kind, strike, super/sub, colours.
inline std::string MarksOf(const CharFormat& format) {
    std::string marks;
    if (format.bold)
        marks += 'b';
    if (format.italic)
        marks += 'i';
    if (format.underline != Underline::None)
        marks += "u" + std::to_string(static_cast<int>(format.underline));
    if (format.strikeout)
        marks += 's';
    if (format.baseline != Baseline::Normal)
        marks += format.baseline == Baseline::Superscript ? '^' : '_';
    if (format.fore_color)
        marks += "#" + std::to_string(format.fore_color->value);
    if (format.back_color && format.back_color->value != 0xFFFFFF)
        marks += "@" + std::to_string(format.back_color->value);
    return marks;
}

inline std::string Readable(std::u16string_view text) {
    std::string out;
    for (const char character : ToUtf8(text)) {
        if (character == '\r')
            out += '|';
        else if (character == 11)
            out += '/';
        else if (character == 7)
            out += '!';
        else if (character == '\t')
            out += '>';
        else if (character != '\n')
            out += character;
    }
    return out;
}

inline std::string Notation(const RichText& text) {
    std::string out;
    std::size_t at = 0;
    for (const CharRun& run : text.char_runs) {
        const auto length = static_cast<std::size_t>(run.length);
        const std::string piece = Readable(std::u16string_view(text.text).substr(at, length));
        const std::string marks = MarksOf(run.format);
        out += marks.empty() ? piece : "[" + marks + ":" + piece + "]";
        at += length;
    }
    return out;
}

/// The formats of paragraphs: alignment, indents from the left, the right and of the first line,
/// space before and after, line spacing ("*": a multiple), tabs, "<" from right to left.
inline std::string ParagraphLooks(const RichText& text) {
    std::string out;
    for (const ParagraphRun& run : text.paragraph_runs) {
        const ParagraphFormat& format = run.format;
        out += "LCRJ"[static_cast<std::size_t>(format.alignment)];
        for (const std::int32_t number :
             {format.left_indent, format.right_indent, format.first_line_indent,
              format.space_before, format.space_after, format.line_spacing})
            out += " " + std::to_string(number);
        out += format.line_spacing_multiple ? "*" : "";
        for (const TabStop& tab : format.tabs)
            out += " >" + std::to_string(tab.twips) + "LCRDB"[static_cast<std::size_t>(tab.kind)];
        out += format.right_to_left ? "<|" : "|";
    }
    return out;
}

/// The runs of characters by font and half points.
inline std::string FontLooks(const RichText& text) {
    std::string out;
    for (const CharRun& run : text.char_runs)
        out += std::string(run.format.font.view()) + " " + std::to_string(run.format.half_points) +
               "|";
    return out;
}

}  // namespace zorvane
