// The process that an office suite runs in, so that its crash, hang or appetite ends nothing else.
#pragma once

#include <string>

#include "load/office_place.h"
#include "load/readers/sandbox/landlock.h"

namespace zorvane {

struct OfficeWork {
    OfficePlace place;
    std::string profile;
    bool in_sandbox = true;
};

/// Serves requests until the end of `socket`, and then gives 0; 1 when it cannot be understood or
/// answered. A request (see load/readers/request_channel.h) has "name", "format" and optionally
/// "password". A reply has "error", the number of a `ReadError`, "detail", and "part1" as the other
/// conversions. `profile`: a folder that the session may fill, and its owner removes.
///
/// Takes the whole process: bounds its memory and time, closes it in before the suite is loaded
/// (every request is answered `NoSandbox` where that fails), and turns its standard streams to
/// nothing, since the suite writes there. The caller then ends it by `_exit`, so that nothing of
/// the suite runs after its end.
[[nodiscard]] int RunOfficeWorker(int socket, const OfficeWork& work);

/// The files that a suite needs: its own, the system's libraries and fonts, and its profile.
FolderRights OfficeRights(const OfficePlace& place, const std::string& profile);

}  // namespace zorvane
