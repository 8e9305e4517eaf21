// Mouse, drag and drop of a rich-text view.
#include <algorithm>

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDateTime>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QStyleHints>

#include "compare/ui/clipboard_formats.h"
#include "compare/ui/rich_text_view.h"

namespace zorvane {
namespace {

constexpr double kMostAutoScroll = 80;  // pixels in a step

}  // namespace

// ---- mouse ----

TextRange RichTextView::UnitAt(CharPos place) const {
    switch (select_by_) {
        case SelectBy::Word:
            return mover_.WordAt(place);
        case SelectBy::Paragraph:
            return mover_.ParagraphAt(place);
        case SelectBy::Character:
            break;
    }
    return {place, 0};
}

bool RichTextView::ClickOnRow(QPointF point) {
    const std::int32_t row = RowAt(point.y());
    const ViewRow what = page_.Rows().At(row);
    if (what.folded > 0 && events_.fold_opened) {
        events_.fold_opened(row);
        return true;
    }
    if (what.IsRoom() && events_.room_clicked) {
        events_.room_clicked(page_.Rows().RunAt(row));
        return true;
    }
    return false;
}

// What was selected somewhere is put where the middle button goes down.
void RichTextView::PutSelectionOfDesktop(QPointF at) {
    const QClipboard* clipboard = QGuiApplication::clipboard();
    if (read_only_ || !clipboard->supportsSelection())
        return;
    document_.MoveCaret(PositionAt(at));
    if (const QMimeData* mime = clipboard->mimeData(QClipboard::Selection))
        InsertMime(*mime, true);
}

void RichTextView::mousePressEvent(QMouseEvent* event) {
    if (events_.pressed)
        events_.pressed();
    if (event->button() == Qt::MiddleButton) {
        PutSelectionOfDesktop(event->position());
        return;
    }
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    CommitComposing();
    if (ClickOnRow(event->position()))
        return;
    pressed_at_ = event->pos();
    mouse_at_ = event->pos();
    const CharPos place = PositionAt(event->position());
    const TextRange selected = document_.Selection();
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    if (now - double_click_time_ < QGuiApplication::styleHints()->mouseDoubleClickInterval()) {
        select_by_ = SelectBy::Paragraph;
        double_click_time_ = 0;
    } else {
        select_by_ = SelectBy::Character;
        may_drag_ = selected.length > 0 && place >= selected.first && place < selected.end() &&
                    (event->modifiers() & Qt::ShiftModifier) == 0;
        if (may_drag_)
            return;
    }
    selecting_ = true;
    select_from_ = (event->modifiers() & Qt::ShiftModifier) != 0
                       ? TextRange{document_.Caret().Anchor(), 0}
                       : UnitAt(place);
    SelectTo(place);
}

void RichTextView::mouseDoubleClickEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton)
        return;
    may_drag_ = false;
    selecting_ = true;
    select_by_ = SelectBy::Word;
    double_click_time_ = QDateTime::currentMSecsSinceEpoch();
    const CharPos place = PositionAt(event->position());
    select_from_ = UnitAt(place);
    SelectTo(place);
}

// From the unit where the mouse went down to the one where it is, with the caret at the latter.
void RichTextView::SelectTo(CharPos place) {
    const TextRange to = UnitAt(place);
    const bool back = to.first < select_from_.first;
    document_.MoveCaret(back ? select_from_.end() : select_from_.first);
    document_.ExtendSelection(back ? to.first : std::max(to.end(), select_from_.end()));
    TellCaret();
}

void RichTextView::mouseMoveEvent(QMouseEvent* event) {
    mouse_at_ = event->pos();
    if ((event->buttons() & Qt::LeftButton) == 0) {
        const double x = event->position().x();
        const bool on_row = page_.Rows().At(RowAt(event->position().y())).block_count == 0;
        viewport()->setCursor(x < columns_.text_left || on_row ? Qt::ArrowCursor : Qt::IBeamCursor);
        return;
    }
    if (may_drag_) {
        const int way = (event->pos() - pressed_at_).manhattanLength();
        if (way >= QApplication::startDragDistance())
            StartDrag();
        return;
    }
    if (!selecting_)
        return;
    SelectTo(PositionAt(event->position()));
    const bool outside = mouse_at_.y() < 0 || mouse_at_.y() >= viewport()->height();
    if (outside && !auto_scroll_.isActive())
        auto_scroll_.start();
    if (!outside)
        auto_scroll_.stop();
}

