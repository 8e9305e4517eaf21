// Between the thread that runs and the one that looks: how far it is, and the wish to stop.
#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include "common/base/run_watcher.h"
#include "compare/engine/in_sight.h"

namespace zorvane {

struct ProcessState;

/// The texts of the two status panels that tell how a run goes.
struct RunTexts {
    std::string main;
    std::string detail;
    friend bool operator==(const RunTexts&, const RunTexts&) = default;
};

/// A percentage in the format "#.0": 12.5, 100.0, and .0 for nothing.
std::string PercentText(double percent);
/// The text of one step, in the language in force.
std::string StepText(ProcessState& process, RunStep step, double part);

/// Telling and asking cost a store and a load each. One thread runs, any may look or stop.
class RunControl : public RunWatcher {
  public:
    bool KeepGoing() override;
    void Progress(RunStep step, double part) override;

    /// What somebody looks at; at first the beginning.
    void Look(ParagraphsInSight sight);
    ParagraphsInSight InSight() const;
    void Stop() { stop_ = true; }
    bool Stopped() const { return stop_; }
    /// The step of the main panel.
    RunStep Step() const { return Unpack(main_).step; }
    /// How much of it is done, 0 to 1.
    double Part() const { return Unpack(main_).part; }
    RunTexts Texts(ProcessState& process) const;

    /// For a run on the thread of its viewer: called from `KeepGoing`, at most every `interval`.
    void CallWhileRunning(std::function<void()> tick, std::chrono::milliseconds interval);

  private:
    struct Told {
        RunStep step;
        double part;
    };
    static Told Unpack(std::uint64_t packed);
    static constexpr std::uint64_t kFirstSight = 64;  // paragraphs of a large screen

    std::atomic<bool> stop_{false};
    // Step and part in one word each, so that no reader sees the part of another step.
    std::atomic<std::uint64_t> main_{0};
    std::atomic<std::uint64_t> detail_{0};
    std::atomic<std::uint64_t> sight_{kFirstSight};  // the begin in the upper half, then the end
    std::function<void()> tick_;
    std::chrono::milliseconds interval_{0};
    std::chrono::steady_clock::time_point last_tick_{};
};

}  // namespace zorvane
