// One line of a file as a programmer would write it as a literal.
#pragma once

#include <string>
#include <string_view>

namespace zorvane {

/// `abc` becomes `"abc"`; a control character stands outside of the quotes, by its name or number;
/// a double quote inside is doubled. UTF-8 in and out.
std::string StringToCode(std::string_view sText);

}  // namespace zorvane
