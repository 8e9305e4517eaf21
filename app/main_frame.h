// The frame: makes, numbers, finds and closes viewers, and brings a session back. Its window is a
// skin over this.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/command_line_request.h"
#include "app/frame_window.h"
#include "compare/compare_files_viewer.h"
#include "compare/viewer.h"
#include "compare/viewer_window.h"

namespace zorvane {

struct ProcessState;

/// A new viewer with its window, which it borrows and which goes after it.
struct MadeViewer {
    std::shared_ptr<void> window;
    std::unique_ptr<Viewer> viewer;
};
/// One for each kind. A kind without a factory is told to the user and not made. The request is
/// that of the command line that the viewer is made for, else a fresh one.
struct ViewerFactories {
    using Make = std::function<MadeViewer(const CommandLineRequest& request)>;
    Make compare_files;
    Make compare_folders;
    Make find_text;
};
/// A Compare Files viewer over the given window.
MadeViewer MakeCompareFiles(ProcessState& process, const CommandLineRequest& request,
                            std::unique_ptr<CompareFilesWindow> window);

/// The viewers of a program without windows. The process outlives what they make.
ViewerFactories SilentViewers(ProcessState& process);

enum class CloseResult {
    Closed,
    Stopping,  ///< a run has been told to stop; `FinishClosing` goes on when it has
    Refused    ///< a viewer asked its user, who stays
};

enum class Session {
    Save,  ///< what is open comes back at the next start
    Keep   ///< what was open before stays what comes back
};

/// One line of the list of open windows.
struct OpenScreen {
    ViewerKind kind = ViewerKind::CompareFiles;
    std::string description;
    std::vector<std::string> files;
    bool active = false;
    bool busy = false;
    friend bool operator==(const OpenScreen&, const OpenScreen&) = default;
};

struct ViewerKindRow;

/// One thread: that of the windows.
class frmMainMDI {
  public:
    /// The process and the window outlive the frame.
    frmMainMDI(ProcessState& process, FrameWindow& window, ViewerFactories factories);
    ~frmMainMDI();
    frmMainMDI(const frmMainMDI&) = delete;
    frmMainMDI& operator=(const frmMainMDI&) = delete;

    // ---- start ----
    /// Brings the last session back; while a command-line run owns the process it minimises the
    /// frame and restores nothing. The second call does nothing.
    void Load();
    void ReadIniFile();
    /// Behind a run that stays open: normal, at its place, then in the state that `/WS` names.
    void ShowAfterRun(std::int32_t lWindowState);

    // ---- viewers ----
    /// The new viewer reads its section and has the focus. The frame owns it. Nothing, which has
    /// been told, for a kind that this program does not have, and while the frame closes.
    /// Kept: its number is the count of open viewers of its kind plus 1 even if that number is in
    /// use, so two viewers can share a section; the later save wins.
    Viewer* CreateNewForm(ViewerKind kind, const CommandLineRequest& request = {});
    void TellMissing(ViewerKind kind);
    std::int32_t CountToRestore(const ViewerKindRow& row, std::int32_t stored) const;
    void TellNotRestored(const ViewerKindRow& row, std::int32_t stored, std::int32_t count);
    frmCompareFiles* CreateNewCompareFilesForm(const CommandLineRequest& request = {});
    Viewer* CreateNewCompareFoldersForm(const CommandLineRequest& request = {});
    Viewer* CreateNewFindTextForm();

    /// The last opened viewer whose `sDescription` contains "<number>_CompareFile", else a new one.
    /// Kept: number 1 also finds viewer 11. Saved sessions depend on the containment test.
    frmCompareFiles* frmGetCFNumber(std::int32_t number);
    Viewer* frmGetCDNumber(std::int32_t number);
    Viewer* frmGetFTNumber(std::int32_t number);

    std::int32_t NumberOpenScreens() const;
    /// In opening order.
    std::vector<OpenScreen> OpenScreens() const;
    /// The viewer that had the focus last; nothing without viewers.
    Viewer* ActiveViewer() const;
    void Activate(Viewer& viewer);
    /// The window tells that the user moved the focus.
    void WasActivated(Viewer& viewer);

    /// Some 30 times a second, by whoever runs the events: polls each viewer, lets go of those that
    /// leave, and shows waiting messages. Does nothing inside itself, when a question of a viewer
    /// runs the events.
    void Poll();

    // ---- the end ----
    /// The user closes one.
    CloseResult CloseViewer(Viewer& viewer);
    /// The user closes the frame: every viewer is asked first, then all go, and the counts of what
    /// was open are written. Then the program ends, unless a command-line run owns it.
    CloseResult CloseFrame(Session session = Session::Save);
    /// Lets go of viewers whose runs have ended since; `Poll` calls it.
    CloseResult FinishClosing();
    /// The end of a command-line run: from the last viewer to the first each saves its section and
    /// goes, without a question. The session that a user left is kept for the next one.
    void UnloadAll();
    /// The same for one viewer.
    void Unload(const Viewer* viewer);
    /// What `CloseFrame` writes before viewers go: the rectangle and the name of the active one.
    void SaveIniFile();

    /// Shows the messages that wait, unless they are being shown.
    void ShowMessages();
    FrameWindow& Window() { return window_; }

  private:
    struct OpenViewer {
        std::shared_ptr<void> window;
        std::unique_ptr<Viewer> viewer;
        bool leaving = false;  ///< goes as soon as its run has ended
    };

    const ViewerFactories::Make& FactoryOf(ViewerKind kind) const;
    Viewer* Open(ViewerKind kind, std::int32_t number, const CommandLineRequest& request);
    Viewer* Find(const std::string& name) const;
    Viewer* FindOrCreate(ViewerKind kind, std::int32_t number);
    bool IsOpen(const Viewer* viewer) const;
    void RestoreRectangle();
    void RestoreActive();
    bool AllMayClose();
    bool Ask(Viewer& viewer);
    void CountOpen();
    void WriteCounts();

    ProcessState& process_;
    FrameWindow& window_;
    ViewerFactories factories_;
    std::vector<OpenViewer> viewers_;   ///< in opening order
    std::vector<Viewer*> focus_order_;  ///< the one that had the focus last is last
    std::vector<std::pair<ViewerKind, std::int32_t>> counts_;  ///< at the close of the frame
    bool loaded_ = false;
    // Viewers with a call of ours on the stack, which may run the events of the window.
    std::vector<const Viewer*> asked_;
    const Viewer* polled_ = nullptr;
    bool closing_ = false;
    bool closed_ = false;
};

}  // namespace zorvane
