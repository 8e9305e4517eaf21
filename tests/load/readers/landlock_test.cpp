// Landlock alone, at each version that kernels have had.
#include "load/readers/sandbox/landlock.h"

#include <fcntl.h>
#include <filesystem>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/support/probe.h"
#include "tests/support/temp_folder.h"

namespace zorvane::landlock_test {
namespace {

bool Worked(long result) {
    return result >= 0;
}
bool Opens(long file) {
    return file >= 0;
}

class LandlockTest : public testing::TestWithParam<int> {};

TEST_P(LandlockTest, OnlyNamedFoldersAreReached) {
    if (LandlockVersion() < GetParam())
        GTEST_SKIP() << "the kernel has no such version of Landlock";
    const TempFolder folder;
    chmod(folder.Path().c_str(), 0777);
    for (const char* name : {"own", "read", "other"}) {
        std::filesystem::create_directories(folder.Path(name));
        chmod(folder.Path(name).c_str(), 0777);
        folder.Write(std::string(name) + "/file", "x");
        chmod(folder.Path(std::string(name) + "/file").c_str(), 0666);
    }
    const auto closed = [&] {
        FolderRights rights;
        rights.read = {folder.Path("read"), folder.Path("missing")};
        rights.own = {folder.Path("own")};
        rights.write_device = {"/dev/null"};
        return CloseFiles(rights, GetParam()).ok();
    };
    const auto may = [&](const char* name, int flags) {
        const std::string path = name[0] == '/' ? name : folder.Path(name);
        return Probe(closed, [&] { return Opens(open(path.c_str(), flags, 0600)); }) ==
               ProbeEnd::Reached;
    };
    EXPECT_TRUE(may("own/file", O_RDWR));
    EXPECT_TRUE(may("own/new", O_CREAT | O_WRONLY));
    EXPECT_TRUE(may("read/file", O_RDONLY));
    EXPECT_TRUE(may("/dev/null", O_WRONLY));
    EXPECT_FALSE(may("read/file", O_WRONLY));
    EXPECT_FALSE(may("read/new", O_CREAT | O_WRONLY));
    EXPECT_FALSE(may("other/file", O_RDONLY));
    EXPECT_FALSE(may("/etc/passwd", O_RDONLY));
    EXPECT_EQ(Probe(closed, [&] { return Worked(unlink(folder.Path("read/file").c_str())); }),
              ProbeEnd::Refused);
    const bool cut = Probe(closed, [&] {
                         return Worked(truncate(folder.Path("read/file").c_str(), 0));
                     }) == ProbeEnd::Reached;
    constexpr int kFirstWithTruncate = 3;
    EXPECT_EQ(cut, GetParam() < kFirstWithTruncate);
    EXPECT_EQ(Probe(closed, [&] { return Worked(execl("/bin/true", "true", nullptr)); }),
              ProbeEnd::Refused);
    EXPECT_EQ(Probe([] { return CloseFiles({}, GetParam()).ok(); },
                    [&] { return Opens(open(folder.Path("own/file").c_str(), O_RDONLY)); }),
              ProbeEnd::Refused);
}

INSTANTIATE_TEST_SUITE_P(Versions, LandlockTest, testing::Values(1, 2, 3, 4, 5, 6));

}  // namespace
}  // namespace zorvane::landlock_test
