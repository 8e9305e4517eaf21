// Emphasis in a paragraph of Markdown: which marks belong together.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace zorvane {

/// A stretch of a paragraph's HTML. A delimiter keeps its unused marks as text.
struct MarkdownPiece {
    std::string text;
    std::string close_tags;
    std::string open_tags;
    char mark = 0;
    bool opens = false;
    bool closes = false;
    std::size_t count = 0;  ///< of marks as they stood
};

/// Pairs the delimiters from the piece `bottom` on.
void EmphasizeMarkdown(std::vector<MarkdownPiece>& pieces, std::size_t bottom);

}  // namespace zorvane
