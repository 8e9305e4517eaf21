#include "compare/run/report_run.h"

#include <memory>
#include <utility>

#include "common/base/free_aside.h"
#include "common/process_state.h"
#include "common/run_telling.h"
#include "compare/document/memory_editor.h"
#include "compare/engine/report_model.h"
#include "load/file_types.h"

namespace zorvane {
namespace {

class ReportRun : private ReportSource {
  public:
    ReportRun(ReportInput input, RunWatcher& watcher)
        : input_(std::move(input)), watcher_(watcher) {}

    ReportOutcome Run() {
        ReportOutcome out;
        out.file = input_.wanted.file;
        out.result = input_.wanted.defaults
                         ? CreateReportGUI(*this, input_.wanted.launch, out.file)
                         : CreateReport(*this, out.file, input_.wanted.type, input_.wanted.style);
        out.document_target = input_.settings.msgReportFileDOC_MD;
        out.certificate = std::move(certificate_);
        if (input_.texts.all_in_one || input_.texts.changes)
            FreeAside(std::move(input_.texts));
        return out;
    }

  private:
    ProcessState& Process() override { return input_.process; }
    RunTelling& Telling() override { return input_.telling; }
    RunWatcher* Watcher() override { return &watcher_; }
    VestrelX& Engine() override { return input_.engine; }
    const clsCompareFileOptions& ReportOptions() const override { return input_.options; }
    CompareFilesSettings& ReportSettings() override { return input_.settings; }
    void TellStep(RunStep step) override { watcher_.Progress(step, 0); }
    void ShutDownAppsIfRequired(const std::string& file) override {
        LetGoOfOffice(*input_.service, file);
    }
    void ShowReportMessage(const std::string& text, const std::string& title) override {
        input_.questions->ShowMessage(text, title);
    }
    std::string CommandLineTitle() const override { return input_.title; }

    struct Editors {
        MemoryEditor all_in_one;
        MemoryEditor additions;
        MemoryEditor deletions;
        MemoryEditor changes;
        MemoryEditor scratch;
    };

    // An editor over a text of the report.
    const Editor* Fill(std::optional<RichText>& text, MemoryEditor& editor) {
        if (!text || !watcher_.KeepGoing())
            return nullptr;
        editor.Watch(&watcher_);
        editor.SetRich(CopyOf(*text, &watcher_));  // the driver may save under another name again
        return &editor;
    }

    Status SaveDocumentReport(const std::string& file, std::uint32_t mode) override {
        auto editors = std::make_unique<Editors>();
        Status saved = SaveWith(*editors, file, mode);
        FreeAside(std::move(editors));
        return saved;
    }

    Status SaveWith(Editors& editors, const std::string& file, std::uint32_t mode) {
        DocumentReportTexts& texts = input_.texts;
        editors.scratch.Watch(&watcher_);
        editors.scratch.SetDefaultFormat(texts.format);
        RichReportPieces pieces{Fill(texts.all_in_one, editors.all_in_one),
                                Fill(texts.additions, editors.additions),
                                Fill(texts.deletions, editors.deletions),
                                Fill(texts.changes, editors.changes), &input_.engine.Compared()};
        if (!watcher_.KeepGoing())
            return Failure{std::string(kReportStopped)};
        if (texts.head)
            pieces.head = &*texts.head;
        return SaveRichReport(pieces, editors.scratch, file, &watcher_, mode);
    }

    std::string TrackedName(const std::string& file) const override { return RedlineNameFor(file); }

    Status SaveTrackedReport(const std::string& file) override {
        // It would be told as made of what the window shows.
        if (input_.edited)
            return Failure{input_.process.Translate(
                "save the edits first; tracked changes are made from the files")};
        RedlineOptions redline;
        redline.files = {file};
        const Result<std::vector<RedlineCertificate>> certificates =
            RedlineRun(input_.process, redline).Write(input_.redline, &watcher_);
        if (!certificates.ok())
            return certificates.failure();
        certificate_ = certificates.value().front();
        return Status::Ok();
    }

    ReportInput input_;
    RunWatcher& watcher_;
    std::optional<RedlineCertificate> certificate_;
};

}  // namespace

void LetGoOfOffice(ConversionService& service, const std::string& file) {
    // One worker serves documents and sheets.
    if (ExtensionContains(file, "XLS CSV DOC RTF"))
        service.SetOfficeStays(false);
}

ReportOutcome RunReport(ReportInput input, RunWatcher& watcher) {
    return ReportRun(std::move(input), watcher).Run();
}

}  // namespace zorvane
