#include "reports/report_driver.h"

#include <sys/stat.h>
#include <unistd.h>

#include "common/base/text_encoding.h"
#include "common/file_utilities.h"
#include "common/log_message.h"
#include "common/platform/native_path.h"
#include "common/process_state.h"
#include "common/string_utilities.h"
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

ReportMark MarkOf(const MarkStyle& style) {
    return {style.ForeColor, style.BackColor,  style.bBold,
            style.bItalic,   style.bUnderline, style.bStrikeout};
}

void Log(ReportSource& source, const std::string& text) {
    LogMessage(source.Process(), text);
}

void LogTarget(ReportSource& source, const char* what, const std::string& file) {
    ProcessState& process = source.Process();
    Log(source, process.Translate(what) + ": " + file + "\r\n\r\n" + process.Translate(kCheckPath));
}

void LogResult(ReportSource& source, ReportResult result, const std::string& file) {
    if (result == ReportResult::TargetNotCreated) {
        LogTarget(source, "Unable to create target file", file);
        return;
    }
    for (const ResultRow& row : kResults) {
        if (row.result == result)
            Log(source, source.Process().Translate(row.words));
    }
}

bool IsInput(ReportSource& source, const std::string& file) {
    const clsCompareFileOptions& options = source.ReportOptions();
    return IsSameFile(file, options.sFileOriginal.Data()) ||
           IsSameFile(file, options.sFileModified.Data());
}

// False when the folder of the report cannot be had; the reason has been told.
bool PrepareFolder(ReportSource& source, const std::string& file) {
    std::string folder(ParentOf(file));
    if (folder.empty())
        folder = ".";
    if (!bDirectoryExists(folder))
        MakeDirectoryTree(folder);
    if (!bDirectoryExists(folder)) {
        LogTarget(source, "Unable to create target folder", file);
        return false;
    }
    struct stat facts {};
    const std::string native = NativePath(folder);
    const bool read_only = stat(native.c_str(), &facts) == 0 && access(native.c_str(), W_OK) != 0;
    // A target such as a device can be written in a folder that cannot.
    if (read_only && !bFileExists(file)) {
        Log(source, source.Process().Translate("Report folder is read only. Change the report "
                                               "folder in the 'Report Options' tab."));
        return false;
    }
    return true;
}

ReportResult WriteDocument(ReportSource& source, const std::string& file) {
    const Status saved = source.SaveDocumentReport(file);
    if (saved.ok())
        return ReportResult::Ok;
    Log(source,
        source.Process().Translate("Unable to save report") + ": " + saved.failure().reason);
    return ReportResult::TargetNotWritten;
}

ReportResult WriteEngineReport(ReportSource& source, const std::string& file, ReportType type,
                               std::int32_t style) {
    VestrelX& engine = source.Engine();
    if (const std::string title = source.CommandLineTitle(); !title.empty())
        engine.putReportTitle(title);
    const Status run = source.RunDocumentEngine();
    if (!run.ok())
        return ReportResult::MasterNotLoaded;
    engine.putDoubleByteLocale(source.Process().translator.gbDoubleByteLocale);
    engine.putReportLook(ReportLookOf(source.ReportOptions()));
    return engine.CreateEngineReport(file, type, style);
}

// What is different between the four default reports.
struct DefaultReport {
    ReportType type;
    std::string CompareFilesSettings::*file;
    bool opened_as_text;
    bool gives_result;
};
constexpr DefaultReport kDefaults[] = {
    {ReportType::Html, &CompareFilesSettings::msgReportFileHTM_MD, false, true},
    {ReportType::Text, &CompareFilesSettings::msgReportFileTXT_MD, true, false},
    {ReportType::Csv, &CompareFilesSettings::msgReportFileCSV_MD, false, false},
    {ReportType::Document, &CompareFilesSettings::msgReportFileDOC_MD, false, true},
};

