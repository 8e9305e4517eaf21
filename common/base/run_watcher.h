// How a long computation tells how far it is and hears that it is to stop.
#pragma once

#include <cstdint>

namespace zorvane {

/// What a run is doing. Texts are made from this, where and when somebody looks.
enum class RunStep : std::uint8_t {
    None,
    LoadFiles,       ///< of a command line
    ReloadFiles,     ///< of the Refresh button
    ImportPdf,       ///< detail of a load
    ImportSlides,    ///< detail of a load
    PrepareCompare,  ///< texts and paragraphs
    Compare,         ///< the engine
    List,            ///< the lines of the difference list
    BeginMarking,
    MarkAllInOne,
    MarkSideBySide,
    MarkSections,  ///< detail of the marking
    MarkLetters,   ///< detail of the marking
    WriteReport,
    LaunchReport,
    Save,  ///< of an editor
    Print
};

/// One for a whole run: loading, engine, marking, reports. Called from the thread that computes.
class RunWatcher {
  public:
    virtual ~RunWatcher() = default;
    /// False once the run is to stop, and from then on. Cheap enough for every few microseconds; a
    /// computation asks at least every few milliseconds.
    virtual bool KeepGoing() = 0;
    /// `part` of the step is done, 0 to 1.
    virtual void Progress(RunStep /*step*/, double /*part*/) {}
};

/// Nobody watches: nullptr.
inline bool KeepGoing(RunWatcher* watcher) {
    return watcher == nullptr || watcher->KeepGoing();
}
inline void TellProgress(RunWatcher* watcher, RunStep step, double part) {
    if (watcher != nullptr)
        watcher->Progress(step, part);
}

/// Asks the watcher once in a while, so that an inner loop can call it for every item.
class StopCheck {
  public:
    /// `every`: units of work between two questions.
    explicit StopCheck(RunWatcher* watcher, std::int64_t every = 1 << 14)
        : watcher_(watcher), every_(every) {}

    /// `work` units more were done. False after a stop, and from then on.
    bool KeepGoing(std::int64_t work = 1) {
        done_ += work;
        if (done_ < every_ || stopped_)
            return !stopped_;
        done_ = 0;
        stopped_ = !zorvane::KeepGoing(watcher_);
        return !stopped_;
    }
    bool Stopped() const { return stopped_; }

  private:
    RunWatcher* watcher_;
    std::int64_t every_;
    std::int64_t done_ = 0;
    bool stopped_ = false;
};

}  // namespace zorvane
