// The one place where messages leave the program: lines of log files, and boxes for a window.
#pragma once

#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>

namespace zorvane {

struct Platform;

/// Safe from any thread. Without a window a box is a line on standard error, printed at once; with
/// one it waits until the window shows it.
class MessageSink {
  public:
    using ShowBox = std::function<void(const std::string& message)>;

    /// `platform` outlives this object.
    explicit MessageSink(Platform& platform) : platform_(platform) {}

    /// Appends a line to `file`, which is opened and closed each time, under the mutex
    /// "Halvern_Global_Mutex" that all processes share. Never fails.
    void Log(std::string_view message, const std::string& file);
    void Show(std::string_view message);

    /// From here on boxes wait. `wake` is called on the thread of each message, and only says that
    /// the window's thread should call `ShowWaiting` when it comes to it. Nothing ends that again.
    void WaitForWindow(std::function<void()> wake);
    bool HasWindow() const;
    /// On the window's thread: `show` for each waiting message, one after the other. A call from
    /// inside `show` (a box runs the window's events) does nothing, so that no two boxes stand at
    /// once; the outer call goes on until none waits.
    void ShowWaiting(const ShowBox& show);

  private:
    std::string NextWaiting(bool& found);

    Platform& platform_;
    mutable std::mutex guard_;  ///< over all below
    std::mutex log_guard_;      ///< the threads of this process; the named mutex is the others'
    std::function<void()> wake_;
    std::deque<std::string> waiting_;
    bool showing_ = false;
};

}  // namespace zorvane
