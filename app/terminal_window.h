// The viewer's window of a run on a terminal: progress on standard error, and no questions.
#pragma once

#include <chrono>
#include <string>

#include "compare/viewer_window.h"

namespace zorvane {

/// Shows what the main and the detail status panel say, at most ten times a second, when standard
/// error is a terminal.
class TerminalWindow : public SilentWindow {
  public:
    explicit TerminalWindow(bool show_progress) : show_progress_(show_progress) {}
    ~TerminalWindow() override { Clear(); }
    TerminalWindow(const TerminalWindow&) = delete;
    TerminalWindow& operator=(const TerminalWindow&) = delete;

    void ShowStatus(StatusPanel panel, const std::string& text) override;
    /// Takes the progress line away, before anything else is printed.
    void Clear();

  private:
    bool show_progress_;
    bool shown_ = false;
    std::chrono::steady_clock::time_point last_{};
};

}  // namespace zorvane
