// What holds for every comparison, whatever its texts and options: told as complaints, so that the
// same check serves tables, random pairs and fuzzing.
#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "common/base/text_encoding.h"
#include "compare/engine/compare_texts.h"
#include "compare/engine/pairing/section_tokens.h"

namespace zorvane {

using SharedText = std::shared_ptr<const std::u16string>;

class ComparisonCheck {
  public:
    ComparisonCheck(const Comparison& comparison, const CompareOptions& options)
        : comparison_(comparison), options_(options) {}

    /// Fails the running test where something does not hold.
    void Run() {
        PerSide<std::int32_t> at{0, 0};
        for (std::size_t i = 0; i < comparison_.records.size(); ++i) {
            SCOPED_TRACE("record " + std::to_string(i + 1));
            const DifferenceRecord& record = comparison_.records[i];
            PerSide<std::int32_t> begin;
            for (const Side side : kBothSides) {
                begin[side] = record.paragraphs[side].last.value - record.Count(side);
                ASSERT_GE(begin[side], at[side]) << "overlaps the record before";
                ASSERT_LE(record.paragraphs[side].last.value, comparison_.Paragraphs(side));
                ASSERT_EQ(record.paragraphs[side].first.value,
                          record.Count(side) == 0 ? begin[side] : begin[side] + 1);
            }
            Equal(at, begin);
            Record(i);
            at = record.Lasts();
        }
        Equal(at, {comparison_.Paragraphs(Side::Original), comparison_.Paragraphs(Side::Modified)});
        Moves();
        Counts();
    }

  private:
    // The paragraphs between two records are equal but for what is ignored, or were not looked at.
    void Equal(PerSide<std::int32_t> at, PerSide<std::int32_t> end) {
        PerSide<std::vector<std::string>> looked_at;
        for (const Side side : kBothSides) {
            for (std::int32_t line = at[side]; line < end[side]; ++line) {
                if (!comparison_.IsIgnored(side, line + 1))
                    looked_at[side].push_back(comparison_.Paragraph(side, line + 1));
                else
                    EXPECT_TRUE(options_.ignore_empty_lines);
            }
        }
        ASSERT_EQ(looked_at.original.size(), looked_at.modified.size());
        const bool exact =
            !options_.ignore_case && !options_.ignore_whitespace && options_.expressions.empty();
        if (exact) {
            EXPECT_EQ(looked_at.original, looked_at.modified) << "unequal, and without a record";
        }
    }

    void Record(std::size_t index) {
        const DifferenceRecord& record = comparison_.records[index];
        const auto sections = comparison_.SectionsOf(index);
        if (record.type != DifferenceType::Change || !options_.find_sections) {
            EXPECT_TRUE(sections.empty());
            return;
        }
        const std::u16string original = comparison_.Text(Side::Original, record);
        const std::u16string modified = comparison_.Text(Side::Modified, record);
        EXPECT_NE(original, modified) << "a change of nothing";
        Sections(original, modified, sections);
    }

    void Sections(std::u16string_view original, std::u16string_view modified,
                  std::span<const SectionDetail> sections) {
        Details(original, modified, sections, ExactWords());
        for (const SectionDetail& section : sections) {
            ExpectNumbers(original, section.places.original);
            ExpectNumbers(modified, section.places.modified);
            const auto letters = comparison_.CharactersOf(section);
            EXPECT_TRUE(letters.empty() || options_.by_character);
            if (letters.empty())
                continue;
            const std::u16string_view old_text = Part(original, section.places.original);
            const std::u16string_view new_text = Part(modified, section.places.modified);
            Details(old_text, new_text, letters, ExactLetters());
            for (const DetailRecord& letter : letters) {
                ExpectWholeLetters(old_text, letter.places.original);
                ExpectWholeLetters(new_text, letter.places.modified);
            }
        }
    }

