// What a command ends with, as its like among the system's own programs do.
#pragma once

namespace zorvane {

enum ExitStatus : int {
    kSame = 0,
    kFound = 0,
    kDifferent = 1,
    kNothing = 1,
    kTrouble = 2,
};

}  // namespace zorvane
