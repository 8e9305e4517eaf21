#include "redline/story_writer.h"

#include <algorithm>

#include "redline/note_parts.h"
#include "redline/xml_tools.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

// A paragraph of the Modified that stays as it is.
bool IsUntouched(const std::vector<PlanToken>& tokens, const PlanToken& end,
                 const std::vector<StoryBlock>& modified) {
    if (end.mark != TrackMark::Keep || end.shifted)
        return false;
    const StoryBlock& block = modified[end.modified];
    if (std::any_of(block.atoms.begin(), block.atoms.end(),
                    [](const Atom& atom) { return atom.inserted; }))
        return false;
    const std::size_t length = block.text.size();
    if (tokens.empty())
        return length == 0;
    return tokens.size() == 1 && tokens[0].mark == TrackMark::Keep &&
           tokens[0].modified == end.modified && tokens[0].length == length;
}

}  // namespace

// What is being written in one container.
struct StoryWriter::Output {
    Node container;
    const std::vector<StoryBlock>& original;
    const std::vector<StoryBlock>& modified;
    std::vector<PlanToken> tokens{};                  // of the paragraph that has no end yet
    Node last{};                                      // behind which the next block goes
    std::map<std::size_t, std::size_t> atoms_done{};  // of each block of the Modified
    std::vector<Node> replaced{};
    std::size_t first_move = 0;  // behind which the numbers of this container's moves stand

    // For a block that is none of the Modified's.
    Node InsertBlock(const char* name) {
        if (last)
            return last.parent().insert_child_after(name, last);
        if (!modified.empty()) {
            Node first = modified.front().node;
            return first.parent().insert_child_before(name, first);
        }
        const Node section = Child(container, "sectPr");
        return section ? container.insert_child_before(name, section)
                       : container.append_child(name);
    }
};

StoryWriter::StoryWriter(RedlineState& state, PartPair parts)
    : state_(state), parts_(std::move(parts)) {}

AtomReader StoryWriter::ReaderOf(Side side) const {
    PartForms& forms = state_.importer.Forms(side);
    const std::string& part = side == Side::Original ? parts_.original : parts_.modified;
    return {state_.keys, [&forms, part](const std::string& id) { return forms.Of(part, id); }};
}

WriterTools StoryWriter::Tools() {
    return {state_.marks, state_.importer, parts_,
            [this](const Node& reference) { return ImportNote(reference); },
            [this](const Node& reference) { MarkNote(reference); }};
}

std::string StoryWriter::ImportNote(const Node& reference) {
    const NotePlace old_note = FindNote(state_.original, reference);
    if (!old_note.note)
        return std::string(Attribute(reference, "id"));
    const NotePlace copy =
        CopyNote(state_.original, old_note, std::string(LocalName(reference)), state_.modified);
    state_.notes_imported = true;
    ++state_.marks.Counts().notes;
    StoryWriter(state_, {old_note.part, copy.part}).MarkAll(copy.note, TrackMark::Delete, false);
    return copy.id;
}

void StoryWriter::MarkNote(const Node& reference) {
    const NotePlace place = FindNote(state_.modified, reference);
    if (!place.note || !state_.notes_marked.insert(place.Name()).second)
        return;
    ++state_.marks.Counts().notes;
    state_.modified.Edit(place.part);
    StoryWriter(state_, {place.part, place.part}).MarkAll(place.note, TrackMark::Insert, false);
}

// ---- the stream becomes elements ----

void StoryWriter::Emit(const Plan& plan, Node container, const std::vector<StoryBlock>& original,
                       const std::vector<StoryBlock>& modified) {
    Output output{container, original, modified};
    output.first_move = state_.moves;
    std::size_t done = 0;
    for (const PlanToken& token : plan.tokens) {
        if (Is(container, "body"))
            TellProgress(state_.watcher, RunStep::WriteReport,
                         static_cast<double>(++done) / static_cast<double>(plan.tokens.size()));
        if (token.kind == TokenKind::Text)
            output.tokens.push_back(token);
        else if (token.kind == TokenKind::Table)
            EmitTable(output, token);
        else
            EmitEnd(output, token);
    }
    for (Node node : output.replaced)
        node.parent().remove_child(node);
}

