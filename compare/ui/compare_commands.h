// What a person can do in a Compare Files window.
#pragma once

#include <span>

#include "common/ui/command_table.h"

namespace zorvane {

std::span<const Command> CompareCommands();

}  // namespace zorvane
