// The names that `--set` takes: each is obeyed by the command that gets it, or refused with what to
// write in its place.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "common/base/result.h"

namespace zorvane {

class clsCompareFileOptions;
struct CompareFilesSettings;

enum class SetBy { Compare, Text };

using NamedValues = std::vector<std::pair<std::string, std::string>>;  ///< option name and value

/// Sets them in their order. What a name would not do without another, such as a list of rows
/// without the use of rows, it brings along, unless that other is set as well.
Status ApplySets(const NamedValues& sets, SetBy command, clsCompareFileOptions& options,
                 CompareFilesSettings& settings);

}  // namespace zorvane
