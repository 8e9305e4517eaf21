#include "common/message_sink.h"

#include <utility>

#include "common/platform/files.h"
#include "common/platform/platform.h"
#include "common/platform/terminal.h"

namespace zorvane {

void MessageSink::Log(std::string_view message, const std::string& file) {
    const std::lock_guard threads(log_guard_);
    const ScopedNamedMutex processes(*platform_.mutexes, "Halvern_Global_Mutex");
    IgnoreFailure(AppendToFile(file, std::string(message) + "\r\n"),
                  "a log that cannot be written must not end the run");
}

void MessageSink::Show(std::string_view message) {
    std::function<void()> wake;
    {
        const std::lock_guard lock(guard_);
        if (!wake_) {
            IgnoreFailure(WriteStream(Stream::Error, "zorvane: " + std::string(message) + "\n"),
                          "there is no other place to complain to");
            return;
        }
        waiting_.emplace_back(message);
        wake = wake_;
    }
    wake();
}

void MessageSink::WaitForWindow(std::function<void()> wake) {
    const std::lock_guard lock(guard_);
    wake_ = std::move(wake);
}

bool MessageSink::HasWindow() const {
    const std::lock_guard lock(guard_);
    return wake_ != nullptr;
}

std::string MessageSink::NextWaiting(bool& found) {
    const std::lock_guard lock(guard_);
    found = !waiting_.empty();
    if (!found)
        return {};
    std::string next = std::move(waiting_.front());
    waiting_.pop_front();
    return next;
}

void MessageSink::ShowWaiting(const ShowBox& show) {
    if (showing_)
        return;
    showing_ = true;
    bool found = true;
    for (std::string next = NextWaiting(found); found; next = NextWaiting(found))
        show(next);
    showing_ = false;
}

}  // namespace zorvane
