// The Compare Files viewer: owns the editors, options and result of one compare and makes all its
// decisions. Its window only shows and asks. Everything here belongs to the viewer's thread; a run
// works on values of its own (run/compare_job.h), and its result is taken over in one place.
#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "app/command_line_request.h"
#include "common/base/side.h"
#include "common/run_telling.h"
#include "compare/difference_list.h"
#include "compare/file_watch.h"
#include "compare/run/compare_job.h"
#include "compare/run/report_run.h"
#include "compare/run/viewer_run.h"
#include "compare/unsaved_edits.h"
#include "compare/view/viewer_tools.h"
#include "compare/viewer.h"
#include "compare/viewer_editors.h"
#include "compare/viewer_printing.h"
#include "compare/viewer_saving.h"
#include "compare/viewer_window.h"
#include "load/document_loader.h"
#include "options/compare_file_options.h"
#include "options/compare_files_settings.h"
#include "options/recent_items.h"

namespace zorvane {

/// What a viewer is about. Only `Idle` takes new work.
enum class ViewerState { Idle, Loading, Comparing, Reporting, Closing };

/// What a window offers, as far as a state can exclude it.
enum class ViewerCommand {
    Refresh,
    Abort,
    ChangeView,
    Filter,
    Navigate,
    Report,
    Save,  ///< of a result
    Edit,  ///< of the two texts
    ChangeOptions,
    Close
};

class frmCompareFiles : public Viewer {
  public:
    /// The process and the window are borrowed and outlive the viewer; the request is copied.
    frmCompareFiles(ProcessState& process, const CommandLineRequest& request,
                    CompareFilesWindow& window);
    /// Stops what is under way.
    ~frmCompareFiles() override;
    frmCompareFiles(const frmCompareFiles&) = delete;
    frmCompareFiles& operator=(const frmCompareFiles&) = delete;

    // ---- life ----
    /// Names the viewer and reads its settings section.
    void Setup(const std::string& sDescription, bool load) override;
    void ReadIniFile() override;
    /// Writes its section; nothing without a name.
    void SaveIniFile() override;
    const std::string& Description() const override { return sDescription_; }
    ViewerKind Kind() const override { return ViewerKind::CompareFiles; }
    std::vector<std::string> FileNames() const override;
    /// The file that was chosen for a side; empty: none.
    std::string ChosenFile(Side side) const;
    /// The files whose texts stand in the editors; the chosen one as long as none was read, or "".
    PerSide<std::string> ShownFiles() const;
    void Activate() override { window_.Activate(); }
    bool MayClose() override { return MayLoseEdits(LosingStep::Close) && window_.ConfirmClose(); }
    /// Stops a run, waits for its end, and takes no more work; its result is dropped. Then saves
    /// its section.
    void Close() override;

    // ---- the command line of a run ----
    /// From here to the end the viewer works for a command line: its log file and messages (which
    /// stay), its title, and its silence, which is this viewer's alone.
    void BeginCommandLine(const CommandLineRequest& request, bool silent);
    void EndCommandLine();
    RunTelling& Telling() { return telling_; }

    // ---- what a run works on ----
    clsCompareFileOptions& Options() { return options_; }
    CompareFilesSettings& Settings() { return settings_; }
    ViewerEditors& Editors() { return editors_; }
    /// Holds the last whole result. Nobody else's while a report is written.
    VestrelX& VXMacroDiff() { return VXMacroDiff_; }
    const Comparison& Compared() const { return VXMacroDiff_.Compared(); }
    const RunCounters& Counters() const { return counters_; }
    std::int32_t mlChanges() const { return counters_.document.changes; }
    std::int32_t mlAdditions() const { return counters_.document.additions; }
    std::int32_t mlDeletions() const { return counters_.document.deletions; }

    /// Why a side gave no text although its file holds something; empty texts otherwise.
    const PerSide<std::string>& NoTextReasons() const { return load_memory_.sNoText; }
    /// What a side's file holds beside its words.
    const std::vector<BesideItem>& BesideItems(Side side) const {
        return load_memory_.beside[side];
    }
    /// A slide deck could not be read: the run went on with an empty editor.
    bool SlidesFailed() const {
        return load_memory_.bSlidesFailed.original || load_memory_.bSlidesFailed.modified;
    }
    /// Lets go of an office suite that stays for the next file, when `path` is of a type that the
    /// user's own copy is about to open.
    void ShutDownAppsIfRequired(const std::string& path);

