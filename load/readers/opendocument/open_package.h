// What a package of an OpenDocument file says of itself.
#pragma once

#include "load/readers/container/package.h"

namespace zorvane {

/// An encrypted document keeps its content as noise, and says so in its list of parts.
bool IsEncryptedOpenDocument(Package& package);

}  // namespace zorvane
