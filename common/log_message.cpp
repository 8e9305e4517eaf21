#include "common/log_message.h"

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
    if (!sLogFile.empty())
        AppendLine(process, sMessage, sLogFile);
    if (bShow)
        IgnoreFailure(WriteStream(Stream::Error, "zorvane: " + std::string(sMessage) + "\n"),
                      "there is no other place to complain to");
}

void LogMessage(ProcessState& process, std::string_view sMessage) {
    LogMessage(process, sMessage, process.sLogFile, process.bShowMessages);
}

}  // namespace zorvane
