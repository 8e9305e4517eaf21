// Alignment of long sequences: a shortest list of differences, less what proves nothing in it.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "compare/engine/difference_search.h"
#include "compare/engine/pairing/affine_table.h"

namespace zorvane {

/// The partners that a search has found, ascending.
std::vector<AlignedPair> MatchedPairs(const ChangedPlaces& changed);

/// Equal elements have equal numbers below `number_count`. `keep(i)`: what it brings to keep
/// element i of the first side. Islands of kept elements between two changes that bring less than
/// `chunk_cost` are given up. Near linear time.
std::vector<AlignedPair> AlignCheaply(std::span<const std::uint32_t> first,
                                      std::span<const std::uint32_t> second,
                                      std::uint32_t number_count,
                                      const std::function<std::int32_t(std::int32_t)>& keep,
                                      std::int32_t chunk_cost, DifferenceSearch& search);

}  // namespace zorvane
