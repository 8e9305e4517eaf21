// Writes the Modified's OpenDocument package with its differences from the Original tracked inside.
#pragma once

#include "redline/docx_redline.h"

namespace zorvane {

/// As `WriteDocxRedline`, of two OpenDocument texts. Formatting is never tracked: the format has no
/// place for a former look.
ReadEnd WriteOdtRedline(const PerSide<std::string_view>& packages, const RedlineRequest& request,
                        RunWatcher* watcher, WrittenRedline& written);

}  // namespace zorvane
