// What has to happen however this process ends: its children go first, then its temporary folder.
#pragma once

#include <csignal>
#include <string>

namespace zorvane {

/// For `main`, before any thread: a fault that nobody handles ("not enough memory") ends with a
/// message and status 2, and writing to a closed pipe or beyond a file-size limit is a failure of
/// that write. What a child is started with is not touched.
void PrepareForBadEndings();

/// The folder is removed by SIGINT, SIGTERM, SIGHUP and a fault that nobody handles. One folder at
/// most, under 512 bytes; false when it is longer.
bool RemoveAtBadEnd(const std::string& folder);
/// Its owner removes it, or did.
void KeepAtBadEnd();

/// One of these signals has come: children are ended and files go, and what is found from here on
/// is no fact about a document.
bool IsEnding();

/// A half file is removed by those, too. Gives the number to take it back by, or -1 where nothing
/// is kept of it: beyond 8 at once, and of names of 512 bytes and more.
int UnlinkAtBadEnd(const std::string& path);
void ForgetHalfFile(int number);

/// A child that leads a process group, killed with the group when this process is ended. Beyond 64
/// at once they are left to the system, which ends them with this process.
void EndWithThisProcess(int child);
/// Before it is waited for, so that no other process of that number is hit.
void ForgetChild(int child);

/// For a program with something to save: the first ending signal only writes its number, a byte, to
/// what is opened here for reading, and whoever reads it calls `DieOfSignal`. A second one ends the
/// process as ever. The descriptor is never closed; -1 where there is none.
int TellOfEndingSignal();
/// Cleans up and ends as the signal ends a process.
[[noreturn]] void DieOfSignal(int number);

/// What an ending signal does, for an end that no destructor sees; this one with a status.
[[noreturn]] void CleanUpAndEnd(int status);

/// While it lives, an ending signal waits: between the making of a thing and its entry above, it
/// would leave the thing behind.
class EndingSignalsHeldBack {
  public:
    EndingSignalsHeldBack();
    ~EndingSignalsHeldBack();
    EndingSignalsHeldBack(const EndingSignalsHeldBack&) = delete;
    EndingSignalsHeldBack& operator=(const EndingSignalsHeldBack&) = delete;

  private:
    sigset_t old_{};
};

}  // namespace zorvane
