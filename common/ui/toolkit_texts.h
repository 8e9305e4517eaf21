// The words of dialogs that are not ours: files, printers, pages.
#pragma once

#include <string>

namespace zorvane {

/// Shows them in the language of that English name, where the system has its texts; English
/// otherwise. Takes hold of dialogs that are opened from now on.
void ShowToolkitIn(const std::string& language);

}  // namespace zorvane
