// Numbers in text, whatever the locale.
#pragma once

#include <charconv>
#include <optional>
#include <string_view>
#include <system_error>

namespace zorvane {

/// The number that the whole text is, without blanks or a "+"; none when it is more or less than a
/// number, or out of the type's range.
template <class Number>
std::optional<Number> ParseNumber(std::string_view text) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}
template <class Number>
std::optional<Number> ParseNumber(std::string_view text, int base) {
    Number number{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number, base);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

}  // namespace zorvane
