// Between two large steps of one process.
#pragma once

#include <cstdlib>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace zorvane {

/// What the step before let go of goes back to the system: the next one needs blocks of other
/// sizes, and would take room of its own. Does nothing where the system has no such call.
inline void ReturnFreedMemory() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

}  // namespace zorvane
