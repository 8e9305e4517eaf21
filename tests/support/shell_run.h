// A program run by the shell as a user would start it.
#pragma once

#include <cstdlib>
#include <string>
#include <sys/wait.h>

#include <gtest/gtest.h>

#include "tests/support/temp_folder.h"

namespace zorvane {

struct ShellRun {
    int status = -1;
    std::string output;
    std::string error;
};

/// Runs `line`, which leaves its streams in "out" and "err" of the folder. An end by a signal fails
/// the test.
inline ShellRun RunShell(const TempFolder& folder, const std::string& line) {
    const int status = std::system(line.c_str());
    EXPECT_TRUE(WIFEXITED(status)) << "the program was ended by a signal";
    return {WEXITSTATUS(status), folder.Read("out"), folder.Read("err")};
}

}  // namespace zorvane
