// The calls of an office suite. It is far too large to list each call that it makes, so that they
// are allowed by families; which files they reach is for Landlock.
#include <cerrno>
#include <linux/sched.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <unistd.h>

#include "load/readers/sandbox/call_filter.h"
#include "load/readers/sandbox/landlock.h"
#include "load/readers/sandbox/sandbox.h"

namespace zorvane {
namespace {

// Without those that change modes, owners, times and attributes, which Landlock lets pass.
void AllowFiles(CallFilter& filter) {
    filter.Add(
        SCMP_ACT_ALLOW,
        {SCMP_SYS(read),      SCMP_SYS(write),     SCMP_SYS(readv),     SCMP_SYS(writev),
         SCMP_SYS(pread64),   SCMP_SYS(pwrite64),  SCMP_SYS(lseek),     SCMP_SYS(open),
         SCMP_SYS(openat),    SCMP_SYS(creat),     SCMP_SYS(close),     SCMP_SYS(dup),
         SCMP_SYS(dup2),      SCMP_SYS(dup3),      SCMP_SYS(fcntl),     SCMP_SYS(flock),
         SCMP_SYS(fsync),     SCMP_SYS(fdatasync), SCMP_SYS(ftruncate), SCMP_SYS(truncate),
         SCMP_SYS(fallocate), SCMP_SYS(fadvise64), SCMP_SYS(readahead), SCMP_SYS(copy_file_range),
         SCMP_SYS(sendfile)});
    filter.Add(SCMP_ACT_ALLOW,
               {SCMP_SYS(stat), SCMP_SYS(lstat), SCMP_SYS(fstat), SCMP_SYS(newfstatat),
                SCMP_SYS(statx), SCMP_SYS(statfs), SCMP_SYS(fstatfs), SCMP_SYS(access),
                SCMP_SYS(faccessat), SCMP_SYS(faccessat2), SCMP_SYS(readlink), SCMP_SYS(readlinkat),
                SCMP_SYS(getdents), SCMP_SYS(getdents64), SCMP_SYS(getcwd), SCMP_SYS(chdir),
                SCMP_SYS(fchdir), SCMP_SYS(umask)});
    filter.Add(SCMP_ACT_ALLOW,
               {SCMP_SYS(rename), SCMP_SYS(renameat), SCMP_SYS(renameat2), SCMP_SYS(unlink),
                SCMP_SYS(unlinkat), SCMP_SYS(mkdir), SCMP_SYS(mkdirat), SCMP_SYS(rmdir),
                SCMP_SYS(link), SCMP_SYS(linkat), SCMP_SYS(symlink), SCMP_SYS(symlinkat),
                SCMP_SYS(pipe), SCMP_SYS(pipe2), SCMP_SYS(eventfd2), SCMP_SYS(memfd_create)});
}

// Executable and shared memory stay open: the suite's bridges between its languages need them.
void AllowAnyMemory(CallFilter& filter) {
    filter.Add(SCMP_ACT_ALLOW,
               {SCMP_SYS(brk), SCMP_SYS(mmap), SCMP_SYS(munmap), SCMP_SYS(mremap),
                SCMP_SYS(mprotect), SCMP_SYS(madvise), SCMP_SYS(mincore), SCMP_SYS(msync)});
}

void AllowThreads(CallFilter& filter, bool may_start_programs) {
    constexpr std::uint64_t kThread = CLONE_THREAD | CLONE_VM;
    constexpr std::uint64_t kNamespaces = CLONE_NEWNS | CLONE_NEWCGROUP | CLONE_NEWUTS |
                                          CLONE_NEWIPC | CLONE_NEWUSER | CLONE_NEWPID |
                                          CLONE_NEWNET;
    if (may_start_programs)
        filter.AddWhere(SCMP_ACT_ALLOW, SCMP_SYS(clone), {ArgumentBits(0, kNamespaces, 0)});
    else
        filter.AddWhere(SCMP_ACT_ALLOW, SCMP_SYS(clone),
                        {ArgumentBits(0, kThread | kNamespaces, kThread)});
    // Its flags lie in memory, where no filter sees them; the C library then takes the old call.
    filter.Add(SCMP_ACT_ERRNO(ENOSYS), {SCMP_SYS(clone3)});
    filter.Add(SCMP_ACT_ALLOW,
               {SCMP_SYS(futex), SCMP_SYS(set_robust_list), SCMP_SYS(set_tid_address),
                SCMP_SYS(rseq), SCMP_SYS(arch_prctl), SCMP_SYS(membarrier), SCMP_SYS(sched_yield),
                SCMP_SYS(sched_getaffinity), SCMP_SYS(sched_getparam), SCMP_SYS(sched_getscheduler),
                SCMP_SYS(sched_get_priority_min), SCMP_SYS(sched_get_priority_max),
                SCMP_SYS(getcpu), SCMP_SYS(gettid), SCMP_SYS(getpid), SCMP_SYS(getppid),
                SCMP_SYS(exit), SCMP_SYS(exit_group)});
    filter.Add(SCMP_ACT_ALLOW,
               {SCMP_SYS(rt_sigaction), SCMP_SYS(rt_sigprocmask), SCMP_SYS(rt_sigreturn),
                SCMP_SYS(rt_sigpending), SCMP_SYS(rt_sigtimedwait), SCMP_SYS(sigaltstack),
                SCMP_SYS(restart_syscall)});
    filter.AddWhere(SCMP_ACT_ALLOW, SCMP_SYS(tgkill),
                    {ArgumentIs(0, static_cast<std::uint64_t>(getpid()))});
    for (const int operation : {PR_SET_NAME, PR_GET_NAME, PR_CAPBSET_READ})
        filter.AddWhere(SCMP_ACT_ALLOW, SCMP_SYS(prctl),
                        {ArgumentIs(0, static_cast<std::uint64_t>(operation))});
}

void AllowWaitingAndAsking(CallFilter& filter) {
    filter.Add(SCMP_ACT_ALLOW,
               {SCMP_SYS(clock_gettime), SCMP_SYS(clock_getres), SCMP_SYS(clock_nanosleep),
                SCMP_SYS(nanosleep), SCMP_SYS(gettimeofday), SCMP_SYS(time), SCMP_SYS(times),
                SCMP_SYS(timer_create), SCMP_SYS(timer_settime), SCMP_SYS(timer_gettime),
                SCMP_SYS(timer_delete), SCMP_SYS(setitimer), SCMP_SYS(alarm),
                SCMP_SYS(timerfd_create), SCMP_SYS(timerfd_settime)});
    filter.Add(SCMP_ACT_ALLOW, {SCMP_SYS(poll), SCMP_SYS(ppoll), SCMP_SYS(select),
                                SCMP_SYS(pselect6), SCMP_SYS(epoll_create1), SCMP_SYS(epoll_ctl),
                                SCMP_SYS(epoll_wait), SCMP_SYS(epoll_pwait)});
    filter.Add(SCMP_ACT_ALLOW,
               {SCMP_SYS(uname), SCMP_SYS(sysinfo), SCMP_SYS(getrusage), SCMP_SYS(getrlimit),
                SCMP_SYS(getuid), SCMP_SYS(geteuid), SCMP_SYS(getgid), SCMP_SYS(getegid),
                SCMP_SYS(getgroups), SCMP_SYS(getpgrp), SCMP_SYS(getpgid), SCMP_SYS(getsid),
                SCMP_SYS(getrandom), SCMP_SYS(recvmsg)});  // the last: the next request
    filter.AddWhere(SCMP_ACT_ALLOW, SCMP_SYS(prlimit64), {ArgumentIs(0, 0), ArgumentIs(2, 0)});
}

// The suite's start program is a shell that starts another that starts the suite, which listens
// at a socket in its temporary folder.
void AllowPrograms(CallFilter& filter) {
    filter.Add(SCMP_ACT_ALLOW, {SCMP_SYS(execve),      SCMP_SYS(fork),       SCMP_SYS(vfork),
                                SCMP_SYS(wait4),       SCMP_SYS(waitid),     SCMP_SYS(kill),
                                SCMP_SYS(setpgid),     SCMP_SYS(setsid),     SCMP_SYS(connect),
                                SCMP_SYS(bind),        SCMP_SYS(listen),     SCMP_SYS(accept),
                                SCMP_SYS(accept4),     SCMP_SYS(sendto),     SCMP_SYS(sendmsg),
                                SCMP_SYS(recvfrom),    SCMP_SYS(shutdown),   SCMP_SYS(getsockname),
                                SCMP_SYS(getpeername), SCMP_SYS(setsockopt), SCMP_SYS(getsockopt)});
    filter.AddWhere(SCMP_ACT_ALLOW, SCMP_SYS(socket), {ArgumentIs(0, AF_UNIX)});
    filter.AddWhere(SCMP_ACT_ALLOW, SCMP_SYS(socketpair), {ArgumentIs(0, AF_UNIX)});
    // Its signals to itself carry the number of the process that it became.
    filter.Add(SCMP_ACT_ALLOW, {SCMP_SYS(tgkill), SCMP_SYS(prlimit64)});
    filter.AddWhere(SCMP_ACT_ALLOW, SCMP_SYS(prctl), {ArgumentIs(0, PR_SET_PDEATHSIG)});
}

}  // namespace

Status EnterOfficeSandbox(const FolderRights& rights, bool may_start_programs) {
    if (Status closed = CloseFiles(rights); !closed.ok())
        return closed;
    CallFilter filter(SCMP_ACT_ERRNO(EPERM));
    AllowFiles(filter);
    AllowAnyMemory(filter);
    AllowThreads(filter, may_start_programs);
    AllowWaitingAndAsking(filter);
    if (may_start_programs)
        AllowPrograms(filter);
    return filter.Load();
}

}  // namespace zorvane
