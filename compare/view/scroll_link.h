// The link between the editors of a viewer: when the user scrolls one, the others follow.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <utility>

#include "common/base/number.h"
#include "compare/view/paragraph_rows.h"
#include "compare/view/view_state.h"

namespace zorvane {

enum class ScrollAxis : std::uint8_t { Horizontal, Vertical };

/// What a scroll bar tells.
enum class ScrollCode : std::int32_t {
    LineBack = 0,
    LineForward = 1,
    PageBack = 2,
    PageForward = 3,
    ThumbPosition = 4,
    ThumbTrack = 5,
    Begin = 6,
    End = 7,
    EndScroll = 8
};

struct ScrollMessage {
    ScrollAxis axis = ScrollAxis::Vertical;
    ScrollCode code = ScrollCode::LineForward;
    std::int32_t thumb = 0;  ///< the place of the thumb where it is dragged; else 0
    friend bool operator==(const ScrollMessage&, const ScrollMessage&) = default;
};

/// What stands at the upper edge of a view.
struct TopPlace {
    ParagraphNumber paragraph{1};
    double part = 0;  ///< of the paragraph's height that is above the edge, 0 to 1
    friend bool operator==(const TopPlace&, const TopPlace&) = default;
};

/// A view that scrolls. It tells the link of every change of what is in sight, its own doing or
/// not.
class ScrollTarget {
  public:
    virtual ~ScrollTarget() = default;
    virtual std::int32_t FirstVisibleLine() const = 0;
    virtual std::int32_t Position(ScrollAxis axis) const = 0;  ///< in the units of its bars
    virtual void Scroll(const ScrollMessage& message) = 0;
    virtual TopPlace Top() const = 0;
    virtual void SetTop(const TopPlace& place) = 0;
};

/// What of the other side stands opposite a place of one side.
TopPlace OppositeOf(const ParagraphRows& rows, Side side, const TopPlace& place);

/// The five editors that scroll together. Two things are set apart from each other: the mode, by
/// which every other editor repeats a step; and whether the paragraphs of a pair (the two editors,
/// the two results) are kept opposite each other. Where they are, the other one of the pair goes
/// where its rows lie, and a third editor's pair follows by its one side.
class ScrollLink {
  public:
    /// `is_busy`: the programme itself moves the editors, which is nobody's scrolling.
    explicit ScrollLink(std::function<bool()> is_busy) : is_busy_(std::move(is_busy)) {}

    /// As long as the view lives. Editors past the five are none of the link's.
    void Hook(ShownEditor editor, ScrollTarget& target);
    void Unhook(ShownEditor editor);

    /// 0 or below: none; 1: vertical; 2: horizontal; 3: both.
    void SetSynchType(std::int32_t type);
    std::int32_t TextSynchType() const { return TextSynchType_; }
    bool LocksVertical() const { return TextSynchType_ == 1 || TextSynchType_ == 3; }
    bool LocksHorizontal() const { return TextSynchType_ == 2 || TextSynchType_ == 3; }
    void SetAligned(bool on) { aligned_ = on; }
    bool Aligned() const { return aligned_; }
    /// Borrowed; nullptr where a pair has none.
    void SetRows(const ParagraphRows* editors, const ParagraphRows* results);

    /// The user pressed something of an editor's scroll bar, and the editor is about to follow.
    void HandleLinkedEditorMessage(const ScrollMessage& message, ShownEditor editor);
    /// What an editor shows has changed.
    void OnLinkedEditorScrolled(ShownEditor editor);
    /// A mouse button went down in an editor: the next move begins here.
    void OnPointerPressed(ShownEditor editor) { TakeBase(editor); }
    /// What is in sight now is where the next move of any editor begins.
    void TakeBase();

  private:
    static constexpr std::size_t kNumbers = 11;  // by the editors' own numbers, from 1
    struct Entry {
        ScrollTarget* target = nullptr;
        std::int32_t first_line = 0;
        std::int32_t horizontal = 0;
        std::int32_t forwarded = 0;  // a step that the others have made already: its direction
        std::array<bool, 2> dragged{};
    };
    class Guard;

    Entry* Find(ShownEditor editor);
    bool Linked(const Entry* entry) const;
    void TakeBase(ShownEditor editor);
    void Track(const ScrollMessage& message, ShownEditor editor, Entry& own);
    void EndHorizontalDrag(ShownEditor editor);
    template <class Step>
    void ForOthers(ShownEditor editor, bool vertical, const Step& step);
    void Forward(const ScrollMessage& message, ShownEditor editor, std::int32_t delta);
    void AlignPartner(ShownEditor editor);
    const ParagraphRows* RowsOf(ShownEditor editor) const;

    std::function<bool()> is_busy_;
    std::array<Entry, kNumbers> entries_{};
    std::array<const ParagraphRows*, 2> rows_{};
    std::int32_t TextSynchType_ = 0;
    bool aligned_ = true;
    bool moving_ = false;  // the link's own messages come back here
};

}  // namespace zorvane
