// Whether this build watches itself, which takes memory and system calls of its own.
#pragma once

namespace zorvane {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool kUnderSanitizer = true;
#else
inline constexpr bool kUnderSanitizer = false;
#endif

}  // namespace zorvane
