// Whether a match stands for itself, as a word does.
#pragma once

#include <string_view>

#include "find/engine/expression_matcher.h"
#include "find/engine/find_rules.h"

namespace zorvane {

/// By the characters beside it, decoded; a byte that is no UTF-8 is taken for Latin-1.
bool StandsAsWord(std::string_view line, MatchSpan match, WordRule rule);

}  // namespace zorvane
