#include "compare/compare_files_viewer.h"

#include <chrono>

#include "common/base/text_encoding.h"
#include "common/log_message.h"
#include "common/process_state.h"
#include "common/string_utilities.h"
#include "compare/beside_notes.h"
#include "compare/difference_list.h"
#include "compare/document/document_look_of.h"
#include "compare/run_options.h"
#include "load/file_kind.h"

namespace zorvane {
namespace {

using namespace std::chrono_literals;

constexpr std::int32_t kMostRecentFiles = 10;
constexpr std::int32_t kMostExtensions = 15;

}  // namespace

frmCompareFiles::frmCompareFiles(ProcessState& process, const CommandLineRequest& request,
                                 CompareFilesWindow& window)
    : process_(process),
      telling_(process.messages),
      request_(request),
      window_(window),
      editors_(*process.platform.sound),
      monitor_(process, window, mbAbortRequested_),
      loader_({process, telling_, options_, settings_, window, recent_files_, TextFileExtensions_,
               [this](EditorTarget target) -> clsRTBDocument& { return DocumentOf(target); },
               [this](const std::string& text) { window_.ShowStatus(StatusPanel::Detail, text); },
               [this] { return monitor_.KeepGoing(); },
               [this] { mlStartTick_ = process_.platform.clock->TickMilliseconds(); }}) {
    telling_.manner = process.telling.manner;
}

// ---- the command line of a run ----

void frmCompareFiles::BeginCommandLine(const CommandLineRequest& request, bool silent) {
    const bool history_off = request_.bClearHistory;
    request_ = request;
    request_.bClearHistory = history_off;  // the lists were read when the viewer was set up
    telling_.manner.sLogFile = request.sLogFile;
    telling_.manner.bShowMessages = request.bShowMessages;
    telling_.manner.bSilent = silent;
}

void frmCompareFiles::EndCommandLine() {
    request_.sReportTitle.clear();
    telling_.manner.bSilent = false;
}

// ---- life ----

void frmCompareFiles::Setup(const std::string& sDescription, bool load) {
    sDescription_ = sDescription;
    if (load)
        ReadIniFile();
    ApplyFont();
}

void frmCompareFiles::ReadIniFile() {
    settings_file_ = process_.settings;
    IniProfile& file = *settings_file_;
    settings_ = DefaultCompareFilesSettings(process_.gsDataFolder);
    ReadCompareFilesSettings(file, sDescription_, settings_);
    for (clsMRU* list : {&recent_files_.original, &recent_files_.modified, &TextFileExtensions_})
        list->bHistoryOff = request_.bClearHistory;
    recent_files_.original.Setup(kMostRecentFiles, file, sDescription_ + "mruOriginal", "-1");
    recent_files_.modified.Setup(kMostRecentFiles, file, sDescription_ + "mruModified", "-1");
    TextFileExtensions_.Setup(kMostExtensions, file, sDescription_ + "TextFileExtensions",
                              "txt,log,csv");
    options_.sSectionName = sDescription_;
    const Status loaded = options_.LoadStateFromFile(file);
    if (!loaded.ok())
        LogMessage(telling_, loaded.failure().reason);
}

void frmCompareFiles::ShutDownAppsIfRequired(const std::string& path) {
    // One worker serves documents and sheets.
    if (ExtensionContains(path, "XLS CSV DOC RTF"))
        loader_.Page().putOptimizeForSpeed(false);
}

void frmCompareFiles::SaveIniFile() {
    if (sDescription_.empty())
        return;
    IniProfile& file = *process_.settings;
    SaveCompareFilesSettings(file, sDescription_, settings_);
    options_.SaveStateToFile(file);
    recent_files_.original.ShutDown();
    recent_files_.modified.ShutDown();
    TextFileExtensions_.ShutDown();
    // Kept: after "/+" the options go to the new file, the lists to the one that they came from.
    const std::shared_ptr<IniProfile> options_file = process_.settings;
    for (IniProfile* written : {options_file.get(), settings_file_.get()}) {
        const Status saved = written == nullptr ? Status::Ok() : written->Flush();
        if (!saved.ok())
            LogMessage(telling_, "The settings cannot be saved: " + saved.failure().reason);
    }
}

void frmCompareFiles::ApplyFont() {
    state_.msFontName = settings_.sFontName;
    state_.msngFontSize = settings_.dFontSize;
    CharFormat format;
    format.font = FontName(settings_.sFontName);
    format.half_points = static_cast<std::int32_t>(settings_.dFontSize * 2);
    for (DocumentEditor* entry :
         {&editors_.rtbOriginal, &editors_.rtbModified, &editors_.rtbOriginalDiff,
          &editors_.rtbModifiedDiff, &editors_.rtbAIODiff, &editors_.rtbScratch})
        entry->editor.SetDefaultFormat(format);
    for (MemoryEditor* summary :
         {&editors_.rtbDeletions, &editors_.rtbAdditions, &editors_.rtbChanges})
        summary->SetDefaultFormat(format);
}

clsRTBDocument& frmCompareFiles::DocumentOf(EditorTarget target) {
    switch (target) {
        case EditorTarget::AllInOneDiff:
            return editors_.rtbAIODiff.document;
        case EditorTarget::OriginalDiffFinal:
            return editors_.rtbOriginalDiffFinal.document;
        case EditorTarget::ModifiedDiffFinal:
            return editors_.rtbModifiedDiffFinal.document;
        case EditorTarget::Original:
            return editors_.rtbOriginal.document;
        case EditorTarget::Modified:
            break;
    }
    return editors_.rtbModified.document;
}

// ---- runs ----

void frmCompareFiles::Refresh() {
    if (mbCompareBusy_)
        return;
    mlCurrentDifference_ = -1;
    mlLastDifference_ = -1;
    RefreshDisplay(options_.bReloadOnRefresh.Data(), true);
}

bool frmCompareFiles::LoadBoth(Reload reload) {
    loader_.Expect(Side::Original, options_.sFileOriginal.Data(), reload);
    for (const Side side : {Side::Modified, Side::Original}) {
        std::string file =
            side == Side::Original ? options_.sFileOriginal.Data() : options_.sFileModified.Data();
        const std::optional<FileStamp> stamp = file_watch_.StampOf(file);
        if (!loader_.LoadSide(side, file, reload))
            return false;
        MarkStale(side);
        edited_[side] = edited_[side] && loader_.bLoadSkipped;
        file_watch_.Watch(side, file, stamp);
    }
    UseViewerFontForText();
    return true;
}

// Text has no font of its own.
void frmCompareFiles::UseViewerFontForText() {
    const bool text = bIsFileTextOrExcel(options_.sFileOriginal.Data(), TextFileExtensions_) ||
                      bIsFileTextOrExcel(options_.sFileModified.Data(), TextFileExtensions_);
    if (!text)
        return;
    for (DocumentEditor* entry :
         {&editors_.rtbOriginal, &editors_.rtbModified, &editors_.rtbOriginalDiffFinal,
          &editors_.rtbModifiedDiffFinal, &editors_.rtbAIODiff, &editors_.rtbOriginalDiff,
          &editors_.rtbModifiedDiff})
        entry->document.ChangeFontAll(state_.msFontName, state_.msngFontSize);
}

bool frmCompareFiles::ReloadFiles() {
    window_.ShowStatus(StatusPanel::Main, Translate("Re-loading files") + "...");
    window_.PumpEvents();
    const PerSide<std::string> files{options_.sFileOriginal.Data(), options_.sFileModified.Data()};
    loader_.WarnIfPPTAndRetainingFormatting(files);
    loader_.WarnIfHTMLAndRetainingFormatting(files);
    loader_.WarnIfXLSAndWordWrapIsTrue(files);
    for (DocumentEditor* entry :
         {&editors_.rtbOriginalDiff, &editors_.rtbModifiedDiff, &editors_.rtbOriginalDiffFinal,
          &editors_.rtbModifiedDiffFinal, &editors_.rtbAIODiff, &editors_.rtbOriginalDiffTemp,
          &editors_.rtbModifiedDiffTemp, &editors_.rtbAIODiffTemp, &editors_.rtbScratch})
        entry->editor.Clear();
    const bool loaded = LoadBoth(Reload::WhenChanged);
    state_.mbRemoveFormatting = options_.bRemoveFormatting.Data();
    return loaded;
}

void frmCompareFiles::RefreshDisplay(bool bReloadFiles, bool bGoToFirstDifference) {
    const TellingRun run(telling_);
    mbAbortRequested_ = false;
    mbCompareBusy_ = true;
    mlStartTick_ = process_.platform.clock->TickMilliseconds();
    if (!process_.gbCommandLineRunning) {
        window_.ShowPleaseWait(true);
        if (!bReloadFiles && editors_.rtbOriginal.editor.Length() == 0 &&
            editors_.rtbModified.editor.Length() == 0)
            window_.ShowMessage(
                Translate("Original and Modified editors are empty. Enter text into the editors by "
                          "typing or pasting in content. If you instead want to load selected "
                          "files for comparison click the 'Compare Options' tab and change the "
                          "'Refresh Options'."),
                Translate("Compare"));
    }
    window_.EnableFilterButtons(false);
    process_.platform.clock->Sleep(10ms);
    bool loaded = true;
    if (bReloadFiles)
        loaded = ReloadFiles();
    else
        state_.mbRemoveFormatting = options_.bRemoveFormatting.Data();
    if (loaded) {
        (state_.view == View::AllInOne ? state_.mbSBSViewFresh : state_.mbAIOViewFresh) = false;
        RunCompare(bGoToFirstDifference);
        window_.EnableFilterButtons(true);
    } else {
        window_.ShowStatus(StatusPanel::Main, Translate("Ready"));
    }
    window_.ShowPleaseWait(false);
    mbCompareBusy_ = false;
    if (mbAbortRequested_)
        ShowAborted();
}

void frmCompareFiles::ShowAborted() {
    window_.ShowStatus(StatusPanel::Main, Translate("Compare Aborted"));
    window_.PumpEvents();
}

RunEnd frmCompareFiles::RunCompare(bool bGoToFirstDifference) {
    const std::int32_t kept_difference = mlCurrentDifference_;
    window_.SetHourglass(true);
    window_.PumpEvents();
    mbAbortRequested_ = false;
    window_.SetAbortVisible(true);
    window_.ShowStatus(StatusPanel::Main, Translate("Comparing") + "...");
    window_.ShowStatus(StatusPanel::Time, "---");
    window_.PumpEvents();
    state_.mbOriginalDiffStale = false;
    state_.mbModifiedDiffStale = false;
    PassContext context = Context();
    const RunCalls calls{[this] { return RunDocumentEngine(); },
                         [this] {
                             PassContext list_context = Context();
                             list_ = DifferenceListLines(list_context);
                             mbUpdatingList_ = true;
                             window_.SetDifferenceList(list_);
                             mbUpdatingList_ = false;
                         }};
    const RunEnd end =
        RunCompareSteps(context, state_, window_, calls, process_.gbCommandLineRunning);
    window_.SetHourglass(false);
    if (end == RunEnd::Finished)
        FinishRun(bGoToFirstDifference, kept_difference);
    else if (end == RunEnd::Aborted)
        window_.ShowStatus(StatusPanel::Main, Translate("Compare Aborted"));
    window_.SetAbortVisible(false);
    return end;
}

void frmCompareFiles::FinishRun(bool bGoToFirstDifference, std::int32_t kept_difference) {
    if (VXMacroDiff_.getDifferenceCount() == 0)
        window_.ShowStatus(StatusPanel::Main,
                           Translate("Compare Completed. No differences detected."));
    const std::uint32_t elapsed = process_.platform.clock->TickMilliseconds() - mlStartTick_;
    mlStartTick_ = elapsed;
    window_.ShowStatus(StatusPanel::Time, sTimeSpan((elapsed + 500) / 1000, TimeSpanStyle::Colons));
    if (bGoToFirstDifference) {
        mlCurrentDifference_ = kept_difference;
        ShowDifference(true);
    }
    PassContext context = Context();
    PutSummaryFooters(context);
    window_.EnableFilter(ViewFilter::Deletions, mlDeletions() > 0);
    window_.EnableFilter(ViewFilter::Additions, mlAdditions() > 0);
    window_.EnableFilter(ViewFilter::Changes, mlChanges() > 0);
    window_.ShowFilter(ViewFilter::All);
    if (options_.bBeepWhenDone.Data())
        process_.platform.sound->Beep();
    window_.FlashFrame();
}

void frmCompareFiles::RefreshDisplayCommandLine(std::int32_t format, BuildViews views,
                                                bool& failed) {
    const TellingRun run(telling_);
    mlStartTick_ = process_.platform.clock->TickMilliseconds();
    if (!process_.gbCommandLineRunning) {
        window_.ShowPleaseWait(true);
        process_.platform.clock->Sleep(10ms);
    }
    window_.ShowStatus(StatusPanel::Detail, Translate("Loading files") + "...");
    state_.view = format == 1 ? View::AllInOne : View::SideBySide;
    state_.show_views = views == BuildViews::Yes;
    window_.ShowView(state_.view);
    window_.PumpEvents();
    failed = !LoadBoth(Reload::WhenChanged);
    state_.mbRemoveFormatting = options_.bRemoveFormatting.Data();
    if (!failed)
        failed = RunCompare(!request_.bExitWhenDone) == RunEnd::Failed;
    if (!process_.gbCommandLineRunning)
        window_.ShowPleaseWait(false);
}

std::shared_ptr<const RichText> frmCompareFiles::TakeRich(Side side) {
    Editor& editor = (side == Side::Original ? editors_.rtbOriginal : editors_.rtbModified).editor;
    return std::make_shared<const RichText>(state_.show_views ? editor.Rich() : editor.TakeRich());
}

void frmCompareFiles::TellBeside(const PerSide<std::shared_ptr<const RichText>>& texts) {
    BesideFound found =
        FindBeside(Compared(), {{&loader_.Beside(Side::Original), &loader_.Beside(Side::Modified)},
                                {texts.original.get(), texts.modified.get()},
                                loader_.FormattingDepth()});
    const bool nothing = Compared().Same() && found.notes.empty();
    VXMacroDiff_.putSameFiles(
        nothing && HaveSameBytes({options_.sFileOriginal.Data(), options_.sFileModified.Data()}));
    VXMacroDiff_.putBeside(std::move(found.notes), found.sentence);
    VXMacroDiff_.putDocumentLooks({LookOf(*texts.original), LookOf(*texts.modified)});
}

Status frmCompareFiles::RunDocumentEngine() {
    struct Watcher : CompareWatcher {
        explicit Watcher(RunMonitor& run) : monitor(run) {}
        bool KeepGoing(double /*part*/) override { return monitor.KeepGoing(); }
        RunMonitor& monitor;
    };
    window_.ShowStatus(StatusPanel::Main, Translate("Compare In Process") + "...");
    window_.SetHourglass(true);
    Watcher watcher(monitor_);
    CompareOptions asked = CompareOptionsOf(options_);
    asked.find_moves = find_moves_;
    VXMacroDiff_.SetOptions(asked);
    const PerSide<std::shared_ptr<const RichText>> texts{TakeRich(Side::Original),
                                                         TakeRich(Side::Modified)};
    const auto text_of = [](const std::shared_ptr<const RichText>& rich) {
        return std::shared_ptr<const std::u16string>(rich, &rich->text);
    };
    Status status =
        VXMacroDiff_.CompareEditors({text_of(texts.original), text_of(texts.modified)}, &watcher);
    if (status.ok())
        TellBeside(texts);
    window_.SetHourglass(false);
    if (!status.ok() && !mbAbortRequested_)
        LogMessage(telling_, status.failure().reason);
    return status;
}

Status frmCompareFiles::EnsureFreshComparison() {
    if (!state_.mbRebuildOriginalParagraphs && !state_.mbRebuildModifiedParagraphs)
        return Status::Ok();
    return RunDocumentEngine();
}

void frmCompareFiles::OptionsChanged() {
    state_.mbOriginalDiffStale = true;
    state_.mbModifiedDiffStale = true;
    MarkStale(Side::Original);
    MarkStale(Side::Modified);
    window_.ShowStatus(StatusPanel::Main, Translate("Diff View not fresh"));
}

void frmCompareFiles::TextChanged(Side side) {
    edited_[side] = true;
    MarkStale(side);
}

void frmCompareFiles::MarkStale(Side side) {
    (side == Side::Original ? state_.mbRebuildOriginalParagraphs
                            : state_.mbRebuildModifiedParagraphs) = true;
}

}  // namespace zorvane
