#include "common/ui/font_dialog.h"

#include <cmath>

#include <QFontDatabase>
#include <QKeyEvent>

#include "common/ui/combo_boxes.h"
#include "common/ui/measures.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kRows = 7;
constexpr int kLeastPoints = 4;
constexpr int kMostPoints = 96;
constexpr double kSamplePoints = 14;
constexpr int kSampleHeight = 56;

}  // namespace

FontDialog::FontDialog(const UiText& text, const FontChoice& current, QWidget* parent)
    : Dialog(text("Font"), kFormDialog, parent),
      family_(new QLineEdit(current.family, this)),
      families_(new ListBox(text("Installed fonts"), kRows, this)),
      sample_(new QLabel(text("Two documents, word by word: 0123456789"), this)),
      first_points_(current.points),
      missing_(text("This font is not installed")) {
    families_->SetItems(QFontDatabase::families());
    FormColumn* column = AddColumn();
    column->AddAbove(text("Font"), family_);
    column->AddAbove(text("Installed fonts"), families_);
    if (current.points > 0) {
        points_ = new NumberBox(kLeastPoints, kMostPoints, this);
        points_->setValue(static_cast<int>(std::lround(current.points)));
        points_->setSuffix(QStringLiteral(" pt"));
        column->AddAbove(text("Size"), points_);
        connect(points_, &QSpinBox::valueChanged, this, [this] { ShowSample(); });
    }
    sample_->setFixedHeight(kSampleHeight);
    column->AddWidget(sample_);
    SetButtons(text("Apply"), text("Cancel"));
    SetFirstFocus(family_);
    connect(family_, &QLineEdit::textEdited, this, &FontDialog::ShowTyped);
    connect(families_, &QListWidget::currentTextChanged, this, [this](const QString& family) {
        if (!family.isEmpty() && !family_->hasFocus())
            family_->setText(family);
        ShowSample();
    });
    connect(families_, &QListWidget::itemClicked, this,
            [this](const QListWidgetItem* item) { family_->setText(item->text()); });
    connect(families_, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
    ShowTyped(current.family);
}

// The first that begins so.
void FontDialog::ShowTyped(const QString& typed) {
    for (int row = 0; !typed.isEmpty() && row < families_->count(); ++row) {
        if (!families_->item(row)->text().startsWith(typed, Qt::CaseInsensitive))
            continue;
        families_->setCurrentRow(row);
        families_->scrollToItem(families_->item(row), QAbstractItemView::PositionAtTop);
        break;
    }
    ShowSample();
}

void FontDialog::ShowSample() {
    QFont font(families_->Current().isEmpty() ? family_->text() : families_->Current());
    font.setPointSizeF(points_ != nullptr ? points_->value() : kSamplePoints);
    sample_->setFont(font);
}

FontChoice FontDialog::Choice() const {
    // A size that was not touched keeps its fraction.
    const bool same = points_ == nullptr || points_->value() == std::lround(first_points_);
    return {family_->text(), same ? first_points_ : points_->value()};
}

bool FontDialog::Check() {
    for (int row = 0; row < families_->count(); ++row) {
        const QString family = families_->item(row)->text();
        if (family.compare(family_->text().trimmed(), Qt::CaseInsensitive) != 0)
            continue;
        family_->setText(family);
        return true;
    }
    ShowError(family_, missing_);
    return false;
}

}  // namespace zorvane
