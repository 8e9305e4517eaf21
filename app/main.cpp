// Builds the objects, hands them to each other, and tells the two command lines apart.
#include <malloc.h>
#include <string>
#include <vector>

#include "app/command_line_parser.h"
#include "app/compare_command.h"
#include "app/compare_run.h"
#include "app/exit_status.h"
#include "app/main_frame.h"
#include "app/output_check.h"
#include "app/passwords.h"
#include "app/run_modes.h"
#include "app/start.h"
#include "app/text_run.h"
#include "common/platform/exec_program.h"
#include "common/platform/platform.h"
#include "common/platform/process_end.h"
#include "common/platform/terminal.h"
#include "common/process_state.h"

namespace {

using namespace zorvane;

int Complain(const std::string& message) {
    IgnoreFailure(WriteStream(Stream::Error, "zorvane: " + message + "\n"),
                  "there is no other place for it");
    return kTrouble;
}

// Comes back only when the windows cannot be started.
int GoOnInWindows(const StartFacts& facts, const std::vector<std::string>& arguments) {
    return Complain(BecomeProgram(facts.window_program, arguments).failure().reason);
}

int RunHere(Platform& platform, const std::string& line) {
    ProcessState process(platform);
    CommandLineRequest request;
    SilentFrame window;
    frmMainMDI frame(process, window, SilentViewers(process));
    const RunOutcome outcome = Main(process, line, request, frame);
    frame.UnloadAll();
    return outcome.exit_code;
}

// What a command would harm, or lacks, is told before it begins.
template <class Command, class Run>
int RunReady(Platform& platform, Command& command, Run run) {
    Status ready = CheckOutputs(command);
    if (ready.ok())
        ready = FillPasswords(command.load);
    return ready.ok() ? run(platform, command) : Complain(ready.failure().reason);
}

// Where the line goes on is known before it has any effect, such as the head of its log.
int RunSlashForm(Platform& platform, const std::vector<std::string>& arguments) {
    const std::string line = JoinedLine(arguments);
    std::string read = line;
    CommandLineRequest request;
    LineEffects effects;
    const bool parsed = ReadCommandLine(*platform.folders, read, line, request, effects);
    const StartFacts facts = FindStartFacts(*platform.folders);
    const StartPlace place = WhereToStart(WhatToDo(line, request, parsed), request, facts);
    switch (place) {
        case StartPlace::Window:
            return GoOnInWindows(facts, arguments);
        case StartPlace::NoDisplay:
        case StartPlace::NotInstalled:
            return Complain(WhyNoWindow(place));
        case StartPlace::Here:
            break;
    }
    return RunHere(platform, line);
}

int RunUnixForm(Platform& platform, const std::vector<std::string>& arguments) {
    const StartFacts facts = FindStartFacts(*platform.folders);
    if (WhereToStart(arguments, facts) == StartPlace::Window)
        return GoOnInWindows(facts, arguments);
    CommandLineOutcome outcome = ParseUnixCommandLine(arguments);
    if (outcome.compare)
        return RunReady(platform, *outcome.compare, RunCompareCommand);
    if (outcome.text)
        return RunReady(platform, *outcome.text, RunTextCommand);
    if (outcome.git) {
        const std::string own = platform.folders->ProgramFolder() + "/zorvane";
        return RunGitCommand(*outcome.git, CallOf(own));
    }
    if (outcome.folders)
        return RunReady(platform, *outcome.folders, RunFoldersCommand);
    if (outcome.find)
        return RunFindCommand(platform, *outcome.find);
    if (outcome.cache)
        return RunCacheCommand(platform, *outcome.cache);
    const bool printed = WriteStream(Stream::Output, outcome.output).ok();
    IgnoreFailure(WriteStream(Stream::Error, outcome.error), "there is no other place for it");
    return printed ? outcome.exit_status : kTrouble;
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
    return arguments.empty() || IsSlashForm(arguments) ? RunSlashForm(platform, arguments)
                                                       : RunUnixForm(platform, arguments);
}
