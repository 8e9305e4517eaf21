// Watchers that stop a run at a chosen moment, and that measure how often it asks.
#pragma once

#include <algorithm>
#include <cstdint>
#include <ctime>

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

/// The longest time between two questions, and what was told before it. It counts what this thread
/// has computed, so that a busy machine does not stretch it.
class GapWatcher : public RunWatcher {
  public:
    bool KeepGoing() override {
        const double now = Now();
        if (now - last_ > longest) {
            longest = now - last_;
            longest_step = step_;
        }
        last_ = now;
        return true;
    }
    void Progress(RunStep step, double) override { step_ = step; }

    double longest = 0;  ///< milliseconds
    RunStep longest_step = RunStep::None;

  private:
    static double Now() {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
    }

    double last_ = Now();
    RunStep step_ = RunStep::None;
};

}  // namespace zorvane
