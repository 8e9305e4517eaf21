// The list of `zorvane compare --pairs`, line by line.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "app/compare_command.h"
#include "common/base/result.h"

namespace zorvane {

/// Of one line. With a fault only what could be read is there.
struct ListedPair {
    CompareCommand command;  ///< the line's own options over those of all pairs
    Status fault = Status::Ok();
};

/// `line` is without its end: ORIGINAL, a tab and MODIFIED, and reports behind further tabs; or a
/// JSON object, which begins with "{".
ListedPair ReadPair(std::string_view line, const CompareCommand& common);

}  // namespace zorvane
