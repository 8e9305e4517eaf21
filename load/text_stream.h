// Files that another program may still hold or write.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "common/base/result.h"
#include "common/base/run_watcher.h"
#include "common/platform/file_stamp.h"

namespace zorvane {

class Clock;

/// How long to try. The wait count is in milliseconds: a try each 100, the first at once.
struct StreamWait {
    Clock& clock;
    std::function<bool()> keep_going = [] { return true; };  ///< yields; false after an abort
    std::int32_t lWaitCount = 2000;
    RunWatcher* watcher = nullptr;  ///< stops the reading of a large file
};

/// Carries `attempt` out until it succeeds: 21 times for a wait count of 2000. Fails with the
/// reason of the last attempt, also when the user stopped.
Status OpenTextStreamWithDelay(const StreamWait& wait, const std::function<Status()>& attempt);

struct SettledFile {
    std::string bytes;
    bool changing = false;  ///< it was still written to at the last try, and is as it stood then
};

/// A user's file, read until it is the same before and after. One that was there and is missing for
/// an instant, since somebody replaces it, is waited for as well. What is no regular file is read
/// once.
Result<SettledFile> ReadSettledFile(const std::string& path, const StreamWait& wait,
                                    const StampReader& stamps = FileStampOf);

}  // namespace zorvane
