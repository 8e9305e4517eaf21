#include "load/text_stream.h"

#include <chrono>
#include <optional>

#include "common/file_utilities.h"
#include "common/platform/files.h"
#include "common/platform/services.h"

namespace zorvane {
namespace {

constexpr std::int32_t kBetweenTries = 100;  // milliseconds

}  // namespace

Status OpenTextStreamWithDelay(const StreamWait& wait, const std::function<Status()>& attempt) {
    Status status = attempt();
    for (std::int32_t failures = 1; !status.ok() && failures <= wait.lWaitCount / kBetweenTries;
         ++failures) {
        wait.clock.Sleep(std::chrono::milliseconds(kBetweenTries));
        if (!wait.keep_going())
            break;
        status = attempt();
    }
    return status;
}

Result<SettledFile> ReadSettledFile(const std::string& path, const StreamWait& wait,
                                    const StampReader& stamps) {
    if (bFileExists(path) && !stamps(path)) {
        Result<std::string> bytes = ReadWholeFile(path, wait.watcher);
        if (!bytes.ok())
            return bytes.failure();
        return SettledFile{std::move(bytes).value(), false};
    }
    SettledFile file;
    std::optional<Failure> final_failure;
    bool any = false;
    const Status settled = OpenTextStreamWithDelay(wait, [&]() -> Status {
        const std::optional<FileStamp> before = stamps(path);
        Result<std::string> bytes = ReadWholeFile(path, wait.watcher);
        const std::optional<FileStamp> after = stamps(path);
        if (!bytes.ok()) {
            if (!after)
                return bytes.failure();
            final_failure = bytes.failure();  // waiting would not help
            return Status::Ok();
        }
        any = true;
        file.bytes = std::move(bytes).value();
        return before == after ? Status::Ok() : Status(Failure{path + ": still being written"});
    });
    if (final_failure)
        return *final_failure;
    if (!any)
        return settled.failure();
    file.changing = !settled.ok();
    return file;
}

}  // namespace zorvane
