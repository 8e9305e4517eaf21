#include "app/main_frame.h"

#include <algorithm>
#include <utility>

#include "app/viewer_kinds.h"
#include "common/log_message.h"
#include "common/process_state.h"
#include "folders/compare_folders_viewer.h"
#include "load/extracted_texts.h"

namespace zorvane {

MadeViewer MakeCompareFiles(ProcessState& process, const CommandLineRequest& request,
                            std::unique_ptr<CompareFilesWindow> window) {
    MadeViewer made;
    made.viewer = std::make_unique<frmCompareFiles>(process, request, *window);
    made.window = std::move(window);
    return made;
}

ViewerFactories SilentViewers(ProcessState& process) {
    ViewerFactories factories;
    factories.compare_files = [&process](const CommandLineRequest& request) {
        return MakeCompareFiles(process, request, std::make_unique<SilentWindow>());
    };
    factories.compare_folders = [&process](const CommandLineRequest& request) {
        auto window = std::make_unique<SilentFoldersWindow>();
        auto viewer = std::make_unique<frmCompareDir>(process, *window, request.bClearHistory);
        viewer->KeepChecksIn(UserTextCache(process));
        MadeViewer made;
        made.viewer = std::move(viewer);
        made.window = std::move(window);
        return made;
    };
    return factories;
}

frmMainMDI::frmMainMDI(ProcessState& process, FrameWindow& window, ViewerFactories factories)
    : process_(process), window_(window), factories_(std::move(factories)) {}

frmMainMDI::~frmMainMDI() = default;

// ---- viewers ----

const ViewerFactories::Make& frmMainMDI::FactoryOf(ViewerKind kind) const {
    switch (kind) {
        case ViewerKind::CompareFolders:
            return factories_.compare_folders;
        case ViewerKind::FindText:
            return factories_.find_text;
        case ViewerKind::CompareFiles:
            break;
    }
    return factories_.compare_files;
}

Viewer* frmMainMDI::Open(ViewerKind kind, std::int32_t number, const CommandLineRequest& request) {
    if (closing_)
        return nullptr;
    const ViewerFactories::Make& make = FactoryOf(kind);
    if (!make) {
        TellMissing(kind);
        return nullptr;
    }
    MadeViewer made = make(request);
    Viewer* viewer = made.viewer.get();
    viewers_.push_back({std::move(made.window), std::move(made.viewer)});
    viewer->Setup(NameOf(kind, number), true);
    Activate(*viewer);
    return viewer;
}

void frmMainMDI::TellMissing(ViewerKind kind) {
    RunTelling& telling = process_.telling;
    LogMessage(telling,
               process_.Translate(RowOf(kind).words) + ": " +
                   process_.Translate("This program does not have this kind of viewer."),
               telling.manner.sLogFile, true);
}

Viewer* frmMainMDI::CreateNewForm(ViewerKind kind, const CommandLineRequest& request) {
    const auto open = std::count_if(viewers_.begin(), viewers_.end(), [&](const OpenViewer& entry) {
        return entry.viewer->Kind() == kind;
    });
    return Open(kind, static_cast<std::int32_t>(open) + 1, request);
}

frmCompareFiles* frmMainMDI::CreateNewCompareFilesForm(const CommandLineRequest& request) {
    return dynamic_cast<frmCompareFiles*>(CreateNewForm(ViewerKind::CompareFiles, request));
}

Viewer* frmMainMDI::CreateNewCompareFoldersForm(const CommandLineRequest& request) {
    return CreateNewForm(ViewerKind::CompareFolders, request);
}

Viewer* frmMainMDI::CreateNewFindTextForm() {
    return CreateNewForm(ViewerKind::FindText);
}

Viewer* frmMainMDI::Find(const std::string& name) const {
    for (auto open = viewers_.rbegin(); open != viewers_.rend(); ++open) {
        if (!open->leaving && open->viewer->Description().find(name) != std::string::npos)
            return open->viewer.get();
    }
    return nullptr;
}

Viewer* frmMainMDI::FindOrCreate(ViewerKind kind, std::int32_t number) {
    Viewer* found = Find(NameOf(kind, number));
    return found != nullptr ? found : CreateNewForm(kind);
}

frmCompareFiles* frmMainMDI::frmGetCFNumber(std::int32_t number) {
    return dynamic_cast<frmCompareFiles*>(FindOrCreate(ViewerKind::CompareFiles, number));
}

Viewer* frmMainMDI::frmGetCDNumber(std::int32_t number) {
    return FindOrCreate(ViewerKind::CompareFolders, number);
}

Viewer* frmMainMDI::frmGetFTNumber(std::int32_t number) {
    return FindOrCreate(ViewerKind::FindText, number);
}

std::int32_t frmMainMDI::NumberOpenScreens() const {
    return static_cast<std::int32_t>(viewers_.size());
}

std::vector<OpenScreen> frmMainMDI::OpenScreens() const {
    std::vector<OpenScreen> screens;
    for (const OpenViewer& open : viewers_) {
        const Viewer& viewer = *open.viewer;
        screens.push_back({viewer.Kind(), viewer.Description(), viewer.FileNames(),
                           &viewer == ActiveViewer(), viewer.Busy()});
    }
    return screens;
}

Viewer* frmMainMDI::ActiveViewer() const {
    return focus_order_.empty() ? nullptr : focus_order_.back();
}

void frmMainMDI::Activate(Viewer& viewer) {
    viewer.Activate();
    WasActivated(viewer);
}

void frmMainMDI::WasActivated(Viewer& viewer) {
    if (!IsOpen(&viewer))
        return;
    std::erase(focus_order_, &viewer);
    focus_order_.push_back(&viewer);
    window_.ViewersChanged();
}

bool frmMainMDI::IsOpen(const Viewer* viewer) const {
    return std::any_of(viewers_.begin(), viewers_.end(),
                       [viewer](const OpenViewer& open) { return open.viewer.get() == viewer; });
}

void frmMainMDI::Poll() {
    if (polled_ != nullptr)
        return;
    std::vector<Viewer*> open_now;
    for (const OpenViewer& open : viewers_)
        open_now.push_back(open.viewer.get());
    for (Viewer* viewer : open_now) {
        if (!IsOpen(viewer))
            continue;
        polled_ = viewer;
        viewer->Poll();
        polled_ = nullptr;
    }
    FinishClosing();
    ShowMessages();
}

// ---- the end ----

CloseResult frmMainMDI::CloseViewer(Viewer& viewer) {
    if (!Ask(viewer))
        return CloseResult::Refused;
    for (OpenViewer& open : viewers_) {
        if (open.viewer.get() == &viewer)
            open.leaving = true;
    }
    FinishClosing();
    return IsOpen(&viewer) ? CloseResult::Stopping : CloseResult::Closed;
}

// The question runs the window's events: the user may close the same viewer once more, or another.
bool frmMainMDI::Ask(Viewer& viewer) {
    if (std::find(asked_.begin(), asked_.end(), &viewer) != asked_.end())
        return false;
    asked_.push_back(&viewer);
    const bool agreed = viewer.MayClose();
    asked_.pop_back();
    return agreed;
}

bool frmMainMDI::AllMayClose() {
    std::vector<Viewer*> asked;
    for (auto open = viewers_.rbegin(); open != viewers_.rend(); ++open) {
        if (!open->leaving)
            asked.push_back(open->viewer.get());
    }
    bool agreed = true;
    for (Viewer* viewer : asked)
        agreed = agreed && (!IsOpen(viewer) || Ask(*viewer));
    return agreed;
}

CloseResult frmMainMDI::CloseFrame(Session session) {
    if (closing_)
        return FinishClosing();
    // A question stands open, and the user closes the frame once more.
    if (!asked_.empty() || !AllMayClose())
        return CloseResult::Refused;
    closing_ = true;
    process_.gbFrameClosing = true;
    if (session == Session::Save) {
        SaveIniFile();
        CountOpen();
    }
    window_.CloseDialogs();
    for (OpenViewer& open : viewers_)
        open.leaving = true;
    return FinishClosing();
}

void frmMainMDI::Unload(const Viewer* viewer) {
    const auto open = std::find_if(viewers_.begin(), viewers_.end(), [viewer](const auto& entry) {
        return entry.viewer.get() == viewer;
    });
    if (open == viewers_.end())
        return;
    OpenViewer gone = std::move(*open);
    viewers_.erase(open);
    std::erase(focus_order_, viewer);
    gone.viewer->Close();
    gone.viewer.reset();
    window_.ViewersChanged();
}

CloseResult frmMainMDI::FinishClosing() {
    std::vector<Viewer*> leaving;
    for (auto open = viewers_.rbegin(); open != viewers_.rend(); ++open) {
        if (open->leaving)
            leaving.push_back(open->viewer.get());
    }
    bool stopping = false;
    for (Viewer* viewer : leaving) {
        if (viewer->Busy())
            viewer->Abort();
        if (viewer->Busy() || viewer == polled_)
            stopping = true;
        else
            Unload(viewer);
    }
    if (stopping)
        return CloseResult::Stopping;
    if (closing_ && !std::exchange(closed_, true)) {
        WriteCounts();
        if (!process_.gbCommandLineRunning)
            window_.EndProgram();
    }
    return CloseResult::Closed;
}

void frmMainMDI::UnloadAll() {
    while (!viewers_.empty())
        Unload(viewers_.back().viewer.get());
}

void frmMainMDI::ShowMessages() {
    process_.messages.ShowWaiting(
        [this](const std::string& message) { window_.ShowMessage(message); });
}

}  // namespace zorvane