// The farther outside, the faster.
void RichTextView::AutoScroll() {
    const int height = viewport()->height();
    const int beyond = mouse_at_.y() < 0 ? mouse_at_.y() : mouse_at_.y() - height;
    ScrollByPixels(std::clamp<double>(beyond, -kMostAutoScroll, kMostAutoScroll));
    SelectTo(PositionAt(QPointF(mouse_at_.x(), std::clamp(mouse_at_.y(), 0, height - 1))));
}

void RichTextView::mouseReleaseEvent(QMouseEvent* event) {
    auto_scroll_.stop();
    if (event->button() != Qt::LeftButton)
        return;
    if (may_drag_)
        document_.MoveCaret(PositionAt(event->position()));
    may_drag_ = false;
    selecting_ = false;
    QClipboard* clipboard = QGuiApplication::clipboard();
    if (clipboard->supportsSelection() && document_.Selection().length > 0)
        clipboard->setMimeData(MimeOf(document_.Rich(document_.Selection())).release(),
                               QClipboard::Selection);
}

void RichTextView::contextMenuEvent(QContextMenuEvent* event) {
    CharPos place = document_.Caret().Caret();
    QPoint global = event->globalPos();
    if (event->reason() == QContextMenuEvent::Mouse) {
        place = PositionAt(event->pos());
        const TextRange selected = document_.Selection();
        if (place < selected.first || place >= selected.end())
            document_.MoveCaret(place);
    } else {
        global = viewport()->mapToGlobal(CaretRectOf(place).bottomLeft().toPoint());
    }
    if (events_.context_menu)
        events_.context_menu(global, place);
}

// ---- drag and drop ----

void RichTextView::StartDrag() {
    may_drag_ = false;
    const TextRange range = document_.Selection();
    auto* drag = new QDrag(this);  // owned by Qt from `exec` on
    drag->setMimeData(MimeOf(document_.Rich(range)).release());
    const Qt::DropAction action =
        drag->exec(read_only_ ? Qt::CopyAction : Qt::CopyAction | Qt::MoveAction);
    // A drop on this view moved the text itself.
    if (action == Qt::MoveAction && drag->target() != viewport() && drag->target() != this)
        document_.Replace(range, std::u16string_view());
}

void RichTextView::dragEnterEvent(QDragEnterEvent* event) {
    const bool files = event->mimeData()->hasUrls() && events_.files_dropped;
    if (files || (!read_only_ && HasText(*event->mimeData())))
        event->acceptProposedAction();
}

void RichTextView::dragMoveEvent(QDragMoveEvent* event) {
    if (event->mimeData()->hasUrls() && events_.files_dropped) {
        event->acceptProposedAction();
        return;
    }
    if (read_only_) {
        event->ignore();
        return;
    }
    drop_place_ = PositionAt(event->position());
    viewport()->update();
    event->acceptProposedAction();
}

void RichTextView::dragLeaveEvent(QDragLeaveEvent* /*event*/) {
    drop_place_ = CharPos{-1};
    viewport()->update();
}

void RichTextView::dropEvent(QDropEvent* event) {
    drop_place_ = CharPos{-1};
    viewport()->update();
    const QMimeData& mime = *event->mimeData();
    if (mime.hasUrls() && events_.files_dropped && events_.files_dropped(mime)) {
        event->acceptProposedAction();
        return;
    }
    if (read_only_ || !HasText(mime))
        return;
    CharPos place = PositionAt(event->position());
    const TextRange moved = document_.Selection();
    const bool own = event->source() == this && event->dropAction() == Qt::MoveAction;
    if (own && place >= moved.first && place <= moved.end())
        return;
    CommitComposing();
    {
        // Both halves of a move are one step to undo. Nothing is laid out before the batch's end,
        // since the view hears of it then.
        const EditBatch batch(document_);
        if (own) {
            document_.Replace(moved, std::u16string_view());
            if (place > moved.first)
                place = place - moved.length;
        }
        document_.Select({place, 0});
        PutMime(mime, true);
    }
    AfterUserEdit();
    event->acceptProposedAction();
}

}  // namespace zorvane
