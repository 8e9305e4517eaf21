// Finds the lines of a text that hold what is looked for, and where.
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

#include "common/base/result.h"
#include "find/engine/byte_finder.h"
#include "find/engine/expression_matcher.h"
#include "find/engine/find_rules.h"

namespace zorvane {

/// Places in the text that was looked through.
struct LineHit {
    std::size_t line_begin = 0;
    std::size_t line_end = 0;  ///< without its CR and LF
    MatchSpan match;           ///< the first of the line
    /// Nobody can tell whether there is one; `match` is nothing. Once a text.
    bool failed = false;
};

class LineFinder {
  public:
    /// Fails in a user's words: an empty text, a line end in it, an expression that is none.
    static Result<std::unique_ptr<LineFinder>> Make(const FindRules& rules);

    /// Each line with a match, in order, once, until `take` says no. `lines` ends with a line end
    /// or with the text; it is UTF-8, and bytes that are not match nothing but themselves. `stop`
    /// is asked every few milliseconds.
    void Find(std::string_view lines, MatchScratch& scratch,
              const std::function<bool(const LineHit&)>& take,
              const std::function<bool()>& stop) const;
    /// All matches in a line, none of which overlaps another: for colours.
    std::vector<MatchSpan> AllIn(std::string_view line, MatchScratch& scratch) const;
    /// True where what is looked for has the same bytes in each encoding of one byte a character.
    bool SuitsBytes() const { return suits_bytes_; }
    /// For tests and measurements; nullptr for a literal text.
    const ExpressionMatcher* Matcher() const { return matcher_.get(); }

  private:
    struct Looking;
    MatchEnd FirstIn(std::string_view line, std::size_t from, MatchScratch& scratch,
                     MatchSpan& match) const;
    void FindLiteral(Looking& looking) const;
    void FindByRequired(Looking& looking) const;
    void FindInSlices(Looking& looking) const;
    bool FindInSlice(Looking& looking, std::string_view slice, std::size_t offset) const;
    bool FindLineByLine(Looking& looking, std::string_view slice, std::size_t offset) const;
    Status LookBeyondAscii(const FindRules& rules);
    Status MakeMatcher(const ReadExpression& read, bool match_case);
    bool TakeLine(Looking& looking, std::size_t begin, std::size_t end) const;

    WordRule word_ = WordRule::Any;
    bool suits_bytes_ = false;
    bool within_line_ = false;
    std::unique_ptr<ByteFinder> bytes_;  ///< the literal text, or what each match holds
    std::unique_ptr<ExpressionMatcher> matcher_;
    /// Of a literal text whose letters have capitals beyond ASCII too: for texts that hold such.
    std::unique_ptr<LineFinder> beyond_ascii_;
};

}  // namespace zorvane
