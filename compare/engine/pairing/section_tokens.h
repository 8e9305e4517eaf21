// The sections of a changed stretch as alignment sees them: a word and the separator behind it.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/run_watcher.h"
#include "compare/engine/line_filter.h"
#include "compare/engine/pairing/stretch_text.h"

namespace zorvane {

/// Positions are UTF-16 units. The tokens of a text lie end to end.
struct SectionToken {
    std::int32_t begin = 0;
    std::int32_t word_begin = 0;  ///< behind blanks that are ignored
    std::int32_t word_end = 0;    ///< where the separator begins
    std::int32_t end = 0;
    std::uint64_t hash = 0;   ///< of the key; this and what follows once it is weighed
    std::int32_t keep = 0;    ///< what an equal partner brings
    std::int32_t border = 0;  ///< what a chunk is spared that begins or ends behind this
};

struct TokenSwitches {
    bool ignore_case = false;
    bool ignore_whitespace = false;
    const LineFilter* filter = nullptr;  ///< of words; nullptr: words are their own keys
};

/// Whether a unit is a separator.
constexpr bool EndsSection(char16_t unit) {
    return unit == u' ' || unit == u'\r' || unit == u'\n' || unit == u'\v' || unit == u'\a';
}

/// One text cut into tokens. A CR LF pair is one separator; blanks behind a separator are one
/// token, however many (padding). Where blanks are ignored, any of them part words, and each token
/// takes all that follow it.
class TokenizedText {
  public:
    /// The text is borrowed.
    void Cut(std::u16string_view text, const TokenSwitches& switches, StopCheck& stop);
    /// Fills hash, keep and border of the tokens from `begin` up to `end`. `weights`: of the
    /// stretch the text comes from; nullptr: words weigh by their kind alone.
    void Weigh(std::int32_t begin, std::int32_t end, const StretchText* weights, StopCheck& stop);

    const std::vector<SectionToken>& Tokens() const { return tokens_; }
    std::int32_t Count() const { return static_cast<std::int32_t>(tokens_.size()); }
    std::u16string_view Text() const { return text_; }
    std::u16string_view Key(std::int32_t token) const;
    std::u16string_view Separator(std::int32_t token) const;
    /// Whether the filter leaves nothing of a word.
    bool IsNothing(std::int32_t token) const;

  private:
    void CutOne(std::int32_t begin, bool ignore_whitespace);
    void MakeKey(std::int32_t index, const LineFilter& filter);

    std::u16string_view text_;
    std::vector<SectionToken> tokens_;
    std::vector<std::u16string> keys_;  // where the filter makes them
    std::vector<WordRun> runs_;
    std::string utf8_;
    std::string buffer_;
};

/// Equal words; tokens without a word are equal by their separators.
bool SameToken(const TokenizedText& first, std::int32_t i, const TokenizedText& second,
               std::int32_t j);

}  // namespace zorvane
