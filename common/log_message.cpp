#include "common/log_message.h"

#include <utility>

namespace zorvane {

void LogMessage(RunTelling& telling, std::string_view sMessage, const std::string& sLogFile,
                bool bShow) {
    telling.Tell({std::string(sMessage), sLogFile, bShow});
}

void LogMessage(RunTelling& telling, std::string_view sMessage) {
    LogMessage(telling, sMessage, telling.manner.sLogFile, telling.manner.bShowMessages);
}

void LogMessage(ProcessState& process, std::string_view sMessage) {
    LogMessage(process.telling, sMessage);
}

MessageHold::MessageHold(RunTelling& telling) : telling_(telling) {
    const std::lock_guard lock(telling_.guard_);
    telling_.held_ = &held_;
}

MessageHold::~MessageHold() {
    Drop();
}

bool MessageHold::Empty() const {
    const std::lock_guard lock(telling_.guard_);
    return held_.empty();
}

// After the end of this hold another one may be open: it is not ours to end.
std::vector<RunMessage> MessageHold::End() {
    const std::lock_guard lock(telling_.guard_);
    if (telling_.held_ == &held_)
        telling_.held_ = nullptr;
    return std::exchange(held_, {});
}

void MessageHold::Release() {
    for (RunMessage& held : End())
        telling_.Tell(std::move(held));
}

void MessageHold::Drop() {
    End();
}

std::string ShownName(const RunTelling& telling, const std::string& file) {
    const auto& names = telling.manner.shown_names;
    const auto known = names.find(file);
    return known == names.end() ? file : known->second;
}

}  // namespace zorvane
