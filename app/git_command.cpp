#include "app/git_command.h"

#include <CLI/CLI.hpp>
#include <array>
#include <filesystem>
#include <fmt/format.h>

#include "app/exit_status.h"
#include "common/platform/exec_program.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "common/platform/run_program.h"
#include "common/platform/terminal.h"

namespace zorvane {
namespace {

constexpr int kNotSet = 1;  // of "git config --get"

// What a compare reads and a person does not.
constexpr std::array kDocuments = {"docx", "docm", "doc", "odt",  "rtf", "pdf", "xlsx",
                                   "xlsm", "xls",  "ods", "pptx", "ppt", "odp", "epub"};

constexpr std::string_view kBegin = "# Begin of what \"zorvane install-git\" wrote";
constexpr std::string_view kFileOfItsOwn = ", in a file of its own";
constexpr std::string_view kEnd = "# End of what \"zorvane install-git\" wrote";

constexpr const char* kGitExamples = R"(Examples:
  zorvane install-git                 for all repositories of this user
  zorvane install-git --local         for this repository alone
  git diff report.docx                shows changed words of documents from then on
  git difftool -t zorvane report.docx opens both versions in a window
  zorvane install-git --remove        as it was before

Exit status: 0 done, 2 trouble.
)";

struct Setting {
    std::string key;
    std::string value;
};

// A document that cannot be read must not end "git log -p"; its hash tells versions apart.
std::vector<Setting> SettingsFor(const std::string& program) {
    return {
        {"difftool.zorvane.cmd", program + R"( "$LOCAL" "$REMOTE")"},
        {"diff.zorvane.textconv",
         "f() { " + program +
             R"( text "$1" || { echo "zorvane could not read this document:"; git hash-object "$1"; }; }; f)"},
        {"diff.zorvane.cachetextconv", "true"}};
}

Result<ProgramAnswer> Git(std::vector<std::string> words) {
    words.insert(words.begin(), "git");
    return RunProgram(words);
}

class GitSetup {
  public:
    GitSetup(const GitCommand& command, const std::string& program)
        : scope_(command.local ? "--local" : "--global"), settings_(SettingsFor(program)) {}

    Status Install() {
        Status ready = FindAttributes();
        for (const Setting& setting : settings_) {
            if (ready.ok())
                ready = CheckFree(setting);
        }
        if (!ready.ok())
            return ready;
        for (const Setting& setting : settings_) {
            const auto done = Git({"config", scope_, setting.key, setting.value});
            if (!done.ok())
                return done.failure();
            if (done.value().status != 0)
                return Failure{"git could not set " + setting.key};
        }
        return WriteAttributes();
    }

    Status Remove() {
        if (Status found = FindAttributes(); !found.ok())
            return found;
        for (const Setting& setting : settings_) {
            const auto now = Git({"config", scope_, "--get", setting.key});
            if (!now.ok())
                return now.failure();
            if (now.value().status != 0 || !IsOurs(setting, now.value().output))
                continue;
            const auto done = Git({"config", scope_, "--unset", setting.key});
            if (!done.ok() || done.value().status != 0)
                return Failure{"git could not take back " + setting.key};
        }
        return RemoveAttributes();
    }

    const std::string& Attributes() const { return attributes_; }

  private:
    // The program may have stood elsewhere.
    static bool IsOurs(const Setting& setting, const std::string& value) {
        const std::size_t behind = setting.value.rfind("zorvane\"") == std::string::npos
                                       ? setting.value.find('"')
                                       : setting.value.find(" text ");
        return value == setting.value ||
               (value.find("zorvane") != std::string::npos && behind != std::string::npos &&
                value.ends_with(setting.value.substr(behind)));
    }

    Status CheckFree(const Setting& setting) const {
        const auto now = Git({"config", scope_, "--get", setting.key});
        if (!now.ok())
            return now.failure();
        if (now.value().status == kNotSet || IsOurs(setting, now.value().output))
            return Status::Ok();
        if (now.value().status != 0)
            return Failure{"git could not read " + setting.key};
        return Failure{setting.key + " is set to \"" + now.value().output +
                       "\"; nothing was changed"};
    }

    Status FindAttributes() {
        auto asked = scope_ == "--local"
                         ? Git({"rev-parse", "--git-path", "info/attributes"})
                         : Git({"config", "--global", "--type=path", "core.attributesFile"});
        if (!asked.ok())
            return asked.failure();
        attributes_ = asked.value().output;
        if (scope_ == "--local" && asked.value().status != 0)
            return Failure{"this folder is in no repository of git"};
        if (!attributes_.empty())
            return Status::Ok();
        const std::string home = Environment("HOME").value_or("");
        const std::string config = Environment("XDG_CONFIG_HOME").value_or("");
        if (home.empty() && config.empty())
            return Failure{"HOME is not set"};
        attributes_ = (config.empty() ? home + "/.config" : config) + "/git/attributes";
        return Status::Ok();
    }

