#include "compare/ui/editor_pair.h"

#include <algorithm>

#include <QEvent>
#include <QLayout>
#include <QMouseEvent>
#include <QPainter>

#include "common/ui/look_style.h"
#include "compare/ui/pane_columns.h"

namespace zorvane {

EditorPair::EditorPair(RichDocument& original, RichDocument& modified, QWidget* parent)
    : QWidget(parent),
      views_{new RichTextView(original, this), new RichTextView(modified, this)},
      lines_{new MessageBar(this), new MessageBar(this)},
      grounds_{new CardGround(this), new CardGround(this)} {
    setCursor(Qt::SplitHCursor);  // of the strip; the texts bring their own
    for (const Side side : kBothSides) {
        lines_[side]->setCursor(Qt::ArrowCursor);
        grounds_[side]->setCursor(Qt::ArrowCursor);
        lines_[side]->installEventFilter(this);
    }
}

void EditorPair::SetColors(const ViewColors& colors) {
    for (const Side side : kBothSides)
        views_[side]->SetColors(colors);
}

void EditorPair::SetRatio(double ratio) {
    ratio_ = ratio;
    Arrange();
    update();
}

void EditorPair::Arrange() {
    const PaneColumns columns = PaneColumns::Of(width(), ratio_);
    // The bar of the modified side takes the room that the overview has below.
    const PerSide<QRect> halves{
        QRect(0, 0, columns.left_end, height()),
        QRect(columns.right_begin, 0, width() - columns.right_begin, height())};
    for (const Side side : kBothSides) {
        QRect half = halves[side];
        if (!lines_[side]->isHidden()) {
            const QLayout* layout = lines_[side]->layout();
            const int wanted = layout->hasHeightForWidth()
                                   ? layout->totalHeightForWidth(half.width())
                                   : lines_[side]->sizeHint().height();
            const int tall = std::min(half.height(), wanted);
            lines_[side]->setGeometry(half.left(), 0, half.width(), tall);
            half.setTop(tall);
        }
        views_[side]->setGeometry(half);
        grounds_[side]->setGeometry(half);
    }
}

void EditorPair::LevelSelections() {
    PerSide<std::int32_t> rows;
    double tallest = 0;
    for (const Side side : kBothSides) {
        ViewPage& page = views_[side]->Page();
        const TextRange selected = views_[side]->Document().Selection();
        const auto row_of = [&page](CharPos at) {
            return page.Rows().RowOfBlock(page.Index().OfChar(at).number);
        };
        rows[side] = row_of(selected.first);
        const std::int32_t end = row_of(std::max(selected.first, selected.end() - 1));
        double height = 0;
        for (std::int32_t row = rows[side]; row <= end && height < page.WindowHeight(); ++row)
            height += page.RowHeight(row);
        tallest = std::max(tallest, height);
    }
    ViewPage& original = views_.original->Page();
    ViewPage& modified = views_.modified->Page();
    const double height = std::max(1.0, original.WindowHeight());
    const double y = original.RowY(rows.original);
    if (y < 0 || y + tallest > height)
        views_.original->PutRow(rows.original,
                                std::clamp(1 - tallest / height, 0.0, ViewPage::kUpperThird));
    views_.modified->PutRow(rows.modified, original.RowY(rows.original) / height);
    // Near its text's begin or end a row stands where it can.
    if (modified.RowY(rows.modified) != original.RowY(rows.original))
        views_.original->PutRow(rows.original, modified.RowY(rows.modified) / height);
}

void EditorPair::resizeEvent(QResizeEvent*) {
    Arrange();
}

bool EditorPair::eventFilter(QObject* watched, QEvent* event) {
    const bool line = watched == lines_.original || watched == lines_.modified;
    if (line && (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent ||
                 event->type() == QEvent::LayoutRequest))
        Arrange();
    return QWidget::eventFilter(watched, event);
}

void EditorPair::mousePressEvent(QMouseEvent* event) {
    event->setAccepted(event->button() == Qt::LeftButton);
}

void EditorPair::mouseMoveEvent(QMouseEvent* event) {
    if (ratio_wanted && (event->buttons() & Qt::LeftButton) != 0)
        ratio_wanted(PaneColumns::RatioAt(width(), static_cast<int>(event->position().x())));
}

void EditorPair::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const PaneColumns columns = PaneColumns::Of(width(), ratio_);
    const QRect strip(columns.left_end, 0, columns.right_begin - columns.left_end, height());
    painter.fillRect(strip, Tokens()[Token::Surface]);
    painter.setPen(Tokens()[Token::Hairline]);
    painter.drawLine(strip.topLeft(), strip.bottomLeft());
    painter.drawLine(strip.topRight(), strip.bottomRight());
}

}  // namespace zorvane
