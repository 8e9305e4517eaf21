// What a workbook shows, as text for expectations: cells apart by "|", rows by a line feed.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "load/readers/sheets/workbook.h"

namespace zorvane {

class PatientMonitor : public ReadMonitor {
  public:
    bool Progress(std::int64_t /*done*/, std::int64_t /*total*/) override { return true; }
};

inline std::string ShownSheet(Workbook& workbook, std::size_t index,
                              const SheetOptions& options = {}) {
    std::string shown;
    const RowSink sink = [&shown](const std::vector<std::string_view>& cells) {
        for (std::size_t i = 0; i < cells.size(); ++i) {
            shown += i == 0 ? "" : "|";
            shown += cells[i];
        }
        shown += '\n';
        return true;
    };
    PatientMonitor monitor;
    const ReadEnd end = workbook.ReadSheet(index, options, sink, monitor);
    if (!end.ok())
        shown += "error " + std::to_string(static_cast<int>(end.error)) + "\n";
    return shown;
}

/// The sheet of a workbook's bytes, or "error N".
inline std::string ShownSheet(std::string_view bytes, std::size_t index,
                              const SheetOptions& options = {}) {
    std::unique_ptr<Workbook> workbook;
    const ReadEnd end = OpenWorkbook(bytes, "", workbook);
    if (!end.ok())
        return "error " + std::to_string(static_cast<int>(end.error)) + "\n";
    return ShownSheet(*workbook, index, options);
}

}  // namespace zorvane
