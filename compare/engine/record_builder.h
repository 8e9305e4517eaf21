// From changed places to difference records: where a block slides to, and what makes one record.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "compare/engine/difference_record.h"
#include "compare/engine/difference_search.h"

namespace zorvane {

/// What sliding asks of one side's lines. Places are those of the whole file, or of its lines that
/// count when some are ignored.
struct SideLines {
    std::function<bool(std::int32_t, std::int32_t)>
        equal;                                ///< may two lines of this side change places?
    std::function<bool(std::int32_t)> blank;  ///< is this line empty but for blanks?
};

/// Moves each block of changed lines of one side as far as equal lines allow: joined with
/// neighbours it meets, in line with a block of the other side where there is one, else so that it
/// begins behind a blank line or ends with one, else as far down as it goes.
void SlideBlocks(std::vector<std::uint8_t>& changed, const std::vector<std::uint8_t>& other,
                 const SideLines& lines);

/// Neighbouring changed lines of both sides become one record. `original_lines` and
/// `modified_lines` give the 0-based line of each place; empty: the place itself. `lines_in_front`
/// are the lines of each side in front of its first place.
void BuildRecords(const ChangedPlaces& changed, std::span<const std::int32_t> original_lines,
                  std::span<const std::int32_t> modified_lines, std::int32_t lines_in_front,
                  std::vector<DifferenceRecord>& records);

/// A single equal line between two large changes (64 lines and more on each side) is a coincidence,
/// as in shuffled lists: the two become one.
void JoinAcrossCoincidences(std::vector<DifferenceRecord>& records);

/// Joins records that at most `gap` unchanged lines separate.
void MergeNearRecords(std::vector<DifferenceRecord>& records, std::int32_t gap);

}  // namespace zorvane
