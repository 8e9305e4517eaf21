#include <algorithm>
#include <cmath>

#include "load/readers/sheets/number_format_parts.h"

namespace zorvane::number_format {
namespace {

constexpr std::int64_t kLastDay = 2'958'465;  // 9999-12-31
constexpr std::int64_t kDaysTo1904 = 1462;    // between the first days of both systems
constexpr std::int64_t kSecondsOfDay = 86'400;

struct Moment {
    std::int64_t year = 1900;
    std::int64_t month = 1;
    std::int64_t day = 0;
    std::int64_t weekday = 0;
    std::int64_t seconds = 0;   ///< whole ones since the day's begin
    std::int64_t fraction = 0;  ///< of a second, in the unit of the code's digits
    std::int64_t days = 0;
};

// Days since 1970-01-01 to year, month and day; valid for the years that sheets know.
void SetCivil(std::int64_t days, Moment& moment) {
    const std::int64_t shifted = days + 719'468;
    const std::int64_t era = shifted / 146'097;
    const std::int64_t day_of_era = shifted % 146'097;
    const std::int64_t year_of_era =
        (day_of_era - day_of_era / 1460 + day_of_era / 36'524 - day_of_era / 146'096) / 365;
    const std::int64_t day_of_year =
        day_of_era - (365 * year_of_era + year_of_era / 4 - year_of_era / 100);
    const std::int64_t month = (5 * day_of_year + 2) / 153;
    moment.day = day_of_year - (153 * month + 2) / 5 + 1;
    moment.month = month < 10 ? month + 3 : month - 9;
    moment.year = year_of_era + era * 400 + (moment.month <= 2 ? 1 : 0);
}

void SetDate(std::int64_t serial, Moment& moment) {
    constexpr std::int64_t kEpoch = 25'569;  // serial of 1970-01-01
    moment.weekday = (serial + 6) % 7;
    if (serial > 60) {
        SetCivil(serial - kEpoch, moment);
    } else if (serial == 60) {  // the leap day that 1900 did not have
        moment.month = 2;
        moment.day = 29;
    } else if (serial > 0) {
        SetCivil(serial - kEpoch + 1, moment);
    }
}

void AppendPadded(std::int64_t number, std::int32_t width, std::string& out) {
    const std::string text = std::to_string(number);
    for (auto size = static_cast<std::int32_t>(text.size()); size < width; ++size)
        out += '0';
    out += text;
}

void AppendYear(std::int64_t year, std::int32_t count, std::string& out) {
    if (count <= 2)
        AppendPadded(year % 100, 2, out);
    else
        AppendPadded(year, 4, out);
}

void AppendMonth(const Moment& moment, const Part& part, std::uint32_t locale, std::string& out) {
    constexpr std::int32_t kLetter = 5;  // mmmmm: the first one alone
    if (part.count <= 2) {
        AppendPadded(moment.month, part.count, out);
        return;
    }
    const std::string_view name =
        MonthName(locale, static_cast<std::size_t>(moment.month - 1), part.count == 3);
    out += part.count == kLetter ? name.substr(0, 1) : name;
}

void AppendDay(const Moment& moment, const Part& part, std::uint32_t locale, std::string& out) {
    if (part.count <= 2)
        AppendPadded(moment.day, part.count, out);
    else
        out += DayName(locale, static_cast<std::size_t>(moment.weekday), part.count == 3);
}

void AppendPart(const Section& section, const Part& part, const Moment& moment, std::string& out) {
    constexpr std::int64_t kBuddhistYears = 543;  // ahead
    const std::int64_t hour = moment.seconds / 3600;
    const std::int32_t width = std::min(part.count, 2);
    switch (part.what) {
        case 'y':
            return AppendYear(moment.year, part.count, out);
        case 'b':
            return AppendYear(moment.year + kBuddhistYears, part.count, out);
        case 'm':
            return AppendMonth(moment, part, section.locale, out);
        case 'd':
            return AppendDay(moment, part, section.locale, out);
        case 'h':
            return AppendPadded(section.twelve_hours ? (hour + 11) % 12 + 1 : hour, width, out);
        case 'n':
            return AppendPadded(moment.seconds / 60 % 60, width, out);
        default:
            return AppendPadded(moment.seconds % 60, width, out);
    }
}

void AppendElapsed(const Part& part, const Moment& moment, std::string& out) {
    const std::int64_t seconds = moment.days * kSecondsOfDay + moment.seconds;
    const std::int64_t unit = part.what == 'h' ? 3600 : part.what == 'n' ? 60 : 1;
    AppendPadded(seconds / unit, part.count, out);
}

void AppendAmPm(const Part& part, const Moment& moment, std::string& out) {
    const bool afternoon = moment.seconds >= kSecondsOfDay / 2;
    if (part.what == 'A')
        out += afternoon ? "PM" : "AM";
    else
        out += part.text[afternoon ? 1 : 0];
}

// Rounded to what the code shows of a second, so that the parts never show 60.
Moment SplitTime(double value, std::int32_t digits) {
    std::int64_t unit = 1;
    for (std::int32_t i = 0; i < digits; ++i)
        unit *= 10;
    Moment moment;
    moment.days = static_cast<std::int64_t>(std::floor(value));
    std::int64_t ticks =
        std::llround((value - std::floor(value)) * static_cast<double>(kSecondsOfDay * unit));
    if (ticks >= kSecondsOfDay * unit) {
        ++moment.days;
        ticks = 0;
    }
    moment.seconds = ticks / unit;
    moment.fraction = ticks % unit;
    return moment;
}

}  // namespace

void AppendDate(const Section& section, double value, bool date_1904, std::string& out) {
    if (value < 0 && section.elapsed) {
        out += '-';
        value = -value;
    }
    const std::int64_t shift = date_1904 ? kDaysTo1904 : 0;
    if (!(value >= 0 && value < static_cast<double>(kLastDay + 1 - shift))) {
        out += "#####";
        return;
    }
    Moment moment = SplitTime(value, section.sub_seconds);
    SetDate(std::min(moment.days + shift, kLastDay), moment);
    for (const Part& part : section.parts) {
        switch (part.kind) {
            case PartKind::Date:
                AppendPart(section, part, moment, out);
                break;
            case PartKind::Elapsed:
                AppendElapsed(part, moment, out);
                break;
            case PartKind::SubSecond: {
                std::int64_t fraction = moment.fraction;
                for (std::int32_t i = part.count; i < section.sub_seconds; ++i)
                    fraction /= 10;
                out += '.';
                AppendPadded(fraction, part.count, out);
                break;
            }
            case PartKind::AmPm:
                AppendAmPm(part, moment, out);
                break;
            case PartKind::General:
                AppendGeneral(value, out);
                break;
            default:
                out += part.text;
                break;
        }
    }
}

}  // namespace zorvane::number_format
