// The comparison for a terminal: changed paragraphs with some unchanged ones around, words marked
// in place.
#pragma once

#include <cstdint>
#include <string>

#include "compare/engine/report_model.h"

namespace zorvane {

struct TerminalStyle {
    bool color = false;        ///< else [-old-]{+new+}
    std::int32_t context = 2;  ///< unchanged paragraphs around a difference
};

/// Control characters of the documents are shown and never sent to the terminal.
std::string WriteTerminalReport(const ReportModel& model, const TerminalStyle& style);

/// The counts on one screen.
std::string WriteStat(const ReportModel& model);

}  // namespace zorvane
