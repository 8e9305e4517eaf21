// A finished compare as a value: the two texts, the records, what changed inside each, the moves,
// the counts. Every view and report reads this, so that all of them agree.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "common/base/number.h"
#include "common/base/run_watcher.h"
#include "common/base/side.h"
#include "compare/engine/difference_counts.h"
#include "compare/engine/difference_record.h"
#include "compare/engine/line_text.h"

namespace zorvane {

/// A stretch of one side inside a record. Positions are UTF-16 units in the text of that side's
/// paragraphs joined by CR LF; for letters, in the text of their section.
struct DetailPlace {
    std::int32_t first = 0;  ///< 1-based number of the section (letters: of the unit) it begins in
    std::int32_t last = 0;   ///< the one it ends in; of nothing: the one in front, as in `first`
    std::int32_t begin = 0;
    std::int32_t end = 0;
    std::int32_t Length() const { return end - begin; }
    friend bool operator==(const DetailPlace&, const DetailPlace&) = default;
};

/// One difference inside a changed record. Never empty on both sides, never the same text on both,
/// never with an end between the two halves of a break.
struct DetailRecord {
    DifferenceType type = DifferenceType::Change;
    PerSide<DetailPlace> places;
    friend bool operator==(const DetailRecord&, const DetailRecord&) = default;
};

/// Letters lie in `Comparison::characters`.
struct SectionDetail : DetailRecord {
    std::uint32_t first_character = 0;
    std::uint32_t character_count = 0;
};

/// Paragraphs that stand elsewhere on the other side: the record that deletes them and the one that
/// adds them. The sections are those between the two texts; none: moved as they were.
struct Move {
    RecordIndex deletion;  ///< of the "d" record
    RecordIndex addition;  ///< of the "a" record
    std::uint32_t first_section = 0;
    std::uint32_t section_count = 0;
};

/// The other record of a move.
constexpr RecordIndex PartnerOf(const Move& move, DifferenceType own) {
    return own == DifferenceType::Deletion ? move.addition : move.deletion;
}

/// A record and what belongs to it.
struct RecordDetail {
    std::uint32_t first_section = 0;  ///< in `Comparison::sections`
    std::uint32_t section_count = 0;
    std::int32_t move = -1;  ///< index in `Comparison::moves` of a "d" or "a" that moved
};

/// One difference beside the words (a picture, a link's target, ...), in words ready to be told.
struct BesideNote {
    std::string kind;                     ///< as options and JSON call it: "pictures", "links", ...
    std::string what;                     ///< for people: "picture", "link target", ...
    std::string change;                   ///< "added", "removed", "changed" or "replaced", "moved"
    PerSide<ParagraphNumber> paragraphs;  ///< 0: of the whole document, or not there
    std::string old_text{};
    std::string new_text{};
    friend bool operator==(const BesideNote&, const BesideNote&) = default;
};

class Comparison {
  public:
    // ---- the texts as they were compared ----
    /// Keeps the text alive as long as the comparison.
    void SetEditorTexts(PerSide<std::shared_ptr<const std::u16string>> texts,
                        RunWatcher* watcher = nullptr);
    /// Line files in UTF-8, borrowed.
    void SetFileTexts(PerSide<std::string_view> texts);
    const LineText& Lines(Side side) const { return lines_[side]; }
    std::int32_t Paragraphs(Side side) const { return lines_[side].Count(); }
    /// A paragraph by its 1-based number, in UTF-8, without its break.
    std::string Paragraph(Side side, std::int32_t number) const {
        return lines_[side].Utf8(number - 1);
    }
    /// One side of a record: its paragraphs joined by CR LF; empty where there are none.
    std::u16string Text(Side side, const DifferenceRecord& record) const;
    /// The same where it lies; `buffer` holds it where it had to be decoded.
    std::u16string_view Text(Side side, const DifferenceRecord& record,
                             std::u16string& buffer) const;
    /// Blank paragraphs that the compare did not look at may stand on one side alone without a
    /// record.
    bool IsIgnored(Side side, std::int32_t number) const;

    // ---- what was found ----
    std::vector<DifferenceRecord> records;  ///< ascending, without overlap
    std::vector<RecordDetail> details;      ///< one for each record
    std::vector<SectionDetail> sections;
    std::vector<DetailRecord> characters;
    std::vector<Move> moves;  ///< ascending by the deletion
    DifferenceCounts record_counts;
    DifferenceCounts section_counts;
    DifferenceCounts character_counts;
    bool by_character = false;
    std::vector<BesideNote> beside;  ///< what the words do not tell; filled by whoever loaded them
    std::string beside_sentence;     ///< "Beside the words: 1 picture replaced (paragraph 3)."
    bool same_files = false;         ///< byte for byte
    PerSide<std::vector<bool>> ignored;  ///< paragraphs that were not looked at; empty: none

    bool Same() const { return records.empty(); }
    const DifferenceRecord& Record(RecordIndex index) const {
        return records[static_cast<std::size_t>(index.value)];
    }
    std::span<const SectionDetail> SectionsOf(std::size_t record) const;
    std::span<const SectionDetail> SectionsOf(const Move& move) const;
    std::span<const DetailRecord> CharactersOf(const SectionDetail& section) const;
    /// For each paragraph of the Original the number of the Modified's that it is shown against; 0
    /// for none.
    std::vector<std::int32_t> Partners() const;
    /// The move that a record belongs to; nullptr for none.
    const Move* MoveOf(std::size_t record) const;

  private:
    /// Equal paragraphs side by side; what was not looked at may stand on one side alone.
    void PairEqual(const PerSide<std::int32_t>& begin, const PerSide<std::int32_t>& end,
                   std::vector<std::int32_t>& partners) const;

    PerSide<std::shared_ptr<const std::u16string>> storage_;
    PerSide<LineText> lines_;
};

/// Empty but for blanks and cell marks, or a sheet's row of nothing but padding and delimiters.
bool IsBlankParagraph(std::u16string_view text);

}  // namespace zorvane
