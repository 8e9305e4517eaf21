// Spreadsheets of OpenDocument: content.xml is kept, each sheet is read from its place in it.
#pragma once

#include <memory>
#include <string_view>

#include "load/readers/container/package.h"
#include "load/readers/sheets/workbook.h"

namespace zorvane {

bool IsOpenDocumentSheets(Package& package);
std::unique_ptr<Workbook> OpenOds(Package& package, ReadEnd& end);
/// The same as one XML file.
std::unique_ptr<Workbook> OpenFlatOds(std::string_view content, ReadEnd& end);

}  // namespace zorvane
