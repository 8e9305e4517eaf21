// The options of a command line that say how files are loaded; `compare` and `text` share them.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/set_names.h"
#include "common/base/result.h"
#include "options/option_values.h"

namespace CLI {
class App;
}

namespace zorvane {

class clsCompareFileOptions;
struct CompareFilesSettings;

/// Unset fields leave the option at its default.
// NOLINTNEXTLINE(clang-analyzer-optin.performance.Padding): one of them, in the order of the help
struct LoadOptions {
    bool plain = false;
    bool remove_blank_lines = false;
    std::string password;  ///< of both sides
    std::string original_password;
    std::string modified_password;
    std::string password_file;
    bool ask_password = false;
    std::string sheets;  ///< of both sides, such as "1-2,Costs" or "*"
    std::string rows;
    std::string columns;
    bool formulas = false;
    bool source = false;  ///< web pages, XML and Markdown as text
    std::string pages;    ///< of PDF on both sides, such as "2-5"
    bool pdf_quick = false;
    std::string slides;
    bool notes = false;
    NamedValues settings;
    std::string settings_file;
    std::string log_file;
    bool no_sandbox = false;
    friend bool operator==(const LoadOptions&, const LoadOptions&) = default;
};

/// Puts them on a command. `sets` takes the raw NAME=VALUE pairs for `TakeSets`.
void AddLoadOptions(CLI::App& app, LoadOptions& options, std::vector<std::string>& sets);
Status TakeSets(const std::vector<std::string>& sets, LoadOptions& options);

/// Carries them over to the viewer's options and settings. Fails on a name that is unknown or has
/// no effect on the command, a value of the wrong kind or a bad range, in a user's words.
Status ApplyLoadOptions(const LoadOptions& from, SetBy command, clsCompareFileOptions& options,
                        CompareFilesSettings& settings);

/// A switch turns an option on; without it the option stays as it was saved.
inline void TurnOn(bool wanted, clsVarBoolean& option) {
    if (wanted)
        option.SetData(true);
}

}  // namespace zorvane
