#include "folders/text_check.h"

#include <utility>

#include "common/file_utilities.h"
#include "common/log_message.h"
#include "common/process_state.h"
#include "compare/document/rich_text.h"
#include "compare/run/compare_job.h"
#include "compare/run/report_run.h"
#include "compare/viewer_window.h"
#include "load/conversion_service.h"

namespace zorvane {
namespace {

class PairCheck {
  public:
    PairCheck(ProcessState& process, const TextCheckOptions& how, const TextPair& pair)
        : process_(process), how_(how), pair_(pair), sink_(process.platform), telling_(sink_) {
        // Nobody looks at the sink: what a check tells waits there and becomes its reason.
        sink_.WaitForWindow([] {});
        telling_.manner.bSilent = true;
        telling_.manner.bTellsPlainly = true;
        telling_.manner.bShowMessages = true;
    }

    TextCheck Run(ConversionService& service, RunWatcher& watcher) {
        TextCheck check;
        CompareOutcome outcome = Compare(service, watcher);
        if (outcome.end != RunEnd::Finished) {
            check.end = watcher.KeepGoing() ? TextCheckEnd::Failed : TextCheckEnd::Aborted;
            check.reason = Reason("could not be compared");
            return check;
        }
        const LoadMemory& memory = outcome.memory;
        for (const Side side : kBothSides) {
            if (memory.bSlidesFailed[side] || !memory.sNoText[side].empty()) {
                check.end = TextCheckEnd::Failed;
                check.reason = memory.sNoText[side].empty() ? Reason("could not be read")
                                                            : memory.sNoText[side];
                return check;
            }
        }
        const DifferenceCounts& counts = outcome.comparison->record_counts;
        check.end = TextCheckEnd::Compared;
        check.changed = counts.changes;
        check.added = counts.additions;
        check.deleted = counts.deletions;
        check.beside = static_cast<std::int32_t>(outcome.comparison->beside.size());
        if (check.Differences() > 0 && !pair_.report.empty())
            WriteReport(outcome, service, watcher, check);
        return check;
    }

  private:
    bool IsDocument() const { return pair_.report_type == ReportType::Document; }

    CharFormat Format() const {
        CharFormat format;
        format.font = FontName(how_.settings.sFontName);
        format.half_points = static_cast<std::int32_t>(how_.settings.dFontSize * 2);
        return format;
    }

    CompareOutcome Compare(ConversionService& service, RunWatcher& watcher) {
        CompareInput input(process_, telling_);
        input.options = how_.options;
        input.options.sFileOriginal.SetData(pair_.files.original);
        input.options.sFileModified.SetData(pair_.files.modified);
        input.options.bReloadOnRefresh.SetData(true);
        input.settings = how_.settings;
        input.TextFileExtensions = how_.TextFileExtensions;
        input.source = RunSource::Files;
        input.view = View::AllInOne;
        // Only a word-processor report shows editors.
        const bool views = IsDocument() && !pair_.report.empty();
        input.views = views ? BuildViews::Yes : BuildViews::No;
        input.find_moves = how_.find_moves;
        input.presented = true;
        input.default_format = Format();
        input.service = &service;
        input.questions = &questions_;
        return RunCompareJob(std::move(input), watcher);
    }

    DocumentReportTexts Texts(CompareOutcome& outcome) const {
        DocumentReportTexts texts;
        texts.format = Format();
        const CompareFilesSettings& settings = how_.settings;
        if (settings.bReportDOC_ShowAllInOneDifferenceViewer)
            texts.all_in_one = std::move(outcome.all_in_one.text);
        if (settings.bReportDOC_Additions)
            texts.additions = std::move(outcome.additions);
        if (settings.bReportDOC_ShowDeletions)
            texts.deletions = std::move(outcome.deletions);
        if (settings.bReportDOC_ShowChanges)
            texts.changes = std::move(outcome.changes);
        const clsCompareFileOptions& options = how_.options;
        texts.head = RichReportHead{how_.title,
                                    pair_.files,
                                    StyleFor(options, Mark::Addition),
                                    StyleFor(options, Mark::Deletion),
                                    StyleFor(options, Mark::ChangeOriginal),
                                    StyleFor(options, Mark::ChangeModified)};
        return texts;
    }

    void WriteReport(CompareOutcome& outcome, ConversionService& service, RunWatcher& watcher,
                     TextCheck& check) {
        VestrelX engine;
        engine.putMasterTitle(pair_.files.original);
        engine.putSourceTitle(pair_.files.modified);
        engine.putFileDates(
            {ReportDateOf(pair_.files.original), ReportDateOf(pair_.files.modified)});
        engine.putHighDetailSummary(how_.settings.bReportHTMLShowHighDetailSummary);
        engine.Show(std::move(*outcome.comparison));
        engine.putDocumentLooks(outcome.looks);
        ReportWanted wanted;
        wanted.file = pair_.report;
        wanted.type = pair_.report_type;
        wanted.style = how_.settings.mlReportDefaultStyle_MD;
        clsCompareFileOptions options = how_.options;
        options.sFileOriginal.SetData(pair_.files.original);
        options.sFileModified.SetData(pair_.files.modified);
        const ReportOutcome written =
            RunReport({process_, telling_, engine, options, how_.settings, how_.title,
                       IsDocument() ? Texts(outcome) : DocumentReportTexts(), std::move(wanted),
                       &questions_, &service},
                      watcher);
        if (written.result == ReportResult::Ok)
            check.report = written.file;
        else
            check.reason = Reason("its report could not be written");
    }

    // What was told first is where it began.
    std::string Reason(const char* otherwise) {
        std::string reason;
        sink_.ShowWaiting([&reason](const std::string& message) {
            if (reason.empty())
                reason = message;
        });
        if (!how_.log_file.empty() && !reason.empty())
            process_.messages.Log(reason, how_.log_file);
        return reason.empty() ? otherwise : reason;
    }

    ProcessState& process_;
    const TextCheckOptions& how_;
    const TextPair& pair_;
    MessageSink sink_;
    RunTelling telling_;
    SilentWindow questions_;
};

}  // namespace

TextCheckOptions ReadTextCheckOptions(ProcessState& process) {
    constexpr std::int32_t kMostExtensions = 15;
    TextCheckOptions how;
    IniProfile& file = *process.settings;
    how.settings = DefaultCompareFilesSettings(process.gsDataFolder);
    ReadCompareFilesSettings(file, kTextCheckSection, how.settings);
    how.options.sSectionName = kTextCheckSection;
    IgnoreFailure(how.options.LoadStateFromFile(file),
                  "an option that cannot be read keeps its default");
    how.TextFileExtensions.Setup(kMostExtensions, file,
                                 std::string(kTextCheckSection) + "TextFileExtensions",
                                 "txt,log,csv");
    return how;
}

TextCheck CheckText(ProcessState& process, const TextCheckOptions& how, const TextPair& pair,
                    ConversionService& service, RunWatcher& watcher) {
    return PairCheck(process, how, pair).Run(service, watcher);
}

}  // namespace zorvane
