#include "redline/plan.h"

#include <algorithm>
#include <utility>

#include "common/base/paragraph_break.h"

namespace zorvane {
namespace {

using Indexes = std::vector<std::size_t>;

std::size_t FirstTrailingTable(const Indexes& list, const std::vector<StoryBlock>& blocks) {
    std::size_t end = list.size();
    while (end > 0 && blocks[list[end - 1]].is_table)
        --end;
    return end;
}

void PutInFront(Indexes& list, const Indexes& front) {
    list.insert(list.begin(), front.begin(), front.end());
}
void PutBehind(Indexes& list, const Indexes& behind) {
    list.insert(list.end(), behind.begin(), behind.end());
}

bool HoldsStories(const StoryBlock& block) {
    return std::any_of(block.atoms.begin(), block.atoms.end(), HoldsStory);
}

class Planner {
  public:
    Planner(std::vector<BlockGroup> groups, const std::vector<StoryBlock>& original,
            const std::vector<StoryBlock>& modified)
        : groups_(std::move(groups)), original_(original), modified_(modified) {}

    std::optional<Plan> Make() {
        for (std::size_t border = 0; border <= groups_.size(); ++border) {
            while (IsBorder(border) && !IsSound(border)) {
                if (!GiveUpPartners(border))
                    return std::nullopt;
            }
        }
        for (std::size_t i = 0; i < groups_.size(); ++i)
            Write(i);
        if (!EndsAreSound(plan_.tokens))
            return std::nullopt;
        return std::move(plan_);
    }

  private:
    // ---- which partners can stay ----

    // Nothing joins over a table that stays, or over the end.
    bool IsBorder(std::size_t place) const {
        return place == groups_.size() || (groups_[place].kept && groups_[place].table);
    }
    bool HasGap(std::size_t border) const { return border > 0 && !groups_[border - 1].kept; }
    bool KeptParagraphsBefore(std::size_t gap) const {
        return gap > 0 && groups_[gap - 1].kept && !groups_[gap - 1].table;
    }
    bool AnyTable(const Indexes& list, std::size_t end,
                  const std::vector<StoryBlock>& blocks) const {
        return std::any_of(list.begin(), list.begin() + static_cast<std::ptrdiff_t>(end),
                           [&blocks](std::size_t index) { return blocks[index].is_table; });
    }

    // Both sides end in a paragraph in front of the border, or neither does, or the paragraph
    // before takes the mark over.
    bool IsSound(std::size_t border) const {
        if (!HasGap(border))
            return true;
        const BlockGroup& gap = groups_[border - 1];
        const std::size_t old_end = FirstTrailingTable(gap.original, original_);
        const std::size_t new_end = FirstTrailingTable(gap.modified, modified_);
        if ((old_end == 0) == (new_end == 0))
            return true;
        return KeptParagraphsBefore(border - 1) && !AnyTable(gap.original, old_end, original_) &&
               !AnyTable(gap.modified, new_end, modified_);
    }

    bool GiveUpPartners(std::size_t& border) {
        std::size_t gap = border - 1;
        if (KeptParagraphsBefore(gap) || (border == groups_.size() && gap > 0)) {
            border -= Absorb(gap, gap - 1);
            return true;
        }
        if (border == groups_.size())
            return false;
        // The table in front of which nothing can be marked; what stands behind it joins in.
        Absorb(gap, border);
        border = gap + 1;
        while (!IsBorder(border))
            ++border;
        return true;
    }

    // Takes a kept group beside the gap into it; gives by how much later places move to the front.
    std::size_t Absorb(std::size_t gap, std::size_t kept) {
        const bool before = kept < gap;
        BlockGroup taken = std::move(groups_[kept]);
        plan_.tables_twice += taken.table ? 1 : 0;
        BlockGroup& into = groups_[gap];
        (before ? PutInFront : PutBehind)(into.original, taken.original);
        (before ? PutInFront : PutBehind)(into.modified, taken.modified);
        Remove(kept);
        const std::size_t place = before ? gap - 1 : gap;
        const std::size_t other = before ? place - 1 : place + 1;
        if (other >= groups_.size() || groups_[other].kept)
            return 1;
        (before ? PutInFront : PutBehind)(groups_[place].original, groups_[other].original);
        (before ? PutInFront : PutBehind)(groups_[place].modified, groups_[other].modified);
        Remove(other);
        return 2;
    }

    void Remove(std::size_t place) {
        groups_.erase(groups_.begin() + static_cast<std::ptrdiff_t>(place));
    }

    // ---- the stream ----