void StoryWriter::EmitEnd(Output& output, const PlanToken& end) {
    if (IsUntouched(output.tokens, end, output.modified) && LooksAsBefore(output, end)) {
        output.last = output.modified[end.modified].node;
    } else {
        const Node paragraph = NewParagraph(output, end);
        WriteTokens(output, paragraph, end);
        if (end.mark != TrackMark::Delete)
            output.replaced.push_back(output.modified[end.modified].node);
        output.last = paragraph;
    }
    output.tokens.clear();
}

Node StoryWriter::NewParagraph(Output& output, const PlanToken& end) {
    const StoryBlock& block = end.mark == TrackMark::Delete ? output.original[end.original]
                                                            : output.modified[end.modified];
    // Some readers leave the end of a paragraph that moved with a link.
    const bool moved = end.move > 0 && !HoldsLink(block);
    if (end.mark == TrackMark::Delete) {
        Node paragraph = output.InsertBlock("w:p");
        if (const Node look = Child(block.node, "pPr"))
            state_.importer.Adapt(paragraph.append_copy(look), parts_);
        state_.marks.MarkEnd(paragraph, TrackMark::Delete, moved);
        return paragraph;
    }
    Node paragraph = block.node.parent().insert_child_before("w:p", block.node);
    for (const pugi::xml_attribute& attribute : block.node.attributes())
        paragraph.append_copy(attribute);
    if (const Node look = Child(block.node, "pPr"))
        paragraph.append_copy(look);
    if (end.mark == TrackMark::Insert)
        state_.marks.MarkEnd(paragraph, TrackMark::Insert, moved);
    // An end that two paragraphs share keeps what each of them looks like.
    if (end.mark == TrackMark::Keep && (end.shifted || state_.looks != nullptr)) {
        FormerLooks own(state_.importer);
        FormerLooks& looks = state_.looks != nullptr ? *state_.looks : own;
        if (const Node before =
                looks.Of(output.original[end.original].node, paragraph, "pPr", parts_))
            state_.marks.NoteFormer(paragraph, before);
    }
    return paragraph;
}

void StoryWriter::WriteTokens(Output& output, Node paragraph, const PlanToken& end) {
    const WriterTools tools = Tools();
    TrackedParagraph writer(tools, paragraph, end.move > 0);
    if (end.move > 0) {
        state_.moves = std::max(state_.moves, output.first_move + end.move);
        state_.marks.BeginMove(paragraph, end.mark,
                               "move" + std::to_string(output.first_move + end.move));
    }
    for (const PlanToken& token : output.tokens)
        WriteText(output, writer, token);
    if (end.move > 0)
        state_.marks.EndMove(paragraph, end.mark);
    if (end.mark == TrackMark::Delete)
        return;
    // What takes no place behind the last letter.
    const StoryBlock& block = output.modified[end.modified];
    for (std::size_t& at = output.atoms_done[end.modified]; at < block.atoms.size(); ++at)
        writer.Write(block.atoms[at], 0, 0, TrackMark::Keep);
}

// Of the Modified each atom is written once, in order; of the Original what is asked for.
void StoryWriter::WriteText(Output& output, TrackedParagraph& writer, const PlanToken& token) {
    const bool deleted = token.mark == TrackMark::Delete;
    const StoryBlock& block =
        deleted ? output.original[token.original] : output.modified[token.modified];
    const std::size_t begin = deleted ? token.original_begin : token.modified_begin;
    const std::size_t end = begin + token.length;
    auto from_place =
        static_cast<std::size_t>(AtomBehind(block.atoms, begin) - block.atoms.begin());
    std::size_t& at = deleted ? from_place : output.atoms_done[token.modified];
    for (; at < block.atoms.size() && block.atoms[at].begin < end; ++at) {
        const Atom& atom = block.atoms[at];
        if (deleted && atom.End() <= begin)
            continue;
        WriteAtom(output, writer, token, atom);
        if (atom.End() > end)
            break;
    }
}

