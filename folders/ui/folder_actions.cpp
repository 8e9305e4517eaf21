// What a person does in a Compare Folders window.
#include <QClipboard>
#include <QDragEnterEvent>
#include <QFileInfo>
#include <QGuiApplication>
#include <QMimeData>

#include "common/ui/dropped_files.h"
#include "common/ui/font_dialog.h"
#include "folders/ui/compare_folders_page.h"

namespace zorvane {
void CompareFoldersPage::Compare() {
    if (viewer_->Busy())
        return;
    boxes_->TakeTexts();
    if (viewer_->RefreshDiffViewer())
        grid_->setFocus();
}

void CompareFoldersPage::Swap() {
    boxes_->TakeTexts();
    viewer_->Swap();
}

// Named, not yet compared: the other side may follow.
void CompareFoldersPage::TakeFolder(Side side, const QString& path) {
    (side == Side::Original ? viewer_->cbSelectOriginal : viewer_->cbSelectModified) = FromQt(path);
    boxes_->Box(side).SetPath(path);
    host_.caption_changed();
}

void CompareFoldersPage::DropFolders(Side side, const QStringList& paths) {
    for (const QString& path : paths) {
        if (!QFileInfo(path).isDir() || paths.size() > 2) {
            status_->SetPanel(2, text_("Drop one or two folders."));
            return;
        }
    }
    if (paths.size() == 1) {
        TakeFolder(side, paths.front());
        return;
    }
    TakeFolder(Side::Original, paths[0]);
    TakeFolder(Side::Modified, paths[1]);
    Compare();
}

void CompareFoldersPage::dragEnterEvent(QDragEnterEvent* event) {
    if (!DroppedFiles(*event->mimeData()).isEmpty())
        event->acceptProposedAction();
}

void CompareFoldersPage::dropEvent(QDropEvent* event) {
    event->acceptProposedAction();
    const bool left = event->position().x() < width() / 2.0;
    DropFolders(left ? Side::Original : Side::Modified, DroppedFiles(*event->mimeData()));
}

void CompareFoldersPage::SetFilter(FolderFilter filter) {
    grid_->KeepPlace([&] { table_->Show(filter, table_->Order().Sort()); });
    bar_->ShowCounts(table_->Order());
    ShowEmpty();
    host_.commands_changed();
}

void CompareFoldersPage::ChooseFont() {
    CompareFoldersSettings& settings = viewer_->Settings();
    const QFont now = grid_->font();
    FontDialog dialog(text_, {now.family(), now.pointSizeF()}, this);
    theme_.Dress(dialog);
    if (dialog.exec() != QDialog::Accepted || viewer_ == nullptr)
        return;
    settings.FontName = FromQt(dialog.Choice().family);
    settings.FontSize = dialog.Choice().points;
    grid_->ShowSettings();
}

void CompareFoldersPage::SetOptionsUnfolded(bool unfolded) {
    options_->SetUnfolded(unfolded);
    if (!unfolded)
        grid_->setFocus();
    host_.commands_changed();
}

void CompareFoldersPage::ShowOptions(int tab) {
    options_->Tabs().setCurrentIndex(tab);
    SetOptionsUnfolded(true);
}

void CompareFoldersPage::ShowTextOptions(PairOptionsDialog::Tab tab) {
    if (text_options_ == nullptr) {
        text_options_ = host_.make_text_options(*this);
        text_options_->setAttribute(Qt::WA_DeleteOnClose);
        theme_.Dress(*text_options_);
    }
    text_options_->ShowTab(tab);
    text_options_->show();
    text_options_->raise();
    text_options_->activateWindow();
}

bool CompareFoldersPage::HasFile() const {
    const std::optional<FolderRecord> record =
        Cell().row < 0 ? std::nullopt : viewer_->Rows().Record(Cell().row);
    return record && record->IsFile == 1;
}

// One file is asked about by its name.
void CompareFoldersPage::DeleteChosen() {
    const std::vector<GridCell> cells = grid_->ChosenCells();
    if (cells.size() == 1)
        Files().PermanentDelete(cells.front().row, cells.front().column);
    else
        Files().DeleteCells(cells);
}

void CompareFoldersPage::CopyNames() {
    QStringList names;
    for (const GridCell& cell : grid_->ChosenCells()) {
        const std::optional<FolderRecord> record = viewer_->Rows().Record(cell.row);
        if (record)
            names.append(ToQt(cell.column == FolderColumn::Original ? record->Original()
                                                                    : record->Modified()));
    }
    if (!names.isEmpty())
        QGuiApplication::clipboard()->setText(names.join(u'\n'));
}

// Esc stops a run, then folds the options, then goes back to the grid.
void CompareFoldersPage::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape || viewer_ == nullptr) {
        QWidget::keyPressEvent(event);
        return;
    }
    if (viewer_->CanAbort())
        viewer_->Abort();
    else if (OptionsUnfolded())
        SetOptionsUnfolded(false);
    else
        grid_->setFocus();
}

}  // namespace zorvane
