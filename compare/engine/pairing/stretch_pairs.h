// What pairing a stretch comes to: blocks that ascend on both sides.
#pragma once

#include <cstdint>
#include <vector>

#include "compare/engine/compare_options.h"
#include "compare/engine/pairing/compare_side.h"
#include "compare/engine/pairing/equal_run.h"
#include "compare/engine/pairing/stretch_text.h"

namespace zorvane {

/// Paragraphs that belong together: one against one, or a group that was split or joined. What
/// stands between two blocks has no partner.
struct PairedBlock {
    PlaceRange range;
    bool equal = false;  ///< line by line; then both sides have as many
};

/// Pairs the paragraphs of a stretch by likeness, in order, for the best total. The blocks lie in
/// places of the whole sides. Equal neighbours may be blocks of their own.
std::vector<PairedBlock> PairStretch(const CompareSide& first, const CompareSide& second,
                                     const StretchText& text, const CompareOptions& options);

}  // namespace zorvane
