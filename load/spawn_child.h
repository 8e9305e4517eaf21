// A program started with a socket as its standard input and nothing else of this process.
#pragma once

#include <string>
#include <vector>

namespace zorvane {

/// What the child inherits: the socket as standard input, nothing to print on, no other open file,
/// no variable but those given, and no blocked signals but those that it is about to pass over. It
/// leads a process group. -1 when it cannot be started.
int SpawnChild(const std::string& program, const std::vector<std::string>& arguments,
               std::vector<std::string> environment, int socket);

}  // namespace zorvane
