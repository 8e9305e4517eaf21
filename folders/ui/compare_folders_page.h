// The window of one Compare Folders viewer: shows what the viewer says and asks what it asks.
#pragma once

#include <functional>
#include <optional>

#include <QPointer>

#include "compare/ui/records_page.h"
#include "folders/compare_folders_viewer.h"
#include "folders/ui/folder_boxes.h"
#include "folders/ui/folder_grid.h"
#include "folders/ui/folder_lines.h"
#include "folders/ui/folder_option_pages.h"
#include "folders/ui/folders_bar.h"
#include "folders/ui/pair_options_dialog.h"

class QStackedWidget;

namespace zorvane {

class ProgressCard;

/// What a page asks of the frame around it.
struct FoldersHost : ViewerHost {
    /// In the first Compare Files window, or in a new one.
    std::function<void(const PerSide<std::string>& files, bool new_window)> compare_files;
    /// The options by which texts of pairs are compared, or reports of pairs written.
    std::function<PairOptionsDialog*(QWidget& page)> make_text_options;
};

class CompareFoldersPage : public RecordsPage, public CompareFoldersWindow {
  public:
    /// All but the host is borrowed.
    CompareFoldersPage(CommandSet& commands, Theme& theme, UiText text, FoldersHost host,
                       SpecialFolders& folders);
    ~CompareFoldersPage() override;

    /// Makes the contents; once, before the viewer is set up. The viewer goes before this.
    void Connect(frmCompareDir& viewer);
    frmCompareDir* Viewer() const { return viewer_; }

    // ---- of the main window ----
    zorvane::Viewer* ShownViewer() const override { return viewer_; }
    /// "Tessera 2025 vs. Tessera 2026".
    QString Caption() const override;
    QString Icon() const override { return QStringLiteral("folders"); }
    void Tick() override;
    void ShowWords() override;

    // ---- what a person does (folder_actions.cpp) ----
    void Compare();
    void Swap();
    void TakeFolder(Side side, const QString& path);
    void DropFolders(Side side, const QStringList& paths);
    void SetFilter(FolderFilter filter);
    /// The letters of the grid so many times as large; nothing: as large as at first.
    void ZoomFont(std::optional<double> times);
    /// One dialog for both; it blocks nobody.
    void ShowTextOptions(PairOptionsDialog::Tab tab);
    PairOptionsDialog* TextOptions() const { return text_options_; }
    void DeleteChosen();
    void CopyNames();
    /// Nothing was compared here yet.
    bool IsFresh() const { return fresh_; }
    GridCell Cell() const { return grid_->CurrentCell(); }
    bool HasFile() const;
    FileCommands& Files() { return viewer_->Commands(); }
    FolderTable& Table() { return *table_; }
    FolderGrid& Grid() { return *grid_; }
    FoldersBar& Bar() { return *bar_; }
    FolderBoxes& Boxes() { return *boxes_; }
    ErrorLine& Errors() { return *errors_; }
    FolderLegend& Legend() { return *legend_; }
    FolderOptionsPage& Options() { return *compare_options_; }
    FolderReportPage& ReportOptions() { return *report_options_; }
    QMenu* MakeMenu() override;

    // ---- the viewer's verbs (folder_verbs.cpp) ----
    void ShowStatus(FoldersPanel panel, const std::string& text) override;
    void RunChanged() override;
    void WritingChanged() override;
    void RowsCleared() override;
    void RowsAdded() override;
    void RowsChanged(std::int32_t first, std::int32_t count) override;
    void ErrorsChanged() override;
    void OptionsChanged() override;
    void RefreshCaption() override;
    void SetHourglass(bool on) override;
    void FocusFolder(Side side) override;
    void FlashFrame() override;
    void Activate() override;
    void ShowMessage(const std::string& text, const std::string& title) override;
    bool AskYesNo(const std::string& text, const std::string& title) override;
    bool ShowNotice(const std::string& text, const std::string& title) override;
    std::string BrowseForFolder(const std::string& start) override;
    std::string PickReportFile(const std::string& title, const std::string& start) override;
    void CompareFiles(const PerSide<std::string>& files, bool new_window) override;
    bool ConfirmClose() override { return true; }
    void CloseDialogs() override;

  protected:
    const ViewerHost& Frame() const override { return host_; }
    zorvane::Grid& MainGrid() override { return *grid_; }
    bool Running() const override { return viewer_->CanAbort(); }
    void AbortRun() override { viewer_->Abort(); }
    std::vector<QWidget*> FocusStops() const override;
    void DropAt(QPointF place, const QStringList& paths) override;
    void TakeFont(const std::string& family, double points) override;

  private:
    void MakeParts();
    void MakeOptions();
    void ConnectParts();
    QWidget* MakeGround();
    void ShowEmpty();
    void ReleaseParts();

    FoldersHost host_;
    frmCompareDir* viewer_ = nullptr;
    FoldersBar* bar_ = nullptr;
    FolderOptionsPage* compare_options_ = nullptr;
    FolderReportPage* report_options_ = nullptr;
    FolderBoxes* boxes_ = nullptr;
    ErrorLine* errors_ = nullptr;
    FolderTable* table_ = nullptr;
    FolderGrid* grid_ = nullptr;
    QLabel* empty_ = nullptr;
    ProgressCard* progress_ = nullptr;
    FolderLegend* legend_ = nullptr;
    QPointer<PairOptionsDialog> text_options_;
    bool fresh_ = true;
    bool was_running_ = false;
};

}  // namespace zorvane
