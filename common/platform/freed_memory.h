// For a process whose large steps follow each other.
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

/// From then on each block of 1 MiB and more goes back as soon as it is freed, for the price of
/// clean pages for the next one. Otherwise the library keeps the largest ones, and small blocks
/// settle in them.
inline void ReturnLargeBlocksAtOnce() {
#ifdef M_MMAP_THRESHOLD
    mallopt(M_MMAP_THRESHOLD, 1 << 20);
#endif
}

}  // namespace zorvane