    void Write(std::size_t index) {
        const BlockGroup& group = groups_[index];
        if (!group.kept && GoesWithEndBefore(index))
            return WriteShifted(group, FirstTrailingTable(group.original, original_),
                                FirstTrailingTable(group.modified, modified_));
        if (!group.kept)
            return WriteGap(group, !IsBorder(index + 1), KeptParagraphsBefore(index));
        if (group.table)
            Put({TokenKind::Table, TrackMark::Keep, group.original[0], group.modified[0], 0, 0, 0,
                 0, false});
        else
            WriteKept(group);
    }

    void Put(const PlanToken& token) { plan_.tokens.push_back(token); }

    // Places of a joined text, as blocks and places in them.
    struct Walk {
        const Indexes& chosen;
        const std::vector<StoryBlock>& blocks;
        std::size_t at = 0;     // in `chosen`
        std::size_t begin = 0;  // of that block in the joined text

        std::size_t Index() const { return chosen[at]; }
        std::size_t End() const { return begin + blocks[Index()].text.size(); }
        void Next() {
            begin = End() + kBreak.size();
            ++at;
        }
    };

    void WriteKept(const BlockGroup& group) {
        Walk old_walk{group.original, original_};
        Walk new_walk{group.modified, modified_};
        for (const Stretch& stretch : group.stretches)
            WriteStretch(stretch, old_walk, new_walk);
        Put({TokenKind::End, TrackMark::Keep, group.original.back(), group.modified.back(), 0, 0, 0,
             0, false});
    }

    // Nothing moves on a side that does not have the stretch.
    struct StretchSide {
        Walk& walk;
        std::size_t place;  // in the joined text
        bool there;
        void Begin(std::size_t& block, std::size_t& block_begin) const {
            if (!there)
                return;
            block = walk.Index();
            block_begin = place - walk.begin;
        }
        void PassWithEnd(std::size_t length) {
            if (!there)
                return;
            place += length + kBreak.size();
            walk.Next();
        }
    };

    void WriteStretch(const Stretch& stretch, Walk& old_walk, Walk& new_walk) {
        StretchSide old_side{old_walk, stretch.original, stretch.mark != TrackMark::Insert};
        StretchSide new_side{new_walk, stretch.modified, stretch.mark != TrackMark::Delete};
        const StretchSide& told = old_side.there ? old_side : new_side;
        for (std::size_t left = stretch.length; left > 0;) {
            PlanToken token;
            token.mark = stretch.mark;
            token.length = std::min(left, told.walk.End() - told.place);
            old_side.Begin(token.original, token.original_begin);
            new_side.Begin(token.modified, token.modified_begin);
            if (token.length > 0)
                Put(token);
            if (left == token.length)
                return;
            Put({TokenKind::End, token.mark, token.original, token.modified, 0, 0, 0, 0, false});
            old_side.PassWithEnd(token.length);
            new_side.PassWithEnd(token.length);
            left -= std::min(left, token.length + kBreak.size());
        }
    }

    void PutBlock(TrackMark mark, std::size_t index) {
        const bool deleted = mark == TrackMark::Delete;
        const StoryBlock& block = deleted ? original_[index] : modified_[index];
        PlanToken token;
        token.mark = mark;
        (deleted ? token.original : token.modified) = index;
        if (block.is_table) {
            token.kind = TokenKind::Table;
            return Put(token);
        }
        token.length = block.text.size();
        if (token.length > 0)
            Put(token);
        token.length = 0;
        token.kind = TokenKind::End;
        Put(token);
    }

    void PutBlocks(TrackMark mark, const Indexes& list, std::size_t first, std::size_t end) {
        for (std::size_t i = first; i < end; ++i)
            PutBlock(mark, list[i]);
    }

    // Paragraphs of one side that some readers cannot join with what follows, since a table goes
    // with them or the last one holds a note: to them the end of the paragraph before is marked.
    bool GoesWithEndBefore(std::size_t index) const {
        const BlockGroup& gap = groups_[index];
        if (!KeptParagraphsBefore(index) || gap.original.empty() == gap.modified.empty())
            return false;
        const bool deleted = !gap.original.empty();
        const std::vector<StoryBlock>& blocks = deleted ? original_ : modified_;
        const Indexes& list = deleted ? gap.original : gap.modified;
        const std::size_t end = FirstTrailingTable(list, blocks);
        if (end == 0 || AnyTable(list, end, blocks))
            return false;
        const auto last = list.begin() + static_cast<std::ptrdiff_t>(end) - 1;
        const BlockGroup& before = groups_[index - 1];
        if (HoldsStories(original_[before.original.back()]) ||
            HoldsStories(modified_[before.modified.back()]) ||
            std::any_of(list.begin(), last,
                        [&blocks](std::size_t at) { return HoldsStories(blocks[at]); }))
            return false;
        return end < list.size() || HoldsStories(blocks[*last]);
    }

