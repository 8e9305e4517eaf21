#include "app/main_frame.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <fmt/format.h>
#include <utility>

#include "common/base/text_encoding.h"
#include "common/log_message.h"
#include "common/process_state.h"

namespace zorvane {
namespace {

constexpr std::string_view kMain = "Main";
constexpr std::string_view kRectangle = "frmMainMDISettings";
// No user opens so many; a damaged count must not open viewers until memory ends.
constexpr std::int32_t kMostRestored = 250;

struct KindRow {
    ViewerKind kind;
    const char* suffix;
    const char* count_key;
    std::int32_t restored_at_first;
    const char* words;
};
constexpr KindRow kKinds[] = {
    {ViewerKind::CompareFiles, "_CompareFile", "numCFForms", 1, "Compare Files"},
    {ViewerKind::CompareFolders, "_CompareDir", "numCDForms", 0, "Compare Folders"},
    {ViewerKind::FindText, "_FindText", "numFTForms", 0, "Find Text In Files"},
};
const KindRow& RowOf(ViewerKind kind) {
    return kKinds[static_cast<std::size_t>(kind)];
}

std::string NameOf(ViewerKind kind, std::int32_t number) {
    return std::to_string(number) + RowOf(kind).suffix;
}

template <class Number>
Number NumberOr(const std::string& text, Number otherwise) {
    const std::string_view trimmed = Trim(text);
    Number number{};
    const auto [end, error] =
        std::from_chars(trimmed.data(), trimmed.data() + trimmed.size(), number);
    return error == std::errc() && end == trimmed.data() + trimmed.size() ? number : otherwise;
}

struct Edge {
    const char* key;
    float FrameRectangle::*value;
    bool positive;
};
constexpr Edge kEdges[] = {{"Left", &FrameRectangle::left, false},
                           {"Top", &FrameRectangle::top, false},
                           {"Width", &FrameRectangle::width, true},
                           {"Height", &FrameRectangle::height, true}};

}  // namespace

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
    return factories;
}

frmMainMDI::frmMainMDI(ProcessState& process, FrameWindow& window, ViewerFactories factories)
    : process_(process), window_(window), factories_(std::move(factories)) {}

frmMainMDI::~frmMainMDI() = default;

// ---- start ----

void frmMainMDI::Load() {
    if (std::exchange(loaded_, true))
        return;
    process_.gbFrameClosing = false;
    window_.Load();
    if (process_.gbCommandLineRunning)
        window_.SetState(WindowState::Minimised);
    else
        ReadIniFile();
}

void frmMainMDI::ReadIniFile() {
    RestoreRectangle();
    for (const KindRow& row : kKinds) {
        const std::string text =
            process_.settings->Read(kMain, row.count_key, std::to_string(row.restored_at_first));
        const std::int32_t count = std::min(NumberOr(text, row.restored_at_first), kMostRestored);
        for (std::int32_t number = 1; number <= count; ++number) {
            if (Open(row.kind, number, {}) == nullptr)
                break;  // told once for all of them
        }
    }
    RestoreActive();
}

void frmMainMDI::RestoreRectangle() {
    RegistryStore& store = *process_.platform.registry;
    FrameRectangle rectangle;
    for (const Edge& edge : kEdges) {
        const float value = NumberOr(store.Get(kRectangle, edge.key, ""), rectangle.*edge.value);
        if (std::isfinite(value) && (!edge.positive || value > 0))
            rectangle.*edge.value = value;
    }
    window_.SetRectangle(rectangle);
    const auto state =
        static_cast<WindowState>(NumberOr(store.Get(kRectangle, "WindowState", ""),
                                          static_cast<std::int32_t>(WindowState::Maximised)));
    // A frame that was closed while it was minimised would come back unseen.
    window_.SetState(state == WindowState::Maximised ? state : WindowState::Normal);
}

void frmMainMDI::RestoreActive() {
    const std::string name = process_.settings->Read(kMain, "ActiveForm", "None");
    // From the last to the first and on to the end: of two with one name the first has the focus.
    for (std::size_t at = viewers_.size(); at-- > 0;) {
        if (viewers_[at].viewer->Description() == name)
            Activate(*viewers_[at].viewer);
    }
}

void frmMainMDI::ShowAfterRun(std::int32_t lWindowState) {
    window_.SetState(WindowState::Normal);
    RestoreRectangle();
    if (lWindowState >= 0 && lWindowState <= static_cast<std::int32_t>(WindowState::Maximised))
        window_.SetState(static_cast<WindowState>(lWindowState));
}

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

// ---- the end ----

CloseResult frmMainMDI::CloseViewer(Viewer& viewer) {
    // The question runs the window's events, in which the viewer may go by another road.
    if (!viewer.MayClose())
        return CloseResult::Refused;
    for (OpenViewer& open : viewers_) {
        if (open.viewer.get() == &viewer)
            open.leaving = true;
    }
    FinishClosing();
    return IsOpen(&viewer) ? CloseResult::Stopping : CloseResult::Closed;
}

bool frmMainMDI::AllMayClose() {
    std::vector<Viewer*> asked;
    for (auto open = viewers_.rbegin(); open != viewers_.rend(); ++open) {
        if (!open->leaving)
            asked.push_back(open->viewer.get());
    }
    asking_ = true;
    bool agreed = true;
    for (Viewer* viewer : asked)
        agreed = agreed && (!IsOpen(viewer) || viewer->MayClose());
    asking_ = false;
    return agreed;
}

CloseResult frmMainMDI::CloseFrame(Session session) {
    if (closing_)
        return FinishClosing();
    // A question stands open, and the user closes the frame once more.
    if (asking_ || !AllMayClose())
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

void frmMainMDI::CountOpen() {
    for (const KindRow& row : kKinds) {
        const auto open =
            std::count_if(viewers_.begin(), viewers_.end(), [&](const OpenViewer& entry) {
                return entry.viewer->Kind() == row.kind && !entry.leaving;
            });
        counts_.emplace_back(row.kind, static_cast<std::int32_t>(open));
    }
}

void frmMainMDI::SaveIniFile() {
    RegistryStore& store = *process_.platform.registry;
    const FrameRectangle rectangle = window_.Rectangle();
    for (const Edge& edge : kEdges)
        store.Set(kRectangle, edge.key, fmt::format("{}", rectangle.*edge.value));
    store.Set(kRectangle, "WindowState",
              std::to_string(static_cast<std::int32_t>(window_.State())));
    if (const Viewer* active = ActiveViewer(); active != nullptr)
        process_.settings->Write(kMain, "ActiveForm", active->Description());
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
        if (viewer->Busy())
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

void frmMainMDI::WriteCounts() {
    for (const auto& [kind, count] : counts_) {
        // What this program cannot restore stays for one that can.
        if (FactoryOf(kind))
            process_.settings->Write(kMain, RowOf(kind).count_key, std::to_string(count));
    }
    const Status saved = process_.settings->Flush();
    if (!saved.ok())
        LogMessage(process_, "The settings cannot be saved: " + saved.failure().reason);
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
