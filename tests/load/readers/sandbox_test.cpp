#include "load/readers/sandbox.h"

#include <cerrno>
#include <cstdlib>
#include <new>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

namespace zorvane {
namespace {

// Runs in a child, since what is forbidden stays forbidden. The result is its exit status.
template <class Work>
int InChild(Work&& work) {
    const pid_t child = fork();
    if (child == 0)
        _exit(work());
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

TEST(Sandbox, ClosesTheNetworkAndNotTheMachine) {
    EXPECT_EQ(InChild([] {
                  if (!ForbidNetwork())
                      return 1;
                  if (socket(AF_INET, SOCK_STREAM, 0) >= 0 || errno != EACCES)
                      return 2;
                  if (socket(AF_INET6, SOCK_DGRAM, 0) >= 0)
                      return 3;
                  return socket(AF_UNIX, SOCK_STREAM, 0) >= 0 ? 0 : 4;
              }),
              0);
}

TEST(Sandbox, StartsNoPrograms) {
    EXPECT_EQ(InChild([] {
                  if (!ForbidPrograms())
                      return 1;
                  execl("/bin/true", "true", nullptr);
                  return errno == EACCES ? 0 : 2;
              }),
              0);
}

TEST(Sandbox, BoundsMemory) {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "a sanitizer's own memory counts as well";
#endif
    EXPECT_EQ(InChild([] {
                  constexpr std::size_t kLimit = std::size_t{64} << 20;
                  LimitMemory(kLimit);
                  void* const small = std::malloc(kLimit / 4);
                  void* const large = std::malloc(2 * kLimit);
                  return small != nullptr && large == nullptr ? 0 : 1;
              }),
              0);
}

}  // namespace
}  // namespace zorvane
