// Text that stays, but in another link.
#include <algorithm>

#include "redline/plan.h"

namespace zorvane {
namespace {

struct LinkPlace {
    std::size_t end = 0;
    std::string_view link;
};

// The link at a place of a block, and where it may be another one.
LinkPlace LinkAt(const StoryBlock& block, std::size_t place) {
    const auto atom = AtomBehind(block.atoms, place);
    return atom == block.atoms.end() ? LinkPlace{block.text.size(), {}}
                                     : LinkPlace{atom->End(), atom->link};
}

void AppendByLinks(const PlanToken& token, const StoryBlock& original, const StoryBlock& modified,
                   std::vector<PlanToken>& tokens) {
    for (std::size_t done = 0; done < token.length;) {
        const LinkPlace old_link = LinkAt(original, token.original_begin + done);
        const LinkPlace new_link = LinkAt(modified, token.modified_begin + done);
        const std::size_t end = std::min({token.length, old_link.end - token.original_begin,
                                          new_link.end - token.modified_begin});
        PlanToken part = token;
        part.original_begin += done;
        part.modified_begin += done;
        part.length = end - done;
        done = end;
        if (old_link.link != new_link.link) {
            PlanToken deleted = part;
            deleted.mark = TrackMark::Delete;
            deleted.modified = PlanToken::kNone;
            tokens.push_back(deleted);
            part.mark = TrackMark::Insert;
            part.original = PlanToken::kNone;
            tokens.push_back(part);
            continue;
        }
        PlanToken* const before = tokens.empty() ? nullptr : &tokens.back();
        if (part.original_begin > token.original_begin && before != nullptr &&
            before->mark == TrackMark::Keep)
            before->length += part.length;
        else
            tokens.push_back(part);
    }
}

}  // namespace

void SplitAtLinks(Plan& plan, const std::vector<StoryBlock>& original,
                  const std::vector<StoryBlock>& modified) {
    if (std::none_of(original.begin(), original.end(), HoldsLink) &&
        std::none_of(modified.begin(), modified.end(), HoldsLink))
        return;  // most often; a second plan is large
    std::vector<PlanToken> tokens;
    for (const PlanToken& token : plan.tokens) {
        if (token.kind == TokenKind::Text && token.mark == TrackMark::Keep)
            AppendByLinks(token, original[token.original], modified[token.modified], tokens);
        else
            tokens.push_back(token);
    }
    plan.tokens = std::move(tokens);
}

}  // namespace zorvane
