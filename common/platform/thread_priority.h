// Who goes first where threads want more processors than there are.
#pragma once

namespace zorvane {

/// The calling thread does long work behind a window: it leaves processors to whoever a person
/// waits for. Holds until the thread ends; what the system refuses is left as it is.
void StandBehindWindows();

}  // namespace zorvane
