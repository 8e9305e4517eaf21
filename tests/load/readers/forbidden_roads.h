#pragma once

// The roads out of a closed reader, and what they lead to.
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <linux/futex.h>
#include <netinet/in.h>
#include <sched.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/mman.h>
#include <sys/mount.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/shm.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <sys/un.h>
#include <termios.h>

#include "load/readers/sandbox/call_filter.h"
#include "load/readers/sandbox/landlock.h"
#include "load/readers/sandbox/open_tables.h"
#include "load/readers/sandbox/sandbox.h"
#include "load/readers/sandbox/sanitizer.h"

namespace zorvane::forbidden_roads {

constexpr std::uint64_t kMemory = std::uint64_t{64} << 20;

// What the roads lead to. Plain memory: a closed process asks for no more.
struct Prey {
    char folder[256];
    char witness[256];   // "stays", which anybody may write
    char fresh[256];     // a name that nothing has yet
    char table[256];     // opened in advance
    char address[108];   // of a socket that somebody listens at
    int inherited = -1;  // of the witness
    pid_t parent = 0;
    volatile long secret = 42;
};
inline Prey g_prey;
inline OpenTables g_tables;

inline bool CloseReader() {
    if (!CloseToOthers())
        return false;
    SetLimits({kMemory, kMemory, 20, 60});
    return EnterReaderSandbox(g_tables).ok();
}

// As on a kernel without it: the filter has to hold alone.
inline bool CloseReaderWithoutLandlock() {
    constexpr int kCreateRuleset = 444;
    CallFilter outer(SCMP_ACT_ALLOW);
    outer.Add(SCMP_ACT_ERRNO(ENOSYS), {kCreateRuleset});
    return outer.Load().ok() && LandlockVersion() == 0 && CloseReader();
}

inline bool Worked(long result) {
    return result >= 0;
}
inline bool Opens(long file) {
    return file >= 0;
}

inline sockaddr_un Listener() {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    std::memcpy(address.sun_path, g_prey.address, sizeof g_prey.address);
    return address;
}

inline bool SendsDescriptor() {
    char byte = 'x';
    iovec data{&byte, 1};
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = {};
    msghdr message{};
    message.msg_iov = &data;
    message.msg_iovlen = 1;
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    cmsghdr* const header = CMSG_FIRSTHDR(&message);
    header->cmsg_level = SOL_SOCKET;
    header->cmsg_type = SCM_RIGHTS;
    header->cmsg_len = CMSG_LEN(sizeof(int));
    return Worked(sendmsg(STDIN_FILENO, &message, MSG_DONTWAIT));
}

inline bool WritesParent() {
    long value = 7;
    iovec own{&value, sizeof value};
    iovec other{const_cast<long*>(&g_prey.secret), sizeof value};
    return Worked(syscall(SYS_process_vm_writev, g_prey.parent, &own, 1, &other, 1, 0));
}
inline bool ReadsParent() {
    long value = 0;
    iovec own{&value, sizeof value};
    iovec other{const_cast<long*>(&g_prey.secret), sizeof value};
    return Worked(syscall(SYS_process_vm_readv, g_prey.parent, &own, 1, &other, 1, 0));
}

inline bool OpensOfParent(const char* what) {
    char path[64];
    std::snprintf(path, sizeof path, "/proc/%d/%s", static_cast<int>(g_prey.parent), what);
    return Opens(open(path, O_RDWR)) || Opens(open(path, O_RDONLY));
}

inline bool MapsExecutable(int flags) {
    void* const place = mmap(nullptr, 4096, PROT_READ | PROT_WRITE | PROT_EXEC, flags, -1, 0);
    return place != MAP_FAILED;
}
inline bool MakesExecutable() {
    void* const place =
        mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    return place != MAP_FAILED && Worked(mprotect(place, 4096, PROT_READ | PROT_EXEC));
}

inline bool OpensThroughRing() {
    char parameters[256] = {};
    return Worked(syscall(SYS_io_uring_setup, 4, parameters));
}

inline bool StartsThread() {
    alignas(16) static char stack[65536];
    return Worked(clone([](void*) { return 0; }, stack + sizeof stack,
                        CLONE_VM | CLONE_THREAD | CLONE_SIGHAND | CLONE_FS | CLONE_FILES, nullptr));
}
inline bool StartsBySize(long call) {
    struct {
        std::uint64_t values[11];
    } arguments{};
    arguments.values[4] = SIGCHLD;
    return Worked(syscall(call, &arguments, sizeof arguments));
}

inline bool RaisesLimit() {
    const rlimit limit{RLIM_INFINITY, RLIM_INFINITY};
    rlimit now{};
    setrlimit(RLIMIT_DATA, &limit);
    return getrlimit(RLIMIT_DATA, &now) == 0 && now.rlim_cur == RLIM_INFINITY;
}
inline bool TakesMemory() {
    if (kUnderSanitizer)
        return false;
    for (int i = 0; i < 16; ++i) {
        void* const place =
            mmap(nullptr, kMemory / 8, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (place == MAP_FAILED)
            return false;
    }
    return true;
}

#if defined(__x86_64__)
inline long Call32(long number, long first) {
    long result = 0;
    asm volatile("int $0x80" : "=a"(result) : "a"(number), "b"(first) : "memory");
    return result;
}
#endif

inline bool Opens2() {
    const std::uint64_t how[3] = {O_RDONLY, 0, 0};
    return Opens(syscall(437, AT_FDCWD, g_prey.witness, how, sizeof how));
}

struct Road {
    const char* name;
    bool (*reached)();
};

inline constexpr Road kRoads[] = {
    {"socket: internet", [] { return Opens(socket(AF_INET, SOCK_STREAM, 0)); }},
    {"socket: internet 6", [] { return Opens(socket(AF_INET6, SOCK_DGRAM, 0)); }},
    {"socket: netlink", [] { return Opens(socket(AF_NETLINK, SOCK_RAW, 0)); }},
    {"socket: local", [] { return Opens(socket(AF_UNIX, SOCK_STREAM, 0)); }},
    {"socket pair",
     [] {
         int pair[2];
         return Worked(socketpair(AF_UNIX, SOCK_STREAM, 0, pair));
     }},
    {"connect",
     [] {
         const sockaddr_un address = Listener();
         return Worked(
             connect(STDIN_FILENO, reinterpret_cast<const sockaddr*>(&address), sizeof address));
     }},
    {"pass a descriptor", SendsDescriptor},
    {"io_uring", OpensThroughRing},
    {"execve",
     [] {
         char* const none[] = {nullptr};
         return Worked(execve("/bin/true", none, none));
     }},
    {"execveat",
     [] {
         char* const none[] = {nullptr};
         return Worked(syscall(SYS_execveat, AT_FDCWD, "/bin/true", none, none, 0));
     }},
    {"fork", [] { return Worked(syscall(SYS_clone, SIGCHLD, 0, 0, 0, 0)); }},
    {"clone3", [] { return StartsBySize(SYS_clone3); }},
    {"thread", StartsThread},
    // Without stopping it: the road is also tried where it is open.
    {"ptrace", [] { return Worked(ptrace(PTRACE_SEIZE, g_prey.parent, nullptr, nullptr)); }},
    {"process_vm_writev", WritesParent},
    {"process_vm_readv", ReadsParent},
    {"parent's memory", [] { return OpensOfParent("mem"); }},
    {"parent's environment", [] { return OpensOfParent("environ"); }},
    {"kill", [] { return Worked(kill(g_prey.parent, 0)); }},
    {"tgkill of the parent",
     [] { return Worked(syscall(SYS_tgkill, g_prey.parent, g_prey.parent, 0)); }},
    {"tgkill of itself, another signal",
     [] { return Worked(syscall(SYS_tgkill, getpid(), gettid(), 0)); }},
    {"pidfd", [] { return Opens(syscall(SYS_pidfd_open, g_prey.parent, 0)); }},
    {"unshare", [] { return Worked(unshare(CLONE_NEWUSER)); }},
    {"mount", [] { return Worked(mount("none", "/mnt", "tmpfs", 0, nullptr)); }},
    {"open", [] { return Opens(open(g_prey.witness, O_RDONLY)); }},
    {"open, the old call",
     [] {
#ifdef SYS_open
         return Opens(syscall(SYS_open, g_prey.witness, O_RDONLY));
#else
         return false;
#endif
     }},
    {"openat2", Opens2},
    {"create", [] { return Opens(openat(AT_FDCWD, g_prey.fresh, O_CREAT | O_RDWR, 0600)); }},
    {"append", [] { return Opens(open(g_prey.witness, O_WRONLY | O_APPEND)); }},
    {"write to a table", [] { return Opens(open(g_prey.table, O_RDWR)); }},
    {"unlink", [] { return Worked(unlink(g_prey.witness)); }},
    {"rename", [] { return Worked(rename(g_prey.witness, g_prey.fresh)); }},
    {"truncate", [] { return Worked(truncate(g_prey.witness, 0)); }},
    {"chmod", [] { return Worked(chmod(g_prey.witness, 0)); }},
    {"chmod by descriptor", [] { return Worked(fchmod(g_prey.inherited, 0)); }},
    {"mkdir", [] { return Worked(mkdir(g_prey.fresh, 0700)); }},
    {"symlink", [] { return Worked(symlink("/", g_prey.fresh)); }},
    {"link", [] { return Worked(link(g_prey.witness, g_prey.fresh)); }},
    {"stat",
     [] {
         struct stat facts {};
         return Worked(stat(g_prey.witness, &facts));
     }},
    {"statx", [] { return Worked(syscall(SYS_statx, AT_FDCWD, g_prey.witness, 0, 1, nullptr)); }},
    {"access", [] { return Worked(access(g_prey.witness, R_OK)); }},
    {"listing",
     [] {
         char entries[512];
         return Opens(open(g_prey.folder, O_RDONLY | O_DIRECTORY)) ||
                Worked(syscall(SYS_getdents64, g_prey.inherited, entries, sizeof entries));
     }},
    {"executable memory, private", [] { return MapsExecutable(MAP_PRIVATE | MAP_ANONYMOUS); }},
    {"executable memory, shared", [] { return MapsExecutable(MAP_SHARED | MAP_ANONYMOUS); }},
    {"executable memory, made so", MakesExecutable},
    {"shared memory",
     [] {
         return mmap(nullptr, 4096, PROT_READ, MAP_SHARED | MAP_ANONYMOUS, -1, 0) != MAP_FAILED;
     }},
    {"shared memory of the system",
     [] { return Worked(shmget(IPC_PRIVATE, 4096, IPC_CREAT | 0600)); }},
    {"a file into memory",
     [] { return mmap(nullptr, 4096, PROT_READ, MAP_PRIVATE, g_prey.inherited, 0) != MAP_FAILED; }},
    {"memfd", [] { return Opens(static_cast<int>(syscall(SYS_memfd_create, "x", 0))); }},
    {"prctl", [] { return Worked(prctl(PR_SET_DUMPABLE, 1, 0, 0, 0)); }},
    {"raised limits", RaisesLimit},
    {"memory beyond the limit", TakesMemory},
    {"bpf", [] { return Worked(syscall(SYS_bpf, 0, nullptr, 0)); }},
    {"perf", [] { return Worked(syscall(SYS_perf_event_open, nullptr, 0, -1, -1, 0)); }},
    {"userfaultfd", [] { return Opens(syscall(SYS_userfaultfd, 1)); }},
    {"keys", [] { return Worked(syscall(SYS_keyctl, 0, -1, 0)); }},
    {"terminal input",
     [] {
         char letter = 'x';
         return Worked(ioctl(STDIN_FILENO, TIOCSTI, &letter));
     }},
    {"inotify", [] { return Opens(inotify_init1(0)); }},
    {"setsid", [] { return Worked(setsid()); }},
    {"sigaction",
     [] {
         struct sigaction action {};
         action.sa_handler = SIG_IGN;
         return Worked(sigaction(SIGSYS, &action, nullptr));
     }},
    {"personality", [] { return Worked(syscall(SYS_personality, 0x0400000)); }},
    {"change folder", [] { return Worked(chdir("/")); }},
#if defined(__x86_64__)
    {"32-bit entry", [] { return Worked(Call32(20, 0)); }},
    {"x32 entry", [] { return Worked(syscall(0x40000000 + 39)); }},
#endif
};

}  // namespace zorvane::forbidden_roads
