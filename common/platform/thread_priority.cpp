#include "common/platform/thread_priority.h"

#include <sys/resource.h>
#include <unistd.h>

namespace zorvane {

// A third of the weight of a window's thread. Alone on the machine it costs nothing.
void StandBehindWindows() {
    constexpr int kNicer = 5;
    const auto thread = static_cast<id_t>(gettid());
    static_cast<void>(
        setpriority(PRIO_PROCESS, thread, getpriority(PRIO_PROCESS, thread) + kNicer));
}

}  // namespace zorvane
