// How objects without a window get the language in force.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace zorvane {

/// English text in, the text to show out.
using TranslateText = std::function<std::string(std::string_view)>;

}  // namespace zorvane
