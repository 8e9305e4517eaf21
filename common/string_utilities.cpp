#include "common/string_utilities.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <optional>

#include "common/base/parse_number.h"
#include "common/base/text_bytes.h"
#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

struct DateTokenRow {
    std::string_view token;
    const char* format;
};
constexpr DateTokenRow kDateTokens[] = {
    {"[Y]", "%Y"}, {"[M]", "%m"}, {"[D]", "%d"}, {"[YMD]", "%Y%m%d"}, {"[MDY]", "%m%d%Y"},
    {"[H]", "%H"}, {"[I]", "%M"}, {"[S]", "%S"}, {"[HIS]", "%H%M%S"},
};

std::string Formatted(const std::tm& fields, const char* format) {
    std::array<char, 32> text{};
    const std::size_t size = std::strftime(text.data(), text.size(), format, &fields);
    return {text.data(), size};
}

std::optional<double> Number(std::string_view text) {
    text = Trim(text);
    if (text.starts_with('+'))
        text.remove_prefix(1);
    if (text.find_first_not_of("0123456789.eE+-") != std::string_view::npos)
        return std::nullopt;  // the library reads "nan" and "inf" too
    return ParseNumber<double>(text);
}

std::string TwoDigits(std::int64_t number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

const char* OneOrMany(std::int64_t count, const char* one, const char* many) {
    return count == 1 ? one : many;
}

}  // namespace

std::string sStripQuotes(std::string_view s) {
    std::string text(s);
    std::erase(text, '"');
    return text;
}

std::string sCutAtNul(std::string_view s) {
    return std::string(s.substr(0, s.find('\0')));
}

double dSafeCDbl(std::string_view s, double dDefault) {
    if (const auto number = Number(s))
        return *number;
    std::string other(s);
    const char from = other.find('.') == std::string::npos ? ',' : '.';
    std::replace(other.begin(), other.end(), from, from == '.' ? ',' : '.');
    return Number(other).value_or(dDefault);
}

std::string sTimeSpan(std::int64_t lSeconds, TimeSpanStyle style) {
    const std::int64_t seconds = lSeconds % 60;
    const std::int64_t minutes = lSeconds / 60 % 60;
    const std::int64_t hours = lSeconds / 3600 % 24;
    const std::int64_t days = lSeconds / 86400;
    const bool words = style == TimeSpanStyle::Words;
    const bool colons = style == TimeSpanStyle::Colons;
    std::string text;
    if (days != 0)
        text = std::to_string(days) + (words ? OneOrMany(days, " day ", " days, ") : "d ");
    text += std::to_string(hours);
    text += words ? OneOrMany(hours, "hr ", "hrs ") : colons ? ":" : "h ";
    text += TwoDigits(minutes);
    text += words ? OneOrMany(minutes, "min ", "mins ") : colons ? ":" : "m ";
    text += TwoDigits(seconds);
    text += words ? OneOrMany(seconds, "sec ", "secs") : colons ? "" : "s";
    return text;
}

std::string ProgressTicker::sProgressTicker(std::string_view s) {
    constexpr std::size_t kLastCount = 30;
    if (counter_ > kLastCount)
        counter_ = 0;
    std::size_t end = 0;
    for (std::size_t left = 2 * counter_++; left > 0 && end < s.size(); --left) {
        do
            ++end;
        while (end < s.size() && IsContinuation(s[end]));
    }
    return std::string(s.substr(0, end));
}

std::string ReplaceDateTokens(std::string_view sPath, std::chrono::system_clock::time_point now) {
    std::string path(sPath);
    if (path.find('[') == std::string::npos)
        return path;
    const std::time_t seconds = std::chrono::system_clock::to_time_t(now);
    std::tm fields{};
    localtime_r(&seconds, &fields);
    for (const DateTokenRow& row : kDateTokens) {
        const std::string text = Formatted(fields, row.format);
        std::size_t at = 0;
        while ((at = path.find(row.token, at)) != std::string::npos) {
            path.replace(at, row.token.size(), text);
            at += text.size();
        }
    }
    return path;
}

}  // namespace zorvane
