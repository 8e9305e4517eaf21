// Landlock: from here on this process reaches only the files that it names, whatever the user may
// reach. Of the kernel, without privileges; older kernels have less of it or nothing.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "common/base/result.h"

namespace zorvane {

/// What stays reachable; missing paths are passed over.
struct FolderRights {
    std::vector<std::string> read_and_execute;
    std::vector<std::string> read;
    std::vector<std::string> write_device;  ///< single files that are written to, as /dev/null
    std::vector<std::string> own;           ///< all but executing, devices and sockets
};

/// The version of the kernel's Landlock; 0 for none.
int LandlockVersion();

/// Everything else is closed, also for what this process starts. `most_version`: uses no more of
/// Landlock than that version had.
Status CloseFiles(const FolderRights& rights, int most_version = 1000);

}  // namespace zorvane
