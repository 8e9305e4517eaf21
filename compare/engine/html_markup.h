// The fixed parts of the HTML report: style, script, the user's marks as style rules, and text made
// safe for markup. All of it is well formed as XML too.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "compare/engine/engine_report.h"

namespace zorvane {

/// Markup and control characters made harmless; a cell mark becomes a tab, a line break in a
/// paragraph a line feed, bytes that are no UTF-8 the replacement character.
void AppendHtmlText(std::string_view text, std::string& out);

/// Everything for a style element. `largest_number` decides the width of the number columns.
std::string HtmlStyle(const ReportLook& look, std::int32_t largest_number);

/// Next and previous difference by key, and unfolding for print. The page is whole without it.
std::string_view HtmlScript();

}  // namespace zorvane
