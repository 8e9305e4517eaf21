// Makes the pages that the layout of PDF works on: each letter is half its size wide.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/text_bytes.h"
#include "load/readers/pdf/pdf_lines.h"
#include "load/readers/pdf/pdf_page.h"

namespace zorvane::test_pdf {

inline PdfPage EmptyPage() {
    PdfPage page;
    page.width = 600;
    page.height = 800;
    return page;
}

/// Puts a text at a place as one drawn string; blanks are drawn too.
inline void Put(PdfPage& page, float x, float baseline, std::u32string_view text, float size = 10) {
    for (const char32_t letter : text) {
        PdfCharacter character;
        character.letter = letter;
        character.x0 = x;
        character.x1 = x + size / 2;
        character.baseline = baseline;
        character.size = size;
        page.characters.push_back(character);
        x = character.x1;
    }
}

/// A line of a page; its texts are drawn in their order.
struct Drawn {
    struct Text {
        float x;
        std::u32string text;
        float size = 10;
    };
    float baseline;
    std::vector<Text> texts;
};
inline PdfPage PageOf(const std::vector<Drawn>& lines) {
    PdfPage page = EmptyPage();
    for (const Drawn& line : lines) {
        for (const Drawn::Text& drawn : line.texts)
            Put(page, drawn.x, line.baseline, drawn.text, drawn.size);
    }
    return page;
}

inline std::string Utf8(const std::vector<PdfLetter>& letters) {
    std::string text;
    for (const PdfLetter& letter : letters)
        AppendUtf8(letter.letter == 7 ? U'|' : letter.letter, text);
    return text;
}

/// The lines of a page, one below the other.
inline std::string LinesOf(const PdfPage& page, const PdfLineOptions& options = {}) {
    std::vector<PdfLine> lines;
    AppendLines(page, 1, options, lines);
    std::string text;
    for (const PdfLine& line : lines)
        text += Utf8(line.letters) + "\n";
    return text;
}

}  // namespace zorvane::test_pdf
