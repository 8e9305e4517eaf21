// What of two stories belongs together, and what lies inside of what stays.
#include <algorithm>
#include <optional>

#include "redline/new_fields.h"
#include "redline/note_parts.h"
#include "redline/story_writer.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

// The atoms that lie in a stretch of a block's text.
template <class Visit>
void AtomsIn(const StoryBlock& block, std::size_t begin, std::size_t length, const Visit& visit) {
    auto atom = AtomBehind(block.atoms, begin);
    for (; atom != block.atoms.end() && atom->End() <= begin + length; ++atom) {
        if (atom->length > 0 && atom->begin >= begin)
            visit(*atom);
    }
}

// Behind a last table readers have an empty paragraph, whether it is in the file or not.
Node LastPlaceIn(Node container) {
    const Node section = Child(container, "sectPr");
    const Node last = section ? section.previous_sibling() : container.last_child();
    if (!Is(last, "tbl"))
        return {};
    return section ? container.insert_child_before("w:p", section) : container.append_child("w:p");
}

// What stands behind a last table of a body for the sake of marks goes where it got none.
void DropEmptyEnd(Node body) {
    const Node section = Child(body, "sectPr");
    const Node last = section ? section.previous_sibling() : body.last_child();
    const bool blank = Is(last, "p") && !Child(last, "r") && !Child(last, "ins") &&
                       !Child(last, "del") && !Child(last, "pPr");
    if (blank && Is(last.previous_sibling(), "tbl"))
        body.remove_child(last);
}

}  // namespace

std::vector<StoryBlock> StoryWriter::Texts(const Node& container, Side side,
                                           std::size_t room) const {
    LastPlaceIn(container);
    AtomReader reader = ReaderOf(side);
    reader.reading.with_trees = false;
    reader.reading.text_room = room;
    return reader.Blocks(container);
}

std::vector<StoryBlock> StoryWriter::BlocksOf(const Node& container, Side side,
                                              std::optional<TextsAlone>& ahead) const {
    AtomReader reader = ReaderOf(side);
    if (!ahead)
        return reader.Blocks(container);
    reader.reading.with_texts = false;
    std::vector<StoryBlock> blocks;
    blocks.reserve(ahead->blocks[side].size());
    reader.CollectBlocks(container, blocks);
    state_.failed = !ahead->GiveTo(blocks, side) || state_.failed;
    return blocks;
}

void StoryWriter::Merge(const Node& original, Node modified, std::optional<TextsAlone> ahead) {
    LastPlaceIn(original);
    const Node end_added = LastPlaceIn(modified);
    if (end_added && Is(modified, "body"))
        state_.marks.MarkTableEnd(end_added);
    const std::vector<StoryBlock> old_blocks = BlocksOf(original, Side::Original, ahead);
    std::vector<StoryBlock> new_blocks = BlocksOf(modified, Side::Modified, ahead);
    if (state_.failed)
        return;
    std::optional<Plan> plan = MakePlan(
        ahead ? std::move(ahead->groups) : AlignBlocks(old_blocks, new_blocks, state_.watcher),
        old_blocks, new_blocks);
    if (!plan) {
        state_.failed = true;
        return;
    }
    SplitAtLinks(*plan, old_blocks, new_blocks);
    FindMoves(*plan, old_blocks, new_blocks);
    FindNewFields(*plan, new_blocks);
    state_.tables_twice += plan->tables_twice;
    PairLists(*plan, old_blocks, new_blocks);
    MergeNested(*plan, old_blocks, new_blocks);
    Emit(*plan, modified, old_blocks, new_blocks);
    // Behind a table that stays nothing joins.
    const std::vector<PlanToken>& tokens = plan->tokens;
    if (end_added && Is(modified, "body") && tokens.size() > 1 &&
        tokens[tokens.size() - 2].kind == TokenKind::Table &&
        tokens[tokens.size() - 2].mark == TrackMark::Keep)
        DropEmptyEnd(modified);
}

// Before anything deleted is written: it may stand in front of what stays of its list.
void StoryWriter::PairLists(const Plan& plan, const std::vector<StoryBlock>& original,
                            const std::vector<StoryBlock>& modified) {
    for (const PlanToken& token : plan.tokens) {
        if (token.kind == TokenKind::End && token.mark == TrackMark::Keep)
            state_.importer.PairLists(original[token.original].node, modified[token.modified].node);
    }
}

// ---- what lies inside of what stays ----

void StoryWriter::MergeNested(const Plan& plan, const std::vector<StoryBlock>& original,
                              const std::vector<StoryBlock>& modified) {
    for (const PlanToken& token : plan.tokens) {
        if (token.mark != TrackMark::Keep)
            continue;
        if (token.kind == TokenKind::Table)
            MergeTable(original[token.original].node, modified[token.modified].node);
        if (token.kind != TokenKind::Text)
            continue;
        const StoryBlock& old_block = original[token.original];
        AtomsIn(
            modified[token.modified], token.modified_begin, token.length, [&](const Atom& atom) {
                if (!HoldsStory(atom))
                    return;
                const std::size_t place = atom.begin - token.modified_begin + token.original_begin;
                AtomsIn(old_block, place, atom.length,
                        [&](const Atom& partner) { MergeAtoms(partner, atom); });
            });
    }
}

void StoryWriter::MergeAtoms(const Atom& original, const Atom& modified) {
    const Node old_node = original.parts.front().node;
    const Node new_node = modified.parts.front().node;
    if (modified.kind == AtomKind::Note)
        return MergeNote(old_node, new_node);
    const std::vector<Node> old_boxes = BoxesIn(old_node);
    const std::vector<Node> new_boxes = BoxesIn(new_node);
    for (std::size_t i = 0; i < std::min(old_boxes.size(), new_boxes.size()); ++i)
        Merge(old_boxes[i], new_boxes[i]);
}

void StoryWriter::MergeNote(const Node& original, const Node& modified) {
    const NotePlace old_note = FindNote(state_.original, original);
    const NotePlace new_note = FindNote(state_.modified, modified);
    if (!old_note.note || !new_note.note || !state_.notes_marked.insert(new_note.Name()).second)
        return;
    const RedlineCounts before = state_.marks.Counts();
    StoryWriter(state_, {old_note.part, new_note.part}).Merge(old_note.note, new_note.note);
    if (state_.marks.Counts() != before) {
        ++state_.marks.Counts().notes;
        state_.modified.Edit(new_note.part);
    }
}

}  // namespace zorvane
