#include <algorithm>
#include <chrono>
#include <filesystem>
#include <thread>

#include "app/exit_status.h"
#include "app/folders_command.h"
#include "app/input_file.h"
#include "app/terminal_window.h"
#include "common/file_utilities.h"
#include "common/log_message.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "common/platform/terminal.h"
#include "common/process_state.h"
#include "folders/folder_report.h"
#include "folders/report_names.h"
#include "folders/text_checks.h"
#include "load/extracted_texts.h"
#include "load/file_signature.h"

namespace zorvane {
namespace {

using namespace std::chrono_literals;

class FoldersRunner {
  public:
    FoldersRunner(Platform& platform, const FoldersCommand& command)
        : command_(command),
          process_(platform),
          window_(!command.quiet && IsTerminal(Stream::Error)),
          findings_{
              engine_.Folders(), {command.original, command.modified}, !command.dates, {}, {}, {}} {
    }

    int Run() {
        process_.telling.manner.sLogFile = command_.load.log_file;
        process_.bWithoutSandbox = command_.load.no_sandbox;
        Status step = BeginCommand(process_, command_.load.settings_file);
        for (const Side side : kBothSides) {
            if (step.ok())
                step = CheckFolder(findings_.roots[side]);
        }
        if (step.ok() && command_.text)
            step = PrepareTexts();
        if (!step.ok())
            return Tell(step) ? kSame : kTrouble;
        Scan();
        if (command_.text)
            CheckTexts();
        if (!command_.no_renames)
            FindRenamed();
        window_.Clear();
        const bool faults = TellFaults();
        if (!WriteTable() || !WriteJson() || !Print() || faults || report_failed_)
            return kTrouble;
        return findings_.Count().Different() ? kDifferent : kSame;
    }

  private:
    bool Tell(const Status& status) {
        window_.Clear();
        if (!status.ok())
            LogMessage(process_, status.failure().reason);
        return status.ok();
    }

    static Status CheckFolder(const std::string& folder) {
        if (bDirectoryExists(folder))
            return Status::Ok();
        return Failure{folder + (bFileExists(folder)
                                     ? ": this is a file; \"zorvane compare\" compares files"
                                     : ": there is no such folder")};
    }

    void ShowStep(const std::string& text) { window_.ShowStatus(StatusPanel::Main, text); }

    void Scan() {
        FolderScanOptions& options = engine_.FolderOptions();
        options.rules.content = !command_.quick;
        // What git makes for such a tool holds links to the files that are worked on.
        const bool git = Environment("GIT_DIFFTOOL_DIRDIFF").value_or("") == "true";
        options.rules.follow = command_.follow || git ? FollowLink::Yes : FollowLink::No;
        options.hidden = !command_.no_hidden;
        options.threads = command_.jobs;
        engine_.putSubfolders(command_.recursive);
        engine_.putIgnoreDateDifferences(!command_.dates);
        engine_.putFileTypes(command_.types);
        engine_.putMasterFolder(command_.original);
        engine_.putSourceFolder(command_.modified);
        engine_.StartFolderCompare();
        while (engine_.getBusy()) {
            if (IsTerminal(Stream::Error)) {
                ShowStep("Comparing Folders: " + std::to_string(engine_.Folders().LookedAt()));
                std::this_thread::sleep_for(5ms);
            } else {
                engine_.Folders().Join();
            }
        }
    }

    // ---- words ----

    Status PrepareTexts() {
        TextCheckOptions how = ReadTextCheckOptions(process_);
        clsCompareFileOptions& options = how.options;
        TurnOn(command_.ignore_case, options.bIgnoreCase);
        TurnOn(command_.ignore_whitespace, options.bIgnoreWhitespace);
        TurnOn(command_.ignore_blank_lines, options.bIgnoreEmptyLines);
        how.log_file = command_.load.log_file;
        if (Status set = ApplyLoadOptions(command_.load, SetBy::Compare, options, how.settings);
            !set.ok())
            return set;
        if (Status filter =
                VestrelX::CheckFilterExpression(options.sIgnoreRegularExpression.Data());
            !filter.ok())
            return filter;
        checks_ = std::make_unique<TextChecks>(process_, std::move(how), command_.jobs);
        if (!command_.no_cache)
            checks_->UseCache(UserTextCache(process_));
        return Status::Ok();
    }

    // Read as a text, two programs or pictures that differ may have the same words.
    static bool HoldWords(const PerSide<std::string>& files) {
        const auto is_binary = [&files](Side side) {
            const Result<std::string> head = ReadFileHead(files[side], kSignatureReach);
            return head.ok() && HasSignature(head.value(), Signature::Binary);
        };
        return std::none_of(std::begin(kBothSides), std::end(kBothSides), is_binary);
    }

