#include "compare/document/heading_places.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "common/base/paragraph_break.h"

namespace zorvane {
namespace {

// Hundredths of the size of most letters: 13 points are a heading in a text of 12, 12.5 are not.
constexpr std::int32_t kLarger = 108;

struct Letters {
    std::int32_t half_points = 0;
    bool bold = false;
    auto operator<=>(const Letters&) const = default;
};

Letters LettersOf(const CharRun& run) {
    return {run.format.half_points, run.format.bold};
}

// What most of the text is written in.
Letters BodyOf(const RichText& text) {
    std::map<Letters, std::int64_t> lengths;
    for (const CharRun& run : text.char_runs)
        lengths[LettersOf(run)] += run.length;
    const auto most =
        std::max_element(lengths.begin(), lengths.end(),
                         [](const auto& a, const auto& b) { return a.second < b.second; });
    return most->first;
}

bool StandsOut(const Letters& letters, const Letters& body) {
    return letters.half_points * 100 >= body.half_points * kLarger || (letters.bold && !body.bold);
}

bool HasLetters(std::u16string_view line) {
    return line.find_first_not_of(u" \t\u00A0\a") != std::u16string_view::npos;
}

// The paragraphs that lie in [begin, end) whole.
void AddWholeOnes(std::u16string_view text, std::size_t begin, std::size_t end,
                  std::vector<CharPos>& places) {
    const auto breaks_at = [text](std::size_t at) {
        return at == text.size() || text.substr(at, kBreak.size()) == kBreak;
    };
    const bool at_begin =
        begin == 0 || (begin >= kBreak.size() && breaks_at(begin - kBreak.size()));
    std::size_t first = begin;
    if (!at_begin)
        first = std::min(text.find(kBreak, begin), end) + kBreak.size();
    while (first < end) {
        const std::size_t last = std::min(text.find(kBreak, first), end);
        const std::u16string_view line = text.substr(first, last - first);
        if (breaks_at(last) && line.size() <= kLongestHeading && HasLetters(line))
            places.push_back(CharPos{static_cast<std::int32_t>(first)});
        first = last + kBreak.size();
    }
}

}  // namespace

std::vector<CharPos> HeadingPlaces(const RichText& text) {
    std::vector<CharPos> places;
    if (text.char_runs.size() < 2)
        return places;
    const Letters body = BodyOf(text);
    std::size_t at = 0;
    std::size_t begin = 0;
    bool out = false;
    for (const CharRun& run : text.char_runs) {
        const bool stands_out = StandsOut(LettersOf(run), body);
        if (out && !stands_out)
            AddWholeOnes(text.text, begin, at, places);
        if (stands_out && !out)
            begin = at;
        out = stands_out;
        at += static_cast<std::size_t>(run.length);
    }
    if (out)
        AddWholeOnes(text.text, begin, at, places);
    return places;
}

}  // namespace zorvane
