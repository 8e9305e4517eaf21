#include "compare/view/scroll_link.h"

#include <algorithm>
#include <utility>

namespace zorvane {
namespace {

constexpr ShownEditor kLinked[] = {ShownEditor::Original, ShownEditor::Modified,
                                   ShownEditor::OriginalDiffFinal, ShownEditor::ModifiedDiffFinal,
                                   ShownEditor::AllInOneDiff};

bool IsLinked(ShownEditor editor) {
    return std::find(std::begin(kLinked), std::end(kLinked), editor) != std::end(kLinked);
}

// The pairs are 1 and 2, 3 and 4; the fifth stands alone.
bool HasPartner(ShownEditor editor) {
    return editor != ShownEditor::AllInOneDiff;
}
Side SideOf(ShownEditor editor) {
    return static_cast<std::int32_t>(editor) % 2 == 1 ? Side::Original : Side::Modified;
}
std::size_t PairOf(ShownEditor editor) {
    return static_cast<std::size_t>((static_cast<std::int32_t>(editor) - 1) / 2);
}
ShownEditor PartnerOf(ShownEditor editor) {
    const auto number = static_cast<std::int32_t>(editor);
    return static_cast<ShownEditor>(SideOf(editor) == Side::Original ? number + 1 : number - 1);
}

std::int32_t DirectionOf(ScrollCode code) {
    switch (code) {
        case ScrollCode::LineForward:
        case ScrollCode::PageForward:
        case ScrollCode::End:
            return 1;
        case ScrollCode::LineBack:
        case ScrollCode::PageBack:
        case ScrollCode::Begin:
            return -1;
        case ScrollCode::ThumbPosition:
        case ScrollCode::ThumbTrack:
        case ScrollCode::EndScroll:
            break;
    }
    return 0;
}

// Kept: a jump of several lines moves the others by a page, whatever its length.
ScrollCode CodeFor(std::int32_t moved) {
    if (moved == 1)
        return ScrollCode::LineForward;
    if (moved == -1)
        return ScrollCode::LineBack;
    return moved < 0 ? ScrollCode::PageBack : ScrollCode::PageForward;
}

}  // namespace

TopPlace OppositeOf(const ParagraphRows& rows, Side side, const TopPlace& place) {
    const ParagraphRow row = rows.Row(rows.RowOf(side, place.paragraph));
    const ParagraphSpan& own = row.paragraphs[side];
    const ParagraphSpan& other = row.paragraphs[OtherSide(side)];
    const std::int32_t last = rows.Paragraphs(OtherSide(side));
    if (other.count == 0)
        return other.first.value > last ? TopPlace{ParagraphNumber{last}, 1}
                                        : TopPlace{other.first};
    const double share = (place.paragraph - own.first + place.part) / own.count;
    const double there = std::clamp(share, 0.0, 1.0) * other.count;
    const std::int32_t whole = std::min(static_cast<std::int32_t>(there), other.count - 1);
    return {other.first + whole, there - whole};
}

class ScrollLink::Guard {
  public:
    explicit Guard(bool& flag) : flag_(flag), was_(std::exchange(flag, true)) {}
    ~Guard() { flag_ = was_; }
    Guard(const Guard&) = delete;
    Guard& operator=(const Guard&) = delete;