    void CheckTexts() {
        const FolderScan& scan = engine_.Folders();
        const ReportNaming naming{command_.reports, command_.original, "",
                                  ReportExtensionOf(command_.report_type)};
        std::vector<std::int32_t> records;
        for (std::size_t index = 0; index < scan.Count(); ++index) {
            const ScannedEntry& entry = scan.Entry(index);
            const auto record = static_cast<std::int32_t>(index);
            const bool follow = engine_.FolderOptions().rules.follow == FollowLink::Yes;
            const auto has_words = [follow](EntryKind kind) {
                return kind == EntryKind::File || (kind == EntryKind::Link && follow);
            };
            const bool files = has_words(entry.original) && has_words(entry.modified);
            if (!entry.InBoth() || !files || entry.content != PairContent::Different)
                continue;
            const FolderRecord names = scan.Record(index);
            if (!HoldWords({names.Original(), names.Modified()}))
                continue;
            TextPair pair{{names.Original(), names.Modified()}, "", command_.report_type};
            if (!command_.reports.empty())
                pair.report = ReportFileName(naming, names.Original());
            checks_->Add(record, std::move(pair));
            records.push_back(record);
        }
        for (std::size_t done = 0; done < records.size(); ++done) {
            ShowStep("Comparing Files: " + std::to_string(done + 1) + " / " +
                     std::to_string(records.size()));
            const TextCheck check = checks_->Wait(records[done]);
            report_failed_ =
                report_failed_ || (check.end == TextCheckEnd::Compared && !check.reason.empty());
        }
        findings_.text = [this](std::int32_t record) { return checks_->Result(record); };
    }

    void FindRenamed() {
        ShowStep("Looking for renamed files");
        RenameOptions options;
        options.threads = command_.jobs;
        options.follow = engine_.FolderOptions().rules.follow;
        ExtractedTexts texts(process_, command_.no_cache ? TextCache("") : UserTextCache(process_));
        if (command_.text)
            options.document_text = DocumentTextsOf(texts, options.stop);
        findings_.renamed = FindRenames(engine_.Folders(), findings_.roots, options);
        findings_.IndexRenamed();
    }

    // ---- what comes out ----

    bool TellFaults() {
        const auto& faults = engine_.Folders().Faults();
        for (std::size_t index = 0; index < faults.size(); ++index)
            LogMessage(process_, faults[index].message);
        return !faults.empty();
    }

    bool WriteTable() {
        if (command_.output.empty())
            return true;
        FolderReport report{engine_, "ERR: File", {}};
        if (checks_) {
            report.words_differ = [this](std::int32_t record) -> std::optional<bool> {
                const std::optional<TextCheck> check = checks_->Result(record);
                if (!check || check->end != TextCheckEnd::Compared)
                    return std::nullopt;
                return check->Differences() > 0;
            };
        }
        return Tell(WriteFolderReport(report, command_.output));
    }

    static Status ToOutput(std::string_view part) { return WriteStream(Stream::Output, part); }

    bool WriteJson() {
        if (!command_.json)
            return true;
        if (*command_.json == "-")
            return Tell(WriteFolderJson(findings_, ToOutput));
        Result<FileReplacement> file = FileReplacement::Begin(*command_.json);
        if (!file.ok())
            return Tell(file.failure());
        const Status written = WriteFolderJson(
            findings_, [&file](std::string_view part) { return file.value().Write(part); });
        return Tell(written.ok() ? file.value().Finish() : written);
    }

    bool Print() {
        if (command_.quiet || (command_.json && *command_.json == "-"))
            return true;
        if (command_.stat)
            return Tell(ToOutput(WriteFolderStat(findings_)));
        FolderListStyle style;
        style.color = command_.color == "always" || (command_.color == "auto" && ColorsFit());
        style.only = command_.only;
        if (!Tell(WriteFolderList(findings_, style, ToOutput)))
            return false;
        return !IsTerminal(Stream::Output) || Tell(ToOutput(WriteFolderStat(findings_)));
    }

    const FoldersCommand& command_;
    ProcessState process_;
    TerminalWindow window_;
    VestrelX engine_;
    FolderFindings findings_;
    bool report_failed_ = false;
    std::unique_ptr<TextChecks> checks_;
};

}  // namespace

int RunFoldersCommand(Platform& platform, const FoldersCommand& command) {
    return FoldersRunner(platform, command).Run();
}

}  // namespace zorvane
