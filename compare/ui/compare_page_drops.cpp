// What a person brings to a page by the pointer: files that are dropped, and menus at a place.
#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>

#include "common/ui/dropped_files.h"
#include "compare/ui/compare_files_page.h"
#include "compare/ui/drop_shade.h"

namespace zorvane {
namespace {

// An empty name is a line.
constexpr const char* kEditorMenu[] = {
    "edit.undo",        "edit.redo",         "", "edit.cut",     "edit.copy",    "edit.paste",
    "edit.paste_plain", "edit.select_all",   "", "edit.find",    "edit.replace", "",
    "compare.selected", "file.type_options", "", "file.save_as", "file.print"};
constexpr const char* kResultMenu[] = {"edit.copy",
                                       "edit.select_all",
                                       "edit.find",
                                       "",
                                       "compare.copy_to_modified",
                                       "compare.copy_to_original",
                                       "go.read",
                                       "",
                                       "view.fold",
                                       "view.unfold_all",
                                       "",
                                       "report.make",
                                       "file.save_as",
                                       "file.print"};
constexpr const char* kOverviewMenu[] = {"go.first", "go.previous", "go.next",   "go.last",
                                         "",         "go.to",       "view.fold", "view.unfold_all"};
constexpr const char* kListMenu[] = {"go.first",
                                     "go.previous",
                                     "go.next",
                                     "go.last",
                                     "go.to",
                                     "",
                                     "compare.copy_to_modified",
                                     "compare.copy_to_original",
                                     "go.read"};

}  // namespace

void CompareFilesPage::ConnectDrops() {
    setAcceptDrops(true);
    shade_ = new DropShade({text_("Original"), text_("Modified")}, this);
    shade_->dropped = [this](Side side, const QStringList& paths) { DropFiles(side, paths); };
    ForViews([this](RichTextView& view) { view.viewport()->installEventFilter(this); });
    pane_->Overview().setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&pane_->Overview(), &QWidget::customContextMenuRequested, this, [this](QPoint place) {
        ShowMenu(kOverviewMenu, pane_->Overview().mapToGlobal(place));
    });
    bar_->List().setContextMenuPolicy(Qt::CustomContextMenu);
    connect(&bar_->List(), &QWidget::customContextMenuRequested, this,
            [this](QPoint place) { ShowMenu(kListMenu, bar_->List().mapToGlobal(place)); });
}

// Texts take dragged words themselves; files are the page's.
bool CompareFilesPage::eventFilter(QObject* watched, QEvent* event) {
    if (watched == splitter_ && event->type() == QEvent::Resize)
        QMetaObject::invokeMethod(
            this, [this] { ShareHeight(); }, Qt::QueuedConnection);
    if (event->type() == QEvent::DragEnter && !ShowsStart()) {
        auto& drag = static_cast<QDragEnterEvent&>(*event);
        if (!DroppedFiles(*drag.mimeData()).isEmpty()) {
            drag.acceptProposedAction();
            shade_->Begin();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

void CompareFilesPage::dragEnterEvent(QDragEnterEvent* event) {
    if (ShowsStart() || DroppedFiles(*event->mimeData()).isEmpty())
        return;
    event->acceptProposedAction();
    shade_->Begin();
}

void CompareFilesPage::ShowTextMenu(RichTextView& view, QPoint place, CharPos at) {
    last_focus_ = &view;
    if (IsEditor(&view)) {
        ShowMenu(kEditorMenu, place);
        return;
    }
    // What the menu copies over is what it was opened on.
    ViewPage& page = view.Page();
    if (const MarkSource* marks = page.Layouts().Marks()) {
        const std::int32_t record = marks->Of(page.Index().OfChar(at).paragraph).record;
        if (record >= 0 && record != pane_->Current() && !viewer_->Busy())
            viewer_->SelectListItem(record);
    }
    ShowMenu(kResultMenu, place);
}

void CompareFilesPage::ShowMenu(std::span<const char* const> ids, QPoint place) {
    QMenu menu(this);
    theme_.Dress(menu);
    commands_.Refresh();
    for (const char* id : ids) {
        if (*id == '\0')
            menu.addSeparator();
        else
            menu.addAction(commands_.Action(id));
    }
    menu.exec(place);
}

}  // namespace zorvane
