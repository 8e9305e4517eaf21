// The desktop's trash, where files can be had back from.
#pragma once

#include <string>

#include "common/base/result.h"

namespace zorvane {

/// Moves a file to the user's trash; one on another disk to the trash of that disk. `data_home`:
/// the folder of the user's data, which holds "Trash". Never deletes for good: a file that no trash
/// takes stays where it is.
Status MoveToTrash(const std::string& path, const std::string& data_home);
/// Of this user: $XDG_DATA_HOME, else ".local/share" in the home folder.
std::string UserDataHome();

}  // namespace zorvane
