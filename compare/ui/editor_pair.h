// The two texts that a person edits, in the columns of the result below them; and what is told of
// their files: a line above a text, or a card in its place.
#pragma once

#include <functional>

#include <QWidget>

#include "common/base/side.h"
#include "common/ui/cards.h"
#include "compare/ui/card_ground.h"
#include "compare/ui/rich_text_view.h"
#include "compare/ui/view_colors.h"

namespace zorvane {

class EditorPair : public QWidget {
  public:
    /// The documents are borrowed and outlive this.
    EditorPair(RichDocument& original, RichDocument& modified, QWidget* parent);

    RichTextView& View(Side side) { return *views_[side]; }
    MessageBar& Line(Side side) { return *lines_[side]; }
    CardGround& Ground(Side side) { return *grounds_[side]; }
    void SetColors(const ViewColors& colors);
    /// The share of the original side.
    void SetRatio(double ratio);

    /// Puts what both sides have selected at one height, whole where there is room for it. Stays
    /// where it is as far as that can be.
    void LevelSelections();

    /// The person drags the strip between the sides.
    std::function<void(double ratio)> ratio_wanted;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void Arrange();

    PerSide<RichTextView*> views_;
    PerSide<MessageBar*> lines_;
    PerSide<CardGround*> grounds_;
    double ratio_ = 0.5;
};

}  // namespace zorvane