void Open(ReportSource& source, const DefaultReport& report, const std::string& file) {
    const std::string upper = ToUpper(file);
    const bool html_name =
        upper.find("DOC") != std::string::npos || upper.find("HTM") != std::string::npos;
    if (report.type == ReportType::Html && !html_name)
        return;
    ShellOpen& shell = *source.Process().platform.shell;
    IgnoreFailure(report.opened_as_text ? shell.EditText(file) : shell.Open(file),
                  "the report is written and its name known");
}

// A word-processor report that could not be written goes to a temporary name, and later ones too.
ReportResult FallBack(ReportSource& source, const DefaultReport& report, Launch launch) {
    std::string temporary =
        GetTempNameWithDocExtension(*source.Process().platform.temp_files, "ZV_");
    const ReportResult result = CreateReport(source, temporary, report.type, 0);
    ProcessState& process = source.Process();
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
    source.ShowReportStatus(process.Translate("Launching Report"));
    if (launch == Launch::Yes)
        Open(source, report, temporary);
    return result;
}

void SetTitles(ReportSource& source, ReportType type) {
    VestrelX& engine = source.Engine();
    const CompareFilesSettings& settings = source.ReportSettings();
    engine.putMasterTitle(source.ReportOptions().sFileOriginal.Data());
    engine.putSourceTitle(source.ReportOptions().sFileModified.Data());
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

ReportLook ReportLookOf(const clsCompareFileOptions& options) {
    ReportLook look;
    look.addition = MarkOf(StyleFor(options, Mark::Addition));
    look.deletion = MarkOf(StyleFor(options, Mark::Deletion));
    look.change_original = MarkOf(StyleFor(options, Mark::ChangeOriginal));
    look.change_modified = MarkOf(StyleFor(options, Mark::ChangeModified));
    look.similar_sub_paragraph_marks = options.bShowSubParagraphChangesSimilarly.Data();
    look.by_character = options.bCompareByCharacter.Data();
    look.filter_sections = options.bIgnoreRegExOnBothPasses.Data();
    return look;
}

ReportResult CreateReport(ReportSource& source, std::string& file, ReportType type,
                          std::int32_t style) {
    file = ReplaceDateTokens(file, source.Process().platform.clock->Now());
    if (IsInput(source, file)) {
        Log(source, file + ": this is one of the two compared files; the report is not written");
        return type == ReportType::Document ? ReportResult::TargetNotWritten
                                            : ReportResult::TargetNotCreated;
    }
    if (!PrepareFolder(source, file))
        return ReportResult::TargetNotWritten;
    if (type == ReportType::Document)
        return WriteDocument(source, file);
    const ReportResult result = WriteEngineReport(source, file, type, style);
    LogResult(source, result, file);
    return result;
}

ReportResult CreateReportGUI(ReportSource& source, Launch launch, std::string file) {
    ProcessState& process = source.Process();
    CompareFilesSettings& settings = source.ReportSettings();
    source.ShowReportStatus(process.Translate("Creating Report"));
    const std::int32_t wanted = settings.mlReportDefaultFileType_MD;
    ReportResult result = ReportResult::Ok;
    for (const DefaultReport& report : kDefaults) {
        if (static_cast<std::int32_t>(report.type) != wanted)
            continue;
        if (report.type == ReportType::Document)
            source.BuildAllInOneView();
        SetTitles(source, report.type);
        if (file.empty())
            file = settings.*report.file;
        const std::int32_t style = settings.mlReportDefaultStyle_MD == 1 ? 1 : 2;
        const ReportResult written =
            CreateReport(source, file, report.type, report.type == ReportType::Html ? style : 0);
        if (written == ReportResult::Ok) {
            source.ShowReportStatus(process.Translate("Launching Report"));
            if (launch == Launch::Yes)
                Open(source, report, file);
        }
        if (report.gives_result)
            result = written;
        if (report.type == ReportType::Document && written == ReportResult::TargetNotWritten)
            result = FallBack(source, report, launch);
    }
    source.ShowReportStatus(process.Translate("Ready"));
    return result;
}

}  // namespace zorvane
