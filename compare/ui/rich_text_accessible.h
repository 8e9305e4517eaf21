// A rich-text view as screen readers see it.
#pragma once

#include <cstdint>
#include <map>

#include <QAccessibleWidget>

#include "compare/ui/rich_text_view.h"
#include "compare/ui/view_parts_accessible.h"

namespace zorvane {

/// Words, lines and sentences are looked for in one paragraph: the base class would copy the whole
/// text for each word that is asked for. Offsets are positions of the document.
class RichTextAccessible : public QAccessibleWidget,
                           public QAccessibleTextInterface,
                           public QAccessibleEditableTextInterface {
  public:
    explicit RichTextAccessible(RichTextView& view);
    ~RichTextAccessible() override;
    RichTextAccessible(const RichTextAccessible&) = delete;
    RichTextAccessible& operator=(const RichTextAccessible&) = delete;

    /// Makes the program's views known to screen readers; costs nothing when done again.
    static void Install();
    // Events, sent only if somebody listens.
    static void TellEdit(RichTextView& view, CharPos first, std::int32_t removed,
                         std::int32_t inserted);
    static void TellReset(RichTextView& view);
    static void TellCaret(RichTextView& view);
    /// Units of text that were handed out so far, for tests.
    static std::int64_t UnitsCopied();

    void* interface_cast(QAccessible::InterfaceType type) override;
    QAccessible::State state() const override;

    // Behind the widgets of the view: its folds and differences in sight.
    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;

    // Text.
    void selection(int index, int* start, int* end) const override;
    int selectionCount() const override;
    void addSelection(int start, int end) override;
    void removeSelection(int index) override;
    void setSelection(int index, int start, int end) override;
    int cursorPosition() const override;
    void setCursorPosition(int position) override;
    QString text(int start, int end) const override;
    using QAccessibleWidget::text;
    QString textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                             int* end) const override;
    QString textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                            int* end) const override;
    QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* start,
                         int* end) const override;
    int characterCount() const override;
    QRect characterRect(int offset) const override;
    int offsetAtPoint(const QPoint& point) const override;
    void scrollToSubstring(int start, int end) override;
    QString attributes(int offset, int* start, int* end) const override;

    // Editing.
    void deleteText(int start, int end) override;
    void insertText(int offset, const QString& text) override;
    void replaceText(int start, int end, const QString& text) override;

  private:
    TextRange UnitAt(CharPos place, QAccessible::TextBoundaryType boundary) const;
    TextRange LineAt(CharPos place, const Block& block) const;
    QString Told(TextRange range, int* start, int* end) const;

    QAccessibleInterface* PartOf(ViewPart part) const;

    RichTextView& view_;
    mutable std::map<ViewPart, QAccessible::Id> parts_;  ///< those that were asked for
};

}  // namespace zorvane