    // Sections are numbered by the ends in front of them.
    static void ExpectNumbers(std::u16string_view text, const DetailPlace& place) {
        const auto ends = [&](std::int32_t end) {
            return std::count_if(text.begin(), text.begin() + end, EndsSection);
        };
        const bool some = place.Length() > 0;
        const bool inside = place.begin > 0 && ends(place.begin) == ends(place.begin - 1);
        EXPECT_EQ(place.first, ends(place.begin) + (some || inside ? 1 : 0));
        EXPECT_EQ(place.last, some ? ends(place.end - 1) + 1 : place.first);
    }

    bool ExactWords() const {
        return !options_.ignore_case && !options_.ignore_whitespace && !options_.filter_sections;
    }
    bool ExactLetters() const { return !options_.ignore_case && !options_.ignore_whitespace; }

    // Ascending, no half break, nothing equal marked; applied to the one text they give the other.
    template <class List>
    void Details(std::u16string_view original, std::u16string_view modified, const List& details,
                 bool exact) {
        std::u16string made;
        PerSide<std::int32_t> at{0, 0};
        for (const DetailRecord& detail : details) {
            ASSERT_GE(detail.places.original.begin, at.original);
            ASSERT_GE(detail.places.modified.begin, at.modified);
            ASSERT_GE(detail.places.original.Length(), 0);
            ASSERT_GE(detail.places.modified.Length(), 0);
            ASSERT_LE(detail.places.original.end, static_cast<std::int32_t>(original.size()));
            ASSERT_LE(detail.places.modified.end, static_cast<std::int32_t>(modified.size()));
            const std::u16string_view old_text = Part(original, detail.places.original);
            const std::u16string_view new_text = Part(modified, detail.places.modified);
            EXPECT_NE(old_text, new_text) << "equal, and marked: " << ToUtf8(old_text);
            EXPECT_EQ(detail.type, old_text.empty()   ? DifferenceType::Addition
                                   : new_text.empty() ? DifferenceType::Deletion
                                                      : DifferenceType::Change);
            for (const std::int32_t place :
                 {detail.places.original.begin, detail.places.original.end})
                EXPECT_FALSE(CutsBreak(original, place)) << place;
            for (const std::int32_t place :
                 {detail.places.modified.begin, detail.places.modified.end})
                EXPECT_FALSE(CutsBreak(modified, place)) << place;
            made += Part(original, {0, 0, at.original, detail.places.original.begin});
            if (exact) {  // else what is ignored between them differs
                EXPECT_EQ(static_cast<std::int32_t>(made.size()), detail.places.modified.begin);
            }
            made += new_text;
            at = {detail.places.original.end, detail.places.modified.end};
        }
        made += original.substr(static_cast<std::size_t>(at.original));
        if (exact) {
            EXPECT_EQ(ToUtf8(made), ToUtf8(modified));
        }
    }

    static std::u16string_view Part(std::u16string_view text, const DetailPlace& place) {
        return text.substr(static_cast<std::size_t>(place.begin),
                           static_cast<std::size_t>(place.Length()));
    }
    static bool CutsBreak(std::u16string_view text, std::int32_t place) {
        const auto at = static_cast<std::size_t>(place);
        return at > 0 && at < text.size() && text[at - 1] == u'\r' && text[at] == u'\n';
    }
    static void ExpectWholeLetters(std::u16string_view text, const DetailPlace& place) {
        for (const std::int32_t end : {place.begin, place.end}) {
            const auto at = static_cast<std::size_t>(end);
            if (at == 0 || at >= text.size())
                continue;
            const char16_t next = text[at];
            EXPECT_FALSE(next >= 0xDC00 && next < 0xE000 && text[at - 1] >= 0xD800 &&
                         text[at - 1] < 0xDC00)
                << "a cut character";
            EXPECT_FALSE(next >= 0x300 && next < 0x370) << "a mark without its letter";
        }
    }

