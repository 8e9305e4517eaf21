// What a person can do in the frame, whichever window is in front; and the order of the menus.
#pragma once

#include <span>
#include <string_view>

#include "common/ui/command_table.h"

namespace zorvane {

std::span<const Command> FrameCommands();
std::span<const std::string_view> MenuOrder();

}  // namespace zorvane
