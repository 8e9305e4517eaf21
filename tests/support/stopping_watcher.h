// Watchers that stop a run at a chosen moment, and that measure how often it asks.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>

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

/// The longest time between two questions, and what was told before it.
class GapWatcher : public RunWatcher {
  public:
    bool KeepGoing() override {
        const auto now = std::chrono::steady_clock::now();
        const std::chrono::duration<double, std::milli> gap = now - last_;
        if (gap.count() > longest) {
            longest = gap.count();
            longest_step = step_;
        }
        last_ = now;
        return true;
    }
    void Progress(RunStep step, double) override { step_ = step; }

    double longest = 0;  ///< milliseconds
    RunStep longest_step = RunStep::None;

  private:
    std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
    RunStep step_ = RunStep::None;
};

}  // namespace zorvane
