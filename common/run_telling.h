// How one run tells what happens. Each viewer has its own, so that two runs share no log, no
// silence and no held message.
#pragma once

#include <map>
#include <mutex>
#include <string>
#include <string_view>
#include <vector>

#include "common/message_sink.h"

namespace zorvane {

/// A message on its way.
struct RunMessage {
    std::string message;
    std::string file;
    bool show = false;
};

/// What a copy of standard input stands for, in `shown_names`.
inline constexpr const char* kStandardInputName = "standard input";

/// Set before a run begins, and only read while it lasts.
struct TellingManner {
    std::string sLogFile;        ///< where `LogMessage` writes; empty: nowhere
    bool bShowMessages = false;  ///< also shows each message
    /// One sentence that names the file, in place of the fixed texts that scripts look for.
    bool bTellsPlainly = false;
    /// A run of a command line: asks nothing and opens no dialog.
    bool bSilent = false;
    std::map<std::string, std::string> shown_names;  ///< of files that stand for something else
};

class RunTelling {
  public:
    /// `sink` outlives this object.
    explicit RunTelling(MessageSink& sink) : sink_(sink) {}

    TellingManner manner;

    /// Safe from any thread.
    void Tell(RunMessage message);

    // ---- a run ----
    /// Between begin and end the boxes of a window wait, so that none opens inside the run. Runs
    /// inside a run count as part of it.
    void BeginRun();
    /// The user stopped the run: what it says from here to its end is no error, and dropped. Safe
    /// from any thread; without a run it does nothing.
    void Stop();
    void EndRun();
    /// The boxes that wait for the run's end, for whoever tells them in another way; they are gone
    /// from here.
    std::vector<std::string> TakeBoxes();

  private:
    friend class MessageHold;

    MessageSink& sink_;
    mutable std::mutex guard_;  ///< over all below
    int runs_ = 0;
    bool stopped_ = false;
    std::vector<std::string> boxes_;           ///< for the end of the run
    std::vector<RunMessage>* held_ = nullptr;  ///< of the open `MessageHold`
};

/// A run, from its making to the end of its life.
class TellingRun {
  public:
    explicit TellingRun(RunTelling& telling) : telling_(telling) { telling_.BeginRun(); }
    ~TellingRun() { telling_.EndRun(); }
    TellingRun(const TellingRun&) = delete;
    TellingRun& operator=(const TellingRun&) = delete;

  private:
    RunTelling& telling_;
};

}  // namespace zorvane
