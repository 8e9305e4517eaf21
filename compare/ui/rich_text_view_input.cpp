// Keys, input methods and clipboard of a rich-text view.
#include <algorithm>

#include <QClipboard>
#include <QGuiApplication>
#include <QInputMethod>
#include <QKeyEvent>
#include <QMimeData>

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

bool Matches(QKeyEvent* event, Qt::KeyboardModifiers modifiers, int key) {
    return event->key() == key &&
           (event->modifiers() & ~(Qt::ShiftModifier | Qt::KeypadModifier)) == modifiers;
}

std::optional<CaretMove> MoveOf(QKeyEvent* event) {
    if (Matches(event, Qt::ControlModifier, Qt::Key_Up))
        return CaretMove::ParagraphUp;
    if (Matches(event, Qt::ControlModifier, Qt::Key_Down))
        return CaretMove::ParagraphDown;
    for (const MoveKey& key : kMoveKeys) {
        if (event->matches(key.move) || event->matches(key.select))
            return key.way;
    }
    return std::nullopt;
}

}  // namespace

// ---- keys ----

void RichTextView::keyPressEvent(QKeyEvent* event) {
    if (HandleMove(event) || HandleClipboardKey(event) || HandleEditKey(event)) {
        event->accept();
        return;
    }
    const QString text = event->text();
    // Both together are how some keyboards type their third letters.
    const Qt::KeyboardModifiers held =
        event->modifiers() & (Qt::ControlModifier | Qt::MetaModifier | Qt::AltModifier);
    const bool command = held != Qt::NoModifier && held != (Qt::ControlModifier | Qt::AltModifier);
    if (read_only_ || command || text.isEmpty() || !(text.at(0).isPrint() || text == u"\t")) {
        event->ignore();
        return;
    }
    TypeText(text);
    event->accept();
}

bool RichTextView::HandleMove(QKeyEvent* event) {
    const std::optional<CaretMove> way = MoveOf(event);
    if (!way)
        return false;
    CommitComposing();
    const bool select = (event->modifiers() & Qt::ShiftModifier) != 0;
    const TextRange range = document_.Selection();
    const bool sideways = *way == CaretMove::Left || *way == CaretMove::Right;
    if (!select && sideways && range.length > 0) {
        // A step without Shift goes to the selection's edge.
        const bool to_end =
            (*way == CaretMove::Right) != page_.PlaceOf(range.first).layout->RightToLeft();
        document_.MoveCaret(to_end ? std::min(range.end(), CharPos{document_.Length()})
                                   : range.first);
    } else {
        MoveCaret(*way, select);
    }
    EnsureCaretVisible();
    return true;
}

void RichTextView::MoveCaret(CaretMove way, bool select) {
    const PageTop top = page_.Top();
    const CaretMover::Target target = mover_.Go(way, document_.Caret());
    if (select)
        document_.ExtendSelection(target.place);
    else
        document_.MoveCaret(target.place);
    if (target.wanted_x)
        document_.SetWantedX(*target.wanted_x);
    if (!(page_.Top() == top))
        MovedBy(0);
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
    if (read_only)
        CommitComposing();
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

}  // namespace zorvane