    void Moves() {
        std::vector<bool> in_move(comparison_.records.size(), false);
        for (std::size_t i = 0; i < comparison_.moves.size(); ++i) {
            SCOPED_TRACE("move " + std::to_string(i + 1));
            EXPECT_TRUE(options_.find_moves);
            const Move& move = comparison_.moves[i];
            const auto from = static_cast<std::size_t>(move.deletion.value);
            const auto to = static_cast<std::size_t>(move.addition.value);
            ASSERT_LT(std::max(from, to), comparison_.records.size());
            EXPECT_EQ(comparison_.records[from].type, DifferenceType::Deletion);
            EXPECT_EQ(comparison_.records[to].type, DifferenceType::Addition);
            EXPECT_EQ(comparison_.MoveOf(from), &move);
            EXPECT_EQ(comparison_.MoveOf(to), &move);
            EXPECT_EQ(PartnerOf(move, DifferenceType::Deletion), move.addition);
            EXPECT_EQ(PartnerOf(move, DifferenceType::Addition), move.deletion);
            in_move[from] = in_move[to] = true;
            if (options_.find_sections)
                Sections(comparison_.Text(Side::Original, comparison_.records[from]),
                         comparison_.Text(Side::Modified, comparison_.records[to]),
                         comparison_.SectionsOf(move));
        }
        for (std::size_t i = 0; i < in_move.size(); ++i)
            EXPECT_EQ(comparison_.MoveOf(i) != nullptr, in_move[i]);
    }

    void Counts() {
        DifferenceCounts records;
        DifferenceCounts sections;
        DifferenceCounts letters;
        for (std::size_t i = 0; i < comparison_.records.size(); ++i) {
            records.Add(comparison_.records[i].type);
            for (const SectionDetail& section : comparison_.SectionsOf(i)) {
                sections.Add(section.type);
                for (const DetailRecord& letter : comparison_.CharactersOf(section))
                    letters.Add(letter.type);
            }
        }
        EXPECT_EQ(records, comparison_.record_counts);
        EXPECT_EQ(sections, comparison_.section_counts);
        EXPECT_EQ(letters, comparison_.character_counts);
    }

    const Comparison& comparison_;
    const CompareOptions& options_;
};

inline bool Mirrors(const DetailRecord& left, const DetailRecord& right) {
    return left.places.original == right.places.modified &&
           left.places.modified == right.places.original;
}

/// The comparison of the swapped texts is the same with its sides swapped. Where deletions and
/// additions meet, each side's own ranges are compared: the deletions always come first.
inline void ExpectMirrored(const Comparison& comparison, const Comparison& swapped) {
    const auto own = [](const Comparison& of, Side side) {
        std::vector<std::pair<std::int32_t, std::int32_t>> ranges;
        for (const DifferenceRecord& record : of.records) {
            if (record.Count(side) > 0)
                ranges.emplace_back(record.paragraphs[side].first.value,
                                    record.paragraphs[side].last.value);
        }
        return ranges;
    };
    EXPECT_EQ(own(comparison, Side::Original), own(swapped, Side::Modified));
    EXPECT_EQ(own(comparison, Side::Modified), own(swapped, Side::Original));
    EXPECT_EQ(comparison.record_counts.changes, swapped.record_counts.changes);
    EXPECT_EQ(comparison.section_counts.All(), swapped.section_counts.All());
    EXPECT_EQ(comparison.section_counts.additions, swapped.section_counts.deletions);
    EXPECT_EQ(comparison.moves.size(), swapped.moves.size());
    // The changes stand in the same order, and so do their sections and letters; those of moves
    // follow in the order of the deletions.
    const auto changes = static_cast<std::size_t>(comparison.section_counts.All());
    ASSERT_EQ(changes <= comparison.sections.size(), changes <= swapped.sections.size());
    for (std::size_t i = 0; i < changes; ++i) {
        const SectionDetail& section = comparison.sections[i];
        const SectionDetail& other = swapped.sections[i];
        EXPECT_TRUE(Mirrors(section, other)) << "section " << i;
        const auto letters = comparison.CharactersOf(section);
        const auto others = swapped.CharactersOf(other);
        ASSERT_EQ(letters.size(), others.size());
        for (std::size_t k = 0; k < letters.size(); ++k)
            EXPECT_TRUE(Mirrors(letters[k], others[k])) << "letter " << k << " of section " << i;
    }
}

}  // namespace zorvane
