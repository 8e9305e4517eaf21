// What `zorvane compare` may be told of a redline with tracked changes.
#pragma once

#include "compare/run/redline_run.h"

namespace CLI {
class App;
}

namespace zorvane {

void AddRedlineOptions(CLI::App& app, RedlineOptions& options);

}  // namespace zorvane
