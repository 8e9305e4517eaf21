#include "app/settings_location.h"

#include <chrono>
#include <filesystem>

#include "common/base/text_encoding.h"
#include "common/file_utilities.h"
#include "common/installed_data.h"
#include "common/log_message.h"
#include "common/platform/native_path.h"
#include "common/process_state.h"
#include "common/translator.h"

namespace zorvane {
namespace {

constexpr std::int32_t kRoamingData = 26;

enum class Probe { Good, Bad, LockedElsewhere };

Probe RoundTrip(const std::string& path, const std::string& value,
                std::chrono::milliseconds lock_patience) {
    const auto writer = OpenIniProfile(path, lock_patience);
    writer->Write("Main", "Partial", value);
    if (!writer->Flush().ok())
        return writer->IsLockedElsewhere() ? Probe::LockedElsewhere : Probe::Bad;
    return OpenIniProfile(path)->Read("Main", "Partial", "0") == value ? Probe::Good : Probe::Bad;
}

Probe ProbeFile(const std::string& path, std::chrono::milliseconds lock_patience) {
    if (path.find("Folder Not Valid On this OS") != std::string::npos ||
        path.find("Special Folder Does Not Exist") != std::string::npos ||
        path.find("(error)") != std::string::npos)
        return Probe::Bad;
    const std::string folder(ParentOf(path));
    if (!bDirectoryExists(folder))
        MakeDirectoryTree(folder);
    if (!bDirectoryExists(folder))
        return Probe::Bad;
    const Probe first = RoundTrip(path, "level2", lock_patience);
    return first == Probe::Good ? RoundTrip(path, "Level3", lock_patience) : first;
}

// Language files grow while the program runs; those of the system may be for reading only.
void MakeWritable(const std::string& folder) {
    std::error_code error;
    std::filesystem::directory_iterator entries(folder, error);
    for (; !error && entries != std::filesystem::directory_iterator(); entries.increment(error)) {
        std::error_code ignored;
        std::filesystem::permissions(entries->path(), std::filesystem::perms::owner_write,
                                     std::filesystem::perm_options::add, ignored);
    }
}

}  // namespace

bool ProbeSettingsFile(const std::string& path) {
    return ProbeFile(path, kSettingsLockPatience) == Probe::Good;
}

void LocateSettingsFile(ProcessState& process, std::chrono::milliseconds lock_patience) {
    if (!process.gsSettingsFile.empty())
        return;
    const std::string roaming = process.platform.folders->GetSpecialFolder(kRoamingData);
    process.gsDataFolder = roaming + "\\Tarnwick, Inc\\Zorvane";
    const std::string candidate = process.gsDataFolder + "\\Zorvane.INI";
    const Probe probe = ProbeFile(candidate, lock_patience);
    if (probe == Probe::Bad)
        return;
    // A hanging program is no reason to lose the user's settings from sight; who waited once does
    // not wait again.
    if (probe == Probe::LockedElsewhere)
        LogMessage(
            process.telling,
            process.Translate("Settings cannot be saved, another program keeps them locked") +
                ": " + candidate,
            "", true);
    process.gsSettingsFile = candidate;
    process.settings = OpenIniProfile(
        candidate, probe == Probe::LockedElsewhere ? std::chrono::milliseconds(0) : lock_patience);
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
    const std::string target = LanguageFolder(process);
    if (bDirectoryExists(target))
        return;
    const std::string source = InstalledData(*process.platform.folders, "Languages");
    std::error_code error;
    std::filesystem::create_directories(NativePath(ParentOf(sStripTrailingBackslash(target))),
                                        error);
    std::filesystem::copy(
        NativePath(source), NativePath(target),
        std::filesystem::copy_options::recursive | std::filesystem::copy_options::skip_existing,
        error);
    MakeWritable(NativePath(target));
}

void SetupHelpFiles(ProcessState& process) {
    SpecialFolders& folders = *process.platform.folders;
    const std::string& language = process.translator.gsLanguage;
    const bool japanese = language == "Japanese";
    process.sHelpFile = InstalledData(folders, "help/Zorvane-" + language + ".html");
    if (!japanese && !bFileExists(process.sHelpFile))
        process.sHelpFile = InstalledData(folders, "help/Zorvane.html");
    process.sHelpWebRoot.clear();  // there is no page on the web yet
    process.sQuickStartFile = InstalledData(folders, "Zorvane_QuickStart_" + language + ".rtf");
    if (!bFileExists(process.sQuickStartFile))
        process.sQuickStartFile = InstalledData(folders, "Zorvane_QuickStart_English.rtf");
}

}  // namespace zorvane