  private:
    bool& flag_;
    bool was_;
};

ScrollLink::Entry* ScrollLink::Find(ShownEditor editor) {
    if (!IsLinked(editor))
        return nullptr;
    Entry& entry = entries_[static_cast<std::size_t>(editor)];
    return entry.target == nullptr ? nullptr : &entry;
}

bool ScrollLink::Linked(const Entry* entry) const {
    return entry != nullptr && !moving_ && !is_busy_() && (TextSynchType_ >= 1 || aligned_);
}

void ScrollLink::Hook(ShownEditor editor, ScrollTarget& target) {
    if (!IsLinked(editor))
        return;
    entries_[static_cast<std::size_t>(editor)] = {.target = &target};
    TakeBase(editor);
}

void ScrollLink::Unhook(ShownEditor editor) {
    if (IsLinked(editor))
        entries_[static_cast<std::size_t>(editor)] = {};
}

void ScrollLink::SetSynchType(std::int32_t type) {
    TextSynchType_ = type;
    TakeBase();
}

void ScrollLink::SetRows(const ParagraphRows* editors, const ParagraphRows* results) {
    rows_ = {editors, results};
}

const ParagraphRows* ScrollLink::RowsOf(ShownEditor editor) const {
    if (!aligned_ || !HasPartner(editor))
        return nullptr;
    const ParagraphRows* rows = rows_[PairOf(editor)];
    return rows == nullptr || rows->Rows() == 0 ? nullptr : rows;
}

void ScrollLink::TakeBase(ShownEditor editor) {
    Entry* entry = Find(editor);
    if (entry == nullptr)
        return;
    entry->first_line = entry->target->FirstVisibleLine();
    entry->horizontal = entry->target->Position(ScrollAxis::Horizontal);
    entry->forwarded = 0;
}

void ScrollLink::TakeBase() {
    for (const ShownEditor editor : kLinked)
        TakeBase(editor);
}

// Every other editor makes the step; of a pair that is kept aligned one makes it, the one on the
// side of `editor`, and the other goes where its rows are.
template <class Step>
void ScrollLink::ForOthers(ShownEditor editor, bool vertical, const Step& step) {
    const Guard guard(moving_);
    for (const ShownEditor other : kLinked) {
        Entry* entry = Find(other);
        if (entry == nullptr)
            continue;
        const bool aligned = vertical && RowsOf(other) != nullptr;
        const bool follows = aligned && HasPartner(editor) && Find(PartnerOf(other)) != nullptr &&
                             (PairOf(other) == PairOf(editor) || SideOf(other) != SideOf(editor));
        const bool second = aligned && !HasPartner(editor) && Find(PartnerOf(other)) != nullptr &&
                            SideOf(other) == Side::Modified;
        if (other != editor && !follows && !second) {
            step(*entry);
            if (aligned)
                AlignPartner(other);
        }
    }
}

void ScrollLink::Forward(const ScrollMessage& message, ShownEditor editor, std::int32_t delta) {
    const bool vertical = message.axis == ScrollAxis::Vertical;
    if (!(vertical ? LocksVertical() : LocksHorizontal()))
        return;
    ForOthers(editor, vertical, [&](Entry& other) {
        if (message.thumb < 1) {
            other.target->Scroll(message);
            return;
        }
        const std::int32_t place = other.target->Position(message.axis) + delta;
        if (place >= 1)
            other.target->Scroll({message.axis, ScrollCode::ThumbPosition, place});
    });
}

void ScrollLink::HandleLinkedEditorMessage(const ScrollMessage& message, ShownEditor editor) {
    Entry* own = Find(editor);
    if (!Linked(own))
        return;
    const std::int32_t direction = DirectionOf(message.code);
    if (direction == 0) {
        Track(message, editor, *own);
        return;
    }
    TakeBase();
    Forward(message, editor, message.thumb - own->target->Position(message.axis));
    if (message.axis == ScrollAxis::Vertical)
        own->forwarded = direction;
}

// A thumb's way is not repeated as it goes, but once, when it is let go.
void ScrollLink::Track(const ScrollMessage& message, ShownEditor editor, Entry& own) {
    bool& dragged = own.dragged[static_cast<std::size_t>(message.axis)];
    if (message.code == ScrollCode::ThumbTrack) {
        dragged = true;
        return;
    }
    if (message.code != ScrollCode::EndScroll || !std::exchange(dragged, false))
        return;
    if (message.axis == ScrollAxis::Vertical)
        OnLinkedEditorScrolled(editor);
    else
        EndHorizontalDrag(editor);
}

void ScrollLink::EndHorizontalDrag(ShownEditor editor) {
    const Entry& own = *Find(editor);
    const std::int32_t moved = own.target->Position(ScrollAxis::Horizontal) - own.horizontal;
    if (moved != 0 && LocksHorizontal())
        ForOthers(editor, false, [&](Entry& other) {
            const std::int32_t place = other.target->Position(ScrollAxis::Horizontal) + moved;
            other.target->Scroll(
                {ScrollAxis::Horizontal, ScrollCode::ThumbPosition, std::max(0, place)});
        });
    TakeBase();
}

void ScrollLink::OnLinkedEditorScrolled(ShownEditor editor) {
    Entry* own = Find(editor);
    if (!Linked(own))
        return;
    AlignPartner(editor);
    if (TextSynchType_ < 1 || own->dragged[static_cast<std::size_t>(ScrollAxis::Vertical)])
        return;
    const std::int32_t moved = own->target->FirstVisibleLine() - own->first_line;
    if (moved == 0)
        return;
    const bool told = moved > 0 ? own->forwarded > 0 : own->forwarded < 0;
    if (!told && LocksVertical())
        ForOthers(editor, true, [&](Entry& other) {
            other.target->Scroll({ScrollAxis::Vertical, CodeFor(moved), 0});
        });
    for (const ShownEditor each : kLinked) {
        if (Entry* entry = Find(each)) {
            entry->first_line = entry->target->FirstVisibleLine();
            entry->forwarded = 0;
        }
    }
}

void ScrollLink::AlignPartner(ShownEditor editor) {
    const ParagraphRows* rows = RowsOf(editor);
    const Entry* own = Find(editor);
    Entry* partner = rows == nullptr ? nullptr : Find(PartnerOf(editor));
    if (partner == nullptr)
        return;
    const Guard guard(moving_);
    partner->target->SetTop(OppositeOf(*rows, SideOf(editor), own->target->Top()));
    partner->first_line = partner->target->FirstVisibleLine();
}

}  // namespace zorvane
