// What the converter process may not do: use the machine up, or talk to a network.
#pragma once

#include <cstddef>

namespace zorvane {

/// Ends this process together with the one that started it.
void DieWithParent();
/// No more than `bytes` of memory of its own from here on; an allocation beyond fails.
void LimitMemory(std::size_t bytes);
/// From here on sockets but local ones fail, for this process and its children. False when the
/// system has no such filter.
bool ForbidNetwork();
/// No program can be started any more.
bool ForbidPrograms();

}  // namespace zorvane
