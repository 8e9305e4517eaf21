// The style and the script of the HTML report.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "compare/engine/engine_report.h"

namespace zorvane {

/// Everything for a style element. `largest_number` decides the width of the number columns.
std::string HtmlStyle(const ReportLook& look, std::int32_t largest_number);

/// Next and previous difference by key, and unfolding for print. The page is whole without it.
std::string_view HtmlScript();

}  // namespace zorvane
