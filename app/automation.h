// The automation class: a client hands in command lines and reads the count of differences.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "app/command_line_request.h"
#include "app/main_frame.h"

namespace zorvane {

struct ProcessState;

class clsZorvane {
  public:
    /// Raised with a message and a code when a line is refused.
    using Event = std::function<void(const std::string& message, std::int32_t code)>;

    /// Starts the services as a process start does. All arguments outlive this object.
    clsZorvane(ProcessState& process, CommandLineRequest& request, frmMainMDI& frame, Event event);

    /// 0 for a run, -2 for an empty line, -3 for arguments that the parser refuses. The line is
    /// changed by the parser's first pass.
    std::int32_t DoCommandLine(std::string& line);
    std::int32_t NumDifferencesFound() const;

  private:
    std::int32_t Refuse(const std::string& line);

    ProcessState& process_;
    CommandLineRequest& request_;
    frmMainMDI& frame_;
    Event event_;
};

}  // namespace zorvane
