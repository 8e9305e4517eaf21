// Small services of the system, each an interface so that tests can stand in for it.
#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/base/result.h"

namespace zorvane {

class Clock {
  public:
    virtual ~Clock() = default;
    virtual std::uint32_t TickMilliseconds() = 0;  ///< since some start; wraps
    virtual void Sleep(std::chrono::milliseconds duration) = 0;
    virtual std::chrono::system_clock::time_point Now() = 0;
};

class Sound {
  public:
    virtual ~Sound() = default;
    virtual void Beep() = 0;  ///< the system's default sound; the terminal bell without a desktop
};

/// Folders by the numbers of the system's list: 5 documents, 26 configuration, 28 local data, 35
/// and 46 shared data, 36 system, 38 and 42 programs, 40 home. Never with a separator behind.
class SpecialFolders {
  public:
    virtual ~SpecialFolders() = default;
    virtual std::string GetSpecialFolder(std::int32_t csidl) = 0;  ///< "(error)" on failure
    virtual std::string ProgramFolder() = 0;
    virtual std::string RuntimeFolder() = 0;  ///< for locks; private to the user
};

class ShellOpen {
  public:
    virtual ~ShellOpen() = default;
    virtual Status Open(const std::string& path_or_address) = 0;  ///< the desktop's handler
    virtual Status EditText(const std::string& path) = 0;         ///< the desktop's text editor
};

class UserLocale {
  public:
    virtual ~UserLocale() = default;
    virtual std::int32_t LocaleId() = 0;     ///< 1033 for en_US, 1041 for ja_JP, ...
    virtual std::string EncodingName() = 0;  ///< of the locale's files: "UTF-8", "ISO-8859-1"
};

/// Per-user values outside the settings file, in a small file of their own.
class RegistryStore {
  public:
    virtual ~RegistryStore() = default;
    virtual std::string Get(std::string_view section, std::string_view key,
                            std::string_view default_value) = 0;
    virtual void Set(std::string_view section, std::string_view key, std::string_view value) = 0;
};

/// Locks between processes, by name.
class NamedMutexes {
  public:
    virtual ~NamedMutexes() = default;
    /// Waits without limit. Fails only when the lock cannot be made; then nothing is locked.
    virtual Result<int> Lock(std::string_view name) = 0;
    virtual void Unlock(int handle) = 0;
};

/// RAII over `NamedMutexes`.
class ScopedNamedMutex {
  public:
    ScopedNamedMutex(NamedMutexes& mutexes, std::string_view name)
        : mutexes_(mutexes), handle_(mutexes.Lock(name)) {}
    ~ScopedNamedMutex() {
        if (handle_.ok())
            mutexes_.Unlock(handle_.value());
    }
    ScopedNamedMutex(const ScopedNamedMutex&) = delete;
    ScopedNamedMutex& operator=(const ScopedNamedMutex&) = delete;

  private:
    NamedMutexes& mutexes_;
    Result<int> handle_;
};

/// Names in a folder private to this process, which is removed with all that is in it at the end of
/// the process, also after SIGINT and SIGTERM. The folder is made at the first call.
class TempFiles {
  public:
    virtual ~TempFiles() = default;
    virtual Result<std::string> Folder() = 0;
    /// A name in the folder that is not in use; `extension` without a dot. The file is not made.
    virtual Result<std::string> NewName(std::string_view prefix, std::string_view extension) = 0;
    /// The system's own temporary folder, for a file that is to outlive the process.
    virtual Result<std::string> LastingFolder() { return Folder(); }
};

}  // namespace zorvane
