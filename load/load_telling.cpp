// How a load tells what went wrong: in the fixed texts that scripts look for, or plainly.
#include <cerrno>
#include <sys/stat.h>

#include "common/log_message.h"
#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "common/process_state.h"
#include "load/document_loader.h"
#include "load/no_text.h"

namespace zorvane {
namespace {

// What is wrong with a name that denotes no file, when there is more to say than that.
std::string WhyMissing(const std::string& sFile) {
    struct stat facts {};
    if (stat(NativePath(sFile).c_str(), &facts) != 0 && errno == ENOENT)
        return {};
    const Status readable = CheckReadable(sFile);
    return readable.ok() ? std::string() : readable.failure().reason;
}

}  // namespace

// The reason in front is the contract's; what the system said follows on a line of its own.
StreamWait DocumentLoader::Wait() const {
    StreamWait wait{*parts_.process.platform.clock, [this] { return KeepGoing(); }};
    wait.watcher = parts_.watcher;
    return wait;
}

std::optional<std::string> DocumentLoader::Read(const std::string& sFile) {
    Result<SettledFile> file = ReadSettledFile(sFile, Wait());
    if (!KeepGoing())
        return std::nullopt;
    if (!file.ok()) {
        LogFailure("Unable to copy file.", sFile, file.failure().reason);
        return std::nullopt;
    }
    if (file.value().changing)
        LogMessage(parts_.telling,
                   ShownName(parts_.telling, sFile) + ": " +
                       parts_.process.Translate("another program is writing to this file; it is "
                                                "compared as it stood a moment ago"));
    return std::move(file.value().bytes);
}

void DocumentLoader::LogFailure(std::string_view text, const std::string& sFile,
                                const std::string& reason) {
    system_reason_ = reason;
    std::string message =
        "LoadFileIntoEditor(): " + parts_.process.Translate(text) + "\n\n" + sFile;
    if (!reason.empty())
        message += "\n" + reason;
    LogMessage(parts_.telling, message);
}

bool DocumentLoader::ReportMissing(const std::string& sFile) {
    ProcessState& process = parts_.process;
    std::string message = process.Translate("File does not exist") + ":\r\n\r\n" + sFile;
    if (const std::string reason = WhyMissing(sFile); !reason.empty())
        message += "\r\n" + reason;
    if (parts_.telling.manner.bSilent)
        LogMessage(parts_.telling, message);
    else
        parts_.questions.ShowMessage(message, process.Translate("Error"));
    return false;
}

void DocumentLoader::TakeNoText(const std::string& sFile, const SideType& type,
                                std::u16string_view text, Side side) {
    kept_.sNoText[side].clear();
    if (!kept_.bSlidesFailed[side])  // that has been told already
        kept_.sNoText[side] = WhyNoText({type, ShownName(parts_.telling, sFile), sFile, text,
                                         parts_.options, parts_.settings, side});
}

// What is wrong is told once, by the file's name, and not by the steps that found it.
std::optional<std::string> DocumentLoader::RunTellingPlainly(const std::string& sFile,
                                                             const SideType& type, Side side) {
    service_.ForgetFailures();
    system_reason_.clear();
    MessageHold hold(parts_.telling);
    std::optional<std::string> bytes = RunConversion(sFile, type, side);
    const bool failed = !bytes || kept_.bSlidesFailed[side];
    std::string reason = service_.FirstFailure();
    if (!failed && (reason.empty() || hold.Empty())) {
        hold.Release();
        return bytes;
    }
    hold.Drop();
    if (reason.empty()) {
        reason =
            system_reason_.empty() ? parts_.process.Translate("it cannot be read") : system_reason_;
        if (!reason.starts_with(sFile))
            reason.insert(0, sFile + ": ");
    }
    if (reason.starts_with(sFile))
        reason.replace(0, sFile.size(), ShownName(parts_.telling, sFile));
    if (!failed)
        reason += "; " + parts_.process.Translate("it was read as plain text instead");
    LogMessage(parts_.telling, reason);
    return bytes;
}

}  // namespace zorvane
