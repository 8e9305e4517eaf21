// How the reading of a foreign document ends, on both sides of the pipe to zorvane-convert.
#pragma once

#include <cstdint>

namespace zorvane {

/// The numbers travel in messages; they may only grow.
enum class ReadError : std::int32_t {
    None = 0,
    CannotOpen,      ///< missing, vanished, no permission
    WrongFormat,     ///< not a document of this kind
    Damaged,         ///< of this kind, but broken
    PasswordNeeded,  ///< encrypted; none or a wrong one was given
    Unsupported,     ///< an encryption or a version that nothing here reads
    NeedsOffice,     ///< only an office suite reads it, and none was found
    TooLarge,        ///< more than the limits allow once unpacked
    Cancelled,
    CannotWrite,  ///< the target
    // Told by the side that waits.
    NotStarted,  ///< zorvane-convert is missing
    Crashed,     ///< it ended without an answer
    TimedOut,    ///< it made no progress and was stopped
    // Told by the child before it has read a byte.
    NoSandbox,  ///< the system refuses what closes the child in
    // Told by the writer of tracked changes.
    NotTracked  ///< what was written does not give both documents back
};

}  // namespace zorvane
