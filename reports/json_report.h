// The result of a compare as JSON, for programs. The schema is described in docs/json.md.
#pragma once

#include <string>
#include <string_view>

#include "compare/engine/report_model.h"

namespace zorvane {

/// "zorvane-compare/1". The same compare gives the same bytes. The names of the model are the
/// paths.
std::string WriteJsonReport(const ReportModel& model);

/// The same with "redlines": what the certificates of `WriteRedlines` say, one behind the other.
std::string WithRedlines(std::string json, std::string_view certificates);

}  // namespace zorvane
