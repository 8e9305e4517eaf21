#include "common/platform/ini_profile.h"

#include <chrono>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

TEST(IniProfile, ReadsAsPrivateProfilesDo) {
    const TempFolder folder;
    const auto file = OpenIniProfile(folder.Write(
        "a.ini",
        "stray=1\r\n[Main]\r\n Key = value with = and ; \r\n; c=comment\r\nquoted=\" x \"\r\n"
        "key=second\r\nempty=\r\n[ other ]\nKey=o\n"));
    EXPECT_EQ(file->Read("main", "KEY", "d"), "value with = and ;");
    EXPECT_EQ(file->Read("Main", "quoted", "d"), " x ");
    EXPECT_EQ(file->Read("Main", "empty", "d"), "");
    EXPECT_EQ(file->Read("Main", "missing", " d "), "d");
    EXPECT_EQ(file->Read("Main", "stray", "d"), "d");
    EXPECT_EQ(file->Read("Main", "; c", "d"), "d");
}

TEST(IniProfile, CutsLongValuesAtWholeCharacters) {
    const auto file = MakeMemoryIniProfile();
    file->Write("s", "k", std::string(600, 'x'));
    EXPECT_EQ(file->Read("s", "k", "").size(), 499U);
    file->Write("s", "k", std::string(498, 'x') + "ä");
    EXPECT_EQ(file->Read("s", "k", ""), std::string(498, 'x'));
    file->Write("s", "k", "one\ntwo");
    EXPECT_EQ(file->Read("s", "k", ""), "one");
}

TEST(IniProfile, KeepsBytesThatAreNoUtf8AndAllElseAsItIs) {
    const TempFolder folder;
    const std::string path = folder.Write("a.ini", "[s]\r\nname=\xC3\xA4\r\n");
    std::string odd = "/odd";
    for (int byte = 0x7F; byte <= 0xFF; ++byte)
        odd += static_cast<char>(byte);
    for (int round = 0; round < 2; ++round) {
        const auto file = OpenIniProfile(path);
        file->Write("s", "odd", odd);
        file->Write("s", "new", "\xE6\x97\xA5");
        ASSERT_TRUE(file->Flush().ok());
        const auto reader = OpenIniProfile(path);
        EXPECT_EQ(reader->Read("s", "odd", ""), odd);
        EXPECT_EQ(reader->Read("s", "name", ""), "\xC3\xA4");
        EXPECT_EQ(reader->Read("s", "new", ""), "\xE6\x97\xA5");
    }
}

TEST(IniProfile, KeepsWhatItDoesNotKnow) {
    const TempFolder folder;
    const std::string path = folder.Write("a.ini", "; head\n[A]\nx=1\n\n[B]\ny=2\nodd line\n");
    const auto file = OpenIniProfile(path);
    file->Write("A", "X", "3");
    file->Write("A", "new", "4");
    file->Write("C", "z", "5");
    ASSERT_TRUE(file->Flush().ok());
    EXPECT_EQ(folder.Read("a.ini"),
              "; head\r\n[A]\r\nx=3\r\nnew=4\r\n\r\n[B]\r\ny=2\r\nodd line\r\n[C]\r\nz=5\r\n");
    struct stat facts {};
    ASSERT_EQ(stat(path.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777U, 0600U) << "passwords stand in it";
}

TEST(IniProfile, TheLastWriterWinsKeyByKey) {
    const TempFolder folder;
    const auto first = OpenIniProfile(folder.Path("a.ini"));
    const auto second = OpenIniProfile(folder.Path("a.ini"));
    first->Write("S", "both", "1");
    first->Write("S", "mine", "1");
    second->Write("S", "both", "2");
    second->Write("S", "yours", "2");
    ASSERT_TRUE(first->Flush().ok());
    ASSERT_TRUE(second->Flush().ok());
    const auto reader = OpenIniProfile(folder.Path("a.ini"));
    EXPECT_EQ(reader->Read("S", "both", ""), "2");
    EXPECT_EQ(reader->Read("S", "mine", ""), "1");
    EXPECT_EQ(reader->Read("S", "yours", ""), "2");
}

// Two programs at once, each with keys of its own, again and again: nothing of either is lost.
TEST(IniProfile, LosesNothingOfTwoWritersAtOnce) {
    const TempFolder folder;
    const std::string path = folder.Path("a.ini");
    constexpr int kKeys = 60;
    const auto write = [&](const std::string& prefix) {
        for (int i = 0; i < kKeys; ++i) {
            const auto file = OpenIniProfile(path);
            file->Write("S", prefix + std::to_string(i), std::to_string(i));
            IgnoreFailure(file->Flush(), "the keys will tell");
        }
    };
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        write("his");
        _exit(0);
    }
    write("mine");
    waitpid(child, nullptr, 0);
    const auto reader = OpenIniProfile(path);
    for (int i = 0; i < kKeys; ++i) {
        EXPECT_EQ(reader->Read("S", "his" + std::to_string(i), ""), std::to_string(i));
        EXPECT_EQ(reader->Read("S", "mine" + std::to_string(i), ""), std::to_string(i));
    }
}

