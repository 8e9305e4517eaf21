#include "compare/run_options.h"

#include <algorithm>

#include "common/base/text_encoding.h"

namespace zorvane {

CompareOptions CompareOptionsOf(const clsCompareFileOptions& options) {
    CompareOptions asked;
    asked.ignore_case = options.bIgnoreCase.Data();
    asked.ignore_whitespace = options.bIgnoreWhitespace.Data();
    asked.ignore_empty_lines = options.bIgnoreEmptyLines.Data();
    asked.faster = options.bCompareFaster.Data();
    asked.larger_sections = options.bShowChangesInLargerSections.Data();
    asked.bracket = options.bUseLineBracket.Data() ? std::max(options.lLineBracket.Data(), 1) : 0;
    if (!Trim(options.sIgnoreRegularExpression.Data()).empty())
        asked.expressions = options.sIgnoreRegularExpression.Data();
    asked.filter_sections = options.bIgnoreRegExOnBothPasses.Data();
    asked.by_character = options.bCompareByCharacter.Data();
    return asked;
}

}  // namespace zorvane
