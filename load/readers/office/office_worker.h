// The process that an office suite runs in, so that its crash, hang or appetite ends nothing else.
#pragma once

namespace zorvane {

/// Serves requests until the end of `request_fd`, and then gives 0; 1 when it cannot be understood
/// or answered. A request (see load/conversion_message.h) has "source", "target", "format" and
/// optionally "password"; the first one may name the session's "profile" folder, which then stays
/// for its owner to remove (else a folder of the worker's own comes and goes). A reply has "error",
/// the number of a `ReadError`, and "detail".
///
/// Takes the whole process: bounds its memory, ties its life to the parent's, and turns its
/// standard streams to nothing, since the suite writes there. The caller then ends it by `_exit`,
/// so that nothing of the suite runs after its end.
[[nodiscard]] int RunOfficeWorker(int request_fd, int reply_fd);

}  // namespace zorvane