TEST(IniProfile, SeesWhatAnotherProgramWroteSince) {
    const TempFolder folder;
    const std::string path = folder.Write("a.ini", "[S]\r\nk=1\r\ngone=1\r\nmine=1\r\n");
    const auto file = OpenIniProfile(path);
    EXPECT_EQ(file->Read("S", "k", ""), "1");
    file->Write("S", "mine", "2");
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        const auto other = OpenIniProfile(path);
        other->Write("S", "k", "3");
        other->Write("S", "mine", "3");
        _exit(other->Flush().ok() ? 0 : 1);
    }
    int ended = 1;
    waitpid(child, &ended, 0);
    ASSERT_EQ(ended, 0);
    EXPECT_EQ(file->Read("S", "k", ""), "1") << "one state until it is asked for another";
    file->Refresh();
    EXPECT_EQ(file->Read("S", "k", ""), "3");
    EXPECT_EQ(file->Read("S", "mine", ""), "2") << "what waits to be written is ours";
    // Of the same length and written in place, as an editor may do it.
    folder.Write("a.ini", "[S]\r\nk=4\r\nmine=3\r\n");
    file->Refresh();
    EXPECT_EQ(file->Read("S", "gone", "no"), "no");
    ASSERT_TRUE(file->Flush().ok());
    EXPECT_EQ(file->Read("S", "k", ""), "4") << "a flush reads the file as it stands";
    EXPECT_EQ(folder.Read("a.ini"), "[S]\r\nk=4\r\nmine=2\r\n");
}

TEST(IniProfile, WritesAKeyOnce) {
    const TempFolder folder;
    const auto first = OpenIniProfile(folder.Path("a.ini"));
    const auto second = OpenIniProfile(folder.Path("a.ini"));
    first->Write("S", "k", "1");
    ASSERT_TRUE(first->Flush().ok());
    second->Write("S", "k", "2");
    ASSERT_TRUE(second->Flush().ok());
    first->Write("S", "other", "1");
    ASSERT_TRUE(first->Flush().ok());
    EXPECT_EQ(folder.Read("a.ini"), "[S]\r\nk=2\r\nother=1\r\n") << "what is written is let go";
}

TEST(IniProfile, WaitsForALockButNotForEver) {
    using std::chrono::milliseconds;
    const TempFolder folder;
    const std::string path = folder.Write("a.ini", "[S]\r\nk=1\r\n");
    const int held = open((path + ".lock").c_str(), O_RDWR | O_CREAT, 0600);
    ASSERT_EQ(flock(held, LOCK_EX), 0);
    const auto file = OpenIniProfile(path, milliseconds(80));
    file->Write("S", "k", "2");
    const auto start = std::chrono::steady_clock::now();
    const Status status = file->Flush();
    EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(80));
    ASSERT_FALSE(status.ok());
    EXPECT_TRUE(file->IsLockedElsewhere());
    EXPECT_EQ(status.failure().reason, path + ": another program keeps it locked");
    EXPECT_EQ(file->Read("S", "k", ""), "2") << "it goes on without saving";
    EXPECT_EQ(folder.Read("a.ini"), "[S]\r\nk=1\r\n");
    close(held);
    ASSERT_TRUE(file->Flush().ok()) << "the keys were still pending";
    EXPECT_FALSE(file->IsLockedElsewhere());
    EXPECT_EQ(folder.Read("a.ini"), "[S]\r\nk=2\r\n");
}

