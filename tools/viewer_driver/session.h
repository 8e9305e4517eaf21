// A process as a user has it, from its start to its end: the frame, its viewers and their windows.
// Nothing of the user's own settings is read or written.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "app/automation.h"
#include "app/main_frame.h"
#include "common/process_state.h"
#include "tools/viewer_driver/scripted_windows.h"

namespace zorvane {

/// What outlives a session: the system, with all folders inside of one.
Platform MakeDriverPlatform(const std::string& folder);

class DriverSession {
  public:
    /// Starts as the program without arguments does: what the last session in this folder left
    /// comes back.
    DriverSession(Platform& platform, Answers& answers);
    DriverSession(const DriverSession&) = delete;
    DriverSession& operator=(const DriverSession&) = delete;

    ProcessState& Process() { return process_; }
    frmMainMDI& Frame() { return frame_; }
    ScriptedFrame& Window() { return window_; }
    /// The one that has the focus; nothing without viewers.
    frmCompareFiles* Current() const;
    /// The window of an open viewer.
    ScriptedWindow& WindowOf(const Viewer& viewer) const;
    /// The n-th open one, from 1; nothing if there are fewer.
    frmCompareFiles* At(std::size_t number) const;
    /// What a transport would call; made at the first use.
    clsZorvane& Automation();
    const std::vector<std::string>& Refused() const { return refused_; }

    bool Busy() const;
    /// What the event loop of a window does some 30 times a second.
    void Poll();
    /// Polls until nothing runs; false when that takes longer than `patience`.
    bool Wait(std::chrono::milliseconds patience);
    void PollFor(std::chrono::microseconds time);

  private:
    struct Opened {
        frmCompareFiles* viewer;
        ScriptedWindow* window;
    };
    ViewerFactories Factories();
    void RunBeside();

    Answers& answers_;
    ProcessState process_;
    ScriptedFrame window_;
    std::vector<Opened> opened_;  ///< in opening order
    std::vector<std::string> refused_;
    frmMainMDI frame_;
    std::unique_ptr<clsZorvane> automation_;
};

}  // namespace zorvane
