#include "compare/engine/pairing/letter_finder.h"

#include <algorithm>
#include <unicode/uchar.h>
#include <xxhash.h>

#include "common/base/surrogates.h"
#include "compare/engine/line_table.h"
#include "compare/engine/pairing/cheap_alignment.h"
#include "compare/engine/pairing/word_costs.h"
#include "compare/engine/pairing/word_runs.h"

namespace zorvane {
namespace {

// What is written onto the letter in front: combining marks, variation selectors, joiners.
bool GoesWithLetterInFront(char16_t unit) {
    if (unit < 0x300)
        return false;
    if (unit == 0x200D)
        return true;
    return (U_MASK(u_charType(unit)) & (U_GC_MN_MASK | U_GC_ME_MASK)) != 0;
}

bool OnlySeparators(std::u16string_view text, UnitRange range) {
    return std::all_of(text.begin() + range.begin, text.begin() + range.end, PartsWords);
}

// A break of two units, a letter of two.
bool AreOne(char16_t unit, char16_t next) {
    return (unit == u'\r' && next == u'\n') || (IsHighSurrogate(unit) && IsLowSurrogate(next));
}

}  // namespace

void LetterFinder::Cut(std::u16string_view text, bool ignore_case, Letters& letters) {
    letters.ids.clear();
    letters.begins.clear();
    std::size_t at = 0;
    while (at < text.size() && stop_.KeepGoing()) {
        const std::size_t begin = at++;
        if (at < text.size() && AreOne(text[begin], text[at]))
            ++at;
        while (at < text.size() && GoesWithLetterInFront(text[at]))
            ++at;
        letters.begins.push_back(static_cast<std::int32_t>(begin));
        char16_t unit = text[begin];
        if (ignore_case)
            unit = static_cast<char16_t>(u_foldCase(unit, U_FOLD_CASE_DEFAULT));
        const std::u16string_view letter = text.substr(begin, at - begin);
        letters.ids.push_back(letter.size() == 1
                                  ? unit
                                  : 0x10000U | static_cast<std::uint32_t>(
                                                   XXH3_64bits(letter.data(), letter.size() * 2)));
    }
    letters.begins.push_back(static_cast<std::int32_t>(text.size()));
}

bool LetterFinder::Same(std::size_t i, std::size_t j) const {
    if (first_.ids[i] != second_.ids[j])
        return false;
    const std::u16string_view left =
        UnitRange{first_.begins[i], first_.begins[i + 1]}.In(first_text_);
    const std::u16string_view right =
        UnitRange{second_.begins[j], second_.begins[j + 1]}.In(second_text_);
    return left.size() == 1 ? right.size() == 1 : left == right;
}

std::vector<AlignedPair> LetterFinder::AlignByTable(std::size_t front, std::int32_t lefts,
                                                    std::int32_t rights) {
    const auto gain = [&](std::int32_t i, std::int32_t j) {
        return Same(front + static_cast<std::size_t>(i), front + static_cast<std::size_t>(j))
                   ? kLetterKeep
                   : -1;
    };
    return table_.Run(
        lefts, rights, gain, [](std::int32_t, std::int32_t) { return kLetterChunkCost; },
        [](std::int32_t, std::int32_t) { return 0; });
}

std::vector<AlignedPair> LetterFinder::AlignBySearch(std::size_t front, std::int32_t lefts,
                                                     std::int32_t rights) {
    LineTable table;
    table.Clear(static_cast<std::size_t>(lefts) + static_cast<std::size_t>(rights));
    const auto numbers_of = [&](std::u16string_view text, const Letters& letters,
                                std::int32_t count) {
        std::vector<std::uint32_t> numbers;
        for (std::int32_t i = 0; i < count && stop_.KeepGoing(); ++i) {
            const std::size_t at = front + static_cast<std::size_t>(i);
            const std::u16string_view letter =
                UnitRange{letters.begins[at], letters.begins[at + 1]}.In(text);
            const bool single = letter.size() == 1;
            const char* bytes = single ? reinterpret_cast<const char*>(&letters.ids[at])
                                       : reinterpret_cast<const char*>(letter.data());
            numbers.push_back(table.NumberOf({bytes, single ? 2 : letter.size() * 2}));
        }
        return numbers;
    };
    const std::vector<std::uint32_t> first = numbers_of(first_text_, first_, lefts);
    const std::vector<std::uint32_t> second = numbers_of(second_text_, second_, rights);
    if (stop_.Stopped())
        return {};
    return AlignCheaply(
        first, second, table.Count(), [](std::int32_t) { return kLetterKeep; }, kLetterChunkCost,
        search_);
}

// Searched is only what stands between the equal letters at both ends.
std::vector<AlignedPair> LetterFinder::Align() {
    const std::size_t most = std::min(first_.ids.size(), second_.ids.size());
    std::size_t front = 0;
    while (front < most && Same(front, front))
        ++front;
    std::size_t back = 0;
    while (back < most - front && Same(first_.ids.size() - 1 - back, second_.ids.size() - 1 - back))
        ++back;
    const auto lefts = static_cast<std::int32_t>(first_.ids.size() - front - back);
    const auto rights = static_cast<std::int32_t>(second_.ids.size() - front - back);
    const std::vector<AlignedPair> middle = static_cast<std::int64_t>(lefts) * rights <= kMostCells
                                                ? AlignByTable(front, lefts, rights)
                                                : AlignBySearch(front, lefts, rights);
    std::vector<AlignedPair> pairs;
    for (std::size_t i = 0; i < front; ++i)
        pairs.push_back({static_cast<std::int32_t>(i), static_cast<std::int32_t>(i)});
    for (const AlignedPair& pair : middle)
        pairs.push_back({pair.first + static_cast<std::int32_t>(front),
                         pair.second + static_cast<std::int32_t>(front)});
    for (std::size_t i = back; i > 0; --i)
        pairs.push_back({static_cast<std::int32_t>(first_.ids.size() - i),
                         static_cast<std::int32_t>(second_.ids.size() - i)});
    return pairs;
}

void LetterFinder::Find(std::u16string_view first, std::u16string_view second,
                        const LetterSwitches& switches, std::vector<FoundLetters>& found) {
    first_text_ = first;
    second_text_ = second;
    Cut(first, switches.ignore_case, first_);
    Cut(second, switches.ignore_case, second_);
    if (stop_.Stopped())
        return;
    std::vector<AlignedPair> pairs = Align();
    pairs.push_back({static_cast<std::int32_t>(first_.ids.size()),
                     static_cast<std::int32_t>(second_.ids.size())});
    AlignedPair next;
    for (const AlignedPair& pair : pairs) {
        const FoundLetters letters{{first_.begins[static_cast<std::size_t>(next.first)],
                                    first_.begins[static_cast<std::size_t>(pair.first)]},
                                   {second_.begins[static_cast<std::size_t>(next.second)],
                                    second_.begins[static_cast<std::size_t>(pair.second)]}};
        next = {pair.first + 1, pair.second + 1};
        if (letters.first.Length() == 0 && letters.second.Length() == 0)
            continue;
        if (switches.ignore_whitespace && OnlySeparators(first, letters.first) &&
            OnlySeparators(second, letters.second))
            continue;
        found.push_back(letters);
    }
}

}  // namespace zorvane
