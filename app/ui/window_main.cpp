// The program with the windows. Takes the command line of the one without, which hands over to it.
#include <string>
#include <vector>

#include <QApplication>

#include "app/command_line_parser.h"
#include "app/compare_command.h"
#include "app/run_modes.h"
#include "app/ui/main_window.h"
#include "common/platform/platform.h"
#include "common/platform/process_end.h"
#include "common/process_state.h"

namespace {

using namespace zorvane;

std::string JoinedLine(const std::vector<std::string>& arguments) {
    std::string line;
    for (const std::string& argument : arguments)
        line += (line.empty() ? "" : " ") + argument;
    return line;
}

// Two paths open on both; every other line is a session or a run of the slash form.
RunOutcome Start(ProcessState& process, const std::vector<std::string>& arguments,
                 frmMainMDI& frame, MainWindow& window) {
    CommandLineRequest request;
    const bool pair = arguments.size() == 2 && !IsSlashForm(arguments);
    const RunOutcome outcome =
        Main(process, pair ? std::string() : JoinedLine(arguments), request, frame);
    if (outcome.mode != RunMode::Interactive &&
        !(outcome.mode == RunMode::CommandLine && frame.NumberOpenScreens() > 0 &&
          !request.bExitWhenDone))
        return outcome;
    window.BeginInteractive();
    if (pair)
        window.OpenPair(arguments[0], arguments[1]);
    return {RunMode::Interactive, 0};
}

}  // namespace

int main(int count, char** values) {
    PrepareForBadEndings();
    const std::vector<std::string> arguments(values + 1, values + count);
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
    const RunOutcome outcome = Start(process, arguments, frame, window);
    const int code =
        outcome.mode == RunMode::Interactive ? QApplication::exec() : outcome.exit_code;
    frame.ShowMessages();
    frame.UnloadAll();
    return code;
}
