// Opening files with the programs that the user has chosen for them.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "common/platform/services.h"

namespace zorvane {

/// Over the programs and settings of a freedesktop.org desktop.
class DesktopShell : public ShellOpen {
  public:
    Status Open(const std::string& path_or_address) override;
    /// $VISUAL or $EDITOR, waited for, where there is a terminal for it; else what the desktop
    /// opens plain text with, whatever it opens files of this name with.
    Status EditText(const std::string& path) override;
};

/// The words of a desktop entry's `Exec` value with `path` in the place of its field codes, or
/// behind it when it has none. Nothing for a value that cannot be read.
/// Source: the public description of desktop entries by freedesktop.org, "The Exec key".
std::optional<std::vector<std::string>> CommandOfEntry(const std::string& exec,
                                                       const std::string& path);

}  // namespace zorvane
