#include "common/run_telling.h"

#include <utility>

namespace zorvane {

void RunTelling::Tell(RunMessage message) {
    {
        const std::lock_guard lock(guard_);
        if (stopped_)
            return;
        if (held_ != nullptr) {
            held_->push_back(std::move(message));
            return;
        }
        if (message.show && runs_ > 0 && sink_.HasWindow()) {
            boxes_.push_back(message.message);
            message.show = false;
        }
    }
    if (!message.file.empty())
        sink_.Log(message.message, message.file);
    if (message.show)
        sink_.Show(message.message);
}

void RunTelling::BeginRun() {
    const std::lock_guard lock(guard_);
    ++runs_;
}

void RunTelling::Stop() {
    const std::lock_guard lock(guard_);
    stopped_ = runs_ > 0;
}

std::vector<std::string> RunTelling::TakeBoxes() {
    const std::lock_guard lock(guard_);
    return std::exchange(boxes_, {});
}

void RunTelling::EndRun() {
    std::vector<std::string> boxes;
    {
        const std::lock_guard lock(guard_);
        if (--runs_ > 0)
            return;
        stopped_ = false;
        boxes.swap(boxes_);
    }
    for (const std::string& box : boxes)
        sink_.Show(box);
}

}  // namespace zorvane
