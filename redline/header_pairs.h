// Headers and footers of two documents: which belong together, and those of one side alone.
#pragma once

#include <string>
#include <vector>

#include "redline/import.h"

namespace zorvane {

/// One of the Original that the Modified has no place for yet.
struct LostHeader {
    std::string part;
    std::string kind;  ///< "header" or "footer"
    std::string type;  ///< "default", "first" or "even"
};

struct HeaderPairs {
    std::vector<PartPair> pairs;
    std::vector<std::string> added;  ///< of the Modified alone
    std::vector<LostHeader> lost;
};

/// Parts of the same kind and type belong together in the order in which sections name them.
HeaderPairs PairHeaders(WordPackage& original, WordPackage& modified);

/// Copies a part and names it in the Modified's first section, which shows none of that type now.
/// The copy's name; empty when a section further on would show another one then.
std::string TakeHeader(WordPackage& original, const LostHeader& lost, WordPackage& modified);

}  // namespace zorvane
