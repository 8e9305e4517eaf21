// The program with the windows. Takes the command line of the one without, which hands over to it.
#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <unistd.h>
#include <vector>

#include <QApplication>
#include <QSocketNotifier>
#include <QTimer>

#include "app/command_line_parser.h"
#include "app/compare_command.h"
#include "app/run_modes.h"
#include "app/ui/automation_service.h"
#include "app/ui/main_window.h"
#include "common/platform/platform.h"
#include "common/platform/process_end.h"
#include "common/platform/terminal.h"
#include "common/process_state.h"

namespace {

using namespace zorvane;

// Two paths open on both, one is the original; every other line is a session or a run of the slash
// form.
RunOutcome Start(ProcessState& process, const std::vector<std::string>& arguments,
                 frmMainMDI& frame, MainWindow& window) {
    CommandLineRequest request;
    const bool paths = !arguments.empty() && arguments.size() <= 2 && !IsSlashForm(arguments);
    const RunOutcome outcome =
        Main(process, paths ? std::string() : JoinedLine(arguments), request, frame);
    if (outcome.mode != RunMode::Interactive &&
        !(outcome.mode == RunMode::CommandLine && frame.NumberOpenScreens() > 0 &&
          !request.bExitWhenDone))
        return outcome;
    window.BeginInteractive();
    if (paths)
        window.OpenFiles(arguments);
    else if (outcome.mode == RunMode::Interactive)
        QTimer::singleShot(0, &window, [&window] { window.TellRescued(); });
    return {RunMode::Interactive, 0};
}

constexpr std::string_view kAutomation = "--automation";

// Where a client of the session bus wants the automation class: what the service file asks for.
bool WantsAutomation(const std::vector<std::string>& arguments) {
    return arguments.size() == 1 && arguments[0].starts_with(kAutomation);
}

// "--automation=5" lingers five seconds behind the last client.
int LingerOf(const std::string& argument, int usual) {
    constexpr int kMilliseconds = 1000;
    constexpr int kMost = 86'400;
    bool is_number = false;
    const int seconds =
        ToQt(std::string_view(argument).substr(kAutomation.size())).remove(u'=').toInt(&is_number);
    return is_number ? std::clamp(seconds, 0, kMost) * kMilliseconds : usual;
}

// The bus may start the service where there is no display, or one that is gone.
void FindAnyPlatform() {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", qgetenv("XDG_SESSION_TYPE") == "wayland"
                                       ? "wayland;xcb;offscreen"
                                       : "xcb;wayland;offscreen");
}

// A display that goes away ends the process from within the toolkit, past every destructor but
// those of statics. Other threads may be at work, so nothing more is taken down than must be.
class EndWithoutDisplay {
  public:
    explicit EndWithoutDisplay(MainWindow& window) : window_(&window) {}
    ~EndWithoutDisplay() {
        if (window_ == nullptr)
            return;
        window_->RescueEdits();
        CleanUpAndEnd(1);
    }
    EndWithoutDisplay(const EndWithoutDisplay&) = delete;
    EndWithoutDisplay& operator=(const EndWithoutDisplay&) = delete;
    void Disarm() { window_ = nullptr; }

  private:
    MainWindow* window_;
};

// The session ends, or somebody ends the program: nothing is asked, what is not saved is kept.
class EndBySignal {
  public:
    explicit EndBySignal(MainWindow& window) {
        const int told = TellOfEndingSignal();
        if (told < 0)
            return;
        notifier_ = std::make_unique<QSocketNotifier>(told, QSocketNotifier::Read);
        QObject::connect(notifier_.get(), &QSocketNotifier::activated, &window, [told, &window] {
            unsigned char number = 0;
            if (read(told, &number, 1) != 1)
                return;
            window.RescueEdits();
            DieOfSignal(number);
        });
    }

  private:
    std::unique_ptr<QSocketNotifier> notifier_;
};

int ServeAutomation(ProcessState& process, frmMainMDI& frame, MainWindow& window,
                    const std::string& argument) {
    AutomationService::Rules rules;
    rules.linger = LingerOf(argument, rules.linger);
    rules.person_looks = [&window] { return window.isVisible(); };
    rules.display = QGuiApplication::platformName() != QStringLiteral("offscreen");
    if (!rules.display)
        window.HaveNoDisplay();
    AutomationService service(process, frame, std::move(rules));
    const Status begun = service.Begin(QDBusConnection::sessionBus());
    if (!begun.ok()) {
        IgnoreFailure(WriteStream(Stream::Error, "zorvane: " + begun.failure().reason + "\n"),
                      "there is no other place for it");
        return 2;
    }
    window.BeginInBackground();
    return QApplication::exec();
}

}  // namespace

int main(int count, char** values) {
    PrepareForBadEndings();
    const std::vector<std::string> arguments(values + 1, values + count);
    const bool automation = WantsAutomation(arguments);
    if (automation)
        FindAnyPlatform();
    // Its own switches are the program's, not the toolkit's.
    int toolkit_count = 1;
    QApplication application(toolkit_count, values);
    QApplication::setApplicationName(QStringLiteral("Zorvane"));
    QApplication::setDesktopFileName(QStringLiteral("zorvane"));
    QApplication::setQuitOnLastWindowClosed(false);
    Theme theme(application);
    Platform platform = MakePosixPlatform();
    ProcessState process(platform);
    MainWindow window(process, theme);
    frmMainMDI frame(process, window, window.Viewers());
    window.SetFrame(frame);
    static EndWithoutDisplay ending(window);
    const EndBySignal by_signal(window);
    int code = 0;
    if (automation) {
        code = ServeAutomation(process, frame, window, arguments[0]);
    } else {
        const RunOutcome outcome = Start(process, arguments, frame, window);
        code = outcome.mode == RunMode::Interactive ? QApplication::exec() : outcome.exit_code;
        frame.ShowMessages();
    }
    frame.UnloadAll();
    ending.Disarm();
    return code;
}
