#include "app/pairs_run.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <fstream>
#include <functional>
#include <iostream>
#include <map>
#include <mutex>
#include <system_error>
#include <thread>
#include <unordered_map>
#include <vector>

#include "app/compare_runner.h"
#include "app/output_check.h"
#include "app/pair_list.h"
#include "app/pair_results.h"
#include "app/terminal_window.h"
#include "common/log_message.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "common/platform/process_end.h"
#include "common/platform/system_failure.h"
#include "common/platform/terminal.h"
#include "load/conversion_service.h"
#include "load/warm_readers.h"

namespace zorvane {
namespace {

// Pairs that may be done before the one whose line comes next: a few slow ones stop nobody, and a
// run that is ended loses little.
constexpr std::int64_t kAhead = 256;

class PairsRun {
  public:
    PairsRun(Platform& platform, const CompareCommand& command)
        : platform_(platform),
          command_(command),
          process_(platform),
          window_(!command.quiet && IsTerminal(Stream::Error)) {
        process_.telling.manner.bShowMessages = true;
        process_.telling.manner.sLogFile = command.load.log_file;
    }

    int Run() {
        if (const Status ready = Prepare(); !ready.ok())
            return Tell(ready);
        const int jobs = command_.jobs > 0
                             ? command_.jobs
                             : std::max(1, static_cast<int>(std::thread::hardware_concurrency()));
        Status listed = StartThreads(jobs);
        if (listed.ok())
            listed = ReadList();
        {
            const std::lock_guard lock(guard_);
            ended_ = true;
            if (!listed.ok())
                Stop(listed);
        }
        changed_.notify_all();
        for (std::thread& thread : threads_)
            thread.join();
        window_.Clear();
        if (Status closed = results_.Close(); trouble_.ok())
            trouble_ = std::move(closed);
        return trouble_.ok() ? static_cast<int>(worst_) : Tell(trouble_);
    }

  private:
    struct Waiting {
        std::int64_t number = 0;
        ListedPair pair;
    };

    int Tell(const Status& trouble) {
        window_.Clear();
        LogMessage(process_, trouble.failure().reason);
        return static_cast<int>(CompareStatus::Trouble);
    }

    Status Prepare() {
        const std::string& list = *command_.pairs;
        if (list != "-") {
            if (Status readable = CheckReadable(list); !readable.ok())
                return readable;
            list_file_.open(NativePath(list), std::ios::binary);
            if (!list_file_)
                return SystemFailure(list);
        }
        Result<PairResults> results = PairResults::Open(command_.pairs_output);
        if (!results.ok())
            return results.failure();
        results_ = std::move(results).value();
        return Status::Ok();
    }

    Status StartThreads(int jobs) {
        try {
            while (static_cast<int>(threads_.size()) < jobs)
                threads_.emplace_back([this] { Work(); });
        } catch (const std::system_error& error) {
            if (threads_.empty())
                return Failure{error.what()};
        }
        return Status::Ok();
    }

    // ---- the list ----

    Status ReadList() {
        std::istream& list = list_file_.is_open() ? list_file_ : std::cin;
        std::string line;
        std::int64_t number = 0;
        while (std::getline(list, line)) {
            if (line.ends_with('\r'))
                line.pop_back();
            if (line.empty())
                continue;
            ++number;
            Waiting next{number, ReadPair(line, command_)};
            CheckFiles(next);
            if (number <= results_.Kept()) {
                if (Status known = TakeKept(next); !known.ok())
                    return known;
            } else if (!HandOver(std::move(next))) {
                return Status::Ok();
            }
        }
        if (list.bad())
            return Failure{*command_.pairs + ": the list cannot be read to its end"};
        if (number < results_.Kept())
            return Failure{command_.pairs_output + ": this holds " +
                           std::to_string(results_.Kept()) + " results, but the list only " +
                           std::to_string(number) + " pairs; name another file"};
        return Status::Ok();
    }

    // One pair must not overwrite what it reads, nor what another one wrote.
    void CheckFiles(Waiting& waiting) {
        const CompareCommand& command = waiting.pair.command;
        Status& fault = waiting.pair.fault;
        if (fault.ok())
            fault = CheckOutputs(command);
        std::vector<std::string> files;
        for (const ReportTarget& report : command.reports)
            files.push_back(report.file);
        files.insert(files.end(), command.redline.files.begin(), command.redline.files.end());
        if (command.json)
            files.push_back(*command.json);
        for (const std::string& file : files) {
            const auto [entry, added] =
                outputs_.try_emplace(std::hash<std::string>()(AbsolutePath(file)), waiting.number);
            if (!added && fault.ok())
                fault = Failure{file + ": pair " + std::to_string(entry->second) +
                                " writes to this file too; name another one"};
        }
    }

