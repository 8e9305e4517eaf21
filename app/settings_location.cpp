#include "app/settings_location.h"

#include <chrono>
#include <filesystem>

#include "common/base/text_encoding.h"
#include "common/file_utilities.h"
#include "common/log_message.h"
#include "common/path_tokens.h"
#include "common/platform/native_path.h"
#include "common/process_state.h"

namespace zorvane {
namespace {

constexpr const char* kDataFolder = "%appdata%\\Tarnwick, Inc\\Zorvane\\";
constexpr const char* kLanguages = "Languages";
constexpr std::int32_t kRoamingData = 26;

enum class Probe { Good, Bad, LockedElsewhere };

Probe RoundTrip(const std::string& path, const std::string& value) {
    const auto writer = OpenIniProfile(path);
    writer->Write("Main", "Partial", value);
    if (!writer->Flush().ok())
        return writer->IsLockedElsewhere() ? Probe::LockedElsewhere : Probe::Bad;
    return OpenIniProfile(path)->Read("Main", "Partial", "0") == value ? Probe::Good : Probe::Bad;
}

Probe ProbeFile(const std::string& path) {
    if (path.find("Folder Not Valid On this OS") != std::string::npos ||
        path.find("Special Folder Does Not Exist") != std::string::npos ||
        path.find("(error)") != std::string::npos)
        return Probe::Bad;
    const std::string folder(ParentOf(path));
    if (!bDirectoryExists(folder))
        MakeDirectoryTree(folder);
    if (!bDirectoryExists(folder))
        return Probe::Bad;
    const Probe first = RoundTrip(path, "level2");
    return first == Probe::Good ? RoundTrip(path, "Level3") : first;
}

}  // namespace

bool ProbeSettingsFile(const std::string& path) {
    return ProbeFile(path) == Probe::Good;
}

void LocateSettingsFile(ProcessState& process) {
    const std::string roaming = process.platform.folders->GetSpecialFolder(kRoamingData);
    process.gsDataFolder = roaming + "\\Tarnwick, Inc\\Zorvane";
    const std::string candidate = process.gsDataFolder + "\\Zorvane.INI";
    const Probe probe = ProbeFile(candidate);
    if (probe == Probe::Bad)
        return;
    // A hanging program is no reason to lose the user's settings from sight; who waited once does
    // not wait again.
    if (probe == Probe::LockedElsewhere)
        LogMessage(
            process,
            process.Translate("Settings cannot be saved, another program keeps them locked") +
                ": " + candidate,
            "", true);
    process.gsSettingsFile = candidate;
    process.settings =
        OpenIniProfile(candidate, probe == Probe::LockedElsewhere ? std::chrono::milliseconds(0)
                                                                  : kSettingsLockPatience);
}

void OverrideSettingsFile(ProcessState& process, const std::string& path) {
    if (!bFileExists(path))
        return;
    process.gsSettingsFile = path;
    process.settings = OpenIniProfile(path);
}

void InstallUserData(ProcessState& process) {
    RegistryStore& registry = *process.platform.registry;
    if (ToUpper(registry.Get("Settings", "bInstalled", "FALSE")) != "FALSE")
        return;
    registry.Set("Settings", "bInstalled", "TRUE");
    if (process.platform.folders->GetSpecialFolder(kRoamingData) == "(error)")
        return;
    const std::string data_folder = sExpandPathTokens(*process.platform.folders, kDataFolder);
    const std::string target = data_folder + kLanguages;
    if (bDirectoryExists(target))
        return;
    const std::string source = JoinPath(process.platform.folders->ProgramFolder(), kLanguages);
    std::error_code error;
    std::filesystem::create_directories(NativePath(data_folder), error);
    std::filesystem::copy(
        NativePath(source), NativePath(target),
        std::filesystem::copy_options::recursive | std::filesystem::copy_options::skip_existing,
        error);
}

void SetupHelpFiles(ProcessState& process) {
    const std::string folder = process.platform.folders->ProgramFolder();
    const std::string& language = process.translator.gsLanguage;
    const bool japanese = language == "Japanese";
    process.sHelpFile = JoinPath(folder, japanese ? "Zorvane-Japanese.chm" : "Zorvane.chm");
    process.sHelpWebRoot = japanese ? "" : "https://zorvane.example/docs/";
    process.sQuickStartFile = JoinPath(folder, "Zorvane_QuickStart_" + language + ".RTF");
    if (!bFileExists(process.sQuickStartFile))
        process.sQuickStartFile = JoinPath(folder, "Zorvane_QuickStart_English.rtf");
}

}  // namespace zorvane
