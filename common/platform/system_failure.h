// What the system said when a call failed.
#pragma once

#include <cerrno>
#include <string>
#include <system_error>

#include "common/base/result.h"

namespace zorvane {

/// `what` is the file, the program or the step that failed.
inline Failure SystemFailure(const std::string& what, int code = errno) {
    return Failure{what + ": " + std::generic_category().message(code)};
}

}  // namespace zorvane
