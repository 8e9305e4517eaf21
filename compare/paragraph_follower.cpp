#include "compare/paragraph_follower.h"

#include <utility>

namespace zorvane {

void ParagraphFollower::Replaced(CharPos first, std::int32_t removed, std::int32_t inserted) {
    // A run lasts seconds. Who edits more than this meanwhile has a program type.
    constexpr std::size_t kMostEdits = 10'000;
    lost_ = lost_ || edits_.size() == kMostEdits;
    if (!lost_)
        edits_.push_back({first, removed, inserted});
    Paragraphs paragraphs = document_.TakeParagraphs();
    paragraphs.Replaced(first, removed, inserted);
    document_.SetParagraphs(std::move(paragraphs));
}

void ParagraphFollower::Reset() {
    edits_.clear();
    lost_ = true;
}

void ParagraphFollower::BeginRun() {
    edits_.clear();
    lost_ = false;
}

void ParagraphFollower::TakeParagraphs(Paragraphs of_the_begin) {
    if (lost_)
        return;
    for (const Edit& edit : edits_)
        of_the_begin.Replaced(edit.first, edit.removed, edit.inserted);
    document_.SetParagraphs(std::move(of_the_begin));
}

}  // namespace zorvane
