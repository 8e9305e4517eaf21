#include <csignal>
#include <fcntl.h>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "common/file_utilities.h"
#include "common/path_tokens.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "common/string_utilities.h"
#include "tests/support/fakes.h"

namespace zorvane {
namespace {

struct SpanRow {
    std::int64_t seconds;
    TimeSpanStyle style;
    const char* text;
};
TEST(StringUtilities, TellsTimeSpans) {
    const SpanRow rows[] = {
        {3661, TimeSpanStyle::Words, "1hr 01min 01sec "},
        {7322, TimeSpanStyle::Words, "2hrs 02mins 02secs"},
        {86400, TimeSpanStyle::Words, "1 day 0hrs 00mins 00secs"},
        {0, TimeSpanStyle::Colons, "0:00:00"},
        {359999, TimeSpanStyle::Letters, "4d 3h 59m 59s"},
    };
    for (const SpanRow& row : rows)
        EXPECT_EQ(sTimeSpan(row.seconds, row.style), row.text);
}

TEST(StringUtilities, ReplacesDateTokens) {
    setenv("TZ", "UTC", 1);
    tzset();
    const auto time = std::chrono::system_clock::from_time_t(1700000000);  // 2023-11-14 22:13:20
    EXPECT_EQ(ReplaceDateTokens("r[YMD]-[HIS].htm", time), "r20231114-221320.htm");
    EXPECT_EQ(ReplaceDateTokens("[Y][M][D][MDY][H][I][S]", time), "2023111411142023221320");
    EXPECT_EQ(ReplaceDateTokens("[y][Q]", time), "[y][Q]");
    EXPECT_EQ(ReplaceDateTokens("", time), "");
    EXPECT_EQ(sMakeTimeStamp(time), "2023/11/14 22:13:20");
    ASSERT_TRUE(ParseTimeStamp("2023/11/14 22:13:20").ok());
    EXPECT_EQ(ParseTimeStamp("2023/11/14 22:13:20").value(), time);
    EXPECT_FALSE(ParseTimeStamp("yesterday").ok());
}

TEST(StringUtilities, ReadsNumbersOfTwoLocales) {
    EXPECT_EQ(dSafeCDbl("1.5", 0), 1.5);
    EXPECT_EQ(dSafeCDbl("1,5", 0), 1.5);
    EXPECT_EQ(dSafeCDbl("x", 7), 7);
    EXPECT_EQ(dSafeCDbl("", 7), 7);
    EXPECT_EQ(dSafeCDbl(" +2 ", 7), 2);
    EXPECT_EQ(dSafeCDbl("nan", 7), 7) << "a size or a margin must be a number";
    EXPECT_EQ(dSafeCDbl("-inf", 7), 7);
}

TEST(StringUtilities, TicksByTwo) {
    ProgressTicker ticker;
    const std::string dots(60, '.');
    EXPECT_EQ(ticker.sProgressTicker(dots), "");
    EXPECT_EQ(ticker.sProgressTicker(dots), "..");
    for (int i = 2; i <= 30; ++i)
        EXPECT_EQ(ticker.sProgressTicker(dots).size(), static_cast<std::size_t>(2 * i));
    EXPECT_EQ(ticker.sProgressTicker(dots), "") << "from the beginning again";
    EXPECT_EQ(ticker.sProgressTicker("äöü"), "äö") << "whole characters";
    EXPECT_EQ(ticker.sProgressTicker("äöü"), "äöü") << "and no more than there are";
}

TEST(PathTokens, ExpandOneKindOnly) {
    FakeFolders folders("/r");
    EXPECT_EQ(sExpandPathTokens(folders, " %appdata%\\x%APPDATA% "), "/r/26\\x/r/26");
    EXPECT_EQ(sExpandPathTokens(folders, "%UserProfile%%appdata%"), "/r/40%appdata%");
    EXPECT_EQ(sExpandPathTokens(folders, "%HOMEPATH%\\a"), "%HOMEPATH%\\a") << "kept so";
    EXPECT_EQ(sExpandPathTokens(folders, "%WINDIR%"), "%WINDIR%") << "no such folder";
    EXPECT_EQ(sExpandPathTokens(folders, "plain"), "plain");
}

struct PathRow {
    const char* path;
    const char* native;
    const char* parent;
    const char* name;
    const char* extension;
};
TEST(NativePath, TakesBothSeparatorsAndDrives) {
    const PathRow rows[] = {
        {"c:\\a\\b.txt", "/a/b.txt", "c:\\a", "b.txt", "txt"},
        {"a\\b/c", "a/b/c", "a\\b", "c", ""},
        {"/x.y", "/x.y", "/", "x.y", "y"},
        {"name", "name", "", "name", ""},
        {"c:\\x.y", "/x.y", "c:\\", "x.y", "y"},
        {"a.b\\c", "a.b/c", "a.b", "c", ""},
    };
    for (const PathRow& row : rows) {
        SCOPED_TRACE(row.path);
        EXPECT_EQ(NativePath(row.path), row.native);
        EXPECT_EQ(ParentOf(row.path), row.parent);
        EXPECT_EQ(FileNameOf(row.path), row.name);
        EXPECT_EQ(ExtensionOf(row.path), row.extension);
    }
    const TempFolder folder;
    const std::string odd = folder.Write("a\\b", "x");
    EXPECT_EQ(NativePath(odd), odd) << "a POSIX name may hold a backslash";
    EXPECT_EQ(JoinPath("a\\b", "c"), "a\\b\\c");
    EXPECT_EQ(JoinPath("a/", "c"), "a/c");
}

TEST(Files, ReplaceWholeOrNotAtAll) {
    const TempFolder folder;
    const std::string path = folder.Write("f", "old");
    chmod(path.c_str(), 0640);
    ASSERT_TRUE(ReplaceFile(path, "new").ok());
    EXPECT_EQ(folder.Read("f"), "new");
    struct stat facts {};
    stat(path.c_str(), &facts);
    EXPECT_EQ(facts.st_mode & 0777U, 0640U) << "the mode stays";
    struct Row {
        mode_t old;
        mode_t asked;
        mode_t kept;
    };
    for (const Row& row : {Row{0644, 0600, 0600}, Row{0755, 0640, 0640}, Row{0600, 0640, 0600}}) {
        chmod(path.c_str(), row.old);
        ASSERT_TRUE(ReplaceFile(path, "new", row.asked).ok());
        stat(path.c_str(), &facts);
        EXPECT_EQ(facts.st_mode & 0777U, row.kept) << "no more than was asked for, nor than it had";
    }
    EXPECT_FALSE(ReplaceFile(folder.Path(), "x").ok()) << "a folder";
    const Status full = ReplaceFile("/dev/full", "x");
    ASSERT_FALSE(full.ok());
    EXPECT_EQ(full.failure().reason, "/dev/full: No space left on device");
    EXPECT_FALSE(ReplaceFile(folder.Path("no/f"), "x").ok());
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1)
        << "nothing half written is left";
}

// Stopped in the middle, as by a full disk: the old file stays and nothing lies beside it.
TEST(Files, AreKeptWhenTheNewOneDoesNotFit) {
    const TempFolder folder;
    const std::string path = folder.Write("f", "old");
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        signal(SIGXFSZ, SIG_IGN);
        const rlimit small{10, 10};
        setrlimit(RLIMIT_FSIZE, &small);
        _exit(ReplaceFile(path, std::string(100, 'x')).ok() ? 1 : 0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(folder.Read("f"), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

TEST(FileReplacement, LeavesTheOldFileUntilItIsFinished) {
    const TempFolder folder;
    const std::string path = folder.Write("f", "old");
    const auto files = [&] {
        return std::distance(std::filesystem::directory_iterator(folder.Path()),
                             std::filesystem::directory_iterator());
    };
    {
        Result<FileReplacement> file = FileReplacement::Begin(path);
        ASSERT_TRUE(file.ok());
        EXPECT_TRUE(file.value().Write("half").ok());
        FileReplacement moved = std::move(file).value();
        EXPECT_EQ(folder.Read("f"), "old");
    }
    EXPECT_EQ(folder.Read("f"), "old");
    EXPECT_EQ(files(), 1);
    Result<FileReplacement> file = FileReplacement::Begin(path);
    ASSERT_TRUE(file.ok());
    EXPECT_TRUE(file.value().Write("new ").ok());
    EXPECT_TRUE(file.value().Write("words").ok());
    EXPECT_TRUE(file.value().Finish().ok());
    EXPECT_EQ(folder.Read("f"), "new words");
    EXPECT_EQ(files(), 1);
    {
        Result<FileReplacement> homeless = FileReplacement::Begin(path);
        ASSERT_TRUE(homeless.ok() && homeless.value().Write("newer").ok());
        std::filesystem::rename(path, folder.Path("kept"));
        std::filesystem::create_directory(path);
        EXPECT_FALSE(homeless.value().Finish().ok()) << "a rename that fails";
    }
    EXPECT_EQ(files(), 2) << "no half file is left";
    EXPECT_EQ(folder.Read("kept"), "new words");
    Result<FileReplacement> full = FileReplacement::Begin("/dev/full");
    ASSERT_TRUE(full.ok());
    EXPECT_FALSE(full.value().Write("x").ok());
    EXPECT_FALSE(full.value().Finish().ok()) << "the first reason stays";
}

TEST(Files, ReplaceWhatALinkLeadsToAndTakeLongNames) {
    const TempFolder folder;
    folder.Write("real", "old");
    std::filesystem::create_symlink("real", folder.Path("link"));
    ASSERT_TRUE(ReplaceFile(folder.Path("link"), "new").ok());
    EXPECT_TRUE(std::filesystem::is_symlink(folder.Path("link")));
    EXPECT_EQ(folder.Read("real"), "new");
    const std::string longest(255, 'n');
    EXPECT_TRUE(ReplaceFile(folder.Path(longest), "x").ok()) << "the longest name there can be";
    EXPECT_EQ(folder.Read(longest), "x");
}

TEST(Files, AppendWithoutTouchingTheRest) {
    const TempFolder folder;
    EXPECT_TRUE(AppendToFile(folder.Path("a"), "1").ok());
    EXPECT_TRUE(AppendToFile(folder.Path("a"), "2").ok());
    EXPECT_EQ(folder.Read("a"), "12");
    EXPECT_EQ(AppendToFile("/dev/full", "x").failure().reason,
              "/dev/full: No space left on device");
    EXPECT_FALSE(AppendToFile(folder.Path(), "x").ok()) << "a folder";
}

TEST(Files, ReadsWhateverHasBytes) {
    const TempFolder folder;
    std::filesystem::resize_file(folder.Write("huge", ""), std::uintmax_t{1} << 30);
    EXPECT_EQ(ReadWholeFile(folder.Path("huge")).failure().reason,
              folder.Path("huge") + ": larger than 1 GiB, which is the most that is read");
    EXPECT_EQ(ReadWholeFile(folder.Write("e", "")).value(), "");
    EXPECT_EQ(ReadWholeFile("/dev/null").value(), "");
    EXPECT_EQ(ReadWholeFile(folder.Path()).failure().reason, folder.Path() + ": Is a directory");
    EXPECT_EQ(ReadWholeFile("/proc/self/mem").failure().reason,
              "/proc/self/mem: Input/output error")
        << "a read that fails is no shorter file";
    EXPECT_FALSE(CheckReadable(folder.Path("none")).ok());
    EXPECT_TRUE(CheckReadable(folder.Path("e")).ok());
}

TEST(FileUtilities, AnswersAboutFilesAndFolders) {
    const TempFolder folder;
    const std::string file = folder.Write("f.txt", "x");
    EXPECT_TRUE(bFileExists(" " + file + " "));
    EXPECT_FALSE(bFileExists(folder.Path()));
    EXPECT_FALSE(bFileExists(""));
    EXPECT_TRUE(bDirectoryExists(folder.Path()));
    EXPECT_FALSE(bDirectoryExists(file));
    MakeDirectoryTree(folder.Path("a\\b\\c"));
    EXPECT_TRUE(bDirectoryExists(folder.Path("a/b/c")));
    EXPECT_EQ(sGetFolderPart("a\\b"), "a\\");
    EXPECT_EQ(sGetFolderPart("b"), "");
    EXPECT_EQ(sStripTrailingBackslash("a\\"), "a");
    FakeClock clock;
    EXPECT_TRUE(bFolderIsWritable(folder.Path(), clock));
    EXPECT_FALSE(bFolderIsWritable(folder.Path("none"), clock));
}

TEST(FileUtilities, RetriesADeleteForTwentySeconds) {
    FakeClock clock;
    EXPECT_TRUE(DeleteFileWithRetry(clock, "/no/such/file"));
    EXPECT_EQ(clock.ticks, 0U);
    EXPECT_FALSE(DeleteFileWithRetry(clock, "/proc/self/status"));
    EXPECT_EQ(clock.ticks, 20000U);
}

TEST(FileUtilities, DeletesALinkAndNotWhatItLeadsTo) {
    const TempFolder folder;
    const std::string real = folder.Write("real", "x");
    chmod(real.c_str(), 0444);
    std::filesystem::create_symlink("real", folder.Path("link"));
    FakeClock clock;
    EXPECT_TRUE(DeleteFileWithRetry(clock, " " + folder.Path("link") + " "));
    EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(folder.Path("link"))));
    EXPECT_EQ(folder.Read("real"), "x");
    EXPECT_EQ(clock.ticks, 0U);
    const int descriptor = open(real.c_str(), O_RDONLY | O_CLOEXEC);
    const std::string stuck = "/proc/self/fd/" + std::to_string(descriptor);
    EXPECT_FALSE(DeleteFileWithRetry(clock, stuck)) << "a link that cannot go";
    close(descriptor);
    struct stat facts {};
    ASSERT_EQ(stat(real.c_str(), &facts), 0);
    EXPECT_EQ(facts.st_mode & 0777U, 0444U);
}

TEST(FileUtilities, CopiesOverAProtectedTarget) {
    const TempFolder folder;
    const std::string from = folder.Write("a", "new");
    const std::string to = folder.Write("b", "old");
    chmod(to.c_str(), 0400);
    ASSERT_TRUE(CopyFileReplacingReadOnly(from, to).ok());
    EXPECT_EQ(folder.Read("b"), "new");
    ASSERT_TRUE(MoveFileByCopy(from, folder.Path("c")).ok());
    EXPECT_FALSE(bFileExists(from));
}

TEST(FileUtilities, MakesFreeNames) {
    FakeTempFiles temp_files;
    const TempFolder folder;
    const std::string name = sMakeTempFileName(temp_files, folder.Path(), " ab ", "");
    EXPECT_EQ(FileNameOf(name).size(), std::string("ab123456.TMP").size());
    EXPECT_TRUE(FileNameOf(name).starts_with("ab"));
    EXPECT_EQ(sMakeTempFileName(temp_files, folder.Path(), "abcdefgh", "x"),
              folder.Path("abcdefgh.x"));
    folder.Write("abcdefgh.x", "");
    EXPECT_EQ(sMakeTempFileName(temp_files, folder.Path(), "abcdefgh", "x"), "");
    EXPECT_TRUE(GetTempNameWithDocExtension(temp_files, "ZV_").ends_with(".DOC"));
}

}  // namespace
}  // namespace zorvane
