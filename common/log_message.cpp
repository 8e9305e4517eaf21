#include "common/log_message.h"

#include <utility>

#include "common/platform/files.h"
#include "common/platform/terminal.h"
#include "common/process_state.h"

namespace zorvane {
namespace {

void AppendLine(ProcessState& process, std::string_view message, const std::string& file) {
    const ScopedNamedMutex lock(*process.platform.mutexes, "Halvern_Global_Mutex");
    IgnoreFailure(AppendToFile(file, std::string(message) + "\r\n"),
                  "a log that cannot be written must not end the run");
}

}  // namespace

void LogMessage(ProcessState& process, std::string_view sMessage, const std::string& sLogFile,
                bool bShow) {
    if (process.held_messages != nullptr) {
        process.held_messages->push_back({std::string(sMessage), sLogFile, bShow});
        return;
    }
    if (!sLogFile.empty())
        AppendLine(process, sMessage, sLogFile);
    if (bShow)
        IgnoreFailure(WriteStream(Stream::Error, "zorvane: " + std::string(sMessage) + "\n"),
                      "there is no other place to complain to");
}

void LogMessage(ProcessState& process, std::string_view sMessage) {
    LogMessage(process, sMessage, process.sLogFile, process.bShowMessages);
}

MessageHold::MessageHold(ProcessState& process) : process_(process) {
    process_.held_messages = &held_;
}

MessageHold::~MessageHold() {
    Drop();
}

void MessageHold::Release() {
    process_.held_messages = nullptr;
    for (const HeldMessage& held : std::exchange(held_, {}))
        LogMessage(process_, held.message, held.file, held.show);
}

void MessageHold::Drop() {
    process_.held_messages = nullptr;
    held_.clear();
}

std::string ShownName(const ProcessState& process, const std::string& file) {
    const auto known = process.shown_names.find(file);
    return known == process.shown_names.end() ? file : known->second;
}

}  // namespace zorvane
