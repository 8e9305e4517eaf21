// The Compare Files viewer: owns the editors, engines, options and state of one compare and makes
// all its decisions. Its window only shows and asks.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/command_line_request.h"
#include "common/base/side.h"
#include "common/run_telling.h"
#include "compare/compare_run.h"
#include "compare/file_watch.h"
#include "compare/unsaved_edits.h"
#include "compare/viewer_editors.h"
#include "compare/viewer_printing.h"
#include "compare/viewer_saving.h"
#include "compare/viewer_window.h"
#include "load/document_loader.h"
#include "options/compare_file_options.h"
#include "options/compare_files_settings.h"
#include "options/recent_items.h"
#include "reports/report_driver.h"

namespace zorvane {

/// A run whose result nobody looks at in editors marks none.
enum class BuildViews { Yes, No };

class frmCompareFiles : private ReportSource {
  public:
    /// The process and the window are borrowed and outlive the viewer; the request is copied.
    frmCompareFiles(ProcessState& process, const CommandLineRequest& request,
                    CompareFilesWindow& window);

    // ---- life ----
    /// Names the viewer and reads its settings section.
    void Setup(const std::string& sDescription, bool load);
    void ReadIniFile();
    /// Writes its section; nothing without a name.
    void SaveIniFile();
    const std::string& Description() const { return sDescription_; }

    // ---- the command line of a run ----
    /// From here to the end the viewer works for a command line: its log file and messages (which
    /// stay), its title, and its silence, which is this viewer's alone.
    void BeginCommandLine(const CommandLineRequest& request, bool silent);
    void EndCommandLine();
    RunTelling& Telling() override { return telling_; }

    // ---- what a run works on ----
    clsCompareFileOptions& Options() { return options_; }
    CompareFilesSettings& Settings() { return settings_; }
    ViewerEditors& Editors() { return editors_; }
    VestrelX& VXMacroDiff() { return VXMacroDiff_; }
    const Comparison& Compared() const { return VXMacroDiff_.Compared(); }
    const RunCounters& Counters() const { return counters_; }
    std::int32_t mlChanges() const { return counters_.document.changes; }
    std::int32_t mlAdditions() const { return counters_.document.additions; }
    std::int32_t mlDeletions() const { return counters_.document.deletions; }

    /// Why a side gave no text although its file holds something; empty texts otherwise.
    const PerSide<std::string>& NoTextReasons() const { return loader_.sNoText; }
    /// A slide deck could not be read: the run went on with an empty editor.
    bool SlidesFailed() const {
        return loader_.bSlidesFailed.original || loader_.bSlidesFailed.modified;
    }
    /// Lets go of an office suite that stays for the next file, when `path` is of a type that the
    /// user's own copy is about to open.
    void ShutDownAppsIfRequired(const std::string& path) override;

    // ---- runs ----
    /// The Refresh button.
    void Refresh();
    void RefreshDisplay(bool bReloadFiles, bool bGoToFirstDifference);
    RunEnd RunCompare(bool bGoToFirstDifference);
    /// The start of a run without dialogs. Format 1 shows all in one, any other side by side;
    /// without views the loaded texts go into the comparison and the editors stay empty. `failed`
    /// when a file could not be loaded or compared; the reason has been told.
    void RefreshDisplayCommandLine(std::int32_t format, BuildViews views, bool& failed);
    /// Whether the next compare tells what moved; on at first.
    void LookForMoves(bool on) { find_moves_ = on; }
    /// Compares the two texts. A failure has been told; an abort is one of its own.
    Status RunDocumentEngine();
    void Abort() {
        mbAbortRequested_ = true;
        telling_.Stop();
    }
    /// After an option was changed: the view stays as it is until the next run.
    void OptionsChanged();
    /// After a user's edit of one side.
    void TextChanged(Side side);

    // ---- files ----
    /// The editor that last had the focus.
    void SetActiveEditor(EditorTarget target) { mlActiveEditor_ = target; }
    EditorTarget mlActiveEditor() const { return mlActiveEditor_; }
    /// Both do nothing while a compare runs.
    SaveOutcome SaveActiveEditorAs();
    PrintEnd PrintActiveEditor();
    /// Asks about edits that were not saved; true when the step may be taken.
    bool MayLoseEdits(LosingStep step);
    /// For the window's timer: tells of files that somebody else changed, and loads them again.
    void CheckFilesOnDisk();

