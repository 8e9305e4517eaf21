#include "compare/ui/records_page.h"

#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>

#include "common/ui/dropped_files.h"
#include "common/ui/file_dialogs.h"
#include "common/ui/font_dialog.h"

namespace zorvane {

RecordsPage::RecordsPage(CommandSet& commands, Theme& theme, UiText text, SpecialFolders& folders)
    : commands_(commands), theme_(theme), text_(std::move(text)), folders_(folders) {}

// ---- how it is made ----

QVBoxLayout* RecordsPage::MakeContents() {
    setAcceptDrops(true);
    auto* outer = new QVBoxLayout(this);
    outer->setContentsMargins(0, 0, 0, 0);
    contents_ = new QWidget(this);
    outer->addWidget(contents_);
    auto* rows = new QVBoxLayout(contents_);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->setSpacing(0);
    return rows;
}

OptionArea* RecordsPage::MakeOptionArea() {
    options_ = new OptionArea(text_, contents_);
    connect(options_, &OptionArea::FoldWanted, this, [this] { SetOptionsUnfolded(false); });
    // Its own Esc folds; while a run goes on that one is first.
    options_->installEventFilter(this);
    return options_;
}

StatusBar* RecordsPage::MakeStatus(int panels) {
    status_ = new StatusBar(panels, contents_);
    announcer_ = std::make_unique<RunAnnouncer>(*status_, text_);
    return status_;
}

void RecordsPage::ConnectContents(std::span<const Command> commands) {
    for (const Command& command : commands) {
        if (command.scope == KeyScope::Focus)
            MainGrid().addAction(commands_.Action(command.id));
    }
    MainGrid().menu_wanted = [this](QPoint place) {
        QMenu* menu = MakeMenu();
        menu->setAttribute(Qt::WA_DeleteOnClose);
        menu->popup(place);
    };
    connect(MainGrid().selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this] { Frame().commands_changed(); });
    connect(&theme_, &Theme::Changed, this, [this] {
        if (contents_ == nullptr)
            return;
        ShowLook();
        contents_->update();
    });
}

void RecordsPage::ReleaseContents() {
    announcer_.reset();
    delete contents_;
    contents_ = nullptr;
}

QMenu* RecordsPage::BeginMenu() {
    auto* menu = new QMenu(this);
    theme_.Dress(*menu);
    commands_.Refresh();
    return menu;
}

// ---- questions ----

std::string RecordsPage::AskForFolder(const std::string& start) {
    return FromQt(PickFolder(ToQt(start), folders_, text_, this));
}

std::string RecordsPage::AskForReport(const std::string& title, const std::string& start,
                                      const QString& kind) {
    FileRequest request{.title = ToQt(title),
                        .filter = kind + QStringLiteral("|*.CSV"),
                        .saving = true,
                        .start = ToQt(start)};
    return FromQt(PickFile(request, text_, this));
}

// ---- what a person does ----

void RecordsPage::SetOptionsUnfolded(bool unfolded) {
    options_->SetUnfolded(unfolded);
    if (!unfolded)
        MainGrid().setFocus();
    Frame().commands_changed();
}

void RecordsPage::ShowOptions(int tab) {
    options_->Tabs().setCurrentIndex(tab);
    SetOptionsUnfolded(true);
}

void RecordsPage::ChooseFont() {
    const QFont now = MainGrid().font();
    FontDialog dialog(text_, {now.family(), now.pointSizeF()}, this);
    theme_.Dress(dialog);
    if (dialog.exec() == QDialog::Accepted && contents_ != nullptr)
        TakeFont(FromQt(dialog.Choice().family), dialog.Choice().points);
}

void RecordsPage::MoveFocus(bool forward) {
    const std::vector<QWidget*> stops = FocusStops();
    const auto count = static_cast<int>(stops.size());
    if (count == 0)
        return;
    int at = forward ? -1 : count;
    for (int stop = 0; stop < count; ++stop) {
        const QWidget* widget = stops[static_cast<std::size_t>(stop)];
        if (widget->hasFocus() || widget->isAncestorOf(focusWidget()))
            at = stop;
    }
    stops[static_cast<std::size_t>((at + (forward ? 1 : count - 1)) % count)]->setFocus(
        Qt::TabFocusReason);
}

void RecordsPage::dragEnterEvent(QDragEnterEvent* event) {
    if (!DroppedFiles(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void RecordsPage::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    DropAt(event->position(), DroppedFiles(*event->mimeData()));
}

bool RecordsPage::StopRun() {
    if (contents_ == nullptr || !Running())
        return false;
    AbortRun();
    return true;
}

// Esc stops a run, then folds the options, then goes back to the grid.
void RecordsPage::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape || contents_ == nullptr) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (StopRun())
        return;
    if (OptionsUnfolded())
        SetOptionsUnfolded(false);
    else
        MainGrid().setFocus();
}

bool RecordsPage::eventFilter(QObject* watched, QEvent* event) {
    const bool escape = event->type() == QEvent::KeyPress &&
                        static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape;
    return (watched == options_ && escape && StopRun()) || QWidget::eventFilter(watched, event);
}

}  // namespace zorvane
