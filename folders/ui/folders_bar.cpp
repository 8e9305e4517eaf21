#include "folders/ui/folders_bar.h"

#include <QMenu>

#include "compare/ui/command_buttons.h"

namespace zorvane {
namespace {

struct Segment {
    FolderFilter filter;
    const char* words;
    const char* icon;
    const char* command;
};
constexpr Segment kSegments[] = {
    {FolderFilter::All, "All", "", "view.show_all"},
    {FolderFilter::Changed, "Changed", "changed", "view.show_changes"},
    {FolderFilter::OnlyOriginal, "Original only", "deleted", "view.show_deletions"},
    {FolderFilter::OnlyModified, "Modified only", "added", "view.show_additions"},
    {FolderFilter::Same, "Same", "equal", "folders.show_same"},
};
constexpr int kWideFrom = 900;

QString CaptionOf(const QString& words, std::int32_t files) {
    return words + u' ' + QString::number(files);
}

}  // namespace

FoldersBar::FoldersBar(CommandSet& commands, const UiText& text, QWidget* parent)
    : ToolBar(text("Compare Folders"), parent), commands_(commands), text_(text) {
    run_ = MakeCommandButton(commands, "compare.run", text("Compare"), ButtonLook::Primary,
                             "refresh", this);
    Add(run_);
    abort_ = MakeCommandButton(commands, "compare.abort", text("Abort"), ButtonLook::Plain, "abort",
                               this);
    abort_->hide();
    Add(abort_);
    AddSeparator();
    filters_ = new SegmentedGroup(text("Kinds of files"), this);
    for (const Segment& segment : kSegments) {
        const auto id = static_cast<int>(segment.filter);
        filters_->Add(id, text(segment.words), QString::fromLatin1(segment.icon),
                      text(segment.words));
        QAction* action = commands.Action(segment.command);
        filters_->Segment(id)->setToolTip(ToolTipOf(
            text(segment.words), action->shortcut().toString(QKeySequence::NativeText), QString()));
    }
    filters_->SetCurrent(static_cast<int>(FolderFilter::All));
    connect(filters_, &SegmentedGroup::Chosen, this,
            [&commands](int id) { commands.Run(kSegments[id].command); });
    Add(filters_);
    kinds_ = new Button(text("All"), ButtonLook::Plain, QStringLiteral("chevron"), this);
    kinds_->setToolTip(text("Kinds of files"));
    kinds_->hide();
    connect(kinds_, &Button::clicked, this, [this] {
        QMenu* menu = MakeKindsMenu();
        menu->setAttribute(Qt::WA_DeleteOnClose);
        dress(*menu);
        menu->popup(kinds_->mapToGlobal(QPoint(0, kinds_->height())));
    });
    Add(kinds_);
    AddStretch();
    Add(MakeCommandIcon(commands, "report.make", "report", this));
    options_ = MakeCommandButton(commands, "view.options", text("Options"), ButtonLook::Flat,
                                 "options", this);
    Add(options_);
}

void FoldersBar::ShowCounts(const FolderOrder& order) {
    for (const Segment& segment : kSegments) {
        counts_[static_cast<std::size_t>(segment.filter)] = order.Files(segment.filter);
        filters_->SetCount(static_cast<int>(segment.filter), order.Files(segment.filter));
        if (segment.filter == order.Filter())
            kinds_->SetCaption(CaptionOf(text_(segment.words), order.Files(segment.filter)));
    }
    filters_->SetCurrent(static_cast<int>(order.Filter()));
}

QMenu* FoldersBar::MakeKindsMenu() {
    auto* menu = new QMenu(this);
    for (const Segment& segment : kSegments) {
        const std::int32_t files = counts_[static_cast<std::size_t>(segment.filter)];
        QAction* action = menu->addAction(CaptionOf(text_(segment.words), files));
        action->setCheckable(true);
        action->setChecked(filters_->Current() == static_cast<int>(segment.filter));
        const char* command = segment.command;
        connect(action, &QAction::triggered, this, [this, command] { commands_.Run(command); });
    }
    return menu;
}

QWidget* FoldersBar::FilterFocus() const {
    return kinds_->isHidden() ? static_cast<QWidget*>(filters_->Segment(filters_->Current()))
                              : kinds_;
}

void FoldersBar::SetRunning(bool running) {
    abort_->setMinimumWidth(running ? run_->width() : 0);
    run_->setVisible(!running);
    abort_->setVisible(running);
}

void FoldersBar::resizeEvent(QResizeEvent* event) {
    ToolBar::resizeEvent(event);
    const bool wide = width() >= kWideFrom;
    options_->SetCaptionShown(wide);
    filters_->setVisible(wide);
    kinds_->setVisible(!wide);
}

}  // namespace zorvane
