#include "compare/engine/pairing/section_finder.h"

#include <algorithm>

#include "common/base/unit_search.h"
#include "compare/engine/line_table.h"
#include "compare/engine/pairing/cheap_alignment.h"
#include "compare/engine/pairing/word_costs.h"

namespace zorvane {
namespace {

constexpr std::int32_t kSlack = 8;  // equal words left at trimmed ends, so that blocks can slide

// A break that both sides end in is not what changed, nor are blanks that both have.
void TrimCommon(std::u16string_view first_text, UnitRange& first, std::u16string_view second_text,
                UnitRange& second) {
    if (OnlyBlanks(first.In(first_text)) && OnlyBlanks(second.In(second_text))) {
        const std::int32_t common = std::min(first.Length(), second.Length());
        first.begin += common;
        second.begin += common;
        return;
    }
    if (first.In(first_text).ends_with(u"\r\n") && second.In(second_text).ends_with(u"\r\n")) {
        first.end -= 2;
        second.end -= 2;
    }
}

}  // namespace

std::int32_t SectionFinder::ChunkCost() const {
    return switches_.larger ? 2 * kChunkCost : kChunkCost;
}

std::vector<AlignedPair> SectionFinder::AlignByTable(std::int32_t front, std::int32_t first_end,
                                                     std::int32_t second_end) {
    const std::vector<SectionToken>& first = first_.Tokens();
    const std::vector<SectionToken>& second = second_.Tokens();
    const auto border_of = [](const std::vector<SectionToken>& tokens, std::int32_t behind) {
        return behind == 0 ? kSentenceBorder : tokens[static_cast<std::size_t>(behind) - 1].border;
    };
    const auto end_border = [&](const std::vector<SectionToken>& tokens, std::int32_t behind) {
        return behind == static_cast<std::int32_t>(tokens.size()) ? kSentenceBorder
                                                                  : border_of(tokens, behind);
    };
    const auto skipped = static_cast<std::size_t>(front);
    const auto gain = [&](std::int32_t i, std::int32_t j) {
        const SectionToken& own = first[skipped + static_cast<std::size_t>(i)];
        return own.hash == second[skipped + static_cast<std::size_t>(j)].hash &&
                       Same(front + i, front + j)
                   ? own.keep
                   : -1;
    };
    const std::int32_t cost = ChunkCost();
    const auto open = [&](std::int32_t i, std::int32_t j) {
        return cost - (border_of(first, front + i) + border_of(second, front + j)) / 2;
    };
    const auto close = [&](std::int32_t i, std::int32_t j) {
        return -(end_border(first, front + i) + end_border(second, front + j)) / 2;
    };
    return table_.Run(first_end - front, second_end - front, gain, open, close);
}

std::vector<AlignedPair> SectionFinder::AlignBySearch(std::int32_t front, std::int32_t first_end,
                                                      std::int32_t second_end) {
    LineTable table;
    table.Clear(static_cast<std::size_t>(first_end) + static_cast<std::size_t>(second_end));
    const auto numbers_of = [&](const TokenizedText& text, std::int32_t end) {
        std::vector<std::uint32_t> numbers;
        for (std::int32_t i = front; i < end && stop_.KeepGoing(); ++i) {
            const std::u16string_view key = text.Key(i);
            // NOLINTNEXTLINE(cppcoreguidelines-pro-type-reinterpret-cast): hashed as bytes
            numbers.push_back(
                table.NumberOf({reinterpret_cast<const char*>(key.data()), key.size() * 2}));
        }
        return numbers;
    };
    const std::vector<std::uint32_t> first = numbers_of(first_, first_end);
    const std::vector<std::uint32_t> second = numbers_of(second_, second_end);
    if (stop_.Stopped())
        return {};
    const auto keep = [&](std::int32_t i) {
        return first_.Tokens()[static_cast<std::size_t>(front) + static_cast<std::size_t>(i)].keep;
    };
    return AlignCheaply(first, second, table.Count(), keep, ChunkCost(), search_);
}

// Whether any token between the equal ends stands on both sides.
bool SectionFinder::SharesAny(std::int32_t front, std::int32_t first_end,
                              std::int32_t second_end) const {
    constexpr std::int64_t kFewCells = 64;
    if (static_cast<std::int64_t>(first_end - front) * (second_end - front) > kFewCells)
        return true;
    for (std::int32_t i = front; i < first_end; ++i) {
        for (std::int32_t j = front; j < second_end; ++j) {
            if (Same(i, j))
                return true;
        }
    }
    return false;
}

std::vector<AlignedPair> SectionFinder::Align(const StretchText* weights) {
    const std::int32_t most = std::min(first_.Count(), second_.Count());
    std::int32_t front = 0;
    while (front < most && Same(front, front))
        ++front;
    std::int32_t back = 0;
    while (back < most - front && Same(first_.Count() - 1 - back, second_.Count() - 1 - back))
        ++back;
    // Words that share nothing are one chunk; a block on one side alone can slide.
    const bool one_sided = most == front + back;
    std::vector<AlignedPair> middle;
    if (one_sided || SharesAny(front, first_.Count() - back, second_.Count() - back)) {
        front = std::max(0, front - kSlack);
        back = std::max(0, back - kSlack);
        const std::int32_t first_end = first_.Count() - back;
        const std::int32_t second_end = second_.Count() - back;
        first_.Weigh(std::max(0, front - 1), first_end, weights, stop_);
        second_.Weigh(std::max(0, front - 1), second_end, weights, stop_);
        if (stop_.Stopped())
            return {};
        const std::int64_t cells =
            static_cast<std::int64_t>(first_end - front) * (second_end - front);
        middle = cells <= kMostCells ? AlignByTable(front, first_end, second_end)
                                     : AlignBySearch(front, first_end, second_end);
    }
    std::vector<AlignedPair> pairs;
    pairs.reserve(static_cast<std::size_t>(most) + 1);
    for (std::int32_t i = 0; i < front; ++i)
        pairs.push_back({i, i});
    for (const AlignedPair& pair : middle)
        pairs.push_back({front + pair.first, front + pair.second});
    for (std::int32_t i = back; i > 0; --i)
        pairs.push_back({first_.Count() - i, second_.Count() - i});
    return pairs;
}

bool SectionFinder::SeparatorsDiffer(std::int32_t i, std::int32_t j) const {
    const std::u16string_view left = first_.Separator(i);
    const std::u16string_view right = second_.Separator(j);
    return switches_.tokens.ignore_whitespace ? HasLineFeed(left) != HasLineFeed(right)
                                              : left != right;
}

bool SectionFinder::OnlyNothing(std::int32_t first_begin, std::int32_t first_end,
                                std::int32_t second_begin, std::int32_t second_end) const {
    if (switches_.tokens.filter == nullptr)
        return false;
    const auto nothing = [](const TokenizedText& text, std::int32_t begin, std::int32_t end) {
        while (begin < end && text.IsNothing(begin))
            ++begin;
        return begin == end;
    };
    return nothing(first_, first_begin, first_end) && nothing(second_, second_begin, second_end);
}

void SectionFinder::Emit(UnitRange first, UnitRange second, std::vector<FoundSection>& sections,
                         std::vector<FoundLetters>& letters) {
    TrimCommon(first_.Text(), first, second_.Text(), second);
    const std::u16string_view left = first.In(first_.Text());
    const std::u16string_view right = second.In(second_.Text());
    if (left == right)
        return;
    FoundSection section{first, second};
    section.first_letter = static_cast<std::uint32_t>(letters.size());
    if (switches_.by_character && !left.empty() && !right.empty())
        letters_.Find(left, right,
                      {switches_.tokens.ignore_case, switches_.tokens.ignore_whitespace}, letters);
    section.letter_count = static_cast<std::uint32_t>(letters.size()) - section.first_letter;
    sections.push_back(section);
}

void SectionFinder::Find(std::u16string_view first, std::u16string_view second,
                         const StretchText* weights, std::vector<FoundSection>& sections,
                         std::vector<FoundLetters>& letters) {
    first_.Cut(first, switches_.tokens, stop_);
    second_.Cut(second, switches_.tokens, stop_);
    if (stop_.Stopped())
        return;
    std::vector<AlignedPair> pairs = Align(weights);
    pairs.push_back({first_.Count(), second_.Count()});
    AlignedPair next;              // behind the pair before
    bool other_separator = false;  // of the pair before
    const auto begin_of = [](const TokenizedText& text, std::int32_t token) {
        return token == text.Count() ? static_cast<std::int32_t>(text.Text().size())
                                     : text.Tokens()[static_cast<std::size_t>(token)].begin;
    };
    for (const AlignedPair& pair : pairs) {
        if (!stop_.KeepGoing())
            return;
        UnitRange left{begin_of(first_, next.first), begin_of(first_, pair.first)};
        UnitRange right{begin_of(second_, next.second), begin_of(second_, pair.second)};
        if (OnlyNothing(next.first, pair.first, next.second, pair.second))
            left.begin = left.end, right.begin = right.end;
        if (other_separator) {
            left.begin = first_.Tokens()[static_cast<std::size_t>(next.first - 1)].word_end;
            right.begin = second_.Tokens()[static_cast<std::size_t>(next.second - 1)].word_end;
        }
        if (left.Length() > 0 || right.Length() > 0)
            Emit(left, right, sections, letters);
        next = {pair.first + 1, pair.second + 1};
        other_separator = pair.first < first_.Count() && pair.second < second_.Count() &&
                          SeparatorsDiffer(pair.first, pair.second);
    }
}

}  // namespace zorvane
