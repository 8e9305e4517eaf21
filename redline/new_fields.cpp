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

bool IsBorder(const Atom& atom) {
    const pugi::xml_node node = atom.parts.front().node;
    return atom.kind == AtomKind::Marker && (Is(node, "fldChar") || Is(node, "instrText"));
}

struct OpenField {
    std::vector<Atom*> borders;
    bool fresh = true;
};

// Takes one border after the other.
class OpenFields {
  public:
    void Take(Atom& border, bool fresh) {
        const std::string_view kind = Attribute(border.parts.front().node, "fldCharType");
        if (kind == "begin")
            open_.emplace_back();
        if (open_.empty())
            return;
        OpenField& field = open_.back();
        field.borders.push_back(&border);
        // An end in front of all text of its paragraph leaves that paragraph to what follows.
        const bool ends = kind == "end";
        field.fresh = field.fresh && (fresh || (ends && border.begin == 0));
        if (!ends)
            return;
        for (Atom* const each : field.borders)
            each->inserted = field.fresh;
        open_.pop_back();
    }

  private:
    std::vector<OpenField> open_;
};

}  // namespace

void FindNewFields(const Plan& plan, std::vector<StoryBlock>& modified) {
    const std::vector<bool> fresh = NewBlocks(plan, modified.size());
    OpenFields open;
    for (std::size_t i = 0; i < modified.size(); ++i) {
        for (Atom& atom : modified[i].atoms) {
            if (IsBorder(atom))
                open.Take(atom, fresh[i]);
        }
    }
}

}  // namespace zorvane
