#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <functional>
#include <optional>
#include <signal.h>
#include <string>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

#include <gtest/gtest.h>

#include "common/platform/desktop_shell.h"
#include "common/platform/files.h"
#include "common/platform/platform.h"
#include "common/platform/process_end.h"
#include "common/platform/terminal.h"
#include "tests/support/temp_folder.h"

namespace zorvane {
namespace {

/// A variable of the environment for the length of a test; no value takes it away.
class ScopedVariable {
  public:
    ScopedVariable(const char* name, std::optional<std::string> value)
        : name_(name), old_(Environment(name)) {
        Set(value);
    }
    ~ScopedVariable() { Set(old_); }
    ScopedVariable(const ScopedVariable&) = delete;
    ScopedVariable& operator=(const ScopedVariable&) = delete;

  private:
    void Set(const std::optional<std::string>& value) const {
        if (value)
            setenv(name_, value->c_str(), 1);
        else
            unsetenv(name_);
    }
    const char* name_;
    std::optional<std::string> old_;
};

mode_t ModeOf(const std::string& path) {
    struct stat facts {};
    return stat(path.c_str(), &facts) == 0 ? facts.st_mode & 07777U : 0;
}

/// Runs `work` in a process of its own and gives its end as `waitpid` tells it.
int InChild(const std::function<void()>& work) {
    const pid_t child = fork();
    if (child == 0) {
        work();
        _exit(0);
    }
    int status = -1;
    waitpid(child, &status, 0);
    return status;
}

struct LocaleCase {
    const char* all;
    const char* ctype;
    const char* lang;
    std::int32_t id;
    const char* encoding;
};
TEST(PosixLocale, ComesFromTheFirstVariableThatIsSet) {
    const LocaleCase rows[] = {
        {"ja_JP.UTF-8", "de_DE.UTF-8", "fr_FR.UTF-8", 1041, "UTF-8"},
        {"", "zh_TW.BIG5", "de_DE.UTF-8", 1028, "BIG5"},
        {"", "", "zh_CN.GB18030", 2052, "GB18030"},
        {"", "", "de_DE.ISO-8859-15@euro", 1031, "ISO-8859-15"},
        {"", "", "de_DE@euro", 1031, ""},
        {"C", "", "ja_JP.UTF-8", 1033, ""},
        {"", "", "", 1033, ""},
    };
    for (const LocaleCase& row : rows) {
        SCOPED_TRACE(std::string(row.all) + "|" + row.ctype + "|" + row.lang);
        const ScopedVariable all("LC_ALL", row.all);
        const ScopedVariable ctype("LC_CTYPE", row.ctype);
        const ScopedVariable lang("LANG", row.lang);
        const Platform platform = MakePosixPlatform();
        EXPECT_EQ(platform.locale->LocaleId(), row.id);
        EXPECT_EQ(platform.locale->EncodingName(), row.encoding);
    }
}

TEST(PosixFolders, AreTheDesktops) {
    const ScopedVariable home("HOME", "/home/u");
    const ScopedVariable configuration("XDG_CONFIG_HOME", "/elsewhere");
    const ScopedVariable data("XDG_DATA_HOME", "relative/does/not/count");
    const Platform platform = MakePosixPlatform();
    EXPECT_EQ(platform.folders->GetSpecialFolder(26), "/elsewhere");
    EXPECT_EQ(platform.folders->GetSpecialFolder(28), "/home/u/.local/share");
    EXPECT_EQ(platform.folders->GetSpecialFolder(40), "/home/u");
    EXPECT_EQ(platform.folders->GetSpecialFolder(4711), "(error)");
    EXPECT_TRUE(std::filesystem::exists(platform.folders->ProgramFolder() + "/zv_common_test"));
    const ScopedVariable none("HOME", std::nullopt);
    EXPECT_TRUE(platform.folders->GetSpecialFolder(40).starts_with('/')) << "by the user's entry";
}

TEST(PosixFolders, DocumentsAreWhereTheDesktopHasThem) {
    const TempFolder folder;
    const ScopedVariable home("HOME", "/home/u");
    const ScopedVariable configuration("XDG_CONFIG_HOME", folder.Path());
    const auto documents = [] { return MakePosixPlatform().folders->GetSpecialFolder(5); };
    EXPECT_EQ(documents(), "/home/u/Documents");
    folder.Write("user-dirs.dirs",
                 "# XDG_DOCUMENTS_DIR=\"no\"\nXDG_DOCUMENTS_DIR=\"$HOME/Dokumente\"\n");
    EXPECT_EQ(documents(), "/home/u/Dokumente");
    folder.Write("user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"/data/d\"\n");
    EXPECT_EQ(documents(), "/data/d");
    folder.Write("user-dirs.dirs", "XDG_DOCUMENTS_DIR=\"relative\"\n");
    EXPECT_EQ(documents(), "/home/u/Documents");
}

TEST(PosixFolders, KeepLocksPrivate) {
    const TempFolder folder;
    const ScopedVariable runtime("XDG_RUNTIME_DIR", folder.Path("missing"));
    const ScopedVariable temporary("TMPDIR", folder.Path());
    const Platform platform = MakePosixPlatform();
    const std::string own = platform.folders->RuntimeFolder();
    ASSERT_TRUE(own.starts_with(folder.Path() + "/"));
    EXPECT_EQ(ModeOf(own), 0700U);
    std::filesystem::remove(own);
    std::filesystem::create_directory(folder.Path("a"));
    std::filesystem::create_directory_symlink(folder.Path("a"), own);
    EXPECT_EQ(platform.folders->RuntimeFolder(), "") << "a trap that somebody else laid";
    EXPECT_FALSE(platform.mutexes->Lock("m").ok());
}

TEST(PosixFolders, SayWhyALockCannotBeHad) {
    const TempFolder folder;
    const ScopedVariable runtime("XDG_RUNTIME_DIR", folder.Path());
    const Platform platform = MakePosixPlatform();
    const std::string lock = platform.folders->RuntimeFolder() + "/m.lock";
    std::filesystem::create_directory_symlink(folder.Path("elsewhere"), lock);
    const Result<int> taken = platform.mutexes->Lock("m");
    ASSERT_FALSE(taken.ok());
    EXPECT_EQ(taken.failure().reason, lock + ": " + std::strerror(ELOOP));
}

TEST(PosixMutexes, ExcludeOtherProcesses) {
    const TempFolder folder;
    const ScopedVariable runtime("XDG_RUNTIME_DIR", folder.Path());
    const std::string count = folder.Write("count", "0");
    const auto count_up = [&] {
        const Platform platform = MakePosixPlatform();
        for (int i = 0; i < 50; ++i) {
            const ScopedNamedMutex lock(*platform.mutexes, "counter");
            const int old = std::stoi(ReadWholeFile(count).value());
            std::this_thread::yield();
            IgnoreFailure(WriteWholeFile(count, std::to_string(old + 1)), "the sum will tell");
        }
    };
    const pid_t child = fork();
    ASSERT_GE(child, 0);
    if (child == 0) {
        count_up();
        _exit(0);
    }
    count_up();
    waitpid(child, nullptr, 0);
    EXPECT_EQ(folder.Read("count"), "100");
}

TEST(PosixRegistry, KeepsValuesBetweenStarts) {
    const TempFolder folder;
    const ScopedVariable configuration("XDG_CONFIG_HOME", folder.Path());
    MakePosixPlatform().registry->Set("Settings", "bInstalled", "TRUE");
    const Platform platform = MakePosixPlatform();
    EXPECT_EQ(platform.registry->Get("Settings", "bInstalled", "FALSE"), "TRUE");
    EXPECT_EQ(platform.registry->Get("Settings", "other", "d"), "d");
}

TEST(PosixShell, HandsWholeNamesToTheDesktop) {
    const TempFolder folder;
    folder.Write("xdg-open",
                 "#!/bin/sh\nprintf '%s\\n' \"$#\" \"$1\" > \"$0.part\"\n"
                 "mv \"$0.part\" \"$0.told\"\n");
    chmod(folder.Path("xdg-open").c_str(), 0700);
    const ScopedVariable path("PATH", folder.Path() + ":/usr/bin:/bin");
    const Platform platform = MakePosixPlatform();
    const auto told = [&](const Status& status) {
        EXPECT_TRUE(status.ok());
        wait(nullptr);
        return folder.Read("xdg-open.told");
    };
    const std::string here = (std::filesystem::current_path() / "-r x.htm").string();
    EXPECT_EQ(told(platform.shell->Open("-r x.htm")), "1\n" + here + "\n");
    EXPECT_EQ(told(platform.shell->Open("https://a.example/?b")), "1\nhttps://a.example/?b\n");
    EXPECT_EQ(told(platform.shell->Open("c:\\a\\b.txt")), "1\n/a/b.txt\n");
    const ScopedVariable nothing("PATH", folder.Path("none"));
    EXPECT_FALSE(platform.shell->Open("a").ok());
}

TEST(PosixShell, EditsTextWithTheProgramForPlainText) {
    const TempFolder folder;
    folder.Write("xdg-mime", "#!/bin/sh\necho writer.desktop\n");
    folder.Write("writer",
                 "#!/bin/sh\nprintf '%s\\n' \"$@\" > \"$0.part\"\n"
                 "mv \"$0.part\" \"$0.told\"\n");
    for (const char* program : {"xdg-mime", "writer"})
        chmod(folder.Path(program).c_str(), 0700);
    std::filesystem::create_directory(folder.Path("applications"));
    folder.Write("applications/writer.desktop",
                 "[Other]\nExec=no\n[Desktop Entry]\nName=W\nExec=writer --new %U\n"
                 "[Action a]\nExec=no\n");
    const ScopedVariable path("PATH", folder.Path() + ":/usr/bin:/bin");
    const ScopedVariable data("XDG_DATA_DIRS", "/none:" + folder.Path());
    const ScopedVariable own("XDG_DATA_HOME", folder.Path("own"));
    const Platform platform = MakePosixPlatform();
    ASSERT_TRUE(platform.shell->EditText("/a b/-c.csv").ok());
    wait(nullptr);
    EXPECT_EQ(folder.Read("writer.told"), "--new\n/a b/-c.csv\n");
    std::filesystem::remove(folder.Path("applications/writer.desktop"));
    const Status none = platform.shell->EditText("/a.txt");
    ASSERT_FALSE(none.ok());
    EXPECT_NE(none.failure().reason.find("VISUAL"), std::string::npos);
}

TEST(TempFiles, ArePrivateAndGoWithTheirOwner) {
    const TempFolder folder;
    const ScopedVariable temporary("TMPDIR", folder.Path());
    {
        const Platform platform = MakePosixPlatform();
        EXPECT_TRUE(std::filesystem::is_empty(folder.Path())) << "nothing before the first use";
        const std::string one = platform.temp_files->NewName("RTF", "DOC").value();
        EXPECT_NE(one, platform.temp_files->NewName("RTF", "DOC").value());
        EXPECT_EQ(ModeOf(platform.temp_files->Folder().value()), 0700U);
        ASSERT_TRUE(WriteWholeFile(one, "x").ok());
        EXPECT_EQ(ModeOf(one), 0600U);
    }
    EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
    const ScopedVariable missing("TMPDIR", folder.Path("none"));
    EXPECT_FALSE(MakePosixPlatform().temp_files->Folder().ok());
}

struct SignalCase {
    const char* name;
    int number;
    bool ignored;
};
TEST(TempFiles, AreGoneAfterASignal) {
    const SignalCase rows[] = {{"Ctrl-C", SIGINT, false},
                               {"a polite end", SIGTERM, false},
                               {"a lost terminal", SIGHUP, false},
                               {"a lost terminal under nohup", SIGHUP, true}};
    for (const SignalCase& row : rows) {
        SCOPED_TRACE(row.name);
        const TempFolder folder;
        const int status = InChild([&] {
            setenv("TMPDIR", folder.Path().c_str(), 1);
            if (row.ignored)
                signal(row.number, SIG_IGN);
            const Platform platform = MakePosixPlatform();
            const Result<std::string> name = platform.temp_files->NewName("a", "b");
            const bool made = name.ok() && WriteWholeFile(name.value(), "x").ok();
            raise(made ? row.number : SIGKILL);
        });
        EXPECT_EQ(WIFSIGNALED(status), !row.ignored);
        EXPECT_EQ(row.ignored ? WEXITSTATUS(status) : WTERMSIG(status),
                  row.ignored ? 0 : row.number);
        EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
    }
}

TEST(EndingSignals, AreToldFirstAndEndTheSecondTime) {
    for (const bool told_twice : {false, true}) {
        const int status = InChild([&] {
            const int told = TellOfEndingSignal();
            raise(SIGTERM);
            unsigned char number = 0;
            if (read(told, &number, 1) != 1 || number != SIGTERM)
                _exit(9);
            if (told_twice)
                raise(SIGHUP);
            DieOfSignal(SIGTERM);
        });
        ASSERT_TRUE(WIFSIGNALED(status));
        EXPECT_EQ(WTERMSIG(status), told_twice ? SIGHUP : SIGTERM);
    }
}

struct PagerCase {
    const char* name;
    const char* command;
    const char* shown;
};
TEST(Pager, ShowsTheTextOrGivesItThrough) {
    const PagerCase rows[] = {
        {"a pager", "tr a-z A-Z", "TEXT\n"},
        {"no pager", "", "text\n"},
        {"a pager that is not there", "no-such-pager-here", "text\n"},
        {"a pager that goes away early", "true", ""},
        {"a pager hears a closed pipe as usual", "sh -c 'kill -PIPE $$; echo deaf'", ""},
        {"Ctrl-C is the pager's", "kill -INT $PPID; cat", "text\n"},
    };
    for (const PagerCase& row : rows) {
        SCOPED_TRACE(row.name);
        const TempFolder folder;
        const std::string out = folder.Write("out", "");
        const int status = InChild([&] {
            setenv("ZORVANE_PAGER", row.command, 1);
            dup2(open(out.c_str(), O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
            dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDERR_FILENO);
            _exit(ShowPaged("text\n").ok() ? 0 : 1);
        });
        EXPECT_EQ(status, 0);
        EXPECT_EQ(folder.Read("out"), row.shown);
    }
}

TEST(Stream, AFullTargetAndAClosedPipeAreFailures) {
    const int full = InChild([] {
        dup2(open("/dev/full", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
        _exit(WriteStream(Stream::Output, "x").ok() ? 1 : 0);
    });
    EXPECT_EQ(full, 0);
    const int closed = InChild([] {
        int ends[2] = {-1, -1};
        if (pipe(ends) != 0)
            _exit(2);
        close(ends[0]);
        dup2(ends[1], STDOUT_FILENO);
        _exit(WriteStream(Stream::Output, "x").ok() ? 1 : 0);
    });
    EXPECT_EQ(closed, 0);
}

TEST(Files, AHalfFileGoesWithASignalAndTheOldOneStays) {
    const TempFolder folder;
    folder.Write("report", "old");
    const pid_t child = fork();
    if (child == 0) {
        Result<FileReplacement> file = FileReplacement::Begin(folder.Path("report"));
        if (!file.ok() || !file.value().Write("half").ok())
            _exit(3);
        raise(SIGINT);
        _exit(4);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGINT) << status;
    EXPECT_EQ(folder.Read("report"), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.Path()), {}), 1);
}

// Where there are many names, somebody else's folders are looked for once a day.
TEST(TempFiles, SweepAFullFolderOnceADay) {
    const TempFolder folder;
    const ScopedVariable place("TMPDIR", folder.Path());
    const std::string abandoned = folder.Path("zorvane-abcdef");
    const std::string stamp = folder.Path(".zorvane-swept-" + std::to_string(geteuid()));
    const auto abandon = [&] {
        std::filesystem::create_directory(abandoned);
        folder.Write("zorvane-abcdef/.owner", "");
    };
    const auto run = [] {
        Platform platform = MakePosixPlatform();
        EXPECT_TRUE(platform.temp_files->Folder().ok());
    };
    abandon();
    run();
    EXPECT_FALSE(std::filesystem::exists(abandoned));
    EXPECT_FALSE(std::filesystem::exists(stamp)) << "a small folder is looked through each time";
    for (int i = 0; i < 1100; ++i)
        folder.Write("other" + std::to_string(i), "");
    abandon();
    run();
    EXPECT_FALSE(std::filesystem::exists(abandoned));
    EXPECT_TRUE(std::filesystem::exists(stamp));
    abandon();
    run();
    EXPECT_TRUE(std::filesystem::exists(abandoned));
    const timespec yesterday[] = {{time(nullptr) - 90'000, 0}, {time(nullptr) - 90'000, 0}};
    utimensat(AT_FDCWD, stamp.c_str(), yesterday, 0);
    run();
    EXPECT_FALSE(std::filesystem::exists(abandoned));
}

}  // namespace
}  // namespace zorvane
