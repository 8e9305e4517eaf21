#include "common/ui/combo_boxes.h"

#include <algorithm>

#include <QAbstractItemView>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QScreen>
#include <QStyleOption>

#include "common/ui/icons.h"
#include "common/ui/look_paint.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kWidestList = 720;

}  // namespace

ComboBox::ComboBox(QWidget* parent) : QComboBox(parent) {
    auto* list = new QListView(this);
    list->setUniformItemSizes(true);
    list->setTextElideMode(Qt::ElideRight);
    list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list->setFrameShape(QFrame::NoFrame);
    setView(list);
    setItemDelegate(new RowDelegate(this));
    // Not by its contents: it would walk through all of them.
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(8);
    setMaxVisibleItems(12);
}

// Alt with Up or Down opens the list, whatever else these keys do in the window.
bool ComboBox::event(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = static_cast<const QKeyEvent&>(*event);
        if (key.modifiers().testFlag(Qt::AltModifier) &&
            (key.key() == Qt::Key_Down || key.key() == Qt::Key_Up)) {
            event->accept();
            return true;
        }
    }
    return QComboBox::event(event);
}

void ComboBox::showPopup() {
    QPalette palette = view()->palette();
    palette.setColor(QPalette::Base, Tokens()[Token::Surface]);
    view()->setPalette(palette);
    const int room = screen() != nullptr ? screen()->availableGeometry().width() : kWidestList;
    view()->setMinimumWidth(std::min({std::max(width(), kWidestList), room,
                                      std::max(width(), window()->width() - 2 * kWindowEdge)}));
    QComboBox::showPopup();
}

QString ComboBox::ShownText(const QFontMetrics& metrics, int width) const {
    return metrics.elidedText(currentText(), Qt::ElideRight, width);
}

ListRow ComboBox::ShownRow() const {
    ListRow row;
    row.icon = currentData(RowModel::IconRole).toString();
    if (const QVariant color = currentData(RowModel::ColorRole); color.isValid())
        row.icon_color = static_cast<Token>(color.toInt());
    return row;
}

void ComboBox::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    style()->drawComplexControl(QStyle::CC_ComboBox, &option, &painter, this);
    if (isEditable() && lineEdit()->isVisible())
        return;
    QRect room =
        style()->subControlRect(QStyle::CC_ComboBox, &option, QStyle::SC_ComboBoxEditField, this);
    const auto visual = [&](const QRect& place) {
        return QStyle::visualRect(layoutDirection(), room, place);
    };
    const ListRow row = ShownRow();
    const ColorTokens& tokens = Tokens();
    QRect text = room;
    if (!row.icon.isEmpty()) {
        PaintIcon(
            painter, row.icon,
            visual({room.left(), room.center().y() - kIconSize / 2 + 1, kIconSize, kIconSize}),
            tokens[isEnabled() ? row.icon_color : Token::Disabled]);
        text.setLeft(room.left() + kIconSize + kSmall);
    }
    painter.setPen(tokens[isEnabled() ? Token::Text : Token::Disabled]);
    painter.drawText(visual(text),
                     static_cast<int>(Qt::AlignVCenter | Qt::TextSingleLine |
                                      QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)),
                     ShownText(fontMetrics(), text.width()));
}

DifferenceBox::DifferenceBox(const QString& name, QWidget* parent) : ComboBox(parent) {
    setAccessibleName(name);
    setModel(&rows_);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setEnabled(false);
    connect(this, &QComboBox::activated, this, &DifferenceBox::Chosen);
}

void DifferenceBox::SetRows(int count, RowModel::Provider provider, const QString& none) {
    none_ = none;
    const QSignalBlocker silent(this);
    rows_.SetRows(count, std::move(provider));
    setCurrentIndex(-1);
    setEnabled(count > 0);
    update();
}

void DifferenceBox::SetCurrent(int row) {
    const QSignalBlocker silent(this);
    setCurrentIndex(row);
}

QString DifferenceBox::ShownText(const QFontMetrics& metrics, int width) const {
    return metrics.elidedText(currentIndex() < 0 ? none_ : currentText(), Qt::ElideRight, width);
}

ListRow DifferenceBox::ShownRow() const {
    return currentIndex() < 0 ? ListRow{} : rows_.Row(currentIndex());
}

NumberBox::NumberBox(int least, int most, QWidget* parent) : QSpinBox(parent) {
    setRange(least, most);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

// Not left to Qt: below a style sheet it does not ask the style.
QSize NumberBox::sizeHint() const {
    constexpr int kArrowsAndEdges = 52;
    const int digits =
        std::max({fontMetrics().horizontalAdvance(prefix() + QString::number(minimum()) + suffix()),
                  fontMetrics().horizontalAdvance(prefix() + QString::number(maximum()) + suffix()),
                  fontMetrics().horizontalAdvance(QStringLiteral("00"))});
    return {digits + kArrowsAndEdges, std::max(kControlHeight, fontMetrics().height() + kSmall)};
}

QValidator::State OptionalNumberBox::validate(QString& text, int& at) const {
    return text.trimmed().isEmpty() ? QValidator::Acceptable : NumberBox::validate(text, at);
}

int OptionalNumberBox::valueFromText(const QString& text) const {
    return text.trimmed().isEmpty() ? 0 : NumberBox::valueFromText(text);
}

QString OptionalNumberBox::textFromValue(int value) const {
    return value == 0 ? QString() : NumberBox::textFromValue(value);
}

}  // namespace zorvane
