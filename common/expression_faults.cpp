#include "common/expression_faults.h"

#include <algorithm>
#include <iterator>

namespace zorvane {
namespace {

constexpr std::string_view kExpressionFaults[] = {
    "There is nothing to find",
    "A line end cannot be found: lines are looked through one by one",
    "POSIX named classes are supported only within a class",
    "\\ at end of pattern",
    "\\c at end of pattern",
    "character code point value in \\x{} or \\o{} is too large",
    "escape sequence is invalid in character class",
    "lookbehind assertion is not fixed length",
    "malformed \\P or \\p sequence",
    "missing ) after (?# comment",
    "missing closing parenthesis",
    "missing terminating ] for character class",
    "number too big in {} quantifier",
    "numbers out of order in {} quantifier",
    "quantifier does not follow a repeatable item",
    "range out of order in character class",
    "reference to non-existent subpattern",
    "regular expression is too large",
    "unknown POSIX class name",
    "unmatched closing parenthesis",
    "unrecognized character after (? or (?-",
    "unrecognized character follows \\",
};

}  // namespace

std::string ExpressionFault(std::string_view fault, const EnglishTo& translate) {
    const auto* const known =
        std::find(std::begin(kExpressionFaults), std::end(kExpressionFaults), fault);
    return known == std::end(kExpressionFaults) ? std::string(fault) : translate(*known);
}

}  // namespace zorvane
