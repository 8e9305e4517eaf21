#include "common/ui/dialog.h"

#include <algorithm>

#include <QEvent>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QSpinBox>
#include <QStyle>
#include <QVBoxLayout>

#include "common/ui/cards.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"
#include "common/ui/mnemonics.h"
#include "common/ui/style_sheet.h"

namespace zorvane {

using namespace measures;

FormColumn::FormColumn(QWidget* parent) : QWidget(parent), grid_(new QGridLayout(this)) {
    grid_->setContentsMargins(0, 0, 0, 0);
    grid_->setHorizontalSpacing(kLarge);
    grid_->setVerticalSpacing(0);
    grid_->setColumnStretch(1, 1);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

void FormColumn::AddHeading(const QString& text) {
    const int row = grid_->rowCount();
    QLabel* label = MakeLabel(text, look::kHeading, this);
    label->setContentsMargins(0, grid_->count() == 0 ? 0 : kMedium, 0, kTiny);
    grid_->addWidget(label, row, 0, 1, 2);
}

QLabel* FormColumn::AddAbove(const QString& caption, QWidget* field) {
    QLabel* label = MakeLabel(caption, look::kCaption, this);
    label->setBuddy(field);
    label->setContentsMargins(0, grid_->count() == 0 ? 0 : kMedium, 0, kTiny);
    grid_->addWidget(label, grid_->rowCount(), 0, 1, 2);
    grid_->addWidget(field, grid_->rowCount(), 0, 1, 2);
    errors_[field] = AddErrorLabel(field, 0);
    captions_[field] = label;
    field->installEventFilter(this);
    return label;
}

QLabel* FormColumn::AddBeside(const QString& caption, QWidget* field) {
    const int row = grid_->rowCount();
    auto* label = new QLabel(caption, this);
    label->setProperty(look::kProperty, QString::fromLatin1(look::kBeside));
    label->setBuddy(field);
    label->setContentsMargins(0, 6, 0, 6);
    grid_->addWidget(label, row, 0);
    const bool fixed = field->sizePolicy().horizontalPolicy() == QSizePolicy::Fixed;
    grid_->addWidget(field, row, 1, fixed ? Qt::AlignLeft | Qt::AlignVCenter : Qt::Alignment());
    grid_->setRowMinimumHeight(row, kControlHeight + 6);
    errors_[field] = AddErrorLabel(field, 1);
    captions_[field] = label;
    label->setEnabled(field->isEnabled());
    field->installEventFilter(this);
    return label;
}

QLabel* FormColumn::AddErrorLabel(QWidget* field, int column) {
    QLabel* label = MakeLabel(QString(), look::kError, this);
    label->setObjectName(field->objectName() + QStringLiteral(".error"));
    label->setContentsMargins(0, kTiny, 0, 0);
    label->hide();
    grid_->addWidget(label, grid_->rowCount(), column, 1, 2 - column);
    return label;
}

void FormColumn::AddWidget(QWidget* widget) {
    grid_->addWidget(widget, grid_->rowCount(), 0, 1, 2);
}

void FormColumn::AddInLine(const QList<QWidget*>& widgets) {
    auto* line = new QHBoxLayout;
    line->setSpacing(kColumnGap);
    for (QWidget* widget : widgets)
        line->addWidget(widget);
    line->addStretch(1);
    grid_->addLayout(line, grid_->rowCount(), 0, 1, 2);
}

void FormColumn::AddHint(const QString& text) {
    QLabel* label = MakeLabel(text, look::kHint, this);
    label->setContentsMargins(0, grid_->count() == 0 ? 0 : kSmall, 0, kTiny);
    grid_->addWidget(label, grid_->rowCount(), 0, 1, 2);
}

QLabel* FormColumn::ErrorLabelOf(const QWidget* field) const {
    for (; field != nullptr && field != this; field = field->parentWidget())
        if (const auto found = errors_.find(field); found != errors_.end())
            return found->second;
    return nullptr;
}

bool FormColumn::SetError(QWidget* field, const QString& message) {
    QLabel* label = ErrorLabelOf(field);
    if (label == nullptr)
        return false;
    label->setText(message);
    label->setVisible(!message.isEmpty());
    field->setProperty(kWrongProperty, !message.isEmpty());
    field->setAccessibleDescription(message);
    field->update();
    return true;
}

bool FormColumn::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::EnabledChange)
        if (const auto found = captions_.find(watched); found != captions_.end())
            found->second->setEnabled(static_cast<QWidget*>(watched)->isEnabled());
    return QWidget::eventFilter(watched, event);
}

