// What two loaded documents differ in beside their words, as a comparison tells it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "common/base/side.h"
#include "compare/document/beside.h"
#include "compare/document/format_compare.h"
#include "compare/engine/comparison.h"

namespace zorvane {

/// What the words leave out of both sides. Everything is borrowed.
struct BesideSides {
    PerSide<const std::vector<BesideItem>*> items;
    PerSide<const RichText*> texts;
    FormatDepth depth = FormatDepth::None;
    RunWatcher* watcher = nullptr;  ///< what is found when it stops is not whole
};

struct BesideFound {
    std::vector<BesideNote> notes;
    std::string sentence;  ///< empty: nothing differs
};

/// Items by kind and paragraph, and the looks of words and paragraphs that both sides have.
BesideFound FindBeside(const Comparison& comparison, const BesideSides& sides);

/// Whether both are regular files of the same bytes.
bool HaveSameBytes(const PerSide<std::string>& files);

}  // namespace zorvane
