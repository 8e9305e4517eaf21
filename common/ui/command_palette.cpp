#include "common/ui/command_palette.h"

#include <algorithm>
#include <utility>

#include <QAccessible>
#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QPainter>
#include <QVBoxLayout>

#include "common/ui/cards.h"
#include "common/ui/look_paint.h"
#include "common/ui/look_style.h"
#include "common/ui/measures.h"
#include "common/ui/palette_model.h"
#include "common/ui/style_sheet.h"

namespace zorvane {

using namespace measures;

namespace {

constexpr int kMostRows = 10;
constexpr int kLastUsedKept = 20;
constexpr int kLineHeight = 40;

class Panel : public QWidget {
  public:
    using QWidget::QWidget;

  protected:
    void paintEvent(QPaintEvent*) override {
        QPainter painter(this);
        PaintBox(painter, rect(), kCardCorner, Tokens()[Token::Surface], Tokens()[Token::Hairline]);
    }
    // A click beside the line is not one beside the palette.
    void mousePressEvent(QMouseEvent*) override {}
};

}  // namespace

CommandPalette::CommandPalette(CommandSet& commands, UiText text, QWidget& window)
    : QWidget(&window),
      commands_(commands),
      text_(std::move(text)),
      model_(new PaletteModel(this)),
      panel_(new Panel(this)),
      line_(new QLineEdit(panel_)),
      list_(new QListView(panel_)),
      count_(MakeLabel(QString(), look::kHint, panel_)) {
    MakePanel();
    window.installEventFilter(this);
    line_->installEventFilter(this);
    connect(line_, &QLineEdit::textChanged, this, &CommandPalette::Filter);
    connect(list_, &QListView::clicked, this, &CommandPalette::RunCurrent);
    setAccessibleName(text_("Command palette"));
    hide();
}

void CommandPalette::MakePanel() {
    panel_->setFixedWidth(kPaletteWidth);
    line_->setAccessibleName(text_("Find a command"));
    line_->setPlaceholderText(text_("Type some letters of a command"));
    line_->setFixedHeight(kLineHeight);
    list_->setModel(model_);
    list_->setItemDelegate(new PaletteDelegate(list_));
    list_->setUniformItemSizes(true);
    list_->setFrameShape(QFrame::NoFrame);
    list_->setFocusPolicy(Qt::NoFocus);
    list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    list_->setAccessibleName(text_("Commands"));
    list_->viewport()->setAutoFillBackground(false);
    count_->setWordWrap(false);
    auto* rows = new QVBoxLayout(panel_);
    rows->setContentsMargins(kMedium, kMedium, kMedium, kMedium);
    rows->setSpacing(kSmall);
    rows->addWidget(line_);
    rows->addWidget(list_);
    rows->addWidget(MakeHairline(panel_));
    auto* foot = new QHBoxLayout;
    foot->setContentsMargins(kMedium, 0, kSmall, 0);
    foot->addWidget(
        MakeLabel(text_("Up and Down choose, Enter runs, Esc closes"), look::kHint, panel_), 1);
    foot->addWidget(count_);
    rows->addLayout(foot);
}

void CommandPalette::Open() {
    if (!isHidden())
        return;
    PutDialogsAside();
    had_focus_ = window()->focusWidget();
    commands_.Refresh();
    model_->SetEntries(commands_.Entries());
    line_->clear();
    Filter(QString());
    Lay();
    show();
    raise();
    line_->setFocus(Qt::PopupFocusReason);
}

void CommandPalette::Close() {
    if (isHidden())
        return;
    hide();
    if (had_focus_ != nullptr)
        had_focus_->setFocus(Qt::PopupFocusReason);
    TakeDialogsBack();
    Q_EMIT Closed();
}

// They would stay above the window that the palette is part of, and cover the list.
void CommandPalette::PutDialogsAside() {
    front_ = QApplication::activeWindow();
    for (auto* dialog : window()->findChildren<QDialog*>()) {
        if (!dialog->isVisible() || dialog->isModal())
            continue;
        aside_.emplace_back(dialog);
        // A command may end it.
        connect(dialog, &QDialog::finished, this, [this, dialog] { std::erase(aside_, dialog); });
        dialog->hide();
    }
    window()->activateWindow();
}

void CommandPalette::TakeDialogsBack() {
    for (const QPointer<QDialog>& dialog : std::exchange(aside_, {})) {
        if (dialog == nullptr)
            continue;
        dialog->disconnect(this);
        dialog->move(dialog->pos());  // else it would be laid in the middle again
        dialog->setAttribute(Qt::WA_ShowWithoutActivating, dialog != front_);
        dialog->show();
        dialog->setAttribute(Qt::WA_ShowWithoutActivating, false);
        if (dialog == front_)
            dialog->activateWindow();
    }
}

void CommandPalette::Filter(const QString& pattern) {
    model_->SetHits(PaletteHits(model_->Entries(), pattern, last_used_));
    list_->setCurrentIndex(model_->index(0));
    list_->setFixedHeight(std::clamp(model_->rowCount(), 1, kMostRows) * kPaletteRowHeight);
    count_->setText(text_("%1 of %2 commands")
                        .arg(model_->rowCount())
                        .arg(static_cast<int>(model_->Entries().size())));
    Lay();
}

void CommandPalette::Lay() {
    setGeometry(parentWidget()->rect());
    panel_->adjustSize();
    panel_->move((width() - panel_->width()) / 2, kPaletteTop);
    update();  // a smaller panel leaves its old shadow
}

void CommandPalette::RunCurrent() {
    const QModelIndex current = list_->currentIndex();
    if (!current.isValid() || !model_->Entry(current.row()).reason.isEmpty())
        return;
    const std::string_view id = model_->Entry(current.row()).id;
    last_used_.removeAll(ToQt(id));
    last_used_.prepend(ToQt(id));
    last_used_ = last_used_.mid(0, kLastUsedKept);
    // The focus goes back first: many commands act on the pane that has it.
    Close();
    commands_.Run(id);
}

bool CommandPalette::OnKey(int key) {
    const int last = model_->rowCount() - 1;
    const int row = list_->currentIndex().row();
    switch (key) {
        case Qt::Key_Escape:
            Close();
            return true;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            RunCurrent();
            return true;
        case Qt::Key_Down:
        case Qt::Key_Up:
        case Qt::Key_PageDown:
        case Qt::Key_PageUp: {
            const int step = key == Qt::Key_Down || key == Qt::Key_Up ? 1 : kMostRows;
            const bool down = key == Qt::Key_Down || key == Qt::Key_PageDown;
            list_->setCurrentIndex(
                model_->index(std::clamp(row + (down ? step : -step), 0, std::max(0, last))));
            // The focus stays in the line, so the row has to be told.
            line_->setAccessibleDescription(
                list_->currentIndex().data(Qt::AccessibleTextRole).toString());
            return true;
        }
        default:
            return false;
    }
}

bool CommandPalette::eventFilter(QObject* watched, QEvent* event) {
    if (watched == line_ && event->type() == QEvent::KeyPress)
        return OnKey(static_cast<QKeyEvent*>(event)->key());
    if (watched == line_ && event->type() == QEvent::FocusOut && !isHidden() &&
        static_cast<QFocusEvent*>(event)->reason() == Qt::MouseFocusReason)
        Close();
    if (watched == parentWidget() && event->type() == QEvent::Resize)
        Lay();
    return QWidget::eventFilter(watched, event);
}

void CommandPalette::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    QColor veil = Tokens()[Token::Window];
    veil.setAlphaF(0.6F);
    painter.fillRect(rect(), veil);
    PaintShadow(painter, panel_->geometry(), kCardCorner);
}

void CommandPalette::mousePressEvent(QMouseEvent*) {
    Close();
}

}  // namespace zorvane
