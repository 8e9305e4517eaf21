// What is wrong with a regular expression, in a user's language.
#pragma once

#include <string>
#include <string_view>

#include "common/english_to.h"

namespace zorvane {

/// `fault` as PCRE2 tells it. What it tells of constructs that hardly anybody writes stays English,
/// so that no language file grows by it.
std::string ExpressionFault(std::string_view fault, const EnglishTo& translate);

}  // namespace zorvane