// As far as the token reaches; where looks are tracked, in pieces of one former look each.
void StoryWriter::WriteAtom(Output& output, TrackedParagraph& writer, const PlanToken& token,
                            const Atom& atom) {
    const bool deleted = token.mark == TrackMark::Delete;
    const std::size_t begin = deleted ? token.original_begin : token.modified_begin;
    const std::size_t first = std::max(begin, atom.begin);
    const std::size_t last = std::min(begin + token.length, atom.End());
    if (state_.looks == nullptr || token.mark != TrackMark::Keep || atom.length == 0)
        return writer.Write(atom, first - atom.begin, last - atom.begin, token.mark);
    const StoryBlock& old_block = output.original[token.original];
    const Node run = atom.parts.front().run;
    for (std::size_t at = first; at < last;) {
        const std::size_t place = at - token.modified_begin + token.original_begin;
        const std::size_t step = std::min(last - at, AtomEndAt(old_block, place) - place);
        const Node old_run = RunAt(old_block, place);
        writer.SetFormerLook(run && old_run ? state_.looks->Of(old_run, run, "rPr", parts_)
                                            : Node());
        writer.Write(atom, at - atom.begin, at + step - atom.begin, token.mark);
        at += step;
    }
    writer.SetFormerLook({});
}

// Whether a paragraph whose text stays may stay as it is.
bool StoryWriter::LooksAsBefore(const Output& output, const PlanToken& end) {
    if (state_.looks == nullptr)
        return true;
    const StoryBlock& old_block = output.original[end.original];
    const StoryBlock& new_block = output.modified[end.modified];
    if (state_.looks->Of(old_block.node, new_block.node, "pPr", parts_))
        return false;
    for (std::size_t at = 0; at < new_block.text.size();) {
        const Node old_run = RunAt(old_block, at);
        const Node new_run = RunAt(new_block, at);
        if (old_run && new_run && state_.looks->Of(old_run, new_run, "rPr", parts_))
            return false;
        at = std::min(AtomEndAt(old_block, at), AtomEndAt(new_block, at));
    }
    return true;
}

void StoryWriter::EmitTable(Output& output, const PlanToken& token) {
    if (token.mark != TrackMark::Delete) {
        output.last = output.modified[token.modified].node;
        if (token.mark == TrackMark::Insert)
            MarkTable(output.last, TrackMark::Insert);
        return;
    }
    Node place = output.InsertBlock("w:tbl");
    Node copy = place.parent().insert_copy_after(output.original[token.original].node, place);
    place.parent().remove_child(place);
    output.last = copy;
    MarkTable(copy, TrackMark::Delete);
}

// ---- content that is inserted or deleted whole ----

void StoryWriter::MarkAll(Node container, TrackMark mark, bool last_too) {
    const std::vector<StoryBlock> blocks = ReaderOf(SideOf(mark)).Blocks(container);
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        if (blocks[i].is_table)
            MarkTable(blocks[i].node, mark);
        else
            MarkParagraph(blocks[i], mark, last_too || i + 1 < blocks.size());
    }
}

void StoryWriter::MarkParagraph(const StoryBlock& block, TrackMark mark, bool end_too) {
    Node old = block.node;
    Node paragraph = old.parent().insert_child_before("w:p", old);
    if (mark == TrackMark::Insert) {
        for (const pugi::xml_attribute& attribute : old.attributes())
            paragraph.append_copy(attribute);
    }
    if (const Node look = Child(old, "pPr")) {
        const Node copy = paragraph.append_copy(look);
        if (mark == TrackMark::Delete)
            state_.importer.Adapt(copy, parts_);
    }
    if (end_too)
        state_.marks.MarkEnd(paragraph, mark);
    const WriterTools tools = Tools();
    TrackedParagraph writer(tools, paragraph);
    for (const Atom& atom : block.atoms)
        writer.Write(atom, 0, atom.length, mark);
    old.parent().remove_child(old);
}

}  // namespace zorvane
