// The strip between two views: which rows belong to a difference, and buttons that copy one over.
#pragma once

#include <functional>

#include <QAbstractButton>
#include <QWidget>

#include "compare/ui/rich_text_view.h"

namespace zorvane {

inline constexpr int kStripWidth = 28;

/// A button of the strip; painted by itself, told to screen readers by its name.
class CopyButton : public QAbstractButton {
  public:
    CopyButton(Side from, QWidget* parent);
    void SetColors(const ViewColors& colors);
    QSize sizeHint() const override { return {24, 24}; }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    Side from_;
    ViewColors colors_ = ViewColors::Light();
};

/// Reads the rows of the left view, which are those of both as long as they are aligned.
class ConnectorStrip : public QWidget {
  public:
    explicit ConnectorStrip(RichTextView& view, QWidget* parent = nullptr);

    void SetColors(const ViewColors& colors);
    void SetCurrentRecord(std::int32_t record);
    void SetAligned(bool aligned);
    /// The views scrolled or were laid out anew.
    void RowsMoved();

    std::function<void(std::int32_t record, Side from)> copy_over;
    std::function<void(std::int32_t record)> clicked;
    std::function<QString(std::int32_t record, Side from)> button_name;
    std::function<bool(Side to)> may_copy_to;

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    void PlaceButtons();
    /// The rows of a record that are in sight, in the strip's coordinates.
    QRectF ExtentOf(std::int32_t record);
    std::int32_t RecordAt(double y);

    RichTextView& view_;
    ViewColors colors_ = ViewColors::Light();
    PerSide<CopyButton*> buttons_;
    std::int32_t current_ = -1;
    std::int32_t hovered_ = -1;
    bool aligned_ = true;
};

}  // namespace zorvane
