#include "find/ui/sign_picker.h"

#include <algorithm>
#include <utility>

#include <QKeyEvent>

namespace zorvane {
namespace {

constexpr int kLeastWidth = 240;

}  // namespace

SignPicker::SignPicker(UiText text, QWidget* parent)
    : ListBox(text("Symbols of regular expressions"), static_cast<int>(ExpressionSigns().size()),
              parent),
      text_(std::move(text)) {
    ShowWords();
    setAutoFillBackground(true);
    connect(this, &QListWidget::itemClicked, this,
            [this](const QListWidgetItem* item) { Pick(row(item)); });
    hide();
}

void SignPicker::ShowWords() {
    QStringList rows;
    for (const ExpressionSign& sign : ExpressionSigns())
        rows.append(text_(sign.words));
    SetItems(rows);
}

void SignPicker::OpenBelow(QWidget& box) {
    const QPoint place = box.mapTo(parentWidget(), QPoint(0, box.height()));
    const int most = parentWidget()->width() - place.x();
    setGeometry(place.x(), place.y(), std::min(std::max(box.width(), kLeastWidth), most),
                sizeHint().height());
    setCurrentRow(0);
    show();
    raise();
    setFocus(Qt::PopupFocusReason);
}

void SignPicker::Pick(int row) {
    if (row < 0)
        return;
    hide();
    picked(ExpressionSigns()[static_cast<std::size_t>(row)]);
}

void SignPicker::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
        case Qt::Key_Escape:
            hide();
            closed();
            return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            Pick(currentRow());
            return;
        default:
            ListBox::keyPressEvent(event);
    }
}

void SignPicker::focusOutEvent(QFocusEvent* event) {
    ListBox::focusOutEvent(event);
    hide();
}

}  // namespace zorvane
