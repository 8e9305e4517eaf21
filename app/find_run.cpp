#include <chrono>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

#include "app/exit_status.h"
#include "app/find_command.h"
#include "app/input_file.h"
#include "app/passwords.h"
#include "app/terminal_window.h"
#include "common/log_message.h"
#include "common/platform/terminal.h"
#include "common/process_state.h"
#include "find/find_printer.h"
#include "find/loaded_documents.h"

namespace zorvane {
namespace {

using namespace std::chrono_literals;

class FindRunner : private FindReceiver {
  public:
    FindRunner(Platform& platform, const FindCommand& command)
        : command_(command),
          process_(platform),
          window_(!command.quiet && IsTerminal(Stream::Error)) {}

    int Run() {
        process_.bWithoutSandbox = command_.no_sandbox;
        Status step = BeginCommand(process_, "");
        if (step.ok())
            step = Prepare();
        if (!step.ok()) {
            LogMessage(process_, step.failure().reason);
            return kTrouble;
        }
        if (const SystemError error = run_.Start(*finder_, Options(), *this)) {
            LogMessage(process_, command_.folder + ": " + error.Words());
            return kTrouble;
        }
        Wait();
        Flush();
        End();
        if (failed_)
            return kTrouble;
        return hits_ > 0 ? kFound : kNothing;
    }

  private:
    Status Prepare() {
        FindRules rules;
        rules.text = command_.text;
        rules.syntax = command_.expression ? FindSyntax::Full : FindSyntax::Literal;
        rules.word = command_.word ? WordRule::Letters : WordRule::Any;
        rules.match_case = !command_.ignore_case;
        Result<std::unique_ptr<LineFinder>> finder = LineFinder::Make(rules);
        if (!finder.ok())
            return finder.failure().WithContext(command_.text);
        finder_ = std::move(finder).value();
        if (Status ready = command_.office ? PrepareDocuments() : Status::Ok(); !ready.ok())
            return ready;
        printer_.emplace(*finder_, Style());
        return Status::Ok();
    }

    Status PrepareDocuments() {
        documents_.emplace(process_, command_.no_cache ? TextCache("") : UserTextCache(process_));
        LoadOptions load = command_.load;
        if (Status filled = FillPasswords(load); !filled.ok())
            return filled;
        const std::string& password =
            load.original_password.empty() ? load.password : load.original_password;
        if (!password.empty())
            documents_->UsePasswords({password});
        return Status::Ok();
    }

    FindStyle Style() const {
        FindStyle style;
        style.layout = command_.json    ? FindLayout::Json
                       : command_.count ? FindLayout::Counts
                       : command_.files ? FindLayout::Files
                                        : FindLayout::Lines;
        style.terminal = IsTerminal(Stream::Output) && !command_.json;
        style.color = !command_.json &&
                      (command_.color == "always" || (command_.color == "auto" && ColorsFit()));
        style.context = command_.context;
        return style;
    }

    FindRunOptions Options() {
        FindRunOptions options;
        options.folder = command_.folder;
        options.file_types = command_.types;
        options.subfolders = command_.recursive;
        options.hidden = !command_.no_hidden;
        options.threads = command_.jobs;
        options.rules.detail = command_.quiet || command_.files ? FindDetail::Whether
                               : command_.count                 ? FindDetail::Count
                                                                : FindDetail::Lines;
        const bool lines = options.rules.detail == FindDetail::Lines;
        options.rules.context = lines ? command_.context : 0;
        options.rules.locale_encoding = process_.platform.locale->EncodingName();
        options.documents = documents_ ? &*documents_ : nullptr;
        return options;
    }

    void Wait() {
        while (run_.Busy() && IsTerminal(Stream::Error)) {
            std::this_thread::sleep_for(5ms);
            const std::lock_guard lock(guard_);
            window_.ShowStatus(StatusPanel::Main,
                               "Searching: " + std::to_string(run_.Counts().files));
        }
        run_.Join();
        window_.Clear();
    }

    // ---- on the threads of the run ----

    std::string Render(FoundFile& file, int thread) override {
        std::string text = command_.quiet ? std::string() : printer_->Print(file, thread);
        file.lines.clear();
        file.texts.clear();
        return text;
    }

    void Take(FoundFile&& file, std::string&& rendered) override {
        const std::lock_guard lock(guard_);
        hits_ += file.hits;
        files_ += file.hits > 0 ? 1 : 0;
        if (!file.reason.empty())
            TakeReason(file);
        if (!rendered.empty()) {
            if (printed_)
                out_ += printer_->Between();
            printed_ = true;
            out_ += rendered;
        }
        constexpr std::size_t kPart = 1 << 16;
        if (out_.size() >= kPart || at_once_)
            Flush();
        if (command_.quiet && hits_ > 0)
            run_.Abort();
    }

    void TakeReason(const FoundFile& file) {
        failed_ = true;
        if (command_.json) {
            out_ += FindPrinter::ErrorObject(file);
            return;
        }
        Flush();
        window_.Clear();
        LogMessage(process_, file.path + ": " + file.reason +
                                 (file.code == kWantsPassword ? "; give it with --password" : ""));
    }

    void Flush() {
        if (out_.empty())
            return;
        window_.Clear();
        const Status written = lost_ ? Status::Ok() : WriteStream(Stream::Output, out_);
        if (!written.ok()) {
            LogMessage(process_, written.failure().reason);
            failed_ = lost_ = true;
            run_.Abort();
        }
        out_.clear();
    }

    void End() {
        if (command_.json)
            out_ = FindPrinter::SummaryObject(run_.Counts(), hits_, files_);
        else if (command_.stats)
            out_ = FindStatText(run_.Counts(), hits_, files_);
        Flush();
    }

    const FindCommand& command_;
    ProcessState process_;
    std::unique_ptr<LineFinder> finder_;
    std::optional<LoadedDocuments> documents_;
    std::optional<FindPrinter> printer_;
    const bool at_once_ = IsTerminal(Stream::Output);
    std::mutex guard_;  ///< over all below but the run
    TerminalWindow window_;
    std::string out_;
    std::int64_t hits_ = 0;
    std::int64_t files_ = 0;
    bool printed_ = false;
    bool failed_ = false;
    bool lost_ = false;  ///< nobody takes the output
    FindRun run_;        ///< the last member: its threads use all the others
};

constexpr std::int64_t kMegabyte = 1 << 20;

}  // namespace

int RunFindCommand(Platform& platform, const FindCommand& command) {
    return FindRunner(platform, command).Run();
}

int RunCacheCommand(Platform& platform, const CacheCommand& command) {
    ProcessState process(platform);
    Status step = BeginCommand(process, "");
    const TextCache cache = UserTextCache(process);
    if (step.ok() && command.clear)
        step = cache.Clear();
    if (step.ok()) {
        const CacheSize size = cache.Size();
        step = WriteStream(Stream::Output,
                           cache.Folder() + ": " + std::to_string(size.entries) + " entries, " +
                               std::to_string((size.bytes + kMegabyte - 1) / kMegabyte) + " of " +
                               std::to_string(kCacheBound / kMegabyte) + " MB\n");
    }
    if (!step.ok())
        LogMessage(process, step.failure().reason);
    return step.ok() ? 0 : kTrouble;
}

}  // namespace zorvane
