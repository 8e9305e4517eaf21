// How a paragraph is cut into what pairing weighs: words between blanks, and in them runs of
// letters and digits.
#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "common/base/run_watcher.h"

namespace zorvane {

/// Weights are thousandths: 1000 is a rare long word.
inline constexpr std::int32_t kFullWeight = 1000;

/// A run inside a word, in lower case; a Han, kana or Thai character is a run of its own, an
/// apostrophe between letters is part of the run. A word without letters and digits is one run.
struct WordRun {
    std::uint64_t hash = 0;
    std::int32_t factor = kFullWeight;  ///< by its kind: digits, few letters, signs weigh less
    bool ends_word = false;
};

/// Appends the runs of `text` and gives back the number of its words.
/// What a stop left of it is not whole.
std::int32_t CutIntoRuns(std::u16string_view text, std::vector<WordRun>& runs,
                         StopCheck* stop = nullptr);

/// Whether a unit parts words for pairing: any blank, tab, break or cell mark.
bool PartsWords(char16_t unit);

}  // namespace zorvane
