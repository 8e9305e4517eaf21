// The automation class: a client hands in command lines and reads the count of differences.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>

#include "app/command_line_request.h"
#include "app/main_frame.h"

namespace zorvane {

struct ProcessState;

/// Codes of `DoCommandLine` and of the event.
enum class AutomationResult : std::int32_t {
    Ran = 0,  ///< whether or not the run keeps its viewer open, and whatever came out
    Empty = -2,
    Refused = -3,  ///< by the parser
    Busy = -4      ///< a run is under way, the frame closes, or too many lines wait
};

/// What a transport calls: one method, one property, one event. All calls come on the thread of the
/// windows; a call may come while a run pumps events.
class clsZorvane {
  public:
    /// Raised with a message and a code when a line is refused.
    using Event = std::function<void(const std::string& message, std::int32_t code)>;
    /// The answer to a line: its code, and the line as the parser left it.
    using Reply = std::function<void(std::int32_t code, const std::string& line)>;

    /// Starts the services as a process start does. All arguments outlive this object.
    clsZorvane(ProcessState& process, frmMainMDI& frame, Event event);
    /// Not while a run is under way: `Release` comes first.
    ~clsZorvane();
    clsZorvane(const clsZorvane&) = delete;
    clsZorvane& operator=(const clsZorvane&) = delete;

    /// Runs the line and comes back with its code. Lines that came in meanwhile are served before
    /// it comes back. During a run it refuses, since it cannot wait for the call that it
    /// interrupted.
    std::int32_t DoCommandLine(std::string& line);
    /// For a transport that can answer later: lines are served one after the other, in the order in
    /// which they came. `caller` tells whose line it is.
    void Submit(std::string line, Reply reply, std::string caller = {});
    /// One of several clients is gone: its waiting lines are forgotten, and its run is stopped.
    void Forget(const std::string& caller);
    bool Running() const { return running_; }
    /// From here on every run ends as under `/X`: there is no display to look at its viewer on.
    void KeepNoViewers() { keeps_viewers_ = false; }
    /// Of the last run that ended, at any time.
    std::int32_t NumDifferencesFound() const;
    /// The client is gone: waiting lines are forgotten, a run under way is stopped, and the process
    /// ends, now or when that run has ended. A user who then keeps a viewer open keeps the process.
    void Release();

  private:
    struct WaitingLine {
        std::string line;
        Reply reply;
        std::string caller;
    };
    std::int32_t RunLine(std::string& line);
    std::int32_t RunRequest(CommandLineRequest& request);
    std::int32_t Refuse(AutomationResult code, const std::string& message);
    void ServeWaiting();
    void EndProcess();

    ProcessState& process_;
    frmMainMDI& frame_;
    Event event_;
    std::deque<WaitingLine> waiting_;
    Viewer* viewer_ = nullptr;  ///< of the run under way
    std::string caller_;        ///< of the run under way
    bool running_ = false;
    bool released_ = false;
    bool keeps_viewers_ = true;
};

}  // namespace zorvane
