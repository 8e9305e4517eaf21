// Writes the redlines with tracked changes that a command line asks for.
#pragma once

#include <string>

#include "app/load_options.h"
#include "app/redline_options.h"
#include "common/base/result.h"
#include "common/base/side.h"

namespace zorvane {

struct ProcessState;

/// The certificate, for people. On failure no file has been written or changed.
Result<std::string> WriteRedlines(ProcessState& process, const RedlineOptions& options,
                                  const PerSide<std::string>& files,
                                  const PerSide<std::string>& passwords);

}  // namespace zorvane
