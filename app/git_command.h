// Carries out `zorvane install-git`: documents in git diff, and a tool to look at them with.
#pragma once

#include <string>

#include "common/base/result.h"

namespace CLI {
class App;
}

namespace zorvane {

struct GitCommand {
    bool global = false;  ///< all repositories of this user; so it is without both
    bool local = false;   ///< this repository alone
    bool remove = false;
};

/// The subcommand; `command` is filled in when it is parsed.
CLI::App* AddGitCommand(CLI::App& app, GitCommand& command);

/// 0, or 2 after trouble, which has been told on standard error. `program` is how git is to call
/// this program. Nothing of the user's is overwritten: what is set otherwise is told and left, and
/// removing takes away only what installing put there.
int RunGitCommand(const GitCommand& command, const std::string& program);

/// "zorvane" where PATH leads to `own`, else the path in quotes of a shell.
std::string CallOf(const std::string& own);

}  // namespace zorvane
