// The process-wide record, made in `Main` and passed by reference.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "common/message_sink.h"
#include "common/platform/ini_profile.h"
#include "common/platform/platform.h"
#include "common/run_telling.h"
#include "common/translator.h"

namespace zorvane {

struct ProcessState {
    explicit ProcessState(Platform& system) : platform(system) {}

    Platform& platform;
    modTranslator translator;

    std::string gsSettingsFile;  ///< full path of the one settings file; empty: defaults only
    std::string gsDataFolder;    ///< the folder that holds it
    std::string gsAppDataFolder;
    /// Of `gsSettingsFile`. Who goes on to use the one that was read shares it: `/+` opens another.
    std::shared_ptr<IniProfile> settings = MakeMemoryIniProfile();
    bool gbCommandLineRunning = false;  ///< a command-line run owns the process: no dialogs
    bool gbAutomationHosted = false;
    bool gbFrameClosing = false;
    std::int32_t glDifferencesFound = 0;
    std::string sHelpFile;
    std::string sHelpWebRoot;
    std::string sQuickStartFile;

    bool bWithoutSandbox = false;  ///< documents are read by a process that is not closed in

    MessageSink messages{platform};
    /// Of the start, and of all that belongs to no run. A viewer has its own.
    RunTelling telling{messages};

    std::string Translate(std::string_view english) { return translator.Translate(english); }
};

}  // namespace zorvane
