#include "options/setting_rows.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

#include "common/base/text_encoding.h"
#include "common/string_utilities.h"

namespace zorvane {

std::string SettingText(bool value) {
    return value ? "TRUE" : "FALSE";
}

std::string SettingText(std::int32_t value) {
    return std::to_string(value);
}

std::string SettingText(double value) {
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    return {digits.data(), end};
}

void SetFromSettingText(const std::string& text, bool& value) {
    value = ToUpper(text) != "FALSE";
}

void SetFromSettingText(const std::string& text, std::int32_t& value) {
    constexpr double kLeast = std::numeric_limits<std::int32_t>::min();
    constexpr double kMost = std::numeric_limits<std::int32_t>::max();
    const double number = dSafeCDbl(text, value);
    if (number >= kLeast && number <= kMost)
        value = static_cast<std::int32_t>(number);
}

void SetFromSettingText(const std::string& text, double& value) {
    const double number = dSafeCDbl(text, value);
    if (std::isfinite(number))
        value = number;
}

}  // namespace zorvane
