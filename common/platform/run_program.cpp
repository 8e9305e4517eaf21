#include "common/platform/run_program.h"

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include "common/platform/argument_pointers.h"
#include "common/platform/process_environment.h"
#include "common/platform/system_failure.h"

namespace zorvane {
namespace {

constexpr int kSignalBase = 128;

std::string ReadToEnd(int descriptor) {
    std::string text;
    std::array<char, 4096> part{};
    for (;;) {
        const ssize_t got = read(descriptor, part.data(), part.size());
        if (got > 0)
            text.append(part.data(), static_cast<std::size_t>(got));
        else if (got == 0 || errno != EINTR)
            break;
    }
    while (text.ends_with('\n'))
        text.pop_back();
    return text;
}

int WaitFor(pid_t child) {
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) ? WEXITSTATUS(status) : kSignalBase + WTERMSIG(status);
}

}  // namespace

Result<ProgramAnswer> RunProgram(const std::vector<std::string>& words) {
    std::vector<std::string> copies = words;
    const std::vector<char*> pointers = ArgumentPointers(copies);
    int ends[2];
    if (pipe2(ends, O_CLOEXEC) != 0)
        return SystemFailure(words[0]);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDIN_FILENO, "/dev/null", O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    pid_t child = -1;
    const int error =
        posix_spawnp(&child, pointers[0], &actions, nullptr, pointers.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    ProgramAnswer answer;
    if (error == 0)
        answer.output = ReadToEnd(ends[0]);
    close(ends[0]);
    if (error != 0)
        return SystemFailure(words[0], error);
    answer.status = WaitFor(child);
    return answer;
}

}  // namespace zorvane