    // ---- states ----
    /// Runs go on beside the window from here on: commands return at once, and `Poll` is called
    /// some 30 times a second until it says that the run has ended. At first a command returns when
    /// its run has ended, as a command line wants it.
    void RunInBackground(bool on) { where_ = on ? RunOn::Worker : RunOn::ThisThread; }
    ViewerState State() const;
    /// A question of its own stands open, too: it lives on down the stack.
    bool Busy() const override { return run_ != nullptr || asking_ > 0; }
    /// What is shown is what a run that goes on has found so far.
    bool ShowsEarlyResult() const { return early_.has_value(); }
    /// A command that is not is refused by its function too.
    bool IsEnabled(ViewerCommand command) const;
    /// Brings the window up to date with the run: its texts, its questions, its result. True when
    /// the run has ended; another one may have begun behind it.
    bool Poll() override;
    /// How often a run on the viewer's own thread lets the window live.
    void PumpEvery(std::chrono::milliseconds interval) { pump_interval_ = interval; }

    // ---- what a window shows of it ----
    /// What list and views tell of, an early result included; it stays until the list is told
    /// again. Nothing before the first result.
    const Comparison* ShownComparison() const;
    /// The text that `ShownComparison` tells of; may be nothing.
    const SharedText& ComparedText(Side side) const {
        return early_ ? early_->texts[side] : compared_texts_[side];
    }
    /// What the window shows at the moment: there a run looks for words first.
    void Look(ParagraphsInSight sight);
    /// How much of a run is done; it may go back between two steps.
    double RunPercent() const;
    const clsMRU& RecentFiles(Side side) const { return recent_files_[side]; }
    /// What the user says is text, by its extension.
    clsMRU& TextFileExtensions() { return TextFileExtensions_; }
    FileKind KindOfFile(Side side) const;
    /// What a redline of the last result is made of, but for passwords.
    RedlineInputs RedlineInputsFor(const PerSide<std::string>& files) const;

    /// Behind another font in the settings: texts that bring none are shown in it.
    void FontChanged() { ApplyFont(); }

    // ---- sides ----
    void SelectFile(Side side, const std::string& path);
    /// Files and texts change their sides, with their edits; what was compared is compared again.
    void SwapSides();
    /// Reads the file of a side once more; its user is asked about edits first.
    void LoadAgain(Side side);
    /// Options of a file type were shown: what was loaded by others is loaded again by the next
    /// run, whether its file changed or not.
    void FileTypeOptionsClosed() { load_memory_.bForceReload = {true, true}; }

    // ---- runs ----
    /// The Refresh button.
    void Refresh();
    void RefreshDisplay(bool bReloadFiles, bool bGoToFirstDifference);
    /// Compares what the editors hold, for the view that is shown.
    void RunCompare(bool bGoToFirstDifference);
    /// The start of a run without dialogs. Format 1 shows all in one, any other side by side;
    /// without views the editors stay empty. `failed` when a file could not be loaded or compared;
    /// the reason has been told. A run beside the window has not failed yet.
    void RefreshDisplayCommandLine(std::int32_t format, BuildViews views, bool& failed);
    /// Another one than its own reads from here on; it is no other viewer's at the same time.
    void BorrowConversions(ConversionService& service) { conversions_ = &service; }
    /// Whether the next compare tells what moved; on at first.
    void LookForMoves(bool on) { find_moves_ = on; }
    /// Whether numbers in front of paragraphs take part in the next compare; on at first.
    void CountNumbering(bool on) { count_numbering_ = on; }
    /// The run stops within a tenth of a second; the last whole result stands.
    void Abort() override;
    /// After an option was changed: the view stays as it is until the next run.
    void OptionsChanged();
    /// Whether the shown result is of other texts or options than are there now.
    bool IsStale() const { return !shown_ || *shown_ != now_; }
    /// The word of the last run: a stopped one leaves the old result, of which no report is made.
    RunEnd LastRun() const { return last_run_; }

    // ---- files ----
    /// The editor that last had the focus.
    void SetActiveEditor(EditorTarget target) { mlActiveEditor_ = target; }
    EditorTarget mlActiveEditor() const { return mlActiveEditor_; }
    /// Each is a run on this thread, which can be stopped; nothing happens while another goes on.
    /// A result is saved and printed as it is shown, stale or not.
    SaveOutcome SaveActiveEditorAs();
    PrintEnd PrintActiveEditor();
    /// Asks about texts with edits that were not saved; true when the step may be taken.
    bool MayLoseEdits(LosingStep step, const PerSide<bool>& of = {true, true});
    /// For the window's timer: tells of files that somebody else changed, and loads them again
    /// where runs are. Nothing while a run goes on.
    void CheckFilesOnDisk();

