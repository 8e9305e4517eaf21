// The office suite as a child process for each document: slower than its library, and without
// passwords, for where there is no library to load.
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "common/platform/argument_pointers.h"
#include "common/platform/mapped_file.h"
#include "load/readers/office/office_files.h"
#include "load/readers/office/office_password.h"

namespace zorvane {
namespace {

using Clock = std::chrono::steady_clock;

// Its launcher runs the suite again when it asks for that, as after making a new profile.
constexpr int kWantsToRunAgain = 81;
constexpr int kCannotStart = 127;

enum class ChildEnd { Finished, RunAgain, NotStarted, Failed, TooSlow };

ChildEnd EndOf(int status) {
    if (!WIFEXITED(status))
        return ChildEnd::Failed;
    switch (WEXITSTATUS(status)) {
        case 0:
            return ChildEnd::Finished;
        case kWantsToRunAgain:
            return ChildEnd::RunAgain;
        case kCannotStart:
            return ChildEnd::NotStarted;
        default:
            return ChildEnd::Failed;
    }
}

/// In the child, where only calls that are safe after a fork are allowed.
[[noreturn]] void BecomeProgram(const char* program, char* const* arguments,
                                char* const* environment) {
    setpgid(0, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int nothing = open("/dev/null", O_RDWR);
    for (const int standard : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        dup2(nothing, standard);
    execve(program, arguments, environment);
    _exit(kCannotStart);
}

/// The child leads a group of its own, so that what it starts ends with it.
ChildEnd WaitForChild(pid_t child, Clock::time_point deadline) {
    constexpr std::chrono::milliseconds kPause{10};
    for (;;) {
        int status = 0;
        const pid_t ended = waitpid(child, &status, WNOHANG);
        if (ended == child) {
            kill(-child, SIGKILL);
            return EndOf(status);
        }
        if (ended < 0 && errno != EINTR)
            return ChildEnd::Failed;
        if (Clock::now() >= deadline) {
            kill(-child, SIGKILL);
            kill(child, SIGKILL);
            waitpid(child, &status, 0);
            return ChildEnd::TooSlow;
        }
        std::this_thread::sleep_for(kPause);
    }
}

/// This process's environment with the given entries in the place of its own ones.
std::vector<std::string> EnvironmentWith(const std::vector<std::string>& entries) {
    std::vector<std::string> environment = entries;
    for (char** entry = environ; entry != nullptr && *entry != nullptr; ++entry) {
        const std::string_view own(*entry);
        const std::string_view name = own.substr(0, own.find('=') + 1);
        bool replaced = false;
        for (const std::string& given : entries)
            replaced = replaced || given.starts_with(name);
        if (!replaced)
            environment.emplace_back(own);
    }
    return environment;
}

bool WantsPassword(const std::string& path) {
    const Result<MappedFile> file = MappedFile::Open(path);
    return file.ok() && IsBehindPassword(file.value().Bytes());
}

class OfficeProgram : public OfficeSession {
  public:
    OfficeProgram(const OfficePlace& place, const std::string& profile_folder,
                  std::chrono::milliseconds time_limit)
        : place_(place), folder_(profile_folder), time_limit_(time_limit) {}

    ReadEnd Convert(const OfficeTask& task) override;

  private:
    ReadEnd Run(const std::string& path, const OfficeFormat& format) const;
    ChildEnd RunOnce(std::vector<std::string> arguments, Clock::time_point deadline) const;

    OfficePlace place_;
    OfficeFolder folder_;
    std::chrono::milliseconds time_limit_;
};

ChildEnd OfficeProgram::RunOnce(std::vector<std::string> arguments,
                                Clock::time_point deadline) const {
    std::vector<std::string> environment = EnvironmentWith(
        {"SAL_USE_VCLPLUGIN=svp", "LC_ALL=C.UTF-8", "TMPDIR=" + folder_.Temporary()});
    const std::vector<char*> argument_pointers = ArgumentPointers(arguments);
    const std::vector<char*> environment_pointers = ArgumentPointers(environment);
    const pid_t child = fork();
    if (child < 0)
        return ChildEnd::NotStarted;
    if (child == 0)
        BecomeProgram(arguments.front().c_str(), argument_pointers.data(),
                      environment_pointers.data());
    // Here too, so that the group is there before it is ended.
    setpgid(child, child);
    return WaitForChild(child, deadline);
}

ReadEnd OfficeProgram::Run(const std::string& path, const OfficeFormat& format) const {
    // The program behind the launcher, so that the child is the suite itself and not its parent.
    std::string program = place_.program_folder + "/soffice.bin";
    if (access(program.c_str(), X_OK) != 0)
        program = place_.soffice;
    const std::vector<std::string> arguments{
        program,
        "--headless",
        "--norestore",
        "--nolockcheck",
        "--nologo",
        "--nodefault",
        "-env:UserInstallation=" + folder_.ProfileUrl(),
        "--convert-to",
        std::string(format.name) + ":" + std::string(format.filter),
        "--outdir",
        folder_.ResultFolder(),
        path};
    const Clock::time_point deadline = Clock::now() + time_limit_;
    constexpr int kMostRuns = 3;
    ChildEnd end = ChildEnd::RunAgain;
    for (int run = 0; run < kMostRuns && end == ChildEnd::RunAgain; ++run)
        end = RunOnce(arguments, deadline);
    switch (end) {
        case ChildEnd::TooSlow:
            return ReadEnd::Fault(ReadError::Damaged, "The office suite did not end in time.");
        case ChildEnd::NotStarted:
            return ReadEnd::Fault(ReadError::NeedsOffice, "The office suite could not be started.");
        case ChildEnd::Finished:
            return ReadEnd::Ok();
        default:
            return ReadEnd::Fault(ReadError::Damaged, "The office suite could not read it.");
    }
}

ReadEnd OfficeProgram::Convert(const OfficeTask& task) {
    const OfficeFormat* wanted = FindOfficeFormat(task.format);
    if (wanted == nullptr)
        return ReadEnd::Fault(ReadError::Unsupported, "No such format to convert to.");
    if (!HasPartFor(place_, wanted->kind)) {
        return ReadEnd::Fault(ReadError::NeedsOffice,
                              "This part of the office suite is not installed.");
    }
    if (!folder_.Prepare())
        return ReadEnd::Fault(ReadError::CannotWrite, "There is no temporary folder.");
    std::string path;
    if (ReadEnd end = folder_.Offer(task, path); !end.ok())
        return end;
    ReadEnd end = Run(path, *wanted);
    if (end.ok())
        end = folder_.Deliver(task);
    // The program takes no password, and tells nobody that it wanted one.
    if (end.error == ReadError::Damaged && WantsPassword(path))
        return ReadEnd::Fault(ReadError::PasswordNeeded);
    return end;
}

}  // namespace

std::unique_ptr<OfficeSession> MakeOfficeProgram(const OfficePlace& place,
                                                 const std::string& profile_folder,
                                                 std::chrono::milliseconds time_limit) {
    return std::make_unique<OfficeProgram>(place, profile_folder, time_limit);
}

}  // namespace zorvane
