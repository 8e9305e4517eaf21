#include "redline/odt_writer.h"

#include <algorithm>

#include "load/readers/word_readers.h"
#include "redline/node_kinds.h"
#include "redline/odt_resolve.h"
#include "redline/xml_tools.h"

namespace zorvane {
namespace {

using Node = pugi::xml_node;

std::vector<const Atom*> StoriesIn(const StoryBlock& block, std::size_t begin, std::size_t length) {
    std::vector<const Atom*> found;
    for (const Atom& atom : block.atoms) {
        if (HoldsStory(atom) && atom.begin >= begin && atom.End() <= begin + length)
            found.push_back(&atom);
    }
    return found;
}

// Behind a last table readers have an empty paragraph, whether it is in the file or not.
bool EndInParagraph(Node container) {
    Node last = container.last_child();
    while (last && !IsElement(last))
        last = last.previous_sibling();
    if (!Is(last, "table"))
        return false;
    Node end = container.append_child("text:p");
    if (Is(container, "text"))
        end.append_child("text:bookmark").append_attribute("text:name") = kTableEndMark;
    return true;
}

bool IsTable(const PlanToken& token) {
    return token.kind == TokenKind::Table;
}
bool IsKeptEnd(const PlanToken& token) {
    return token.kind == TokenKind::End && token.mark == TrackMark::Keep;
}

}  // namespace

// What is being written in one container.
struct OdtWriter::Container {
    Node node;
    const std::vector<StoryBlock>& original;
    const std::vector<StoryBlock>& modified;
    Place at{};  ///< in the Modified, behind the last token that it has
    std::map<std::size_t, std::vector<OdtMark>> marks{};
    bool turned = true;  ///< the deletion at this place stands at the end of the paragraph before

