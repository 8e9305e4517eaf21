// Spreadsheets as rows of shown text. XLSX and XLSM stream; XLS and ODS are read whole.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "load/readers/reader.h"

namespace zorvane {

struct SheetInfo {
    std::string name;  ///< UTF-8
    bool hidden = false;
};

struct SheetOptions {
    bool formulas = false;    ///< a formula as text, "=A1+1", in place of its value
    bool values_too = false;  ///< with `formulas`: the value behind it, in the same cell
};

/// Called once for each row from the first of the sheet to the last that holds anything, empty rows
/// between included; the cells from column A on, without empty ones behind the last. False ends the
/// reading. The views live until the return.
using RowSink = std::function<bool(const std::vector<std::string_view>& cells)>;

class Workbook {
  public:
    virtual ~Workbook() = default;
    virtual const std::vector<SheetInfo>& Sheets() const = 0;
    /// `index` from 0. Cells read as the sheet shows them, by their number formats, dates in the
    /// book's date system; a merged range shows in its first cell.
    virtual ReadEnd ReadSheet(std::size_t index, const SheetOptions& options, const RowSink& rows,
                              ReadMonitor& monitor) = 0;
};

/// Told apart by content: XLSX/XLSM/XLTX package, XLS (BIFF5 and BIFF8), ODS. `bytes` is borrowed
/// and outlives the book. Encrypted packages are opened with `password`.
ReadEnd OpenWorkbook(std::string_view bytes, std::string_view password,
                     std::unique_ptr<Workbook>& workbook);

}  // namespace zorvane
