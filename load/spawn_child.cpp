#include "load/spawn_child.h"

#include <csignal>
#include <fcntl.h>
#include <spawn.h>
#include <unistd.h>
#include <utility>

#include "common/platform/argument_pointers.h"

namespace zorvane {
namespace {

class SpawnSetup {
  public:
    explicit SpawnSetup(int socket) {
        constexpr int kFirstOther = 3;
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_adddup2(&actions_, socket, STDIN_FILENO);
        posix_spawn_file_actions_addopen(&actions_, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addopen(&actions_, STDERR_FILENO, "/dev/null", O_WRONLY, 0);
        posix_spawn_file_actions_addclosefrom_np(&actions_, kFirstOther);
        posix_spawnattr_init(&attributes_);
        sigset_t signals;
        sigemptyset(&signals);
        for (const int number : {SIGINT, SIGTERM, SIGHUP})
            sigaddset(&signals, number);
        posix_spawnattr_setsigmask(&attributes_, &signals);
        // A group of its own: Ctrl-C at the terminal ends the run, and the run ends its children.
        posix_spawnattr_setpgroup(&attributes_, 0);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETPGROUP);
    }
    ~SpawnSetup() {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }
    SpawnSetup(const SpawnSetup&) = delete;
    SpawnSetup& operator=(const SpawnSetup&) = delete;

    int Spawn(const std::string& program, const std::vector<std::string>& arguments,
              std::vector<std::string> environment) {
        std::vector<std::string> texts = {program};
        texts.insert(texts.end(), arguments.begin(), arguments.end());
        const std::vector<char*> values = ArgumentPointers(texts);
        const std::vector<char*> variables = ArgumentPointers(environment);
        pid_t process = -1;
        const int error = posix_spawn(&process, program.c_str(), &actions_, &attributes_,
                                      values.data(), variables.data());
        return error == 0 ? process : -1;
    }

  private:
    posix_spawn_file_actions_t actions_{};
    posix_spawnattr_t attributes_{};
};

}  // namespace

int SpawnChild(const std::string& program, const std::vector<std::string>& arguments,
               std::vector<std::string> environment, int socket) {
    return SpawnSetup(socket).Spawn(program, arguments, std::move(environment));
}

}  // namespace zorvane
