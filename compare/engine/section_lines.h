// How a text is cut into the lines of the two finer levels: words and letters.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zorvane {

/// Appends a text as a section file, in UTF-8: a line end behind each blank, line feed, vertical
/// tab and cell mark (codes 32, 10, 11, 7), and behind the rest. A carriage return is not among
/// them: a word in front of a break makes two lines of the engine, as it makes two sections in
/// `SectionEnds`.
void AppendSectionLines(std::u16string_view text, std::string& out);

/// Appends a text as a character file: a line for each UTF-16 unit, and the last unit once more.
/// Both lines of a surrogate pair hold the whole character, so that equal halves of different
/// characters differ.
void AppendCharacterLines(std::u16string_view text, std::string& out);

/// 0-based positions behind each section of a text. Separators are the codes 7, 10, 11, 13 and 32;
/// a last section needs none. Line k of the section file is section k.
void FindSectionEnds(std::u16string_view text, std::vector<std::int32_t>& ends);

/// A range of characters by 1-based number; sliding may have cut a surrogate pair at both ends, and
/// this slides it back.
struct CharacterRange {
    std::int32_t first = 0;
    std::int32_t last = 0;
};
CharacterRange WholeCharacters(std::u16string_view text, CharacterRange range);

}  // namespace zorvane
