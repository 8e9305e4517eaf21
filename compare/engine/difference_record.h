// One difference between two line files. Paragraph k is line k.
#pragma once

#include <cstdint>

#include "common/base/number.h"
#include "common/base/side.h"

namespace zorvane {

/// The codes are the letters "a", "c" and "d".
enum class DifferenceType : std::int32_t { Addition = 97, Change = 99, Deletion = 100 };

/// Records ascend in both texts and do not overlap. On a side without paragraphs (the Original's of
/// an addition, the Modified's of a deletion) first and last are the one behind which they belong.
struct DifferenceRecord {
    DifferenceType type = DifferenceType::Change;
    PerSide<ParagraphRange> paragraphs;

    bool Has(Side side) const {
        return type == DifferenceType::Change ||
               (type == DifferenceType::Deletion) == (side == Side::Original);
    }
    std::int32_t Count(Side side) const {
        return Has(side) ? paragraphs[side].last - paragraphs[side].first + 1 : 0;
    }
    /// The plain numbers, where two sides are counted along together.
    PerSide<std::int32_t> Firsts() const {
        return {paragraphs.original.first.value, paragraphs.modified.first.value};
    }
    PerSide<std::int32_t> Lasts() const {
        return {paragraphs.original.last.value, paragraphs.modified.last.value};
    }
    /// The paragraph behind which the record's stand or belong.
    ParagraphNumber InFront(Side side) const { return paragraphs[side].last - Count(side); }
    friend bool operator==(const DifferenceRecord&, const DifferenceRecord&) = default;
};

}  // namespace zorvane
