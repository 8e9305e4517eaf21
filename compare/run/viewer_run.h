// The run that a viewer has under way: the computation, the thread it may have, and what goes to
// and fro.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>
#include <thread>

#include "common/run_telling.h"
#include "compare/run/compare_job.h"
#include "compare/run/question_relay.h"
#include "compare/run/run_control.h"

namespace zorvane {

/// On a thread of its own, or on that of the caller.
enum class RunOn { ThisThread, Worker };

class ViewerRun {
  public:
    /// What runs, and what the viewer's thread does with the result. `hand_over` comes after the
    /// end of `work`, and only if the viewer still lives.
    struct Steps {
        std::function<void(ViewerRun&)> work;
        std::function<void()> hand_over;
    };

    ViewerRun(RunOn where, RunTelling& telling, LoadQuestions& window)
        : where_(where), telling_(telling), window_(window) {}
    /// Stops the run and waits for its end.
    ~ViewerRun();
    ViewerRun(const ViewerRun&) = delete;
    ViewerRun& operator=(const ViewerRun&) = delete;

    /// Returns when the run has ended, or at once where a worker carries it out.
    void Start(Steps steps);

    // ---- from the thread that runs ----
    RunControl& Control() { return control_; }
    LoadQuestions& Questions() {
        return where_ == RunOn::Worker ? static_cast<LoadQuestions&>(relay_) : window_;
    }
    void PublishEarly(EarlyOutcome early);

    // ---- from the thread of the viewer ----
    void Stop();
    bool Ended() const { return ended_; }
    bool OnWorker() const { return where_ == RunOn::Worker; }
    void AnswerQuestions() { relay_.Answer(window_); }
    std::optional<EarlyOutcome> TakeEarly();
    /// Waits for the end of the thread and gives back what to do then.
    std::function<void()> Finish();

    RunTexts shown;                 ///< what the window shows of it
    RunStep first = RunStep::None;  ///< what it is until it says more

  private:
    RunOn where_;
    TellingRun telling_;
    LoadQuestions& window_;
    RunControl control_;
    QuestionRelay relay_;
    Steps steps_;
    std::mutex early_lock_;
    std::optional<EarlyOutcome> early_;
    std::atomic<bool> ended_{false};
    std::thread worker_;
};

}  // namespace zorvane
