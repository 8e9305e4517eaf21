// Paragraphs that stand elsewhere in the same container, in a plan that is otherwise done.
#include <algorithm>
#include <map>

#include "redline/plan.h"

namespace zorvane {
namespace {

constexpr std::size_t kFewestBlanks = 2;  // between three words; less is no move that anybody sees

// The place of the text of a paragraph that is deleted or inserted whole, with its end behind it.
bool IsWhole(const std::vector<PlanToken>& tokens, std::size_t at) {
    const PlanToken& text = tokens[at];
    if (text.kind != TokenKind::Text || text.mark == TrackMark::Keep || at + 1 >= tokens.size())
        return false;
    const PlanToken& end = tokens[at + 1];
    const bool first = at == 0 || tokens[at - 1].kind != TokenKind::Text;
    return first && end.kind == TokenKind::End && end.mark == text.mark &&
           end.original == text.original && end.modified == text.modified;
}

// Text alone: what holds stories of its own is left where it is.
bool MayMove(const StoryBlock& block, const BlockText::Digest& text) {
    return text.blanks >= kFewestBlanks &&
           std::none_of(block.atoms.begin(), block.atoms.end(), HoldsStory);
}

struct Places {
    std::vector<std::size_t> deleted;
    std::vector<std::size_t> inserted;

    // Of copies nobody knows which one went where.
    bool AreOneMove() const { return deleted.size() == 1 && inserted.size() == 1; }
};

using PlacesByText = std::map<BlockText::Digest, Places>;

PlacesByText PlacesOf(const Plan& plan, const std::vector<StoryBlock>& original,
                      const std::vector<StoryBlock>& modified) {
    PlacesByText places;
    for (std::size_t i = 0; i < plan.tokens.size(); ++i) {
        const PlanToken& token = plan.tokens[i];
        if (!IsWhole(plan.tokens, i))
            continue;
        const bool deleted = token.mark == TrackMark::Delete;
        const StoryBlock& block = deleted ? original[token.original] : modified[token.modified];
        if (token.length != block.text.size())
            continue;
        const BlockText::Digest text = block.text.Told();
        if (!MayMove(block, text))
            continue;
        Places& place = places[text];
        (deleted ? place.deleted : place.inserted).push_back(i);
    }
    return places;
}

}  // namespace

void FindMoves(Plan& plan, const std::vector<StoryBlock>& original,
               const std::vector<StoryBlock>& modified) {
    std::size_t number = 0;
    for (const auto& [text, place] : PlacesOf(plan, original, modified)) {
        if (!place.AreOneMove())
            continue;
        ++number;
        for (const std::size_t at : {place.deleted[0], place.inserted[0]}) {
            plan.tokens[at].move = number;
            plan.tokens[at + 1].move = number;
        }
    }
}

}  // namespace zorvane
