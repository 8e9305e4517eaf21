#include "compare/ui/file_row.h"

#include <QHBoxLayout>
#include <QMouseEvent>
#include <QPainter>

#include "common/ui/cards.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"
#include "common/ui/style_sheet.h"
#include "compare/ui/command_buttons.h"
#include "compare/ui/pane_columns.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kBehindStrip = 10;  // the caption stands above the numbers of its pane
constexpr int kNamesOnlyBelow = 350;

}  // namespace

FileRow::FileRow(CommandSet& commands, const UiText& text, QWidget* parent) : QFrame(parent) {
    setFixedHeight(kFileRowHeight);
    halves_.original = MakeHalf(commands, text, Side::Original);
    setCursor(Qt::SplitHCursor);  // of the room between the halves
    swap_ = MakeCommandIcon(commands, "compare.swap", "swap", this);
    swap_->setCursor(Qt::ArrowCursor);
    halves_.modified = MakeHalf(commands, text, Side::Modified);
}

QWidget* FileRow::MakeHalf(CommandSet& commands, const UiText& text, Side side) {
    const bool original = side == Side::Original;
    auto* half = new QWidget(this);
    half->setCursor(Qt::ArrowCursor);
    auto* layout = new QHBoxLayout(half);
    layout->setContentsMargins(original ? kWindowEdge : kBehindStrip, 0,
                               original ? kSmall : kWindowEdge, 0);
    layout->setSpacing(kSmall);
    auto* caption = new QLabel(text(original ? "Original" : "Modified"), half);
    caption->setProperty(look::kProperty, QString::fromLatin1(look::kHeading));
    layout->addWidget(caption);
    auto* box = new FileBox(text(original ? "Original file" : "Modified file"),
                            QStringLiteral("file"), half);
    caption->setBuddy(box);
    boxes_[side] = box;
    layout->addWidget(box, 1);
    layout->addWidget(MakeCommandIcon(
        commands, original ? "file.open_original" : "file.open_modified", "open", half));
    connect(box, &FileBox::PathChosen, this, [this, side](const QString& path) {
        if (path_chosen)
            path_chosen(side, path);
    });
    connect(box, &FileBox::FilesDropped, this, [this, side](const QStringList& paths) {
        if (files_dropped)
            files_dropped(side, paths);
    });
    return half;
}

QSize FileRow::sizeHint() const {
    return {2 * kNamesOnlyBelow, kFileRowHeight};
}

void FileRow::SetRatio(double ratio) {
    ratio_ = ratio;
    Arrange();
}

void FileRow::resizeEvent(QResizeEvent*) {
    Arrange();
}

void FileRow::mousePressEvent(QMouseEvent* event) {
    event->setAccepted(event->button() == Qt::LeftButton);
}

void FileRow::mouseMoveEvent(QMouseEvent* event) {
    if (ratio_wanted && (event->buttons() & Qt::LeftButton) != 0)
        ratio_wanted(PaneColumns::RatioAt(width(), static_cast<int>(event->position().x())));
}

void FileRow::Arrange() {
    const PaneColumns columns = PaneColumns::Of(width(), ratio_);
    halves_.original->setGeometry(0, 0, columns.left_end, height());
    halves_.modified->setGeometry(columns.right_begin, 0, width() - columns.right_begin, height());
    const int size = kBarControlHeight;
    swap_->setGeometry(columns.left_end + (kStripWidth - size) / 2, (height() - size) / 2, size,
                       size);
    for (const Side side : kBothSides)
        boxes_[side]->SetNamesOnly(columns.left_end < kNamesOnlyBelow);
}

void FileRow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), Tokens()[Token::Surface]);
    painter.setPen(Tokens()[Token::Hairline]);
    painter.drawLine(0, height() - 1, width(), height() - 1);
}

}  // namespace zorvane
