// Where the report of one pair of a folder compare lies.
#pragma once

#include <string>
#include <string_view>

#include "compare/engine/engine_report.h"

namespace zorvane {

/// ".htm", ".txt", ".csv", ".doc".
std::string ReportExtensionOf(ReportType type);

struct ReportNaming {
    std::string report_folder;
    std::string original_root;  ///< the Original folder of the compare
    std::string file_types;     ///< patterns that were compared
    std::string extension;      ///< of reports, with its dot
};

/// The same place below the report folder as `file` has below the root. Where all types are
/// compared the file's extension goes into the name, since two files may share the rest.
std::string ReportFileName(const ReportNaming& naming, std::string_view file);

}  // namespace zorvane
