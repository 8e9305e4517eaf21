#include "folders/compare_folders_viewer.h"

#include "common/file_utilities.h"
#include "common/log_message.h"
#include "common/process_state.h"
#include "folders/report_names.h"

namespace zorvane {
namespace {

constexpr std::int32_t kMostRecent = 10;
constexpr std::int32_t kJapanese = 1041;
// So long a report may keep a window waiting; most are there sooner, and nothing flickers.
constexpr std::chrono::milliseconds kPatience{30};

bool SeesJapanese(ProcessState& process) {
    return process.platform.locale->LocaleId() == kJapanese &&
           process.translator.gsLanguage != kEnglish && !process.translator.gsLanguage.empty();
}

}  // namespace

frmCompareDir::frmCompareDir(ProcessState& process, CompareFoldersWindow& window,
                             bool clear_history)
    : process_(process),
      window_(window),
      clear_history_(clear_history),
      moOptions_(process.gsDataFolder),
      rows_(process, engine_),
      renames_(process),
      commands_(process, rows_, window) {
    engine_.putFolderEvents(this);
}

frmCompareDir::~frmCompareDir() {
    engine_.ReleaseEngine();
}

std::string frmCompareDir::Translate(const char* english) const {
    return process_.Translate(english);
}

// ---- settings ----

void frmCompareDir::Setup(const std::string& sDescription, bool load) {
    msFormName_ = sDescription;
    if (load)
        ReadIniFile();
    if (cbFileExt.empty())
        cbFileExt = "*.*";
    errors_ = {Translate("Error Event Messages Received")};
    ClearGridbox();
    window_.ErrorsChanged();
    window_.OptionsChanged();
    window_.RefreshCaption();
}

void frmCompareDir::ReadIniFile() {
    IniProfile& file = *process_.settings;
    file.Refresh();
    settings_ = DefaultCompareFoldersSettings(process_.gsDataFolder, SeesJapanese(process_));
    ReadCompareFoldersSettings(file, msFormName_, ReadPlace::Yes, settings_);
    // Kept: the width of the last column is the same at each start.
    settings_.mlCol5Width_CD = CompareFoldersSettings().mlCol5Width_CD;
    for (clsMRU* list : {&recent_folders_.original, &recent_folders_.modified, &recent_types_})
        list->bHistoryOff = clear_history_ || process_.bHistoryOff;
    recent_folders_.original.Setup(kMostRecent, file, "mruOriginalFolder" + msFormName_, "-1");
    recent_folders_.modified.Setup(kMostRecent, file, "mruModifiedFolder" + msFormName_, "-1");
    recent_types_.Setup(kMostRecent, file, "mruFileExt" + msFormName_, "*.*");
    moOptions_.sSectionName = msFormName_;
    if (const Status loaded = moOptions_.LoadStateFromFile(file); !loaded.ok())
        LogMessage(process_, loaded.failure().reason);
    cbSelectOriginal = moOptions_.sFolderOriginal.Data();
    cbSelectModified = moOptions_.sFolderModified.Data();
    cbFileExt = moOptions_.sExtension.Data();
    txtReportFolder = moOptions_.sReportFolder.Data();
    cbDontStreamResults = !moOptions_.bStreamFindings.Data();
}

void frmCompareDir::SaveIniFile() {
    if (msFormName_.empty())
        return;
    IniProfile& file = *process_.settings;
    SaveCompareFoldersSettings(file, msFormName_, settings_);
    moOptions_.SaveStateToFile(file);
    recent_folders_.original.ShutDown();
    recent_folders_.modified.ShutDown();
    recent_types_.ShutDown();
}

void frmCompareDir::Close() {
    window_.CloseDialogs();
    writing_.Stop();
    renames_.Stop();
    engine_.AbortCompare();
    engine_.ReleaseEngine();
    checks_.reset();
    rows_.Begin(nullptr, false);
    running_ = false;
    SaveIniFile();
}

// ---- what a user ticks ----

void frmCompareDir::ClickContentCompare(bool on) {
    moOptions_.bContentCompare.SetData(on);
    window_.OptionsChanged();
}

void frmCompareDir::ClickContentCompareText(bool on) {
    SetContentCompareText(moOptions_, on);
    window_.OptionsChanged();
}

void frmCompareDir::ClickShowDifferentInBothPlaces(bool on) {
    SetShowDifferentInBothPlaces(moOptions_, on);
    window_.OptionsChanged();
}

void frmCompareDir::ClickCreateReport(bool on) {
    moOptions_.bCreateReport.SetData(on);
    if (on && !settings_.bNeverShowWhenCreateChecked)
        settings_.bNeverShowWhenCreateChecked = window_.ShowNotice(
            Translate("When the 'Create REPORT' option is chosen, double clicking on a file name "
                      "will open the report.  However, you may still open the files to be compared "
                      "within ‘Zorvane’ by using the right mouse button."),
            Translate("Create Report"));
    window_.OptionsChanged();
}

void frmCompareDir::ClickTellRenamed(bool on) {
    settings_.TellRenamed = on;
    renames_.Stop();
    rows_.TellRenamed({});
    if (on)
        LookForRenamed();
    window_.RowsChanged(0, RowCount());
    window_.OptionsChanged();
}

void frmCompareDir::ToggleLegend() {
    settings_.ShowLegend = !settings_.ShowLegend;
    window_.OptionsChanged();
}

void frmCompareDir::Browse(Side side) {
    std::string& box = side == Side::Original ? cbSelectOriginal : cbSelectModified;
    const std::string picked = window_.BrowseForFolder(box);
    if (picked.empty())
        return;
    box = picked;
    window_.OptionsChanged();
    window_.RefreshCaption();
}

void frmCompareDir::SelectReportFolder() {
    const std::string picked = window_.BrowseForFolder(txtReportFolder);
    if (!picked.empty())
        txtReportFolder = picked;
    window_.OptionsChanged();
}

void frmCompareDir::SelectReportFile() {
    const std::string picked = window_.PickReportFile(Translate("Pick Find CSV Report File"),
                                                      settings_.txtDefaultReportCSV);
    if (!picked.empty())
        settings_.txtDefaultReportCSV = picked;
    window_.OptionsChanged();
}

void frmCompareDir::Swap() {
    std::swap(cbSelectOriginal, cbSelectModified);
    window_.OptionsChanged();
    RefreshDiffViewer();
}

std::string frmCompareDir::Caption() {
    const std::string number = msFormName_.substr(0, msFormName_.find('_'));
    if (cbSelectOriginal.empty() || cbSelectModified.empty())
        return "(" + number + ") " + Translate("Compare Folders");
    return "(" + number + ") " + cbSelectOriginal + " vs. " + cbSelectModified;
}

std::string frmCompareDir::FileTypesLabel() {
    return Translate("File Types:") + " " + Translate("(i.e. ") + " \"*.DOC\" " +
           Translate("or multiple") + " \"*.TXT *.XLS\")";
}

std::int32_t frmCompareDir::ColumnWidth(FolderColumn column) const {
    switch (column) {
        case FolderColumn::Original:
            return settings_.mlCol1Width_CD;
        case FolderColumn::Modified:
            return settings_.mlCol2Width_CD;
        case FolderColumn::Contents:
            return settings_.mlCol3Width_CD;
        case FolderColumn::Size:
            return settings_.mlCol4Width_CD;
        case FolderColumn::Date:
            break;
    }
    return moOptions_.bIgnoreDateDifferences.Data() ? 0 : settings_.mlCol5Width_CD;
}

// ---- rows and reports ----

void frmCompareDir::OpenRow(std::int32_t row) {
    if (moOptions_.bCreateReport.Data())
        LaunchReport(row);
    else
        commands_.CompareSelectedFiles(row, false);
}

void frmCompareDir::LaunchReport(std::int32_t row) {
    const std::optional<FolderRecord> record = row < 0 ? std::nullopt : rows_.Record(row);
    if (!record || record->IsFile != 1)
        return;
    for (const std::string& path : {record->Original(), record->Modified()}) {
        if (!bFileExists(path)) {
            commands_.TellMissing(path);
            return;
        }
    }
    const std::optional<TextCheck> check = checks_ ? checks_->Result(row) : std::nullopt;
    const std::string report = check && !check->report.empty()
                                   ? check->report
                                   : PairOf(*record, moOptions_.sExtension.Data()).report;
    // A pair whose words are the same has none.
    if (!bFileExists(report)) {
        commands_.TellMissing(report);
        return;
    }
    if (const Status opened = process_.platform.shell->Open(report); !opened.ok())
        window_.ShowMessage(opened.failure().reason, Translate("Error"));
}

TextPair frmCompareDir::PairOf(const FolderRecord& record, const std::string& types) const {
    const ReportNaming naming{moOptions_.sReportFolder.Data(), moOptions_.sFolderOriginal.Data(),
                              types, msReportExtension_};
    return {{record.Original(), record.Modified()},
            ReportFileName(naming, record.Original()),
            report_type_};
}

// ---- the report ----

void frmCompareDir::mnuReportTabDelimitedFile() {
    writing_.Begin(ReportFile(settings_.txtDefaultReportCSV),
                   [report = MakeReport()](const std::string& file, const WritingWatch& watch) {
                       return WriteFolderReport(report, file, watch);
                   });
    window_.WritingChanged();
    TakeReport(kPatience);
}

void frmCompareDir::TakeReport(std::chrono::milliseconds patience) {
    if (!writing_.Busy())
        return;
    const std::optional<ReportWriting::Written> written = writing_.Take(patience);
    if (!written) {
        window_.ShowStatus(FoldersPanel::Main, Translate("Creating Report") + "... " +
                                                   std::to_string(writing_.Percent()) + " %");
        return;
    }
    window_.ShowStatus(FoldersPanel::Main, Translate("Compare Completed"));
    window_.WritingChanged();
    Status end = written->status;
    if (end.ok())
        end = process_.platform.shell->EditText(written->file);
    if (!end.ok())
        window_.ShowMessage(end.failure().reason, Translate("Error"));
}

void frmCompareDir::FinishWriting() {
    while (writing_.Busy())
        TakeReport(kPatience);
}

// Its folder is made where it is not there.
std::string frmCompareDir::ReportFile(const std::string& named) const {
    std::string file = ReplaceDateTokens(named, process_.platform.clock->Now());
    const std::string folder = sGetFolderPart(file);
    if (!folder.empty() && !bDirectoryExists(folder))
        MakeDirectoryTree(folder);
    return file;
}

FolderReport frmCompareDir::MakeReport() const {
    FolderReport report{engine_, Translate("ERR") + ": " + Translate("File"), {}};
    if (!checks_)
        return report;
    report.words_differ = [&checks = *checks_](std::int32_t record) -> std::optional<bool> {
        const std::optional<TextCheck> check = checks.Result(record);
        if (!check || check->end != TextCheckEnd::Compared)
            return std::nullopt;
        return check->Differences() > 0;
    };
    return report;
}

bool frmCompareDir::CreateTabDelimitedReport(std::string& sFile) {
    sFile = ReportFile(sFile);
    const Status written = WriteFolderReport(MakeReport(), sFile);
    if (!written.ok())
        Tell(Translate("Error") + " # " + written.failure().reason, Translate("Error"));
    return written.ok();
}

}  // namespace zorvane
