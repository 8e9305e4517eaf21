#include "compare/compare_files_viewer.h"

#include "common/log_message.h"
#include "common/process_state.h"

namespace zorvane {
namespace {

constexpr std::int32_t kMostRecentFiles = 10;
constexpr std::int32_t kMostExtensions = 15;
constexpr const char* kNoFile = "Uninitialized";  // chosen yet

}  // namespace

frmCompareFiles::frmCompareFiles(ProcessState& process, const CommandLineRequest& request,
                                 CompareFilesWindow& window)
    : process_(process),
      telling_(process.messages),
      request_(request),
      window_(window),
      editors_(*process.platform.sound),
      own_conversions_(process),
      tools_(
          editors_, window,
          [this](std::string_view english) { return process_.Translate(english); },
          [this] { return Busy(); }) {
    telling_.manner = process.telling.manner;
    editors_.rtbOriginal.editor.AddObserver(watch_original_);
    editors_.rtbModified.editor.AddObserver(watch_modified_);
}

frmCompareFiles::~frmCompareFiles() {
    EndWork();
    editors_.rtbOriginal.editor.RemoveObserver(watch_original_);
    editors_.rtbModified.editor.RemoveObserver(watch_modified_);
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
    tools_.SetSynchType(settings_.TextSynchType);
    ApplyFont();
}

void frmCompareFiles::ReadIniFile() {
    settings_file_ = process_.settings;
    IniProfile& file = *settings_file_;
    file.Refresh();
    settings_ = DefaultCompareFilesSettings(process_.gsDataFolder);
    ReadCompareFilesSettings(file, sDescription_, settings_);
    for (clsMRU* list : {&recent_files_.original, &recent_files_.modified, &TextFileExtensions_})
        list->bHistoryOff = request_.bClearHistory || process_.bHistoryOff;
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
    if (!Busy())  // a run that goes on needs it
        LetGoOfOffice(*conversions_, path);
}

void frmCompareFiles::SaveIniFile() {
    if (sDescription_.empty())
        return;
    IniProfile& file = *process_.settings;
    settings_.TextSynchType = tools_.Scrolls().TextSynchType();
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
            LogMessage(telling_,
                       Translate("The settings cannot be saved") + ": " + saved.failure().reason);
        if (settings_file_ == options_file)
            break;
    }
}

CharFormat frmCompareFiles::ViewerFormat() const {
    CharFormat format;
    format.font = FontName(settings_.sFontName);
    format.half_points = static_cast<std::int32_t>(settings_.dFontSize * 2);
    return format;
}

void frmCompareFiles::ApplyFont() {
    const CharFormat format = ViewerFormat();
    for (ShownDocument* entry : editors_.Documents())
        entry->editor.SetDefaultFormat(format);
    for (RichDocument* summary :
         {&editors_.rtbDeletions, &editors_.rtbAdditions, &editors_.rtbChanges})
        summary->SetDefaultFormat(format);
}

// ---- states ----

void frmCompareFiles::Close() {
    EndWork();
    window_.CloseDialogs();
    SaveIniFile();
    own_conversions_.SetOfficeStays(false);
}

std::vector<std::string> frmCompareFiles::FileNames() const {
    return {ChosenFile(Side::Original), ChosenFile(Side::Modified)};
}

std::string frmCompareFiles::ChosenFile(Side side) const {
    const std::string& file =
        (side == Side::Original ? options_.sFileOriginal : options_.sFileModified).Data();
    return file == kNoFile ? std::string() : file;
}

void frmCompareFiles::EndWork() {
    closing_ = true;
    if (run_ == nullptr)
        return;
    frmCompareFiles::Abort();  // also from the destructor
    // A run on this thread is further down this very stack; it ends by itself.
    if (!run_->OnWorker())
        return;
    run_->Finish();
    run_.reset();
}

ViewerState frmCompareFiles::State() const {
    if (closing_)
        return ViewerState::Closing;
    if (run_ == nullptr)
        return ViewerState::Idle;
    const RunStep told = run_->Control().Step();
    switch (told == RunStep::None ? run_->first : told) {
        case RunStep::None:
        case RunStep::LoadFiles:
        case RunStep::ReloadFiles:
        case RunStep::ImportPdf:
        case RunStep::ImportSlides:
            return ViewerState::Loading;
        case RunStep::WriteReport:
        case RunStep::LaunchReport:
        case RunStep::Save:
        case RunStep::Print:
            return ViewerState::Reporting;
        case RunStep::PrepareCompare:
        case RunStep::Compare:
        case RunStep::List:
        case RunStep::BeginMarking:
        case RunStep::MarkAllInOne:
        case RunStep::MarkSideBySide:
        case RunStep::MarkSections:
        case RunStep::MarkLetters:
            break;
    }
    return ViewerState::Comparing;
}

bool frmCompareFiles::RunLoads() const {
    return run_ != nullptr &&
           (run_->first == RunStep::LoadFiles || run_->first == RunStep::ReloadFiles);
}

bool frmCompareFiles::IsEnabled(ViewerCommand command) const {
    const ViewerState state = State();
    switch (command) {
        case ViewerCommand::Close:
            return true;
        case ViewerCommand::Abort:
            return run_ != nullptr && !run_->Control().Stopped();
        // A run that loads puts other texts there at its end; one that only compares has texts of
        // its own.
        case ViewerCommand::Edit:
            return state != ViewerState::Closing && !RunLoads();
        case ViewerCommand::ChangeOptions:
            return state != ViewerState::Closing;
        case ViewerCommand::Save:
        case ViewerCommand::Refresh:
        case ViewerCommand::ChangeView:
        case ViewerCommand::Filter:
        case ViewerCommand::Navigate:
        case ViewerCommand::Report:
            break;
    }
    return state == ViewerState::Idle;
}

void frmCompareFiles::OptionsChanged() {
    ++now_.options;
    window_.ShowStatus(StatusPanel::Main, Translate("Diff View not fresh"));
}

void frmCompareFiles::Abort() {
    given_up_ = asking_ > 0;
    if (run_ == nullptr)
        return;
    telling_.Stop();
    run_->Stop();
}

}  // namespace zorvane
