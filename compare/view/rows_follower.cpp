#include "compare/view/rows_follower.h"

#include <algorithm>

#include "common/base/paragraph_break.h"

namespace zorvane {
namespace {

struct Inserted {
    std::int32_t breaks = 0;
    bool begins_in_break = false;
    bool ends_in_break = false;
};

Inserted LookAt(const Editor& editor, TextRange range) {
    Inserted found;
    char16_t first = 0;
    for (const std::u16string_view piece : editor.TextPieces(range)) {
        if (piece.empty())
            continue;
        first = first == 0 ? piece.front() : first;
        found.breaks += static_cast<std::int32_t>(std::count(piece.begin(), piece.end(), u'\n'));
        found.begins_in_break = first == u'\r';
        found.ends_in_break = piece.back() == u'\n';
    }
    return found;
}

}  // namespace

// In front of its break.
CharPos RowsFollower::EndOf(ParagraphNumber number) const {
    if (number.value < blocks_.ParagraphCount())
        return blocks_.OfParagraph(number + 1).first - kBreakLength;
    const Block last = blocks_.At(blocks_.BlockCount() - 1);
    return last.first + last.length;
}

void RowsFollower::Reset() {
    rows_.Reset(side_, LookAt(editor_, {CharPos{0}, editor_.Length()}).breaks + 1);
}

// Where whole paragraphs come and go those beside them are untouched: the first is if nothing of it
// goes and a break follows it, the last if nothing of it goes and a break stands in front of it.
// Only an edit from the middle of one to the middle of another joins or parts some.
void RowsFollower::Replaced(CharPos first, std::int32_t removed, std::int32_t inserted) {
    const CharPos old_end = first + removed;
    const Inserted now = LookAt(editor_, {first, inserted});
    const ParagraphNumber head = blocks_.OfChar(first).paragraph;
    const ParagraphNumber tail = blocks_.OfChar(old_end).paragraph;
    const std::int32_t went = tail - head;
    const std::int32_t came = now.breaks;
    const bool from_start = blocks_.OfParagraph(head).first == first;
    const bool to_end = EndOf(tail) == old_end;
    const bool leaves_head = EndOf(head) == first && (inserted > 0 ? now.begins_in_break : to_end);
    const bool leaves_tail = blocks_.OfParagraph(tail).first == old_end &&
                             (inserted > 0 ? now.ends_in_break : from_start);
    if (removed == 0 && inserted == 0)
        return;
    if (went == 0 && came == 0) {
        Apply(head, 1, 1);
    } else if (leaves_head && leaves_tail && went > 0 && came > 0) {
        Apply(head + 1, went - 1, came - 1, false);
    } else if (leaves_tail) {
        Apply(head, went, came);
    } else if (leaves_head) {
        Apply(head + 1, went, came, false);
    } else if (from_start == to_end) {
        Apply(head, went + 1, came + 1);
    } else if (from_start) {
        Apply(head, went, came);
        Apply(head + came, 1, 1);
    } else {
        Apply(head + 1, went, came, false);
        Apply(head, 1, 1);
    }
}

}  // namespace zorvane
