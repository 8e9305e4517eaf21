#include "tools/viewer_driver/stop_loop.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>

namespace zorvane {
namespace {

constexpr std::chrono::milliseconds kPatience{300'000};
using SteadyClock = std::chrono::steady_clock;

std::chrono::microseconds Since(SteadyClock::time_point begin) {
    return std::chrono::duration_cast<std::chrono::microseconds>(SteadyClock::now() - begin);
}

}  // namespace

StopLoop::StopLoop(DriverSession& session, frmCompareFiles& viewer, std::string report,
                   unsigned seed)
    : session_(session), viewer_(viewer), report_(std::move(report)), random_(seed) {}

StateValues StopLoop::Counts() const {
    return {{"stopped", std::to_string(stopped_)},
            {"ran-through", std::to_string(ran_through_)},
            {"longest-stop-ms", std::to_string(longest_stop_.count() / 1000)}};
}

// The times that a report shows are those of the files, so the same result gives the same bytes.
std::string StopLoop::ReportBytes() const {
    std::stringstream bytes;
    bytes << std::ifstream(report_, std::ios::binary).rdbuf();
    return bytes.str();
}

std::string StopLoop::KeyNow() const {
    return std::string(shown_swapped_ ? "swapped " : "straight ") +
           (viewer_.CurrentView() == View::AllInOne ? "merged" : "sides");
}

void StopLoop::SwapFiles() {
    swapped_ = !swapped_;
    clsCompareFileOptions& options = viewer_.Options();
    const std::string original = options.sFileOriginal.Data();
    options.sFileOriginal.SetData(options.sFileModified.Data());
    options.sFileModified.SetData(original);
}

void StopLoop::Start(Kind kind) {
    switch (kind) {
        case Kind::Load:
            SwapFiles();
            viewer_.RefreshDisplay(true, true);
            return;
        case Kind::Compare:
            viewer_.RunCompare(true);
            return;
        case Kind::SwitchView:
            viewer_.cmdChangeViewFormat_Click();
            return;
        case Kind::Report:
            viewer_.cmdViewReport();
            return;
    }
}

Status StopLoop::Undisturbed(Kind kind, const std::string& what) {
    const auto begin = SteadyClock::now();
    Start(kind);
    if (!session_.Wait(kPatience))
        return Failure{what + ": the run does not end"};
    // The least: one run that was held up would put most moments behind the ends of others.
    const auto took = Since(begin);
    const auto known = times_.emplace(kind, took).first;
    known->second = std::min(known->second, took);
    if (viewer_.LastRun() != RunEnd::Finished)
        return Failure{what + ": the run fails"};
    return Status::Ok();
}

Status StopLoop::LearnView() {
    const std::uint64_t hash = ResultHash(viewer_);
    const auto [known, fresh] = finished_.emplace(KeyNow(), hash);
    return fresh || known->second == hash ? Status::Ok()
                                          : Failure{"two undisturbed runs differ: " + KeyNow()};
}

// What undisturbed runs of both directions and views leave.
Status StopLoop::Learn() {
    viewer_.Settings().mlReportDefaultFileType_MD = static_cast<std::int32_t>(ReportType::Html);
    viewer_.Settings().msgReportFileHTM_MD = report_;
    for (const Kind kind : {Kind::Load, Kind::SwitchView, Kind::Compare, Kind::Report, Kind::Load,
                            Kind::SwitchView, Kind::Compare, Kind::Report}) {
        Status done = Undisturbed(kind, "at first");
        if (!done.ok())
            return done;
        shown_swapped_ = swapped_;
        Status learned = LearnView();
        if (!learned.ok())
            return learned;
        if (kind == Kind::Report)
            reports_[shown_swapped_] = ReportBytes();
    }
    if (reports_[false].empty() || reports_[false] == reports_[true] ||
        finished_["straight sides"] == finished_["swapped sides"])
        return Failure{"two files that differ are wanted"};
    return Status::Ok();
}

Status StopLoop::CheckReport() const {
    const std::string bytes = ReportBytes();
    for (const auto& [swapped, whole] : reports_) {
        if (bytes == whole)
            return Status::Ok();
    }
    return bytes.empty() && !std::filesystem::exists(report_)
               ? Status::Ok()
               : Failure{"a report of " + std::to_string(bytes.size()) + " bytes is not whole"};
}

Status StopLoop::CheckAfter(Kind kind, std::uint64_t before) {
    const bool reports = kind == Kind::Report;
    const bool aborted =
        reports ? viewer_.LastReport() != ReportResult::Ok : viewer_.LastRun() == RunEnd::Aborted;
    ++(aborted ? stopped_ : ran_through_);
    if (aborted) {
        if (kind == Kind::Load)
            SwapFiles();  // the user goes back to the names of what is shown
        if (WholeHash(viewer_) != before)
            return Failure{"a stopped run left something else than there was"};
    } else {
        shown_swapped_ = swapped_;
    }
    const auto whole = finished_.find(KeyNow());
    if (whole == finished_.end() || whole->second != ResultHash(viewer_))
        return Failure{"what is shown is no whole result: " + KeyNow()};
    if (viewer_.State() != ViewerState::Idle || viewer_.IsStale() || viewer_.ShowsEarlyResult())
        return Failure{"the viewer is not at rest and fresh"};
    const ScriptedWindow& window = session_.WindowOf(viewer_);
    if (window.abort_visible || window.hourglasses > 0 || window.please_wait ||
        !window.filter_buttons)
        return Failure{"the window still shows a run"};
    if (window.view != viewer_.CurrentView())
        return Failure{"the window shows the other view"};
    return CheckReport();
}

Status StopLoop::StopOne(Kind kind) {
    const std::uint64_t before = WholeHash(viewer_);
    const auto longest = static_cast<std::uint32_t>(times_[kind].count());
    const Time moment{std::uniform_int_distribution<std::uint32_t>(0, longest)(random_)};
    Start(kind);
    session_.PollFor(moment);
    const auto asked = SteadyClock::now();
    viewer_.Abort();
    if (!session_.Wait(kPatience))
        return Failure{"the run does not stop"};
    longest_stop_ = std::max(longest_stop_, Since(asked));
    return CheckAfter(kind, before);
}

Status StopLoop::Run(int moments) {
    Status learned = Learn();
    if (!learned.ok())
        return learned;
    constexpr Kind kKinds[] = {Kind::Load, Kind::Compare, Kind::SwitchView, Kind::Report};
    constexpr const char* kNames[] = {"load", "compare", "view", "report"};
    for (int moment = 1; moment <= moments; ++moment) {
        const std::size_t at = random_() % std::size(kKinds);
        // Of an aborted run there is no report, and a view that is there is not built again.
        const bool needs_whole = kKinds[at] == Kind::Report || kKinds[at] == Kind::SwitchView;
        Status done = needs_whole ? Undisturbed(Kind::Compare, "between") : Status::Ok();
        if (done.ok())
            done = StopOne(kKinds[at]);
        if (!done.ok())
            return done.failure().WithContext("moment " + std::to_string(moment) + ", " +
                                              kNames[at]);
    }
    return Status::Ok();
}

}  // namespace zorvane