    // ---- views and filters ----
    View CurrentView() const { return view_; }
    /// Before the first run: the view that it builds.
    void BeginWith(View view);
    void cmdChangeViewFormat_Click();
    void ShowFilter(ViewFilter filter);

    // ---- differences ----
    const DifferenceList& Differences() const { return list_; }
    std::int32_t mlCurrentDifference() const { return mlCurrentDifference_; }
    void ShowDifference(bool bSyncList);
    void ShowDifferenceFirst() { MoveTo(1); }
    void ShowDifferencePrevious() { MoveTo(mlCurrentDifference_ - 1); }
    void ShowDifferenceNext() { MoveTo(mlCurrentDifference_ + 1); }
    void ShowDifferenceLast() { MoveTo(VXMacroDiff_.getDifferenceCount()); }
    /// Asks for the number of a difference and goes there.
    void tbShowDifferenceUnknown();
    void SelectListItem(std::int32_t index);
    void UpdateStatusBar();
    void UpdateNavigationalDropDownListBox();

    // ---- the shown editors ----
    ViewerTools& Tools() { return tools_; }

    // ---- reports ----
    /// From the next run on the word-processor report has a head with these names, numbers at its
    /// differences and tables; without it, the fixed form that scripts rely on.
    void PresentDocumentReport(const PerSide<std::string>& names) { report_names_ = names; }
    /// On the caller's thread, whatever runs do. Where the result is stale, it compares first.
    ReportResult CreateReport(std::string& file, ReportType type, std::int32_t style);
    ReportResult CreateReportGUI(Launch launch, const std::string& file);
    /// The report button: the default report, opened; beside the window where runs are.
    void cmdViewReport();
    ReportResult LastReport() const { return last_report_; }

  private:
    /// What the shown result was made from.
    struct Revisions {
        PerSide<std::uint32_t> texts{0, 0};
        std::uint32_t options = 0;
        friend bool operator==(const Revisions&, const Revisions&) = default;
    };
    /// Counts the edits of one side, whoever makes them.
    class EditCounter : public DocumentObserver {
      public:
        explicit EditCounter(std::uint32_t& edits) : edits_(edits) {}
        void Replaced(CharPos, std::int32_t, std::int32_t) override { ++edits_; }
        void Reformatted(CharPos, std::int32_t) override { ++edits_; }
        void Reset() override { ++edits_; }

      private:
        std::uint32_t& edits_;
    };
    /// Whether a run that shows a difference shows the one that was selected; else the first.
    enum class KeptDifference { Yes, No };
    /// A run that is wanted.
    struct Plan {
        RunSource source = RunSource::Texts;
        View view = View::SideBySide;
        BuildViews views = BuildViews::Yes;
        PerSide<std::string> load_again;   ///< the files of `LoadedAgain`; empty: not that side
        PerSide<bool> keep{false, false};  ///< not loaded, since its edits are to be compared
        bool show_first = false;  ///< goes to the difference that was selected, or the first
        KeptDifference kept = KeptDifference::Yes;
        std::optional<View> left;  ///< what a switch comes from, and goes back to when it fails
        RunOn where = RunOn::ThisThread;
        std::function<void(RunEnd)> then;  ///< what goes on behind it
    };
    /// What a run was started from.
    struct Begun {
        Plan plan;
        Revisions revisions;
        std::int32_t kept_difference = -1;
        clsCompareFileOptions options;
        CompareFilesSettings settings;
    };
    using ReportDone = std::function<void(const ReportOutcome&)>;
    /// While a question runs the window's events, somebody may want the viewer gone.
    class Asking {
      public:
        explicit Asking(frmCompareFiles& viewer) : viewer_(viewer) { ++viewer_.asking_; }
        ~Asking() { viewer_.given_up_ = --viewer_.asking_ > 0 && viewer_.given_up_; }
        Asking(const Asking&) = delete;
        Asking& operator=(const Asking&) = delete;
        /// What was asked about is not to be done any more.
        bool GivenUp() const { return viewer_.given_up_; }

      private:
        frmCompareFiles& viewer_;
    };

