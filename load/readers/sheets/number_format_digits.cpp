#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

#include "load/readers/sheets/number_format_parts.h"

namespace zorvane::number_format {
namespace {

// Writes the digits of the integer part into its placeholders, from the highest power of ten on.
class IntegerWriter {
  public:
    IntegerWriter(const Decimal& number, std::int32_t placeholders, bool grouped)
        : number_(number), left_(placeholders), grouped_(grouped) {}

    void Put(char placeholder, std::string& out) {
        --left_;
        if (first_) {
            for (std::int32_t power = number_.point - 1; power > left_; --power)
                Digit(number_.At(power), power, out);
        }
        first_ = false;
        if (number_.count > 0 && number_.point > left_) {
            Digit(number_.At(left_), left_, out);
        } else if (placeholder == '0' || zero_seen_) {
            Digit('0', left_, out);
            zero_seen_ = true;
        } else if (placeholder == '?') {
            out += ' ';
        }
    }

  private:
    void Digit(char digit, std::int32_t power, std::string& out) const {
        out += digit;
        if (grouped_ && power > 0 && power % 3 == 0)
            out += ',';
    }

    const Decimal& number_;
    std::int32_t left_;
    bool grouped_;
    bool first_ = true;
    bool zero_seen_ = false;
};

// Last decimal that must be written: that of a digit or of a 0 in the code.
std::int32_t DecimalsToWrite(const Section& section, const Decimal& number) {
    std::int32_t last = number.count == 0 ? 0 : number.count - number.point;
    std::int32_t index = 0;
    bool behind_point = false;
    for (const Part& part : section.parts) {
        if (part.kind == PartKind::Exponent)
            break;
        behind_point = behind_point || part.kind == PartKind::Point;
        if (behind_point && part.kind == PartKind::Digit) {
            ++index;
            if (part.what == '0')
                last = std::max(last, index);
        }
    }
    return last;
}

void AppendExponent(std::int32_t exponent, std::int32_t digits, char sign, std::string& out) {
    out += 'E';
    if (exponent < 0)
        out += '-';
    else if (sign == '+')
        out += '+';
    const std::string text = std::to_string(std::abs(exponent));
    out.append(
        static_cast<std::size_t>(std::max(0, digits - static_cast<std::int32_t>(text.size()))),
        '0');
    out += text;
}

// Exponent of a number whose mantissa has `places` digits before the point.
std::int32_t ExponentOf(const Decimal& number, std::int32_t places) {
    if (number.count == 0)
        return 0;
    const std::int32_t step = std::max(places, 1);
    const std::int32_t exponent = number.point - 1;
    return exponent >= 0 ? exponent / step * step : -((-exponent + step - 1) / step * step);
}

std::int32_t TakeExponent(const Section& section, Decimal& number) {
    // Rounding may carry into a further digit: then the exponent is told anew.
    std::int32_t exponent = 0;
    for (int round = 0; round < 2; ++round) {
        exponent = ExponentOf(number, section.integer_digits);
        Decimal rounded = number;
        rounded.point -= exponent;
        rounded.Round(section.decimals);
        rounded.point += exponent;
        number = rounded;
    }
    exponent = ExponentOf(number, section.integer_digits);
    number.point -= exponent;
    return exponent;
}

struct Ratio {
    std::int64_t numerator = 0;
    std::int64_t denominator = 1;
};

// The nearest fraction with a denominator up to `most`, by continued fractions and their
// intermediate steps.
Ratio Nearest(double value, std::int64_t most) {
    Ratio before{1, 0};
    Ratio last{static_cast<std::int64_t>(value), 1};
    double rest = value - std::floor(value);
    for (int step = 0; step < 64 && rest > 1e-12; ++step) {
        const double inverse = 1.0 / rest;
        const auto whole = static_cast<std::int64_t>(std::min(inverse, 1e9));
        const std::int64_t denominator = whole * last.denominator + before.denominator;
        if (denominator > most) {
            const std::int64_t part = (most - before.denominator) / last.denominator;
            const Ratio between{part * last.numerator + before.numerator,
                                part * last.denominator + before.denominator};
            const auto away = [value](const Ratio& ratio) {
                return std::abs(value - static_cast<double>(ratio.numerator) /
                                            static_cast<double>(ratio.denominator));
            };
            return between.denominator > 0 && away(between) < away(last) ? between : last;
        }
        const Ratio next{whole * last.numerator + before.numerator, denominator};
        before = last;
        last = next;
        rest = inverse - std::floor(inverse);
    }
    return last;
}

// Right-aligned for a numerator, left-aligned for a denominator, in the width of its placeholders.
void AppendAligned(std::int64_t number, std::size_t width, char fill, bool right,
                   std::string& out) {
    const std::string text = std::to_string(number);
    const std::size_t missing = std::max(width, text.size()) - text.size();
    if (right && fill != '#')
        out.append(missing, fill == '0' ? '0' : ' ');
    out += text;
    if (!right && fill == '?')
        out.append(missing, ' ');
}

// Writes a number part by part: first the whole digits, then the decimals, then the exponent.
class NumberWriter {
  public:
    NumberWriter(const Section& section, const Decimal& number, std::int32_t exponent,
                 std::string& out)
        : section_(section),
          number_(number),
          exponent_(exponent),
          decimals_(DecimalsToWrite(section, number)),
          integer_(number, section.integer_digits, section.grouped),
          out_(out) {}

