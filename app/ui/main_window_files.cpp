// What is opened for whom: files, folders and texts, in a window that is free or a new one.
#include "app/ui/main_window.h"
#include "common/file_utilities.h"
#include "common/platform/native_path.h"

namespace zorvane {

// A page that nobody works in, else a new one.
CompareFilesPage* MainWindow::FreePage() {
    CompareFilesPage* page = ActivePage();
    if (page != nullptr && page->ShowsStart())
        return page;
    return frame_->CreateNewCompareFilesForm() == nullptr ? nullptr : ActivePage();
}

// Whole paths, which mean the same when they are listed the next day.
void MainWindow::OpenFiles(std::vector<std::string> files) {
    for (std::string& file : files) {
        if (bFileExists(file) || bDirectoryExists(file))
            file = AbsolutePath(file);
    }
    if (files.size() > 1 && bDirectoryExists(files[0]) && bDirectoryExists(files[1]))
        OpenFolders({files[0], files[1]});
    else if (files.size() > 1)
        OpenPair(files[0], files[1]);
    else if (CompareFilesPage* page = FreePage())
        page->TakePath(Side::Original, files[0]);
}

// Who asks for folders has no use for the empty window for files that every session begins with.
void MainWindow::OpenFolders(const PerSide<std::string>& folders) {
    const CompareFilesPage* begun = ActivePage();
    const bool unused =
        begun != nullptr && begun->ShowsStart() && !begun->NamesFiles() && OpenPages().size() == 1;
    CompareFolders(folders);
    if (unused && ActiveFolders() != nullptr)
        frame_->CloseViewer(*begun->ShownViewer());
}

void MainWindow::OpenPair(const std::string& original, const std::string& modified) {
    CompareFilesPage* page = FreePage();
    if (page == nullptr)
        return;
    page->TakePath(Side::Original, original);
    page->TakePath(Side::Modified, modified);
    page->Compare();
}

// What a row of a folder compare stands for.
void MainWindow::CompareFiles(const PerSide<std::string>& files, bool new_window) {
    frmCompareFiles* viewer =
        new_window ? frame_->CreateNewCompareFilesForm() : frame_->frmGetCFNumber(1);
    if (viewer == nullptr)
        return;
    frame_->Activate(*viewer);
    CompareFilesPage* page = ActivePage();
    if (page == nullptr)
        return;
    for (const Side side : kBothSides)
        page->TakePath(side, files[side]);
    page->Compare();
}

// In a window for folders that nobody has used yet, else in a new one.
void MainWindow::CompareFolders(const PerSide<std::string>& folders) {
    CompareFoldersPage* page = ActiveFolders();
    if ((page == nullptr || !page->IsFresh()) && frame_->CreateNewCompareFoldersForm() != nullptr)
        page = ActiveFolders();
    if (page == nullptr)
        return;
    for (const Side side : kBothSides)
        page->TakeFolder(side, ToQt(folders[side]));
    page->Compare();
}

void MainWindow::CompareTexts(const RichText& original, const RichText& modified) {
    frmCompareFiles* viewer = frame_->CreateNewCompareFilesForm();
    if (viewer == nullptr)
        return;
    viewer->Editors().rtbOriginal.editor.SetRich(original);
    viewer->Editors().rtbModified.editor.SetRich(modified);
    viewer->RunCompare(true);
}

}  // namespace zorvane
