#include "load/readers/sandbox/sandbox.h"

#include <csignal>
#include <cstdlib>
#include <ctime>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include "load/readers/sandbox/sanitizer.h"

namespace zorvane {
namespace {

void Limit(int kind, std::uint64_t value) {
    const rlimit limit{value, value};
    setrlimit(static_cast<__rlimit_resource>(kind), &limit);
}

}  // namespace

bool CloseToOthers() {
    const pid_t parent = getppid();
    prctl(PR_SET_PDEATHSIG, SIGKILL);
    prctl(PR_SET_DUMPABLE, 0);
    prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    // The other side may be gone, and a file may be full: told by the write itself.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    // Without it the times in a package are asked for in a file of the system, entry by entry.
    setenv("TZ", "UTC0", 1);
    tzset();
    return getppid() == parent;
}

void SetLimits(const ProcessLimits& limits) {
    constexpr std::uint64_t kFewFiles = 8;  // that may be opened still
    Limit(RLIMIT_CORE, 0);
    // Under a sanitizer its shadow memory counts as well, so there is no telling.
    if (!kUnderSanitizer)
        Limit(RLIMIT_DATA, limits.memory);
    Limit(RLIMIT_FSIZE, limits.file_bytes);
    Limit(RLIMIT_CPU, limits.cpu_seconds);
    if (limits.highest_file >= 0)
        Limit(RLIMIT_NOFILE, static_cast<std::uint64_t>(limits.highest_file) + kFewFiles);
    if (!limits.may_start_threads)
        Limit(RLIMIT_NPROC, 0);
}

}  // namespace zorvane
