// What text that stays looked like in the Original, where that is to be tracked.
#pragma once

#include <map>
#include <string>

#include "redline/atoms.h"
#include "redline/import.h"

namespace zorvane {

class FormerLooks {
  public:
    explicit FormerLooks(Importer& importer) : importer_(importer) {}

    /// Properties of the Original as they would stand in the Modified's package, when they differ
    /// from these; an empty node when they do not. `original` and `modified` hold the properties as
    /// their child of that name ("rPr" of runs, "pPr" of paragraphs), or no such child.
    pugi::xml_node Of(const pugi::xml_node& original, const pugi::xml_node& modified,
                      const char* properties, const PartPair& parts);

  private:
    Importer& importer_;
    pugi::xml_document store_;
    std::map<std::size_t, pugi::xml_node> adapted_;  // by the hash of the Original's element
};

/// The run of the letter at `place` of a block's text; empty where an object stands alone.
pugi::xml_node RunAt(const StoryBlock& block, std::size_t place);
/// Where the run of that letter may end, in the block's text.
std::size_t AtomEndAt(const StoryBlock& block, std::size_t place);

}  // namespace zorvane
