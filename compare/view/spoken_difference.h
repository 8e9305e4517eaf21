// A difference in words, for who hears it instead of seeing it.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "compare/engine/comparison.h"
#include "compare/view/translate_text.h"

namespace zorvane {

struct SpokenRules {
    bool with_place = false;      ///< "change 3 of 17, paragraph 6: ..."
    std::size_t longest = 80;     ///< characters of one text; a longer one is cut between words
    std::size_t most_places = 8;  ///< inside one difference; of more their number is told
};

/// "change 3 of 17: deleted thirty, inserted forty-five"; `index` is 0-based. Empty past the end.
std::string SpokenDifference(const Comparison& comparison, std::int32_t index,
                             const TranslateText& translate, const SpokenRules& rules = {});

}  // namespace zorvane
