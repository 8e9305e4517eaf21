// From paired documents to the comparison as everybody reads it: records in the order of both
// texts, with their sections, letters and moves.
#pragma once

#include "compare/engine/compare_options.h"
#include "compare/engine/comparison.h"
#include "compare/engine/pairing/document_pairs.h"

namespace zorvane {

struct PairedDocuments {
    PerSide<const CompareSide*> sides;
    const DocumentPairs& pairs;
    bool mirrored = false;  ///< the first side of the pairs is the Modified
    bool whole = true;      ///< else the sections that are there are taken and none looked for
};

/// Fills what was found into `comparison`, which holds the texts. A changed block is a "c" record
/// of its own; between two blocks what has no partner is one "d" and then one "a", cut where a part
/// of it moved. With `options.larger_sections` records that at most three paragraphs part become
/// one.
void BuildComparison(const PairedDocuments& documents, const CompareOptions& options,
                     const SectionSwitches& sections, Comparison& comparison);

}  // namespace zorvane
