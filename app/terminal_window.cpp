#include "app/terminal_window.h"

#include "common/base/visible_text.h"
#include "common/platform/terminal.h"

namespace zorvane {
namespace {

using namespace std::chrono_literals;

constexpr const char* kClearLine = "\r\x1B[K";
constexpr const char* kNobodySees = "progress that cannot be shown is no loss";

}  // namespace

void TerminalWindow::ShowStatus(StatusPanel panel, const std::string& text) {
    const bool progress = panel == StatusPanel::Main || panel == StatusPanel::Detail;
    if (!show_progress_ || !progress || text.empty())
        return;
    const auto now = std::chrono::steady_clock::now();
    if (now - last_ < 100ms)
        return;
    last_ = now;
    shown_ = true;
    IgnoreFailure(WriteStream(Stream::Error, kClearLine + VisibleText(text, LineBreaks::Shown)),
                  kNobodySees);
}

void TerminalWindow::Clear() {
    if (shown_)
        IgnoreFailure(WriteStream(Stream::Error, kClearLine), kNobodySees);
    shown_ = false;
}

}  // namespace zorvane