Dialog::Dialog(const QString& title, int width, QWidget* parent)
    : QDialog(parent), width_(width), rows_(new QVBoxLayout(this)) {
    setWindowTitle(title);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    rows_->setContentsMargins(kDialogEdge, 20, kDialogEdge, 20);
    rows_->setSpacing(kLarge);
    setMinimumWidth(width);
}

FormColumn* Dialog::AddColumn() {
    if (columns_ == nullptr)
        StartRow(Parted::Plain);
    FormColumn* column = MakeColumn(this);
    columns_->addWidget(column, 1, Qt::AlignTop);
    return column;
}

FormColumn* Dialog::MakeColumn(QWidget* parent) {
    auto* column = new FormColumn(parent);
    all_columns_.append(column);
    return column;
}

void Dialog::StartRow(Parted parted) {
    if (parted == Parted::ByLine)
        AddWide(MakeHairline(this));
    columns_ = new QHBoxLayout;
    columns_->setSpacing(kColumnGap);
    rows_->insertLayout(buttons_ == nullptr ? -1 : rows_->count() - 1, columns_);
}

void Dialog::AddWide(QWidget* widget) {
    rows_->insertWidget(buttons_ == nullptr ? -1 : rows_->count() - 1, widget);
}

QHBoxLayout* Dialog::ButtonRow() {
    if (buttons_ == nullptr) {
        buttons_ = new QHBoxLayout;
        buttons_->setSpacing(kSmall);
        buttons_->addStretch(1);
        rows_->addStretch(1);
        rows_->addLayout(buttons_);
    }
    return buttons_;
}

void Dialog::SetButtons(const QString& accept_text, const QString& cancel_text) {
    QHBoxLayout* row = ButtonRow();
    if (!cancel_text.isEmpty()) {
        cancel_ = new Button(cancel_text, ButtonLook::Plain, QString(), this);
        row->addWidget(cancel_);
        connect(cancel_, &QPushButton::clicked, this, &QDialog::reject);
    }
    accept_ = new Button(accept_text, ButtonLook::Primary, QString(), this);
    accept_->setDefault(true);
    row->addWidget(accept_);
    connect(accept_, &QPushButton::clicked, this, &QDialog::accept);
}

Button* Dialog::AddThirdButton(const QString& text) {
    auto* button = new Button(text, ButtonLook::Plain, QString(), this);
    QHBoxLayout* row = ButtonRow();
    // In front of the stretch.
    int at = 0;
    while (row->itemAt(at)->spacerItem() == nullptr)
        ++at;
    row->insertWidget(at, button);
    return button;
}

void Dialog::SetFirstFocus(QWidget* field) {
    first_focus_ = field;
}

void Dialog::ShowError(QWidget* field, const QString& message) {
    for (FormColumn* column : all_columns_)
        if (column->SetError(field, message))
            break;
    field->setFocus(Qt::OtherFocusReason);
    adjustSize();
}

void Dialog::ClearErrors() {
    for (FormColumn* column : all_columns_)
        for (QWidget* field : column->findChildren<QWidget*>())
            if (field->property(kWrongProperty).toBool())
                column->SetError(field, QString());
}

void Dialog::accept() {
    ClearErrors();
    if (Check())
        QDialog::accept();
}

void Dialog::showEvent(QShowEvent* event) {
    ShareMnemonics(*this);
    const int width = std::max({width_, minimumSizeHint().width(), this->width()});
    const int height =
        hasHeightForWidth() ? layout()->totalHeightForWidth(width) : sizeHint().height();
    resize(width, height);
    QDialog::showEvent(event);
    if (first_focus_ == nullptr)
        return;
    first_focus_->setFocus(Qt::OtherFocusReason);
    if (auto* line = qobject_cast<QLineEdit*>(first_focus_.data()))
        line->selectAll();
    if (auto* number = qobject_cast<QAbstractSpinBox*>(first_focus_.data()))
        number->selectAll();
}

}  // namespace zorvane
