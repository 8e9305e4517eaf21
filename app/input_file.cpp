#include "app/input_file.h"

#include <filesystem>
#include <string_view>

#include "common/platform/files.h"
#include "common/platform/native_path.h"
#include "common/platform/terminal.h"
#include "common/process_state.h"
#include "load/file_signature.h"

namespace zorvane {
namespace {

// Text takes the short road; a document is told by its bytes when its name tells nothing.
const char* ExtensionFor(std::string_view bytes) {
    switch (SignatureOf(bytes)) {
        case Signature::RichText:
            return "rtf";
        case Signature::Package:
        case Signature::Compound:
        case Signature::Pdf:
            return "document";
        default:
            return "txt";
    }
}

}  // namespace

Status BeginCommand(ProcessState& process, const std::string& settings_file) {
    process.gbCommandLineRunning = true;
    process.telling.manner.bShowMessages = true;
    process.telling.manner.bTellsPlainly = true;
    process.telling.manner.bSilent = true;
    InitializeLocale(process);
    if (settings_file.empty())
        return Status::Ok();
    if (Status readable = CheckReadable(settings_file); !readable.ok())
        return readable;
    process.settings = OpenIniProfile(settings_file);  // and never flushed
    return Status::Ok();
}

Result<std::string> InputFile(ProcessState& process, const std::string& given) {
    const bool input = given == "-";
    if (!input) {
        const Status readable = CheckReadable(given);
        if (!readable.ok())
            return readable.failure();
        std::error_code error;
        if (std::filesystem::is_regular_file(NativePath(given), error))
            return given;
    }
    Result<std::string> bytes = input ? ReadStandardInput() : ReadWholeFile(given);
    if (!bytes.ok())
        return bytes;
    const std::string own = input ? std::string() : std::string(ExtensionOf(given));
    Result<std::string> name = process.platform.temp_files->NewName(
        "input", own.empty() ? ExtensionFor(bytes.value()) : own);
    if (!name.ok())
        return name;
    const Status written = WriteWholeFile(name.value(), bytes.value());
    if (!written.ok())
        return written.failure();
    process.telling.manner.shown_names[name.value()] = input ? kStandardInputName : given;
    return name;
}

}  // namespace zorvane
