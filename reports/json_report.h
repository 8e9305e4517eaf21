// The result of a compare as JSON, for programs. The schema is described in docs/json.md.
#pragma once

#include <string>
#include <vector>

#include "compare/engine/report_model.h"
#include "load/redline_certificate.h"

namespace zorvane {

/// "zorvane-compare/1". The same compare gives the same bytes. The names of the model are the
/// paths.
std::string WriteJsonReport(const ReportModel& model);

/// The same with "redlines": what is told of those that were written.
std::string WithRedlines(std::string json, const std::vector<RedlineCertificate>& certificates);

}  // namespace zorvane
