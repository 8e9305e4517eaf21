#include "load/readers/sandbox/caught_calls.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <ucontext.h>
#include <unistd.h>

#include "load/readers/sandbox/open_tables.h"

namespace zorvane {
namespace {

// A handler gets no other argument.
const OpenTables* g_tables = nullptr;

struct CallArguments {
    std::uint64_t first;
    std::uint64_t second;
    std::uint64_t third;
    std::uint64_t fourth;
};

#if defined(__x86_64__)
constexpr bool kRegistersKnown = true;
CallArguments ArgumentsOf(const ucontext_t& context) {
    const auto at = [&context](int number) {
        return static_cast<std::uint64_t>(context.uc_mcontext.gregs[number]);
    };
    return {at(REG_RDI), at(REG_RSI), at(REG_RDX), at(REG_R10)};
}
void SetResult(ucontext_t& context, long result) {
    context.uc_mcontext.gregs[REG_RAX] = result;
}
#elif defined(__aarch64__)
constexpr bool kRegistersKnown = true;
CallArguments ArgumentsOf(const ucontext_t& context) {
    const auto& registers = context.uc_mcontext.regs;
    return {registers[0], registers[1], registers[2], registers[3]};
}
void SetResult(ucontext_t& context, long result) {
    context.uc_mcontext.regs[0] = static_cast<std::uint64_t>(result);
}
#else
constexpr bool kRegistersKnown = false;
CallArguments ArgumentsOf(const ucontext_t&) {
    return {};
}
void SetResult(ucontext_t&, long) {}
#endif

long ResultOr(long result) {
    return result < 0 ? -errno : result;
}

long Open(const CallArguments& arguments) {
    const char* const path = reinterpret_cast<const char*>(arguments.second);  // NOLINT
    const bool reads = (arguments.third & (O_ACCMODE | O_CREAT | O_TRUNC)) == O_RDONLY;
    const int table = reads && g_tables != nullptr ? g_tables->Find(path) : -1;
    if (table < 0)
        return -EACCES;
    const long copy = ResultOr(syscall(SYS_dup, table));
    // Both share one place in the file, and the library reads from the start.
    if (copy >= 0)
        lseek(static_cast<int>(copy), 0, SEEK_SET);
    return copy;
}

// The C library asks in this way what a file is that it has open.
long Stat(const CallArguments& arguments) {
    const char* const path = reinterpret_cast<const char*>(arguments.second);  // NOLINT
    if ((arguments.fourth & AT_EMPTY_PATH) == 0 || *path != '\0')
        return -EACCES;
    return ResultOr(syscall(SYS_fstat, static_cast<int>(arguments.first), arguments.third));
}

// "call" with the number, as the messages of load/conversion_message.h are written.
[[noreturn]] void TellAndEnd(int call) {
    constexpr int kBadSystemCall = 128 + SIGSYS;
    std::array<char, 8> digits{};
    std::size_t begin = digits.size();
    for (unsigned rest = static_cast<unsigned>(call) & 0xFFFFU; begin > 0; rest /= 10) {
        digits[--begin] = static_cast<char>('0' + rest % 10);
        if (rest < 10)
            break;
    }
    const std::size_t count = digits.size() - begin;
    std::array<char, 32> text{'c', 'a', 'l', 'l', '=', static_cast<char>('0' + count), ':'};
    std::size_t size = 7;
    while (begin < digits.size())
        text[size++] = digits[begin++];
    text[size++] = '\n';
    text[size++] = '\n';
    static_cast<void>(!write(STDIN_FILENO, text.data(), size));
    _exit(kBadSystemCall);
}

void OnCaughtCall(int /*signal*/, siginfo_t* facts, void* context) {
    const int before = errno;
    auto& registers = *static_cast<ucontext_t*>(context);
    const CallArguments arguments = ArgumentsOf(registers);
    if (facts->si_syscall == SYS_openat)
        SetResult(registers, Open(arguments));
    else if (facts->si_syscall == SYS_newfstatat)
        SetResult(registers, Stat(arguments));
    else
        TellAndEnd(facts->si_syscall);
    errno = before;
}

}  // namespace

bool CanCatchCalls() {
    return kRegistersKnown;
}

bool CatchCalls(const OpenTables& tables) {
    g_tables = &tables;
    struct sigaction action {};
    action.sa_sigaction = OnCaughtCall;
    action.sa_flags = SA_SIGINFO | SA_NODEFER;
    sigset_t only;
    sigemptyset(&only);
    sigaddset(&only, SIGSYS);
    return sigaction(SIGSYS, &action, nullptr) == 0 &&
           sigprocmask(SIG_UNBLOCK, &only, nullptr) == 0;
}

}  // namespace zorvane
