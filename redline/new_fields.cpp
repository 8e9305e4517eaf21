#include "redline/new_fields.h"

#include <algorithm>

namespace zorvane {
namespace {

// By block: nothing in it stays, and its end is inserted or shared with one that was deleted.
std::vector<bool> NewBlocks(const Plan& plan, std::size_t count) {
    std::vector<bool> fresh(count, false);
    std::vector<bool> stays(count, false);
    for (const PlanToken& token : plan.tokens) {
        if (token.modified == PlanToken::kNone)
            continue;
        if (token.kind == TokenKind::End)
            fresh[token.modified] = token.mark == TrackMark::Insert || token.shifted;
        else if (token.mark == TrackMark::Keep)
            stays[token.modified] = true;
    }
    for (std::size_t i = 0; i < count; ++i)
        fresh[i] = fresh[i] && !stays[i];
    return fresh;
}

struct OpenField {
    std::vector<Atom*> borders;
    bool fresh = true;
};

}  // namespace

void FindNewFields(const Plan& plan, std::vector<StoryBlock>& modified) {
    const std::vector<bool> fresh = NewBlocks(plan, modified.size());
    std::vector<OpenField> open;
    for (std::size_t i = 0; i < modified.size(); ++i) {
        for (Atom& atom : modified[i].atoms) {
            const pugi::xml_node node = atom.parts.front().node;
            if (atom.kind != AtomKind::Marker || (!Is(node, "fldChar") && !Is(node, "instrText")))
                continue;
            const std::string_view kind = Attribute(node, "fldCharType");
            if (kind == "begin")
                open.emplace_back();
            if (open.empty())
                continue;
            open.back().borders.push_back(&atom);
            // An end in front of all text of its paragraph leaves that paragraph to what follows.
            const bool ends = kind == "end";
            open.back().fresh = open.back().fresh && (fresh[i] || (ends && atom.begin == 0));
            if (!ends)
                continue;
            for (Atom* const border : open.back().borders)
                border->inserted = open.back().fresh;
            open.pop_back();
        }
    }
}

}  // namespace zorvane
