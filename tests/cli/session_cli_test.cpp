// The slash form, what teaches, and what wants a window.
#include <filesystem>

#include <gtest/gtest.h>

#include "tests/cli/cli_fixture.h"

namespace zorvane {
namespace {

TEST_F(CliTest, KeepsTheSlashForm) {
    const ShellRun run = Run("/M old.txt /S new.txt /T r.htm /L run.log /F1 /X /G");
    EXPECT_EQ(run.status, 2);
    EXPECT_EQ(run.output + run.error, "");
    EXPECT_NE(folder_.Read("run.log").find("There were 2 Differences."), std::string::npos);
    EXPECT_EQ(folder_.Read("r.htm").find("<!DOCTYPE html>"), 0U);
    EXPECT_TRUE(
        std::filesystem::exists(folder_.Path("home/.config/Tarnwick, Inc/Zorvane/Zorvane.INI")));
    const ShellRun shown = Run("/M none.txt /S new.txt /V /X");
    EXPECT_NE(shown.error.find("Invalid Master file specified"), std::string::npos);
    EXPECT_NE(shown.error.find("Missing required command line argument(s)"), std::string::npos);
}

TEST_F(CliTest, TeachesAndTellsItsVersion) {
    EXPECT_NE(Run("--help").output.find("Examples:"), std::string::npos);
    EXPECT_NE(Run("compare --help").output.find("--ignore-regex"), std::string::npos);
    EXPECT_EQ(Run("--version").output.find("zorvane 0."), 0U);
    EXPECT_EQ(Run("frobnicate").status, 2);
}

TEST_F(CliTest, WithoutADisplayASessionIsATellingFailure) {
    for (const char* line : {"", "/CLEARHISTORY"}) {
        const ShellRun run = Run(line);
        EXPECT_EQ(run.status, 2);
        EXPECT_EQ(run.output, "");
        EXPECT_NE(run.error.find("there is no display to open a window on"), std::string::npos)
            << run.error;
    }
    // Alone: in the build folder the windows may stand beside it.
    std::filesystem::create_directories(folder_.Path("bin"));
    std::filesystem::copy_file(ZORVANE_PROGRAM, folder_.Path("bin/zorvane"));
    program_ = folder_.Path("bin/zorvane");
    environment_ += " DISPLAY=:9";
    EXPECT_NE(Run("").error.find("the windows are not installed: the package zorvane-window"),
              std::string::npos);
    EXPECT_EQ(Run("old.txt new.txt").status, 1) << "as without a display";
}

// The program as installed, beside a stand-in for the one with the windows.
TEST_F(CliTest, HandsWhatWantsAWindowToTheWindowProgram) {
    namespace fs = std::filesystem;
    for (const char* folder : {"bin", "libexec"})
        fs::create_directories(folder_.Path(folder));
    fs::copy_file(ZORVANE_PROGRAM, folder_.Path("bin/zorvane"));
    program_ = folder_.Path("bin/zorvane");
    folder_.Write("libexec/zorvane-window", "#!/bin/sh\nprintf '<%s>' \"$@\"\nexit 7\n");
    fs::permissions(folder_.Path("libexec/zorvane-window"), fs::perms::owner_all);
    const std::string run = "/M old.txt /S new.txt /L run.log";
    EXPECT_EQ(Run(run).output, "") << "no display: it runs here";
    const std::string log = folder_.Read("run.log");
    environment_ += " WAYLAND_DISPLAY=w";
    for (const auto& [line, given] : {std::pair<std::string, std::string>{"", "<>"},
                                      {"/CLEARHISTORY", "</CLEARHISTORY>"},
                                      {"old.txt 'new.txt'", "<old.txt><new.txt>"},
                                      {run, "</M><old.txt></S><new.txt></L><run.log>"}}) {
        const ShellRun outcome = Run(line);
        EXPECT_EQ(outcome.output, given);
        EXPECT_EQ(outcome.status, 7);
    }
    EXPECT_EQ(folder_.Read("run.log"), log) << "the run here never began";
    EXPECT_EQ(Run("compare -q old.txt new.txt").status, 1);
    EXPECT_EQ(Run(run + " /X /G").status, 2);
    EXPECT_GT(folder_.Read("run.log").size(), log.size());
}

}  // namespace
}  // namespace zorvane
