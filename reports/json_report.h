// The result of a compare as JSON, for programs. The schema is described in docs/json.md.
#pragma once

#include <string>

#include "compare/engine/report_model.h"

namespace zorvane {

/// "zorvane-compare/1". The same compare gives the same bytes. The names of the model are the
/// paths.
std::string WriteJsonReport(const ReportModel& model);

}  // namespace zorvane
