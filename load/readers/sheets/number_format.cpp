#include "load/readers/sheets/number_format.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "load/readers/sheets/number_format_parts.h"

namespace zorvane {

using number_format::Condition;
using number_format::Decimal;
using number_format::Part;
using number_format::PartKind;
using number_format::Section;
using number_format::SectionKind;

struct NumberFormat::Parsed {
    std::vector<Section> numbers;  ///< one to three
    std::optional<Section> text;
    bool is_date = false;
    bool general = false;  ///< nothing but General: the shortest way

    struct Choice {
        const Section* section = nullptr;
        bool own_minus = false;  ///< the section tells the sign by itself
    };
    Choice Choose(double value) const;
    Choice ByCondition(double value) const;
};

namespace {

bool IsPlainGeneral(const std::vector<Section>& sections) {
    return sections.size() == 1 && sections[0].parts.size() == 1 &&
           sections[0].kind == SectionKind::General;
}

void AppendInSection(const Section& section, double value, bool date_1904, bool own_minus,
                     std::string& out) {
    if (section.kind == SectionKind::Date) {
        number_format::AppendDate(section, value, date_1904, out);
        return;
    }
    const std::size_t from = out.size();
    const bool minus = value < 0 && !own_minus;
    const double magnitude = std::abs(value);
    if (minus)
        out += '-';
    if (section.kind == SectionKind::General || section.kind == SectionKind::Text) {
        for (const Part& part : section.parts) {
            if (part.kind == PartKind::General || part.kind == PartKind::Text)
                AppendGeneral(magnitude, out);
            else
                out += part.text;
        }
        return;
    }
    const bool zero = section.kind == SectionKind::Fraction
                          ? number_format::AppendFraction(section, magnitude, out)
                          : number_format::AppendNumber(section, magnitude, out);
    const bool digits = section.integer_digits + section.decimals > 0;
    if (minus && zero && digits)
        out.erase(from, 1);
}

// "1E+20" from digits and the power of ten of the first.
void AppendScientific(const Decimal& number, std::string& out) {
    out += number.digits[0];
    if (number.count > 1) {
        out += '.';
        out.append(number.digits + 1, static_cast<std::size_t>(number.count - 1));
    }
    const std::int32_t exponent = number.point - 1;
    out += exponent < 0 ? "E-" : "E+";
    if (std::abs(exponent) < 10)
        out += '0';
    out += std::to_string(std::abs(exponent));
}

void AppendFixed(const Decimal& number, std::string& out) {
    if (number.point <= 0) {
        out += "0";
    } else {
        for (std::int32_t power = number.point - 1; power >= 0; --power)
            out += number.At(power);
    }
    const std::int32_t decimals = number.count - number.point;
    if (decimals > 0)
        out += '.';
    for (std::int32_t i = 1; i <= decimals; ++i)
        out += number.At(-i);
}

}  // namespace

NumberFormat::Parsed::Choice NumberFormat::Parsed::ByCondition(double value) const {
    // A section without a condition has that of its place: not negative, negative, the rest.
    const Condition usual[2] = {{numbers.size() > 2 ? ">" : ">=", 0}, {"<", 0}};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::optional<Condition>& own = numbers[i].condition;
        if (i == 2 || (i + 1 == numbers.size() && !own))
            return {&numbers[i], false};
        const Condition& condition = own ? *own : usual[i];
        if (condition.Holds(value))
            return {&numbers[i], condition.OnlyNegative()};
    }
    return {};
}

NumberFormat::Parsed::Choice NumberFormat::Parsed::Choose(double value) const {
    if (numbers[0].condition || (numbers.size() > 1 && numbers[1].condition))
        return ByCondition(value);
    if (numbers.size() == 1)
        return {&numbers[0], false};
    if (value < 0)
        return {&numbers[1], true};
    return {&numbers[value == 0 && numbers.size() > 2 ? 2 : 0], false};
}

NumberFormat::NumberFormat(std::string_view code) : parsed_(std::make_unique<Parsed>()) {
    auto sections = number_format::ParseSections(code);
    if (!sections || IsPlainGeneral(*sections)) {
        parsed_->general = true;
        return;
    }
    if (sections->size() == 4 || sections->back().has_text) {
        parsed_->text = std::move(sections->back());
        sections->pop_back();
    }
    parsed_->numbers = std::move(*sections);
    parsed_->general = parsed_->numbers.empty();
    parsed_->is_date = !parsed_->general && parsed_->numbers[0].kind == SectionKind::Date;
}

