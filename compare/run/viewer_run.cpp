#include "compare/run/viewer_run.h"

#include <utility>

namespace zorvane {

ViewerRun::~ViewerRun() {
    Stop();
    if (worker_.joinable())
        worker_.join();
}

void ViewerRun::Start(Steps steps) {
    steps_ = std::move(steps);
    const auto work = [this] {
        steps_.work(*this);
        ended_ = true;
    };
    if (where_ == RunOn::Worker)
        worker_ = std::thread(work);
    else
        work();
}

void ViewerRun::Stop() {
    control_.Stop();
    relay_.StopAsking();
}

void ViewerRun::PublishEarly(EarlyOutcome early) {
    const std::lock_guard guard(early_lock_);
    early_ = std::move(early);
}

std::optional<EarlyOutcome> ViewerRun::TakeEarly() {
    const std::lock_guard guard(early_lock_);
    return std::exchange(early_, std::nullopt);
}

std::function<void()> ViewerRun::Finish() {
    if (worker_.joinable())
        worker_.join();
    return std::move(steps_.hand_over);
}

}  // namespace zorvane
