#include "common/platform/desktop_shell.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <spawn.h>
#include <string_view>
#include <sys/wait.h>
#include <unistd.h>

#include "common/base/text_encoding.h"
#include "common/platform/argument_pointers.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "common/platform/process_environment.h"
#include "common/platform/terminal.h"

namespace zorvane {
namespace {

enum class Streams { Closed, Inherited };

Result<pid_t> Spawn(std::vector<std::string> words, Streams streams) {
    const std::vector<char*> arguments = ArgumentPointers(words);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    if (streams == Streams::Closed) {
        posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
        posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    }
    pid_t child = 0;
    const int error =
        posix_spawnp(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    if (error != 0)
        return Failure{words[0] + " cannot be started: " + std::strerror(error)};
    return child;
}

Status Start(std::vector<std::string> words) {
    const Result<pid_t> child = Spawn(std::move(words), Streams::Closed);
    return child.ok() ? Status::Ok() : Status(child.failure());
}

// Through the shell, since the variables may hold options.
Status RunEditor(const std::string& editor, const std::string& path) {
    const Result<pid_t> child =
        Spawn({"/bin/sh", "-c", editor + " \"$1\"", "sh", path}, Streams::Inherited);
    if (!child.ok())
        return child.failure();
    int status = 0;
    while (waitpid(child.value(), &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(status) && WEXITSTATUS(status) == 0)
        return Status::Ok();
    return Failure{path + ": the editor \"" + editor + "\" failed"};
}

std::string OutputOf(const char* command) {
    constexpr std::size_t kMost = 512;
    std::string text(kMost, '\0');
    FILE* const program = popen(command, "r");  // NOLINT(cert-env33-c): a fixed command
    if (program == nullptr)
        return {};
    text.resize(std::fread(text.data(), 1, text.size(), program));
    pclose(program);
    return std::string(Trim(text));
}

std::vector<std::string> ApplicationFolders() {
    const std::string home = Environment("HOME").value_or("");
    std::string own = Environment("XDG_DATA_HOME").value_or("");
    if (own.empty())
        own = home + "/.local/share";
    std::string shared = Environment("XDG_DATA_DIRS").value_or("");
    if (shared.empty())
        shared = "/usr/local/share:/usr/share";
    std::vector<std::string> folders{own};
    for (std::size_t begin = 0; begin <= shared.size();) {
        const std::size_t end = std::min(shared.find(':', begin), shared.size());
        folders.push_back(shared.substr(begin, end - begin));
        begin = end + 1;
    }
    return folders;
}

// The value of `Exec` in the first group of a desktop entry; nothing for an application that wants
// a terminal, which there is none.
std::string ExecOf(const std::string& entry) {
    std::string exec;
    bool in_group = false;
    for (std::size_t begin = 0; begin < entry.size();) {
        const std::size_t end = std::min(entry.find('\n', begin), entry.size());
        const std::string_view line(entry.data() + begin, end - begin);
        begin = end + 1;
        if (line.starts_with('['))
            in_group = line.starts_with("[Desktop Entry]");
        else if (in_group && line.starts_with("Exec="))
            exec = line.substr(5);
        else if (in_group && line.starts_with("Terminal=true"))
            return {};
    }
    return exec;
}

std::optional<std::vector<std::string>> TextEditorFor(const std::string& path) {
    const std::string name = OutputOf("xdg-mime query default text/plain 2>/dev/null");
    if (name.empty() || name.find('/') != std::string::npos)
        return std::nullopt;
    for (const std::string& folder : ApplicationFolders()) {
        const Result<std::string> entry = ReadWholeFile(folder + "/applications/" + name);
        if (entry.ok())
            return CommandOfEntry(ExecOf(entry.value()), path);
    }
    return std::nullopt;
}

// Whole, so that a name such as "-r.htm" is not taken for an option.
std::string WholePath(const std::string& path) {
    return NativePath(AbsolutePath(path));
}

// The words of a desktop entry's command, as its quotes and codes tell.
class EntryWords {
  public:
    explicit EntryWords(const std::string& path) : path_(path) {}

    void Read(const std::string& exec) {
        for (std::size_t at = 0; at < exec.size(); ++at) {
            const char character = exec[at];
            const bool two = at + 1 < exec.size();
            if (character == '"') {
                quoted_ = !quoted_;
                open_ = true;
            } else if (character == '\\' && quoted_ && two) {
                word_ += exec[++at];
            } else if (character == '%' && !quoted_ && two) {
                Code(exec[++at]);
            } else if (character == ' ' && !quoted_) {
                EndWord();
            } else {
                Add(character);
            }
        }
        EndWord();
    }

    std::optional<std::vector<std::string>> Take() {
        if (quoted_ || words_.empty())
            return std::nullopt;
        if (!placed_)
            words_.push_back(path_);
        return std::move(words_);
    }

  private:
    void Code(char code) {
        if (std::string_view("fFuU").find(code) != std::string_view::npos && !placed_) {
            word_ += path_;
            placed_ = open_ = true;
        } else if (code == '%') {
            Add('%');
        }
    }
    void Add(char character) {
        word_ += character;
        open_ = true;
    }
    void EndWord() {
        if (open_)
            words_.push_back(std::exchange(word_, {}));
        open_ = false;
    }

    const std::string& path_;
    std::vector<std::string> words_;
    std::string word_;
    bool open_ = false;
    bool quoted_ = false;
    bool placed_ = false;
};

}  // namespace

std::optional<std::vector<std::string>> CommandOfEntry(const std::string& exec,
                                                       const std::string& path) {
    EntryWords words(path);
    words.Read(exec);
    return words.Take();
}

Status DesktopShell::Open(const std::string& path_or_address) {
    const bool address = path_or_address.find("://") != std::string::npos;
    const std::string what = address ? path_or_address : WholePath(path_or_address);
    const Status started = Start({"xdg-open", what});
    return started.ok() ? started : Status(started.failure().WithContext(what));
}

Status DesktopShell::EditText(const std::string& path) {
    const std::string whole = WholePath(path);
    if (IsTerminal(Stream::Output) && IsTerminal(Stream::Error)) {
        for (const char* variable : {"VISUAL", "EDITOR"}) {
            const std::string editor = Environment(variable).value_or("");
            if (!editor.empty())
                return RunEditor(editor, whole);
        }
    }
    if (std::optional<std::vector<std::string>> command = TextEditorFor(whole))
        return Start(std::move(*command));
    return Failure{whole + ": no program for plain text is known here; $VISUAL names one"};
}

}  // namespace zorvane
