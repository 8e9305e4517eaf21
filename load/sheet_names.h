// The sheets of a workbook, to choose from.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/result.h"

namespace zorvane {

class GridBridge;

/// The names in the workbook's order. A failure is told in a user's words, which `translate` puts
/// into the language in force.
Result<std::vector<std::string>> ReadSheetNames(
    GridBridge& bridge, const std::string& sFile,
    const std::function<std::string(std::string_view)>& translate);

/// As the options want several of them.
std::string JoinedSheetNames(const std::vector<std::string>& names);

}  // namespace zorvane
