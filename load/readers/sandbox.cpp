#include "load/readers/sandbox.h"

#include <cerrno>
#include <csignal>
#include <initializer_list>
#include <seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>

namespace zorvane {
namespace {

class Filter {
  public:
    Filter() : context_(seccomp_init(SCMP_ACT_ALLOW)) {}
    ~Filter() {
        if (context_ != nullptr)
            seccomp_release(context_);
    }
    Filter(const Filter&) = delete;
    Filter& operator=(const Filter&) = delete;

    bool Deny(int call) { return Add(call, 0, nullptr); }
    bool DenyUnlessFirstIs(int call, unsigned long value) {
        const scmp_arg_cmp rule{0, SCMP_CMP_NE, value, 0};
        return Add(call, 1, &rule);
    }
    bool Load() { return context_ != nullptr && seccomp_load(context_) == 0; }

  private:
    bool Add(int call, unsigned count, const scmp_arg_cmp* rules) {
        return context_ != nullptr &&
               seccomp_rule_add_array(context_, SCMP_ACT_ERRNO(EACCES), call, count, rules) == 0;
    }

    scmp_filter_ctx context_;
};

}  // namespace

void DieWithParent() {
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

void LimitMemory([[maybe_unused]] std::size_t bytes) {
    const rlimit no_core{0, 0};
    setrlimit(RLIMIT_CORE, &no_core);
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    // Under a sanitizer its shadow memory counts as well, so there is no telling.
    const rlimit limit{bytes, bytes};
    setrlimit(RLIMIT_DATA, &limit);
#endif
}

bool ForbidNetwork() {
    Filter filter;
    return filter.DenyUnlessFirstIs(SCMP_SYS(socket), AF_UNIX) && filter.Load();
}

bool ForbidPrograms() {
    Filter filter;
    bool added = true;
    for (const int call : {SCMP_SYS(execve), SCMP_SYS(execveat), SCMP_SYS(fork), SCMP_SYS(vfork),
                           SCMP_SYS(connect), SCMP_SYS(ptrace)})
        added = filter.Deny(call) && added;
    return added && filter.Load();
}

}  // namespace zorvane
