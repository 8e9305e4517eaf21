#include "compare/ui/editor_pair.h"

#include <QPainter>

#include "common/ui/look_style.h"
#include "compare/ui/pane_columns.h"

namespace zorvane {

EditorPair::EditorPair(RichDocument& original, RichDocument& modified, QWidget* parent)
    : QWidget(parent), views_{new RichTextView(original, this), new RichTextView(modified, this)} {}

void EditorPair::SetColors(const ViewColors& colors) {
    for (const Side side : kBothSides)
        views_[side]->SetColors(colors);
}

void EditorPair::resizeEvent(QResizeEvent*) {
    const PaneColumns columns = PaneColumns::Of(width());
    views_.original->setGeometry(0, 0, columns.left_end, height());
    // The bar takes the room that the overview has below.
    views_.modified->setGeometry(columns.right_begin, 0, width() - columns.right_begin, height());
}

void EditorPair::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const PaneColumns columns = PaneColumns::Of(width());
    const QRect strip(columns.left_end, 0, columns.right_begin - columns.left_end, height());
    painter.fillRect(strip, Tokens()[Token::Surface]);
    painter.setPen(Tokens()[Token::Hairline]);
    painter.drawLine(strip.topLeft(), strip.bottomLeft());
    painter.drawLine(strip.topRight(), strip.bottomRight());
}

}  // namespace zorvane
