// What a run's passes ask and tell while they work, and the language of what they write.
#pragma once

#include <string>
#include <string_view>

#include "common/base/run_watcher.h"
#include "common/process_state.h"

namespace zorvane {

class RunMonitor {
  public:
    RunMonitor(ProcessState& process, RunWatcher& watcher) : process_(process), watcher_(watcher) {}

    /// False after a stop, and from then on.
    bool KeepGoing() { return watcher_.KeepGoing(); }
    RunWatcher& Watcher() { return watcher_; }
    void Progress(RunStep step, double part) { watcher_.Progress(step, part); }
    std::string Translate(std::string_view english) { return process_.Translate(english); }

  private:
    ProcessState& process_;
    RunWatcher& watcher_;
};

}  // namespace zorvane
