#include <algorithm>

#include "common/base/parse_number.h"
#include "load/readers/sheets/number_format_parts.h"

namespace zorvane::number_format {
namespace {

constexpr std::int32_t kMostPlaceholders = 200;

std::string_view CharacterOf(PartKind kind) {
    switch (kind) {
        case PartKind::Point:
            return ".";
        case PartKind::Comma:
            return ",";
        case PartKind::Percent:
            return "%";
        case PartKind::Slash:
            return "/";
        default:
            return {};
    }
}

void MakeLiteral(Part& part) {
    if (part.kind == PartKind::Digit)
        part.text = std::string(1, part.what);
    else if (part.kind == PartKind::Exponent)
        part.text = std::string("E") + part.what;
    else
        part.text = CharacterOf(part.kind);
    part.kind = PartKind::Literal;
}

void CompleteDate(Section& section) {
    section.kind = SectionKind::Date;
    for (Part& part : section.parts) {
        switch (part.kind) {
            case PartKind::Digit:
            case PartKind::Point:
            case PartKind::Comma:
            case PartKind::Percent:
            case PartKind::Exponent:
            case PartKind::Slash:
                MakeLiteral(part);
                break;
            case PartKind::SubSecond:
                section.sub_seconds = std::max(section.sub_seconds, part.count);
                break;
            case PartKind::AmPm:
                section.twelve_hours = true;
                break;
            case PartKind::Elapsed:
                section.elapsed = true;
                break;
            default:
                break;
        }
    }
}

bool IsDigit(const Part& part) {
    return part.kind == PartKind::Digit;
}

// "16" behind the slash stands there as literal digits, or begins with 1 to 9 and goes on with 0.
std::int32_t FixedDenominator(std::vector<Part>& parts, std::size_t slash) {
    std::string digits;
    std::size_t end = slash + 1;
    if (end >= parts.size() || parts[end].kind != PartKind::Literal)
        return 0;
    const std::string text = parts[end].text;
    const std::size_t size = std::min(text.find_first_not_of("0123456789"), text.size());
    digits = text.substr(0, size);
    std::string behind = text.substr(size);
    ++end;
    while (behind.empty() && end < parts.size() && IsDigit(parts[end]) && parts[end].what == '0') {
        digits += '0';
        ++end;
    }
    const std::int32_t number = ParseNumber<std::int32_t>(digits).value_or(0);
    if (number <= 0 || number > 99'999)
        return 0;
    const auto first = parts.begin() + static_cast<std::ptrdiff_t>(slash) + 1;
    parts.erase(first, parts.begin() + static_cast<std::ptrdiff_t>(end));
    if (!behind.empty())
        parts.insert(parts.begin() + static_cast<std::ptrdiff_t>(slash) + 1,
                     {PartKind::Literal, 0, 0, behind});
    parts.insert(parts.begin() + static_cast<std::ptrdiff_t>(slash) + 1,
                 {PartKind::FixedDenominator, 0, 0, digits});
    return number;
}

// True when the slash is that of a fraction, that is when digits stand on both sides.
bool CompleteFraction(Section& section) {
    std::vector<Part>& parts = section.parts;
    const auto found = std::find_if(parts.begin(), parts.end(),
                                    [](const Part& part) { return part.kind == PartKind::Slash; });
    if (found == parts.begin() || found == parts.end() || !IsDigit(*(found - 1)))
        return false;
    const auto slash = static_cast<std::size_t>(found - parts.begin());
    std::int32_t places = 0;
    for (std::size_t i = slash + 1; i < parts.size() && IsDigit(parts[i]); ++i)
        ++places;
    if (places == 0)
        section.denominator = FixedDenominator(parts, slash);
    if (places == 0 && section.denominator == 0)
        return false;
    section.most_denominator = 9;
    for (; places > 1 && section.most_denominator < 99'999; --places)
        section.most_denominator = section.most_denominator * 10 + 9;
    section.numerator = slash;
    while (section.numerator > 0 && IsDigit(parts[section.numerator - 1]))
        --section.numerator;
    section.integer_digits = static_cast<std::int32_t>(std::count_if(
        parts.begin(), parts.begin() + static_cast<std::ptrdiff_t>(section.numerator), IsDigit));
    section.kind = SectionKind::Fraction;
    return true;
}

// True when a digit stands behind the comma, before the point.
bool DigitBehind(const std::vector<Part>& parts, std::size_t index) {
    for (++index; index < parts.size(); ++index) {
        if (IsDigit(parts[index]))
            return true;
        if (parts[index].kind == PartKind::Point || parts[index].kind == PartKind::Exponent)
            return false;
    }
    return false;
}

// A comma between digits groups them; one or more behind the last digit before the point divide.
void ResolveCommas(Section& section) {
    std::vector<Part>& parts = section.parts;
    bool digit_before = false;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        digit_before = digit_before || IsDigit(parts[i]);
        if (parts[i].kind != PartKind::Comma)
            continue;
        if (!digit_before)
            MakeLiteral(parts[i]);
        else if (DigitBehind(parts, i))
            section.grouped = true;
        else
            section.scale -= 3;
    }
    std::erase_if(parts, [](const Part& part) { return part.kind == PartKind::Comma; });
}

void CountDigits(Section& section) {
    std::int32_t* counter = &section.integer_digits;
    bool point = false;
    for (Part& part : section.parts) {
        switch (part.kind) {
            case PartKind::Digit:
                ++*counter;
                break;
            case PartKind::Point:
                if (point)
                    MakeLiteral(part);
                else if (counter == &section.integer_digits)
                    counter = &section.decimals;
                point = true;
                break;
            case PartKind::Exponent:
                if (section.kind == SectionKind::Exponential) {
                    MakeLiteral(part);
                    break;
                }
                section.kind = SectionKind::Exponential;
                counter = &section.exponent_digits;
                break;
            case PartKind::Percent:
                section.scale += 2;
                break;
            case PartKind::Slash:
                MakeLiteral(part);
                break;
            default:
                break;
        }
    }
}

}  // namespace

bool CompleteSection(Section& section) {
    bool date = false;
    bool general = false;
    for (const Part& part : section.parts) {
        date = date || part.kind == PartKind::Date || part.kind == PartKind::Elapsed ||
               part.kind == PartKind::AmPm;
        general = general || part.kind == PartKind::General;
        section.has_text = section.has_text || part.kind == PartKind::Text;
    }
    if (date) {
        CompleteDate(section);
        return true;
    }
    if (general || section.has_text) {
        section.kind = general ? SectionKind::General : SectionKind::Text;
        return true;
    }
    if (!CompleteFraction(section)) {
        ResolveCommas(section);
        CountDigits(section);
    }
    return section.integer_digits + section.decimals + section.exponent_digits < kMostPlaceholders;
}

}  // namespace zorvane::number_format