TEST(IniProfile, ALockThatComesFreeInTimeIsTaken) {
    const TempFolder folder;
    const std::string path = folder.Path("a.ini");
    const int held = open((path + ".lock").c_str(), O_RDWR | O_CREAT, 0600);
    ASSERT_EQ(flock(held, LOCK_EX), 0);
    std::thread lets_go([held] {
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        close(held);
    });
    const auto file = OpenIniProfile(path);
    file->Write("S", "k", "2");
    EXPECT_TRUE(file->Flush().ok());
    lets_go.join();
}

struct ForeignRow {
    const char* name;
    std::string bytes;
};
TEST(IniProfile, ReadsFilesOfOtherMakers) {
    const ForeignRow rows[] = {
        {"UTF-8 with a mark", "\xEF\xBB\xBF[S]\r\nk=\xC3\xA4\r\n"},
        {"UTF-8 with two marks", "\xEF\xBB\xBF\xEF\xBB\xBF[S]\r\nk=\xC3\xA4\r\n"},
        {"the old code page", "[S]\r\nk=\xE4\r\n"},
        {"UTF-16", std::string("\xFF\xFE[\0S\0]\0\n\0k\0=\0\xE4\0", 16)},
    };
    for (const ForeignRow& row : rows) {
        SCOPED_TRACE(row.name);
        const TempFolder folder;
        const auto file = OpenIniProfile(folder.Write("a.ini", row.bytes));
        EXPECT_EQ(file->Read("S", "k", "d"), "ä");
        file->Write("S", "n", "1");
        ASSERT_TRUE(file->Flush().ok());
        EXPECT_EQ(folder.Read("a.ini"), "[S]\r\nk=ä\r\nn=1\r\n");
    }
}

TEST(IniProfile, DoesNotReplaceWhatItCannotRead) {
    const TempFolder folder;
    const std::string path = folder.Write("a.ini", "[S]\r\nold=1\r\n");
    const std::uintmax_t too_large = std::uintmax_t{1} << 30;
    std::filesystem::resize_file(path, too_large);
    const auto file = OpenIniProfile(path);
    file->Write("S", "k", "v");
    EXPECT_FALSE(file->Flush().ok());
    EXPECT_EQ(std::filesystem::file_size(path), too_large);
}

TEST(IniProfile, AFailedFlushSaysWhere) {
    const auto file = OpenIniProfile("/no/such/folder/a.ini");
    file->Write("S", "k", "v");
    const Status status = file->Flush();
    ASSERT_FALSE(status.ok());
    EXPECT_NE(status.failure().reason.find("/no/such/folder/a.ini"), std::string::npos);
    EXPECT_EQ(file->Read("S", "k", ""), "v");
}

// What a killed process left half written goes with the next write, what is being written stays.
TEST(IniProfile, SweepsHalfFilesOfWhoEnded) {
    const TempFolder folder;
    const auto old = [&](const std::string& name) {
        folder.Write(name, "half");
        const timespec hour_ago[] = {{time(nullptr) - 3600, 0}, {time(nullptr) - 3600, 0}};
        utimensat(AT_FDCWD, folder.Path(name).c_str(), hour_ago, 0);
    };
    old(".zorvane-abcdef");
    old(".zorvane-locked");
    old(".zorvane-too-long");
    old("zorvane-abcdef");
    folder.Write(".zorvane-fresh1", "half");
    const int locked = open(folder.Path(".zorvane-locked").c_str(), O_RDONLY | O_CLOEXEC);
    ASSERT_EQ(flock(locked, LOCK_EX | LOCK_NB), 0);
    const auto file = OpenIniProfile(folder.Path("a.ini"));
    file->Write("A", "x", "1");
    ASSERT_TRUE(file->Flush().ok());
    close(locked);
    const auto is_there = [&](const char* name) {
        return std::filesystem::exists(folder.Path(name));
    };
    EXPECT_FALSE(is_there(".zorvane-abcdef"));
    for (const char* name :
         {".zorvane-locked", ".zorvane-too-long", "zorvane-abcdef", ".zorvane-fresh1", "a.ini"})
        EXPECT_TRUE(is_there(name)) << name;
}

}  // namespace
}  // namespace zorvane
