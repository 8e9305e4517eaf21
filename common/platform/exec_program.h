// Another program in place of this one.
#pragma once

#include <string>
#include <vector>

#include "common/base/result.h"

namespace zorvane {

/// `file` names a program that this user may start.
bool IsProgram(const std::string& file);

/// Goes on as `program` (a path), with these arguments behind its name. Comes back only with a
/// failure.
Status BecomeProgram(const std::string& program, const std::vector<std::string>& arguments);

}  // namespace zorvane
