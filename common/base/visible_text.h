// Text on its way to a terminal, which obeys control characters wherever they come from.
#pragma once

#include <string>
#include <string_view>

namespace zorvane {

enum class LineBreaks {
    Shown,    ///< as pictures: in a name, a line break is a trap
    Kept,     ///< for a text of many lines; a lone CR is shown
    Indented  ///< for one message: what follows a line break cannot pass for another message
};

/// `utf8` with every control character as its picture (U+2400 and on; C1 controls as U+FFFD) and
/// every control of text direction as its number, such as "[U+202E]". Tabs stay.
std::string VisibleText(std::string_view utf8, LineBreaks line_breaks);

}  // namespace zorvane
