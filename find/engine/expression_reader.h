// A regular expression of a user, made ready for two libraries that must find the same.
#pragma once

#include <string>
#include <string_view>

#include "common/base/result.h"
#include "find/engine/find_rules.h"

namespace zorvane {

struct ReadExpression {
    std::string pcre;
    std::string re2;
    /// A run of characters that every match holds, as bytes; empty where none is sure.
    std::string required;
    /// No match can reach over a line end, so that many lines may be looked through at once.
    bool within_line = true;
};

/// `syntax` is not `Literal`. Whether an expression is right is for the libraries to say; one that
/// asks for a line end is refused here, since lines are looked through.
Result<ReadExpression> PrepareExpression(std::string_view text, FindSyntax syntax, bool match_case);

}  // namespace zorvane
