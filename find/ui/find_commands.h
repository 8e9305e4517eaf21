// What a person can do in a Find window alone.
#pragma once

#include <functional>
#include <span>

#include "common/ui/command_table.h"

namespace zorvane {

class FindPage;

std::span<const Command> FindCommands();
/// Binds them, and what other windows have too, to the page in front; nullptr: none is. Behind the
/// other kinds of windows.
void BindFindCommands(CommandSet& commands, std::function<FindPage*()> active);

}  // namespace zorvane
