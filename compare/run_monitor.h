// How a run yields, hears of an abort, and tells how far it is.
#pragma once

#include <string>
#include <string_view>

#include "common/process_state.h"
#include "compare/viewer_window.h"

namespace zorvane {

class RunMonitor {
  public:
    RunMonitor(ProcessState& process, CompareFilesWindow& window, bool& abort_requested)
        : process_(process), window_(window), abort_requested_(abort_requested) {}

    /// Yields to the user, then answers whether to go on. Nothing is half done when it says no.
    bool KeepGoing() {
        window_.PumpEvents();
        return !abort_requested_;
    }
    void Show(StatusPanel panel, const std::string& text) { window_.ShowStatus(panel, text); }
    std::string Translate(std::string_view english) { return process_.Translate(english); }

  private:
    ProcessState& process_;
    CompareFilesWindow& window_;
    bool& abort_requested_;
};

/// A percentage in the format "#.0": 12.5, 100.0, and .0 for nothing.
std::string PercentText(double percent);

}  // namespace zorvane
