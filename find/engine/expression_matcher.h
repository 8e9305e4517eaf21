// A regular expression that takes time in proportion to the text, whatever the text.
#pragma once

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "common/base/result.h"
#include "find/engine/expression_reader.h"

namespace zorvane {

struct MatchSpan {
    std::size_t begin = 0;
    std::size_t end = 0;
    friend bool operator==(const MatchSpan&, const MatchSpan&) = default;
};

enum class MatchEnd {
    Found,
    None,
    Failed,  ///< too much for the one library, and the other does not know such expressions
    Unsure   ///< of several lines: to be asked line by line
};

/// Of one thread.
class MatchScratch {
  public:
    MatchScratch();
    ~MatchScratch();
    MatchScratch(MatchScratch&&) noexcept;
    MatchScratch& operator=(MatchScratch&&) noexcept;

  private:
    friend class ExpressionMatcher;
    struct State;
    std::unique_ptr<State> state_;
};

/// Two libraries find the same: a fast one, which takes endless time for some expressions on some
/// lines, and a steady one, which is asked of lines that are too much for the first and of all
/// lines once there were too many of these. Safe for several threads.
class ExpressionMatcher {
  public:
    ~ExpressionMatcher();
    /// Fails in a user's words.
    static Result<std::unique_ptr<ExpressionMatcher>> Make(const ReadExpression& expression,
                                                           bool match_case);
    /// The first match at or behind `from` in a line without its end. `stop` is asked now and then.
    MatchEnd InLine(std::string_view line, std::size_t from, MatchScratch& scratch,
                    MatchSpan& match) const;
    /// The same in whole lines, of an expression that never reaches over a line end; each CR is
    /// one in front of a LF.
    MatchEnd InLines(std::string_view lines, std::size_t from, MatchScratch& scratch,
                     MatchSpan& match) const;
    /// True once the steady library does all.
    bool Steady() const { return steady_.load(std::memory_order_relaxed); }
    /// For tests and measurements.
    void BeSteady() const;

  private:
    struct Compiled;
    ExpressionMatcher();
    MatchEnd InLineSteadily(std::string_view line, std::size_t from, MatchSpan& match) const;
    MatchEnd InLinePatiently(std::string_view line, std::size_t from, MatchScratch& scratch,
                             MatchSpan& match) const;
    void Note(MatchScratch& scratch, std::size_t bytes,
              std::chrono::steady_clock::duration time) const;

    std::unique_ptr<Compiled> compiled_;
    mutable std::atomic<int> hard_lines_{0};
    mutable std::atomic<bool> steady_{false};
};

}  // namespace zorvane
