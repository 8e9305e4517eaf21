// What the frame keeps for the next session: its place, how many viewers of each kind, the active
// one.
#include <algorithm>
#include <cmath>
#include <fmt/format.h>
#include <string_view>
#include <utility>

#include "app/main_frame.h"
#include "app/viewer_kinds.h"
#include "common/base/parse_number.h"
#include "common/base/text_encoding.h"
#include "common/log_message.h"
#include "common/process_state.h"

namespace zorvane {
namespace {

constexpr std::string_view kMain = "Main";
constexpr std::string_view kRectangle = "frmMainMDISettings";
// A damaged count must not open viewers until memory ends: more than a person has open at a time
// are believed only where so many were saved.
constexpr std::int32_t kMostBelieved = 12;
constexpr std::int32_t kMostRestored = 250;

template <class Number>
Number NumberOr(const std::string& text, Number otherwise) {
    return ParseNumber<Number>(Trim(text)).value_or(otherwise);
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
    for (const ViewerKindRow& row : kViewerKinds) {
        const std::string text =
            process_.settings->Read(kMain, row.count_key, std::to_string(row.restored_at_first));
        const std::int32_t stored = NumberOr(text, row.restored_at_first);
        const std::int32_t count = CountToRestore(row, stored);
        for (std::int32_t number = 1; number <= count; ++number) {
            if (Open(row.kind, number, {}) == nullptr)
                break;  // told once for all of them
        }
        if (count < stored)
            TellNotRestored(row, stored, count);
    }
    RestoreActive();
}

// Each viewer saves its section before it is counted. Two may share one, so that a number may be
// missing in between.
std::int32_t frmMainMDI::CountToRestore(const ViewerKindRow& row, std::int32_t stored) const {
    if (stored <= kMostBelieved)
        return stored;
    std::int32_t number = std::min(stored, kMostRestored);
    while (number > 1 &&
           process_.settings->Read(NameOf(row.kind, number), row.saved_key, "").empty())
        --number;
    return number;
}

void frmMainMDI::TellNotRestored(const ViewerKindRow& row, std::int32_t stored,
                                 std::int32_t count) {
    LogMessage(
        process_.telling,
        fmt::format("{}: {} {} ({}={})", process_.Translate(row.words),
                    process_.Translate("the settings count more windows than were saved; opened:"),
                    count, row.count_key, stored),
        process_.telling.manner.sLogFile, true);
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

void frmMainMDI::CountOpen() {
    for (const ViewerKindRow& row : kViewerKinds) {
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

}  // namespace zorvane