    // ---- views and filters ----
    View CurrentView() const { return state_.view; }
    void cmdChangeViewFormat_Click();
    void ShowFilter(ViewFilter filter);

    // ---- differences ----
    const std::vector<std::string>& ListItems() const { return list_; }
    std::int32_t mlCurrentDifference() const { return mlCurrentDifference_; }
    void ShowDifference(bool bSyncList);
    void ShowDifferenceFirst() { MoveTo(1); }
    void ShowDifferencePrevious() { MoveTo(mlCurrentDifference_ - 1); }
    void ShowDifferenceNext() { MoveTo(mlCurrentDifference_ + 1); }
    void ShowDifferenceLast() { MoveTo(VXMacroDiff_.getDifferenceCount()); }
    void SelectListItem(std::int32_t index);
    void UpdateStatusBar();

    // ---- reports ----
    /// From the next run on the word-processor report has a head with these names, numbers at its
    /// differences and tables; without it, the fixed form that scripts rely on.
    void PresentDocumentReport(const PerSide<std::string>& names) { report_names_ = names; }
    ReportResult CreateReport(std::string& file, ReportType type, std::int32_t style);
    ReportResult CreateReportGUI(Launch launch, const std::string& file);

  private:
    ProcessState& Process() override { return process_; }
    VestrelX& Engine() override { return VXMacroDiff_; }
    const clsCompareFileOptions& ReportOptions() const override { return options_; }
    CompareFilesSettings& ReportSettings() override { return settings_; }
    Status EnsureFreshComparison() override;
    Status SaveDocumentReport(const std::string& file) override;
    void BuildAllInOneView() override;
    void ShowReportStatus(const std::string& text) override;
    void ShowReportMessage(const std::string& text, const std::string& title) override;
    std::string CommandLineTitle() const override;

    PassContext Context() {
        return {editors_, VXMacroDiff_.Compared(),  options_, counters_,
                monitor_, report_names_.has_value()};
    }
    clsRTBDocument& DocumentOf(EditorTarget target);
    SaveOutcome SaveEditor(EditorTarget target);
    void SelectSavedFile(Side side, const std::string& file);
    std::string TitleOf(EditorTarget target) const;
    void LoadAgain(Side side, std::string file);
    void MarkStale(Side side);
    bool ReloadFiles();
    bool LoadBoth(Reload reload);
    void UseViewerFontForText();
    void ApplyFont();
    std::shared_ptr<const RichText> TakeRich(Side side);
    void TellBeside(const PerSide<std::shared_ptr<const RichText>>& texts);
    void FinishRun(bool bGoToFirstDifference, std::int32_t kept_difference);
    void ShowAborted();
    void MoveTo(std::int32_t number);
    void SelectRecord(const DifferenceRecord& record);
    std::string Translate(const char* english) { return process_.Translate(english); }

    ProcessState& process_;
    RunTelling telling_;
    std::shared_ptr<IniProfile> settings_file_;  ///< that the lists were read from
    CommandLineRequest request_;                 ///< its own: the next line changes nothing here
    CompareFilesWindow& window_;
    std::string sDescription_;
    clsCompareFileOptions options_;
    CompareFilesSettings settings_;
    PerSide<clsMRU> recent_files_;
    clsMRU TextFileExtensions_;
    ViewerEditors editors_;
    VestrelX VXMacroDiff_;
    bool find_moves_ = true;
    std::optional<PerSide<std::string>> report_names_;
    RunCounters counters_;
    RunState state_;
    bool mbAbortRequested_ = false;
    bool mbCompareBusy_ = false;
    bool mbUpdatingList_ = false;
    std::uint32_t mlStartTick_ = 0;
    std::int32_t mlCurrentDifference_ = -1;
    std::int32_t mlLastDifference_ = -1;
    std::vector<std::string> list_;
    EditorTarget mlActiveEditor_ = EditorTarget::Original;
    PerSide<bool> edited_{false, false};  ///< since it was loaded or saved
    FileWatch file_watch_;
    bool asking_about_files_ = false;
    RunMonitor monitor_;
    DocumentLoader loader_;
};

}  // namespace zorvane