    // Without our part, and whether the file is there only because of it.
    Result<std::string> OtherLines(bool& was_ours_alone) const {
        was_ours_alone = false;
        if (!std::filesystem::exists(NativePath(attributes_)))
            return std::string();
        Result<std::string> text = ReadWholeFile(attributes_);
        if (!text.ok())
            return text;
        const std::size_t begin = text.value().find(kBegin);
        const std::size_t end = text.value().find(kEnd, begin == std::string::npos ? 0 : begin);
        if (begin == std::string::npos || end == std::string::npos)
            return text;
        std::string rest = text.value();
        was_ours_alone =
            rest.compare(begin + kBegin.size(), kFileOfItsOwn.size(), kFileOfItsOwn) == 0;
        const std::size_t behind = rest.find('\n', end);
        rest.erase(begin, behind == std::string::npos ? std::string::npos : behind + 1 - begin);
        return rest;
    }

    Status WriteAttributes() const {
        const std::filesystem::path path = NativePath(attributes_);
        bool ours_alone = false;
        Result<std::string> others = OtherLines(ours_alone);
        if (!others.ok())
            return others.failure();
        const bool is_new = ours_alone || !std::filesystem::exists(path);
        std::string part(kBegin);
        part += is_new ? kFileOfItsOwn : "";
        part += "\n";
        for (const char* document : kDocuments)
            part += fmt::format("*.{0} diff=zorvane\n", document);
        part += std::string(kEnd) + "\n";
        std::error_code error;
        std::filesystem::create_directories(path.parent_path(), error);
        // In front, so that the lines of a user, which come later, win; and no line of theirs that
        // lacks an end is joined to ours.
        return ReplaceFile(attributes_, part + others.value());
    }

    Status RemoveAttributes() const {
        bool ours_alone = false;
        Result<std::string> others = OtherLines(ours_alone);
        if (!others.ok())
            return others.failure();
        std::error_code error;
        if (!std::filesystem::exists(NativePath(attributes_), error))
            return Status::Ok();
        if (ours_alone && others.value().empty()) {
            std::filesystem::remove(NativePath(attributes_), error);
            return error ? Failure{attributes_ + ": " + error.message()} : Status::Ok();
        }
        return ReplaceFile(attributes_, others.value());
    }

    std::string scope_;
    std::vector<Setting> settings_;
    std::string attributes_;
};

}  // namespace

CLI::App* AddGitCommand(CLI::App& app, GitCommand& command) {
    CLI::App* git = app.add_subcommand("install-git", "Show documents in git diff and difftool");
    git->footer(kGitExamples);
    CLI::Option* local = git->add_flag("--local", command.local, "For this repository alone");
    git->add_flag("--global", command.global, "For all repositories of this user (default)")
        ->excludes(local);
    git->add_flag("--remove", command.remove, "Take back what was installed");
    return git;
}

int RunGitCommand(const GitCommand& command, const std::string& program) {
    GitSetup setup(command, program);
    const Status done = command.remove ? setup.Remove() : setup.Install();
    const char* why = "there is no other place for it";
    if (!done.ok()) {
        IgnoreFailure(WriteStream(Stream::Error, "zorvane: " + done.failure().reason + "\n"), why);
        return kTrouble;
    }
    const std::string words =
        command.remove
            ? "git is as it was before.\n"
            : "git diff shows the words of documents now, and \"git difftool -t zorvane\" "
              "opens them.\nThe kinds of documents stand in " +
                  setup.Attributes() + "\n";
    IgnoreFailure(WriteStream(Stream::Output, words), why);
    return 0;
}

std::string CallOf(const std::string& own) {
    namespace fs = std::filesystem;
    const std::string path = Environment("PATH").value_or("");
    for (std::size_t begin = 0; begin <= path.size();) {
        const std::size_t end = std::min(path.find(':', begin), path.size());
        const std::string candidate = path.substr(begin, end - begin) + "/zorvane";
        std::error_code error;
        if (IsProgram(candidate))
            return fs::equivalent(candidate, own, error) ? "zorvane" : "'" + own + "'";
        begin = end + 1;
    }
    return "'" + own + "'";
}

}  // namespace zorvane
