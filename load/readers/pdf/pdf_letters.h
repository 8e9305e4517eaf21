// The characters that a PDF draws, told as the letters that a reader sees.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zorvane {

/// The letters of a ligature; empty for any other character.
std::u32string_view LettersOfLigature(char32_t character);

/// Changes `text` from `start` on: ligatures become their letters, a drawn soft hyphen at the end
/// of a line goes together with the line's end and is a hyphen elsewhere, and marks of direction,
/// which nobody sees, go.
void PlainLetters(std::string& text, std::size_t start);

}  // namespace zorvane
