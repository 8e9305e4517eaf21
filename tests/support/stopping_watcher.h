// Watchers that stop a run at a chosen moment, and that count how often it asks.
#pragma once

#include <algorithm>
#include <cstdint>
#include <map>

#include "common/base/run_watcher.h"

namespace zorvane {

/// Says no from its `stop_at`th question on; never for a negative one.
class StoppingWatcher : public RunWatcher {
  public:
    explicit StoppingWatcher(std::int64_t stop_at) : stop_at_(stop_at) {}
    bool KeepGoing() override {
        ++asked;
        return stop_at_ < 0 || asked < stop_at_;
    }
    std::int64_t asked = 0;

  private:
    std::int64_t stop_at_;
};

/// Lets all go on.
class CountingWatcher : public RunWatcher {
  public:
    bool KeepGoing() override {
        ++asked[step_];
        return true;
    }
    void Progress(RunStep step, double) override { step_ = step; }

    std::map<RunStep, std::int64_t> asked;  ///< in which step how often

  private:
    RunStep step_ = RunStep::None;
};

}  // namespace zorvane
