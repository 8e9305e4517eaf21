// Inside of NumberFormat: the parts of a format code, and how numbers and dates are written by
// them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "load/readers/sheets/number_format.h"

namespace zorvane::number_format {

enum class PartKind : std::uint8_t {
    Literal,
    Digit,  ///< `what`: 0 # or ?
    Point,
    Comma,  ///< groups thousands or divides by 1000; gone once a section is complete
    Percent,
    Exponent,  ///< `what`: + or -
    Slash,     ///< of a fraction
    FixedDenominator,
    Text,
    General,
    Date,     ///< `what`: y m d h s b (Buddhist year), n for minutes; `count` letters
    Elapsed,  ///< `what`: h n s
    SubSecond,
    AmPm,  ///< `what`: A for AM/PM, a for A/P; `text` as it stands in the code
};

struct Part {
    PartKind kind = PartKind::Literal;
    char what = 0;
    std::int32_t count = 0;
    std::string text;
};

enum class SectionKind : std::uint8_t { Number, Exponential, Fraction, Date, General, Text };

/// [>=100]: `sign` is < > = or two of them.
struct Condition {
    std::string sign;
    double bound = 0;
    bool Holds(double value) const;
    /// True when only negative numbers pass: their minus is the format's own business.
    bool OnlyNegative() const;
};

struct Section {
    SectionKind kind = SectionKind::Number;
    std::vector<Part> parts;
    std::optional<Condition> condition;
    std::int32_t integer_digits = 0;
    std::int32_t decimals = 0;
    std::int32_t exponent_digits = 0;
    std::int32_t scale = 0;  ///< power of ten that the number is multiplied with
    bool grouped = false;
    bool twelve_hours = false;
    bool elapsed = false;
    bool has_text = false;              ///< holds an @
    std::uint32_t locale = 0;           ///< of the names of months and days; 0: English
    std::int32_t sub_seconds = 0;       ///< digits behind the seconds' point
    std::size_t numerator = 0;          ///< index of a fraction's first numerator part
    std::int32_t denominator = 0;       ///< fixed one, 0 without
    std::int32_t most_denominator = 9;  ///< largest one that is tried
};

/// Tells from the parts of a section what it shows, and counts its digits. False when it holds
/// more than can be meant.
bool CompleteSection(Section& section);
/// Nothing for a code that cannot be understood.
std::optional<std::vector<Section>> ParseSections(std::string_view code);

/// Names from 0 on, January and Sunday first. A language that is not known has English ones.
std::string_view MonthName(std::uint32_t locale, std::size_t month, bool in_short);
std::string_view DayName(std::uint32_t locale, std::size_t day, bool in_short);

/// A number as decimal digits: 0.d1d2d3... times ten to the power of `point`. 15 digits, as many as
/// a spreadsheet keeps; zero has none.
struct Decimal {
    char digits[32] = {};
    std::int32_t count = 0;
    std::int32_t point = 0;
    explicit Decimal(double magnitude);
    /// Keeps `places` digits behind the point, half away from zero.
    void Round(std::int32_t places);
    /// Digit at a power of ten, 0 where there is none.
    char At(std::int32_t power) const {
        const std::int32_t index = point - 1 - power;
        return index < 0 || index >= count ? '0' : digits[index];
    }
};

/// `magnitude` is the value without its sign. True when all shown digits are zero.
bool AppendNumber(const Section& section, double magnitude, std::string& out);
bool AppendFraction(const Section& section, double magnitude, std::string& out);
void AppendDate(const Section& section, double value, bool date_1904, std::string& out);

}  // namespace zorvane::number_format