    void Pass(const PlanToken& token) {
        if (token.mark == TrackMark::Delete)
            return;
        at = token.kind == TokenKind::Text
                 ? Place{token.modified, token.modified_begin + token.length}
                 : Place{token.modified + 1, 0};
    }
};

OdtReader ReaderOf(OdtState& state, Side side) {
    return {state.keys, [&importer = state.importer, side](const std::string& address) {
                return importer.FormOf(side, address);
            }};
}

std::vector<BlockGroup> OdtWriter::ReadAgain(const PerSide<Node>& containers, TextsAlone ahead,
                                             Planned& planned) {
    const PerSide<std::vector<StoryBlock>*> blocks{&planned.original, &planned.modified};
    for (const Side side : kBothSides) {
        OdtReader reader = ReaderOf(state_, side);
        reader.reading.with_texts = false;
        blocks[side]->reserve(ahead.blocks[side].size());
        reader.CollectBlocks(containers[side], *blocks[side]);
        state_.failed = !ahead.GiveTo(*blocks[side], side) || state_.failed;
    }
    return std::move(ahead.groups);
}

// Only where the marks need it a paragraph is added behind a last table.
bool OdtWriter::PlanFor(const PerSide<Node>& containers, std::optional<TextsAlone> ahead,
                        Planned& planned) {
    const auto make = [&](std::vector<BlockGroup> groups) {
        planned.plan = MakePlan(std::move(groups), planned.original, planned.modified);
        return planned.plan.has_value();
    };
    const auto align = [&] {
        planned.original = ReaderOf(state_, Side::Original).Blocks(containers.original);
        planned.modified = ReaderOf(state_, Side::Modified).Blocks(containers.modified);
        return AlignBlocks(planned.original, planned.modified, state_.watcher);
    };
    if (make(ahead ? ReadAgain(containers, std::move(*ahead), planned) : align()))
        return true;
    const bool old_ended = EndInParagraph(containers.original);
    const bool new_ended = EndInParagraph(containers.modified);
    return (old_ended || new_ended) && make(align());
}

void OdtWriter::Merge(const Node& original, Node modified, std::optional<TextsAlone> ahead) {
    Planned planned;
    if (!PlanFor({original, modified}, std::move(ahead), planned) || state_.failed) {
        state_.failed = true;
        return;
    }
    SplitAtLinks(*planned.plan, planned.original, planned.modified);
    state_.tables_twice += planned.plan->tables_twice;
    Container in{modified, planned.original, planned.modified};
    MergeKept(*planned.plan, in);
    WriteStream(planned.plan->tokens, in);
    for (auto& [block, marks] : in.marks)
        PutMarks(planned.modified[block].node, std::move(marks));
}

void OdtWriter::MergeKept(const Plan& plan, const Container& in) {
    for (const PlanToken& token : plan.tokens) {
        if (token.mark != TrackMark::Keep || token.kind == TokenKind::End)
            continue;
        if (IsTable(token)) {
            MergeTable(in.original[token.original].node, in.modified[token.modified].node);
            continue;
        }
        const auto old_atoms =
            StoriesIn(in.original[token.original], token.original_begin, token.length);
        const auto new_atoms =
            StoriesIn(in.modified[token.modified], token.modified_begin, token.length);
        for (std::size_t i = 0; i < std::min(old_atoms.size(), new_atoms.size()); ++i)
            MergeAtoms(*old_atoms[i], *new_atoms[i]);
    }
}

void OdtWriter::MergeAtoms(const Atom& original, const Atom& modified) {
    const RedlineCounts before = state_.counts;
    const std::vector<Node> old_stories = OdtStoriesIn(original.parts.front().node);
    const std::vector<Node> new_stories = OdtStoriesIn(modified.parts.front().node);
    for (std::size_t i = 0; i < std::min(old_stories.size(), new_stories.size()); ++i)
        Merge(old_stories[i], new_stories[i]);
    state_.counts.notes += modified.kind == AtomKind::Note && state_.counts != before ? 1 : 0;
}

// ---- the stream ----

void OdtWriter::WriteStream(const Tokens& tokens, Container& in) {
    for (std::size_t begin = 0; begin < tokens.size();) {
        const TrackMark mark = tokens[begin].mark;
        std::size_t end = begin + 1;
        while (end < tokens.size() && tokens[end].mark == mark && mark != TrackMark::Keep)
            ++end;
        if (mark == TrackMark::Delete)
            WriteDeleted(tokens, begin, end, in);
        else if (mark == TrackMark::Insert)
            WriteInserted(tokens, begin, end, in);
        for (std::size_t i = begin; i < end; ++i)
            in.Pass(tokens[i]);
        if (mark == TrackMark::Keep)
            in.turned = true;
        begin = end;
    }
}

void OdtWriter::CountEnds(const Tokens& tokens, std::size_t begin, std::size_t end) {
    state_.counts.paragraph_marks += static_cast<std::int32_t>(
        std::count_if(tokens.begin() + static_cast<std::ptrdiff_t>(begin),
                      tokens.begin() + static_cast<std::ptrdiff_t>(end),
                      [](const PlanToken& token) { return token.kind == TokenKind::End; }));
}

// Tables that lead stand in the text themselves, all of their rows deleted. The rest is one region:
// at the end of the paragraph before where whole paragraphs go, so that each keeps its own look.
void OdtWriter::WriteDeleted(const Tokens& tokens, std::size_t begin, std::size_t end,
                             Container& in) {
    const bool behind_end = begin > 0 && IsKeptEnd(tokens[begin - 1]);
    const bool has_tables = IsTable(tokens[begin]);
    for (; begin < end && IsTable(tokens[begin]); ++begin) {
        const Node table = in.original[tokens[begin].original].node;
        if (in.at.block < in.modified.size())
            PutDeletedTable(table, in.modified[in.at.block].node, true);
        else if (!in.modified.empty())
            PutDeletedTable(table, in.node.last_child(), false);
        else
            state_.failed = true;
    }
    in.turned = behind_end && !has_tables && tokens[end - 1].kind == TokenKind::End;
    if (begin == end)
        return;
    Node content;
    const std::string id = regions_.AddDeletion(content);
    ++state_.counts.deletions;
    CountEnds(tokens, begin, end);
    FillDeletion(tokens, begin, end, in, content);
    Place place = in.at;
    if (in.turned) {
        place.block = tokens[begin - 1].modified;
        place.at = in.modified[place.block].text.size();
    }
    Mark(in, place, "text:change", id);
}

void OdtWriter::FillDeletion(const Tokens& tokens, std::size_t begin, std::size_t end,
                             Container& in, Node content) {
    bool first = true;
    Node paragraph;
    if (in.turned)
        paragraph = content.append_child("text:p");
    // The paragraph whose end comes next is the one that the letters stand in.
    const auto open = [&](std::size_t from) {
        const auto closing =
            std::find_if(tokens.begin() + static_cast<std::ptrdiff_t>(from), tokens.end(),
                         [](const PlanToken& token) {
                             return token.kind == TokenKind::End && token.mark != TrackMark::Insert;
                         });
        if (!paragraph && closing != tokens.end())
            paragraph = NewDeletedParagraph(content, in.original[closing->original].node, first);
        first = false;
    };
    const auto close = [&] {
        state_.importer.Adapt(paragraph, part_);
        paragraph = {};
    };
    if (in.turned) {
        first = false;
        close();
    }
    for (std::size_t i = begin; i < end; ++i) {
        const PlanToken& token = tokens[i];
        if (IsTable(token)) {
            state_.importer.Adapt(content.append_copy(in.original[token.original].node), part_);
            first = false;
            continue;
        }
        open(i);
        if (token.kind == TokenKind::End)
            close();
        else
            state_.markers_left_out +=
                OdtCopyStretch(in.original[token.original].node, token.original_begin,
                               token.original_begin + token.length, paragraph);
    }
    if (!in.turned)
        open(end);
    if (paragraph)
        close();
}

// In copies of the lists that the paragraph stands in; the first one melts into what is there.
Node OdtWriter::NewDeletedParagraph(Node content, const Node& like, bool first) {
    std::vector<Node> lists;
    for (Node node = like.parent(); !first && LocalName(node).starts_with("list");
         node = node.parent())
        lists.push_back(node);
    std::reverse(lists.begin(), lists.end());
    lists.push_back(like);
    Node top;
    for (const Node& node : lists) {
        content = content.append_child(node.name());
        top = top ? top : content;
        for (const pugi::xml_attribute& attribute : node.attributes())
            content.append_copy(attribute);
        if (node != like)
            state_.importer.AdaptElement(content, part_);
    }
    return content;
}

// A stretch of the Modified's own text, between two marks.
void OdtWriter::WriteInserted(const Tokens& tokens, std::size_t begin, std::size_t end,
                              Container& in) {
    std::size_t before = begin;
    while (before > 0 && tokens[before - 1].mark == TrackMark::Delete)
        --before;
    const bool behind_end = before > 0 && IsKeptEnd(tokens[before - 1]);
    bool turned = behind_end && in.turned && tokens[end - 1].kind == TokenKind::End;
    for (; begin < end && IsTable(tokens[begin]); ++begin) {
        MarkTable(in.modified[tokens[begin].modified].node, TrackMark::Insert);
        in.Pass(tokens[begin]);
        turned = false;
    }
    if (begin == end)
        return;
    const std::string id = regions_.AddInsertion();
    ++state_.counts.insertions;
    CountEnds(tokens, begin, end);
    const PlanToken& last = tokens[end - 1];
    Place start = in.at;
    Place stop = last.kind == TokenKind::Text
                     ? Place{last.modified, last.modified_begin + last.length}
                     : Place{last.modified + 1, 0};
    if (turned) {
        start.block = tokens[before - 1].modified;
        start.at = in.modified[start.block].text.size();
        stop = {last.modified, in.modified[last.modified].text.size()};
    }
    Mark(in, start, "text:change-start", id);
    Mark(in, stop, "text:change-end", id);
}

void OdtWriter::Mark(Container& in, Place place, const char* element, const std::string& id) {
    if (place.block >= in.modified.size() || in.modified[place.block].is_table) {
        state_.failed = true;
        return;
    }
    in.marks[place.block].push_back({place.at, element, id});
}

}  // namespace zorvane
