// The frame: makes, numbers and finds viewers. Its window, once there is one, is a skin over this.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/command_line_request.h"
#include "compare/compare_files_viewer.h"
#include "compare/viewer_window.h"

namespace zorvane {

struct ProcessState;

/// Window states of the platform.
enum class WindowState : std::int32_t { Normal = 0, Minimised = 1, Maximised = 2 };

class frmMainMDI {
  public:
    /// Makes the window of a new viewer; a run without a display gets one that shows nothing.
    using MakeWindow = std::function<std::unique_ptr<CompareFilesWindow>()>;

    frmMainMDI(ProcessState& process, const CommandLineRequest& request, MakeWindow make_window);
    ~frmMainMDI();
    frmMainMDI(const frmMainMDI&) = delete;
    frmMainMDI& operator=(const frmMainMDI&) = delete;

    /// The new viewer reads its section of the settings file. The frame owns it.
    /// Kept: its number is the count of open viewers plus 1 even if that number is in use, so two
    /// viewers can share a section; the later save wins.
    frmCompareFiles& CreateNewCompareFilesForm();
    /// The last opened viewer whose `sDescription` contains "<number>_CompareFile", else a new one.
    /// Kept: number 1 also finds viewer 11. Saved sessions depend on the containment test.
    frmCompareFiles& frmGetCFNumber(std::int32_t number);
    std::int32_t NumberOpenScreens() const;

    /// From the last viewer to the first: each saves its section and goes.
    void UnloadAll();

    WindowState State() const { return state_; }
    void SetState(WindowState state) { state_ = state; }

  private:
    struct OpenViewer {
        std::unique_ptr<CompareFilesWindow> window;
        std::unique_ptr<frmCompareFiles> viewer;
    };

    ProcessState& process_;
    const CommandLineRequest& request_;
    MakeWindow make_window_;
    std::vector<OpenViewer> viewers_;
    WindowState state_ = WindowState::Normal;
};

}  // namespace zorvane
