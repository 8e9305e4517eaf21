// Paragraphs without a partner that stand elsewhere on the other side.
#pragma once

#include <span>
#include <vector>

#include "compare/engine/compare_options.h"
#include "compare/engine/pairing/compare_side.h"
#include "compare/engine/pairing/equal_run.h"

namespace zorvane {

/// Among the unpaired places of the gaps those that moved, ascending by the first side. A seed has
/// ten words and more and is exactly the same, standing once in each whole document, or nearly so
/// (four fifths of its weight), no other being nearly as like it; it grows to unpaired neighbours
/// that are equal or as like. So copies ("See also", licence lines) never move. Moves do not
/// overlap.
std::vector<PlaceRange> FindMoves(const CompareSide& first, const CompareSide& second,
                                  std::span<const PlaceRange> gaps);

}  // namespace zorvane
