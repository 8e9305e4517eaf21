// The program in a folder and a home of its own.
#pragma once

#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "tests/support/shell_run.h"
#include "tests/support/temp_folder.h"

namespace zorvane {

class CliTest : public ::testing::Test {
  protected:
    CliTest() {
        folder_.Write("old.txt", "one\ntwo words\nthree\n");
        folder_.Write("new.txt", "one\n2 words\nthree\nfour\n");
        std::filesystem::create_directories(folder_.Path("home"));
        std::filesystem::create_directories(folder_.Path("tmp"));
        std::filesystem::create_directories(folder_.Path("run"));
    }
    // In the fresh folder, with a home of its own; `arguments` are the shell's.
    ShellRun Run(const std::string& arguments, const std::string& input = "") {
        folder_.Write("in", input);
        const std::string command =
            "cd '" + folder_.Path() + "' && env -i PATH=\"$PATH\" HOME='" + folder_.Path("home") +
            "' XDG_RUNTIME_DIR='" + folder_.Path("run") + "' TMPDIR='" + folder_.Path("tmp") +
            "' " + environment_ + " '" + program_ + "' " + arguments + " <in >out 2>err";
        ShellRun run = RunShell(folder_, command);
        EXPECT_TRUE(std::filesystem::is_empty(folder_.Path("tmp"))) << "temporary files are left";
        return run;
    }

    TempFolder folder_;
    std::string environment_ = "LANG=C.UTF-8";
    std::string program_ = ZORVANE_PROGRAM;
};

}  // namespace zorvane
