// A rich text on the screen: shown, walked, selected and edited straight in the core's document.
#pragma once

#include <functional>

#include <QAbstractScrollArea>
#include <QTimer>

#include "compare/document/rich_document.h"
#include "compare/ui/caret_mover.h"
#include "compare/ui/input_method_bridge.h"
#include "compare/ui/text_painter.h"
#include "compare/ui/view_page.h"
#include "compare/view/scroll_link.h"

namespace zorvane {

/// What a view tells its window. Each may be empty.
struct RichTextViewEvents {
    /// The text moved by so many pixels (0: jumped); for a partner that follows.
    std::function<void(double moved)> top_moved;
    std::function<void()> scrolled_sideways;
    /// A person does something to a scroll bar, and the text is about to follow.
    std::function<void(const ScrollMessage&)> bar_used;
    /// A mouse button went down in the text.
    std::function<void()> pressed;
    /// 1-based row (paragraph) and column of the caret.
    std::function<void(std::int32_t row, std::int32_t column)> caret_moved;
    std::function<void(std::int32_t row)> fold_opened;
    std::function<void(const RoomRun&)> room_clicked;
    std::function<void(QPoint global, CharPos place)> context_menu;
    std::function<void(bool in)> focus_changed;
    /// The window's height or the laid out heights changed.
    std::function<void()> shown_anew;
    /// Files dropped on the view; text is taken by the view itself.
    std::function<bool(const QMimeData&)> files_dropped;
};

enum class NumberColumns : unsigned char { None, One, Two };

class RichTextView : public QAbstractScrollArea, public DocumentObserver, public ScrollTarget {
    Q_OBJECT

  public:
    /// The document is borrowed and must outlive the view.
    explicit RichTextView(RichDocument& document, QWidget* parent = nullptr);
    ~RichTextView() override;

    RichDocument& Document() const { return document_; }
    ViewPage& Page() { return page_; }
    const RichTextViewEvents& Events() const { return events_; }
    RichTextViewEvents& Events() { return events_; }

    // ---- look ----
    void SetColors(const ViewColors& colors);
    void SetZoom(double zoom);
    double Zoom() const { return style_.zoom; }
    void SetWrap(bool wrap);
    bool Wrap() const { return style_.wrap; }
    void SetNumberColumns(NumberColumns columns);
    /// The longest line, centred in the window; 0: as wide as the window.
    void SetLineLength(double pixels);
    void SetOuterEdges(OuterEdges edges);
    void SetLabels(ViewLabels labels) { labels_ = std::move(labels); }
    const ViewLabels& Labels() const { return labels_; }
    const ViewColumns& Columns() const { return columns_; }

    // ---- marks, rows, hits ----
    /// Borrowed; nullptr for none.
    void SetMarks(const MarkSource* marks);
    void MarksChanged();
    void SetRows(ViewRows* rows);
    /// The rows were made anew; what was at the top stays there.
    void RowsChanged(std::int32_t top_block);
    void SetCurrentRecord(std::int32_t record);
    std::int32_t CurrentRecord() const { return current_record_; }
    /// Marks what it finds in the paragraphs in sight; empty: nothing.
    void SetFinder(FindInText find, TextRange this_hit);

    // ---- editing ----
    /// Whether screen readers hear of selections: not where something better is said of them.
    void SetSelectionsTold(bool told) { selections_told_ = told; }
    void SetReadOnly(bool read_only);
    bool IsReadOnly() const { return read_only_; }
    void Cut();
    void Copy() const;
    void Paste();
    void PastePlain();
    void SelectAll();
    void Undo();
    void Redo();
    bool CanPaste() const;

    // ---- places ----
    void EnsureCaretVisible();
    void ShowRow(std::int32_t row);
    void PutRow(std::int32_t row, double part_of_window);
    void ShowPosition(CharPos position);
    void ScrollByPixels(double distance);
    /// As a partner scrolled: to the same place, having moved by so much.
    void FollowTop(const PageTop& top, double moved);
    /// Of the viewport.
    QRectF CaretRectOf(CharPos position);
    CharPos PositionAt(QPointF viewport_point);
    void SetScrolledX(double x);
    double ScrolledX() const { return scrolled_x_; }
    double HatchPhase() const { return hatch_phase_; }

    // ---- notices of the document ----
    void Replaced(CharPos first, std::int32_t removed, std::int32_t inserted) override;
    void Reformatted(CharPos first, std::int32_t length) override;
    void Reset() override;
    void SelectionChanged() override;

    // ---- of the link between editors ----
    /// Lines as the core counts them: paragraphs and the breaks inside them.
    std::int32_t FirstVisibleLine() const override;
    std::int32_t Position(ScrollAxis axis) const override;
    void Scroll(const ScrollMessage& message) override;
    TopPlace Top() const override;
    void SetTop(const TopPlace& place) override;

    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;
    bool focusNextPrevChild(bool next) override;

  private:
    enum class SelectBy : unsigned char { Character, Word, Paragraph };

    PaintState MakeState() const;
    void LayOutColumns();
    void StyleChanged();
    void ConnectBars();
    void UpdateBars();
    void MovedBy(double moved);
    void BlitOrUpdate(double moved);
    void TellCaret();
    void SelectTo(CharPos place);
    TextRange UnitAt(CharPos place) const;
    void AutoScroll();
    void StartDrag();
    bool ClickOnRow(QPointF point);
    std::int32_t RowAt(double y);
    bool HandleMove(QKeyEvent* event);
    void MoveCaret(CaretMove way, bool select);
    bool HandleEditKey(QKeyEvent* event);
    bool HandleClipboardKey(QKeyEvent* event);
    void TypeText(const QString& text);
    void PutMime(const QMimeData& data, bool rich);
    void InsertMime(const QMimeData& data, bool rich);
    void PutSelectionOfDesktop(QPointF at);
    void CommitComposing();
    void AfterUserEdit();

    RichDocument& document_;
    ViewPage page_;
    InputMethodBridge input_;
    CaretMover mover_;
    TextStyle style_;
    RichTextViewEvents events_;
    ViewLabels labels_;
    ViewColumns columns_;
    NumberColumns number_columns_ = NumberColumns::One;
    OuterEdges edges_ = OuterEdges::None;
    FindInText find_;
    TextRange this_hit_{CharPos{0}, -1};
    double line_length_ = 0;
    double scrolled_x_ = 0;
    double hatch_phase_ = 0;
    double bar_scale_ = 1;  // pixels in a unit of the bar
    std::int32_t current_record_ = -1;
    bool read_only_ = false;
    bool updating_bars_ = false;
    bool overwrite_ = false;
    // The mouse.
    SelectBy select_by_ = SelectBy::Character;
    bool selections_told_ = true;
    TextRange select_from_;
    bool selecting_ = false;
    bool may_drag_ = false;
    QPoint pressed_at_;
    QPoint mouse_at_;
    qint64 double_click_time_ = 0;
    QTimer auto_scroll_;
    QTimer estimate_;  // of a long text, once resizing rests
    CharPos drop_place_{-1};
};

}  // namespace zorvane
