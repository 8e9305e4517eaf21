#include "reports/report_driver.h"

#include <array>
#include <ctime>
#include <filesystem>
#include <sys/stat.h>
#include <unistd.h>

#include "common/base/text_encoding.h"
#include "common/file_utilities.h"
#include "common/log_message.h"
#include "common/path_tokens.h"
#include "common/platform/native_path.h"
#include "common/process_state.h"
#include "common/string_utilities.h"
#include "common/text_privacy.h"
#include "options/marking_styles.h"

namespace zorvane {
namespace {

struct ResultRow {
    ReportResult result;
    const char* words;
};
constexpr ResultRow kResults[] = {
    {ReportResult::Aborted, "Compare was aborted, no report can be generated"},
    {ReportResult::Busy,
     "Compare is in progress, no report can be generated until compare is complete"},
    {ReportResult::MasterNotLoaded, "Unable to load master file for comparison"},
    {ReportResult::SourceNotLoaded, "Unable to load source file for comparison"},
};
constexpr const char* kCheckPath = "Check to make sure path exists in the 'Report Options' tab";

void Log(ReportSource& source, const std::string& text) {
    LogMessage(source.Telling(), text);
}

// The system's own words, if any, come on a line behind.
void LogTarget(ReportSource& source, const char* what, const std::string& file,
               const std::string& reason) {
    ProcessState& process = source.Process();
    std::string text =
        process.Translate(what) + ": " + file + "\r\n\r\n" + process.Translate(kCheckPath);
    if (!reason.empty())
        text += "\r\n" + reason;
    Log(source, text);
}

void LogResult(ReportSource& source, ReportResult result, const std::string& file) {
    const Status& status = source.Engine().getReportStatus();
    const std::string reason = status.ok() ? std::string() : status.failure().reason;
    if (result == ReportResult::TargetNotCreated)
        LogTarget(source, "Unable to create target file", file, reason);
    if (result == ReportResult::NotCompared && !reason.empty())
        Log(source, reason);
    TellReportResult(source.Process(), source.Telling(), result);
}

bool IsInput(ReportSource& source, const std::string& file) {
    const clsCompareFileOptions& options = source.ReportOptions();
    return IsSameFile(file, options.sFileOriginal.Data()) ||
           IsSameFile(file, options.sFileModified.Data());
}

// A folder that nobody may write to, or not this user; root is held back by the first alone.
bool IsReadOnly(const std::string& native_folder) {
    struct stat facts {};
    constexpr mode_t kAnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
    return stat(native_folder.c_str(), &facts) == 0 &&
           ((facts.st_mode & kAnyWrite) == 0 || access(native_folder.c_str(), W_OK) != 0);
}

// A device or a FIFO can be written in a folder that cannot.
bool IsSpecialFile(const std::string& file) {
    struct stat facts {};
    return stat(NativePath(file).c_str(), &facts) == 0 && !S_ISREG(facts.st_mode) &&
           !S_ISDIR(facts.st_mode);
}

// The folder that the report will really stand in, behind links.
std::filesystem::path FolderOf(const std::string& file) {
    const std::filesystem::path native = BehindLinks(NativePath(file));
    return native.has_parent_path() ? native.parent_path() : ".";
}

// False when the folder of the report cannot be had; the reason has been told.
bool PrepareFolder(ReportSource& source, const std::string& file) {
    const std::filesystem::path native = FolderOf(file);
    std::error_code error;
    std::filesystem::create_directories(native, error);
    std::error_code no_folder;
    if (!std::filesystem::is_directory(native, no_folder)) {
        const std::string reason = error ? error.message() : "Not a directory";
        LogTarget(source, "Unable to create target folder", file, native.string() + ": " + reason);
        return false;
    }
    if (IsReadOnly(native) && !IsSpecialFile(file)) {
        Log(source, source.Process().Translate("Report folder is read only. Change the report "
                                               "folder in the 'Report Options' tab."));
        return false;
    }
    return true;
}

// As private as what it tells of.
std::uint32_t ModeOf(ReportSource& source) {
    const clsCompareFileOptions& options = source.ReportOptions();
    return ModeForTextOf(source.Telling(),
                         {options.sFileOriginal.Data(), options.sFileModified.Data()});
}

ReportResult Written(ReportSource& source, const Status& saved) {
    if (saved.ok())
        return ReportResult::Ok;
    if (!KeepGoing(source.Watcher()))
        return ReportResult::Aborted;
    Log(source,
        source.Process().Translate("Unable to save report") + ": " + saved.failure().reason);
    return ReportResult::TargetNotWritten;
}

ReportResult WriteEngineReport(ReportSource& source, const std::string& file, ReportType type,
                               std::int32_t style) {
    VestrelX& engine = source.Engine();
    if (const std::string title = source.CommandLineTitle(); !title.empty())
        engine.putReportTitle(title);
    engine.putDoubleByteLocale(source.Process().translator.gbDoubleByteLocale);
    engine.putReportMode(ModeOf(source));
    engine.putReportLook(ReportLookOf(source.ReportOptions()));
    return engine.CreateEngineReport(file, type, style, source.Watcher());
}

ReportResult WriteDocument(ReportSource& source, const std::string& file) {
    return Written(source, source.SaveDocumentReport(file, ModeOf(source)));
}

// What is different between the four default reports.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): four, read in this order
struct DefaultReport {
    ReportType type;
    std::string CompareFilesSettings::*file;
    bool opened_by_office;
    bool gives_result;
};
constexpr DefaultReport kDefaults[] = {
    {ReportType::Html, &CompareFilesSettings::msgReportFileHTM_MD, false, true},
    {ReportType::Text, &CompareFilesSettings::msgReportFileTXT_MD, false, false},
    {ReportType::Csv, &CompareFilesSettings::msgReportFileCSV_MD, true, false},
    {ReportType::Document, &CompareFilesSettings::msgReportFileDOC_MD, true, true},
};

// `named` is what the report was to be called, `file` what it is.
void Open(ReportSource& source, const DefaultReport& report, const std::string& named,
          const std::string& file) {
    if (report.opened_by_office)
        source.ShutDownAppsIfRequired(named);
    const std::string upper = ToUpper(file);
    const bool html_name =
        upper.find("DOC") != std::string::npos || upper.find("HTM") != std::string::npos;
    if (report.type == ReportType::Html && !html_name)
        return;
    IgnoreFailure(OpenReport(*source.Process().platform.shell, report.type, file),
                  "the report is written and its name known");
}

// A word-processor report that could not be written goes to a temporary name, and later ones too.
ReportResult FallBack(ReportSource& source, const DefaultReport& report, Launch launch,
                      const std::string& failed) {
    ProcessState& process = source.Process();
    TempFiles& temp_files = *process.platform.temp_files;
    // Not in the private folder, which goes with the process: the setting names this file later.
    const Result<std::string> folder = temp_files.LastingFolder();
    std::string temporary =
        sMakeTempFileName(temp_files, folder.ok() ? folder.value() : "", "ZV_", "DOC");
    const ReportResult result = CreateReport(source, temporary, report.type, 0);
    if (result != ReportResult::Ok) {
        source.ShowReportMessage(
            process.Translate("Unable to save report") + ": " +
                source.ReportSettings().msgReportFileDOC_MD + "\r\n\r\n" +
                process.Translate("The file may already be open (sharing violation), use a "
                                  "temporary file name?"),
            process.Translate("Report Creation Error"));
        return result;
    }
    source.ReportSettings().msgReportFileDOC_MD = temporary;
    source.TellStep(RunStep::LaunchReport);
    if (launch == Launch::Yes)
        Open(source, report, failed, temporary);
    return result;
}

void SetTitles(ReportSource& source, ReportType type) {
    VestrelX& engine = source.Engine();
    const CompareFilesSettings& settings = source.ReportSettings();
    engine.putMasterTitle(source.ReportOptions().sFileOriginal.Data());
    engine.putSourceTitle(source.ReportOptions().sFileModified.Data());
    engine.putFileDates({ReportDateOf(source.ReportOptions().sFileOriginal.Data()),
                         ReportDateOf(source.ReportOptions().sFileModified.Data())});
    engine.putHighDetailSummary(settings.bReportHTMLShowHighDetailSummary);
    if (type != ReportType::Html)
        return;
    engine.putReportTitle(settings.msgReportTitleHTM_MD);
    if (!settings.txtReportMasterTitleHTML.empty())
        engine.putMasterTitle(settings.txtReportMasterTitleHTML);
    if (!settings.txtReportSourceTitleHTML.empty())
        engine.putSourceTitle(settings.txtReportSourceTitleHTML);
}

}  // namespace

std::string ReportDateOf(const std::string& file) {
    struct stat facts {};
    struct tm local {};
    if (stat(NativePath(file).c_str(), &facts) != 0 || !S_ISREG(facts.st_mode) ||
        localtime_r(&facts.st_mtime, &local) == nullptr)
        return {};
    std::array<char, 32> text{};
    const std::size_t size = std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M", &local);
    return {text.data(), size};
}

void TellReportResult(ProcessState& process, RunTelling& telling, ReportResult result) {
    for (const ResultRow& row : kResults) {
        if (row.result == result)
            LogMessage(telling, process.Translate(row.words));
    }
}

ReportLook ReportLookOf(const clsCompareFileOptions& options) {
    ReportLook look;
    look.addition = StyleFor(options, Mark::Addition);
    look.deletion = StyleFor(options, Mark::Deletion);
    look.change_original = StyleFor(options, Mark::ChangeOriginal);
    look.change_modified = StyleFor(options, Mark::ChangeModified);
    look.similar_sub_paragraph_marks = options.bShowSubParagraphChangesSimilarly.Data();
    return look;
}

namespace {

// Where a report may be written; otherwise why not.
ReportResult Prepare(ReportSource& source, std::string& file, ReportType type) {
    Platform& platform = source.Process().platform;
    file = ReplaceDateTokens(sExpandPathTokens(*platform.folders, file), platform.clock->Now());
    if (IsInput(source, file)) {
        Log(source, file + ": this is one of the two compared files; the report is not written");
        return type == ReportType::Document ? ReportResult::TargetNotWritten
                                            : ReportResult::TargetNotCreated;
    }
    return PrepareFolder(source, file) ? ReportResult::Ok : ReportResult::TargetNotWritten;
}

}  // namespace

ReportResult CreateReport(ReportSource& source, std::string& file, ReportType type,
                          std::int32_t style) {
    if (const ReportResult ready = Prepare(source, file, type); ready != ReportResult::Ok)
        return ready;
    if (type == ReportType::Document)
        return WriteDocument(source, file);
    const ReportResult result = WriteEngineReport(source, file, type, style);
    LogResult(source, result, file);
    return result;
}

namespace {

ReportResult CreateTracked(ReportSource& source, std::string& file) {
    file = source.TrackedName(file);
    const ReportResult ready = Prepare(source, file, ReportType::Document);
    return ready == ReportResult::Ok ? Written(source, source.SaveTrackedReport(file)) : ready;
}

ReportResult CreateDefaultReport(ReportSource& source, const DefaultReport& report, Launch launch,
                                 std::string file) {
    CompareFilesSettings& settings = source.ReportSettings();
    SetTitles(source, report.type);
    if (file.empty())
        file = settings.*report.file;
    const bool tracked = report.type == ReportType::Document && settings.bReportDOC_Tracked;
    const std::int32_t style = settings.mlReportDefaultStyle_MD == 1 ? 1 : 2;
    const ReportResult written =
        tracked
            ? CreateTracked(source, file)
            : CreateReport(source, file, report.type, report.type == ReportType::Html ? style : 0);
    if (written == ReportResult::Ok) {
        source.TellStep(RunStep::LaunchReport);
        if (launch == Launch::Yes)
            Open(source, report, file, file);
    }
    if (report.type == ReportType::Document && !tracked &&
        written == ReportResult::TargetNotWritten)
        return FallBack(source, report, launch, file);
    return report.gives_result ? written : ReportResult::Ok;
}

}  // namespace

ReportResult CreateReportGUI(ReportSource& source, Launch launch, const std::string& file) {
    source.TellStep(RunStep::WriteReport);
    const std::int32_t wanted = source.ReportSettings().mlReportDefaultFileType_MD;
    ReportResult result = ReportResult::Ok;
    for (const DefaultReport& report : kDefaults) {
        if (static_cast<std::int32_t>(report.type) == wanted)
            result = CreateDefaultReport(source, report, launch, file);
    }
    return result;
}

Status OpenReport(ShellOpen& shell, ReportType type, const std::string& file, TableOpens table) {
    const bool text = type == ReportType::Text ||
                      (type == ReportType::Csv && table == TableOpens::InTheTextEditor);
    return text ? shell.EditText(file) : shell.Open(file);
}

}  // namespace zorvane
