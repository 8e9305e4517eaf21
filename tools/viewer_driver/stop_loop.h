// Stops runs at random moments and looks whether each leaves a whole state.
#pragma once

#include <chrono>
#include <map>
#include <random>
#include <string>

#include "common/base/result.h"
#include "common/base/side.h"
#include "tools/viewer_driver/session.h"
#include "tools/viewer_driver/viewer_report.h"

namespace zorvane {

/// Works on the two files that the viewer has: it loads them, now this way round and now the other,
/// switches the view and writes reports. Behind each stop the viewer is as it was before, or as an
/// undisturbed run of the same kind leaves it, and nothing else; a report is the whole one or none.
class StopLoop {
  public:
    StopLoop(DriverSession& session, frmCompareFiles& viewer, std::string report, unsigned seed);

    /// The moments lie anywhere between the begin of a run and the time that it took undisturbed.
    Status Run(int moments);
    /// "stopped", "ran-through", "longest-stop-ms".
    StateValues Counts() const;

  private:
    enum class Kind { Load, Compare, SwitchView, Report };
    using Time = std::chrono::microseconds;

    Status Learn();
    Status LearnView();
    Status StopOne(Kind kind);
    Status CheckAfter(Kind kind, std::uint64_t before);
    Status CheckReport() const;
    void Start(Kind kind);
    Status Undisturbed(Kind kind, const std::string& key);
    void SwapFiles();
    std::string KeyNow() const;
    std::string ReportBytes() const;

    DriverSession& session_;
    frmCompareFiles& viewer_;
    std::string report_;
    std::mt19937 random_;
    bool swapped_ = false;  ///< the names in the options
    bool shown_swapped_ = false;
    std::map<std::string, std::uint64_t> finished_;  ///< by direction and view
    std::map<bool, std::string> reports_;            ///< by direction
    std::map<Kind, Time> times_;
    int stopped_ = 0;
    int ran_through_ = 0;
    Time longest_stop_{0};
};

}  // namespace zorvane
