#include "load/readers/sheets/iso_date.h"

#include <cstddef>

#include "common/base/parse_number.h"

namespace zorvane {
namespace {

// Number of `count` digits at a place of the text.
bool ReadDigits(std::string_view text, std::size_t at, std::size_t count, int& value) {
    if (text.size() < at + count)
        return false;
    const auto number = ParseNumber<int>(text.substr(at, count));
    value = number.value_or(0);
    return number.has_value();
}

// "2011-02-03" as days of the book's date system.
bool ParseIsoDay(std::string_view text, bool date_1904, int& days) {
    int year = 0;
    int month = 0;
    int day = 0;
    if (!ReadDigits(text, 0, 4, year) || !ReadDigits(text, 5, 2, month) ||
        !ReadDigits(text, 8, 2, day) || month < 1 || month > 12)
        return false;
    const int shifted = year - (month <= 2 ? 1 : 0);
    const int day_of_year = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    days = 365 * shifted + shifted / 4 - shifted / 100 + shifted / 400 + day_of_year - 693'899;
    if (date_1904)
        days -= 1462;
    else if (days < 61)
        --days;  // before the leap day of 1900 that only sheets have
    return true;
}

}  // namespace

bool ParseIsoDate(std::string_view text, bool date_1904, double& serial) {
    int days = 0;
    const bool has_day = ParseIsoDay(text, date_1904, days);
    serial = days;
    if (has_day)
        text.remove_prefix(10);
    if (text.starts_with('T'))
        text.remove_prefix(1);
    int hour = 0;
    int minute = 0;
    if (!ReadDigits(text, 0, 2, hour) || !ReadDigits(text, 3, 2, minute))
        return has_day;
    const double second =
        text.size() > 6 ? ReadNumber<double>(text.substr(6)).value.value_or(0) : 0;
    serial += (hour * 3600 + minute * 60 + second) / 86'400;
    return true;
}

}  // namespace zorvane
