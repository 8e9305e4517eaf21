// How long a window takes over one step again and again: the processor's time, which a busy machine
// hardly changes, and that of the clock, until it is painted.
#pragma once

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <functional>
#include <thread>
#include <vector>

#include <QApplication>

namespace zorvane {

/// What it shows.
inline double MillisecondsOf(clockid_t clock) {
    timespec time{};
    clock_gettime(clock, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

class WindowTimes {
  public:
    /// `CLOCK_THREAD_CPUTIME_ID`: what others do beside the window is not its own.
    explicit WindowTimes(clockid_t processor = CLOCK_PROCESS_CPUTIME_ID) : processor_(processor) {}

    /// A step, and what goes on behind it until it is done and painted.
    void Take(
        const std::function<void()>& step,
        const std::function<bool()>& done = [] { return true; }) {
        const double cpu_begin = MillisecondsOf(processor_);
        const double wall_begin = MillisecondsOf(CLOCK_MONOTONIC);
        step();
        QApplication::processEvents();
        while (!done()) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
            QApplication::processEvents();
        }
        QApplication::processEvents();
        cpu_.push_back(MillisecondsOf(processor_) - cpu_begin);
        wall_.push_back(MillisecondsOf(CLOCK_MONOTONIC) - wall_begin);
    }

    void Tell(const char* name) {
        std::sort(cpu_.begin(), cpu_.end());
        std::sort(wall_.begin(), wall_.end());
        const auto part = [](const std::vector<double>& times, std::size_t percent) {
            return times[(times.size() - 1) * percent / 100];
        };
        std::printf("%-34s median %7.1f  99 %% %7.1f  worst %7.1f  (clock %7.1f, %7.1f, %7.1f)\n",
                    name, part(cpu_, 50), part(cpu_, 99), cpu_.back(), part(wall_, 50),
                    part(wall_, 99), wall_.back());
        std::fflush(stdout);
    }

  private:
    clockid_t processor_;
    std::vector<double> cpu_;
    std::vector<double> wall_;
};

}  // namespace zorvane
