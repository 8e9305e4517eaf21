// Finds a command by a few of its letters.
#pragma once

#include <optional>
#include <vector>

#include <QString>

namespace zorvane {

struct FuzzyMatch {
    int score = 0;            ///< more is better
    std::vector<int> places;  ///< of the matched characters in the text, ascending
    bool scattered = false;   ///< a piece does not stand there as one
    friend bool operator==(const FuzzyMatch&, const FuzzyMatch&) = default;
};

/// All letters of `pattern` in their order somewhere in `text`, whatever their case. One piece is
/// better than letters here and there, the start of a word better than its middle, earlier better
/// than later. Blanks in the pattern part pieces that are looked for in turn. An empty pattern fits
/// everything with 0.
std::optional<FuzzyMatch> MatchFuzzy(const QString& pattern, const QString& text);

}  // namespace zorvane
