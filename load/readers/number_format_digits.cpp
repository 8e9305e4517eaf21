#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>

#include "load/readers/number_format_parts.h"

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
    const std::size_t missing = width > text.size() ? width - text.size() : 0;
    if (right && fill != '#')
        out.append(missing, fill == '0' ? '0' : ' ');
    out += text;
    if (!right && fill == '?')
        out.append(missing, ' ');
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
    IntegerWriter integer(number, section.integer_digits, section.grouped);
    const std::int32_t decimals = DecimalsToWrite(section, number);
    std::int32_t decimal = 0;
    bool behind_point = false;
    bool behind_exponent = false;
    for (const Part& part : section.parts) {
        switch (part.kind) {
            case PartKind::Digit:
                if (behind_exponent)
                    break;
                if (!behind_point)
                    integer.Put(part.what, out);
                else if (++decimal <= decimals)
                    out += number.At(-decimal);
                else if (part.what == '?')
                    out += ' ';
                break;
            case PartKind::Point:
                // A code such as ".00" has no place for whole digits of its own.
                if (section.integer_digits == 0 && number.point > 0) {
                    for (std::int32_t power = number.point - 1; power >= 0; --power)
                        out += number.At(power);
                }
                out += '.';
                behind_point = true;
                break;
            case PartKind::Exponent:
                AppendExponent(exponent, section.exponent_digits, part.what, out);
                behind_exponent = true;
                break;
            case PartKind::Percent:
                out += '%';
                break;
            default:
                out += part.text;
                break;
        }
    }
    return number.count == 0;
}

void AppendFraction(const Section& section, double magnitude, std::string& out) {
    // Above this a double has no fraction left.
    double value = std::min(magnitude, 1e15);
    double whole = section.integer_digits > 0 ? std::floor(value) : 0;
    Ratio ratio;
    if (section.denominator > 0)
        ratio = {std::llround((value - whole) * section.denominator), section.denominator};
    else
        ratio = Nearest(value - whole, section.most_denominator);
    if (section.integer_digits > 0 && ratio.numerator == ratio.denominator) {
        whole += 1;
        ratio.numerator = 0;
    }
    Decimal integer(whole);
    IntegerWriter writer(integer, section.integer_digits, section.grouped);
    // A whole number leaves blanks in the place of its fraction.
    const bool blank = section.integer_digits > 0 && ratio.numerator == 0;
    const std::size_t from = out.size();
    std::size_t fraction = std::string::npos;
    for (std::size_t i = 0; i < section.parts.size(); ++i) {
        const Part& part = section.parts[i];
        if (i == section.numerator)
            fraction = out.size();
        if (part.kind == PartKind::FixedDenominator) {
            out += part.text;
        } else if (part.kind == PartKind::Slash) {
            out += '/';
        } else if (part.kind != PartKind::Digit) {
            out += part.text;
        } else if (i < section.numerator) {
            writer.Put(part.what, out);
        } else {
            std::size_t width = 1;
            const bool numerator = section.parts[i].kind == PartKind::Digit &&
                                   out.find('/', fraction) == std::string::npos;
            while (i + 1 < section.parts.size() && section.parts[i + 1].kind == PartKind::Digit) {
                ++width;
                ++i;
            }
            AppendAligned(numerator ? ratio.numerator : ratio.denominator, width, part.what,
                          numerator, out);
        }
    }
    if (blank && fraction != std::string::npos)
        std::fill(out.begin() + static_cast<std::ptrdiff_t>(std::max(fraction, from)), out.end(),
                  ' ');
}

}  // namespace zorvane::number_format
