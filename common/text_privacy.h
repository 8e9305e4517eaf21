// Who may read a file that is made from the text of others.
#pragma once

#include <cstdint>
#include <string>

#include "common/base/side.h"

namespace zorvane {

class RunTelling;

/// The permissions for such a file, before the user's mask: who could not read one of `files`
/// cannot read it either. An empty name, and what is no regular file, restricts nothing. A file
/// that stands in for something else, as `telling` knows, counts as what it stands for.
std::uint32_t ModeForTextOf(const RunTelling& telling, const PerSide<std::string>& files);

}  // namespace zorvane
