#include "app/compare_run.h"

#include "app/compare_runner.h"
#include "app/pairs_run.h"

namespace zorvane {

int RunCompareCommand(Platform& platform, const CompareCommand& command) {
    if (command.pairs)
        return RunPairs(platform, command);
    return static_cast<int>(CompareRunner(platform, command).Run());
}

}  // namespace zorvane
