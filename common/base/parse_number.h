// Numbers in text, whatever the locale.
#pragma once

#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>
#include <system_error>

#include "common/base/text_encoding.h"

namespace zorvane {

/// The number in front of a text, without blanks or a "+" before it, and the bytes that it takes:
/// none without a number, those of its digits for one out of the type's range.
template <class Number>
struct NumberInFront {
    std::optional<Number> value;
    std::size_t size = 0;
};
/// `base` is one `int` or left out.
template <class Number, class... Base>
NumberInFront<Number> ReadNumber(std::string_view text, Base... base) {
    Number number{};
    const auto [end, error] =
        std::from_chars(text.data(), text.data() + text.size(), number, base...);
    const auto size = static_cast<std::size_t>(end - text.data());
    return {error == std::errc() ? std::optional<Number>(number) : std::nullopt, size};
}

/// The number that the whole text is; none when it is more or less than a number, or out of the
/// type's range.
template <class Number, class... Base>
std::optional<Number> ParseNumber(std::string_view text, Base... base) {
    const NumberInFront<Number> front = ReadNumber<Number>(text, base...);
    return front.size == text.size() ? front.value : std::nullopt;
}

/// As somebody types it: with blanks around it, and with a "+" if they like.
inline std::optional<std::int32_t> ParseTypedNumber(std::string_view text) {
    text = Trim(text);
    if (text.starts_with('+'))
        text.remove_prefix(1);
    return ParseNumber<std::int32_t>(text);
}

}  // namespace zorvane
