// How code that knows no language file has its texts shown in the user's language.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace zorvane {

/// An English text in the language of whoever reads it.
using EnglishTo = std::function<std::string(std::string_view english)>;

}  // namespace zorvane
