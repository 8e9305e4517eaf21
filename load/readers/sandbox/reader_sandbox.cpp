// The calls of a reader. Measured: the first group suffices for every reader and every document
// seen; what else is answered is there so that an unusual road ends in an error and not in a crash.
#include <cerrno>
#include <csignal>
#include <linux/futex.h>
#include <sys/mman.h>
#include <unistd.h>

#include "load/readers/sandbox/call_filter.h"
#include "load/readers/sandbox/caught_calls.h"
#include "load/readers/sandbox/landlock.h"
#include "load/readers/sandbox/open_tables.h"
#include "load/readers/sandbox/sandbox.h"
#include "load/readers/sandbox/sanitizer.h"

namespace zorvane {
namespace {

// Memory that is this process's own and never runs: nothing shared escapes the limit of memory.
void AllowMemory(CallFilter& filter) {
    constexpr std::uint64_t kAnyBut = 0xFFFFFFFF;
    filter.Add(SCMP_ACT_ALLOW, {SCMP_SYS(brk), SCMP_SYS(munmap)});
    constexpr std::uint64_t kKind = MAP_TYPE | MAP_ANONYMOUS;
    filter.AddWhere(SCMP_ACT_ALLOW, SCMP_SYS(mmap),
                    {ArgumentBits(2, kAnyBut & ~std::uint64_t{PROT_READ | PROT_WRITE}, 0),
                     ArgumentBits(3, kKind, MAP_PRIVATE | MAP_ANONYMOUS)});
    filter.AddWhere(SCMP_ACT_ALLOW, SCMP_SYS(mremap),
                    {ArgumentBits(3, kAnyBut & ~std::uint64_t{MREMAP_MAYMOVE}, 0)});
}

void AllowWork(CallFilter& filter) {
    // Only the socket, the answer file and the tables are open.
    filter.Add(SCMP_ACT_ALLOW, {SCMP_SYS(read), SCMP_SYS(write), SCMP_SYS(close), SCMP_SYS(lseek),
                                SCMP_SYS(dup), SCMP_SYS(fstat), SCMP_SYS(poll), SCMP_SYS(ppoll)});
    filter.Add(SCMP_ACT_ALLOW, {SCMP_SYS(clock_gettime), SCMP_SYS(gettimeofday), SCMP_SYS(time),
                                SCMP_SYS(getrandom)});
    filter.Add(SCMP_ACT_ALLOW,
               {SCMP_SYS(rt_sigreturn), SCMP_SYS(exit_group), SCMP_SYS(getpid), SCMP_SYS(gettid)});
    for (const int operation : {FUTEX_WAIT, FUTEX_WAKE, FUTEX_WAIT_BITSET, FUTEX_WAKE_BITSET})
        filter.AddWhere(SCMP_ACT_ALLOW, SCMP_SYS(futex),
                        {ArgumentBits(1, static_cast<std::uint32_t>(FUTEX_CMD_MASK),
                                      static_cast<std::uint64_t>(operation))});
    // What `abort` does.
    filter.AddWhere(SCMP_ACT_ALLOW, SCMP_SYS(tgkill),
                    {ArgumentIs(0, static_cast<std::uint64_t>(getpid())), ArgumentIs(2, SIGABRT)});
    if (kUnderSanitizer)
        filter.Add(SCMP_ACT_ALLOW, {SCMP_SYS(pipe2), SCMP_SYS(sigaltstack), SCMP_SYS(madvise)});
}

void RefuseQuestions(CallFilter& filter) {
    filter.Add(SCMP_ACT_ERRNO(EACCES),
               {SCMP_SYS(open), SCMP_SYS(stat), SCMP_SYS(lstat), SCMP_SYS(statx), SCMP_SYS(access),
                SCMP_SYS(faccessat), SCMP_SYS(readlink), SCMP_SYS(readlinkat), SCMP_SYS(getdents),
                SCMP_SYS(getdents64), SCMP_SYS(ioctl), SCMP_SYS(fcntl), SCMP_SYS(prctl),
                SCMP_SYS(prlimit64)});
    filter.Add(CanCatchCalls() ? SCMP_ACT_TRAP : SCMP_ACT_ERRNO(EACCES),
               {SCMP_SYS(openat), SCMP_SYS(newfstatat)});
}

// No reader makes these: who does has been taken over.
void EndAt(CallFilter& filter, std::uint32_t end) {
    filter.Add(end, {SCMP_SYS(execve), SCMP_SYS(execveat), SCMP_SYS(fork), SCMP_SYS(vfork),
                     SCMP_SYS(clone), SCMP_SYS(clone3), SCMP_SYS(unshare), SCMP_SYS(setns)});
    filter.Add(end, {SCMP_SYS(ptrace), SCMP_SYS(process_vm_readv), SCMP_SYS(process_vm_writev),
                     SCMP_SYS(kill), SCMP_SYS(tkill), SCMP_SYS(rt_sigqueueinfo),
                     SCMP_SYS(rt_tgsigqueueinfo), SCMP_SYS(pidfd_open), SCMP_SYS(pidfd_getfd),
                     SCMP_SYS(pidfd_send_signal)});
    filter.Add(end, {SCMP_SYS(socket), SCMP_SYS(socketpair), SCMP_SYS(connect), SCMP_SYS(bind),
                     SCMP_SYS(listen), SCMP_SYS(accept), SCMP_SYS(accept4), SCMP_SYS(sendto),
                     SCMP_SYS(sendmsg), SCMP_SYS(sendmmsg), SCMP_SYS(recvmsg), SCMP_SYS(recvmmsg)});
    filter.Add(end, {SCMP_SYS(mount), SCMP_SYS(umount2), SCMP_SYS(pivot_root), SCMP_SYS(chroot),
                     SCMP_SYS(open_tree), SCMP_SYS(move_mount), SCMP_SYS(fsopen)});
    filter.Add(end, {SCMP_SYS(rename), SCMP_SYS(renameat), SCMP_SYS(renameat2), SCMP_SYS(unlink),
                     SCMP_SYS(unlinkat), SCMP_SYS(rmdir), SCMP_SYS(truncate), SCMP_SYS(creat)});
    filter.Add(end, {SCMP_SYS(io_uring_setup), SCMP_SYS(io_uring_enter),
                     SCMP_SYS(io_uring_register), SCMP_SYS(bpf), SCMP_SYS(perf_event_open),
                     SCMP_SYS(userfaultfd), SCMP_SYS(add_key), SCMP_SYS(request_key),
                     SCMP_SYS(keyctl), SCMP_SYS(shmget), SCMP_SYS(shmat), SCMP_SYS(memfd_create)});
}

}  // namespace

Status EnterReaderSandbox(const OpenTables& tables) {
    if (CanCatchCalls() && !CatchCalls(tables))
        return Failure{"caught system calls cannot be answered"};
    IgnoreFailure(CloseFiles({}), "no path reaches the kernel anyway");
    // A newer C library takes it for an old kernel, and goes another way.
    CallFilter filter(SCMP_ACT_ERRNO(ENOSYS));
    AllowMemory(filter);
    AllowWork(filter);
    RefuseQuestions(filter);
    EndAt(filter, CanCatchCalls() ? SCMP_ACT_TRAP : SCMP_ACT_KILL_PROCESS);
    return filter.Load();
}

}  // namespace zorvane
