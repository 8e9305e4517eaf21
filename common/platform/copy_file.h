// A copy of a file that is whole or not there, with the times and permissions of its source.
#pragma once

#include <string>

#include "common/base/result.h"

namespace zorvane {

/// Written beside `to` under a name of its own and renamed over it; folders of `to` are made. What
/// is no regular file is not copied, and a target without permission to write is not overwritten.
Status CopyFileKeeping(const std::string& from, const std::string& to);

}  // namespace zorvane
