// The search for a text in an editor.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "compare/document/editor.h"

namespace zorvane {

struct SearchRules {
    std::u16string text;      ///< empty: nothing is found
    bool whole_word = false;  ///< neither a letter nor a digit in front of it or behind it
    bool match_case = false;
    friend bool operator==(const SearchRules&, const SearchRules&) = default;
};

/// Reads the text a stretch at a time, so nothing is copied whole and nothing is kept.
class TextSearch {
  public:
    explicit TextSearch(SearchRules rules);

    /// The first hit that begins at `from` or behind it and in front of `before`.
    std::optional<TextRange> First(const Editor& editor, CharPos from, CharPos before) const;
    /// The last such hit.
    std::optional<TextRange> Last(const Editor& editor, CharPos from, CharPos before) const;
    /// All hits of which a part is in a stretch, also such that overlap: marks for what is in
    /// sight.
    std::vector<TextRange> Touching(const Editor& editor, TextRange stretch) const;
    /// All hits of the text, none of which overlaps another.
    std::vector<TextRange> All(const Editor& editor) const;

  private:
    struct Window;
    Window Read(const Editor& editor, std::int32_t first, std::int32_t end) const;
    bool Stands(const Window& window, std::size_t at) const;
    template <class Take>
    void Walk(const Editor& editor, CharPos from, CharPos before, const Take& take) const;
    std::int32_t Size() const { return static_cast<std::int32_t>(rules_.text.size()); }

    SearchRules rules_;  // the text in the case in which it is searched
};

}  // namespace zorvane
