// What a person does in a Compare Folders window.
#include <algorithm>

#include <QClipboard>
#include <QFontInfo>
#include <QGuiApplication>

#include "common/file_utilities.h"
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
        if (!bDirectoryExists(FromQt(path)) || paths.size() > 2) {
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

void CompareFoldersPage::DropAt(QPointF place, const QStringList& paths) {
    DropFolders(place.x() < width() / 2.0 ? Side::Original : Side::Modified, paths);
}

void CompareFoldersPage::SetFilter(FolderFilter filter) {
    table_->Show(filter, table_->Sort());
    host_.commands_changed();
}

void CompareFoldersPage::TakeFont(const std::string& family, double points) {
    viewer_->Settings().FontName = family;
    viewer_->Settings().FontSize = points;
    grid_->ShowSettings();
}

void CompareFoldersPage::ZoomFont(std::optional<double> times) {
    constexpr double kLeastPoints = 6;
    constexpr double kMostPoints = 40;
    const CompareFoldersSettings first;
    if (!times) {
        TakeFont(first.FontName, first.FontSize);
        return;
    }
    const QFont now = grid_->font();
    TakeFont(FromQt(QFontInfo(now).family()),
             std::clamp(now.pointSizeF() * *times, kLeastPoints, kMostPoints));
}

void CompareFoldersPage::ShowTextOptions(PairOptionsDialog::Tab tab) {
    if (text_options_ == nullptr) {
        text_options_ = host_.make_text_options(*this);
        text_options_->setAttribute(Qt::WA_DeleteOnClose);
        theme_.Dress(*text_options_);
        text_options_->dress = [this](QMenu& menu) { theme_.Dress(menu); };
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

}  // namespace zorvane
