// What a viewer is and shows, as texts that a script can ask for.
#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "tools/viewer_driver/session.h"

namespace zorvane {

using StateValues = std::map<std::string, std::string>;

/// One hash over texts, formats, list and counters of what a run hands over: any other text, mark
/// or number gives another.
std::uint64_t ResultHash(frmCompareFiles& viewer);
/// The same over all that is kept of a viewer between two commands: its two texts, result, view.
std::uint64_t WholeHash(frmCompareFiles& viewer);

/// They cost by the size of the texts.
enum class Hashes { No, Yes };

/// Of the frame, and of the viewer that has the focus.
StateValues StateOf(DriverSession& session, Hashes hashes);

/// "original", "modified", "left", "right", "merged", "additions", "deletions", "changes".
RichDocument* EditorNamed(frmCompareFiles& viewer, const std::string& name);
bool ShownEditorNamed(const std::string& name, ShownEditor& editor);

}  // namespace zorvane
