// Roads out of a closed office worker, with the library of a suite and with its start program.
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/wait.h>
#include <thread>

#include <gtest/gtest.h>

#include "load/readers/office/office_worker.h"
#include "load/readers/sandbox/sandbox.h"
#include "tests/support/probe.h"
#include "tests/support/temp_folder.h"

namespace zorvane::office_probe_test {
namespace {

struct Prey {
    char witness[256];  // a file of the user's, which anybody may write
    char own[256];      // one in the profile
    pid_t parent = 0;
    volatile long secret = 42;
};
Prey g_prey;

bool Opens(const char* path, int flags) {
    return open(path, flags, 0600) >= 0;
}
bool Worked(long result) {
    return result >= 0;
}
bool Runs() {
    const pid_t child = fork();
    if (child < 0)
        return false;
    if (child == 0) {
        execl("/bin/true", "true", nullptr);
        _exit(1);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}
bool WritesParent() {
    long value = 7;
    iovec own{&value, sizeof value};
    iovec other{const_cast<long*>(&g_prey.secret), sizeof value};
    return Worked(syscall(SYS_process_vm_writev, g_prey.parent, &own, 1, &other, 1, 0));
}
bool RunsOwnFile() {
    char* const none[] = {nullptr};
    return Worked(execve(g_prey.own, none, none));
}
bool StartsThread() {
    int done = 0;
    std::thread([&done] { done = 1; }).join();
    return done == 1;
}

struct OfficeRoad {
    const char* name;
    bool (*reached)();
    bool with_library;  // whether the road is open to a worker with the suite's library
    bool with_program;  // and to one that runs the suite's start program
};

constexpr OfficeRoad kOfficeRoads[] = {
    {"its own file", [] { return Opens(g_prey.own, O_RDWR); }, true, true},
    {"fonts", [] { return Opens("/usr/share", O_RDONLY | O_DIRECTORY); }, true, true},
    {"threads", StartsThread, true, true},
    {"another program", Runs, false, true},
    {"a program of its own making", RunsOwnFile, false, false},
    {"the user's file", [] { return Opens(g_prey.witness, O_RDONLY); }, false, false},
    {"writing the user's file", [] { return Opens(g_prey.witness, O_WRONLY); }, false, false},
    {"deleting it", [] { return Worked(unlink(g_prey.witness)); }, false, false},
    {"its mode", [] { return Worked(chmod(g_prey.witness, 0)); }, false, false},
    {"its times", [] { return Worked(utimensat(AT_FDCWD, g_prey.witness, nullptr, 0)); }, false,
     false},
    {"the users", [] { return Opens("/etc/passwd", O_RDONLY); }, false, false},
    {"writing to the system", [] { return Opens("/usr/zv-probe", O_CREAT | O_WRONLY); }, false,
     false},
    {"internet", [] { return Worked(socket(AF_INET, SOCK_STREAM, 0)); }, false, false},
    {"netlink", [] { return Worked(socket(AF_NETLINK, SOCK_RAW, 0)); }, false, false},
    {"local socket", [] { return Worked(socket(AF_UNIX, SOCK_STREAM, 0)); }, false, true},
    {"io_uring",
     [] {
         char parameters[256] = {};
         return Worked(syscall(SYS_io_uring_setup, 4, parameters));
     },
     false, false},
    {"ptrace", [] { return Worked(ptrace(PTRACE_SEIZE, g_prey.parent, nullptr, nullptr)); }, false,
     false},
    {"parent's memory", WritesParent, false, false},
    {"unshare", [] { return Worked(unshare(CLONE_NEWUSER)); }, false, false},
    {"a namespace by clone",
     [] { return syscall(SYS_clone, CLONE_NEWUSER | SIGCHLD, 0, 0, 0, 0) > 0; }, false, false},
    {"dumpable again", [] { return Worked(prctl(PR_SET_DUMPABLE, 1, 0, 0, 0)); }, false, false},
};

TEST(OfficeProbe, OnlyWhatASuiteNeedsIsOpen) {
    if (LandlockVersion() == 0)
        GTEST_SKIP() << "the kernel has no Landlock";
    const TempFolder folder;
    chmod(folder.Path().c_str(), 0777);
    std::filesystem::create_directories(folder.Path("profile"));
    chmod(folder.Path("profile").c_str(), 0777);
    const auto keep = [](char* place, std::size_t size, const std::string& text) {
        std::snprintf(place, size, "%s", text.c_str());
    };
    keep(g_prey.witness, sizeof g_prey.witness, folder.Write("witness", "stays"));
    keep(g_prey.own, sizeof g_prey.own, folder.Write("profile/own", "#!/bin/true\n"));
    chmod(g_prey.witness, 0666);
    chmod(g_prey.own, 0777);
    g_prey.parent = getpid();
    for (const bool library : {true, false}) {
        const OfficePlace place = OfficeAt("/usr/lib/suite/program", "/usr/bin/suite", library);
        const auto close_in = [&] {
            return CloseToOthers() &&
                   EnterOfficeSandbox(OfficeRights(place, folder.Path("profile")), !library).ok();
        };
        for (const OfficeRoad& road : kOfficeRoads) {
            SCOPED_TRACE(std::string(road.name) + (library ? ", library" : ", program"));
            const ProbeEnd end = Probe(close_in, road.reached);
            EXPECT_NE(end, ProbeEnd::NotClosed);
            EXPECT_EQ(end == ProbeEnd::Reached, library ? road.with_library : road.with_program)
                << static_cast<int>(end);
            EXPECT_EQ(folder.Read("witness"), "stays");
            EXPECT_EQ(g_prey.secret, 42);
        }
    }
}

}  // namespace
}  // namespace zorvane::office_probe_test