    void Put(const Part& part) {
        switch (part.kind) {
            case PartKind::Digit:
                return PutDigit(part.what);
            case PartKind::Point:
                return PutPoint();
            case PartKind::Exponent:
                behind_exponent_ = true;
                return AppendExponent(exponent_, section_.exponent_digits, part.what, out_);
            case PartKind::Percent:
                out_ += '%';
                return;
            default:
                out_ += part.text;
                return;
        }
    }

  private:
    void PutDigit(char placeholder) {
        if (behind_exponent_)
            return;
        if (!behind_point_)
            integer_.Put(placeholder, out_);
        else if (++decimal_ <= decimals_)
            out_ += number_.At(-decimal_);
        else if (placeholder == '?')
            out_ += ' ';
    }

    void PutPoint() {
        // A code such as ".00" has no place for whole digits of its own.
        if (section_.integer_digits == 0) {
            for (std::int32_t power = number_.point - 1; power >= 0; --power)
                out_ += number_.At(power);
        }
        out_ += '.';
        behind_point_ = true;
    }

    const Section& section_;
    const Decimal& number_;
    std::int32_t exponent_;
    std::int32_t decimals_;
    IntegerWriter integer_;
    std::string& out_;
    std::int32_t decimal_ = 0;
    bool behind_point_ = false;
    bool behind_exponent_ = false;
};

struct MixedNumber {
    double whole = 0;
    Ratio ratio;
};

MixedNumber Split(const Section& section, double magnitude) {
    constexpr double kLargest = 1e15;  // above it a double has no fraction left
    MixedNumber number;
    number.whole = section.integer_digits > 0 ? std::floor(magnitude) : 0;
    const double rest = std::min(magnitude - number.whole, kLargest);
    if (section.denominator > 0)
        number.ratio = {std::llround(rest * section.denominator), section.denominator};
    else
        number.ratio = Nearest(rest, section.most_denominator);
    if (section.integer_digits > 0 && number.ratio.numerator == number.ratio.denominator) {
        number.whole += 1;
        number.ratio.numerator = 0;
    }
    return number;
}

// Behind the digits that begin at `index`.
std::size_t DigitsEnd(const std::vector<Part>& parts, std::size_t index) {
    while (index < parts.size() && parts[index].kind == PartKind::Digit)
        ++index;
    return index;
}

// The parts of a fraction from its numerator on; behind a whole number with blanks in their place.
void AppendRatio(const Section& section, const Ratio& ratio, bool blank, std::string& out) {
    bool numerator = true;
    for (std::size_t i = section.numerator; i < section.parts.size();) {
        const Part& part = section.parts[i];
        const std::size_t end = std::max(DigitsEnd(section.parts, i), i + 1);
        const std::size_t from = out.size();
        if (part.kind == PartKind::Digit)
            AppendAligned(numerator ? ratio.numerator : ratio.denominator, end - i,
                          section.parts[end - 1].what, numerator, out);
        else
            out += part.kind == PartKind::Slash ? "/" : part.text;
        if (blank && part.kind != PartKind::Literal)
            std::fill(out.begin() + static_cast<std::ptrdiff_t>(from), out.end(), ' ');
        numerator = numerator && part.kind != PartKind::Slash;
        i = end;
    }
}

}  // namespace

Decimal::Decimal(double magnitude) {
    if (magnitude == 0 || !std::isfinite(magnitude))
        return;
    char text[40];
    const auto [end, error] =
        std::to_chars(text, text + sizeof text, magnitude, std::chars_format::scientific, 14);
    if (error != std::errc())
        return;
    digits[0] = text[0];
    std::memcpy(digits + 1, text + 2, 14);
    count = 15;
    const char* exponent = text + 17;  // behind "d.dddddddddddddde"
    if (*exponent == '+')
        ++exponent;
    std::from_chars(exponent, end, point);
    ++point;
    while (count > 0 && digits[count - 1] == '0')
        --count;
}

void Decimal::Round(std::int32_t places) {
    const std::int32_t keep = point + places;
    if (keep >= count)
        return;
    if (keep < 0) {
        count = 0;
        point = 0;
        return;
    }
    const bool up = digits[keep] >= '5';
    count = keep;
    if (up) {
        while (count > 0 && digits[count - 1] == '9')
            --count;
        if (count > 0) {
            ++digits[count - 1];
        } else {
            digits[0] = '1';
            count = 1;
            ++point;
        }
    }
    while (count > 0 && digits[count - 1] == '0')
        --count;
    if (count == 0)
        point = 0;
}

bool AppendNumber(const Section& section, double magnitude, std::string& out) {
    Decimal number(magnitude);
    if (number.count > 0)
        number.point += section.scale;
    std::int32_t exponent = 0;
    if (section.kind == SectionKind::Exponential)
        exponent = TakeExponent(section, number);
    else
        number.Round(section.decimals);
    NumberWriter writer(section, number, exponent, out);
    for (const Part& part : section.parts)
        writer.Put(part);
    return number.count == 0;
}

bool AppendFraction(const Section& section, double magnitude, std::string& out) {
    const MixedNumber number = Split(section, magnitude);
    const Decimal whole(number.whole);
    IntegerWriter writer(whole, section.integer_digits, section.grouped);
    const bool zero = number.whole == 0 && number.ratio.numerator == 0;
    for (std::size_t i = 0; i < section.numerator; ++i) {
        const Part& part = section.parts[i];
        if (part.kind == PartKind::Digit)
            writer.Put(zero ? '0' : part.what, out);
        else
            out += part.text;
    }
    AppendRatio(section, number.ratio, number.ratio.numerator == 0 && section.integer_digits > 0,
                out);
    return zero;
}

}  // namespace zorvane::number_format
