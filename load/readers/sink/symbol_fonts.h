// Characters of the picture fonts that bullets use, as Unicode.
#pragma once

#include <string>
#include <string_view>

namespace zorvane {

/// True for a font whose letters are pictures.
bool IsSymbolFont(std::string_view font);
/// The text as it looks in that font; characters that are not known stay.
std::string SymbolText(std::string_view utf8, std::string_view font);
/// As above, but one character that is not known becomes the usual dot.
std::string SymbolBullet(std::string_view utf8, std::string_view font);

/// Without control characters but the tab; line ends become blanks, ill-formed bytes U+FFFD.
/// The text itself where nothing is to be changed, else `scratch`.
std::string_view CleanText(std::string_view text, std::string& scratch);
/// The same for a text that is needed once.
inline std::string CleanText(std::string_view text) {
    std::string scratch;
    return std::string(CleanText(text, scratch));
}

}  // namespace zorvane
