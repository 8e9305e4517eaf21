// What workbooks hold beside the text of their cells.
#pragma once

#include <string_view>
#include <vector>

#include "load/readers/reader.h"
#include "load/readers/sheets/workbook.h"
#include "load/readers/sink/document_sink.h"

namespace zorvane {

/// Of XLSX and ODS, encrypted ones too: pictures, charts, links, comments, objects and properties
/// of the sheets at `chosen`, and a digest of each hidden sheet that is not among them. Items are
/// those of the whole document, with "Sheet1!B3: " in front. Of other workbooks the hidden sheets.
ReadEnd ReportSheetBeside(std::string_view bytes, std::string_view password, Workbook& book,
                          const std::vector<std::size_t>& chosen, DocumentSink& sink,
                          ReadMonitor& monitor);

}  // namespace zorvane
