// What a page shows of a document's own look, whatever format the document had.
#pragma once

#include <cstdint>
#include <vector>

namespace zorvane {

enum class LookAlignment : std::uint8_t { Left, Center, Right };

/// From `begin` on, in UTF-16 units of the whole text, up to the next.
struct WordsLook {
    std::uint32_t begin = 0;
    bool bold = false;
    bool italic = false;
    friend bool operator==(const WordsLook&, const WordsLook&) = default;
};

/// Of a paragraph that looks unlike plain text.
struct ParagraphLook {
    std::int32_t number = 0;   ///< 1-based
    std::uint8_t heading = 0;  ///< 1 to 3, the largest first; 0: none
    std::uint8_t indent = 0;   ///< levels
    bool hanging = false;      ///< the first line begins further left, as a list's with its label
    LookAlignment alignment = LookAlignment::Left;
    friend bool operator==(const ParagraphLook&, const ParagraphLook&) = default;
};

/// Both ascend.
struct DocumentLook {
    std::vector<WordsLook> words;
    std::vector<ParagraphLook> paragraphs;
    bool Plain() const { return words.empty() && paragraphs.empty(); }
};

}  // namespace zorvane
