#include "compare/view/text_search.h"

#include <algorithm>
#include <utility>

#include "common/base/text_encoding.h"

namespace zorvane {
namespace {

constexpr std::int32_t kStretch = 1 << 16;  // small enough to stay in the cache

// Length for length: the folding of single characters never changes the number of units.
std::u16string Folded(std::u16string text) {
    const auto beyond = std::find_if(text.begin(), text.end(), [](char16_t& unit) {
        if (unit >= u'A' && unit <= u'Z')
            unit = static_cast<char16_t>(unit + 32);
        return unit >= 0x80;
    });
    if (beyond == text.end())
        return text;
    const auto plain = static_cast<std::size_t>(beyond - text.begin());
    return text.substr(0, plain) + FoldCase(std::u16string_view(text).substr(plain));
}

// The codes of "a" to "z", of the digits and of the underscore, with bit 32 set; and the letters of
// the other alphabets that part their words by blanks as ours does.
bool RulesOut(char16_t unit) {
    const unsigned code = unit | 32U;
    if (code < 0x80)
        return (code >= 97 && code <= 122) || (code >= 48 && code <= 57) || code == 127;
    const bool latin = unit >= 0xC0 && unit <= 0x24F && unit != 0xD7 && unit != 0xF7;
    const bool greek_or_cyrillic = unit >= 0x370 && unit <= 0x52F;
    return latin || greek_or_cyrillic || (unit >= 0x1E00 && unit <= 0x1FFF);
}

}  // namespace

// A stretch of the text with one unit more at each end, where there is one.
struct TextSearch::Window {
    std::u16string text;
    std::int32_t first = 0;  // position of its first unit
    std::size_t begin = 0;   // of the stretch that was asked for
    std::size_t end = 0;
};

TextSearch::TextSearch(SearchRules rules) : rules_(std::move(rules)) {
    if (!rules_.match_case)
        rules_.text = Folded(std::move(rules_.text));
}

TextSearch::Window TextSearch::Read(const Editor& editor, std::int32_t first,
                                    std::int32_t end) const {
    const CharPos from{std::max(0, first - 1)};
    const CharPos to{std::min(editor.Length(), end + 1)};
    // Neither end stays inside a break, so the range may begin earlier and end earlier.
    const TextRange range = editor.Clip(TextRange::Between(from, to));
    Window window{editor.Text(range), range.first.value, 0, 0};
    if (!rules_.match_case)
        window.text = Folded(std::move(window.text));
    window.begin = static_cast<std::size_t>(first - window.first);
    window.end = std::min(window.text.size(), static_cast<std::size_t>(end - window.first));
    return window;
}

bool TextSearch::Stands(const Window& window, std::size_t at) const {
    if (!rules_.whole_word)
        return true;
    const std::size_t behind = at + rules_.text.size();
    return (at == 0 || !RulesOut(window.text[at - 1])) &&
           (behind >= window.text.size() || !RulesOut(window.text[behind]));
}

// Calls `take` with each hit that begins in a part of the text, until it says no.
template <class Take>
void TextSearch::Walk(const Editor& editor, CharPos from, CharPos before, const Take& take) const {
    if (rules_.text.empty())
        return;
    const std::int32_t end = std::min(before.value, editor.Length() - Size() + 1);
    for (std::int32_t first = std::max(0, from.value); first < end; first += kStretch) {
        const std::int32_t last = std::min(end, first + kStretch) - 1;
        const Window window = Read(editor, first, last + Size());
        const std::u16string_view text = std::u16string_view(window.text).substr(0, window.end);
        for (std::size_t at = text.find(rules_.text, window.begin); at != std::u16string::npos;
             at = text.find(rules_.text, at + 1)) {
            const CharPos hit{window.first + static_cast<std::int32_t>(at)};
            if (Stands(window, at) && !take(TextRange{hit, Size()}))
                return;
        }
    }
}

std::optional<TextRange> TextSearch::First(const Editor& editor, CharPos from,
                                           CharPos before) const {
    std::optional<TextRange> first;
    Walk(editor, from, before, [&](TextRange hit) {
        first = hit;
        return false;
    });
    return first;
}

std::optional<TextRange> TextSearch::Last(const Editor& editor, CharPos from,
                                          CharPos before) const {
    std::optional<TextRange> last;
    CharPos end{std::min(before.value, editor.Length())};
    while (!last && end > from) {
        const CharPos begin{std::max(from.value, end.value - kStretch)};
        Walk(editor, begin, end, [&](TextRange hit) {
            last = hit;
            return true;
        });
        end = begin;
    }
    return last;
}

std::vector<TextRange> TextSearch::Touching(const Editor& editor, TextRange stretch) const {
    std::vector<TextRange> hits;
    Walk(editor, stretch.first - (Size() - 1), stretch.end(), [&](TextRange hit) {
        hits.push_back(hit);
        return true;
    });
    return hits;
}

std::vector<TextRange> TextSearch::All(const Editor& editor) const {
    std::vector<TextRange> hits;
    Walk(editor, CharPos{0}, CharPos{editor.Length()}, [&](TextRange hit) {
        if (hits.empty() || hit.first >= hits.back().end())
            hits.push_back(hit);
        return true;
    });
    return hits;
}

}  // namespace zorvane
