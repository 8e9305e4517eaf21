// Builds the objects, hands them to each other, and tells the two command lines apart.
#include <malloc.h>
#include <string>
#include <vector>

#include "app/compare_command.h"
#include "app/compare_run.h"
#include "app/main_frame.h"
#include "app/output_check.h"
#include "app/passwords.h"
#include "app/run_modes.h"
#include "app/text_run.h"
#include "common/platform/platform.h"
#include "common/platform/process_end.h"
#include "common/platform/terminal.h"
#include "common/process_state.h"

namespace {

using namespace zorvane;

std::string JoinedLine(const std::vector<std::string>& arguments) {
    std::string line;
    for (const std::string& argument : arguments)
        line += (line.empty() ? "" : " ") + argument;
    return line;
}

int RunSlashForm(Platform& platform, const std::vector<std::string>& arguments) {
    ProcessState process(platform);
    CommandLineRequest request;
    frmMainMDI frame(process, request, [] { return std::make_unique<SilentWindow>(); });
    const RunOutcome outcome = Main(process, JoinedLine(arguments), request, frame);
    frame.UnloadAll();
    return outcome.exit_code;
}

// False, with the reason told, for a command that would harm what it reads or lacks a password.
template <class Command>
bool IsReady(Command& command) {
    Status ready = CheckOutputs(command);
    if (ready.ok())
        ready = FillPasswords(command.load);
    if (!ready.ok())
        IgnoreFailure(WriteStream(Stream::Error, "zorvane: " + ready.failure().reason + "\n"),
                      "there is no other place for it");
    return ready.ok();
}

int RunUnixForm(Platform& platform, const std::vector<std::string>& arguments) {
    CommandLineOutcome outcome = ParseUnixCommandLine(arguments);
    if (outcome.compare)
        return IsReady(*outcome.compare) ? RunCompareCommand(platform, *outcome.compare) : 2;
    if (outcome.text)
        return IsReady(*outcome.text) ? RunTextCommand(platform, *outcome.text) : 2;
    const bool printed = WriteStream(Stream::Output, outcome.output).ok();
    IgnoreFailure(WriteStream(Stream::Error, outcome.error), "there is no other place for it");
    return printed ? outcome.exit_status : 2;
}

// Large texts come and go in a run; kept in the heap, their pages are not asked for anew each time.
void KeepFreedMemory() {
#ifdef __GLIBC__
    constexpr int kBytes = 1 << 30;
    mallopt(M_MMAP_THRESHOLD, kBytes);
    mallopt(M_TRIM_THRESHOLD, kBytes);
#endif
}

}  // namespace

int main(int count, char** values) {
    KeepFreedMemory();
    PrepareForBadEndings();
    const std::vector<std::string> arguments(values + 1, values + count);
    Platform platform = MakePosixPlatform();
    return IsSlashForm(arguments) ? RunSlashForm(platform, arguments)
                                  : RunUnixForm(platform, arguments);
}
