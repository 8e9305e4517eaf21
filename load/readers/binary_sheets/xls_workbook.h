// Binary workbooks of two versions, BIFF5 and BIFF8. Source: the public format description MS-XLS.
#pragma once

#include <memory>
#include <string_view>

#include "load/readers/sheets/workbook.h"

namespace zorvane {

/// A compound file with a workbook's stream, or that stream alone.
bool LooksLikeXls(std::string_view bytes);
/// An encrypted one is `PasswordNeeded` without a password, `Unsupported` with one.
std::unique_ptr<Workbook> OpenXls(std::string_view bytes, std::string_view password, ReadEnd& end);

}  // namespace zorvane
