// What of a line takes part in the comparison.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/result.h"

namespace zorvane {

struct FilterSwitches {
    bool ignore_case = false;
    bool ignore_whitespace = false;
    bool use_expressions = false;
    friend bool operator==(const FilterSwitches&, const FilterSwitches&) = default;
};

/// Turns a line into the key by which it is compared: lines with equal keys are equal.
///
/// Expressions are regular expressions (PCRE2, UTF-8) separated by "@@", with one change that users
/// are told of: an unescaped `*` outside brackets is any run of characters, as in a wildcard, and
/// not a repetition: "T*P" leaves "TIP" and "T234P" out. The run is as short as the rest of the
/// expression allows; at the end of an expression it goes to the end of the line. ".*" means the
/// same as `*`. A match that costs too much is no match.
class LineFilter {
  public:
    LineFilter();
    ~LineFilter();
    LineFilter(LineFilter&&) noexcept;
    LineFilter& operator=(LineFilter&&) noexcept;

    /// Fails with the expression's own text when one cannot be understood. The same expressions
    /// again cost nothing.
    Status Set(const FilterSwitches& switches, const std::string& expressions);

    /// True when a line is its own key, so that nothing needs to be copied.
    bool IsIdentity() const;
    /// The key, in `buffer` or in `line` itself. Letters are folded character by character, blanks
    /// left out.
    std::string_view Key(std::string_view line, std::string& buffer) const;

  private:
    struct Expressions;
    FilterSwitches switches_;
    std::string expressions_text_;
    std::unique_ptr<Expressions> expressions_;
};

/// In a failure of `LineFilter::Set` between the expression and what is wrong with it.
constexpr std::string_view kUnusable = " cannot be used: ";
/// The PCRE2 form of one expression of the users' form.
std::string TranslateExpression(std::string_view expression);

}  // namespace zorvane
