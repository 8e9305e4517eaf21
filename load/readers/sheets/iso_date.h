// Dates as text in sheets: "2011-02-03T04:05:06".
#pragma once

#include <string_view>

namespace zorvane {

/// A date, a time, or both with a T between, as days of the book's date system. False for neither.
bool ParseIsoDate(std::string_view text, bool date_1904, double& serial);

}  // namespace zorvane
