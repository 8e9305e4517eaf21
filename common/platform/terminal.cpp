#include "common/platform/terminal.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include "common/platform/file_descriptor.h"
#include "common/platform/system_failure.h"

namespace zorvane {
namespace {

int Descriptor(Stream stream) {
    return static_cast<int>(stream);
}

std::string PagerCommand() {
    if (const auto own = Environment("ZORVANE_PAGER"))
        return *own;
    if (const auto common = Environment("PAGER"))
        return *common;
    return "less";
}

extern "C" void DoNothing(int /*signal_number*/) {}

// A handler that does nothing, since a child starts without it but would inherit SIG_IGN.
class IgnoreSignal {
  public:
    explicit IgnoreSignal(int number) : number_(number), old_(std::signal(number, DoNothing)) {}
    ~IgnoreSignal() { std::signal(number_, old_); }
    IgnoreSignal(const IgnoreSignal&) = delete;
    IgnoreSignal& operator=(const IgnoreSignal&) = delete;

  private:
    int number_;
    void (*old_)(int);
};

}  // namespace

bool IsTerminal(Stream stream) {
    return isatty(Descriptor(stream)) == 1;
}

std::optional<std::string> Environment(const char* name) {
    const char* value = std::getenv(name);
    if (value == nullptr)
        return std::nullopt;
    return std::string(value);
}

bool ColorsFit() {
    return IsTerminal(Stream::Output) && Environment("NO_COLOR").value_or("").empty() &&
           Environment("TERM").value_or("") != "dumb";
}

Status WriteStream(Stream stream, std::string_view bytes) {
    const IgnoreSignal broken_pipe(SIGPIPE);
    if (WriteAll(Descriptor(stream), bytes))
        return Status::Ok();
    return SystemFailure(stream == Stream::Output ? "standard output" : "standard error");
}

Result<std::string> AskSecret(std::string_view prompt) {
    const FileDescriptor terminal(open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY));
    termios shown{};
    if (!terminal.IsOpen() || tcgetattr(terminal.Get(), &shown) != 0)
        return Failure{"there is no terminal to ask on"};
    termios hidden = shown;
    hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    tcsetattr(terminal.Get(), TCSAFLUSH, &hidden);
    WriteAll(terminal.Get(), prompt);
    std::string line;
    char letter = 0;
    while (read(terminal.Get(), &letter, 1) == 1 && letter != '\n')
        line += letter;
    tcsetattr(terminal.Get(), TCSAFLUSH, &shown);
    WriteAll(terminal.Get(), "\n");
    return line;
}

Status ShowPaged(std::string_view text) {
    const std::string command = PagerCommand();
    if (command.empty() || command == "cat")
        return WriteStream(Stream::Output, text);
    setenv("LESS", "FRX", 0);
    // Ctrl-C in a pager ends a search of the pager; a program that died of it would leave the
    // terminal to two readers.
    const IgnoreSignal broken_pipe(SIGPIPE);
    const IgnoreSignal interrupt(SIGINT);
    FILE* pager = popen(command.c_str(), "w");  // NOLINT(cert-env33-c): the user's own command
    if (pager == nullptr)
        return WriteStream(Stream::Output, text);
    WriteAll(fileno(pager), text);
    constexpr int kCommandNotFound = 127;
    const int status = pclose(pager);
    if (WIFEXITED(status) && WEXITSTATUS(status) == kCommandNotFound)
        return WriteStream(Stream::Output, text);
    return Status::Ok();
}

}  // namespace zorvane
