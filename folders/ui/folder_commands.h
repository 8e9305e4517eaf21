// What a person can do in a Compare Folders window alone.
#pragma once

#include <functional>
#include <span>

#include "common/ui/command_table.h"

namespace zorvane {

class CompareFoldersPage;

std::span<const Command> FolderCommands();
/// Binds them, and what other windows have too, to the page in front; nullptr: none is. Behind the
/// other kinds of windows.
void BindFolderCommands(CommandSet& commands, std::function<CompareFoldersPage*()> active);

}  // namespace zorvane
