// The Compare Folders viewer: two folders, a run in the background, its rows and reports.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <vector>

#include "common/report_writing.h"
#include "common/string_utilities.h"
#include "compare/engine/vestrel_x.h"
#include "compare/viewer.h"
#include "folders/file_commands.h"
#include "folders/folder_report.h"
#include "folders/folder_rows.h"
#include "folders/folders_window.h"
#include "folders/rename_search.h"
#include "folders/text_checks.h"
#include "options/compare_folder_options.h"
#include "options/compare_folders_settings.h"
#include "options/recent_items.h"

namespace zorvane {

struct ProcessState;

/// Its window is a skin over this. One thread, that of the windows; the engine and the text checks
/// have threads of their own, and `Poll` brings over what they have found.
class frmCompareDir : public Viewer, private FolderCompareEvents {
  public:
    /// Both outlive it. `silent`: of a command line, which asks nothing and is shown nothing.
    frmCompareDir(ProcessState& process, CompareFoldersWindow& window, bool clear_history);
    ~frmCompareDir() override;

    // ---- Viewer ----
    ViewerKind Kind() const override { return ViewerKind::CompareFolders; }
    void Setup(const std::string& sDescription, bool load) override;
    void ReadIniFile() override;
    void SaveIniFile() override;
    const std::string& Description() const override { return msFormName_; }
    std::vector<std::string> FileNames() const override {
        return {cbSelectOriginal, cbSelectModified};
    }
    void Activate() override { window_.Activate(); }
    bool Busy() const override { return running_; }
    void Abort() override;
    bool Poll() override;
    bool MayClose() override { return window_.ConfirmClose(); }
    void Close() override;

    // ---- what a user types and ticks ----
    std::string cbSelectOriginal;
    std::string cbSelectModified;
    std::string cbFileExt;
    std::string txtReportFolder;
    bool cbDontStreamResults = false;
    clsCompareFolderOptions& Options() { return moOptions_; }
    CompareFoldersSettings& Settings() { return settings_; }
    const clsMRU& RecentFolders(Side side) const { return recent_folders_[side]; }
    const clsMRU& RecentTypes() const { return recent_types_; }
    /// A box that the user ticked or unticked, with what depends on it.
    void ClickContentCompare(bool on);
    void ClickContentCompareText(bool on);
    void ClickShowDifferentInBothPlaces(bool on);
    void ClickCreateReport(bool on);
    void ToggleLegend();
    void Browse(Side side);
    void SelectReportFolder();
    void SelectReportFile();
    void Swap();
    std::string Caption();
    std::string FileTypesLabel();
    /// Twips; the column of dates has none where dates do not count.
    std::int32_t ColumnWidth(FolderColumn column) const;

    // ---- runs ----
    /// Text checks that were made before are taken from there, and made ones kept.
    void KeepChecksIn(TextCache cache) { check_cache_ = std::move(cache); }
    /// Checks the two folders and starts a run in the background. False when it did not, which has
    /// been shown, or told to the log of a command line.
    bool RefreshDiffViewer();
    /// A run of a command line takes its types from the options, leaves the recent types alone, and
    /// its text checks also from `adjust`.
    void BeginCommandLine(std::function<void(clsCompareFileOptions&)> adjust);
    void EndCommandLine() { command_line_ = false; }
    bool CanAbort() const { return running_ || WritesReport(); }
    bool CanReport() const { return ended_; }
    /// What the engine could not do, behind a head line.
    const std::vector<std::string>& ErrorMessages() const { return errors_; }
    VestrelX& VestrelX1() { return engine_; }

    // ---- rows ----
    std::int32_t RowCount() const { return mlNextRecord_; }
    FolderRows& Rows() { return rows_; }
    FileCommands& Commands() { return commands_; }
    /// The double click and the Enter key.
    void OpenRow(std::int32_t row);
    void LaunchReport(std::int32_t row);
    /// Takes up to `lMaxRecords` new records into the grid; below 1: all that are there.
    void WriteFindings(std::int32_t lMaxRecords);
    /// A box: looks for files that were renamed or moved, now if a run has ended.
    void ClickTellRenamed(bool on);
    /// They are looked for, behind a run.
    bool LooksForRenamed() const { return renames_.Busy(); }

    // ---- the report ----
    /// To the file of the settings, beside the window, then opened in a text editor.
    void mnuReportTabDelimitedFile();
    bool WritesReport() const { return writing_.Busy(); }
    /// Waits for it.
    void FinishWriting();
    /// `sFile`: its date tokens are replaced. False after a failure, which has been shown.
    bool CreateTabDelimitedReport(std::string& sFile);

  private:
    bool CheckFolders();
    void Tell(const std::string& text, const std::string& title);
    void BeginTextChecks();
    void TakeTexts();
    void SetEngine();
    void ClearGridbox();
    void QueueTextChecks();
    bool RowIsReady(std::int32_t record) const;
    void EndRun();
    void LookForRenamed();
    void TakeRenamed();
    FolderReport MakeReport() const;
    std::string ReportFile(const std::string& named) const;
    void TakeReport(std::chrono::milliseconds patience);
    void TakeErrors();
    void ShowCounts();
    void ShowElapsed();
    void ShowTicker();
    TextPair PairOf(const FolderRecord& record, const std::string& types) const;
    TextPair PairToCheck(const FolderRecord& record);
    std::string Translate(const char* english) const;

    void OnFolderCompareStarted() override;
    void OnFolderCompareError(std::int32_t code, const std::string& message) override;

    ProcessState& process_;
    CompareFoldersWindow& window_;
    bool clear_history_;
    std::string msFormName_;
    clsCompareFolderOptions moOptions_;
    CompareFoldersSettings settings_;
    PerSide<clsMRU> recent_folders_;
    clsMRU recent_types_;
    bool command_line_ = false;
    std::function<void(clsCompareFileOptions&)> adjust_texts_;

    // The run.
    bool running_ = false;
    bool ended_ = false;  ///< normally: there is something to report
    std::uint32_t mlStartTick_ = 0;
    std::int32_t mlNextRecord_ = 0;
    std::int32_t mlNextCheck_ = 0;  ///< the next record that may be a pair to check
    std::int32_t mlFileRows_ = 0;
    std::int32_t mlDirRows_ = 0;
    std::string msReportExtension_;
    ReportType report_type_ = ReportType::Document;
    std::set<std::string> report_names_;  ///< of the run
    ProgressTicker ticker_;
    std::vector<std::string> errors_;
    std::mutex guard_;  ///< over the errors that the engine's threads bring
    std::vector<std::string> new_errors_;

    VestrelX engine_;
    std::optional<TextCache> check_cache_;
    std::unique_ptr<TextChecks> checks_;
    FolderRows rows_;
    RenameSearch renames_;  ///< of the scan of the engine, which it goes before
    FileCommands commands_;
    ReportWriting writing_;  ///< the last member: it uses what stands above
};

}  // namespace zorvane
