#include "common/base/append_format.h"

#include <fmt/format.h>
#include <iterator>

namespace zorvane {

void AppendFormatted(std::string& out, fmt::string_view format, fmt::format_args values) {
    fmt::vformat_to(std::back_inserter(out), format, values);
}

}  // namespace zorvane
