#include "app/automation.h"

#include <cassert>
#include <utility>

#include "app/command_line_parser.h"
#include "app/command_line_runs.h"
#include "app/run_modes.h"
#include "common/log_message.h"
#include "common/process_state.h"

namespace zorvane {
namespace {

// A client that floods the service is told so long before memory ends.
constexpr std::size_t kMostWaiting = 1000;

constexpr const char* kMissing = "Missing required command line argument(s)";

}  // namespace

clsZorvane::clsZorvane(ProcessState& process, frmMainMDI& frame, Event event)
    : process_(process), frame_(frame), event_(std::move(event)) {
    process_.gbAutomationHosted = true;
    StartServices(process_);
}

clsZorvane::~clsZorvane() {
    assert(!running_);
    Release();
}

std::int32_t clsZorvane::Refuse(AutomationResult code, const std::string& message) {
    const auto number = static_cast<std::int32_t>(code);
    event_(message, number);
    return number;
}

std::int32_t clsZorvane::DoCommandLine(std::string& line) {
    if (running_ || process_.gbFrameClosing)
        return Refuse(AutomationResult::Busy, "Another compare is in progress");
    const std::int32_t code = RunLine(line);
    ServeWaiting();
    return code;
}

void clsZorvane::Submit(std::string line, Reply reply, std::string caller) {
    if (process_.gbFrameClosing || waiting_.size() >= kMostWaiting) {
        reply(Refuse(AutomationResult::Busy, "Too many command lines are waiting"), line);
        return;
    }
    waiting_.push_back({std::move(line), std::move(reply), std::move(caller)});
    ServeWaiting();
}

void clsZorvane::ServeWaiting() {
    while (!waiting_.empty() && !running_) {
        WaitingLine next = std::move(waiting_.front());
        waiting_.pop_front();
        caller_ = next.caller;
        const std::int32_t code = RunLine(next.line);
        caller_.clear();
        next.reply(code, next.line);
    }
}

void clsZorvane::Forget(const std::string& caller) {
    std::erase_if(waiting_, [&](const WaitingLine& line) { return line.caller == caller; });
    if (running_ && caller_ == caller && viewer_ != nullptr)
        viewer_->Abort();
}

std::int32_t clsZorvane::RunLine(std::string& line) {
    CommandLineRequest request;
    // A client has no command line of its own to fall back on, so an empty line stays empty.
    if (!ParseCommandLine(process_, line, "", request)) {
        if (line.empty())
            return Refuse(AutomationResult::Empty, "Command line is empty");
        LogMessage(process_.telling, kMissing, request.sLogFile, request.bShowMessages);
        return Refuse(AutomationResult::Refused, kMissing);
    }
    running_ = true;
    const std::int32_t code = RunRequest(request);
    running_ = false;
    if (released_)
        EndProcess();
    return code;
}

std::int32_t clsZorvane::RunRequest(CommandLineRequest& request) {
    request.bExitWhenDone = request.bExitWhenDone || !keeps_viewers_;
    // Kept: behind a run with /X it stays set, so that a user who closes the frame does not end
    // the process that the client goes on to use.
    if (request.bExitWhenDone)
        process_.gbCommandLineRunning = true;
    const Silence silence = request.bExitWhenDone ? Silence::Silent : Silence::Open;
    frame_.Load();
    frame_.Window().SetState(WindowState::Minimised);
    const bool ran = RunCommandLine(
        process_, frame_, {request, silence, [this](Viewer& viewer) { viewer_ = &viewer; }});
    Viewer* const viewer = std::exchange(viewer_, nullptr);
    if (request.bExitWhenDone) {
        // Nobody looks at it, and a client that hands in line after line would fill the memory.
        if (viewer != nullptr)
            frame_.Unload(viewer);
    } else {
        process_.gbCommandLineRunning = false;
        frame_.ShowAfterRun(request.lWindowState);
        // Behind a run with /X the window is not there yet.
        if (viewer != nullptr && !released_)
            frame_.Activate(*viewer);
    }
    return static_cast<std::int32_t>(ran ? AutomationResult::Ran : AutomationResult::Refused);
}

std::int32_t clsZorvane::NumDifferencesFound() const {
    return process_.glDifferencesFound;
}

void clsZorvane::Release() {
    if (std::exchange(released_, true))
        return;
    waiting_.clear();
    if (!running_) {
        EndProcess();
        return;
    }
    if (viewer_ != nullptr)
        viewer_->Abort();
}

void clsZorvane::EndProcess() {
    process_.gbAutomationHosted = false;
    process_.gbCommandLineRunning = false;
    // The client's viewers are no session of the user's.
    frame_.CloseFrame(Session::Keep);
}

}  // namespace zorvane