    static PairOutcome OutcomeOf(const Waiting& waiting) {
        PairOutcome outcome;
        outcome.number = waiting.number;
        outcome.original = waiting.pair.command.original;
        outcome.modified = waiting.pair.command.modified;
        return outcome;
    }

    Status TakeKept(const Waiting& waiting) {
        const Result<CompareStatus> status = results_.TakeKept(OutcomeOf(waiting));
        if (!status.ok())
            return status.failure();
        worst_ = std::max(worst_, status.value());
        written_ = waiting.number;
        return Status::Ok();
    }

    // False when no more pairs are wanted.
    bool HandOver(Waiting&& next) {
        std::unique_lock lock(guard_);
        changed_.wait(lock, [&] { return stopped_ || next.number - written_ <= kAhead; });
        if (stopped_)
            return false;
        waiting_.push_back(std::move(next));
        changed_.notify_all();
        return true;
    }

    // ---- on the threads ----

    void Work() {
        const WarmReaders warm;
        ConversionService service(platform_);
        service.SetInSandbox(!command_.load.no_sandbox);
        std::unique_lock lock(guard_);
        while (true) {
            changed_.wait(lock, [this] { return stopped_ || ended_ || !waiting_.empty(); });
            if (stopped_ || waiting_.empty())
                return;
            const Waiting next = std::move(waiting_.front());
            waiting_.pop_front();
            lock.unlock();
            PairOutcome outcome = Compare(next, service);
            lock.lock();
            done_.emplace(next.number, std::move(outcome));
            WriteDone();
            changed_.notify_all();
        }
    }

    PairOutcome Compare(const Waiting& waiting, ConversionService& service) {
        PairOutcome outcome = OutcomeOf(waiting);
        if (!waiting.pair.fault.ok()) {
            outcome.messages = {waiting.pair.fault.failure().reason};
            return outcome;
        }
        CompareRunner runner(platform_, waiting.pair.command);
        runner.BorrowReaders(service);
        runner.KeepMessages();
        outcome.status = runner.Run();
        outcome.messages = runner.TakeMessages();
        outcome.written = runner.WrittenFiles();
        if (runner.Compared() != nullptr)
            outcome.found = FoundFields(*runner.Compared());
        return outcome;
    }

    // Under the guard. A process that is being ended takes its readers along, which is no trouble
    // of the documents'.
    void WriteDone() {
        while (!stopped_ && !done_.empty() && done_.begin()->first == written_ + 1 && !IsEnding()) {
            const PairOutcome outcome = std::move(done_.begin()->second);
            done_.erase(done_.begin());
            const bool trouble = outcome.status == CompareStatus::Trouble;
            if (trouble && command_.fail_fast) {
                Stop(Failure{"pair " + std::to_string(outcome.number) + ": " +
                             (outcome.messages.empty() ? "" : outcome.messages.front())});
                return;
            }
            // With -q and no file there is nobody to tell but by the exit status.
            const bool told = !command_.quiet || !command_.pairs_output.empty();
            const Status written = told ? results_.Write(PairLine(outcome)) : Status::Ok();
            if (!written.ok()) {
                Stop(written);
                return;
            }
            ++written_;
            worst_ = std::max(worst_, outcome.status);
            window_.ShowStatus(StatusPanel::Main, "Comparing Files: " + std::to_string(written_));
        }
    }

    // Under the guard. The pairs at work are let end and have no lines.
    void Stop(const Status& trouble) {
        stopped_ = true;
        if (trouble_.ok())
            trouble_ = trouble;
    }

    Platform& platform_;
    const CompareCommand& command_;
    ProcessState process_;
    TerminalWindow window_;
    std::ifstream list_file_;
    PairResults results_;
    std::unordered_map<std::size_t, std::int64_t> outputs_;  ///< hashes of names, and whose
    std::vector<std::thread> threads_;

    std::mutex guard_;  ///< over all below, once the threads are there
    std::condition_variable changed_;
    std::deque<Waiting> waiting_;
    std::map<std::int64_t, PairOutcome> done_;
    std::int64_t written_ = 0;  ///< number of the last pair with a line
    CompareStatus worst_ = CompareStatus::Same;
    Status trouble_ = Status::Ok();
    bool stopped_ = false;
    bool ended_ = false;  ///< the list
};

}  // namespace

int RunPairs(Platform& platform, const CompareCommand& command) {
    return PairsRun(platform, command).Run();
}

}  // namespace zorvane
