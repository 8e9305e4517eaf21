// Formatted text behind a text. The library's own `format_to` is compiled anew, in seconds, in
// every file that calls it.
#pragma once

#include <fmt/core.h>
#include <string>

namespace zorvane {

void AppendFormatted(std::string& out, fmt::string_view format, fmt::format_args values);

template <typename... Values>
void AppendFormat(std::string& out, fmt::format_string<Values...> format, Values&&... values) {
    AppendFormatted(out, format, fmt::make_format_args(values...));
}

}  // namespace zorvane
