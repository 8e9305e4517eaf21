// The marks of one container, decided on values before any element is touched: a stream of text,
// ends of paragraphs and tables, in which accepting all leaves the Modified and rejecting all the
// Original.
#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "redline/align.h"

namespace zorvane {

enum class TokenKind { Text, End, Table };

struct PlanToken {
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    TokenKind kind = TokenKind::Text;
    TrackMark mark = TrackMark::Keep;
    std::size_t original = kNone;  ///< index of the block, where it comes from or stands against
    std::size_t modified = kNone;
    std::size_t original_begin = 0;  ///< of a text: in its block
    std::size_t modified_begin = 0;
    std::size_t length = 0;
    std::size_t move = 0;  ///< of a moved paragraph: the number that both of its halves bear
    bool shifted = false;  ///< an end whose two paragraphs are no partners
    friend bool operator==(const PlanToken&, const PlanToken&) = default;
};

struct Plan {
    std::vector<PlanToken> tokens;
    std::size_t tables_twice = 0;  ///< deleted and inserted whole, since marks could not be placed
};

/// A mark joins its paragraph with the next one, so that the last one of a container and one in
/// front of a table that stays may not be marked: there the ends are paired anew, and where that is
/// not possible partners are given up. Nothing when the container cannot be tracked at all.
std::optional<Plan> MakePlan(std::vector<BlockGroup> groups,
                             const std::vector<StoryBlock>& original,
                             const std::vector<StoryBlock>& modified);

/// Text that stays but leads to another place than before is deleted and inserted.
void SplitAtLinks(Plan& plan, const std::vector<StoryBlock>& original,
                  const std::vector<StoryBlock>& modified);

/// Paragraphs of three words or more that are deleted in one place and inserted in one other.
void FindMoves(Plan& plan, const std::vector<StoryBlock>& original,
               const std::vector<StoryBlock>& modified);

/// Whether each marked end has an unmarked one to go on in, seen from both sides. For tests and as
/// the last look before anything is written.
bool EndsAreSound(const std::vector<PlanToken>& tokens);

}  // namespace zorvane
