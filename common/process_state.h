// The process-wide record, made in `Main` and passed by reference.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "common/platform/ini_profile.h"
#include "common/platform/platform.h"
#include "common/translator.h"

namespace zorvane {

/// A message that waits for how a step ends.
struct HeldMessage {
    std::string message;
    std::string file;
    bool show = false;
};

struct ProcessState {
    explicit ProcessState(Platform& system) : platform(system) {}

    Platform& platform;
    modTranslator translator;

    std::string gsSettingsFile;  ///< full path of the one settings file; empty: defaults only
    std::string gsDataFolder;    ///< the folder that holds it
    std::string gsAppDataFolder;
    std::unique_ptr<IniProfile> settings = MakeMemoryIniProfile();  ///< of `gsSettingsFile`
    bool gbCommandLineRunning = false;  ///< a command-line run owns the process: no dialogs
    bool gbAutomationHosted = false;
    bool gbFrameClosing = false;
    std::int32_t glDifferencesFound = 0;
    std::string sHelpFile;
    std::string sHelpWebRoot;
    std::string sQuickStartFile;

    bool bWithoutSandbox = false;  ///< documents are read by a process that is not closed in

    std::string sLogFile;        ///< where `LogMessage` writes; empty: nowhere
    bool bShowMessages = false;  ///< also shows each message
    /// One sentence that names the file, in place of the fixed texts that scripts look for.
    bool bTellsPlainly = false;
    std::vector<HeldMessage>* held_messages = nullptr;  ///< of the open `MessageHold`
    std::map<std::string, std::string> shown_names;     ///< of files that stand for something else

    std::string Translate(std::string_view english) { return translator.Translate(english); }
};

}  // namespace zorvane