    // Whether one that holds a note comes to the end where it shares one: some readers cannot join
    // it with what follows.
    bool NoteNeedsEnd(const BlockGroup& gap, std::size_t inserted) const {
        const StoryBlock& old_block = original_[gap.original.back()];
        const StoryBlock& new_block = modified_[gap.modified.back()];
        return !old_block.is_table && !new_block.is_table &&
               (HoldsStories(new_block) || (HoldsStories(old_block) && inserted == 1));
    }

    // Tables that lead come first, so that no deleted end stands in front of an inserted one.
    void WriteGap(const BlockGroup& gap, bool open, bool paragraph_before) {
        const Indexes& old_list = gap.original;
        const Indexes& new_list = gap.modified;
        const std::size_t old_end =
            open ? old_list.size() : FirstTrailingTable(old_list, original_);
        const std::size_t new_end =
            open ? new_list.size() : FirstTrailingTable(new_list, modified_);
        const bool shift = !open && (old_end == 0) != (new_end == 0) && paragraph_before;
        if (shift)
            return WriteShifted(gap, old_end, new_end);
        const std::size_t old_first = Leading(old_list, old_end, original_);
        const std::size_t new_first = Leading(new_list, new_end, modified_);
        PutBlocks(TrackMark::Delete, old_list, 0, old_first);
        PutBlocks(TrackMark::Insert, new_list, 0, new_first);
        PutBlocks(TrackMark::Delete, old_list, old_first, old_end);
        const bool shared = old_end > old_first && new_end > new_first &&
                            (!open || NoteNeedsEnd(gap, new_end - new_first));
        if (shared)
            plan_.tokens.pop_back();
        PutBlocks(TrackMark::Insert, new_list, new_first, new_end);
        if (shared)
            ShareEnd(old_list[old_end - 1], new_list[new_end - 1]);
        PutBlocks(TrackMark::Delete, old_list, old_end, old_list.size());
        PutBlocks(TrackMark::Insert, new_list, new_end, new_list.size());
    }

    static std::size_t Leading(const Indexes& list, std::size_t end,
                               const std::vector<StoryBlock>& blocks) {
        std::size_t first = 0;
        while (first < end && blocks[list[first]].is_table)
            ++first;
        return first;
    }

    // The last end stays for both sides.
    void ShareEnd(std::size_t original, std::size_t modified) {
        plan_.tokens.back() = {
            TokenKind::End, TrackMark::Keep, original, modified, 0, 0, 0, 0, true};
    }

    // The paragraph before gives its end away and gets the last one.
    void WriteShifted(const BlockGroup& gap, std::size_t old_end, std::size_t new_end) {
        const PlanToken before = plan_.tokens.back();
        PlanToken& end = plan_.tokens.back();
        if (new_end > 0) {
            end = {TokenKind::End, TrackMark::Insert, PlanToken::kNone, before.modified, 0, 0, 0, 0,
                   false};
            PutBlocks(TrackMark::Insert, gap.modified, 0, new_end);
            ShareEnd(before.original, gap.modified[new_end - 1]);
        } else {
            end = {TokenKind::End, TrackMark::Delete, before.original, PlanToken::kNone, 0, 0, 0, 0,
                   false};
            PutBlocks(TrackMark::Delete, gap.original, 0, old_end);
            ShareEnd(gap.original[old_end - 1], before.modified);
        }
        PutBlocks(TrackMark::Delete, gap.original, old_end, gap.original.size());
        PutBlocks(TrackMark::Insert, gap.modified, new_end, gap.modified.size());
    }

    std::vector<BlockGroup> groups_;
    const std::vector<StoryBlock>& original_;
    const std::vector<StoryBlock>& modified_;
    Plan plan_;
};

// Seen by who accepts (`gone` is Delete) or rejects (`gone` is Insert).
bool EndsAreSoundFor(const std::vector<PlanToken>& tokens, TrackMark gone) {
    bool open = false;  // an end is gone, and none that stays has come since
    for (const PlanToken& token : tokens) {
        if (token.mark == gone) {
            open = open || token.kind == TokenKind::End;
            continue;
        }
        if (token.kind == TokenKind::Table && open)
            return false;
        if (token.kind == TokenKind::End)
            open = false;
    }
    return !open;
}

}  // namespace

std::optional<Plan> MakePlan(std::vector<BlockGroup> groups,
                             const std::vector<StoryBlock>& original,
                             const std::vector<StoryBlock>& modified) {
    return Planner(std::move(groups), original, modified).Make();
}

bool EndsAreSound(const std::vector<PlanToken>& tokens) {
    return EndsAreSoundFor(tokens, TrackMark::Delete) && EndsAreSoundFor(tokens, TrackMark::Insert);
}

}  // namespace zorvane
