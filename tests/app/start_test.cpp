// Where a start goes on: which lines want a window, and what is said where there is none.
#include "app/start.h"

#include <cstdlib>
#include <filesystem>

#include <gtest/gtest.h>

#include "app/command_line_parser.h"
#include "common/platform/exec_program.h"
#include "tests/support/fakes.h"

namespace zorvane {
namespace {

struct StartRow {
    const char* name;
    const char* line;  ///< "AB" stands for two files that are there
    StartAction action;
    bool show_messages;
    StartPlace with_windows;
    StartPlace without_display;
    StartPlace not_installed;
};
using enum StartPlace;
constexpr StartRow kRows[] = {
    {"nothing", "", StartAction::ShowFrame, true, Window, NoDisplay, NotInstalled},
    {"blanks", "  ", StartAction::ShowFrame, true, Window, NoDisplay, NotInstalled},
    {"history", "/CLEARHISTORY", StartAction::ShowFrame, false, Window, NoDisplay, NotInstalled},
    {"history, 14", "/CLEARHISTORY/", StartAction::ShowFrame, false, Window, NoDisplay,
     NotInstalled},
    {"history, 15", "/CLEARHISTORY /", StartAction::Refuse, false, Here, Here, Here},
    {"history, blanks apart", " /CLEARHISTORY  ", StartAction::ShowFrame, false, Window, NoDisplay,
     NotInstalled},
    {"no history in lower case", "/clearhistory", StartAction::Refuse, false, Here, Here, Here},
    {"help", "/?", StartAction::Nothing, false, Here, Here, Here},
    {"help behind", "/M x /?", StartAction::Nothing, false, Here, Here, Here},
    {"nonsense", "nonsense", StartAction::Refuse, false, Here, Here, Here},
    {"one side", "/M x /X", StartAction::Refuse, false, Here, Here, Here},
    {"a run that stays", "AB", StartAction::Run, false, Window, Here, Here},
    {"a run that ends", "AB /X", StartAction::Run, false, Here, Here, Here},
    {"without history too", "AB /CLEARHISTORY", StartAction::Run, false, Window, Here, Here},
    {"a wrong report", "AB /R4", StartAction::Refuse, false, Here, Here, Here},
};

TEST(Start, DecidesByTheLine) {
    FakePlatform fakes;
    std::string files = " /M " + fakes.folder.Write("a", "") + " /S " + fakes.folder.Write("b", "");
    for (std::size_t at = 4; (at = files.find('/', at)) != std::string::npos;) {
        if (files[at + 1] == 'S' && files[at + 2] == ' ')
            ++at;
        else
            files[at] = '\\';
    }
    for (const StartRow& row : kRows) {
        SCOPED_TRACE(row.name);
        std::string line = row.line;
        if (line.starts_with("AB"))
            line.replace(0, 2, files);
        std::string read = line;
        CommandLineRequest request;
        LineEffects effects;
        const bool parsed = ReadCommandLine(*fakes.platform.folders, read, line, request, effects);
        const StartDecision decision = WhatToDo(line, request, parsed);
        EXPECT_EQ(decision, (StartDecision{row.action, row.show_messages}));
        EXPECT_EQ(WhereToStart(decision, request, {true, "w"}), row.with_windows);
        EXPECT_EQ(WhereToStart(decision, request, {false, "w"}), row.without_display);
        EXPECT_EQ(WhereToStart(decision, request, {true, ""}), row.not_installed);
        EXPECT_TRUE(fakes.shell().calls.empty()) << "a look changes nothing";
    }
}

TEST(Start, TwoPathsOpenAWindowWhereItCan) {
    const TempFolder folder;
    const std::string file = folder.Write("a", "");
    const StartFacts windows{true, "w"};
    EXPECT_EQ(WhereToStart({file, folder.Path()}, windows), Window);
    EXPECT_EQ(WhereToStart({file}, windows), Window) << "one is the original";
    EXPECT_EQ(WhereToStart({file}, {false, "w"}), Here);
    EXPECT_EQ(WhereToStart({file, file}, {false, "w"}), Here);
    EXPECT_EQ(WhereToStart({file, file}, {true, ""}), Here);
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{folder.Path("no")},
                                                      {"compare"},
                                                      {file, "-"},
                                                      {file, folder.Path("no")},
                                                      {file, file, "--stat"},
                                                      {"compare", file},
                                                      {}})
        EXPECT_EQ(WhereToStart(arguments, windows), Here) << testing::PrintToString(arguments);
}

TEST(Start, FindsTheWindowsBesideItselfOrInLibexec) {
    FakePlatform fakes;
    SpecialFolders& folders = *fakes.platform.folders;
    const std::string program = folders.ProgramFolder();
    std::filesystem::create_directories(program);
    std::filesystem::create_directories(fakes.folder.Path("libexec"));
    EXPECT_EQ(FindStartFacts(folders).window_program, "");
    const auto executable = std::filesystem::perms::owner_all;
    fakes.folder.Write("libexec/zorvane-window", "");
    EXPECT_EQ(FindStartFacts(folders).window_program, "") << "it cannot be started";
    std::filesystem::permissions(fakes.folder.Path("libexec/zorvane-window"), executable);
    EXPECT_EQ(FindStartFacts(folders).window_program, program + "/../libexec/zorvane-window");
    fakes.folder.Write("program/zorvane-window", "");
    std::filesystem::permissions(program + "/zorvane-window", executable);
    EXPECT_EQ(FindStartFacts(folders).window_program, program + "/zorvane-window");
    std::filesystem::remove(program + "/zorvane-window");
    std::filesystem::create_directories(program + "/zorvane-window");
    EXPECT_EQ(FindStartFacts(folders).window_program, program + "/../libexec/zorvane-window");
}

struct DisplayRow {
    const char* wayland;
    const char* x11;
    bool display;
};
TEST(Start, ADisplayIsOneOfTwo) {
    FakePlatform fakes;
    for (const DisplayRow& row : {DisplayRow{nullptr, nullptr, false},
                                  {"", "", false},
                                  {"wayland-0", nullptr, true},
                                  {nullptr, ":0", true}}) {
        const auto set = [](const char* name, const char* value) {
            value == nullptr ? unsetenv(name) : setenv(name, value, 1);
        };
        set("WAYLAND_DISPLAY", row.wayland);
        set("DISPLAY", row.x11);
        EXPECT_EQ(FindStartFacts(*fakes.platform.folders).display, row.display);
    }
    unsetenv("DISPLAY");
}

TEST(Start, AMissingProgramIsAFailure) {
    const Status status = BecomeProgram("/no/such/program", {"x"});
    ASSERT_FALSE(status.ok());
    EXPECT_EQ(status.failure().reason, "/no/such/program: No such file or directory");
}

}  // namespace
}  // namespace zorvane
