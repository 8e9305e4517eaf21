// The Compare Files viewer's reports. A report is a run of its own; where the result is stale or
// lacks the view that it needs, the runs that mend that come first.
#include <utility>

#include "common/log_message.h"
#include "common/process_state.h"
#include "compare/compare_files_viewer.h"
#include "load/stored_password.h"
#include "options/marking_styles.h"

namespace zorvane {

bool frmCompareFiles::IsDocument(const ReportWanted& wanted) const {
    constexpr auto kDocument = ReportType::Document;
    return wanted.defaults
               ? static_cast<ReportType>(settings_.mlReportDefaultFileType_MD) == kDocument
               : wanted.type == kDocument;
}

// Refuses with its words while a run goes on, and after one that was stopped.
bool frmCompareFiles::RefuseReport(const ReportDone& done) {
    const bool busy = !IsEnabled(ViewerCommand::Report);
    if (!busy && last_run_ != RunEnd::Aborted)
        return false;
    ReportOutcome refused;
    refused.result = busy ? ReportResult::Busy : ReportResult::Aborted;
    TellReportResult(process_, telling_, refused.result);
    done(refused);
    return true;
}

void frmCompareFiles::BeginReport(ReportWanted wanted, RunOn where, ReportDone done) {
    if (RefuseReport(done))
        return;
    // A default report of the word processor copies from the all-in-one view, whichever is shown.
    const bool lacks_view = wanted.defaults && IsDocument(wanted) && !mbAIOViewFresh_;
    if (!IsStale() && !lacks_view) {
        StartReport(std::move(wanted), where, std::move(done));
        return;
    }
    Plan plan;
    plan.where = where;
    if (IsStale()) {
        plan.source = RunSource::Texts;
        plan.view = view_;
        plan.views = views_;
    } else {
        plan.source = RunSource::Compared;
        plan.view = View::AllInOne;
    }
    plan.then = [this, wanted = std::move(wanted), where, done = std::move(done)](RunEnd end) {
        if (end == RunEnd::Failed) {
            ReportOutcome failed;
            failed.result = ReportResult::NotCompared;  // the run told why
            done(failed);
            return;
        }
        BeginReport(wanted, where, done);
    };
    StartCompare(std::move(plan));
}

DocumentReportTexts frmCompareFiles::DocumentTexts() {
    DocumentReportTexts texts;
    texts.format = ViewerFormat();
    if (settings_.bReportDOC_ShowAllInOneDifferenceViewer)
        texts.all_in_one = editors_.rtbAIODiff.editor.Rich();
    if (settings_.bReportDOC_Additions)
        texts.additions = editors_.rtbAdditions.Rich();
    if (settings_.bReportDOC_ShowDeletions)
        texts.deletions = editors_.rtbDeletions.Rich();
    if (settings_.bReportDOC_ShowChanges)
        texts.changes = editors_.rtbChanges.Rich();
    if (report_names_) {
        texts.head = RichReportHead{request_.sReportTitle,
                                    *report_names_,
                                    StyleFor(options_, Mark::Addition),
                                    StyleFor(options_, Mark::Deletion),
                                    StyleFor(options_, Mark::ChangeOriginal),
                                    StyleFor(options_, Mark::ChangeModified)};
    }
    return texts;
}

ReportInput frmCompareFiles::ReportInputFor(ReportWanted wanted, DocumentReportTexts texts) {
    ReportInput input{process_,         telling_,          VXMacroDiff_,
                      options_,         settings_,         request_.sReportTitle,
                      std::move(texts), std::move(wanted), nullptr,
                      conversions_};
    input.redline =
        RedlineInputsFor({options_.sFileOriginal.Data(), options_.sFileModified.Data()});
    for (const Side side : kBothSides) {
        input.redline.passwords[side] =
            StoredPassword(OptionsOf(KindOfFile(side)), side, options_, settings_);
        input.edited = input.edited || DocumentOf(TargetOf(side)).editor.IsModified();
    }
    return input;
}

RedlineInputs frmCompareFiles::RedlineInputsFor(const PerSide<std::string>& files) const {
    RedlineInputs inputs{files, {}, compared_texts_};
    for (const Side side : kBothSides) {
        const FileKind kind = KindOfFile(side);
        inputs.as_compared[side] =
            kind == FileKind::Spreadsheet || kind == FileKind::CommaDelimited;
    }
    return inputs;
}

// What a tracked report has shown to be so, in a line.
std::string frmCompareFiles::ToldOf(const ReportOutcome& outcome) {
    if (!outcome.certificate)
        return Translate("Ready");
    const CountsOf<MarkCount>& marks = outcome.certificate->marks;
    return Translate(
               "Tracked changes verified: accepting all gives the modified, rejecting all the "
               "original") +
           " (+" + std::to_string(marks[MarkCount::Insertions]) + " \u2212" +
           std::to_string(marks[MarkCount::Deletions]) + ")";
}

void frmCompareFiles::StartReport(ReportWanted wanted, RunOn where, ReportDone done) {
    const auto outcome = std::make_shared<ReportOutcome>();
    DocumentReportTexts texts = IsDocument(wanted) ? DocumentTexts() : DocumentReportTexts();
    const auto input =
        std::make_shared<ReportInput>(ReportInputFor(std::move(wanted), std::move(texts)));
    window_.SetHourglass(true);
    window_.SetAbortVisible(true);
    const std::string target_before = settings_.msgReportFileDOC_MD;
    StartRun(where, RunStep::WriteReport,
             {[input, outcome](ViewerRun& run) {
                  input->questions = &run.Questions();
                  *outcome = RunReport(std::move(*input), run.Control());
              },
              [this, outcome, target_before, done = std::move(done)] {
                  last_report_ = outcome->result;
                  if (outcome->document_target != target_before)
                      settings_.msgReportFileDOC_MD = outcome->document_target;
                  window_.SetHourglass(false);
                  window_.SetAbortVisible(false);
                  window_.ShowStatus(StatusPanel::Detail, ToldOf(*outcome));
                  done(*outcome);
              }});
}

ReportResult frmCompareFiles::ReportHere(ReportWanted wanted, std::string& file) {
    ReportOutcome written;
    wanted.file = file;
    BeginReport(std::move(wanted), RunOn::ThisThread,
                [&written](const ReportOutcome& outcome) { written = outcome; });
    if (!written.file.empty())
        file = written.file;
    return written.result;
}

ReportResult frmCompareFiles::CreateReport(std::string& file, ReportType type, std::int32_t style) {
    return ReportHere({false, Launch::No, {}, type, style}, file);
}

ReportResult frmCompareFiles::CreateReportGUI(Launch launch, const std::string& file) {
    std::string named = file;
    return ReportHere({true, launch, {}, ReportType::Html, 1}, named);
}

// Who asked for the report sees its proof.
void frmCompareFiles::ShowCertificate(const RedlineCertificate& certificate) {
    const auto translate = [this](std::string_view english) { return process_.Translate(english); };
    WindowQuestion shown;
    shown.text = CertificateText(certificate, translate);
    shown.title = Translate("Tracked Changes");
    shown.icon = MessageIcon::Information;
    shown.answers = {Translate("OK")};
    window_.Choose(shown);
}

void frmCompareFiles::cmdViewReport() {
    BeginReport({true, Launch::Yes, {}, ReportType::Html, 1}, where_,
                [this](const ReportOutcome& outcome) {
                    if (outcome.certificate)
                        ShowCertificate(*outcome.certificate);
                });
}

}  // namespace zorvane
