#include "app/compare_runner.h"

#include <algorithm>

#include "app/command_line_request.h"
#include "app/input_file.h"
#include "common/log_message.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "common/platform/terminal.h"
#include "common/text_privacy.h"
#include "reports/json_report.h"
#include "reports/report_driver.h"
#include "reports/terminal_report.h"

namespace zorvane {

CompareRunner::CompareRunner(Platform& platform, const CompareCommand& command)
    : command_(command),
      process_(platform),
      window_(!command.quiet && IsTerminal(Stream::Error)),
      viewer_(process_, CommandLineRequest(), window_) {}

void CompareRunner::KeepMessages() {
    process_.messages.WaitForWindow([] {});
}

std::vector<std::string> CompareRunner::TakeMessages() {
    std::vector<std::string> messages;
    process_.messages.ShowWaiting(
        [&messages](const std::string& message) { messages.push_back(message); });
    return messages;
}

CompareStatus CompareRunner::Run() {
    process_.telling.manner.sLogFile = command_.load.log_file;
    process_.bWithoutSandbox = command_.load.no_sandbox;
    for (const Status& step : {BeginCommand(process_, command_.load.settings_file), TakeSides()}) {
        if (!step.ok())
            return Trouble(step);
    }
    BeginCommandLine();
    viewer_.Setup(kFirstViewer, true);
    viewer_.LookForMoves(!command_.no_moves);
    viewer_.PresentDocumentReport({Label(Side::Original), Label(Side::Modified)});
    if (const Status set = SetOptions(); !set.ok())
        return Trouble(set);
    BeginRedline();
    bool failed = false;
    viewer_.RefreshDisplayCommandLine(Format(), WantsDocument() ? BuildViews::Yes : BuildViews::No,
                                      failed);
    window_.Clear();
    if (failed || viewer_.SlidesFailed() || !HasText())
        return CompareStatus::Trouble;
    compared_ = true;
    if (!WriteReports() || !WriteRedline() || !WriteJson() || !Print())
        return CompareStatus::Trouble;
    return viewer_.Compared().Same() && !DiffersBeside() ? CompareStatus::Same
                                                         : CompareStatus::Different;
}

void CompareRunner::BeginCommandLine() {
    CommandLineRequest request;
    request.bExitWhenDone = true;
    request.sReportTitle = command_.title;
    viewer_.BeginCommandLine(request, true);
    viewer_.Telling().manner = process_.telling.manner;
}

CompareStatus CompareRunner::Trouble(const Status& status) {
    window_.Clear();
    LogMessage(process_, status.failure().reason);
    return CompareStatus::Trouble;
}

// In a kind that was asked for.
bool CompareRunner::DiffersBeside() const {
    const std::vector<BesideNote>& notes = viewer_.Compared().beside;
    return std::any_of(notes.begin(), notes.end(), [this](const BesideNote& note) {
        return std::any_of(command_.also.begin(), command_.also.end(),
                           [&](BesideKind kind) { return NameOf(kind).option == note.kind; });
    });
}

// A side without any text would be called unchanged, or wholly deleted: neither is known.
bool CompareRunner::HasText() {
    bool good = true;
    for (const Side side : kBothSides) {
        // Tracked changes are of pictures and formulas, too.
        if (redline_ && IsRedlineName(files_[side]))
            continue;
        const std::string& reason = viewer_.NoTextReasons()[side];
        good = Report(reason.empty() ? Status::Ok() : Status(Failure{reason})) && good;
    }
    return good;
}

Status CompareRunner::TakeSides() {
    for (const Side side : kBothSides) {
        const std::string& given = side == Side::Original ? command_.original : command_.modified;
        Result<std::string> file = InputFile(process_, given);
        if (!file.ok())
            return file.failure();
        files_[side] = std::move(file).value();
    }
    if (!command_.quiet && IsSameFile(files_.original, files_.modified))
        LogMessage(process_, files_.original + ": both sides are the same file");
    return Status::Ok();
}

Status CompareRunner::SetOptions() {
    clsCompareFileOptions& options = viewer_.Options();
    options.sFileOriginal.SetData(files_.original);
    options.sFileModified.SetData(files_.modified);
    TurnOn(command_.ignore_case, options.bIgnoreCase);
    TurnOn(command_.ignore_whitespace, options.bIgnoreWhitespace);
    TurnOn(command_.ignore_blank_lines, options.bIgnoreEmptyLines);
    TurnOn(command_.letters, options.bCompareByCharacter);
    TurnOn(command_.faster, options.bCompareFaster);
    TurnOn(command_.larger_sections, options.bShowChangesInLargerSections);
    TurnOn(command_.bracket.has_value(), options.bUseLineBracket);
    if (command_.bracket)
        options.lLineBracket.SetData(*command_.bracket);
    SetExpressions(options);
    if (Status loads = ApplyLoadOptions(command_.load, SetBy::Compare, options, viewer_.Settings());
        !loads.ok())
        return loads;
    return VestrelX::CheckFilterExpression(options.sIgnoreRegularExpression.Data());
}

void CompareRunner::SetExpressions(clsCompareFileOptions& options) {
    std::string joined;
    for (const std::string& expression : command_.ignore_expressions)
        joined += (joined.empty() ? "" : "@@") + expression;
    if (joined.empty())
        return;
    options.sIgnoreRegularExpression.SetData(joined);
    // Who leaves something out on a command line wants it left out of the words too.
    options.bIgnoreRegExOnBothPasses.SetData(true);
}

bool CompareRunner::WantsDocument() const {
    return std::any_of(
        command_.reports.begin(), command_.reports.end(),
        [](const ReportTarget& report) { return report.type == ReportType::Document; });
}

// A word-processor report is made from the all-in-one text.
std::int32_t CompareRunner::Format() const {
    return static_cast<std::int32_t>(WantsDocument() ? CompareView::AllInOne : command_.view);
}

std::string CompareRunner::Label(Side side) const {
    const std::string& label =
        side == Side::Original ? command_.original_label : command_.modified_label;
    const std::string& given = side == Side::Original ? command_.original : command_.modified;
    if (!label.empty())
        return label;
    return given == "-" ? "standard input" : given;
}

// Of what came through a pipe there is only a copy, which has no date of its own.
std::string CompareRunner::DateOf(Side side) const {
    const std::string& given = side == Side::Original ? command_.original : command_.modified;
    return files_[side] == given ? ReportDateOf(given) : std::string();
}

bool CompareRunner::WriteReports() {
    VestrelX& engine = viewer_.VXMacroDiff();
    engine.putMasterTitle(Label(Side::Original));
    engine.putSourceTitle(Label(Side::Modified));
    engine.putFileDates({DateOf(Side::Original), DateOf(Side::Modified)});
    engine.putUnchangedText(command_.unchanged);
    engine.putHighDetailSummary(true);
    bool good = true;
    for (const ReportTarget& report : command_.reports) {
        std::string file = report.file;
        const ReportResult result =
            viewer_.CreateReport(file, report.type, static_cast<std::int32_t>(command_.view));
        good = good && result == ReportResult::Ok;
        if (result == ReportResult::Ok)
            written_.push_back(file);
        if (result == ReportResult::Ok && command_.open_reports)
            Open(report.type, file);
    }
    return good;
}

void CompareRunner::Open(ReportType type, const std::string& file) {
    viewer_.ShutDownAppsIfRequired(file);
    if (const Status opened = OpenReport(*process_.platform.shell, type, file); !opened.ok())
        LogMessage(process_, opened.failure().reason);
}

ReportModel CompareRunner::Model() const {
    ReportModel model{viewer_.Compared()};
    model.title = command_.title;
    model.names = {Label(Side::Original), Label(Side::Modified)};
    return model;
}

RedlineInputs CompareRunner::RedlineInputsNow() const {
    const LoadOptions& load = command_.load;
    const auto password = [&load](const std::string& own) {
        return own.empty() ? load.password : own;
    };
    RedlineInputs inputs = viewer_.RedlineInputsFor(files_);
    inputs.passwords = {password(load.original_password), password(load.modified_password)};
    return inputs;
}

// Its service starts beside the compare, which reads the same files.
void CompareRunner::BeginRedline() {
    if (command_.redline.files.empty())
        return;
    redline_.emplace(process_, command_.redline);
    redline_->Begin(RedlineInputsNow());
}

bool CompareRunner::WriteRedline() {
    if (!redline_)
        return true;
    Result<std::vector<RedlineCertificate>> certificates = redline_->Write(RedlineInputsNow());
    if (!certificates.ok())
        return Report(certificates.status());
    certificates_ = std::move(certificates).value();
    for (const std::string& file : command_.redline.files) {
        written_.push_back(file);
        if (command_.open_reports)
            Open(ReportType::Document, file);
    }
    if (command_.quiet)
        return true;
    // Standard output belongs to the JSON where that is asked for.
    const bool to_output = command_.json != "-";
    std::string told;
    for (const RedlineCertificate& certificate : certificates_)
        told += CertificateText(certificate);
    return Report(WriteStream(to_output ? Stream::Output : Stream::Error, told));
}

bool CompareRunner::WriteJson() {
    if (!command_.json)
        return true;
    ReportModel model = Model();
    model.names = {command_.original, command_.modified};
    std::string json = WriteJsonReport(model);
    if (!certificates_.empty())
        json = WithRedlines(std::move(json), certificates_);
    const bool to_output = *command_.json == "-";
    return Report(to_output
                      ? WriteStream(Stream::Output, json)
                      : ReplaceFile(*command_.json, json, ModeForTextOf(process_.telling, files_)));
}

bool CompareRunner::Report(const Status& status) {
    if (!status.ok())
        LogMessage(process_, status.failure().reason);
    return status.ok();
}

bool CompareRunner::Print() {
    if (command_.quiet)
        return true;
    if (command_.stat)
        return Report(WriteStream(Stream::Output, WriteStat(Model())));
    if (!command_.reports.empty() || !command_.redline.files.empty() || command_.json)
        return true;
    TerminalStyle style;
    style.color =
        command_.color == ColorWhen::Always || (command_.color == ColorWhen::Auto && ColorsFit());
    style.context = command_.context;
    const std::string text = WriteTerminalReport(Model(), style);
    const bool page = command_.pager && IsTerminal(Stream::Output) && !text.empty();
    return Report(page ? ShowPaged(text) : WriteStream(Stream::Output, text));
}

}  // namespace zorvane
