// Between the steps of a redline.
#pragma once

#include <malloc.h>

namespace zorvane {

/// What the step before let go of goes back to the system: the next one needs blocks of other
/// sizes, and would take room of its own.
inline void ReturnFreedMemory() {
#ifdef __GLIBC__
    malloc_trim(0);
#endif
}

}  // namespace zorvane
