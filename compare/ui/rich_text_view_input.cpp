// Keys, mouse, input methods, clipboard and drag of a rich-text view.
#include <algorithm>

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QDateTime>
#include <QDrag>
#include <QInputMethod>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyleHints>

#include "common/ui/qt_text.h"
#include "compare/ui/clipboard_formats.h"
#include "compare/ui/rich_text_view.h"

namespace zorvane {
namespace {

struct MoveKey {
    QKeySequence::StandardKey move;
    QKeySequence::StandardKey select;
    CaretMove way;
};
constexpr MoveKey kMoveKeys[] = {
    {QKeySequence::MoveToNextChar, QKeySequence::SelectNextChar, CaretMove::Right},
    {QKeySequence::MoveToPreviousChar, QKeySequence::SelectPreviousChar, CaretMove::Left},
    {QKeySequence::MoveToNextWord, QKeySequence::SelectNextWord, CaretMove::WordRight},
    {QKeySequence::MoveToPreviousWord, QKeySequence::SelectPreviousWord, CaretMove::WordLeft},
    {QKeySequence::MoveToNextLine, QKeySequence::SelectNextLine, CaretMove::LineDown},
    {QKeySequence::MoveToPreviousLine, QKeySequence::SelectPreviousLine, CaretMove::LineUp},
    {QKeySequence::MoveToNextPage, QKeySequence::SelectNextPage, CaretMove::PageDown},
    {QKeySequence::MoveToPreviousPage, QKeySequence::SelectPreviousPage, CaretMove::PageUp},
    {QKeySequence::MoveToStartOfLine, QKeySequence::SelectStartOfLine, CaretMove::LineStart},
    {QKeySequence::MoveToEndOfLine, QKeySequence::SelectEndOfLine, CaretMove::LineEnd},
    {QKeySequence::MoveToStartOfDocument, QKeySequence::SelectStartOfDocument,
     CaretMove::TextStart},
    {QKeySequence::MoveToEndOfDocument, QKeySequence::SelectEndOfDocument, CaretMove::TextEnd},
};

constexpr double kMostAutoScroll = 80;

bool Matches(QKeyEvent* event, Qt::KeyboardModifiers modifiers, int key) {
    return event->key() == key &&
           (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == modifiers;
}

}  // namespace

// ---- keys ----

void RichTextView::keyPressEvent(QKeyEvent* event) {
    if (HandleMove(event) || HandleClipboardKey(event) || HandleEditKey(event)) {
        event->accept();
        return;
    }
    const QString text = event->text();
    const bool command = (event->modifiers() & (Qt::ControlModifier | Qt::MetaModifier)) != 0 &&
                         (event->modifiers() & Qt::AltModifier) == 0;
    if (read_only_ || command || text.isEmpty() || !(text.at(0).isPrint() || text == u"\t")) {
        event->ignore();
        return;
    }
    TypeText(text);
    event->accept();
}

bool RichTextView::HandleMove(QKeyEvent* event) {
    std::optional<CaretMove> way;
    bool select = (event->modifiers() & Qt::ShiftModifier) != 0;
    for (const MoveKey& key : kMoveKeys) {
        if (event->matches(key.move) || event->matches(key.select)) {
            way = key.way;
            break;
        }
    }
    if (Matches(event, Qt::ControlModifier, Qt::Key_Up))
        way = CaretMove::ParagraphUp;
    if (Matches(event, Qt::ControlModifier, Qt::Key_Down))
        way = CaretMove::ParagraphDown;
    if (!way)
        return false;
    CommitComposing();
    const TextRange range = document_.Selection();
    const bool sideways = *way == CaretMove::Left || *way == CaretMove::Right;
    if (!select && sideways && range.length > 0) {
        // A step without Shift goes to the selection's edge.
        const bool to_end =
            (*way == CaretMove::Right) != page_.PlaceOf(range.first).layout->RightToLeft();
        document_.MoveCaret(to_end ? std::min(range.end(), CharPos{document_.Length()})
                                   : range.first);
    } else {
        const PageTop top = page_.Top();
        const CaretMover::Target target = mover_.Go(*way, document_.Caret());
        if (select)
            document_.ExtendSelection(target.place);
        else
            document_.MoveCaret(target.place);
        if (target.wanted_x)
            document_.SetWantedX(*target.wanted_x);
        if (!(page_.Top() == top))
            MovedBy(0);
    }
    EnsureCaretVisible();
    return true;
}

bool RichTextView::HandleClipboardKey(QKeyEvent* event) {
    const auto key = [&](QKeySequence::StandardKey standard) { return event->matches(standard); };
    if (key(QKeySequence::Copy)) {
        Copy();
    } else if (key(QKeySequence::SelectAll)) {
        SelectAll();
    } else if (Matches(event, Qt::ControlModifier, Qt::Key_V) &&
               (event->modifiers() & Qt::ShiftModifier) != 0) {
        PastePlain();
    } else if (key(QKeySequence::Cut)) {
        Cut();
    } else if (key(QKeySequence::Paste)) {
        Paste();
    } else {
        return false;
    }
    return true;
}

bool RichTextView::HandleEditKey(QKeyEvent* event) {
    if (read_only_)
        return false;
    const auto key = [&](QKeySequence::StandardKey standard) { return event->matches(standard); };
    if (key(QKeySequence::Undo)) {
        Undo();
    } else if (key(QKeySequence::Redo) || Matches(event, Qt::ControlModifier, Qt::Key_Y)) {
        Redo();
    } else if (key(QKeySequence::DeleteStartOfWord)) {
        document_.DeleteBack(TextUnit::Word);
    } else if (key(QKeySequence::DeleteEndOfWord)) {
        document_.DeleteForward(TextUnit::Word);
    } else if (key(QKeySequence::DeleteEndOfLine)) {
        document_.DeleteForward(TextUnit::Line);
    } else if (key(QKeySequence::Delete)) {
        document_.DeleteForward(TextUnit::Character);
    } else if (event->key() == Qt::Key_Backspace &&
               (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) == 0) {
        document_.DeleteBack(TextUnit::Character);
    } else if (key(QKeySequence::InsertLineSeparator)) {
        document_.Type(u"\v");
    } else if (key(QKeySequence::InsertParagraphSeparator)) {
        document_.Type(u"\r\n");
    } else if (event->key() == Qt::Key_Insert && event->modifiers() == Qt::NoModifier) {
        overwrite_ = !overwrite_;
    } else {
        return false;
    }
    AfterUserEdit();
    return true;
}

void RichTextView::TypeText(const QString& text) {
    if (overwrite_)
        document_.TypeOver(FromQt16(text));
    else
        document_.Type(FromQt16(text));
    AfterUserEdit();
}

void RichTextView::AfterUserEdit() {
    EnsureCaretVisible();
    TellCaret();
}

// In an editor Tab types a tab.
bool RichTextView::focusNextPrevChild(bool next) {
    return read_only_ && QAbstractScrollArea::focusNextPrevChild(next);
}

// ---- editing ----

void RichTextView::SetReadOnly(bool read_only) {
    read_only_ = read_only;
    setAttribute(Qt::WA_InputMethodEnabled, !read_only);
}

void RichTextView::Copy() const {
    const TextRange range = document_.Selection();
    if (range.length > 0)
        QGuiApplication::clipboard()->setMimeData(MimeOf(document_.Rich(range)).release());
}

void RichTextView::Cut() {
    if (read_only_ || document_.Selection().length == 0)
        return;
    Copy();
    document_.ReplaceSelection(std::u16string_view());
    AfterUserEdit();
}

bool RichTextView::CanPaste() const {
    const QMimeData* mime = QGuiApplication::clipboard()->mimeData();
    return !read_only_ && mime != nullptr && HasText(*mime);
}

void RichTextView::PutMime(const QMimeData& mime, bool rich) {
    const std::optional<RichText> formatted = rich ? RichTextOf(mime) : std::nullopt;
    if (formatted)
        document_.ReplaceSelection(*formatted);
    else if (mime.hasText())
        document_.ReplaceSelection(PlainTextOf(mime));
}

void RichTextView::InsertMime(const QMimeData& mime, bool rich) {
    if (read_only_)
        return;
    CommitComposing();
    PutMime(mime, rich);
    AfterUserEdit();
}

void RichTextView::Paste() {
    if (const QMimeData* mime = QGuiApplication::clipboard()->mimeData())
        InsertMime(*mime, true);
}

void RichTextView::PastePlain() {
    if (const QMimeData* mime = QGuiApplication::clipboard()->mimeData())
        InsertMime(*mime, false);
}

void RichTextView::SelectAll() {
    document_.SelectAll();
}

void RichTextView::Undo() {
    CommitComposing();
    document_.Undo();
    AfterUserEdit();
}

void RichTextView::Redo() {
    CommitComposing();
    document_.Redo();
    AfterUserEdit();
}

// ---- input methods ----

void RichTextView::inputMethodEvent(QInputMethodEvent* event) {
    if (read_only_) {
        event->ignore();
        return;
    }
    input_.Handle(*event);
    viewport()->update();
    AfterUserEdit();
    event->accept();
}

QVariant RichTextView::inputMethodQuery(Qt::InputMethodQuery query) const {
    switch (query) {
        case Qt::ImEnabled:
            return !read_only_;
        case Qt::ImHints:
            return static_cast<int>(Qt::ImhMultiLine);
        case Qt::ImFont:
            return QVariant(font());
        case Qt::ImCursorRectangle:
        case Qt::ImAnchorRectangle: {
            // Coordinates of the widget, not of the viewport.
            auto& page = const_cast<ViewPage&>(page_);  // laying out is no change
            const CharPos place = query == Qt::ImCursorRectangle ? document_.Caret().Caret()
                                                                 : document_.Caret().Anchor();
            const QPoint origin = viewport()->pos();
            return page.CaretRect(place).translated(columns_.text_left - scrolled_x_ + origin.x(),
                                                    origin.y());
        }
        default:
            break;
    }
    const QVariant answer = input_.Answer(query);
    return answer.isValid() ? answer : QAbstractScrollArea::inputMethodQuery(query);
}

void RichTextView::CommitComposing() {
    if (!input_.IsComposing())
        return;
    QGuiApplication::inputMethod()->commit();
    input_.Cancel();
    viewport()->update();
}

void RichTextView::focusInEvent(QFocusEvent* event) {
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
    update();
    if (events_.focus_changed)
        events_.focus_changed(true);
}

void RichTextView::focusOutEvent(QFocusEvent* event) {
    CommitComposing();
    QAbstractScrollArea::focusOutEvent(event);
    document_.EndTyping();
    viewport()->update();
    update();
    if (events_.focus_changed)
        events_.focus_changed(false);
}

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

void RichTextView::mousePressEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton) {
        const QClipboard* clipboard = QGuiApplication::clipboard();
        if (!read_only_ && clipboard->supportsSelection()) {
            document_.MoveCaret(PositionAt(event->position()));
            if (const QMimeData* mime = clipboard->mimeData(QClipboard::Selection))
                InsertMime(*mime, true);
        }
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
