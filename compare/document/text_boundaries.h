// Where characters and words of a text begin and end, as a user counts them.
#pragma once

#include <cstdint>
#include <string_view>

#include "compare/document/editor.h"

namespace zorvane {

/// Whether a unit is a blank that stands in a line, or ends one.
bool IsBlankUnit(char16_t unit);
constexpr bool EndsLine(char16_t unit) {
    return unit == u'\r' || unit == u'\n' || unit == u'\v';
}

enum class TextUnit : std::uint8_t { Character, Word, Line };

/// The place that a key for the unit takes the caret to, or up to which it deletes. A word goes
/// with the blanks behind it; a line is the rest of the paragraph (or of the `\line`) on that side,
/// without its break. From the begin or end of a paragraph all three go over the break. Looks at
/// some hundred units around the place, however long the paragraph is.
CharPos PlaceBack(const Editor& editor, CharPos from, TextUnit unit);
CharPos PlaceForward(const Editor& editor, CharPos from, TextUnit unit);

/// The word (or stretch of blanks or signs) that holds the character behind the place, without its
/// break: what a double click selects.
TextRange WordAt(const Editor& editor, CharPos place);

/// Characters as a user counts them: an accent belongs to its letter.
std::int32_t CountCharacters(std::u16string_view text);
/// So many characters behind the place, at most to the end of the paragraph.
TextRange CharactersBehind(const Editor& editor, CharPos place, std::int32_t count);

}  // namespace zorvane
