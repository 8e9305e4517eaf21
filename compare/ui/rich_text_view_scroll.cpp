// How a rich-text view scrolls: its bars, its moved pixels, and the link to other editors.
#include <algorithm>
#include <cmath>

#include <QScrollBar>

#include "compare/ui/rich_text_view.h"

namespace zorvane {
namespace {

constexpr double kMostBarUnits = 1e9;  // a bar counts in int
constexpr int kLineStep = 20;

ScrollCode CodeOf(int action) {
    switch (action) {
        case QAbstractSlider::SliderSingleStepSub:
            return ScrollCode::LineBack;
        case QAbstractSlider::SliderSingleStepAdd:
            return ScrollCode::LineForward;
        case QAbstractSlider::SliderPageStepSub:
            return ScrollCode::PageBack;
        case QAbstractSlider::SliderPageStepAdd:
            return ScrollCode::PageForward;
        case QAbstractSlider::SliderToMinimum:
            return ScrollCode::Begin;
        case QAbstractSlider::SliderToMaximum:
            return ScrollCode::End;
        default:
            return ScrollCode::ThumbTrack;
    }
}

}  // namespace

// Who links editors hears of what a person does to a bar before the text moves.
void RichTextView::ConnectBars() {
    const auto tell = [this](QScrollBar* bar, ScrollAxis axis) {
        connect(bar, &QScrollBar::actionTriggered, this, [this, bar, axis](int action) {
            if (!events_.bar_used)
                return;
            const ScrollCode code = CodeOf(action);
            const bool thumb = code == ScrollCode::ThumbTrack;
            events_.bar_used({axis, code, thumb ? bar->sliderPosition() : 0});
        });
    };
    tell(verticalScrollBar(), ScrollAxis::Vertical);
    tell(horizontalScrollBar(), ScrollAxis::Horizontal);
}

void RichTextView::UpdateBars() {
    if (updating_bars_)
        return;
    updating_bars_ = true;
    const double page = viewport()->height();
    const double total = std::max(page_.Height(), page);
    bar_scale_ = std::max(1.0, total / kMostBarUnits);
    QScrollBar* bar = verticalScrollBar();
    bar->setRange(0, static_cast<int>(std::ceil((total - page) / bar_scale_)));
    bar->setPageStep(std::max(1, static_cast<int>(page / bar_scale_)));
    bar->setSingleStep(std::max(1, static_cast<int>(kLineStep / bar_scale_)));
    bar->setValue(static_cast<int>(std::round(page_.Y() / bar_scale_)));
    const double beyond = style_.wrap ? 0 : page_.Widest() + 8 - columns_.text_width;
    horizontalScrollBar()->setRange(0, std::max(0, static_cast<int>(std::ceil(beyond))));
    horizontalScrollBar()->setPageStep(static_cast<int>(columns_.text_width));
    horizontalScrollBar()->setSingleStep(kLineStep);
    horizontalScrollBar()->setValue(static_cast<int>(scrolled_x_));
    updating_bars_ = false;
}

// The base class calls this for each change of a bar, our own included.
void RichTextView::scrollContentsBy(int dx, int dy) {
    if (updating_bars_)
        return;
    if (dx != 0) {
        scrolled_x_ = horizontalScrollBar()->value();
        viewport()->update();
        if (events_.scrolled_sideways)
            events_.scrolled_sideways();
    }
    if (dy == 0)
        return;
    const QScrollBar* bar = verticalScrollBar();
    if (bar->value() == bar->minimum()) {
        page_.SetTop({0, 0});
        MovedBy(0);
    } else if (bar->value() == bar->maximum()) {
        page_.SetTop({page_.Rows().Count() - 1, page_.WindowHeight()});
        MovedBy(0);
    } else {
        ScrollByPixels(std::round(bar->value() * bar_scale_ - page_.Y()));
    }
}

void RichTextView::ScrollByPixels(double distance) {
    const double two_windows = 2 * page_.WindowHeight();
    const double moved = page_.ScrollBy(distance);
    if (moved != 0)
        MovedBy(std::abs(distance) > two_windows ? 0 : moved);
}

void RichTextView::MovedBy(double moved) {
    BlitOrUpdate(moved);
    UpdateBars();
    if (events_.top_moved)
        events_.top_moved(moved);
}

void RichTextView::FollowTop(const PageTop& top, double moved) {
    page_.SetTop(top);
    BlitOrUpdate(moved);
    UpdateBars();
}

// What is painted already moves; only the stripe that comes into sight is painted.
void RichTextView::BlitOrUpdate(double moved) {
    hatch_phase_ += moved;
    const int pixels = static_cast<int>(std::round(moved));
    bool sticky = moved != pixels || pixels == 0 || std::abs(pixels) >= viewport()->height();
    if (!sticky) {
        // A label that stays in sight does not move along.
        const std::int32_t top = page_.Top().row;
        for (const std::int32_t row : {top, RowAt(std::abs(pixels))})
            sticky = sticky || page_.Rows().At(row).IsRoom();
    }
    if (sticky)
        viewport()->update();
    else
        viewport()->scroll(0, -pixels);
}

std::int32_t RichTextView::RowAt(double y) {
    double bottom = -page_.Top().offset;
    std::int32_t row = page_.Top().row;
    while (row < page_.Rows().Count()) {
        bottom += page_.RowHeight(row);
        if (y < bottom)
            return row;
        ++row;
    }
    return std::max(0, row - 1);
}

void RichTextView::SetScrolledX(double x) {
    horizontalScrollBar()->setValue(static_cast<int>(x));
}

// ---- of the link between editors ----

std::int32_t RichTextView::FirstVisibleLine() const {
    return document_.LineOfChar(page_.Index().At(page_.TopBlock()).first);
}

std::int32_t RichTextView::Position(ScrollAxis axis) const {
    return axis == ScrollAxis::Vertical ? verticalScrollBar()->value()
                                        : horizontalScrollBar()->value();
}

void RichTextView::Scroll(const ScrollMessage& message) {
    QScrollBar* bar =
        message.axis == ScrollAxis::Vertical ? verticalScrollBar() : horizontalScrollBar();
    switch (message.code) {
        case ScrollCode::LineBack:
            bar->triggerAction(QAbstractSlider::SliderSingleStepSub);
            break;
        case ScrollCode::LineForward:
            bar->triggerAction(QAbstractSlider::SliderSingleStepAdd);
            break;
        case ScrollCode::PageBack:
            bar->triggerAction(QAbstractSlider::SliderPageStepSub);
            break;
        case ScrollCode::PageForward:
            bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
            break;
        case ScrollCode::ThumbPosition:
        case ScrollCode::ThumbTrack:
            bar->setValue(message.thumb);
            break;
        case ScrollCode::Begin:
            bar->setValue(bar->minimum());
            break;
        case ScrollCode::End:
            bar->setValue(bar->maximum());
            break;
        case ScrollCode::EndScroll:
            break;
    }
}

TopPlace RichTextView::Top() const {
    const Block block = page_.Index().At(page_.TopBlock());
    const double height = std::max(1.0F, block.height);
    return {block.paragraph, std::clamp(page_.Top().offset / height, 0.0, 1.0)};
}

void RichTextView::SetTop(const TopPlace& place) {
    const Block block = page_.Index().OfParagraph(place.paragraph);
    const std::int32_t row = page_.Rows().RowOfBlock(block.number);
    page_.SetTop({row, std::round(place.part * page_.RowHeight(row))});
    MovedBy(0);
}

}  // namespace zorvane
