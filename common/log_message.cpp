#include "common/log_message.h"

#include <fcntl.h>
#include <unistd.h>

#include "common/platform/native_path.h"
#include "common/platform/terminal.h"
#include "common/process_state.h"

namespace zorvane {
namespace {

void AppendLine(ProcessState& process, std::string_view message, const std::string& file) {
    const ScopedNamedMutex lock(*process.platform.mutexes, "Halvern_Global_Mutex");
    const int descriptor =
        open(NativePath(file).c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0666);
    if (descriptor < 0)
        return;
    std::string line = std::string(message) + "\r\n";
    const ssize_t written = write(descriptor, line.data(), line.size());
    static_cast<void>(written);  // a log that cannot be written must not end the run
    close(descriptor);
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
