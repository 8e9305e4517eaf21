// `zorvane find TEXT FOLDER [options]` and `zorvane cache` as they are written, and carried out.
#pragma once

#include <cstdint>
#include <string>

#include "app/load_options.h"
#include "common/base/result.h"

namespace CLI {
class App;
}

namespace zorvane {

struct Platform;

// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): in the order of the help
struct FindCommand {
    std::string text;
    std::string folder;  ///< or a file; empty: the folder one is in

    bool expression = false;
    bool ignore_case = false;
    bool word = false;

    bool recursive = false;
    std::string types;
    bool no_hidden = false;
    bool office = false;
    std::int32_t jobs = 0;  ///< 0: as many as fit

    std::int32_t context = 0;
    bool files = false;
    bool count = false;
    bool json = false;
    bool stats = false;
    bool quiet = false;
    std::string color = "auto";

    LoadOptions load{};  ///< the password of documents alone
    bool no_cache = false;
    bool no_sandbox = false;
};

struct CacheCommand {
    bool clear = false;
};

/// Puts the command on the program's line.
CLI::App* AddFindCommand(CLI::App& app, FindCommand& command);
CLI::App* AddCacheCommand(CLI::App& app, CacheCommand& command);
/// Checks what was read, in a user's words.
Status FinishFindCommand(const FindCommand& command);

/// 0 found, 1 nothing found, 2 trouble, which has been told on standard error.
int RunFindCommand(Platform& platform, const FindCommand& command);
int RunCacheCommand(Platform& platform, const CacheCommand& command);

}  // namespace zorvane
