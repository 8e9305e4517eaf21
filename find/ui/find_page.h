// The window of one Find Text In Files viewer: shows what the viewer says and asks what it asks.
#pragma once

#include <functional>
#include <vector>

#include <QLabel>

#include "common/ui/cards.h"
#include "compare/ui/records_page.h"
#include "find/find_viewer.h"
#include "find/ui/find_boxes.h"
#include "find/ui/find_option_pages.h"
#include "find/ui/find_tables.h"
#include "find/ui/hit_pane.h"
#include "find/ui/password_line.h"
#include "find/ui/sign_picker.h"

namespace zorvane {

/// What a page asks of the frame around it.
struct FindHost : ViewerHost {
    /// In the first Compare Files window.
    std::function<void(const PerSide<std::string>& files)> compare_files;
};

class FindPage : public RecordsPage, public FindTextWindow {
    Q_OBJECT
  public:
    /// All but the host is borrowed.
    FindPage(CommandSet& commands, Theme& theme, UiText text, FindHost host,
             SpecialFolders& folders);
    ~FindPage() override;

    /// Makes the contents; once, before the viewer is set up. The viewer goes before this.
    void Connect(frmFindTextInFiles& viewer);
    frmFindTextInFiles* Viewer() const { return viewer_; }

    // ---- of the main window ----
    zorvane::Viewer* ShownViewer() const override { return viewer_; }
    /// What was looked for.
    QString Caption() const override;
    QString Title() const override;
    QString Icon() const override { return QStringLiteral("find-in-files"); }
    void Tick() override;
    void ShowWords() override;

    // ---- what a person does (find_actions.cpp) ----
    void Find();
    /// The lines around the current row's hit.
    void ShowCurrent();
    void GoToHit(bool forward);
    void CompareChosen();
    /// The same for the hit whose lines are shown.
    void CompareShown();
    void OpenCurrent();
    void MarkCurrent();
    void OpenSigns();
    void ToggleDocument();
    void Drop(const QStringList& paths);
    /// Of the view with lines where that has the focus, else the chosen rows.
    void Copy();
    void SelectAll();
    void SetZoom(double zoom);
    double Zoom() const { return pane_->View().Zoom(); }
    void SetWrap(bool wrap) { pane_->SetWrap(wrap); }
    bool Wraps() const { return pane_->View().Wrap(); }
    /// From 0; -1: no row is current.
    std::int32_t CurrentHit() const;
    std::vector<std::int32_t> ChosenHits() const;
    FindBoxes& Boxes() { return *boxes_; }
    HitTable& Hits() { return *hits_; }
    Grid& HitGrid() { return *hit_grid_; }
    ErrorTable& Errors() { return *errors_; }
    Grid& ErrorGrid() { return *error_grid_; }
    PasswordLine& Passwords() { return *passwords_; }
    HitPane& Pane() { return *pane_; }
    SignPicker& Picker() { return *picker_; }
    Splitter& Primary() { return *primary_; }
    Splitter& Secondary() { return *secondary_; }
    /// What is told where nothing was found; nullptr: something was, or nothing was looked for.
    QWidget* NothingFound() const { return nothing_; }
    QMenu* MakeMenu() override;

    // ---- the viewer's verbs (find_verbs.cpp) ----
    FindEntries Entries() override;
    void SetEntries(const FindEntries& entries) override;
    void SetHistories(const FindHistories& histories) override;
    void ShowStatus(FindPanel panel, const std::string& text) override;
    void SetCaption(const std::string& caption) override;
    void EnableAbort(bool enabled) override;
    void WritingChanged() override;
    void SetHourglass(bool on) override;
    void GridChanged(FindGrid grid) override;
    void SizeRows(FindGrid grid) override;
    void SettingsChanged() override;
    void Form_Resize() override;
    void ShowMessage(const std::string& text) override;
    void ShownHitChanged() override;
    void ShowInContextGrid(const std::string& text) override;
    void FocusEntry(FindError wrong) override;
    std::string PickFile(const std::string& title, const std::string& start) override;
    std::string PickReportFile(const std::string& title, const std::string& start) override;
    std::string BrowseForFolder(const std::string& start) override;
    void CompareFiles(const PerSide<std::string>& files) override;
    void Activate() override;
    void CloseDialogs() override;

  protected:
    const ViewerHost& Frame() const override { return host_; }
    Grid& MainGrid() override { return *hit_grid_; }
    bool Running() const override { return viewer_->CanAbort(); }
    void AbortRun() override { viewer_->Abort(); }
    std::vector<QWidget*> FocusStops() const override;
    void DropAt(QPointF place, const QStringList& paths) override;
    void TakeFont(const std::string& family, double points) override;
    void ShowLook() override { pane_->ShowLook(); }
    void resizeEvent(QResizeEvent* event) override;

  private:
    void MakeParts();
    void MakeGrids();
    Grid* MakeGrid(FindTable& table, const QString& name);
    void ConnectParts();
    void ShowFonts();
    void SetColumns();
    void TakeDividers();
    void ShowNothingFound();
    void ShowProtected();
    void PlaceNothingFound();
    void ShowCounts();
    void Compare(const std::vector<std::int32_t>& hits, const ShownHit& alone);
    void ReleaseParts();

    FindHost host_;
    frmFindTextInFiles* viewer_ = nullptr;
    FindBoxes* boxes_ = nullptr;
    FindOptionsPage* search_options_ = nullptr;
    FindReportPage* report_options_ = nullptr;
    Splitter* primary_ = nullptr;    ///< results and errors
    Splitter* secondary_ = nullptr;  ///< hits and the lines around one
    HitTable* hits_ = nullptr;
    Grid* hit_grid_ = nullptr;
    HitPane* pane_ = nullptr;
    ErrorTable* errors_ = nullptr;
    QWidget* error_pane_ = nullptr;
    PasswordLine* passwords_ = nullptr;
    Grid* error_grid_ = nullptr;
    QWidget* nothing_ = nullptr;
    SignPicker* picker_ = nullptr;
    QString caption_;           ///< of the hit that is shown
    int number_digits_ = 0;     ///< that the first column has room for
    bool errors_late_ = false;  ///< they are shown with the next tick
    bool placing_ = false;      ///< dividers are moved by the program
    bool searching_ = false;
};

}  // namespace zorvane
