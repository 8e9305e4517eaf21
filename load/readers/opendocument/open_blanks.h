// White space in the text of an OpenDocument file: a run of it is one blank, and none where a
// paragraph begins. One at the end stays, as office suites write and read it. Source:
// OpenDocument 1.3, part 3 (6.1.2, 6.1.3).
#pragma once

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

#include "load/readers/container/xml_part.h"

namespace zorvane {

class OpenBlanks {
  public:
    void BeginParagraph() { after_blank_ = true; }
    /// Adds to `shown` what the text shows.
    void Append(std::string_view text, std::string& shown) {
        while (!text.empty()) {
            const std::size_t word = std::min(text.find_first_of(kBlanks), text.size());
            if (word > 0) {
                shown += text.substr(0, word);
                after_blank_ = false;
            }
            text.remove_prefix(word);
            const std::size_t blanks = std::min(text.find_first_not_of(kBlanks), text.size());
            text.remove_prefix(blanks);
            if (blanks > 0 && !after_blank_) {
                shown += ' ';
                after_blank_ = true;
            }
        }
    }
    /// What stands for itself was shown: a tab, a line break, counted blanks, a note.
    void Exact() { after_blank_ = false; }

  private:
    static constexpr std::string_view kBlanks = " \t\r\n";
    bool after_blank_ = true;
};

/// How many blanks an element of them stands for, by its attribute.
inline std::size_t OpenBlankCount(std::string_view count) {
    constexpr std::int32_t kMost = 10'000;
    return static_cast<std::size_t>(std::clamp(NumberOf(count, 1), 1, kMost));
}

}  // namespace zorvane
