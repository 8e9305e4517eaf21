#include "load/text_stream.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "tests/support/fakes.h"

namespace zorvane {
namespace {

TEST(TextStream, IsTriedEachTenthOfASecondAsLongAsTheCountSays) {
    struct Row {
        std::int32_t wait_count;
        int fails;  // so many attempts
        int attempts;
        std::uint32_t waited;
        bool ok;
    };
    constexpr Row kRows[] = {
        {2000, 0, 1, 0, true},       {2000, 3, 4, 300, true}, {2000, 20, 21, 2000, true},
        {2000, 21, 21, 2000, false}, {99, 1, 1, 0, false},    {0, 0, 1, 0, true},
    };
    for (const Row& row : kRows) {
        SCOPED_TRACE(std::to_string(row.wait_count) + ", " + std::to_string(row.fails));
        FakeClock clock;
        int attempts = 0;
        const Status status =
            OpenTextStreamWithDelay({clock, [] { return true; }, row.wait_count}, [&]() -> Status {
                return attempts++ < row.fails ? Status(Failure{"held " + std::to_string(attempts)})
                                              : Status::Ok();
            });
        EXPECT_EQ(attempts, row.attempts);
        EXPECT_EQ(clock.ticks, row.waited);
        EXPECT_EQ(status.ok(), row.ok);
        if (!row.ok) {
            EXPECT_EQ(status.failure().reason, "held " + std::to_string(row.attempts));
        }
    }
}

TEST(TextStream, EndsWithTheUsersAbort) {
    FakeClock clock;
    int attempts = 0;
    int asked = 0;
    const Status status =
        OpenTextStreamWithDelay({clock, [&] { return ++asked < 3; }}, [&]() -> Status {
            ++attempts;
            return Failure{"held"};
        });
    EXPECT_EQ(attempts, 3);
    EXPECT_EQ(clock.ticks, 300U);
    EXPECT_EQ(status.failure().reason, "held");
}

// A disk whose file is changed by somebody at the looks that are told.
class ChangingFile : public testing::Test {
  protected:
    Result<SettledFile> Read(const std::string& path, int changes) {
        int looks = 0;
        return ReadSettledFile(path, {system_.clock()},
                               [&](const std::string& name) -> std::optional<FileStamp> {
                                   std::optional<FileStamp> stamp = FileStampOf(name);
                                   if (stamp)
                                       stamp->modified += std::min(++looks, changes);
                                   return stamp;
                               });
    }
    FakePlatform system_;
};

TEST_F(ChangingFile, IsReadAgainUntilItIsStill) {
    const std::string file = system_.folder.Write("a.txt", "text");
    struct Row {
        int changes;
        std::uint32_t waited;
        bool changing;
    };
    // Looks: one in front, then two for each try.
    for (const Row& row : {Row{0, 0, false}, Row{5, 200, false}, Row{1000, 2000, true}}) {
        SCOPED_TRACE(row.changes);
        system_.clock().ticks = 0;
        const Result<SettledFile> read = Read(file, row.changes);
        ASSERT_TRUE(read.ok());
        EXPECT_EQ(read.value().bytes, "text");
        EXPECT_EQ(read.value().changing, row.changing);
        EXPECT_EQ(system_.clock().ticks, row.waited);
    }
}

TEST_F(ChangingFile, IsWaitedForWhileItIsReplaced) {
    const std::string file = system_.folder.Path("late.txt");
    int asked = 0;
    const StreamWait wait{system_.clock(), [&] {
                              if (++asked == 4)
                                  system_.folder.Write("late.txt", "here");
                              return true;
                          }};
    const Result<SettledFile> read = ReadSettledFile(file, wait);
    ASSERT_TRUE(read.ok()) << read.failure().reason;
    EXPECT_EQ(read.value().bytes, "here");
    EXPECT_EQ(asked, 4);
    const Result<SettledFile> never = ReadSettledFile(system_.folder.Path("never"), wait);
    ASSERT_FALSE(never.ok());
    EXPECT_NE(never.failure().reason.find("never: No such file"), std::string::npos);
}

TEST_F(ChangingFile, ThatIsNoFileIsReadOnce) {
    const Result<SettledFile> device = ReadSettledFile("/dev/null", {system_.clock()});
    ASSERT_TRUE(device.ok());
    EXPECT_EQ(device.value().bytes, "");
    EXPECT_EQ(system_.clock().ticks, 0U);
}

}  // namespace
}  // namespace zorvane
