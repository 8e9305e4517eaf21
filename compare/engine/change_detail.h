// What is different inside one changed stretch of paragraphs: words, and letters inside them. The
// writers of reports share it.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/result.h"
#include "compare/engine/pieces.h"
#include "compare/engine/vestrel_x.h"

namespace zorvane {

/// The switches of the two finer levels.
struct DetailSwitches {
    bool ignore_case = false;
    bool ignore_whitespace = false;
    bool by_character = false;
    bool use_expressions = false;
    std::string expressions{};
};

/// A place in one side's text: 1-based numbers as in a difference record, and UTF-16 positions.
struct DetailPlace {
    std::int32_t first = 0;
    std::int32_t last = 0;
    std::int32_t begin = 0;
    std::int32_t end = 0;
    std::int32_t Length() const { return end - begin; }
};

struct DetailRecord {
    DifferenceType type = DifferenceType::Change;
    DetailPlace original;
    DetailPlace modified;
};

/// Numbers of letters count within the section's own texts.
struct SectionDetail : DetailRecord {
    std::vector<DetailRecord> characters;  ///< only of a change, and only by character
};

struct DetailCounts {
    std::int32_t changes = 0;
    std::int32_t additions = 0;
    std::int32_t deletions = 0;
    void Add(DifferenceType type);
};

/// Looks into one change at a time and counts what it finds over all.
class ChangeDetail {
  public:
    explicit ChangeDetail(const DetailSwitches& switches);

    /// Compares the paragraphs of a change, joined by CR LF. The texts are borrowed as long as this
    /// object is asked about them.
    void Find(std::u16string_view original, std::u16string_view modified);
    std::span<const SectionDetail> Sections() const { return sections_; }
    /// The text with everything in it: what stayed, what went and what came, in reading order. What
    /// stayed is the original's spelling.
    std::vector<Piece> MergedPieces() const;
    /// The text of one side in pieces. What stayed is that side's own spelling.
    std::vector<Piece> OriginalPieces() const;
    std::vector<Piece> ModifiedPieces() const;

    const DetailCounts& SectionCounts() const { return section_counts_; }
    const DetailCounts& CharacterCounts() const { return character_counts_; }

  private:
    void FindCharacters(SectionDetail& section);

    DetailSwitches switches_;
    VestrelX mini_;
    VestrelX micro_;
    std::u16string_view original_;
    std::u16string_view modified_;
    std::vector<SectionDetail> sections_;
    DetailCounts section_counts_;
    DetailCounts character_counts_;
    std::string original_lines_;
    std::string modified_lines_;
    std::u16string guarded_;
    std::vector<std::int32_t> original_ends_;
    std::vector<std::int32_t> modified_ends_;
};

}  // namespace zorvane
