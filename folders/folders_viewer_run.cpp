// The runs of a Compare Folders viewer.
#include <algorithm>
#include <limits>
#include <utility>

#include "common/base/text_encoding.h"
#include "common/file_utilities.h"
#include "common/log_message.h"
#include "common/process_state.h"
#include "folders/compare_folders_viewer.h"
#include "folders/report_names.h"

namespace zorvane {
namespace {

constexpr std::int32_t kRecordsOfTick = 20;  // a huge result does not freeze a window
// Behind the engine's end; all at once, a million rows would keep a window for 90 ms.
constexpr std::int32_t kRecordsOfLastTick = 100'000;
constexpr std::int32_t kPairsOfTick = 1000;
constexpr std::int32_t kAll = 0;

}  // namespace

void frmCompareDir::BeginCommandLine(std::function<void(clsCompareFileOptions&)> adjust) {
    command_line_ = true;
    adjust_texts_ = std::move(adjust);
}

// A command line has nobody to show it to.
void frmCompareDir::Tell(const std::string& text, const std::string& title) {
    if (command_line_)
        LogMessage(process_, text);
    else
        window_.ShowMessage(text, title);
}

bool frmCompareDir::CheckFolders() {
    const std::string title = Translate("Pick a different directory");
    for (const Side side : kBothSides) {
        const std::string& folder = side == Side::Original ? cbSelectOriginal : cbSelectModified;
        if (bDirectoryExists(folder))
            continue;
        Tell(Translate("Folder") + ":\n\n" + folder + "\n\n" + Translate("does not exist"), title);
        window_.FocusFolder(side);
        return false;
    }
    if (Trim(cbSelectOriginal) == Trim(cbSelectModified)) {
        Tell(Translate("Original and Modified folders are the same"), title);
        window_.FocusFolder(Side::Original);
        return false;
    }
    return true;
}

void frmCompareDir::TakeTexts() {
    const PerSide<std::string> folders{cbSelectOriginal, cbSelectModified};
    moOptions_.sFolderOriginal.SetData(folders.original);
    moOptions_.sFolderModified.SetData(folders.modified);
    for (const Side side : kBothSides)
        recent_folders_[side].AddUniqueItemToCollection(folders[side]);
    if (command_line_) {
        cbFileExt = moOptions_.sExtension.Data();
    } else {
        moOptions_.sExtension.SetData(cbFileExt);
        recent_types_.AddUniqueItemToCollection(cbFileExt);
    }
    moOptions_.sReportFolder.SetData(txtReportFolder);
    moOptions_.bStreamFindings.SetData(!cbDontStreamResults);
    window_.OptionsChanged();
}

void frmCompareDir::SetEngine() {
    engine_.putContentCompare(moOptions_.bContentCompare.Data());
    engine_.putShowOnlyInMaster(moOptions_.bShowOnlyInMaster.Data());
    engine_.putShowOnlyInSource(moOptions_.bShowOnlyInSource.Data());
    engine_.putShowSameInBoth(moOptions_.bShowSameInBothPlaces.Data());
    engine_.putShowDifferentInBoth(moOptions_.bShowDifferentInBothPlaces.Data());
    engine_.putIgnoreDateDifferences(moOptions_.bIgnoreDateDifferences.Data());
    engine_.putSubfolders(moOptions_.bDoSubDirectories.Data());
    engine_.putMasterFolder(moOptions_.sFolderOriginal.Data());
    engine_.putSourceFolder(moOptions_.sFolderModified.Data());
    engine_.putFileTypes(moOptions_.sExtension.Data());
    engine_.FolderOptions().behind_windows = !command_line_;
}

void frmCompareDir::ClearGridbox() {
    mlNextRecord_ = mlNextCheck_ = mlFileRows_ = mlDirRows_ = 0;
    window_.RowsCleared();
}

bool frmCompareDir::RefreshDiffViewer() {
    if (!CheckFolders())
        return false;
    window_.RefreshCaption();
    writing_.Stop();
    renames_.Stop();
    engine_.AbortCompare();
    engine_.ReleaseEngine();
    TakeTexts();
    SetEngine();
    mlStartTick_ = process_.platform.clock->TickMilliseconds();
    ClearGridbox();
    BeginTextChecks();
    rows_.Begin(checks_.get(), moOptions_.bIgnoreDateDifferences.Data());
    {
        const std::lock_guard lock(guard_);
        new_errors_.clear();
    }
    window_.SetHourglass(true);
    window_.ShowStatus(FoldersPanel::Time, "...");
    ended_ = false;
    engine_.StartFolderCompare();
    return true;
}

void frmCompareDir::BeginTextChecks() {
    checks_.reset();
    report_names_.clear();
    if (!moOptions_.bContentCompareText.Data())
        return;
    TextCheckOptions how = ReadTextCheckOptions(process_);
    if (adjust_texts_ && command_line_)
        adjust_texts_(how.options);
    how.log_file = process_.telling.manner.sLogFile;
    report_type_ = static_cast<ReportType>(how.settings.mlReportDefaultFileType_MD);
    msReportExtension_ = ReportExtensionOf(report_type_);
    checks_ = std::make_unique<TextChecks>(process_, std::move(how));
    if (check_cache_)
        checks_->UseCache(*check_cache_);
}

void frmCompareDir::OnFolderCompareStarted() {
    running_ = true;
    errors_ = {Translate("Error Event Messages Received")};
    window_.ErrorsChanged();
    window_.RunChanged();
    window_.ShowStatus(FoldersPanel::Main, Translate("Directory Compare In Process") + "...");
    window_.ShowStatus(FoldersPanel::Time, "00:00:00");
}

void frmCompareDir::OnFolderCompareError(std::int32_t /*code*/, const std::string& message) {
    const std::lock_guard lock(guard_);
    new_errors_.push_back("Error: " + message);
}

void frmCompareDir::TakeErrors() {
    std::vector<std::string> taken;
    {
        const std::lock_guard lock(guard_);
        taken.swap(new_errors_);
    }
    if (taken.empty())
        return;
    for (const std::string& error : taken) {
        if (command_line_)
            LogMessage(process_, error);
    }
    errors_.insert(errors_.end(), taken.begin(), taken.end());
    window_.ErrorsChanged();
}

// With types such as "*.doc *.docx" two files may want a report of one name: the second one's
// carries its extension.
TextPair frmCompareDir::PairToCheck(const FolderRecord& record) {
    TextPair pair = PairOf(record, moOptions_.sExtension.Data());
    if (!moOptions_.bCreateReport.Data())
        pair.report.clear();
    else if (!report_names_.insert(pair.report).second)
        pair = PairOf(record, "*.*");
    return pair;
}

// Ahead of the rows, so that all cores have something to do.
void frmCompareDir::QueueTextChecks() {
    if (!checks_)
        return;
    const FolderScan& scan = engine_.Folders();
    std::int32_t pairs = command_line_ ? std::numeric_limits<std::int32_t>::max() : kPairsOfTick;
    for (const std::int32_t count = engine_.getRecordCount(); mlNextCheck_ < count && pairs > 0;
         ++mlNextCheck_) {
        const ScannedEntry& entry = scan.Entry(static_cast<std::size_t>(mlNextCheck_));
        if (entry.content != PairContent::Different || entry.original != EntryKind::File ||
            entry.modified != EntryKind::File)
            continue;
        checks_->Add(mlNextCheck_,
                     PairToCheck(scan.Record(static_cast<std::size_t>(mlNextCheck_))));
        --pairs;
    }
}

bool frmCompareDir::RowIsReady(std::int32_t record) const {
    return !checks_ || !checks_->Wanted(record) || checks_->Result(record).has_value();
}

void frmCompareDir::WriteFindings(std::int32_t lMaxRecords) {
    QueueTextChecks();
    const std::int32_t count = checks_ ? mlNextCheck_ : engine_.getRecordCount();
    const std::int32_t last =
        lMaxRecords < 1 ? count : std::min(count, mlNextRecord_ + lMaxRecords);
    const std::int32_t first = mlNextRecord_;
    while (mlNextRecord_ < last && RowIsReady(mlNextRecord_)) {
        const ScannedEntry& entry =
            engine_.Folders().Entry(static_cast<std::size_t>(mlNextRecord_));
        ++(entry.IsFolder() ? mlDirRows_ : mlFileRows_);
        ++mlNextRecord_;
    }
    if (mlNextRecord_ > first)
        window_.RowsAdded();
    ShowCounts();
}

void frmCompareDir::ShowCounts() {
    window_.ShowStatus(FoldersPanel::Counts,
                       Translate("Files") + ": " + std::to_string(mlFileRows_) + "  " +
                           Translate("Dirs") + ": " + std::to_string(mlDirRows_));
}

void frmCompareDir::ShowElapsed() {
    const std::uint32_t elapsed = process_.platform.clock->TickMilliseconds() - mlStartTick_;
    constexpr std::uint32_t kSecond = 1000;
    window_.ShowStatus(FoldersPanel::Time, sTimeSpan(elapsed / kSecond, TimeSpanStyle::Colons));
}

void frmCompareDir::ShowTicker() {
    std::string text = Translate("Comparing Folders");
    if (mlNextRecord_ < mlNextCheck_) {
        const FolderRecord record =
            engine_.Folders().Record(static_cast<std::size_t>(mlNextRecord_));
        if (!RowIsReady(mlNextRecord_)) {
            window_.ShowStatus(FoldersPanel::Main, record.Original() + " vs. " + record.Modified());
            return;
        }
    }
    window_.ShowStatus(FoldersPanel::Main, ticker_.sProgressTicker(text + "............"));
}

bool frmCompareDir::Poll() {
    if (!running_) {
        TakeErrors();  // those that came while a run was aborted
        TakeRenamed();
        TakeReport({});
        return false;
    }
    ShowTicker();
    const bool busy = engine_.getBusy();  // asked first: what comes meanwhile is taken next time
    TakeErrors();
    if (!busy)
        WriteFindings(command_line_ ? kAll : kRecordsOfLastTick);
    else if (moOptions_.bStreamFindings.Data())
        WriteFindings(command_line_ ? kAll : kRecordsOfTick);
    else
        QueueTextChecks();
    ShowElapsed();
    if (busy || mlNextRecord_ < engine_.getRecordCount())
        return false;
    EndRun();
    return true;
}

void frmCompareDir::EndRun() {
    running_ = false;
    ended_ = true;
    window_.ShowStatus(FoldersPanel::Main, Translate("Compare Completed"));
    if (moOptions_.bBeepWhenDone.Data())
        process_.platform.sound->Beep();
    window_.FlashFrame();
    window_.SetHourglass(false);
    ShowElapsed();
    LookForRenamed();
    window_.RunChanged();
}

void frmCompareDir::LookForRenamed() {
    if (!settings_.TellRenamed || !ended_ || command_line_)
        return;
    // To read documents takes long: only where their texts are compared anyway.
    renames_.Start(engine_.Folders(),
                   {moOptions_.sFolderOriginal.Data(), moOptions_.sFolderModified.Data()},
                   moOptions_.bContentCompareText.Data() ? check_cache_ : std::nullopt);
}

void frmCompareDir::TakeRenamed() {
    const std::optional<std::vector<RenamedEntry>> found = renames_.Take();
    if (!found || found->empty())
        return;
    rows_.TellRenamed(*found);
    window_.RowsChanged(0, RowCount());
}

void frmCompareDir::Abort() {
    if (writing_.Busy()) {
        writing_.Stop();
        window_.ShowStatus(FoldersPanel::Main, Translate("The report was not written"));
        window_.WritingChanged();
    }
    if (!running_)
        return;
    window_.SetHourglass(false);
    engine_.AbortCompare();
    if (checks_)
        checks_->Abort();
    running_ = false;
    window_.ShowStatus(FoldersPanel::Main, Translate("Compare Aborted"));
    window_.RunChanged();
}

}  // namespace zorvane