NumberFormat::~NumberFormat() = default;
NumberFormat::NumberFormat(NumberFormat&&) noexcept = default;
NumberFormat& NumberFormat::operator=(NumberFormat&&) noexcept = default;

void NumberFormat::Apply(double value, bool date_1904, std::string& out) const {
    if (parsed_->general || !std::isfinite(value)) {
        AppendGeneral(value, out);
        return;
    }
    const Parsed::Choice choice = parsed_->Choose(value);
    if (choice.section == nullptr)
        out += "#####";  // no condition of the code holds
    else
        AppendInSection(*choice.section, value, date_1904, choice.own_minus, out);
}

void NumberFormat::ApplyText(std::string_view text, std::string& out) const {
    if (!parsed_->text) {
        out += text;
        return;
    }
    for (const Part& part : parsed_->text->parts) {
        if (part.kind == PartKind::Text || part.kind == PartKind::General)
            out += text;
        else
            out += part.text;
    }
}

bool NumberFormat::IsDate() const {
    return parsed_->is_date;
}

std::string_view NumberFormat::BuiltIn(std::int32_t id) {
    struct Row {
        std::int32_t id;
        std::string_view code;
    };
    static constexpr Row kRows[] = {
        {0, "General"},
        {1, "0"},
        {2, "0.00"},
        {3, "#,##0"},
        {4, "#,##0.00"},
        {5, "\"$\"#,##0_);(\"$\"#,##0)"},
        {6, "\"$\"#,##0_);[Red](\"$\"#,##0)"},
        {7, "\"$\"#,##0.00_);(\"$\"#,##0.00)"},
        {8, "\"$\"#,##0.00_);[Red](\"$\"#,##0.00)"},
        {9, "0%"},
        {10, "0.00%"},
        {11, "0.00E+00"},
        {12, "# ?/?"},
        {13, "# ?\?/?\?"},
        {14, "m/d/yyyy"},
        {15, "d-mmm-yy"},
        {16, "d-mmm"},
        {17, "mmm-yy"},
        {18, "h:mm AM/PM"},
        {19, "h:mm:ss AM/PM"},
        {20, "h:mm"},
        {21, "h:mm:ss"},
        {22, "m/d/yyyy h:mm"},
        {36, "m/d/yyyy"},
        {37, "#,##0_);(#,##0)"},
        {38, "#,##0_);[Red](#,##0)"},
        {39, "#,##0.00_);(#,##0.00)"},
        {40, "#,##0.00_);[Red](#,##0.00)"},
        {41, "_(* #,##0_);_(* \\(#,##0\\);_(* \"-\"_);_(@_)"},
        {42, "_(\"$\"* #,##0_);_(\"$\"* \\(#,##0\\);_(\"$\"* \"-\"_);_(@_)"},
        {43, "_(* #,##0.00_);_(* \\(#,##0.00\\);_(* \"-\"?\?_);_(@_)"},
        {44, "_(\"$\"* #,##0.00_);_(\"$\"* \\(#,##0.00\\);_(\"$\"* \"-\"?\?_);_(@_)"},
        {45, "mm:ss"},
        {46, "[h]:mm:ss"},
        {47, "mm:ss.0"},
        {48, "##0.0E+0"},
        {49, "@"},
    };
    // East Asian dates and times, whose look depends on the reader's language.
    if ((id >= 27 && id <= 31) || (id >= 50 && id <= 58))
        return "m/d/yyyy";
    if (id >= 32 && id <= 35)
        return "h:mm:ss";
    for (const Row& row : kRows) {
        if (row.id == id)
            return row.code;
    }
    return {};
}

void AppendGeneral(double value, std::string& out) {
    constexpr double kLargestFixed = 1e11;
    if (!std::isfinite(value)) {
        out += "#NUM!";
        return;
    }
    if (value == std::floor(value) && std::abs(value) < kLargestFixed) {
        char text[24];
        const auto whole = static_cast<std::int64_t>(value);
        out.append(text, std::to_chars(text, text + sizeof text, whole).ptr);
        return;
    }
    if (std::signbit(value))
        out += '-';
    Decimal number(std::abs(value));
    const std::int32_t exponent = number.point - 1;
    if (exponent > 10 || (exponent < -4 && number.count - number.point > 9)) {
        number.Round(5 - exponent);
        AppendScientific(number, out);
        return;
    }
    number.Round(std::clamp(9 - exponent, 0, 9));
    if (number.point > 11)
        AppendScientific(number, out);
    else
        AppendFixed(number, out);
}

}  // namespace zorvane
