#include "compare/engine/comparison.h"

#include <algorithm>

#include "compare/engine/pairing/word_runs.h"

namespace zorvane {
namespace {

bool IsDelimiter(char16_t unit) {
    return unit == u',' || unit == u';' || unit == u'|';
}

}  // namespace

bool IsBlankParagraph(std::u16string_view text) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        // A delimiter counts as padding only behind a padded cell: a lone comma is text.
        if (PartsWords(text[i]) || (IsDelimiter(text[i]) && i > 0 && PartsWords(text[i - 1])))
            continue;
        return false;
    }
    return true;
}

void Comparison::SetEditorTexts(PerSide<std::shared_ptr<const std::u16string>> texts,
                                RunWatcher* watcher) {
    storage_ = std::move(texts);
    for (const Side side : kBothSides) {
        if (KeepGoing(watcher))
            lines_[side].SplitEditor(*storage_[side], watcher);
    }
}

void Comparison::SetFileTexts(PerSide<std::string_view> texts) {
    storage_ = {};
    for (const Side side : kBothSides)
        lines_[side].SplitFile(texts[side]);
}

std::u16string Comparison::Text(Side side, const DifferenceRecord& record) const {
    const std::int32_t count = record.Count(side);
    if (count == 0)
        return {};
    return lines_[side].Joined(record.paragraphs[side].first.value - 1,
                               record.paragraphs[side].last.value);
}

std::u16string_view Comparison::Text(Side side, const DifferenceRecord& record,
                                     std::u16string& buffer) const {
    if (record.Count(side) == 0)
        return {};
    return lines_[side].Joined(record.paragraphs[side].first.value - 1,
                               record.paragraphs[side].last.value, buffer);
}

bool Comparison::IsIgnored(Side side, std::int32_t number) const {
    const std::vector<bool>& flags = ignored[side];
    return !flags.empty() && flags[static_cast<std::size_t>(number - 1)];
}

std::span<const SectionDetail> Comparison::SectionsOf(std::size_t record) const {
    const RecordDetail& detail = details[record];
    return {sections.data() + detail.first_section, detail.section_count};
}

std::span<const SectionDetail> Comparison::SectionsOf(const Move& move) const {
    return {sections.data() + move.first_section, move.section_count};
}

std::span<const DetailRecord> Comparison::CharactersOf(const SectionDetail& section) const {
    return {characters.data() + section.first_character, section.character_count};
}

void Comparison::PairEqual(const PerSide<std::int32_t>& begin, const PerSide<std::int32_t>& end,
                           std::vector<std::int32_t>& partners) const {
    PerSide<std::int32_t> at = begin;
    while (at.original < end.original && at.modified < end.modified) {
        const bool first_ignored = IsIgnored(Side::Original, at.original);
        if (first_ignored == IsIgnored(Side::Modified, at.modified))
            partners[static_cast<std::size_t>(at.original++) - 1] = at.modified++;
        else
            ++at[first_ignored ? Side::Original : Side::Modified];
    }
}

std::vector<std::int32_t> Comparison::Partners() const {
    std::vector<std::int32_t> partners(static_cast<std::size_t>(Paragraphs(Side::Original)), 0);
    const auto pair = [&](std::int32_t original, std::int32_t modified) {
        partners[static_cast<std::size_t>(original) - 1] = modified;
    };
    PerSide<std::int32_t> equal{1, 1};  // where the equal paragraphs in front of a record begin
    for (const DifferenceRecord& record : records) {
        PairEqual(
            equal,
            {record.InFront(Side::Original).value + 1, record.InFront(Side::Modified).value + 1},
            partners);
        equal = {record.paragraphs.original.last.value + 1,
                 record.paragraphs.modified.last.value + 1};
        if (record.type != DifferenceType::Change)
            continue;
        // Several against several: each with the one at the same part of the way.
        for (std::int32_t i = 0; i < record.Count(Side::Original); ++i)
            pair(record.paragraphs.original.first.value + i,
                 record.paragraphs.modified.first.value +
                     std::min(i, record.Count(Side::Modified) - 1));
    }
    PairEqual(equal, {Paragraphs(Side::Original) + 1, Paragraphs(Side::Modified) + 1}, partners);
    for (const Move& move : moves) {
        const DifferenceRecord& from = Record(move.deletion);
        const DifferenceRecord& to = Record(move.addition);
        for (std::int32_t i = 0; i < std::min(from.Count(Side::Original), to.Count(Side::Modified));
             ++i)
            pair(from.paragraphs.original.first.value + i, to.paragraphs.modified.first.value + i);
    }
    return partners;
}

const Move* Comparison::MoveOf(std::size_t record) const {
    const std::int32_t move = details[record].move;
    return move < 0 ? nullptr : &moves[static_cast<std::size_t>(move)];
}

}  // namespace zorvane
