// Small texts with a decision in them: durations, tickers, date tokens, numbers.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace zorvane {

std::string sStripQuotes(std::string_view s);  ///< without any double quote
std::string sCutAtNul(std::string_view s);
/// Reads a decimal text; tried again with "." and "," exchanged, so that a settings file written
/// under another locale reads as meant.
double dSafeCDbl(std::string_view s, double dDefault);

enum class TimeSpanStyle : std::int32_t { Letters = 0, Colons = 1, Words = 2 };
/// A duration in digits or words; the days only when there are any, the hours modulo 24.
std::string sTimeSpan(std::int64_t lSeconds, TimeSpanStyle style);

/// The growing status text: two characters more of `s` at each call, and after 31 calls from none.
class ProgressTicker {
  public:
    std::string sProgressTicker(std::string_view s);

  private:
    std::size_t counter_ = 0;
};

/// "[Y]", "[M]", "[D]", "[YMD]", "[MDY]", "[H]", "[I]" (minutes), "[S]", "[HIS]" become the local
/// date and time. Kept: only the upper-case spelling is replaced.
std::string ReplaceDateTokens(std::string_view sPath, std::chrono::system_clock::time_point now);

}  // namespace zorvane