    // viewer_runs.cpp
    void RefreshFrom(KeptDifference kept, bool bReloadFiles, bool bGoToFirstDifference);
    void StartCompare(Plan plan);
    CompareInput InputFor(const Plan& plan);
    SharedText TextOf(Side side);
    void StartRun(RunOn where, RunStep first, ViewerRun::Steps steps);
    void EndRun();
    void ShowProgress();
    void ShowEarly(EarlyOutcome early);
    void PutBackEarly();
    void ShowAgain(std::optional<View> left);
    void HandOver(Begun& begun, CompareOutcome& outcome);
    void TakeLoad(const Begun& begun, CompareOutcome& outcome);
    void TakeText(Side side, Begun& begun, CompareOutcome& outcome);
    void TakeTexts(Begun& begun, CompareOutcome& outcome);
    void TakeView(CompareOutcome& outcome);
    void ShowResult(const Begun& begun, const CompareOutcome& outcome);
    void TellUnread(Side side);
    void Wait(bool shown);

    // viewer_files.cpp
    ShownDocument& DocumentOf(EditorTarget target);
    SaveOutcome SaveEditor(EditorTarget target);
    ReportResult SaveAllInOne(std::string& file, ViewerRun& run);
    void SelectSavedFile(Side side, const std::string& file, std::uint32_t edits);
    PerSide<std::string> FilesOf(EditorTarget target) const;
    bool SaveBeforeLosing(Side side);
    bool TakesNews(const FileNotice& notice);  // whether its file is loaded again
    std::optional<PerSide<bool>> EditsToKeep();
    void LoadAgain(const PerSide<std::string>& files);
    void TakeLoadedAgain(Begun& begun, CompareOutcome& outcome);
    void WatchLoaded(const CompareOutcome& outcome);

    // viewer_reports.cpp
    void ShowCertificate(const RedlineCertificate& certificate);
    void BeginReport(ReportWanted wanted, RunOn where, ReportDone done);
    void StartReport(ReportWanted wanted, RunOn where, ReportDone done);
    bool RefuseReport(const ReportDone& done);
    DocumentReportTexts DocumentTexts();
    ReportInput ReportInputFor(ReportWanted wanted, DocumentReportTexts texts);
    std::string ToldOf(const ReportOutcome& outcome);
    bool IsDocument(const ReportWanted& wanted) const;
    ReportResult ReportHere(ReportWanted wanted, std::string& file);

    bool RunLoads() const;
    void EndWork();
    void ApplyFont();
    CharFormat ViewerFormat() const;
    void MoveTo(std::int32_t number);
    void SelectRecord(const DifferenceRecord& record);
    bool Silent() const { return telling_.manner.bSilent; }
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
    ConversionService own_conversions_;
    ConversionService* conversions_ = &own_conversions_;  ///< of the run while there is one
    bool find_moves_ = true;
    bool count_numbering_ = true;
    std::optional<PerSide<std::string>> report_names_;

    // The last whole result.
    VestrelX VXMacroDiff_;
    PerSide<SharedText> compared_texts_;
    LoadMemory load_memory_;
    RunCounters counters_;
    DifferenceList list_;
    std::optional<Revisions> shown_;     ///< nothing: there is no result yet
    std::optional<EarlyOutcome> early_;  ///< of the run that goes on, shown meanwhile
    ParagraphsInSight in_sight_ = RunControl().InSight();
    bool mbSBSViewFresh_ = false;
    bool mbAIOViewFresh_ = false;
    RunEnd last_run_ = RunEnd::Finished;
    ReportResult last_report_ = ReportResult::Ok;

    Revisions now_;
    EditCounter watch_original_{now_.texts.original};
    EditCounter watch_modified_{now_.texts.modified};
    View view_ = View::SideBySide;
    bool mbUpdatingList_ = false;
    bool mbUpdatingFilter_ = false;
    std::int32_t mlCurrentDifference_ = -1;
    std::int32_t mlLastDifference_ = -1;
    EditorTarget mlActiveEditor_ = EditorTarget::Original;
    FileWatch file_watch_;
    int asking_ = 0;
    bool given_up_ = false;
    bool closing_ = false;
    BuildViews views_ = BuildViews::Yes;
    ViewerTools tools_;
    RunOn where_ = RunOn::ThisThread;
    std::chrono::milliseconds pump_interval_{33};
    std::shared_ptr<ViewerRun> run_;  ///< the one under way; the last member, so that it goes first
};

}  // namespace zorvane
