// What differs in the looks of words and paragraphs that two rich texts have in common.
#pragma once

#include <cstdint>
#include <vector>

#include "common/base/run_watcher.h"
#include "compare/document/beside_compare.h"
#include "compare/document/rich_text.h"

namespace zorvane {

/// How far the looks of two documents can be compared.
enum class FormatDepth : std::uint8_t {
    None,   ///< a side has no formatting
    Marks,  ///< bold, italic, underline, strike, super- and subscript, alignment: what two kinds
            ///< of files have in common
    Full    ///< and kind of underline, colours, sizes, fonts, indents
};

/// One difference of the kind `Formatting` for each pair of paragraphs. Words of a changed
/// paragraph count as far as both have them; white space has no looks. The texts tell the first
/// words and what they look like: "“price” not bold" and "“price” bold".
std::vector<BesideDifference> CompareFormatting(const RichText& original, const RichText& modified,
                                                const ParagraphPartners& partners,
                                                FormatDepth depth, RunWatcher* watcher = nullptr);

}  // namespace zorvane
