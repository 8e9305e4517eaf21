// Which blocks of one container belong together, and which letters in them. The search is the
// comparison's own, so that a redline and every other report mark the same paragraphs.
#pragma once

#include <cstdint>
#include <vector>

#include "common/base/run_watcher.h"
#include "common/base/side.h"
#include "redline/atoms.h"

namespace zorvane {

enum class TrackMark : std::uint8_t { Keep, Delete, Insert };
/// Whose content bears a mark: what stays is the Modified's.
constexpr Side SideOf(TrackMark mark) {
    return mark == TrackMark::Delete ? Side::Original : Side::Modified;
}

/// A stretch of a group's text, its blocks joined by CR LF: on both sides when kept, else on one.
struct Stretch {
    TrackMark mark = TrackMark::Keep;
    std::size_t original = 0;  ///< where it begins
    std::size_t modified = 0;
    std::size_t length = 0;
    friend bool operator==(const Stretch&, const Stretch&) = default;
};

/// Blocks that follow each other, by their indexes.
struct BlockGroup {
    std::vector<std::size_t> original;
    std::vector<std::size_t> modified;
    /// Partners: one table on each side, or paragraphs whose last ends belong together. Otherwise
    /// all of the Original is deleted, all of the Modified inserted.
    bool kept = false;
    bool table = false;
    std::vector<Stretch> stretches;  ///< of kept paragraphs
};

/// In order; what stands on one side only between two kept groups is one group.
std::vector<BlockGroup> AlignBlocks(const std::vector<StoryBlock>& original,
                                    const std::vector<StoryBlock>& modified, RunWatcher* watcher);

/// Blocks of two containers whose trees are gone.
struct TextsAlone {
    PerSide<std::vector<StoryBlock>> blocks;  ///< without atoms
    std::vector<BlockGroup> groups{};         ///< once they are aligned

    /// Lets go of the texts, too.
    void Align(RunWatcher* watcher);
    /// Gives sizes and digests to the blocks of a side that were read again. They are of the same
    /// bytes; only where memory was short there are not as many, and nothing is given.
    bool GiveTo(std::vector<StoryBlock>& read_again, Side side);
};

/// Partners of rows, or of anything that is told apart by a line of text: pairs of indexes that
/// ascend on both sides.
std::vector<std::pair<std::size_t, std::size_t>> AlignLines(
    const std::vector<std::u16string>& original, const std::vector<std::u16string>& modified,
    RunWatcher* watcher);

}  // namespace zorvane
