// Commands that start, watch and stop runs.
#include <charconv>

#include "tools/viewer_driver/driver.h"
#include "tools/viewer_driver/stop_loop.h"

namespace zorvane {
namespace {

constexpr std::chrono::milliseconds kPatience{300'000};

Result<std::pair<std::string, std::string>> NameAndValue(const std::string& word) {
    const std::size_t at = word.find('=');
    if (at == std::string::npos)
        return Failure{"NAME=VALUE is wanted"};
    return std::pair(word.substr(0, at), word.substr(at + 1));
}

}  // namespace

/// open ORIGINAL MODIFIED
Status Driver::Open(const Words& words) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (!viewer.ok())
        return viewer.status();
    clsCompareFileOptions& options = viewer.value()->Options();
    options.sFileOriginal.SetData(Path(words[0]));
    options.sFileModified.SetData(Path(words[1]));
    options.bReloadOnRefresh.SetData(true);
    return Status::Ok();
}

Status Driver::Refresh(const Words&) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (viewer.ok())
        viewer.value()->Refresh();
    return viewer.status();
}

/// Compares what the editors hold.
Status Driver::Compare(const Words&) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (viewer.ok())
        viewer.value()->RefreshDisplay(false, true);
    return viewer.status();
}

Status Driver::Wait(const Words&) {
    return session_->Wait(kPatience) ? Status::Ok() : Failure{"a run does not end"};
}

/// poll N
Status Driver::PollTimes(const Words& words) {
    for (int left = std::stoi(words[0]); left > 0; --left)
        session_->PollFor(std::chrono::milliseconds(1));
    return Status::Ok();
}

/// wait-for KEY=VALUE: polls until it is so.
Status Driver::WaitFor(const Words& words) {
    const auto end = std::chrono::steady_clock::now() + kPatience;
    Status so = Expect(words);
    while (!so.ok() && std::chrono::steady_clock::now() < end) {
        session_->PollFor(std::chrono::microseconds(200));
        so = Expect(words);
    }
    return so;
}

Status Driver::Stop(const Words&) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (!viewer.ok())
        return viewer.status();
    const auto asked = std::chrono::steady_clock::now();
    viewer.value()->Abort();
    const bool ended = session_->Wait(kPatience);
    const auto took = std::chrono::steady_clock::now() - asked;
    own_["stop-ms"] =
        std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(took).count());
    return ended ? Status::Ok() : Failure{"the run does not stop"};
}

/// stop-after MS
Status Driver::StopAfter(const Words& words) {
    session_->PollFor(std::chrono::milliseconds(std::stoi(words[0])));
    return Stop({});
}

Status Driver::View(const Words&) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (viewer.ok())
        viewer.value()->cmdChangeViewFormat_Click();
    return viewer.status();
}

/// filter all|additions|deletions|changes
Status Driver::Filter(const Words& words) {
    constexpr std::pair<const char*, ViewFilter> kFilters[] = {{"all", ViewFilter::All},
                                                               {"additions", ViewFilter::Additions},
                                                               {"deletions", ViewFilter::Deletions},
                                                               {"changes", ViewFilter::Changes}};
    const Result<frmCompareFiles*> viewer = Viewer();
    if (!viewer.ok())
        return viewer.status();
    for (const auto& [name, filter] : kFilters) {
        if (words[0] != name)
            continue;
        viewer.value()->ShowFilter(filter);
        return Status::Ok();
    }
    return Failure{"there is no such filter"};
}

/// report: the button; report html|text|csv|doc FILE [STYLE]: on this thread.
Status Driver::Report(const Words& words) {
    constexpr std::pair<const char*, ReportType> kTypes[] = {{"html", ReportType::Html},
                                                             {"text", ReportType::Text},
                                                             {"csv", ReportType::Csv},
                                                             {"doc", ReportType::Document}};
    const Result<frmCompareFiles*> viewer = Viewer();
    if (!viewer.ok())
        return viewer.status();
    if (words.empty()) {
        viewer.value()->cmdViewReport();
        return Status::Ok();
    }
    for (const auto& [name, type] : kTypes) {
        if (words[0] != name || words.size() < 2)
            continue;
        std::string file = Path(words[1]);
        const std::int32_t style = words.size() > 2 ? std::stoi(words[2]) : 1;
        const ReportResult result = viewer.value()->CreateReport(file, type, style);
        own_["report"] = std::to_string(static_cast<std::int32_t>(result));
        return Status::Ok();
    }
    return Failure{"report html|text|csv|doc FILE"};
}

/// option NAME=VALUE, as the options page does.
Status Driver::Option(const Words& words) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (!viewer.ok())
        return viewer.status();
    const auto read = NameAndValue(words[0]);
    if (!read.ok())
        return read.status();
    if (!viewer.value()->IsEnabled(ViewerCommand::ChangeOptions))
        return Failure{"options cannot be changed now"};
    Status set = viewer.value()->Options().SetByName(read.value().first, read.value().second);
    if (set.ok())
        viewer.value()->OptionsChanged();
    return set;
}

/// setting NAME=VALUE
Status Driver::Setting(const Words& words) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (!viewer.ok())
        return viewer.status();
    const auto read = NameAndValue(words[0]);
    if (!read.ok())
        return read.status();
    return SetSettingByName(viewer.value()->Settings(), read.value().first, read.value().second);
}

/// stop-randomly N [SEED]
Status Driver::StopRandomly(const Words& words) {
    const Result<frmCompareFiles*> viewer = Viewer();
    if (!viewer.ok())
        return viewer.status();
    const unsigned seed = words.size() > 1 ? static_cast<unsigned>(std::stoul(words[1])) : 1;
    StopLoop loop(*session_, *viewer.value(), Path("stopped-report"), seed);
    Status done = loop.Run(std::stoi(words[0]));
    for (const auto& [key, value] : loop.Counts())
        own_[key] = value;
    return done;
}

}  // namespace zorvane
