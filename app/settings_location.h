// Where the settings file lies, and what a first start prepares in the user's folders.
#pragma once

#include <chrono>
#include <string>

#include "common/platform/ini_profile.h"

namespace zorvane {

struct ProcessState;

/// Finds the settings file, proves that it can be written, and opens it as `process.settings`. Sets
/// `gsSettingsFile` and `gsDataFolder`. With no usable place the program runs on defaults and loses
/// what it writes: the path is then empty and the settings live in memory. Where another program
/// keeps the file locked, that is told, and the settings are read from it all the same. Once
/// found it stays.
void LocateSettingsFile(ProcessState& process,
                        std::chrono::milliseconds lock_patience = kSettingsLockPatience);

/// True when two values written to section `Main`, key `Partial`, come back as written. Makes the
/// parent folder if it is missing.
bool ProbeSettingsFile(const std::string& path);

/// Replaces the settings file from here on, if `path` exists.
void OverrideSettingsFile(ProcessState& process, const std::string& path);

/// Copies the installed "Languages" folder into the user's data folder, once in a user's life.
/// Errors end it in silence.
void InstallUserData(ProcessState& process);

/// Sets the paths of the help and of the quick start document from the language in force.
void SetupHelpFiles(ProcessState& process);

}  // namespace zorvane
